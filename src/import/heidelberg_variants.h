// Heidelberg files that the program's own reader does not take as they are meant: pairs and quadruples of
// numbers, records without dates or lengths, values that do not keep to their columns.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// Whether the first line that is not blank begins a record.
bool starts_heidelberg(std::span<const FileLine> lines);

// Given:    bytes  of the whole file, of which `lines` are the lines
// Returned: nothing where all values are widths and the program's own reader takes each ring of the file
// under the same name, in the
//           same year and with the same width.
std::optional<Imported> import_heidelberg(std::string_view bytes, std::span<const FileLine> lines,
                                          bool is_utf_16, const ImportWishes& wishes);

}  // namespace vorn
