// The correlation report: how well every series agrees with the current chronology, segment by segment.
#pragma once

#include <functional>

#include "records/troubles.h"
#include "statistics/segment_grid.h"
#include "workspace/vorndata.h"

namespace vorn {

// Computes the report's figures, block by block: up to 24 segments of seg years, one every olap years. Each
// is handed to `use` while w.corr_tables holds its cells: valid(i, j) and correlation(i, j) of entry i in
// segment j, the sums of their means so far, and those over the trees. `used` are the years of a depth above
// 1, from the first to the last: a cell's own years follow from both (cell_years).
//
// Trees are compared with the chronology without them, other chronologies with the chronology as it stands.
// Every depth of the current chronology below 2 is raised to 2 and stays so until its column is built again.
// Does not depend on what was computed before, but for the chronologies of other files (see left-behind).
using UseBlock = std::function<void(const SegmentBlock& block, YearSpan used)>;
void cor_blocks(Workspace& w, const UseBlock& use);

// Writes Corr.prn: the blocks, with a line for each series, its mean over all blocks so far, and the means of
// the trees.
//
// Failures to open, write and close are told. Uses wk1, wk2, iwk1 and iwk2 and the tables that
// w.corr_tables keeps; leaves the last line in w.mess.
void cor_report(Workspace& w, Troubles& troubles);

}  // namespace vorn
