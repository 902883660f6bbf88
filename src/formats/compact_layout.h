// The compact layout: for each series a header line that names the edit format of its values, then the
// values.
//
// With an exponent e the values are millimetres / 10^e (-2: hundredths). Where it is blank or 0 the unit
// follows from the edit format: a "4" as its fifth character, as in "(19F4.0)", stands for thousandths of a
// millimetre, any other for hundredths.
#pragma once

#include <array>
#include <cstdint>

#include "formats/layout_table.h"
#include "records/edit_format.h"

namespace vorn::compact {

inline constexpr std::array header_fields = {
    LayoutField{2, 8, "number of values"},     LayoutField{9, 10, "not looked at"},
    LayoutField{11, 18, "first year"},         LayoutField{19, 21, "not looked at"},
    LayoutField{22, 29, "name of the series"}, LayoutField{30, 68, "not looked at"},
    LayoutField{69, 71, "exponent"},           LayoutField{72, 79, "edit format of the values"}};

inline const EditFormat header_edit("(1X,I7,2X,I8,3X,A8,39X,I3,A8)");

// As written.
inline const EditFormat header_line("(I8,\"=N\",I8,\"=I \",A8,42X,A8)");
inline constexpr std::string_view values_format = "(19F4.0)";  // named by the header
inline const EditFormat values_line("(19I4)");                 // and what it is written with
// Of a series with wider rings, carefully: its exponent says that they are thousandths.
inline const EditFormat wide_header_line("(I8,\"=N\",I8,\"=I \",A8,39X,I3,A8)");
inline constexpr std::int32_t wide_exponent = -3;
inline constexpr std::string_view wide_values_format = "(8F10.0)";
inline const EditFormat wide_values_line("(8I10)");
inline constexpr std::int32_t least_value = -999, largest_value = 9'999;  // that its columns can show
inline constexpr std::int32_t missing_ring = -999;  // as written; every negative value is read as missing

}  // namespace vorn::compact
