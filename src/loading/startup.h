// Start-up: the defaults, the list of files and the loading of each.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Sets the analysis settings to their defaults, shows them on their buttons, reads the list file and loads
// what it names: read_list, check_files and show_crns, in this order.
void init_start(Workspace& w);

// Reads the names of up to 100 files from the list file "Vorn.fil", one a line of up to 60 characters; lines
// behind the 100th are ignored, which is told outside the page. Each file that exists is recognised, and
// listed on the page as it comes up.
//
// Without a list file: throws ProgramEnd(EndReason::cannot_go_on) after a message. Failures to open or read
// it are told as "Open" and "Read".
void read_list(Workspace& w);

// Keeps the listed files that exist and were recognised, in their order, and loads them from the last to the
// first, so that each leaves its chronology and the store ends up with the cores of the first file of ring
// widths. Sets nfil, nraw and cf, which is 1 even when no file is kept; cnam(1) then still holds the first
// name listed.
void check_files(Workspace& w);

// Sets rftype and rfhead of the current file, cf, from the first lines of the file cnam(cf); troubles are
// told on the page.
void find_rftyp(Workspace& w);

// Loads the current file, cf, with the reader of that `layout`, computes the indices of
// its cores and builds its chronology. An index file leaves the store alone. Any other layout does nothing.
// Troubles are told on the page; a limit that was passed without a message is told outside it.
void init_raw(Workspace& w, Layout layout);

}  // namespace vorn
