// Names as the Tucson layout has columns for them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace vorn {

// For each name one of at most `longest` characters, 7 or 8, all different: letters, digits and a few signs.
// Names that fit stay as they are. Of others what parts their words is left out, and where that is not enough
// they keep two characters of their beginning and as many of their end as there is room for. Those that are
// taken get a number.
std::vector<std::string> names_for_columns(std::span<const std::string> names, std::size_t longest);

}  // namespace vorn
