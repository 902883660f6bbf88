// Ring widths in the Heidelberg layout (see heidelberg_layout.h).
#pragma once

#include <string_view>

#include "records/text_file.h"
#include "workspace/vorndata.h"

namespace vorn {

// Opens `file` to be read if there is one of that name. If not, the name followed by " - Does not exist" is
// told, except for names that end in "pth", and the file stays unopened: as if it were at its end. A failed
// open is told as "Open" and sets w.ios.
void read_open(Workspace& w, TextInput& file, std::string_view name);

// Loads the file cnam(cf) into cores 1 to nc, 5,000 at most, in place of what was there.
//
// First and last year are completed from each other and the length, whichever comes first; a record without a
// length keeps the year it lacks at -999999. A record without a unit is in thousandths of a millimetre if the
// mean of its values exceeds 300, otherwise in hundredths. Negative values are missing rings and get an
// estimate (mdet_miss).
//
// Told, and gone on after: "Read1 ", "Read3 " and "Read4" for lines, "Read " with the line for its value,
// "Read2 " for the values. A file that ends in a header ends the reading without that record; a file that
// ends among the values leaves the rest of them 0. "Would be too many rings" ends the reading before the
// series that the pool has no room for.
void read_heidel(Workspace& w);

// Writes entry i to the open file `out` as one record, in thousandths of a millimetre, missing rings as
// -9990. A failure is told as "Write " with the name of the series.
//
// Returns: every line was written.
bool write_hrec(Workspace& w, TextOutput& out, int i);

}  // namespace vorn
