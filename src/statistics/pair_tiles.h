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
  void deallocate(T* at, std::size_t) { ::operator delete(at, line); }
  bool operator==(const InLines&) const = default;
};
using TileRows = std::vector<double, InLines<double>>;
using TileColumns = std::array<double, tile_width>;  // a number a column

// Which series stand in a tile, by their numbers, and the years that they span.
struct TilePlan {
  std::vector<std::size_t> members;
  YearSpan years;

  // How many bytes the tile takes.
  std::size_t bytes() const { return static_cast<std::size_t>(years.count() + 1) * tile_width * 3 * 8; }
};

// The share of its sum of squares that a series of so many years has to keep over the years that it has in
// common with another: a fifth of what is usual where these are 40.
double least_share(double years);

// The mean of some values, added up in four sums.
double quick_mean(std::span<const double> values);

// Some series year by year: row y holds the values of year first + y, a column a series, 0 where a series has
// no value. Each series is taken less its own mean, which no correlation sees.
struct Tile {
  Tile(std::span<const SeriesView> series, const TilePlan& plan);

  std::vector<std::size_t> members;  // numbers of the series
  std::int64_t first, last;          // years that the tile spans
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
