// A mean core: one series made of several.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Builds one new core, the last one, whose ring widths are the year-by-year mean of the cores chc(1 … chs),
// then computes all indices and the chronology anew and sets the working pair again. It is named by the
// chooser's "Mean Name" when that has 2 to 8 characters, otherwise after the first core chosen, with "M"
// appended.
//
// A ring counts in a year from the first chosen core on that has that ring present: the width of a later core
// is then added even where its own ring is missing (an estimate). So the result depends on the order of
// choice.
//
// Refused, with nothing changed: "Would be too many trees", "Need more than one core", "Would be too many
// rings". Where a year of the span is covered by no counted ring, "Warning - trees do not overlap ?" is shown
// and the new core stays, with sums for widths and nothing computed anew. Cores that have not a year between
// them make no entry; they get the same warning.
//
// Returns: the mean was made and the working pair set.
bool mean_create(Workspace& w);

}  // namespace vorn
