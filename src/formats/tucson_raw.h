// Ring widths in the Tucson raw layout (see tucson_raw_layout.h).
#pragma once

#include "formats/file_work.h"
#include "formats/layout_table.h"
#include "formats/read_decisions.h"
#include "workspace/series_store.h"

namespace vorn {

// Whether the line is the first one of a series: 18 to 79 columns long, as long as the last digit of the year
// in columns 9-12 asks for, and all numbers.
bool starts_raw_series(const FirstLine& line);

// Loads a file, behind its header lines, into cores 1 to nc in place of what was there.
//
// Lines belong together while name and year go on; a series ends before the last 999 (widths in hundredths of
// a millimetre) or -9999 (thousandths) of its last line. A series without either loses its last line and the
// value before it, without a message. Negative widths are missing rings and get an estimate (mdet_miss). A
// blank name ends the file, as does its end.
//
// Told, and gone on after: "Open", "Read Headers " and, for a line that is not all numbers, "Read2". "Would
// be too many rings" ends the reading before the series that the pool has no room for. The 10,000th series is
// the last one without a message; a series of more than 1,003 further lines is split there.
ReadDecisions read_raw(SeriesStore& w, const Reading& reading);

// Writes entry i, in thousandths of a millimetre, missing rings as -9990, closed by
// -9999. A failure is told as "Write" with the name of the series.
//
// Returns: every line was written.
bool write_rrec(const SeriesStore& w, const Writing& writing, int i);

}  // namespace vorn
