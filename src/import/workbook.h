// Workbooks (.xlsx): sheets that are tables of ring widths, read as tables of text are
// (docs/formats/workbooks.md).
#pragma once

#include <optional>
#include <string_view>

#include "import/imported.h"

namespace vorn {

// Nothing where the bytes are no archive. Where they are one that holds no workbook, a damaged one, or one
// that passes the bounds, nothing is read, and an error says so. In findings lines are rows of the sheet, and
// columns those of its cells. A program that was built without what reads archives says that.
std::optional<Imported> import_workbook(std::string_view bytes, const ImportWishes& wishes);

}  // namespace vorn
