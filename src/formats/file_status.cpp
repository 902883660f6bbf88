#include "formats/file_status.h"

#include "plot/screen.h"

namespace vorn {

void told_or_end(Workspace& w, int status, std::string_view label, std::string_view file) {
  w.ios = status;
  if (io_err(w, label, file)) throw ProgramEnd(EndReason::cannot_go_on);
}

void close_told(Workspace& w, TextInput& file, std::string_view name, int untold) {
  const int closing = file.close();
  told_or_end(w, status::of_system(untold) ? untold : closing, "Close", name);
}

}  // namespace vorn
