// Plausible widths for rings that a file marks as missing.
#pragma once

#include "workspace/series_store.h"

namespace vorn {

// Writes an estimate into `x` at every missing ring of entries i1 to i2, so that detrending can run over an
// unbroken series. The flags `xok` stay false: whatever counts or correlates still passes the ring over.
//
// The estimate is the mean width of the group in that calendar year, times how wide the series grows: the sum
// of its present widths over the sum of the group's mean growth curve (by ring number) at the same rings. It
// is 0 in a year in which no series has a ring, and not a number in a series without any.
//
// Nothing is estimated when the group spans more than 12,000 years (max_years); its chronology is refused
// later. Entries without missing rings are left alone; an empty group is none.
void mdet_miss(SeriesStore& w, int i1, int i2);

}  // namespace vorn
