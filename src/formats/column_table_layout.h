// The table of three columns: one line a year of a chronology, behind a heading. Written only.
#pragma once

#include <array>

#include "formats/layout_table.h"
#include "records/edit_format.h"

namespace vorn::column_table {

inline constexpr std::array fields = {LayoutField{1, 7, "year"}, LayoutField{8, 14, "index in thousandths"},
                                      LayoutField{15, 21, "sample depth"}};

inline const EditFormat heading_line("(\"   Year  Value  Count  \",A60)");
inline const EditFormat year_line("(3I7)");

}  // namespace vorn::column_table
