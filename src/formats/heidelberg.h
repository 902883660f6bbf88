// Ring widths in the Heidelberg layout (see heidelberg_layout.h).
#pragma once

#include <string_view>

#include "formats/file_work.h"
#include "formats/layout_table.h"
#include "formats/read_decisions.h"
#include "workspace/series_store.h"

namespace vorn {

// Whether the file that begins with this line is one.
bool is_heidelberg(const FirstLine& line);

// Opens the file if there is one of that name. If not, the name followed by " - Does not exist" is told,
// except for names that end in "pth", and `input` stays unopened: as if it were at its end. A failed open is
// told as "Open".
void read_open(TextInput& input, const Reading& reading);

// Loads a file into cores 1 to nc, 5,000 at most, in place of what was there.
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
ReadDecisions read_heidel(SeriesStore& w, const Reading& reading);

// Writes entry i as one record, in thousandths of a millimetre, missing rings as
// -9990. A failure is told as "Write " with the name of the series.
//
// Returns: every line was written.
bool write_hrec(const SeriesStore& w, const Writing& writing, int i);

}  // namespace vorn
