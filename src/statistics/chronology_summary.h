// The chronologies as entries of the series store, and the summary lines of the start screen.
#pragma once

#include "records/text.h"
#include "workspace/vorndata.h"

namespace vorn {

// Makes every file's chronology an entry behind the cores (nc + 1 to nc + nfil), sets nd and writes message
// lines 1, 3, 4 and 5: years and number of cores of the current file, its cbar and its rbar.
//
// A value is present where its depth is above 0. A chronology that would pass the pool's end becomes an entry
// without years, with the message "Would be too many rings". Indices and chronologies must be up to date;
// derived_stale is cleared. Uses the work vectors of cbar and rbar.
void refresh_crns(Workspace& w);

// refresh_crns, and what the start menu shows of it: the name of the current file on its button, its number
// as the one chosen (chc, chs), and "Move Core" offered when there is a second file of ring widths to move
// to.
//
// Returns: more than one file of ring widths is loaded.
bool show_crns(Workspace& w);

// The series name of a chronology, from the name of its file: the last four characters (the extension)
// dropped, then what follows the last "/" or "\", cut or padded to eight characters.
Name chronology_name(const FileName& file);

}  // namespace vorn
