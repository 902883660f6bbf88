// The names by which columns of tables are known.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

enum class ColumnMeaning {
  unknown,
  year,     // calendar year
  year_bp,  // years before 1950
  series,   // name of the series
  tree,     // name of the tree, of which the series has only a part
  core,     // that part
  width,    // ring width
  other     // known to be no width of a ring: sample depths, chronologies and the like
};

// By a name as a table has it: "Ring width (mm)" is one of widths.
ColumnMeaning meaning_of(std::string_view name);

// Years before 1950 are counted so; 1 stands for 1949.
inline constexpr int year_of_bp = 1950;

}  // namespace vorn
