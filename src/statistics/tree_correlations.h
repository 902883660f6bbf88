// How well the trees of the current file agree: with each other, and with their chronology.
#pragma once

#include <span>

#include "workspace/vorndata.h"

namespace vorn {

// Carefully constant cores (workspace/constant_core.h) are no trees: theirs is 0 and counts nowhere.

// Two series are correlated when they have at least so many years in common.
inline constexpr int fewest_common_years = 40;

// The mean correlation between trees (RBAR), over all pairs of trees 1 to nc with enough common years.
//
// Given:    rtree   room for at least nc values.
// Returned: the mean over all such pairs, not a number where there is none.
//           rtree   by tree, from 0: its mean correlation with the others; 0 where it has no such pair.
// Notes:    on the analysis values ax, estimates at missing rings included. Quadratic in nc, unless years and
//           values of all trees are those of the call before: what it gave is kept in rbar_kept. Leaves in
//           iwk1 how many pairs each tree has.
// Source:   T. M. L. Wigley, K. R. Briffa, P. D. Jones (1984), J. Clim. Appl. Meteorol. 23, 201-213.
double rbar(Workspace& w, std::span<double> rtree);

// The correlation of each tree with the current chronology, the tree taken out of it.
//
// Given:    rcrn   room for at least nc values; may be wk1 itself, then only the mean is of use afterwards.
// Returned: the mean over the trees with enough years in common, not a number where there is none.
//           rcrn   by tree, from 0: its correlation; 0 where it has too few such years.
// Notes:    the common years run from the first to the last with a depth above 1. The tree is taken out of
//           the sum depth x value, which is then divided by the full depth. Uses wk1, wk2 and wk3.
double cbar(const SeriesStore& store, const FileTable& files, WorkVectors& work, std::span<double> rcrn,
            const Careful& careful = {});

}  // namespace vorn
