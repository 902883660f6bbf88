// The lists of files that the program begins with.
#pragma once

#include <string_view>

#include "records/text_file.h"
#include "workspace/vorndata.h"

namespace vorn {

// Whether the list file `name` exists; where it does not, that is told.
bool list_exists(Workspace& w, std::string_view name);

// Opens the list file `name`. Without it: throws ProgramEnd(EndReason::cannot_go_on) after a message. A
// failure to open is told as "Open".
TextInput open_list_file(Workspace& w, std::string_view name);

}  // namespace vorn
