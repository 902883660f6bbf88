// Troubles with files, told on the page.
#pragma once

#include "records/troubles.h"
#include "workspace/vorndata.h"

namespace vorn {

// Tells each trouble as a message and waits: plain words as out_err does, a failed operation as io_err does,
// its status being w.ios from then on.
class PageTroubles : public Troubles {
 public:
  explicit PageTroubles(Workspace& workspace) : w(workspace) {}
  void tell(const Trouble& trouble) override;

 private:
  Workspace& w;
};

}  // namespace vorn
