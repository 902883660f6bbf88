#include "loading/list_file.h"

#include <string>

#include "plot/screen.h"
#include "toolkit/messages.h"

namespace vorn {

bool list_exists(Workspace& w, std::string_view name) {
  w.fileok = file_exists(w.files, name);
  if (!w.fileok) out_err(w, std::string(name) + " does not exist");
  return w.fileok;
}

TextInput open_list_file(Workspace& w, std::string_view name) {
  if (!list_exists(w, name)) throw ProgramEnd(EndReason::cannot_go_on);
  TextInput list;
  told_or_end(w, list.open(w.files, name), "Open", name);
  return list;
}

}  // namespace vorn
