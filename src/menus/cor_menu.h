// The correlation screen of cross-dating: the lag table, or the best dating positions.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Runs the correlation menu on the working pair until the user leaves it, or 1,000 passes. The overlap is not
// checked against the segment length here, as it is on the start menu. Carefully no number of passes ends it.
//
// Returns: false when a change of the store left fewer than two entries: the caller leaves too.
bool cor_menu(Workspace& w);

}  // namespace vorn
