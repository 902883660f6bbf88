// The series chooser: series are picked by clicking their names, and something is done with those picked.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Runs the chooser until the user leaves it, or 1,000 passes; what is derived is then brought up to date and
// the pair chosen becomes the working pair. Carefully no number of passes ends it.
//
// Returns: false when fewer than two entries are left, after "Need more than one core": the caller leaves
// too.
bool choose(Workspace& w);

}  // namespace vorn
