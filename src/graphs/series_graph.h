// The cross-dating screen's picture: sample and reference as standardised curves over one axis of years.
#pragma once

#include <span>

#include "workspace/vorndata.h"

namespace vorn {

// Draws the whole screen: control panel, correlation strip, axes, the year picked for an edit, the
// alternating marks by which years are counted while one is picked, and both curves.
void plot_graph(Workspace& w);

// Draws entry `k` (nd + 1 or nd + 2) in the current colour: its values of the visible years, standardised by
// mean and standard deviation (divisor n - 1) of its present values over those years, or over sl years where
// fewer than 20 are visible. Fewer than 3 visible years draw nothing.
void plotlin(Workspace& w, int k);

// Draws `values` of the years `first` on as a curve that leaves out missing rings: with every ring present
// one curve, otherwise a line between each two neighbours that are both present.
void line_miss(Workspace& w, int first, std::span<const double> values, std::span<const bool> present);

}  // namespace vorn
