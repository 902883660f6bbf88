// Deleting and moving whole cores.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Deletes the cores chc(1 … chs) from the store, in that order, and computes all indices and the chronology
// anew. The selection is empty afterwards. The entries chosen must be cores (1 to nc), each once.
void del_core(Workspace& w);

// Appends the cores chc(1 … chs - 1) to the file whose chronology entry is chc(chs), in that file's layout,
// and then deletes them from the store as del_core does. Cores that go to an index file, or to one that was
// not recognised, are deleted without being written. The store is left as it is when the file cannot be
// opened, or when not every core could be written whole; the failure is told on the page. Answers whether the
// cores were moved. All places of chc are empty afterwards, also those behind the selection.
//
// The target's chronology in memory stays: the cores are part of it when it is loaded the next time.
bool move_core(Workspace& w);

}  // namespace vorn
