// Both skeleton plots on the cross-dating screen: the sample's bars up, the reference's mirrored below them.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// The axis of lengths reaches from -skeleton_top to skeleton_top; the bars are at most 10 long.
inline constexpr double skeleton_top = 12;

// Draws the skeleton plot of entry `k` (nd + 1 up, nd + 2 down) of the visible years in the current colour
// and axis system: of narrow rings bars, of wide ones a "b", of missing ones an "m". A letter that would lie
// on the one before is left out, and so are all where more than 625 years are shown.
void plot_skeleton(Workspace& w, int k);

// Says above the graph what stands for what.
void explain_skeleton(const Workspace& w);

}  // namespace vorn
