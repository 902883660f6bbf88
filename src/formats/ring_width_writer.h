// The cores of the store as a file of ring widths.
#pragma once

#include "records/text.h"
#include "workspace/vorndata.h"

namespace vorn {

// The name under which the cores of `file` are written: its extension replaced by "RWW". Without a point
// among the three characters before the last one, the last four characters give way; of a name too short for
// that nothing but "RWW" is left. Cut to 60 characters.
FileName output_name(const FileName& file);

// Writes cores 1 to nc in the layout that is lit on the start menu (button 111 Tucson raw, 112 Heidelberg,
// 113 compact) to output_name() of the current file, shown as message line 21. With none lit the file is
// created empty. Failures are told as "Open", "Close" and by the record writers.
void write_raw(Workspace& w);

}  // namespace vorn
