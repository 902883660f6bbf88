// What the readers of ring widths share: the store is started anew, and what was read is marked and
// completed.
#pragma once

#include "formats/file_work.h"
#include "formats/read_decisions.h"
#include "workspace/series_store.h"

namespace vorn {

// Starts the series store anew: no cores, the first one at the pool's first place.
void start_store(SeriesStore& w);

// Gives entry i, which starts at ad(i), a length of `years` and sets where the next entry starts. When it
// would pass the pool's end this is told, "Would be too many rings", the entry stays without years and the
// answer is false: the reading stops and keeps the series before it. `line` is where the reader is.
bool take_places(SeriesStore& w, int i, int years, const Reading& reading, std::int64_t line);

// Ends the loading of cores 1 to nc: a ring is present where its width is not negative (and is a number), and
// where any is missing mdet_miss puts estimates into the widths. Returns how many are missing.
std::int32_t finish_cores(SeriesStore& w);

}  // namespace vorn
