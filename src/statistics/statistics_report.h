// The statistics report: span, growth and agreement of every tree of the current file.
#pragma once

#include "records/troubles.h"
#include "workspace/vorndata.h"

namespace vorn {

// Writes Stats.prn: trees 1 to nc in pages of 50, then totals. A mean over nothing is printed as NaN.
// Failures to open and close are told. Uses the work vectors of cbar and rbar.
void stats_rep(Workspace& w, Troubles& troubles);

}  // namespace vorn
