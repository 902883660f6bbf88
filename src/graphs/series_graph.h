// The cross-dating screen's picture: sample and reference as standardised curves over one axis of years.
#pragma once

#include <span>

#include "workspace/vorndata.h"

namespace vorn {

// Draws the whole screen: control panel, correlation strip, axes, the year picked for an edit, the
// alternating marks by which years are counted while one is picked, and both curves. Carefully, where
// "Skeleton" is chosen, both skeleton plots in their place.
void plot_graph(Workspace& w);

// What is drawn of entry `k` (nd + 1 or nd + 2): its ring widths, or the values that are correlated.
const Pool<double>& drawn_values(const Workspace& w, int k);

// Draws entry `k` (nd + 1 or nd + 2) in the current colour and axis system: its values of the visible years,
// standardised by mean and standard deviation (divisor n - 1) of its present values over those years.
//
// Where fewer than 20 years are visible, mean and deviation are those of sl years: the series' first ones
// when the view meets its start, otherwise those that end with the last visible year. Fewer than 3 visible
// years draw nothing, and values that are not finite are left out: all of them where the deviation is 0.
void plotlin(Workspace& w, int k);

// Draws `values` of the years `first` on as a curve that leaves out missing rings: with every ring present
// one curve, otherwise a line between each two neighbours that are both present. As many flags as values, at
// most 12,000.
void line_miss(Workspace& w, int first, std::span<const double> values, std::span<const bool> present);

}  // namespace vorn
