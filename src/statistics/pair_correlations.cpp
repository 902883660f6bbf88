#include "statistics/pair_correlations.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>

#include "base/parallel_for.h"
#include "statistics/cohorts.h"
#include "statistics/correlation.h"
#include "statistics/overlaps.h"
#include "statistics/pair_rows.h"
#include "statistics/pair_tiles.h"
#include "statistics/tile_plans.h"
#include "statistics/tiled_pairs.h"

namespace vorn {
namespace {

// Rows of the table of correlations that are held at once.
constexpr std::size_t rows_at_once = 64;

// The mean of all is nearer than this to that of the plain definition, beside the error of a correlation: of
// 50 million of them, added in another order.
constexpr double most_error = 1e-8;

double plain_correlation(const SeriesView& a, const SeriesView& b) {
  const YearSpan both = common(a.years(), b.years());
  return cov(a.over(both).values, b.over(both).values);
}

std::int64_t common_years(const SeriesView& a, const SeriesView& b) {
  return common(a.years(), b.years()).count();
}

PairSums nothing_yet(std::size_t series) {
  PairSums sums;
  sums.sum_of.assign(series, 0.0);
  sums.pairs_of.assign(series, 0);
  return sums;
}

void count_pairs(PairSums& sums) {
  sums.pairs = std::accumulate(sums.pairs_of.begin(), sums.pairs_of.end(), 0.0) / 2;
}

// --- Pairs one by one.

PairSums one_by_one(std::span<const SeriesView> series, std::int64_t fewest_years) {
  PairSums sums = nothing_yet(series.size());
  Overlaps overlaps(series, fewest_years);
  for (std::size_t i = 0; i < series.size(); ++i) {
    for (const std::size_t j : overlaps.behind(i)) sums.add(i, j, plain_correlation(series[i], series[j]));
  }
  count_pairs(sums);
  return sums;
}

// --- Pairs in rows.

// Adds the pairs of some series with all others, in the order of the plain definition.
class PairsOfSome {
 public:
  PairsOfSome(std::span<const SeriesView> series, std::vector<std::size_t> some,
              const std::vector<std::size_t>& others, std::int64_t fewest_years)
      : series_(series),
        some_(std::move(some)),
        fewest_years_(fewest_years),
        rows_of_some_(series, some_, fewest_years),
        rows_of_others_(series, others, fewest_years) {
    std::merge(some_.begin(), some_.end(), others.begin(), others.end(), std::back_inserter(all_));
  }

  void add(PairSums& sums, std::size_t threads, const ShareDone& told) const {
    std::vector<std::vector<double>> rows(std::min(rows_at_once, all_.size()),
                                          std::vector<double>(series_.size()));
    for (std::size_t from = 0; from < all_.size(); from += rows.size()) {
      const std::size_t count = std::min(rows.size(), all_.size() - from);
      parallel_for(count, threads, [&](std::size_t k) { correlate(all_[from + k], rows[k]); });
      for (std::size_t k = 0; k < count; ++k) add_row(sums, all_[from + k], rows[k]);
      if (told) told(static_cast<double>(from + count) / static_cast<double>(all_.size()));
    }
  }

 private:
  bool is_of_some(std::size_t i) const { return std::binary_search(some_.begin(), some_.end(), i); }

  void correlate(std::size_t i, std::span<double> row) const {
    rows_of_some_.row(i, static_cast<std::ptrdiff_t>(i), row);
    if (is_of_some(i)) rows_of_others_.row(i, static_cast<std::ptrdiff_t>(i), row);
  }

  void add_row(PairSums& sums, std::size_t i, std::span<const double> row) const {
    const auto& partners = is_of_some(i) ? all_ : some_;
    for (auto j = std::upper_bound(partners.begin(), partners.end(), i); j != partners.end(); ++j) {
      if (common_years(series_[i], series_[*j]) >= fewest_years_) sums.add(i, *j, row[*j]);
    }
  }

