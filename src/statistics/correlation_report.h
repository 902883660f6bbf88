// The correlation report: how well every series agrees with the current chronology, segment by segment.
#pragma once

#include "records/troubles.h"
#include "workspace/vorndata.h"

namespace vorn {

// Writes Corr.prn: blocks of up to 24 segments of seg years, one every olap years, with a line for each
// series, its mean over all blocks so far, and the means of the trees.
//
// Trees are compared with the chronology without them, other chronologies with the chronology as it stands.
// Every depth of the current chronology below 2 is raised to 2 and stays so until its column is built again.
// Failures to open, write and close are told. Uses wk1, wk2, iwk1 and iwk2 and the tables that
// w.corr_tables keeps; leaves the last line in w.mess.
void cor_report(Workspace& w, Troubles& troubles);

}  // namespace vorn
