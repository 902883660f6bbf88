// The chronology of the current file as a file.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Writes the chronology of the current file, cf, in the layout that is lit on the start menu: "Index.prn"
// (button 114, write_indcrn) or else "Column.prn" (button 115, write_colcrn). The name is shown as message
// line 52. With neither lit nothing is written. Failures are told as "Open", "Write" and "Close".
void write_ind(Workspace& w);

}  // namespace vorn
