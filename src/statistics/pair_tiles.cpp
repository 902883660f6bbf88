#include "statistics/pair_tiles.h"

#include <algorithm>
#include <cmath>
#include <numeric>

// This file is compiled once for each kind of vector instructions; which one runs is chosen at run time.
//
// All give the same bits: a lane holds one pair, whose products are added year by year; every product is
// rounded before it is added, since not every machine has a fused multiply-add; and what is added up over
// pairs is added in an order that knows no lanes.
#ifdef __wasm_simd128__
#include "statistics/wasm_lanes.h"
namespace hn = vorn::wasm_lanes;
#else
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "statistics/pair_tiles.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#endif

HWY_BEFORE_NAMESPACE();
namespace vorn::HWY_NAMESPACE {
#ifndef __wasm_simd128__
namespace hn = hwy::HWY_NAMESPACE;
#endif

using Square = std::array<double, tile_width * tile_width>;  // [column of a][column of b]

constexpr std::size_t most_lanes = 8;
const hn::CappedTag<double, most_lanes> lanes;
constexpr std::size_t rows_at_once = 4, vectors_at_once = 3;

// dots[i][j] = sum over `years` rows of a[i] b[j].
void products(const double* a, const double* b, std::size_t years, Square& dots) {
  const std::size_t n = hn::Lanes(lanes);
  for (std::size_t j = 0; j < tile_width; j += vectors_at_once * n) {
    for (std::size_t i = 0; i < tile_width; i += rows_at_once) {
      auto c00 = hn::Zero(lanes), c01 = c00, c02 = c00, c10 = c00, c11 = c00, c12 = c00;
      auto c20 = c00, c21 = c00, c22 = c00, c30 = c00, c31 = c00, c32 = c00;
      const double* row_a = a + i;
      const double* row_b = b + j;
      for (std::size_t y = 0; y < years; ++y, row_a += tile_width, row_b += tile_width) {
        const auto b0 = hn::LoadU(lanes, row_b), b1 = hn::LoadU(lanes, row_b + n),
                   b2 = hn::LoadU(lanes, row_b + 2 * n);
        const auto a0 = hn::Set(lanes, row_a[0]), a1 = hn::Set(lanes, row_a[1]);
        c00 = hn::Add(c00, hn::Mul(a0, b0));
        c01 = hn::Add(c01, hn::Mul(a0, b1));
        c02 = hn::Add(c02, hn::Mul(a0, b2));
        c10 = hn::Add(c10, hn::Mul(a1, b0));
        c11 = hn::Add(c11, hn::Mul(a1, b1));
        c12 = hn::Add(c12, hn::Mul(a1, b2));
        const auto a2 = hn::Set(lanes, row_a[2]), a3 = hn::Set(lanes, row_a[3]);
        c20 = hn::Add(c20, hn::Mul(a2, b0));
        c21 = hn::Add(c21, hn::Mul(a2, b1));
        c22 = hn::Add(c22, hn::Mul(a2, b2));
        c30 = hn::Add(c30, hn::Mul(a3, b0));
        c31 = hn::Add(c31, hn::Mul(a3, b1));
        c32 = hn::Add(c32, hn::Mul(a3, b2));
      }
      const auto store = [&](std::size_t row, auto v0, auto v1, auto v2) {
        double* to = dots.data() + (i + row) * tile_width + j;
        hn::StoreU(v0, lanes, to);
        hn::StoreU(v1, lanes, to + n);
        hn::StoreU(v2, lanes, to + 2 * n);
      };
      store(0, c00, c01, c02);
      store(1, c10, c11, c12);
      store(2, c20, c21, c22);
      store(3, c30, c31, c32);
    }
  }
}

// The row of a tile's running sums that holds the sums up to a year, or up to the end that lies nearest to
// it.
std::size_t row_behind(const Tile& tile, double year) {
  const double row = std::clamp(year - static_cast<double>(tile.first) + 1, 0.0,
                                static_cast<double>(tile.last - tile.first + 1));
  return static_cast<std::size_t>(row);
}

// The rows between which a column's years lie in the running sums of another tile.
struct Rows {
  const double* end;
  const double* start;
};
Rows rows_of(const Tile& tile, const TileRows& running, const Tile& other, std::size_t column) {
  return {running.data() + row_behind(tile, other.last_year[column]) * tile_width,
          running.data() + row_behind(tile, other.first_year[column] - 1) * tile_width};
}

// What the series of a sum up to over the years of each series of b: result[column of a][column of b].
void sums_over_columns(const Tile& a, const TileRows& running, const Tile& b, Square& result) {
  for (std::size_t j = 0; j < tile_width; ++j) {
    const Rows rows = rows_of(a, running, b, j);
    for (std::size_t i = 0; i < tile_width; ++i) result[i * tile_width + j] = rows.end[i] - rows.start[i];
  }
}

// Sums of the pairs of two tiles: of products, and of the series of a over the years of those of b.
struct PairSquares {
  alignas(64) Square dots, sums_a, squares_a;
};

// What one series of a has added up. Each number belongs to every eighth column of b, however many lanes
// there are.
struct RowSums {
  alignas(64) std::array<double, most_lanes> r{}, pairs{};

