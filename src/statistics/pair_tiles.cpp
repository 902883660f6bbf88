#include "statistics/pair_tiles.h"

#include <algorithm>
#include <limits>

// This file is compiled once for each kind of vector instructions; which one runs is chosen at run time.
//
// A lane holds one pair, whose products are added year by year, and what is added up over pairs is added in
// an order that knows no lanes. So there are two results, to the last bit: that of all kinds with a fused
// multiply-add, and that of all without.
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

constexpr std::size_t most_lanes = 8;
const hn::CappedTag<double, most_lanes> lanes;
constexpr std::size_t rows_at_once = tile_group, vectors_at_once = 3;

// The sums over `years` rows of a[i] b[j]: four columns of a, three vectors of columns of b. They go to
// `use`, row by row.
template <class Use>
void products(const double* a, const double* b, std::size_t years, const Use& use) {
  const std::size_t n = hn::Lanes(lanes);
  auto c00 = hn::Zero(lanes), c01 = c00, c02 = c00, c10 = c00, c11 = c00, c12 = c00;
  auto c20 = c00, c21 = c00, c22 = c00, c30 = c00, c31 = c00, c32 = c00;
  for (std::size_t y = 0; y < years; ++y, a += tile_width, b += tile_width) {
    const auto b0 = hn::LoadU(lanes, b), b1 = hn::LoadU(lanes, b + n), b2 = hn::LoadU(lanes, b + 2 * n);
    const auto a0 = hn::Set(lanes, a[0]), a1 = hn::Set(lanes, a[1]);
    c00 = hn::MulAdd(a0, b0, c00);
    c01 = hn::MulAdd(a0, b1, c01);
    c02 = hn::MulAdd(a0, b2, c02);
    c10 = hn::MulAdd(a1, b0, c10);
    c11 = hn::MulAdd(a1, b1, c11);
    c12 = hn::MulAdd(a1, b2, c12);
    const auto a2 = hn::Set(lanes, a[2]), a3 = hn::Set(lanes, a[3]);
    c20 = hn::MulAdd(a2, b0, c20);
    c21 = hn::MulAdd(a2, b1, c21);
    c22 = hn::MulAdd(a2, b2, c22);
    c30 = hn::MulAdd(a3, b0, c30);
    c31 = hn::MulAdd(a3, b1, c31);
    c32 = hn::MulAdd(a3, b2, c32);
  }
  use(0, c00, c01, c02);
  use(1, c10, c11, c12);
  use(2, c20, c21, c22);
  use(3, c30, c31, c32);
}

template <class Vector>
void add_to(double* sums, Vector more) {
  hn::StoreU(hn::Add(hn::LoadU(lanes, sums), more), lanes, sums);
}

// What the series of a add up. Each number belongs to every eighth column of b, however many lanes there are.
struct RowSums {
  alignas(64) std::array<std::array<double, most_lanes>, tile_width> of{};

  double total(std::size_t row) const {
    const auto& s = of[row];
    return ((s[0] + s[1]) + (s[2] + s[3])) + ((s[4] + s[5]) + (s[6] + s[7]));
  }
};

std::size_t row_of(const Tile& tile, std::int64_t year) {
  return static_cast<std::size_t>(year - tile.first);
}

const double* at_year(const Tile& tile, std::int64_t year) {
  return tile.values.data() + row_of(tile, year) * tile_width;
}

// --- Tiles all of whose series have the same years: so have all pairs.

// Each series over some of its years: its sum, the same over the number of years, and one over the root of
// its squared distances from its mean; 0 where there is none, or too little is kept.
struct Standard {
  Standard(const Tile& tile, YearSpan years) {
    const auto start = row_of(tile, years.first) * tile_width,
               end = row_of(tile, years.last + 1) * tile_width;
    const auto count = hn::Set(lanes, static_cast<double>(years.count())), one = hn::Set(lanes, 1.0);
    for (std::size_t j = 0; j < tile_width; j += hn::Lanes(lanes)) {
      const auto over = [&](const TileRows& running) {
        return hn::Sub(hn::LoadU(lanes, running.data() + end + j),
                       hn::LoadU(lanes, running.data() + start + j));
      };
      const auto total = over(tile.sums), each = hn::Div(total, count);
      const auto spread = hn::Sub(over(tile.squares), hn::Mul(total, each));
      const auto sure = hn::Gt(spread, hn::LoadU(lanes, tile.least_squares.data() + j));
      hn::StoreU(total, lanes, sum.data() + j);
      hn::StoreU(each, lanes, mean.data() + j);
      hn::StoreU(hn::IfThenElseZero(sure, hn::Div(one, hn::Sqrt(spread))), lanes, scale.data() + j);
    }
    members = tile.members.size();
    for (std::size_t j = 0; j < members; ++j) pairs += scale[j] > 0 ? 1.0 : 0.0;
  }
  bool is_sure(std::size_t column) const { return scale[column] > 0; }

