// Ring widths in the compact layout (see compact_layout.h).
#pragma once

#include "formats/file_work.h"
#include "formats/layout_table.h"
#include "formats/read_decisions.h"
#include "workspace/series_store.h"

namespace vorn {

// Whether the file that begins with this line is one.
bool is_compact(const FirstLine& line);

// Loads a file into cores 1 to nc in place of what was there. The values of each series are read
// with the edit format that its header line brings along. Negative values are missing rings and get an
// estimate (mdet_miss). A blank name ends the file, as does its end; a file that ends among the values leaves
// the rest of them 0.
//
// Told, and gone on after: "open", "Read c1" for a header line (where no name was reached it ends the file)
// and "Read c2" for the values. "Would be too many rings" ends the reading before the series that the pool
// has no room for; the 10,000th series is the last one without a message.
ReadDecisions read_compact(SeriesStore& w, const Reading& reading);

// Writes entry i, in thousandths of a millimetre, four columns a value, missing rings
// as -999; a width of 10 mm or more comes out as asterisks. Carefully the values of a series with such widths
// have ten columns, which its header says. A failure is told as "writeH" or "writeD" with
// the name of the series.
//
// Returns: every line was written.
bool write_crec(const SeriesStore& w, const Writing& writing, int i);

// Whether every ring of entry i can be written so.
bool fits_compact(const SeriesStore& w, const Careful& careful, int i);

}  // namespace vorn
