// Tables of ring widths, separated by commas, semicolons or tabs: years down the side and a column a series,
// years across the top and a row a series, or a row a ring.
#pragma once

#include <optional>
#include <span>

#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// Nothing where the lines are none.
std::optional<Imported> import_table(std::span<const FileLine> lines, bool is_utf_16,
                                     const ImportWishes& wishes);

}  // namespace vorn
