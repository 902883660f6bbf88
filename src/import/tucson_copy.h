// Series as a file of Tucson ring widths that the program's reader takes whole.
#pragma once

#include <string>
#include <vector>

#include "import/imported.h"
#include "study/file_findings_parts.h"

namespace vorn {

// The lines of all series. Each gets its name in the copy and its unit: thousandths of a millimetre where any
// value of the file has three decimals or more, otherwise hundredths. Rings that have no room in their
// columns become missing ones, and a series that fills its first decade is moved to the front, since the
// layout is known by that line. All this is said; so is why there is no copy, where it is empty.
std::string tucson_copy(std::vector<ImportedSeries>& series, FindingList& found);

}  // namespace vorn
