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

  // Adds the correlation of two series.
  void add(std::size_t i, std::size_t j, double r) {
    sum_of[i] += r;
    sum_of[j] += r;
    ++pairs_of[i];
    ++pairs_of[j];
    sum += r;
  }
};

// Correlates each pair of series, all of whose values count, that have at least `fewest_years` years in
// common, over those years.
//
// The plain definition: cov for each pair, added in the order of the series.
// Source: K. Pearson (1896), Phil. Trans. R. Soc. A 187, 253-318.
PairSums pair_correlations_plain(std::span<const SeriesView> series, std::int64_t fewest_years);

// Is told now and then, by the thread that asked for the work, which share of it is done, 0 to 1.
using ShareDone = std::function<void(double)>;

// How the work is done; what comes out does not depend on it.
struct PairWork {
  ShareDone told = {};
  std::size_t threads = 0;  // 0: as many as are worth it here
};

// The same to within rounding, some thirty times as fast on one thread.
//
// Series of like length and age are put together in tiles, year by year and filled up with zeroes, so that
// the sums of products of all pairs of two tiles are one product of matrices; sums and sums of squares over
// common years are differences of running sums. Pairs for which those differences would lose digits are
// correlated by cov. So is every pair of a series that holds a value that is not finite, that hardly varies,
// or whose squares are too large or small a number (pair_rows.h): its sum is that of the plain definition.
//
// Vector instructions are chosen when the program runs. The result is the same to the last bit for any number
// of threads, for all kinds of instructions with a fused multiply-add, and for all without.
PairSums pair_correlations_tiled(std::span<const SeriesView> series, std::int64_t fewest_years,
                                 const PairWork& work = {});

// The same, where many series have the same years without going through their pairs (cohorts.h).
PairSums pair_correlations_in_cohorts(std::span<const SeriesView> series, std::int64_t fewest_years,
                                      const PairWork& work = {});

// All pairs as pair_correlations_plain has them, to the last bit, but many at a time.
PairSums pair_correlations_in_rows(std::span<const SeriesView> series, std::int64_t fewest_years,
                                   const PairWork& work = {});

// Of so few series a site's figures are those of the plain definition to the last bit. Of fewer than the
// second nothing is laid out in rows first.
inline constexpr std::size_t few_series = 150, fewest_in_rows = 8;

// How they are had; in_tiles stands for cohorts, too.
enum class PairWay { one_by_one, in_rows, in_tiles };

// That which is estimated to be the least work: the plain definition, pair by pair, where few of the pairs
// have years in common; rows where more have, or most series hardly vary; of more than few series else tiles
// and cohorts. It depends on nothing but the series.
PairWay pair_way(std::span<const SeriesView> series, std::int64_t fewest_years);

// All pairs, in that way.
//
// Means are printed with two decimals, those of series with six significant digits as well. Where a mean of
// the tiled ones, of a series or of all, lies so near to where its printed figures change that the plain one
// might lie beyond, that one takes its place: what is printed is always what the plain definition gives.
PairSums pair_correlations(std::span<const SeriesView> series, std::int64_t fewest_years,
                           const PairWork& work = {});

}  // namespace vorn
