// Setting the working pair on values that are up to date.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Brings what is derived up to date where something it depends on was changed: indices, the current file's
// chronology (an index file's column is left alone), the chronology entries and the summary lines.
void refresh_derived(Workspace& w);

// refresh_derived, then set_chs. Answers false, after the message "Need more than one core", when there are
// fewer than two entries.
bool set_pair(Workspace& w);

}  // namespace vorn
