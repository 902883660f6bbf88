// The chronologies made entries, and what the start screen shows of the current one.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Makes every file's chronology an entry (place_chronologies) and writes message lines 1, 3, 4 and 5: years
// and number of cores of the current file, its cbar and its rbar.
//
// Each chronology that finds no room in the pool is told as "Would be too many rings". Indices and
// chronologies must be up to date; derived_stale is cleared. Uses the work vectors of cbar and rbar.
void refresh_crns(Workspace& w);

// refresh_crns, and what the start menu shows of it: the name of the current file on its button, its number
// as the one chosen (chc, chs), and "Move Core" offered when there is a second file of ring widths to move
// to.
//
// Returns: more than one file of ring widths is loaded.
bool show_crns(Workspace& w);

}  // namespace vorn
