// Moving the view of the cross-dating screen, and moving a series in time.
#pragma once

#include <cstdint>

#include "workspace/comparison.h"
#include "workspace/series_store.h"
#include "workspace/view.h"
#include "workspace/vorndata.h"

namespace vorn {

// The years by which button n of a row of six scroll buttons scrolls: from the left 50, 10 and 1 back, then
// 1, 10 and 50 on.
std::int32_t scroll_years(ButtonRange row, ButtonNumber n);

// Moves the years shown, fs to ls, back by `step` years (forward by a negative one), but not past the last
// year of the later of the series tr1 and tr2 nor before the first year of the earlier one.
void scr(View& view, const SeriesStore& store, const Comparison& pair, std::int32_t step);

// Moves the working entry `k` (1 the sample, 2 the reference) by `step` years, no farther than that all
// entries, the working ones included, span 12,000 years. Offers to save the change, and marks it when the
// series is a stored tree other than the last one; carefully of any series whose shift can be saved.
void topbot(Workspace& w, int k, std::int32_t step);

}  // namespace vorn
