// The start menu: the screen to which the user returns from everything else.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Loads what the list file names (init_start) and runs the start menu: the analysis settings, the current
// chronology, the output types, the files and reports to be written, cross-dating. Returns after 10,000
// passes; "Quit" throws ProgramEnd(EndReason::quit). Needs the tables of set_up_graph.
//
// Accepted are a spline period of 3 to 999 years, an autoregressive order of 1 to 11, segments of 4 to 12,000
// years and an overlap of 1 to one less than the segment; other numbers change nothing. An entry abandoned by
// a key other than Return offers the value 116 instead of none. Carefully it offers none, Escape leaves the
// list of chronologies, and no number of passes ends the menu.
void start_menu(Workspace& w);

}  // namespace vorn
