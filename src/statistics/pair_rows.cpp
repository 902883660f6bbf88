#include "statistics/pair_rows.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <tuple>
#include <utility>

// This file is compiled once for each kind of vector instructions; which one runs is chosen at run time.
#ifdef __wasm_simd128__
#include "statistics/wasm_lanes.h"
namespace hn = vorn::wasm_lanes;
#else
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "statistics/pair_rows.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>
#endif

HWY_BEFORE_NAMESPACE();
namespace vorn::HWY_NAMESPACE {
#ifndef __wasm_simd128__
namespace hn = hwy::HWY_NAMESPACE;
#endif

const hn::CappedTag<double, pack_width> lanes;

// The years that a series shares with a pack: those that it shares with all of it lie between the others.
struct SharedYears {
  YearSpan before, all, behind;
};

SharedYears shared_years(const SeriesView& one, const SeriesPack& pack) {
  const YearSpan any = common(one.years(), pack.years), inner = common(any, pack.inner);
  if (inner.count() < 1) return {any, {}, {}};
  return {{any.first, inner.first - 1}, inner, {inner.last + 1, any.last}};
}

// Goes through the years that columns of a pack from `column` on share with a series. `use` is told a value
// of the series and those of the pack, and makes nought of a value that does not count.
template <class Use>
void go_through(const SeriesView& one, const SeriesPack& pack, const SharedYears& shared, std::size_t column,
                const Use& use) {
  const auto first = hn::LoadU(lanes, pack.first_year.data() + column);
  const auto last = hn::LoadU(lanes, pack.last_year.data() + column);
  const auto years = [&](YearSpan span, const auto& use_year) {
    if (span.count() < 1) return;
    const double* a = one.values.data() + (span.first - one.first);
    const double* b =
        pack.values.data() + static_cast<std::size_t>(span.first - pack.years.first) * pack_width;
    for (std::int64_t year = span.first; year <= span.last; ++year, ++a, b += pack_width)
      use_year(year, hn::Set(lanes, *a), hn::LoadU(lanes, b + column));
  };
  const auto some = [&](std::int64_t year, auto a, auto b) {
    const auto now = hn::Set(lanes, static_cast<double>(year));
    const auto has = hn::And(hn::Ge(now, first), hn::Ge(last, now));
    use(a, b, [has](auto value) { return hn::IfThenElseZero(has, value); });
  };
  const auto all = [&](std::int64_t, auto a, auto b) { use(a, b, [](auto value) { return value; }); };
  years(shared.before, some);
  years(shared.all, all);
  years(shared.behind, some);
}

void correlate_pack(const SeriesView& one, const SeriesPack& pack, std::array<double, pack_width>& r) {
  const SharedYears shared = shared_years(one, pack);
  const auto zero = hn::Zero(lanes);
  const auto first_year = hn::Set(lanes, static_cast<double>(one.first));
  const auto last_year = hn::Set(lanes, static_cast<double>(one.years().last));
  for (std::size_t column = 0; column < pack_width; column += hn::Lanes(lanes)) {
    const auto first = hn::Max(first_year, hn::LoadU(lanes, pack.first_year.data() + column));
    const auto last = hn::Min(last_year, hn::LoadU(lanes, pack.last_year.data() + column));
    const auto count = hn::Add(hn::Sub(last, first), hn::Set(lanes, 1.0));
    auto sum_a = zero, sum_b = zero, s_aa = zero, s_bb = zero, s_ab = zero;
    go_through(one, pack, shared, column, [&](auto a, auto b, auto counted) {
      sum_a = hn::Add(sum_a, counted(a));
      sum_b = hn::Add(sum_b, b);
    });
    const auto mean_a = hn::Div(sum_a, count), mean_b = hn::Div(sum_b, count);
    go_through(one, pack, shared, column, [&](auto a, auto b, auto counted) {
      const auto from_a = counted(hn::Sub(a, mean_a)), from_b = counted(hn::Sub(b, mean_b));
      s_aa = hn::Add(s_aa, hn::Mul(from_a, from_a));
      s_bb = hn::Add(s_bb, hn::Mul(from_b, from_b));
      s_ab = hn::Add(s_ab, hn::Mul(from_b, from_a));
    });
    const auto d = hn::Sqrt(hn::Mul(s_aa, s_bb));
    hn::StoreU(hn::IfThenElseZero(hn::Gt(d, zero), hn::Div(s_ab, d)), lanes, r.data() + column);
  }
}

}  // namespace vorn::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace vorn {

