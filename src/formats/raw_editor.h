// The raw-data editor: ring widths as a table of 30 years by one column a series.
#pragma once

#include <cstdint>

#include "workspace/vorndata.h"

namespace vorn {

// Runs the editor on the cores chc(1 … chs), at most six ("All Trees" counts as one when there are several),
// until the user leaves it, or 10,000 clicks. Creates Edit.raw, empty, at the start.
void edit_menu(Workspace& w);

// Selects the first series, shows and labels the column buttons and sets the first year shown.
void edit_setup(Workspace& w);

// Draws the table: the years edfs to edfs + 29 and, of each series, its widths in thousandths of a
// millimetre.
void edit_disp(Workspace& w);

// With a series' column selected dates that series `step` years later; with "All Trees" scrolls the years
// shown.
void edit_scr(Workspace& w, std::int32_t step);

// Creates Edit.raw, empty.
void edit_write(Workspace& w);

// Reads the chosen series back from Edit.raw (the Tucson raw layout, thousandths, each series ended by
// -9999).
//
// A series that Edit.raw does not hold whole and by its name, or that the store has no room for, stays as it
// was and so do those behind it; the failure is told.
void edit_read(Workspace& w);

}  // namespace vorn
