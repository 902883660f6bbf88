#include "statistics/pair_correlations.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <utility>

#include "statistics/correlation.h"
#include "statistics/pair_tiles.h"

namespace vorn {
namespace {

// The running sums of as many tiles are held at once; those behind them are made anew for each such group.
constexpr std::size_t group_bytes = std::size_t{24} << 20;

// The series of a tile start within so many years.
constexpr std::int64_t widest_start = 4'000;

// A correlation may be taken from differences of sums when they keep this share of what was summed.
constexpr double least_share = 1e-3;

// A mean of tiled correlations is nearer than this to that of the plain ones, whatever the series: of 12,000
// years, the longest, that keep the least share, the differences of sums may lose so much at worst.
constexpr double most_error = 1e-8;

// The mean is taken from a series that goes into a tile: where the series varies by less than this share of
// it, the digits that are left are too few, and not those that cov keeps.
constexpr double least_variation = 1e-4;
// Between these lie the sums of squares of which four can be multiplied.
constexpr double least_squares = 1e-70, most_squares = 1e70;

double plain_correlation(const SeriesView& a, const SeriesView& b) {
  const YearSpan both = common(a.years(), b.years());
  return cov(a.over(both).values, b.over(both).values);
}

std::int64_t common_years(const SeriesView& a, const SeriesView& b) {
  return common(a.years(), b.years()).count();
}

// Whether a series can go into a tile: its values are finite, vary enough, and are of a size to calculate
// with.
bool suits_tiles(const SeriesView& series) {
  const auto count = static_cast<double>(series.values.size());
  const double mean = std::accumulate(series.values.begin(), series.values.end(), 0.0) / count;
  double squares = 0.0;
  for (const double value : series.values) squares += (value - mean) * (value - mean);
  return squares >= least_squares && squares <= most_squares &&
         squares >= least_variation * least_variation * mean * mean * count;
}

class PairAdder {
 public:
  PairAdder(std::span<const SeriesView> series, std::int64_t fewest_years)
      : series_(series), fewest_years_(fewest_years) {
    sums_.sum_of.assign(series.size(), 0.0);
    sums_.pairs_of.assign(series.size(), 0);
  }

  PairSums take() {
    sums_.pairs = std::accumulate(sums_.pairs_of.begin(), sums_.pairs_of.end(), 0.0) / 2;
    return std::move(sums_);
  }

  void add_plain(std::size_t i, std::size_t j) {
    if (common_years(series_[i], series_[j]) < fewest_years_) return;
    const double r = plain_correlation(series_[i], series_[j]);
    sums_.sum_of[i] += r;
    sums_.sum_of[j] += r;
    ++sums_.pairs_of[i];
    ++sums_.pairs_of[j];
    sums_.sum += r;
  }

  // Adds the pairs of two tiles; of a tile with itself each pair once.
  void add_tiles(Tile& a, Tile& b) {
    doubtful_.clear();
    correlate_tiles(a, b, static_cast<double>(fewest_years_), least_share, doubtful_);
    for (const auto& [i, j] : doubtful_) add_plain(a.members[i], b.members[j]);
  }

  // Takes over what a tile's columns have added up.
  void add_columns(const Tile& tile) {
    for (std::size_t c = 0; c < tile.members.size(); ++c) {
      sums_.sum_of[tile.members[c]] += tile.sum_of[c];
      sums_.pairs_of[tile.members[c]] += static_cast<std::int32_t>(tile.pairs_of[c]);
      sums_.sum += tile.sum_of[c] / 2;  // each correlation stands in two columns
    }
  }

