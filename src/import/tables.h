// Tables of ring widths, separated by commas, semicolons or tabs: years down the side and a column a series,
// years across the top and a row a series, or a row a ring.
#pragma once

#include <optional>
#include <span>

#include "import/found_series.h"
#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// Nothing where the lines are none.
std::optional<Imported> import_table(std::span<const FileLine> lines, bool is_utf_16,
                                     const ImportWishes& wishes);

// One table of several that a file holds: the lines of `lines` from `first` on (from 0), parted by tabs. Its
// series and what is said of it go to `found`. False where they are none.
bool take_table(std::span<const FileLine> lines, std::size_t first, FoundFile& found);

}  // namespace vorn
