// Names and texts as they are shown: valid UTF-8, whatever bytes a file had.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

// `bytes` as UTF-8: as they are where they are valid, else taken as Latin-1. Control characters and what is
// no character are left out, and make nothing.
std::string shown_text(std::string_view bytes);

// The same of each line: what ends them stays.
std::string shown_lines(std::string_view bytes);

}  // namespace vorn