 private:
  std::span<const SeriesView> series_;
  std::int64_t fewest_years_;
  PairSums sums_;
  std::vector<std::pair<std::size_t, std::size_t>> doubtful_;
};

// The numbers of the series in tiles: those of like length, then of like age, stand together, so that a tile
// spans few more years than its series do.
std::vector<std::vector<std::size_t>> tiled(std::span<const SeriesView> series,
                                            std::vector<std::size_t> numbers) {
  const auto key = [&](std::size_t i) {
    return std::pair(std::bit_width(series[i].values.size()), series[i].first);
  };
  std::stable_sort(numbers.begin(), numbers.end(),
                   [&](std::size_t i, std::size_t j) { return key(i) < key(j); });
  std::vector<std::vector<std::size_t>> tiles;
  for (const std::size_t i : numbers) {
    const bool fits = !tiles.empty() && tiles.back().size() < tile_width &&
                      series[i].first - series[tiles.back().front()].first <= widest_start &&
                      series[i].first >= series[tiles.back().front()].first;
    if (!fits) tiles.emplace_back();
    tiles.back().push_back(i);
  }
  return tiles;
}

// Builds tiles `from` on, as many as group_bytes hold, at least one.
std::vector<Tile> build_group(std::span<const SeriesView> series,
                              const std::vector<std::vector<std::size_t>>& tiles, std::size_t from) {
  std::vector<Tile> group;
  std::size_t bytes = 0;
  for (std::size_t t = from; t < tiles.size() && (t == from || bytes < group_bytes); ++t) {
    bytes += Tile::bytes(group.emplace_back(series, tiles[t]).years());
  }
  return group;
}

// Whether all values as near as most_error print alike with two decimals: no rounding tie lies between them,
// nor zero, since a negative nought is printed with its sign.
bool prints_alike(double mean) {
  const double hundredths = std::abs(mean) * 100, error = most_error * 100;
  return hundredths > error && std::abs(hundredths - std::floor(hundredths) - 0.5) > error;
}

// What the plain definition adds up for series i.
double plain_sum_of(std::span<const SeriesView> series, std::size_t i, std::int64_t fewest_years) {
  double sum = 0.0;
  for (std::size_t j = 0; j < series.size(); ++j) {
    if (j == i || common_years(series[i], series[j]) < fewest_years) continue;
    sum += plain_correlation(series[std::min(i, j)], series[std::max(i, j)]);
  }
  return sum;
}

// The sums with those taken from the plain definition whose means might be printed otherwise.
PairSums settled(PairSums sums, std::span<const SeriesView> series, std::int64_t fewest_years) {
  std::vector<std::size_t> unsure;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (sums.pairs_of[i] > 0 && !prints_alike(sums.sum_of[i] / sums.pairs_of[i])) unsure.push_back(i);
  }
  const bool all_unsure = sums.pairs > 0 && !prints_alike(sums.sum / sums.pairs);
  if (all_unsure || unsure.size() > series.size() / 4) return pair_correlations_plain(series, fewest_years);
  for (const std::size_t i : unsure) sums.sum_of[i] = plain_sum_of(series, i, fewest_years);
  return sums;
}

}  // namespace

PairSums pair_correlations_plain(std::span<const SeriesView> series, std::int64_t fewest_years) {
  PairAdder adder(series, fewest_years);
  for (std::size_t i = 0; i < series.size(); ++i) {
    for (std::size_t j = i + 1; j < series.size(); ++j) adder.add_plain(i, j);
  }
  return adder.take();
}

PairSums pair_correlations_tiled(std::span<const SeriesView> series, std::int64_t fewest_years,
                                 const ShareDone& told) {
  PairAdder adder(series, fewest_years);
  std::vector<std::size_t> good, bad;
  for (std::size_t i = 0; i < series.size(); ++i) {
    if (static_cast<std::int64_t>(series[i].values.size()) < fewest_years) continue;
    (suits_tiles(series[i]) ? good : bad).push_back(i);
  }
  for (std::size_t b = 0; b < bad.size(); ++b) {
    for (const std::size_t j : good) adder.add_plain(bad[b], j);
    for (std::size_t c = b + 1; c < bad.size(); ++c) adder.add_plain(bad[b], bad[c]);
  }
  const auto tiles = tiled(series, good);
  const double all_pairs = 0.5 * static_cast<double>(tiles.size()) * static_cast<double>(tiles.size() + 1);
  std::size_t pairs = 0;  // of tiles, done
  const auto tell = [&](std::size_t more) {
    pairs += more;
    if (told) told(static_cast<double>(pairs) / all_pairs);
  };
  for (std::size_t from = 0; from < tiles.size();) {
    std::vector<Tile> group = build_group(series, tiles, from);
    for (std::size_t i = 0; i < group.size(); ++i) {
      for (std::size_t j = i; j < group.size(); ++j) adder.add_tiles(group[i], group[j]);
      tell(group.size() - i);
    }
    from += group.size();
    for (std::size_t t = from; t < tiles.size(); ++t) {
      Tile other(series, tiles[t]);
      for (Tile& tile : group) adder.add_tiles(tile, other);
      adder.add_columns(other);
      tell(group.size());
    }
    for (const Tile& tile : group) adder.add_columns(tile);
  }
  return adder.take();
}

PairSums pair_correlations(std::span<const SeriesView> series, std::int64_t fewest_years,
                           const ShareDone& told) {
  if (series.size() <= few_series) return pair_correlations_plain(series, fewest_years);
  return settled(pair_correlations_tiled(series, fewest_years, told), series, fewest_years);
}

}  // namespace vorn
