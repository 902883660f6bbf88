// Tiles of series: what the pair correlations are computed on, many pairs at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

// Series a tile has room for: a multiple of three vectors of 1 to 8 numbers.
inline constexpr std::size_t tile_width = 48;
// Columns that are looked at together, so that years in which none of them has a value are left out.
inline constexpr std::size_t tile_group = 4;

// Numbers that start where a cache line does: a vector of them then never lies across two.
template <class T>
struct InLines {
  using value_type = T;
  static constexpr std::align_val_t line{64};

  InLines() = default;
  template <class U>
  InLines(const InLines<U>&) {}
  T* allocate(std::size_t n) { return static_cast<T*>(::operator new(n * sizeof(T), line)); }
  // Where no value is given numbers are left as they are: they will all be written.
  template <class U>
  void construct(U* at) {
    ::new (static_cast<void*>(at)) U;
  }
  template <class U, class Value>
  void construct(U* at, Value&& value) {
    ::new (static_cast<void*>(at)) U(std::forward<Value>(value));
  }
  void deallocate(T* at, std::size_t) { ::operator delete(at, line); }
  bool operator==(const InLines&) const = default;
};
using TileRows = std::vector<double, InLines<double>>;
using TileColumns = std::array<double, tile_width>;  // a number a column

// Which series stand in a tile, by their numbers, and the years that they span.
struct TilePlan {
  std::vector<std::size_t> members;
  YearSpan years;
  bool in_cohort = false;  // whether the pairs with others in cohorts are had elsewhere (cohorts.h)

  // How many numbers a row for each year makes; how many bytes the tile takes.
  std::size_t numbers() const { return static_cast<std::size_t>(years.count()) * tile_width; }
  std::size_t bytes() const { return (3 * numbers() + 2 * tile_width) * sizeof(double); }
};

// The share of its sum of squares that a series of so many years has to keep over the years that it has in
// common with another: a fifth of what is usual where these are 40.
double least_share(double years);

// Adds up what `term` makes of each value, in four sums, which do not wait for each other.
template <class Term>
double quick_sum(std::span<const double> values, const Term& term) {
  double s0 = 0, s1 = 0, s2 = 0, s3 = 0;
  std::size_t k = 0;
  for (; k + 4 <= values.size(); k += 4) {
    s0 += term(values[k]), s1 += term(values[k + 1]);
    s2 += term(values[k + 2]), s3 += term(values[k + 3]);
  }
  for (; k < values.size(); ++k) s0 += term(values[k]);
  return (s0 + s1) + (s2 + s3);
}
inline double quick_mean(std::span<const double> values) {
  return quick_sum(values, [](double value) { return value; }) / static_cast<double>(values.size());
}

// Some series year by year: row y holds the values of year first + y, a column a series, 0 where a series has
// no value. Each series is taken less its own mean, which no correlation sees.
struct Tile {
  // Sees to it that the tile of this plan can be filled without memory being asked for.
  void make_room(const TilePlan& plan);
  // Makes it the tile of this plan.
  void fill(std::span<const SeriesView> series, const TilePlan& plan);

  std::vector<std::size_t> members;  // numbers of the series
  std::int64_t first = 0, last = 0;  // years that the tile spans
  bool level = true;                 // whether all series have just these years
  TileRows values;
  // Row y: sums and sums of squares over the years before first + y.
  TileRows sums, squares;
  // By column. A column without a series starts after every year and ends before it.
  alignas(64) TileColumns first_year, last_year;
  // What it has to keep of its sum of squares, least_share of it.
  alignas(64) TileColumns least_squares{};
  // The years of each group of columns.
  std::array<YearSpan, tile_width / tile_group> group_years;
};

// What pairs gave, by column of a tile: the sum of their correlations, and their number.
struct TileSums {
  alignas(64) TileColumns sum_of{};
  alignas(64) TileColumns pairs_of{};
};

// Correlates each series of `a` with each of `b` (of a tile with itself, each pair once) over their common
// years, where these are at least `fewest_years`, and adds the results up for both tiles.
//
// A pair is left out and put into `doubtful`, as columns of a and b, when over the common years one of the
// series keeps less than its least_squares, so that digits would be lost.
void correlate_tiles(const Tile& a, TileSums& of_a, const Tile& b, TileSums& of_b, std::int64_t fewest_years,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful);

}  // namespace vorn
