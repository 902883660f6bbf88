// Moving the view of the cross-dating screen, and moving a series in time.
#pragma once

#include <cstdint>

#include "workspace/vorndata.h"

namespace vorn {

// Moves the years shown, fs to ls, back by `step` years (forward by a negative one), but not past the last
// year of the later of the series tr1 and tr2 nor before the first year of the earlier one.
void scr(Workspace& w, std::int32_t step);

// Moves the working entry whose scroll button was hit (w.mous: 7 to 12 the sample, 13 to 18 the reference) by
// `step` years, no farther than that all entries, the working ones included, span 12,000 years. Offers to
// save the change, and marks it when the series is a stored tree other than the last one.
void topbot(Workspace& w, std::int32_t step);

}  // namespace vorn
