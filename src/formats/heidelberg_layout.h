// The Heidelberg layout: keyed lines, then a block of values, for each series.
//
//   HEADER:        the record begins
//   KeyCode=       name of the series, columns 9-16
//   DateBegin=     first year, columns 11-16
//   DateEnd=       last year, columns 9-14
//   Length=        number of values, columns 8-11
//   Unit=          columns 8-11 "1000": thousandths of a millimetre, "100 ": hundredths
//   DATA           the values follow, ten a line of six columns each
//
// Lines are known by their first four characters, come in any order and are read as 32 characters.
#pragma once

#include <cstdint>

#include "records/edit_format.h"

namespace vorn::heidelberg {

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
