// The cross-dating screen: two series on one time axis, slid, mended and compared.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Runs the cross-dating menu on the entries 1 and 2 until the user leaves it, or 20,000 passes. Needs two
// entries.
//
// Three states: browsing; a year is to be picked (after "Insert" or "Delete", only the plots of cores can be
// clicked); an edit, already applied, is to be kept or undone. Carefully Escape leads from the second back to
// the first, and no number of passes ends it.
void cross_menu(Workspace& w);

}  // namespace vorn
