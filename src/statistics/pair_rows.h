// One series with many: each correlation what cov gives, to the last bit, and many at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "statistics/pair_tiles.h"
#include "workspace/series_view.h"

namespace vorn {

inline constexpr std::size_t pack_width = 8;

// Up to eight series side by side: row y holds the values of year years.first + y, 0 where a series has none.
struct SeriesPack {
  SeriesPack(std::span<const SeriesView> series, std::vector<std::size_t> numbers);

  std::vector<std::size_t> members;  // numbers of the series
  std::ptrdiff_t greatest = 0;       // of these numbers
  YearSpan years, inner;             // that any of them has, that all have
  TileRows values;
  // By column. A column without a series starts after every year and ends before it.
  alignas(64) std::array<double, pack_width> first_year, last_year;
};

// cov of `one` and each series of the pack over the years they have in common, by column; of no use where
// there are none.
//
// A lane holds one pair and does for it what cov does, in the same order: nothing is fused, and what is added
// for years that the pair has not in common is nought, which changes no sum.
void correlate_with_pack(const SeriesView& one, const SeriesPack& pack, std::array<double, pack_width>& r);

// Which series stand side by side, by their numbers: those of like length and age, so that a pack spans few
// more years than they have.
std::vector<std::vector<std::size_t>> plan_packs(std::span<const SeriesView> series,
                                                 std::vector<std::size_t> numbers);

// Rows of the table of all correlations.
class PairRows {
 public:
  // The columns are the series with these numbers; all of them have a value.
  PairRows(std::span<const SeriesView> series, std::vector<std::size_t> numbers, std::int64_t fewest_years);

  // Correlates series i with those of the columns, at least with those whose numbers lie above `after`: r[j]
  // is that with series j. Where the two have too few years in common it is of no use, or not set.
  void row(std::size_t i, std::ptrdiff_t after, std::span<double> r) const;

 private:
  std::span<const SeriesView> series_;
  std::int64_t fewest_years_;
  std::vector<SeriesPack> packs_;
};

}  // namespace vorn
