// Chronologies as a table of three columns.
#pragma once

#include "formats/file_work.h"
#include "workspace/file_table.h"

namespace vorn {

// Writes the chronology of file f: a heading with the name of its file, then a line a year with year, index
// in thousandths and sample depth, seven columns each. A year of depth 0 has the index 9990. A failure is
// told as "Write".
void write_colcrn(const FileTable& w, int f, const Writing& writing);

}  // namespace vorn
