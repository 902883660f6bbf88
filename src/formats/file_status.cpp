#include "formats/file_status.h"

#include "plot/screen.h"

namespace vorn {

void told_or_end(Workspace& w, int status, std::string_view label, std::string_view file) {
  w.ios = status;
  if (io_err(w, label, file)) throw ProgramEnd(EndReason::cannot_go_on);
}

}  // namespace vorn
