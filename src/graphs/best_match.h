// The best matches of the sample, as the correlation screen shows them.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Draws best_matches in columns: years, then correlation and offset of each rank. Leaves the colour at ink.
void cor_best(const Workspace& w);

}  // namespace vorn
