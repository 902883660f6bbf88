#include "statistics/tile_plans.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "statistics/pair_rows.h"

namespace vorn {
namespace {

// Series without anything to correlate, of which years alone count.
struct Years {
  std::vector<std::vector<double>> kept;
  std::vector<SeriesView> series;
  std::vector<std::size_t> numbers;

  void add(std::int64_t first, std::size_t count) {
    kept.emplace_back(count, 1.0);
    series.push_back({first, kept.back()});
    numbers.push_back(numbers.size());
  }
};

Years some_years(unsigned seed, int within) {
  std::mt19937 random(seed);
  Years years;
  for (int i = 0; i < 120; ++i)
    years.add(static_cast<std::int64_t>(random() % static_cast<unsigned>(within)) - within / 2,
              128 + random() % 100);
  return years;
}

// The same lengths, no two of which meet.
Years far_apart(const Years& like) {
  Years years;
  for (std::size_t i = 0; i < like.series.size(); ++i)
    years.add(static_cast<std::int64_t>(10'000 * i), like.series[i].values.size());
  return years;
}

double common_years_of_pairs(const Years& all) {
  double years = 0;
  for (std::size_t i = 0; i < all.series.size(); ++i) {
    for (std::size_t j = i + 1; j < all.series.size(); ++j)
      years += static_cast<double>(
          std::max<std::int64_t>(common(all.series[i].years(), all.series[j].years()).count(), 0));
  }
  return years;
}

// How many there are, the years that they span, and those that series have in common with them.
std::array<double, 3> packs_of(const Years& all) {
  double packs = 0, spanned = 0, shared = 0;
  for (const auto& pack : plan_packs(all.series, all.numbers)) {
    YearSpan span = all.series[pack.front()].years();
    for (const std::size_t m : pack) {
      const YearSpan own = all.series[m].years();
      span = {std::min(span.first, own.first), std::max(span.last, own.last)};
    }
    ++packs;
    spanned += static_cast<double>(span.count());
    for (const SeriesView& one : all.series)
      shared += static_cast<double>(std::max<std::int64_t>(common(one.years(), span).count(), 0));
  }
  return {packs, spanned, shared};
}

// Beside what is the same for so many series, the plain work grows as the years that pairs have in common.
TEST(WorkOfPairs, GrowsAsTheYearsInCommon) {
  const auto each = [](unsigned seed, int within) {
    const Years years = some_years(seed, within);
    const Years apart = far_apart(years);
    EXPECT_EQ(common_years_of_pairs(apart), 0);
    const double more =
        work_of_pairs(years.series, years.numbers) - work_of_pairs(apart.series, apart.numbers);
    return more / common_years_of_pairs(years);
  };
  const double first = each(1, 200);
  EXPECT_GT(first, 0);
  EXPECT_NEAR(each(2, 1'000), first, 1e-9);
  EXPECT_NEAR(each(3, 5'000), first, 1e-9);
}

// So much for each pack, each of its years and each that it has in common with a series: what three
// collections tell of these holds for a fourth one.
TEST(WorkOfRows, GrowsAsPacksTheirYearsAndThoseInCommon) {
  std::array<std::array<double, 4>, 4> rows;
  for (unsigned k = 0; k < rows.size(); ++k) {
    const Years years = some_years(k + 1, std::array{200, 1'000, 5'000, 2'000}[k]);
    const auto [packs, spanned, shared] = packs_of(years);
    rows[k] = {packs, spanned, shared, work_of_rows(years.series, years.numbers)};
    EXPECT_GT(rows[k][3], 0);
  }
  for (std::size_t k = 0; k < 3; ++k) {
    for (std::size_t r = k + 1; r < rows.size(); ++r) {
      const double factor = rows[r][k] / rows[k][k];
      for (std::size_t c = k; c < 4; ++c) rows[r][c] -= factor * rows[k][c];
    }
  }
  EXPECT_NEAR(rows[3][3], 0, 1e-3);
}

// The pairs of two tiles in cohorts are had elsewhere.
TEST(WorkOfTiles, CountsNoPairsOfCohorts) {
  std::vector<TilePlan> tiles = {
      {{}, {1900, 1999}}, {{}, {1900, 1999}}, {{}, {1950, 2049}}, {{}, {3000, 3099}}};
  const double all = work_of_tiles(tiles, 40);
  tiles[0].in_cohort = true;
  const double without_own = work_of_tiles(tiles, 40);
  tiles[1].in_cohort = true;
  const double without_two = work_of_tiles(tiles, 40);
  EXPECT_LT(without_own, all);
  EXPECT_NEAR(without_own - without_two, 2 * (all - without_own), 1e-6);
  tiles[2].in_cohort = tiles[3].in_cohort = true;
  EXPECT_EQ(work_of_tiles(tiles, 40), 0);
}

}  // namespace
}  // namespace vorn