  static double total(const std::array<double, most_lanes>& s) {
    return ((s[0] + s[1]) + (s[2] + s[3])) + ((s[4] + s[5]) + (s[6] + s[7]));
  }
};

template <class Vector>
void add_to(double* sums, Vector more) {
  hn::StoreU(hn::Add(hn::LoadU(lanes, sums), more), lanes, sums);
}

// Correlates series i of a with those of b, from column `from` on.
void correlate_row(Tile& a, std::size_t i, Tile& b, std::size_t from, const PairSquares& squares,
                   double fewest_years, double least_share,
                   std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const std::size_t n = hn::Lanes(lanes);
  const auto one = hn::Set(lanes, 1.0), fewest = hn::Set(lanes, fewest_years);
  const auto first_column = hn::Set(lanes, static_cast<double>(from));
  const Rows sums_b = rows_of(b, b.sums, a, i), squares_b = rows_of(b, b.squares, a, i);
  const auto first_a = hn::Set(lanes, a.first_year[i]), last_a = hn::Set(lanes, a.last_year[i]);
  const auto share = hn::Set(lanes, least_share), kept_a = hn::Set(lanes, least_share * a.total_squares[i]);
  RowSums row;
  for (std::size_t j = from / most_lanes * most_lanes; j < tile_width; j += n) {
    const std::size_t at = i * tile_width + j;
    const auto years = hn::Add(hn::Sub(hn::Min(last_a, hn::LoadU(lanes, b.last_year.data() + j)),
                                       hn::Max(first_a, hn::LoadU(lanes, b.first_year.data() + j))),
                               one);
    const auto counts =
        hn::And(hn::Ge(years, fewest), hn::Ge(hn::Iota(lanes, static_cast<double>(j)), first_column));
    const auto sum_a = hn::LoadU(lanes, squares.sums_a.data() + at);
    const auto sum_b = hn::Sub(hn::LoadU(lanes, sums_b.end + j), hn::LoadU(lanes, sums_b.start + j));
    const auto square_a = hn::LoadU(lanes, squares.squares_a.data() + at);
    const auto square_b = hn::Sub(hn::LoadU(lanes, squares_b.end + j), hn::LoadU(lanes, squares_b.start + j));
    // Each is times the number of years, which saves divisions.
    const auto spread_a = hn::Sub(hn::Mul(years, square_a), hn::Mul(sum_a, sum_a));
    const auto spread_b = hn::Sub(hn::Mul(years, square_b), hn::Mul(sum_b, sum_b));
    const auto together =
        hn::Sub(hn::Mul(years, hn::LoadU(lanes, squares.dots.data() + at)), hn::Mul(sum_a, sum_b));
    const auto kept_b = hn::Mul(share, hn::LoadU(lanes, b.total_squares.data() + j));
    const auto sure =
        hn::And(hn::Gt(spread_a, hn::Mul(years, kept_a)), hn::Gt(spread_b, hn::Mul(years, kept_b)));
    const auto added = hn::And(counts, sure);
    const auto r = hn::IfThenElseZero(added, hn::Div(together, hn::Sqrt(hn::Mul(spread_a, spread_b))));
    const auto pair = hn::IfThenElseZero(added, one);
    add_to(row.r.data() + j % most_lanes, r);
    add_to(row.pairs.data() + j % most_lanes, pair);
    add_to(b.sum_of.data() + j, r);
    add_to(b.pairs_of.data() + j, pair);
    const auto left_out = hn::AndNot(sure, counts);
    if (!hn::AllFalse(lanes, left_out)) {
      for (std::size_t k = 0; k < n; ++k) {
        if (hn::ExtractLane(hn::IfThenElseZero(left_out, one), k) != 0) doubtful.emplace_back(i, j + k);
      }
    }
  }
  a.sum_of[i] += RowSums::total(row.r);
  a.pairs_of[i] += RowSums::total(row.pairs);
}

void correlate(Tile& a, Tile& b, double fewest_years, double least_share,
               std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const std::int64_t first = std::max(a.first, b.first), last = std::min(a.last, b.last);
  PairSquares squares;
  products(a.values.data() + static_cast<std::size_t>(first - a.first) * tile_width,
           b.values.data() + static_cast<std::size_t>(first - b.first) * tile_width,
           static_cast<std::size_t>(last - first + 1), squares.dots);
  sums_over_columns(a, a.sums, b, squares.sums_a);
  sums_over_columns(a, a.squares, b, squares.squares_a);
  for (std::size_t i = 0; i < a.members.size(); ++i) {
    const std::size_t from = &a == &b ? i + 1 : 0;
    correlate_row(a, i, b, from, squares, fewest_years, least_share, doubtful);
  }
}

}  // namespace vorn::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace vorn {

