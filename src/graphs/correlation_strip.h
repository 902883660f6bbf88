// The strip under the series graph: does a dating error start at the middle year?
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Draws a bar at the middle visible year and, left and right of it, the correlation of sample and reference
// over the stretch on that side for the sample read 2 years earlier to 2 years later.
//
// A stretch reaches seg years from the bar (to the left one more) as far as both series have them; one of 10
// years or less is left out, one with fewer than 3 pairs of present rings reads "None". Nothing at all is
// drawn, not even the bar, when the last common year is less than 20 years after the first or when the bar
// is more than 2 years away from the common years. Carefully the bar says its year.
void cor_graph(const Workspace& w);

}  // namespace vorn