  alignas(64) TileColumns sum, mean, scale;
  std::size_t members = 0;
  double pairs = 0;  // of a series with these
};

void count_pairs(const Standard& a, const Standard& b, TileSums& of_a) {
  for (std::size_t i = 0; i < a.members; ++i) of_a.pairs_of[i] += a.is_sure(i) ? b.pairs : 0.0;
}

void correlate_level(const Tile& a, TileSums& of_a, const Tile& b, TileSums& of_b,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const std::size_t n = hn::Lanes(lanes);
  const YearSpan years = common({a.first, a.last}, {b.first, b.last});
  const Standard own(a, years), other(b, years);
  const double *values_a = at_year(a, years.first), *values_b = at_year(b, years.first);
  RowSums rows;
  for (std::size_t j = 0; j < b.members.size(); j += vectors_at_once * n) {
    for (std::size_t i = 0; i < a.members.size(); i += rows_at_once) {
      const auto take = [&](std::size_t row, std::size_t at, auto dots) {
        const auto together =
            hn::NegMulAdd(hn::Set(lanes, own.sum[row]), hn::LoadU(lanes, other.mean.data() + at), dots);
        const auto r = hn::Mul(hn::Mul(together, hn::LoadU(lanes, other.scale.data() + at)),
                               hn::Set(lanes, own.scale[row]));
        add_to(rows.of[row].data() + at % most_lanes, r);
        add_to(of_b.sum_of.data() + at, r);
      };
      products(values_a + i, values_b + j, static_cast<std::size_t>(years.count()),
               [&](std::size_t k, auto v0, auto v1, auto v2) {
                 take(i + k, j, v0);
                 take(i + k, j + n, v1);
                 take(i + k, j + 2 * n, v2);
               });
    }
  }
  for (std::size_t i = 0; i < own.members; ++i) of_a.sum_of[i] += rows.total(i);
  count_pairs(own, other, of_a);
  count_pairs(other, own, of_b);
  if (own.pairs == static_cast<double>(own.members) && other.pairs == static_cast<double>(other.members))
    return;
  for (std::size_t i = 0; i < own.members; ++i) {
    for (std::size_t j = 0; j < other.members; ++j) {
      if (!own.is_sure(i) || !other.is_sure(j)) doubtful.emplace_back(i, j);
    }
  }
}

// --- Tiles whose series have years of their own.

// Where in the running sums of a tile the years of each column of another end and start.
struct Places {
  Places(const Tile& tile, const Tile& other) {
    for (std::size_t c = 0; c < tile_width; ++c) {
      end[c] = behind(tile, other.last_year[c]) * tile_width;
      start[c] = behind(tile, other.first_year[c] - 1) * tile_width;
    }
  }
  std::array<std::size_t, tile_width> end, start;

 private:
  // The row that holds the sums up to a year, or up to the end that lies nearest to it.
  static std::size_t behind(const Tile& tile, double year) {
    const double row = std::clamp(year - static_cast<double>(tile.first) + 1, 0.0,
                                  static_cast<double>(tile.last - tile.first + 1));
    return static_cast<std::size_t>(row);
  }
};

// Some sums of the pairs of four columns of a with up to 24 of b.
using Block = std::array<std::array<double, vectors_at_once * most_lanes>, rows_at_once>;

// Two tiles that are correlated, of which `b` may be `a`.
struct MixedPair {
  MixedPair(const Tile& one, const Tile& with, TileSums& sums_with, std::int64_t fewest)
      : a(one), b(with), of_b(sums_with), fewest_years(fewest), of_b_in_a(one, with), of_a_in_b(with, one) {}

  const Tile& a;
  const Tile& b;
  TileSums& of_b;
  std::int64_t fewest_years;
  Places of_b_in_a, of_a_in_b;
  RowSums rows, pairs;
  // Of the block at hand: of products, and of the series of a over the years of those of b.
  alignas(64) Block dots{}, sums{}, squares{};
};

// What the series of a sum up to over the years of each series of b.
void sum_over_columns(MixedPair& pair, std::size_t i, std::size_t j, std::size_t columns) {
  for (std::size_t c = 0; c < columns; ++c) {
    const std::size_t end = pair.of_b_in_a.end[j + c] + i, start = pair.of_b_in_a.start[j + c] + i;
    for (std::size_t k = 0; k < rows_at_once; ++k) {
      pair.sums[k][c] = pair.a.sums[end + k] - pair.a.sums[start + k];
      pair.squares[k][c] = pair.a.squares[end + k] - pair.a.squares[start + k];
    }
  }
}

