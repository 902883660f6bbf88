// The correlation screen: the lag table as a grid, and its controls.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Draws the lag table filled by cor_tab: a row a segment, a column a lag from -10 to +10, the best lag of
// each row shaded (the first one among equals; a cell of too few pairs, which holds 2.0, wins and is drawn as
// +.00).
void cor_plot(const Workspace& w);

// Writes segment length, overlap and the start year `ystart` into their buttons and draws the screen's
// controls.
void cor_but(Workspace& w, int ystart);

}  // namespace vorn
