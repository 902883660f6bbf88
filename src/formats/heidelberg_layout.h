// The Heidelberg layout: keyed lines, then a block of values, for each series.
//
// Keyed lines come in any order and are read as 32 characters; all others are passed over. The values follow
// the line "DATA", ten a line of six columns each.
#pragma once

#include <array>
#include <cstdint>

#include "formats/layout_table.h"
#include "records/edit_format.h"

namespace vorn::heidelberg {

// What makes a file one of this layout, looked at in its first line alone.
inline constexpr KeyedLine header_key{"HEADER:", "HEADER:", 0, 0, "begins a record"};
// What the reader knows.
inline constexpr KeyedLine name_key{"KeyCode=", "KeyC", 9, 16, "name of the series"};
inline constexpr KeyedLine first_year_key{"DateBegin=", "DateBegin=", 11, 16, "first year"};
inline constexpr KeyedLine last_year_key{"DateEnd=", "DateEnd=", 9, 14, "last year"};
inline constexpr KeyedLine length_key{"Length=", "Leng", 8, 11, "number of values"};
inline constexpr KeyedLine unit_key{"Unit=", "Unit", 8, 11,
                                    "1000: thousandths of a millimetre; 100 and a blank: hundredths"};
inline constexpr KeyedLine data_key{"DATA:", "DATA", 0, 0, "the values follow"};

inline constexpr std::array lines = {header_key, name_key, first_year_key, last_year_key,
                                     length_key, unit_key, data_key};

inline const EditFormat line_edit("(A32)");
inline const EditFormat values_edit("(10F6.0)");
inline const EditFormat year_edit("(I6)");
inline const EditFormat length_edit("(I4)");

// As written: DateEnd= and Length= with their number to the left of six columns.
inline const EditFormat header_line("(\"HEADER:\")");
inline const EditFormat name_line("(\"KeyCode=\",A12)");
inline const EditFormat unit_line("(\"Unit=1/1000 mm\")");
inline const EditFormat last_year_line("(\"DateEnd=\",A6)");
inline const EditFormat length_line("(\"Length=\",A6)");
inline const EditFormat data_line("(\"DATA:Tree\")");
inline const EditFormat values_line("(10I6)");
inline constexpr int values_a_line = 10;
inline constexpr std::int32_t missing_ring = -9990;  // as written; every negative value is read as missing

}  // namespace vorn::heidelberg