HWY_EXPORT(correlate);

void correlate_tiles(Tile& a, Tile& b, double fewest_years, double least_share,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  if (std::min(a.last, b.last) < std::max(a.first, b.first)) return;
  HWY_DYNAMIC_DISPATCH(correlate)(a, b, fewest_years, least_share, doubtful);
}

Tile::Tile(std::span<const SeriesView> series, std::vector<std::size_t> numbers)
    : members(std::move(numbers)),
      first(series[members.front()].first),
      last(series[members.front()].years().last) {
  for (const std::size_t m : members) {
    first = std::min(first, series[m].first);
    last = std::max(last, series[m].years().last);
  }
  const auto years = static_cast<std::size_t>(last - first + 1);
  values.assign(years * tile_width, 0.0);
  sums.assign((years + 1) * tile_width, 0.0);
  squares.assign((years + 1) * tile_width, 0.0);
  first_year.fill(1e15);
  last_year.fill(-1e15);
  for (std::size_t column = 0; column < members.size(); ++column) {
    const SeriesView& one = series[members[column]];
    const double mean =
        std::accumulate(one.values.begin(), one.values.end(), 0.0) / static_cast<double>(one.values.size());
    double* at = values.data() + static_cast<std::size_t>(one.first - first) * tile_width + column;
    for (const double value : one.values) {
      *at = value - mean;
      at += tile_width;
    }
    first_year[column] = static_cast<double>(one.first);
    last_year[column] = static_cast<double>(one.years().last);
  }
  for (std::size_t y = 0; y < years; ++y) {
    const std::size_t row = y * tile_width;
    for (std::size_t column = row; column < row + tile_width; ++column) {
      sums[column + tile_width] = sums[column] + values[column];
      squares[column + tile_width] = squares[column] + values[column] * values[column];
    }
  }
  for (std::size_t column = 0; column < tile_width; ++column)
    total_squares[column] = squares[years * tile_width + column];
}

}  // namespace vorn
#endif
