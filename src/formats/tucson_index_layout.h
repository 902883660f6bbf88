// The Tucson index layout: one line a decade of a chronology, of the ten years that end in 0 to 9. 9990 marks
// a year without data; "-" in column 6 says that the year is negative.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "formats/layout_table.h"
#include "records/edit_format.h"

namespace vorn::tucson_index {

inline constexpr std::array fields = {
    LayoutField{1, 6, "site"}, LayoutField{7, 10, "year of the line"},
    LayoutField{11, 80, "for each of the ten years an index, in thousandths, and the sample depth"},
    LayoutField{81, 85, "not looked at"}};

inline const EditFormat first_line_edit("(A6,I4,10(I4,I3))");
inline const EditFormat line_edit("(10X,10(I4,I3))");
inline const EditFormat title_line("(A60)");
inline const EditFormat decade_line("(A6,I4,10(I4,I3),\"  IND\")");

inline constexpr int years_a_line = 10;
inline constexpr std::size_t fields_a_line = 20;  // an index and a depth each
inline constexpr std::int32_t no_data = 9990;

}  // namespace vorn::tucson_index
