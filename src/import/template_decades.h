// Tucson lines behind the comments of the archive's template, of which the program reads no more than three.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// Lines `from` (from 0) on, comments among them apart. Nothing where the first of them, three header lines
// apart, is no line of ring widths in its columns.
std::optional<Imported> import_template_decades(std::span<const FileLine> lines, std::size_t from,
                                                const ImportWishes& wishes);

}  // namespace vorn
