#include "statistics/tile_plans.h"

#include <algorithm>
#include <bit>
#include <tuple>
#include <utility>

#include "statistics/pair_rows.h"

namespace vorn {
namespace {

// The mean is taken from a series that goes into a tile: where the series varies by less than this share of
// it, the digits that are left are too few, and not those that cov keeps.
constexpr double least_variation = 1e-4;
// Between these lie the sums of squares of which four can be multiplied.
constexpr double least_squares = 1e-70, most_squares = 1e70;

// As measured: a year of two tiles, a year of a tile that is made, in fresh memory, the pairs of two tiles
// behind their sums of products, two tiles that are looked at; a year of a pair, a series whose partners are
// looked for, a pair that might be; a year of a series and a pack, both that are looked at, a year of a pack
// that is made.
constexpr double tile_pair_year = 300, tile_year = 3'000, tile_pair = 15'000, tiles_met = 5;
constexpr double pair_year = 8, series_met = 150, pair_met = 0.03;
constexpr double pack_year = 18, pack_met = 50, packed_year = 100;

bool suits_tiles(const SeriesView& series) {
  const auto count = static_cast<double>(series.values.size());
  const double mean = quick_mean(series.values);
  const double squares =
      quick_sum(series.values, [mean](double value) { return (value - mean) * (value - mean); });
  return squares >= least_squares && squares <= most_squares &&
         squares >= least_variation * least_variation * mean * mean * count;
}

auto order_in_tiles(const SeriesView& one) {
  return std::tuple(std::bit_width(one.values.size()), one.first, one.years().last);
}

class Planner {
 public:
  Planner(std::span<const SeriesView> series, std::vector<std::size_t> numbers)
      : series_(series), numbers_(std::move(numbers)) {
    std::stable_sort(numbers_.begin(), numbers_.end(), [&](std::size_t i, std::size_t j) {
      return order_in_tiles(series_[i]) < order_in_tiles(series_[j]);
    });
  }

  std::vector<TilePlan> plan() {
    for (std::size_t from = 0; from < numbers_.size();) {
      const std::size_t end = end_of_alike(from);
      const bool own_tiles = end - from >= tile_width;
      if (own_tiles) open_ = false;
      const bool in_cohort = end - from >= fewest_in_cohort;
      for (; from < end; ++from) put(numbers_[from], in_cohort);
      if (own_tiles) open_ = false;
    }
    return std::move(tiles_);
  }

 private:
  // Where those end that have the same years as the one at `from`.
  std::size_t end_of_alike(std::size_t from) const {
    std::size_t end = from + 1;
    while (end < numbers_.size() && series_[numbers_[end]].years() == series_[numbers_[from]].years()) ++end;
    return end;
  }

  bool fits(const SeriesView& one) const {
    if (!open_ || tiles_.back().members.size() == tile_width) return false;
    const SeriesView& first = series_[tiles_.back().members.front()];
    return std::bit_width(first.values.size()) == std::bit_width(one.values.size()) &&
           one.first - first.first <= 2 * static_cast<std::int64_t>(first.values.size());
  }

  void put(std::size_t number, bool in_cohort) {
    const SeriesView& one = series_[number];
    if (!fits(one)) tiles_.push_back({{}, one.years(), in_cohort});
    open_ = true;
    TilePlan& tile = tiles_.back();
    tile.members.push_back(number);
    tile.years = {std::min(tile.years.first, one.first), std::max(tile.years.last, one.years().last)};
  }

  std::span<const SeriesView> series_;
  std::vector<std::size_t> numbers_;
  std::vector<TilePlan> tiles_;
  bool open_ = false;  // whether the last tile may take more
};

}  // namespace

SortedSeries::SortedSeries(std::span<const SeriesView> series, std::int64_t fewest_years) {
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (static_cast<std::int64_t>(series[i].values.size()) < fewest_years) continue;
    (suits_tiles(series[i]) ? good : bad).push_back(i);
  }
}