  std::span<const SeriesView> series_;
  std::vector<std::size_t> some_, all_;  // ascending
  std::int64_t fewest_years_;
  PairRows rows_of_some_, rows_of_others_;
};

std::vector<std::size_t> long_enough(std::span<const SeriesView> series, std::int64_t fewest_years) {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (static_cast<std::int64_t>(series[i].values.size()) >= fewest_years) numbers.push_back(i);
  }
  return numbers;
}

// --- What is printed.

// How far a correlation of a series may lie from that of cov, at most; of a pair it is what both give
// together. Sums of n numbers are off by n roundings, differences of running sums by those of the whole
// series; all measured against the least that the series keeps of its squares.
double error_of(const SeriesView& series, std::int64_t fewest_years) {
  constexpr double rounding = std::numeric_limits<double>::epsilon() / 2;
  const auto years = static_cast<double>(series.values.size()), fewest = static_cast<double>(fewest_years);
  return (4 + 8 * std::sqrt(years / std::max(fewest, 1.0))) * years * rounding / least_share(years);
}

// By series; 0 for those that are not had in tiles.
std::vector<double> errors_of(std::span<const SeriesView> series, const std::vector<std::size_t>& tiled,
                              std::int64_t fewest_years) {
  std::vector<double> errors(series.size(), 0.0);
  for (const std::size_t i : tiled) errors[i] = error_of(series[i], fewest_years);
  return errors;
}

bool rounds_alike(double units, double error) {
  return std::abs(units - std::floor(units) - 0.5) > error;
}

// Whether all values as near as `error` print alike with two decimals: no rounding tie lies between them, nor
// zero, since a negative nought is printed with its sign.
bool prints_alike(double mean, double error) {
  const double size = std::abs(mean);
  return size > error && rounds_alike(size * 100, error * 100);
}

// The same with six significant digits.
bool prints_alike_in_full(double mean, double error) {
  const double size = std::abs(mean);
  if (!(size > error)) return false;
  const double unit = std::pow(10.0, std::floor(std::log10(size)) - 5);
  return rounds_alike(size / unit, error / unit);
}

// For so few series nothing is laid out in rows first.
constexpr std::size_t few_unsure = 8;

// Puts the plain definition in the place of means that might be printed otherwise.
class Settler {
 public:
  Settler(std::span<const SeriesView> series, std::int64_t fewest_years,
          const std::vector<std::size_t>& tiled, std::vector<double> errors)
      : series_(series),
        fewest_years_(fewest_years),
        tiled_(tiled),
        errors_(std::move(errors)),
        all_errors_(std::accumulate(errors_.begin(), errors_.end(), 0.0)),
        largest_error_(*std::max_element(errors_.begin(), errors_.end())) {}

  PairSums settled(PairSums sums, const PairWork& work) const {
    const std::vector<std::size_t> unsure = unsure_ones(sums);
    const bool all_unsure = sums.pairs > 0 && !prints_alike(sums.sum / sums.pairs, error_of_all(sums));
    if (all_unsure || unsure.size() > series_.size() / 2) {
      return pair_correlations_in_rows(series_, fewest_years_, {{}, work.threads});
    }
    if (!unsure.empty()) settle(sums, unsure, work.threads);
    return sums;
  }

 private:
  std::vector<std::size_t> unsure_ones(const PairSums& sums) const {
    std::vector<std::size_t> unsure;
    for (const std::size_t i : tiled_) {
      if (sums.pairs_of[i] == 0) continue;
      const double pairs = sums.pairs_of[i], mean = sums.sum_of[i] / pairs;
      const double error = errors_[i] + std::min(all_errors_ / pairs, largest_error_) +
                           pairs * std::numeric_limits<double>::epsilon();
      if (!prints_alike(mean, error) || !prints_alike_in_full(mean, error)) unsure.push_back(i);
    }
    return unsure;
  }

  // Each correlation is off by what both of its series give.
  double error_of_all(const PairSums& sums) const {
    double error = 0;
    for (const std::size_t i : tiled_) error += errors_[i] * sums.pairs_of[i];
    return error / sums.pairs + most_error;
  }

  void settle(PairSums& sums, const std::vector<std::size_t>& unsure, std::size_t threads) const {
    std::optional<PairRows> rows;
    if (unsure.size() > few_unsure) rows.emplace(series_, long_enough(series_, fewest_years_), fewest_years_);
    parallel_for(unsure.size(), threads, [&](std::size_t k) {
      sums.sum_of[unsure[k]] = rows ? sum_in_rows(*rows, unsure[k]) : plain_sum(unsure[k]);
    });
  }

  double sum_in_rows(const PairRows& rows, std::size_t i) const {
    std::vector<double> row(series_.size());
    rows.row(i, -1, row);
    return sum_over_partners(i, [&row](std::size_t j) { return row[j]; });
  }

  double plain_sum(std::size_t i) const {
    return sum_over_partners(i, [&](std::size_t j) { return plain_correlation(series_[i], series_[j]); });
  }

