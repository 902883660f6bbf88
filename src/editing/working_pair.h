// The working pair: copies of the sample and the reference behind the store, on which cross-dating works.
//
// Entry nd + 1 is the sample's slot, nd + 2 the reference's. The sample's slot starts on the last pool place
// of entry nd and so overwrites one value of it, carefully behind it; the reference's slot follows directly.
// The screens edit the slots alone; save_tree writes one back.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Checks the pair tr1, tr2 (a number outside 1 to nd becomes 1 or 2), moves the years shown when the pair
// lies outside them, makes the pair the selection, fills the slots and shows "Insert" and "Delete" when one
// of the pair is a core. The one way in which pair and selection are set again after a change of the store.
//
// Needs two entries at least (nd >= 2).
void set_chs(Workspace& w);

// Fills both slots from tr1 and tr2. When one is a core of the current file and the other that file's own
// chronology, the core is taken out of the chronology's slot year by year: (depth x value - core) / (depth -
// 1), so that it is not compared with itself (leave-one-out; Cook and Kairiukstis 1990, Holmes 1983). A year
// that had the core alone becomes 1.0 and missing. Years of the core outside the chronology are passed over.
void remove_tree(SeriesStore& w, const FileTable& files, const Comparison& pair, const Careful& careful);

// Whether saving slot `k` would leave cores that span more years than a chronology has, which would end the
// program when that is made the next time.
bool would_be_too_long(const SeriesStore& w, const Comparison& pair, int k);

// Writes slot `k` (1 the sample, 2 the reference) back into its entry; what lies behind it in the pool moves
// by the change of length. The entry's name stays; chronologies are not built again.
void save_tree(SeriesStore& w, Comparison& pair, int k);

}  // namespace vorn