// Correlates series i of a, row k of the block, with those of b in a vector from j on, which is vector v of
// the block.
void correlate_vector(MixedPair& pair, std::size_t i, std::size_t k, std::size_t j, std::size_t at,
                      std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const Tile &a = pair.a, &b = pair.b;
  const auto one = hn::Set(lanes, 1.0);
  const auto years =
      hn::Add(hn::Sub(hn::Min(hn::Set(lanes, a.last_year[i]), hn::LoadU(lanes, b.last_year.data() + j)),
                      hn::Max(hn::Set(lanes, a.first_year[i]), hn::LoadU(lanes, b.first_year.data() + j))),
              one);
  auto counts = hn::Ge(years, hn::Set(lanes, static_cast<double>(pair.fewest_years)));
  if (&a == &b) {
    const auto behind = hn::Set(lanes, static_cast<double>(i));
    counts = hn::And(counts, hn::Gt(hn::Iota(lanes, static_cast<double>(j)), behind));
  }
  if (hn::AllFalse(lanes, counts)) return;
  const auto over = [&](const TileRows& running) {
    return hn::Sub(hn::LoadU(lanes, running.data() + pair.of_a_in_b.end[i] + j),
                   hn::LoadU(lanes, running.data() + pair.of_a_in_b.start[i] + j));
  };
  const auto sum_a = hn::LoadU(lanes, pair.sums[k].data() + at), sum_b = over(b.sums);
  const auto square_a = hn::LoadU(lanes, pair.squares[k].data() + at), square_b = over(b.squares);
  // Each is times the number of years, which saves divisions.
  const auto spread_a = hn::Sub(hn::Mul(years, square_a), hn::Mul(sum_a, sum_a));
  const auto spread_b = hn::Sub(hn::Mul(years, square_b), hn::Mul(sum_b, sum_b));
  const auto together =
      hn::Sub(hn::Mul(years, hn::LoadU(lanes, pair.dots[k].data() + at)), hn::Mul(sum_a, sum_b));
  const auto kept_a = hn::Set(lanes, a.least_squares[i]),
             kept_b = hn::LoadU(lanes, b.least_squares.data() + j);
  const auto sure =
      hn::And(hn::Gt(spread_a, hn::Mul(years, kept_a)), hn::Gt(spread_b, hn::Mul(years, kept_b)));
  const auto added = hn::And(counts, sure);
  const auto r = hn::IfThenElseZero(added, hn::Div(together, hn::Sqrt(hn::Mul(spread_a, spread_b))));
  const auto counted = hn::IfThenElseZero(added, one);
  add_to(pair.rows.of[i].data() + j % most_lanes, r);
  add_to(pair.pairs.of[i].data() + j % most_lanes, counted);
  add_to(pair.of_b.sum_of.data() + j, r);
  add_to(pair.of_b.pairs_of.data() + j, counted);
  const auto left_out = hn::AndNot(sure, counts);
  if (hn::AllFalse(lanes, left_out)) return;
  for (std::size_t c = 0; c < hn::Lanes(lanes); ++c) {
    if (hn::ExtractLane(hn::IfThenElseZero(left_out, one), c) != 0) doubtful.emplace_back(i, j + c);
  }
}

// The years that some groups of columns span.
YearSpan years_of(const Tile& tile, std::size_t first_column, std::size_t columns) {
  YearSpan all = tile.group_years[first_column / tile_group];
  for (std::size_t c = first_column; c < first_column + columns; ++c) {
    const YearSpan& more = tile.group_years[c / tile_group];
    all = {std::min(all.first, more.first), std::max(all.last, more.last)};
  }
  return all;
}

void correlate_block(MixedPair& pair, std::size_t i, std::size_t j,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const std::size_t n = hn::Lanes(lanes), columns = vectors_at_once * n;
  const YearSpan years = common(years_of(pair.a, i, rows_at_once), years_of(pair.b, j, columns));
  if (years.count() < pair.fewest_years) return;
  products(at_year(pair.a, years.first) + i, at_year(pair.b, years.first) + j,
           static_cast<std::size_t>(years.count()), [&](std::size_t k, auto v0, auto v1, auto v2) {
             hn::StoreU(v0, lanes, pair.dots[k].data());
             hn::StoreU(v1, lanes, pair.dots[k].data() + n);
             hn::StoreU(v2, lanes, pair.dots[k].data() + 2 * n);
           });
  sum_over_columns(pair, i, j, columns);
  for (std::size_t k = 0; k < rows_at_once; ++k) {
    for (std::size_t at = 0; at < columns; at += n) correlate_vector(pair, i + k, k, j + at, at, doubtful);
  }
}

