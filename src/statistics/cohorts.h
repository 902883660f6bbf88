// Cohorts, many series that have the same years: their pairs need not be gone through one by one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "statistics/pair_correlations.h"
#include "statistics/pair_tiles.h"
#include "workspace/series_view.h"

namespace vorn {

// Adds the correlations of all pairs of series of which both stand in a cohort, as these plans of tiles tell,
// to the sums and numbers of each, where they have at least `fewest_years` years in common. `told` is told
// which share is done. `errors`, by series, is raised to how far a correlation of each may lie from that of
// the plain definition: of a pair, both together.
//
// All pairs of two cohorts have the same years in common. Over these each series is taken less its mean and
// divided by the root of its sum of squares: a correlation is then a sum of products, and the sum of those of
// one series with all of a cohort is the sum of its products with the sum of them. So work grows with the
// series of two cohorts, not with their pairs; it does grow with the pairs of cohorts. Pairs of a series that
// keeps less than least_share of its squares over the common years are those of the plain definition.
//
// What comes out is the same to the last bit for any number of threads and all kinds of instructions.
void add_cohort_pairs(std::span<const SeriesView> series, const std::vector<TilePlan>& tiles,
                      std::int64_t fewest_years, std::size_t threads, const ShareDone& told, PairSums& sums,
                      std::span<double> errors);

// Estimates how much work that is, in cycles of a processor.
double work_of_cohorts(const std::vector<TilePlan>& tiles, std::int64_t fewest_years);

}  // namespace vorn
