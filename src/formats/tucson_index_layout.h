// The Tucson index layout: one line a decade of a chronology.
//
//   columns   1-6    site; "-" in column 6: the year is negative
//             7-10   first year of the line
//            11-80   for the ten years of the decade, those ending in 0 to 9, an index
//                    in thousandths (four columns) and a sample depth (three); 9990
//                    marks a year without data
//            81-85   "  IND", as written
#pragma once

#include <cstddef>
#include <cstdint>

#include "records/edit_format.h"

namespace vorn::tucson_index {

inline const EditFormat first_line_edit("(A6,I4,10(I4,I3))");
inline const EditFormat line_edit("(10X,10(I4,I3))");
inline const EditFormat title_line("(A60)");
inline const EditFormat decade_line("(A6,I4,10(I4,I3),\"  IND\")");

inline constexpr int years_a_line = 10;
inline constexpr std::size_t fields_a_line = 20;  // an index and a depth each
inline constexpr std::int32_t no_data = 9990;

}  // namespace vorn::tucson_index
