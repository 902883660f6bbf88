// The correlations of every pair of many series, added up: the kernel behind rbar.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

// What adding up the pairs gives.
struct PairSums {
  double sum = 0.0;                    // of all correlations
  double pairs = 0.0;                  // and their number
  std::vector<double> sum_of;          // by series: of its correlations with the others
  std::vector<std::int32_t> pairs_of;  // and their number
};

// Correlates each pair of series, all of whose values count, that have at least `fewest_years` years in
// common, over those years.
//
// The plain definition: cov for each pair, added in the order of the series.
// Source: K. Pearson (1896), Phil. Trans. R. Soc. A 187, 253-318.
PairSums pair_correlations_plain(std::span<const SeriesView> series, std::int64_t fewest_years);

// Is told now and then which share of the work is done, 0 to 1.
using ShareDone = std::function<void(double)>;

// The same to within rounding (1e-12 a correlation), some twenty times as fast.
//
// Series of like length and age are put together in tiles, year by year and filled up with zeroes, so that
// the sums of products of all pairs of two tiles are one product of matrices; sums and sums of squares over
// common years are differences of running sums. Pairs for which those differences would lose digits, pairs
// with a value that is not finite and pairs with a series that hardly varies, or whose squares are too large
// or small a number, are correlated by cov. Vector instructions are chosen when the program runs; the result
// is the same to the last bit with all of them.
PairSums pair_correlations_tiled(std::span<const SeriesView> series, std::int64_t fewest_years,
                                 const ShareDone& told = {});

// So few series are correlated by the plain definition: a site's figures then come from it to the last bit.
inline constexpr std::size_t few_series = 150;

// One or the other, by the number of series.
//
// Means are printed with two decimals. Where a mean of the tiled ones, of a series or of all, lies so near to
// where its printed figures change that the plain one might lie beyond, that one takes its place: what is
// printed is always what the plain definition gives.
PairSums pair_correlations(std::span<const SeriesView> series, std::int64_t fewest_years,
                           const ShareDone& told = {});

}  // namespace vorn
