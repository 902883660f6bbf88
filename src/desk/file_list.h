// The list of files, Vorn.fil, as it is changed from around the page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/files.h"

namespace vorn {

// Puts `new_name`, a corrected file, in the place of `old_name` in Vorn.fil: the first line of that name, and
// nothing else. The list as it was is kept under the first free name of Vorn.fil.1, Vorn.fil.2 and so on.
//
// A name is the first 60 characters of a line without the blanks behind them; what a line holds further on
// stays in its columns. Returns what went wrong, in which case Vorn.fil is as it was: one of the two files,
// or the list, is not there or cannot be read or written, the new name does not fit into a line, or the list
// has it already.
std::optional<std::string> use_corrected(Files& files, std::string_view old_name, std::string_view new_name);

}  // namespace vorn