  template <class Correlation>
  double sum_over_partners(std::size_t i, const Correlation& correlation) const {
    double sum = 0.0;
    for (std::size_t j = 0; j < series_.size(); ++j) {
      if (j != i && common_years(series_[i], series_[j]) >= fewest_years_) sum += correlation(j);
    }
    return sum;
  }

  std::span<const SeriesView> series_;
  std::int64_t fewest_years_;
  const std::vector<std::size_t>& tiled_;  // their pairs stand in tiles
  std::vector<double> errors_;             // by series, of a correlation
  double all_errors_, largest_error_;
};

// --- Which way.

// Less is not worth a thread.
constexpr double little_work = 2e6;
// As measured: where all series have the same years rows take a sixth of the time of the plain definition,
// else more.
constexpr double speed_of_rows = 2, best_speed_of_rows = 6;
// Where the plain definition takes no more for each series there is nothing to choose: that would take as
// long.
constexpr double little_a_series = 2'000;
// Tiles are taken when they save as much of the other ways.
constexpr double worth_tiles = 0.25;
// How far apart the ties are that six significant digits of a usual mean may lie at.
constexpr double usual_unit = 1e-7;

struct Tiling {
  SortedSeries sorted;
  std::vector<TilePlan> tiles;
};

Tiling tiling_of(std::span<const SeriesView> series, std::int64_t fewest_years) {
  SortedSeries sorted(series, fewest_years);
  auto tiles = plan_tiles(series, sorted.good);
  return {std::move(sorted), std::move(tiles)};
}

// Estimates how much work each way is, in cycles.
class Ways {
 public:
  Ways(std::span<const SeriesView> series, std::int64_t fewest_years)
      : series_(series), fewest_years_(fewest_years), numbers_(long_enough(series, fewest_years)) {
    if (series.size() < fewest_in_rows) return;
    plain_ = work_of_pairs(series, numbers_);
    work_ = plain_;
    if (plain_ < little_a_series * static_cast<double>(numbers_.size())) return;
    const double tiled = series.size() > few_series ? work_tiled() : never;
    const bool surely_tiled = tiled < (1 - worth_tiles) * plain_ / best_speed_of_rows;
    const double in_rows = surely_tiled ? never : work_of_rows(series, numbers_);
    if (in_rows < work_) take(PairWay::in_rows, in_rows);
    if (tiled < (1 - worth_tiles) * work_) take(PairWay::in_tiles, tiled);
  }

  PairWay best() const { return best_; }
  // Where it is the best.
  const Tiling& tiling() const { return *tiling_; }

  // How many threads are worth it, where nobody says.
  PairWork with_threads(const PairWork& work) const {
    if (work.threads > 0) return work;
    return {work.told, series_.size() > few_series && work_ > little_work ? threads_here() : 1};
  }

 private:
  static constexpr double never = std::numeric_limits<double>::infinity();

  void take(PairWay way, double work) {
    best_ = way;
    work_ = work;
  }

  // Which series can go into tiles takes a look at all values: that is left out where it would not be worth
  // it if all of them could.
  double work_tiled() {
    auto tiles = plan_tiles(series_, numbers_);
    if (work_of(tiles, numbers_.size()) >= (1 - worth_tiles) * plain_) return never;
    tiling_ = Tiling{SortedSeries(series_, fewest_years_), std::move(tiles)};
    const auto& [good, bad] = tiling_->sorted;
    if (!bad.empty()) tiling_->tiles = plan_tiles(series_, good);
    // Of series that hardly vary the means are often nought: they would be had in rows behind the tiles, too.
    if (bad.size() > good.size()) return never;
    double means = 0;  // that will have to be settled: of cohorts hardly any
    if (!are_all_in_cohorts(tiling_->tiles)) {
      for (const std::size_t i : good)
        means += std::min(1.0, 4 * error_of(series_[i], fewest_years_) / usual_unit);
    }
    const double plain_rest = bad.empty() ? 0 : plain_ - work_of_pairs(series_, good);
    return work_of(tiling_->tiles, good.size()) +
           (plain_rest + 2 * means / static_cast<double>(numbers_.size()) * plain_) / speed_of_rows;
  }

  // Hardly more than one series a tile: there is nothing to be counted.
  double work_of(const std::vector<TilePlan>& tiles, std::size_t series) const {
    if (tiles.size() > few_series && tiles.size() > series / 2) return never;
    return work_of_tiles(tiles, fewest_years_) + work_of_cohorts(tiles, fewest_years_);
  }