void correlate_mixed(const Tile& a, TileSums& of_a, const Tile& b, TileSums& of_b, std::int64_t fewest_years,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  MixedPair pair(a, b, of_b, fewest_years);
  const std::size_t columns = vectors_at_once * hn::Lanes(lanes);
  for (std::size_t j = 0; j < b.members.size(); j += columns) {
    for (std::size_t i = 0; i < a.members.size(); i += rows_at_once) {
      if (&a != &b || i < j + columns) correlate_block(pair, i, j, doubtful);
    }
  }
  for (std::size_t i = 0; i < a.members.size(); ++i) {
    of_a.sum_of[i] += pair.rows.total(i);
    of_a.pairs_of[i] += pair.pairs.total(i);
  }
}

void correlate(const Tile& a, TileSums& of_a, const Tile& b, TileSums& of_b, std::int64_t fewest_years,
               std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  if (a.level && b.level && &a != &b)
    correlate_level(a, of_a, b, of_b, doubtful);
  else
    correlate_mixed(a, of_a, b, of_b, fewest_years, doubtful);
}

}  // namespace vorn::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace vorn {

HWY_EXPORT(correlate);

void correlate_tiles(const Tile& a, TileSums& of_a, const Tile& b, TileSums& of_b, std::int64_t fewest_years,
                     std::vector<std::pair<std::size_t, std::size_t>>& doubtful) {
  const YearSpan both = common({a.first, a.last}, {b.first, b.last});
  if (both.count() < std::max<std::int64_t>(fewest_years, 1)) return;
  HWY_DYNAMIC_DISPATCH(correlate)(a, of_a, b, of_b, fewest_years, doubtful);
}

double least_share(double years) {
  return std::min(0.05, 8 / years);
}

namespace {

// Puts a series, less its mean, into its column.
void put_column(Tile& tile, std::size_t column, const SeriesView& one) {
  const auto count = static_cast<double>(one.values.size());
  const double mean = quick_mean(one.values);
  double* at = tile.values.data() + static_cast<std::size_t>(one.first - tile.first) * tile_width + column;
  for (const double value : one.values) {
    *at = value - mean;
    at += tile_width;
  }
  tile.first_year[column] = static_cast<double>(one.first);
  tile.last_year[column] = static_cast<double>(one.years().last);
  tile.least_squares[column] = least_share(count);  // to be multiplied
  tile.level = tile.level && one.first == tile.first && one.years().last == tile.last;
  YearSpan& group = tile.group_years[column / tile_group];
  group = {std::min(group.first, one.first), std::max(group.last, one.years().last)};
}

void sum_up(Tile& tile) {
  const std::size_t end = tile.values.size();
  const double* const values = tile.values.data();
  double *const sums = tile.sums.data(), *const squares = tile.squares.data();
  std::fill_n(sums, tile_width, 0.0);
  std::fill_n(squares, tile_width, 0.0);
  for (std::size_t at = 0; at < end; ++at) {
    sums[at + tile_width] = sums[at] + values[at];
    squares[at + tile_width] = squares[at] + values[at] * values[at];
  }
  for (std::size_t column = 0; column < tile_width; ++column)
    tile.least_squares[column] *= squares[end + column];
}

}  // namespace

void Tile::make_room(const TilePlan& plan) {
  const std::size_t numbers = plan.numbers() + tile_width;
  for (TileRows* rows : {&values, &sums, &squares}) {
    rows->clear();
    if (rows->capacity() > 4 * numbers) *rows = TileRows();  // of a tile that was much longer
    rows->reserve(numbers);
  }
  members.reserve(tile_width);
}

void Tile::fill(std::span<const SeriesView> series, const TilePlan& plan) {
  members = plan.members;
  first = plan.years.first;
  last = plan.years.last;
  level = true;
  values.assign(plan.numbers(), 0.0);
  sums.resize(plan.numbers() + tile_width);
  squares.resize(plan.numbers() + tile_width);
  least_squares.fill(0);
  first_year.fill(1e15);
  last_year.fill(-1e15);
  group_years.fill(
      {std::numeric_limits<std::int64_t>::max() / 4, std::numeric_limits<std::int64_t>::min() / 4});
  for (std::size_t column = 0; column < members.size(); ++column)
    put_column(*this, column, series[members[column]]);
  sum_up(*this);
}

}  // namespace vorn
#endif
