// The raw-data editor: ring widths as a table of 30 years by one column a series.
#pragma once

#include <cstdint>

#include "workspace/vorndata.h"

namespace vorn {

// Runs the editor on the cores chc(1 … chs), one to six, until the user leaves it, or 10,000 clicks. Creates
// Edit.raw, empty, at the start. There are six columns: beside six series there is none for "All Trees".
//
// Carefully "Quit" and "Reset" bring the cores back as they were at the start, widths are typed in
// thousandths of a millimetre, and no number of clicks ends it.
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

// Reads the chosen series back from Edit.raw: the Tucson raw layout, thousandths, each series ended by -9999,
// in the order of choice. A ring of a negative width is missing; no width is estimated for it. Of every
// series behind the first the first line gives its name and year only: its values are those of the first
// series.
//
// What cannot be read is told, and reading goes on with what was there before. When there is not even a first
// line everything stays as it was. So does, with a message, a series that Edit.raw does not hold whole and by
// its name, or that the store has no room for, with all that follow it.
void edit_read(Workspace& w);

// Lets all entries behind e follow each other without a gap again, up to the working entries: an edit of the
// pool moves the start of the next entry alone.
void pack_starts(SeriesStore& w, int e);

}  // namespace vorn
