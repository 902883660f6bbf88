#include "loading/list_file.h"

#include <string>

#include "plot/screen.h"
#include "toolkit/messages.h"

namespace vorn {

TextInput open_list_file(Workspace& w, std::string_view name) {
  w.fileok = file_exists(w.files, name);
  if (!w.fileok) {
    out_err(w, std::string(name) + " does not exist");
    throw ProgramEnd(EndReason::cannot_go_on);
  }
  TextInput list;
  told_or_end(w, list.open(w.files, name), "Open", name);
  return list;
}

}  // namespace vorn
