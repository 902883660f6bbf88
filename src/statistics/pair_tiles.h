// Tiles of series: what the pair correlations are computed on, many pairs at a time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include "statistics/pair_correlations.h"

namespace vorn {

// Series a tile has room for: a multiple of three vectors of 1 to 8 numbers.
inline constexpr std::size_t tile_width = 48;

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

// Some series year by year: row y holds the values of year first + y, a column a series, 0 where a series has
// no value. Each series is taken less its own mean, which no correlation sees.
struct Tile {
  Tile(std::span<const SeriesView> series, std::vector<std::size_t> numbers);

  std::int64_t years() const { return last - first + 1; }
  // How many bytes a tile of so many years takes.
  static std::size_t bytes(std::int64_t years) {
    return static_cast<std::size_t>(years + 1) * tile_width * 3 * 8;
  }

  std::vector<std::size_t> members;  // numbers of the series
  std::int64_t first, last;          // years that the tile spans
  TileRows values;
  // Row y: sums and sums of squares over the years before first + y.
  TileRows sums, squares;
  // By column. A column without a series starts after every year and ends before it.
  alignas(64) std::array<double, tile_width> first_year, last_year;
  std::array<double, tile_width> total_squares{};
  // What the pairs added up so far gave, by column.
  std::array<double, tile_width> sum_of{}, pairs_of{};
};

// Correlates each series of `a` with each of `b` (of a tile with itself, each pair once) over their common
// years, where these are at least `fewest_years`, and adds the results up in both tiles.
//
// A pair is left out and put into `doubtful`, as columns of a and b, when over the common years one of the
// series keeps less than `least_share` of its sum of squares, so that digits would be lost.
void correlate_tiles(Tile& a, Tile& b, double fewest_years, double least_share,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful);

}  // namespace vorn
