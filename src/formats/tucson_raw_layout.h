// The Tucson raw layout: one line a decade of one series. "-" in column 8 says that its years are negative.
//
// A line whose year is below -999 has its name in columns 1-7 and the year in 8-12, so that its minus sign
// falls in column 8. The first line of a series goes to the end of its decade; the value behind the last ring
// is the end mark, which also says the unit.
#pragma once

#include <array>
#include <cstdint>

#include "formats/layout_table.h"
#include "records/edit_format.h"

namespace vorn::tucson_raw {

inline constexpr std::array fields = {LayoutField{1, 8, "name of the series"},
                                      LayoutField{9, 12, "calendar year of the first value on the line"},
                                      LayoutField{13, 72, "up to ten ring widths"}};

inline const EditFormat line_edit("(A8,I4,10I6)");
inline const EditFormat early_line_edit("(A7,I5,10I6)");  // written for years below -999
inline constexpr int values_a_line = 10;

inline constexpr std::int32_t end_of_hundredths = 999;
inline constexpr std::int32_t end_of_thousandths = -9999;
inline constexpr std::int32_t missing_ring = -9990;  // as written; every negative value is read as missing

}  // namespace vorn::tucson_raw

namespace vorn {

// How many years of a series that starts in `first_year` its first line has room for, 1 to 10: those up to
// the end of the decade. Years before 0 make decades that end in -11, -1 and so on.
constexpr int first_decade_end(std::int32_t first_year) {
  if (first_year >= 0) return (first_year / 10 + 1) * 10 - first_year;
  return (first_year + 1) / 10 * 10 - first_year;
}

}  // namespace vorn
