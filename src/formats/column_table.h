// Chronologies as a table of three columns.
#pragma once

#include "records/text_file.h"
#include "workspace/vorndata.h"

namespace vorn {

// Writes the chronology of the current file to the open file `out`: a heading with the name of its file, then
// a line a year with year, index in thousandths and sample depth, seven columns each. A year of depth 0 has
// the index 9990. A failure is told as "Write".
void write_colcrn(Workspace& w, TextOutput& out);

}  // namespace vorn
