// The two-column layout, as measuring programs write it: one line a year of one core. Read only.
#pragma once

#include <array>

#include "formats/layout_table.h"
#include "records/edit_format.h"

namespace vorn::two_column {

inline constexpr std::array fields = {LayoutField{1, 14, "not looked at"}, LayoutField{15, 20, "year"},
                                      LayoutField{21, 27, "ring width in millimetres"}};

inline const EditFormat ring_line("(14X,I6,F7.3)");

}  // namespace vorn::two_column