std::vector<TilePlan> plan_tiles(std::span<const SeriesView> series, std::vector<std::size_t> numbers) {
  return Planner(series, std::move(numbers)).plan();
}

bool are_all_in_cohorts(const std::vector<TilePlan>& tiles) {
  return std::ranges::all_of(tiles, &TilePlan::in_cohort);
}

double work_of_tiles(const std::vector<TilePlan>& tiles, std::int64_t fewest_years) {
  if (are_all_in_cohorts(tiles)) return 0;
  double work = 0;
  for (std::size_t a = 0; a < tiles.size(); ++a) {
    work += tile_year * static_cast<double>(tiles[a].years.count());
    for (std::size_t b = a; b < tiles.size(); ++b) {
      const std::int64_t years = common(tiles[a].years, tiles[b].years).count();
      work += tiles_met;
      if (years >= fewest_years && !(tiles[a].in_cohort && tiles[b].in_cohort))
        work += tile_pair + tile_pair_year * static_cast<double>(years);
    }
  }
  return work;
}

namespace {

// Spans of years, as where they start and where they end.
class Running {
 public:
  void reserve(std::size_t count) {
    starts_.reserve(count);
    ends_.reserve(count);
  }
  void add(const YearSpan& years) {
    starts_.push_back(years.first);
    ends_.push_back(years.last + 1);
  }
  void sort() {
    std::ranges::sort(starts_);
    std::ranges::sort(ends_);
  }

  bool at_end() const { return ended_ == ends_.size(); }
  // The year when their number changes next; not at the end.
  std::int64_t next() const {
    return started_ < starts_.size() ? std::min(starts_[started_], ends_[ended_]) : ends_[ended_];
  }
  void go_on_to(std::int64_t year) {
    while (started_ < starts_.size() && starts_[started_] <= year) ++started_;
    while (ended_ < ends_.size() && ends_[ended_] <= year) ++ended_;
  }
  // How many there are, from the year that it went on to until the next.
  double now() const { return static_cast<double>(started_ - ended_); }

 private:
  std::vector<std::int64_t> starts_, ends_;
  std::size_t started_ = 0, ended_ = 0;
};

}  // namespace

// From year to year as many pairs go on as there are pairs of the series that have both years.
double work_of_pairs(std::span<const SeriesView> series, const std::vector<std::size_t>& numbers) {
  Running all;
  all.reserve(numbers.size());
  for (const std::size_t i : numbers) all.add(series[i].years());
  all.sort();
  double years = 0;
  while (!all.at_end()) {
    const std::int64_t year = all.next();
    all.go_on_to(year);
    if (!all.at_end()) years += 0.5 * all.now() * (all.now() - 1) * static_cast<double>(all.next() - year);
  }
  const auto count = static_cast<double>(numbers.size());
  return pair_year * years + series_met * count + pair_met * 0.5 * count * count;
}

// Each series goes through the years of each pack, all of its columns at once.
double work_of_rows(std::span<const SeriesView> series, const std::vector<std::size_t>& numbers) {
  Running all, packs;
  all.reserve(numbers.size());
  double packed = 0, count = 0;
  for (const auto& members : plan_packs(series, numbers)) {
    YearSpan span = series[members.front()].years();
    for (const std::size_t m : members) {
      const YearSpan own = series[m].years();
      span = {std::min(span.first, own.first), std::max(span.last, own.last)};
      all.add(own);
    }
    packs.add(span);
    packed += static_cast<double>(span.count());
    ++count;
  }
  all.sort();
  packs.sort();
  double years = 0;
  while (!all.at_end()) {
    const std::int64_t year = std::min(all.next(), packs.next());
    all.go_on_to(year);
    packs.go_on_to(year);
    if (!all.at_end())
      years += all.now() * packs.now() * static_cast<double>(std::min(all.next(), packs.next()) - year);
  }
  return pack_year * years + pack_met * count * static_cast<double>(numbers.size()) + packed_year * packed;
}

}  // namespace vorn
