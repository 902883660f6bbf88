// The pairs of all series that stand in tiles, on several threads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "statistics/pair_correlations.h"
#include "statistics/pair_tiles.h"
#include "workspace/series_view.h"

namespace vorn {

// Adds the correlations of all pairs of series of these tiles, but those of which both stand in a cohort, to
// the sums and numbers of each. `told` gets the share that is done. What comes out is the same to the last
// bit for any number of threads.
void add_tiled_pairs(std::span<const SeriesView> series, std::vector<TilePlan> tiles,
                     std::int64_t fewest_years, std::size_t threads, const ShareDone& told, PairSums& sums);

}  // namespace vorn