  std::span<const SeriesView> series_;
  std::int64_t fewest_years_;
  std::vector<std::size_t> numbers_;
  std::optional<Tiling> tiling_;
  PairWay best_ = PairWay::one_by_one;
  double plain_ = 0, work_ = 0;
};

std::size_t threads_for(const PairWork& work) {
  return work.threads > 0 ? work.threads : threads_here();
}

struct InTiles {
  PairSums sums;
  std::vector<double> errors;  // by series, of a correlation: see error_of
};

InTiles in_tiles(std::span<const SeriesView> series, std::int64_t fewest_years, const Tiling& tiling,
                 const PairWork& work) {
  InTiles all{nothing_yet(series.size()), std::vector<double>(series.size(), 0.0)};
  PairSums& sums = all.sums;
  const auto good = static_cast<double>(tiling.sorted.good.size()),
             bad = static_cast<double>(tiling.sorted.bad.size());
  const double share_of_rows = bad > 0 ? 8 * bad / (8 * bad + good) : 0;
  const auto told = [&](double from, double to) {
    if (!work.told) return ShareDone();
    return ShareDone([&work, from, to](double share) { work.told(from + (to - from) * share); });
  };
  if (bad > 0) {
    PairsOfSome(series, tiling.sorted.bad, tiling.sorted.good, fewest_years)
        .add(sums, work.threads, told(0, share_of_rows));
  }
  const double of_cohorts = work_of_cohorts(tiling.tiles, fewest_years),
               of_tiles = work_of_tiles(tiling.tiles, fewest_years);
  const double done = share_of_rows + (1 - share_of_rows) * of_cohorts / std::max(of_cohorts + of_tiles, 1.0);
  add_cohort_pairs(series, tiling.tiles, fewest_years, work.threads, told(share_of_rows, done), sums,
                   all.errors);
  if (!are_all_in_cohorts(tiling.tiles)) {
    add_tiled_pairs(series, tiling.tiles, fewest_years, work.threads, told(done, 1), sums);
    all.errors = errors_of(series, tiling.sorted.good, fewest_years);
  }
  sums.sum = std::accumulate(sums.sum_of.begin(), sums.sum_of.end(), 0.0) / 2;
  count_pairs(sums);
  if (work.told) work.told(1);
  return all;
}

}  // namespace

PairSums pair_correlations_plain(std::span<const SeriesView> series, std::int64_t fewest_years) {
  PairSums sums = nothing_yet(series.size());
  for (std::size_t i = 0; i < series.size(); ++i) {
    for (std::size_t j = i + 1; j < series.size(); ++j) {
      if (common_years(series[i], series[j]) < fewest_years) continue;
      sums.add(i, j, plain_correlation(series[i], series[j]));
    }
  }
  count_pairs(sums);
  return sums;
}

PairSums pair_correlations_in_rows(std::span<const SeriesView> series, std::int64_t fewest_years,
                                   const PairWork& work) {
  PairSums sums = nothing_yet(series.size());
  PairsOfSome(series, long_enough(series, fewest_years), {}, fewest_years)
      .add(sums, threads_for(work), work.told);
  count_pairs(sums);
  return sums;
}

PairSums pair_correlations_tiled(std::span<const SeriesView> series, std::int64_t fewest_years,
                                 const PairWork& work) {
  Tiling tiling = tiling_of(series, fewest_years);
  for (TilePlan& tile : tiling.tiles) tile.in_cohort = false;
  return in_tiles(series, fewest_years, tiling, {work.told, threads_for(work)}).sums;
}

PairSums pair_correlations_in_cohorts(std::span<const SeriesView> series, std::int64_t fewest_years,
                                      const PairWork& work) {
  return in_tiles(series, fewest_years, tiling_of(series, fewest_years), {work.told, threads_for(work)}).sums;
}

PairSums pair_correlations(std::span<const SeriesView> series, std::int64_t fewest_years,
                           const PairWork& work) {
  const Ways ways(series, fewest_years);
  const PairWork shared = ways.with_threads(work);
  switch (ways.best()) {
    case PairWay::one_by_one:
      return one_by_one(series, fewest_years);
    case PairWay::in_rows:
      return pair_correlations_in_rows(series, fewest_years, shared);
    default: {
      InTiles all = in_tiles(series, fewest_years, ways.tiling(), shared);
      return Settler(series, fewest_years, ways.tiling().sorted.good, std::move(all.errors))
          .settled(std::move(all.sums), shared);
    }
  }
}

PairWay pair_way(std::span<const SeriesView> series, std::int64_t fewest_years) {
  return Ways(series, fewest_years).best();
}

}  // namespace vorn
