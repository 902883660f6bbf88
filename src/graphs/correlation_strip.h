// The strip under the series graph: does a dating error start at the middle year?
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Draws a bar at the middle visible year and, left and right of it, the correlation of sample and reference
// over the stretch (up to seg years) on that side, for the sample read 2 years earlier to 2 years later.
// Draws nothing when the common span is 20 years or less, or more than 2 years away from the bar.
void cor_graph(Workspace& w);

}  // namespace vorn
