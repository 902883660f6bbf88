#include "statistics/pair_tiles.h"

#include <algorithm>
#include <cmath>
#include <numeric>

// This file is compiled once for each kind of vector instructions; which one runs is chosen at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "statistics/pair_tiles.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace vorn::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Square = std::array<double, tile_width * tile_width>;  // [column of a][column of b]

const hn::CappedTag<double, 8> lanes;
constexpr std::size_t rows_at_once = 4, vectors_at_once = 3;

// dots[i][j] = sum over `years` rows of a[i] b[j].
void products(const double* a, const double* b, std::size_t years, Square& dots) {
  const std::size_t n = hn::Lanes(lanes);
  for (std::size_t i = 0; i < tile_width; i += rows_at_once) {
    for (std::size_t j = 0; j < tile_width; j += vectors_at_once * n) {
      auto c00 = hn::Zero(lanes), c01 = c00, c02 = c00, c10 = c00, c11 = c00, c12 = c00;
      auto c20 = c00, c21 = c00, c22 = c00, c30 = c00, c31 = c00, c32 = c00;
      const double* row_a = a + i;
      const double* row_b = b + j;
      for (std::size_t y = 0; y < years; ++y, row_a += tile_width, row_b += tile_width) {
        const auto b0 = hn::LoadU(lanes, row_b), b1 = hn::LoadU(lanes, row_b + n),
                   b2 = hn::LoadU(lanes, row_b + 2 * n);
        const auto a0 = hn::Set(lanes, row_a[0]), a1 = hn::Set(lanes, row_a[1]);
        c00 = hn::MulAdd(a0, b0, c00);
        c01 = hn::MulAdd(a0, b1, c01);
        c02 = hn::MulAdd(a0, b2, c02);
        c10 = hn::MulAdd(a1, b0, c10);
        c11 = hn::MulAdd(a1, b1, c11);
        c12 = hn::MulAdd(a1, b2, c12);
        const auto a2 = hn::Set(lanes, row_a[2]), a3 = hn::Set(lanes, row_a[3]);
        c20 = hn::MulAdd(a2, b0, c20);
        c21 = hn::MulAdd(a2, b1, c21);
        c22 = hn::MulAdd(a2, b2, c22);
        c30 = hn::MulAdd(a3, b0, c30);
        c31 = hn::MulAdd(a3, b1, c31);
        c32 = hn::MulAdd(a3, b2, c32);
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
Rows rows_of(const Tile& tile, const std::vector<double>& running, const Tile& other, std::size_t column) {
  return {running.data() + row_behind(tile, other.last_year[column]) * tile_width,
          running.data() + row_behind(tile, other.first_year[column] - 1) * tile_width};
}

// What the series of a sum up to over the years of each series of b: result[column of a][column of b].
void sums_over_columns(const Tile& a, const std::vector<double>& running, const Tile& b, Square& result) {
  for (std::size_t j = 0; j < tile_width; ++j) {
    const Rows rows = rows_of(a, running, b, j);
    for (std::size_t i = 0; i < tile_width; ++i) result[i * tile_width + j] = rows.end[i] - rows.start[i];
  }
}

void correlate(Tile& a, Tile& b, double fewest_years, double least_share,
               std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const std::int64_t first = std::max(a.first, b.first), last = std::min(a.last, b.last);
  alignas(64) Square dots, sums_a, squares_a;
  products(a.values.data() + static_cast<std::size_t>(first - a.first) * tile_width,
           b.values.data() + static_cast<std::size_t>(first - b.first) * tile_width,
           static_cast<std::size_t>(last - first + 1), dots);
  sums_over_columns(a, a.sums, b, sums_a);
  sums_over_columns(a, a.squares, b, squares_a);

  const std::size_t n = hn::Lanes(lanes);
  const auto zero = hn::Zero(lanes), one = hn::Set(lanes, 1.0), share = hn::Set(lanes, least_share);
  const auto fewest = hn::Set(lanes, fewest_years);
  for (std::size_t i = 0; i < a.members.size(); ++i) {
    const Rows sums_b = rows_of(b, b.sums, a, i), squares_b = rows_of(b, b.squares, a, i);
    const auto first_a = hn::Set(lanes, a.first_year[i]), last_a = hn::Set(lanes, a.last_year[i]);
    const auto kept_a = hn::Mul(share, hn::Set(lanes, a.total_squares[i]));
    auto row_sum = zero, row_pairs = zero;
    for (std::size_t j = &a == &b ? i / n * n : 0; j < tile_width; j += n) {
      const std::size_t at = i * tile_width + j;
      const auto years = hn::Add(hn::Sub(hn::Min(last_a, hn::LoadU(lanes, b.last_year.data() + j)),
                                         hn::Max(first_a, hn::LoadU(lanes, b.first_year.data() + j))),
                                 one);
      auto counts = hn::Ge(years, fewest);
      if (&a == &b)
        counts = hn::And(
            counts, hn::Gt(hn::Iota(lanes, static_cast<double>(j)), hn::Set(lanes, static_cast<double>(i))));
      const auto per_year = hn::Div(one, years);
      const auto sum_a = hn::LoadU(lanes, sums_a.data() + at);
      const auto sum_b = hn::Sub(hn::LoadU(lanes, sums_b.end + j), hn::LoadU(lanes, sums_b.start + j));
      const auto square_b =
          hn::Sub(hn::LoadU(lanes, squares_b.end + j), hn::LoadU(lanes, squares_b.start + j));
      const auto mean_a = hn::Mul(sum_a, per_year);
      const auto spread_a = hn::NegMulAdd(mean_a, sum_a, hn::LoadU(lanes, squares_a.data() + at));
      const auto spread_b = hn::NegMulAdd(hn::Mul(sum_b, per_year), sum_b, square_b);
      const auto together = hn::NegMulAdd(mean_a, sum_b, hn::LoadU(lanes, dots.data() + at));
      const auto kept_b = hn::Mul(share, hn::LoadU(lanes, b.total_squares.data() + j));
      const auto sure = hn::And(hn::Gt(spread_a, kept_a), hn::Gt(spread_b, kept_b));
      const auto added = hn::And(counts, sure);
      const auto r = hn::IfThenElseZero(added, hn::Div(together, hn::Sqrt(hn::Mul(spread_a, spread_b))));
      row_sum = hn::Add(row_sum, r);
      const auto pair = hn::IfThenElseZero(added, one);
      row_pairs = hn::Add(row_pairs, pair);
      hn::StoreU(hn::Add(hn::LoadU(lanes, b.sum_of.data() + j), r), lanes, b.sum_of.data() + j);
      hn::StoreU(hn::Add(hn::LoadU(lanes, b.pairs_of.data() + j), pair), lanes, b.pairs_of.data() + j);
      const auto left_out = hn::AndNot(sure, counts);
      if (!hn::AllFalse(lanes, left_out)) {
        for (std::size_t k = 0; k < n; ++k) {
          if (hn::ExtractLane(hn::IfThenElseZero(left_out, one), k) != 0) doubtful.emplace_back(i, j + k);
        }
      }
    }
    a.sum_of[i] += hn::GetLane(hn::SumOfLanes(lanes, row_sum));
    a.pairs_of[i] += hn::GetLane(hn::SumOfLanes(lanes, row_pairs));
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

Tile::Tile(std::span<const DatedValues> series, std::vector<std::size_t> numbers)
    : members(std::move(numbers)) {
  first = series[members.front()].first;
  last = series[members.front()].last();
  for (const std::size_t m : members) {
    first = std::min(first, series[m].first);
    last = std::max(last, series[m].last());
  }
  const auto years = static_cast<std::size_t>(last - first + 1);
  values.assign(years * tile_width, 0.0);
  sums.assign((years + 1) * tile_width, 0.0);
  squares.assign((years + 1) * tile_width, 0.0);
  first_year.fill(1e15);
  last_year.fill(-1e15);
  for (std::size_t column = 0; column < members.size(); ++column) {
    const DatedValues& one = series[members[column]];
    const double mean =
        std::accumulate(one.values.begin(), one.values.end(), 0.0) / static_cast<double>(one.values.size());
    double* at = values.data() + static_cast<std::size_t>(one.first - first) * tile_width + column;
    for (const double value : one.values) {
      *at = value - mean;
      at += tile_width;
    }
    first_year[column] = static_cast<double>(one.first);
    last_year[column] = static_cast<double>(one.last());
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
