// Pictures of pages, painted by a module that is loaded when the first one is wanted.
#pragma once

#include <memory>

#include "sessions/page_file.h"

namespace vorn {

// The module needs the libraries of the window system, which take longer to load than a whole session without
// pictures lasts. It is looked for beside the program and where it is installed, and stays loaded. When it
// cannot be loaded, every picture fails with the reason.
class PictureModule : public Painter {
 public:
  std::optional<std::string> paint(const Page& page, PageKind kind, std::string& bytes) override;

 private:
  std::unique_ptr<Painter> painter_;
};

}  // namespace vorn
