// Which series go into tiles, into which, and how much work each way to have all pairs is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "statistics/pair_tiles.h"
#include "workspace/series_view.h"

namespace vorn {

// Series by number: those that are too short for any pair stand in neither.
struct SortedSeries {
  SortedSeries(std::span<const SeriesView> series, std::int64_t fewest_years);

  std::vector<std::size_t>
      good;  // can go into a tile: values are finite, vary, and have a size to calculate with
  std::vector<std::size_t> bad;
};

// Those of like length, then of like age, stand together, so that a tile spans few more years than its series
// do; where many have the same years they stand in tiles of their own. Where at least `fewest_in_cohort`
// have, these are a cohort.
inline constexpr std::size_t fewest_in_cohort = 2 * tile_width;
std::vector<TilePlan> plan_tiles(std::span<const SeriesView> series, std::vector<std::size_t> numbers);

// Whether no pair is left to tiles.
bool are_all_in_cohorts(const std::vector<TilePlan>& tiles);

// Estimates, in cycles of a processor: of the pairs of tiles, those of cohorts left out; of the plain
// definition of these series, and of the same in rows.
double work_of_tiles(const std::vector<TilePlan>& tiles, std::int64_t fewest_years);
double work_of_pairs(std::span<const SeriesView> series, const std::vector<std::size_t>& numbers);
double work_of_rows(std::span<const SeriesView> series, const std::vector<std::size_t>& numbers);

}  // namespace vorn