HWY_EXPORT(correlate_pack);

void correlate_with_pack(const SeriesView& one, const SeriesPack& pack, std::array<double, pack_width>& r) {
  HWY_DYNAMIC_DISPATCH(correlate_pack)(one, pack, r);
}

SeriesPack::SeriesPack(std::span<const SeriesView> series, std::vector<std::size_t> numbers)
    : members(std::move(numbers)), years(series[members.front()].years()), inner(years) {
  for (const std::size_t m : members) {
    const YearSpan own = series[m].years();
    years = {std::min(years.first, own.first), std::max(years.last, own.last)};
    inner = common(inner, own);
    greatest = std::max(greatest, static_cast<std::ptrdiff_t>(m));
  }
  values.assign(static_cast<std::size_t>(years.count()) * pack_width, 0.0);
  first_year.fill(1e15);
  last_year.fill(-1e15);
  for (std::size_t column = 0; column < members.size(); ++column) {
    const SeriesView& own = series[members[column]];
    double* at = values.data() + static_cast<std::size_t>(own.first - years.first) * pack_width + column;
    for (const double value : own.values) {
      *at = value;
      at += pack_width;
    }
    first_year[column] = static_cast<double>(own.first);
    last_year[column] = static_cast<double>(own.years().last);
  }
}

namespace {

// Whether one starts within the years of the first of a pack, and is no longer than twice as long.
bool fits(const SeriesView& first, const SeriesView& one) {
  return std::bit_width(first.values.size()) == std::bit_width(one.values.size()) &&
         one.first <= first.years().last;
}

}  // namespace

std::vector<std::vector<std::size_t>> plan_packs(std::span<const SeriesView> series,
                                                 std::vector<std::size_t> numbers) {
  const auto length = [&](std::size_t i) { return std::bit_width(series[i].values.size()); };
  std::stable_sort(numbers.begin(), numbers.end(), [&](std::size_t i, std::size_t j) {
    return std::tuple(length(i), series[i].first, series[i].years().last) <
           std::tuple(length(j), series[j].first, series[j].years().last);
  });
  std::vector<std::vector<std::size_t>> packs;
  for (const std::size_t i : numbers) {
    if (packs.empty() || packs.back().size() == pack_width || !fits(series[packs.back().front()], series[i]))
      packs.emplace_back().reserve(pack_width);
    packs.back().push_back(i);
  }
  return packs;
}

PairRows::PairRows(std::span<const SeriesView> series, std::vector<std::size_t> numbers,
                   std::int64_t fewest_years)
    : series_(series), fewest_years_(fewest_years) {
  auto plan = plan_packs(series, std::move(numbers));
  packs_.reserve(plan.size());
  for (auto& members : plan) packs_.emplace_back(series, std::move(members));
}

void PairRows::row(std::size_t i, std::ptrdiff_t after, std::span<double> r) const {
  std::array<double, pack_width> found;
  for (const SeriesPack& pack : packs_) {
    if (common(series_[i].years(), pack.years).count() < fewest_years_ || pack.greatest <= after) continue;
    correlate_with_pack(series_[i], pack, found);
    for (std::size_t c = 0; c < pack.members.size(); ++c) r[pack.members[c]] = found[c];
  }
}

}  // namespace vorn
#endif
