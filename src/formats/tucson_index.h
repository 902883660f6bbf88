// Chronologies in the Tucson index layout (see tucson_index_layout.h).
#pragma once

#include "records/text_file.h"
#include "workspace/vorndata.h"

namespace vorn {

// Loads the chronology of the file cnam(cf), behind rfhead(cf) header lines, into column cf of crn and num,
// with cfy, cly and cyr. Indices stay as the file has them, in thousandths. The series store is not touched.
//
// Only the first line's year is read; the lines are taken as decades that follow each other. Years marked
// 9990 at the end are cut off, as far as eleven of them; 12,000 years at most are kept, whatever the file
// holds.
//
// Told, and gone on after: "Open", "Read1" for a header line, "Read2" for the first line and "Read3" for a
// later one, whose fields from the bad one on are taken as in the line before.
void read_ind(Workspace& w);

// Writes the chronology of the current file to the open file `out`: the name of its file, then its decades,
// indices in thousandths, a year without samples as 9990. A failure is told as "Write".
void write_indcrn(Workspace& w, TextOutput& out);

}  // namespace vorn
