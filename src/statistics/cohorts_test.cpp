#include "statistics/cohorts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

#include "statistics/correlation.h"
#include "statistics/tile_plans.h"
#include "support/test_store.h"

namespace vorn {
namespace {

constexpr std::int64_t forty = 40;

// Series in groups that have the same years.
struct Cohorts : ::testing::Test {
  void add(std::size_t count, std::int64_t first, int years) {
    for (std::size_t i = 0; i < count; ++i) {
      kept.push_back(noise(years, static_cast<unsigned>(kept.size()) + 1));
      first_years.push_back(first);
    }
  }
  // One cohort holds another's years, one begins and one ends within them, one is far away and one has 39
  // years in common with the first.
  void add_all_kinds() {
    add(fewest_in_cohort, 1900, 100);
    add(fewest_in_cohort + 7, 1880, 150);
    add(fewest_in_cohort + 49, 1940, 100);
    add(fewest_in_cohort + 1, 1850, 90);
    add(fewest_in_cohort, -500, 41);
    add(fewest_in_cohort, 1961, 120);
  }

  std::vector<SeriesView> series() const {
    std::vector<SeriesView> all;
    for (std::size_t i = 0; i < kept.size(); ++i) all.push_back({first_years[i], kept[i]});
    return all;
  }
  std::vector<TilePlan> plans() const { return plan_tiles(series(), SortedSeries(series(), 1).good); }

  PairSums of_cohorts(std::size_t threads, const ShareDone& told = {}) {
    PairSums sums;
    sums.sum_of.assign(kept.size(), 0.0);
    sums.pairs_of.assign(kept.size(), 0);
    errors.assign(kept.size(), 0.0);
    add_cohort_pairs(series(), plans(), forty, threads, told, sums, errors);
    return sums;
  }
  // As near as is said, and not farther than `at_most` a pair.
  void expect_the_plain_ones(double at_most) {
    const PairSums plain = pair_correlations_plain(series(), forty);
    for (const PairSums& found : {of_cohorts(1), pair_correlations_in_cohorts(series(), forty)}) {
      ASSERT_EQ(found.pairs_of, plain.pairs_of);
      const double largest = *std::ranges::max_element(errors);
      EXPECT_LT(2 * largest, at_most);
      for (std::size_t i = 0; i < kept.size(); ++i)
        EXPECT_NEAR(found.sum_of[i], plain.sum_of[i], (errors[i] + largest) * plain.pairs_of[i]) << i;
    }
  }

  std::vector<std::vector<double>> kept;
  std::vector<std::int64_t> first_years;
  std::vector<double> errors;
};

TEST_F(Cohorts, AreSoManySeriesOfTheSameYears) {
  add(fewest_in_cohort - 1, 1900, 100);
  add(fewest_in_cohort, 1900, 101);
  add(fewest_in_cohort, 1901, 100);
  const YearSpan one_too_few{1900, 1999};
  const std::vector<TilePlan> all = plans();
  ASSERT_EQ(all.size(), 6u);  // two tiles for each
  for (const TilePlan& plan : all) EXPECT_EQ(plan.in_cohort, plan.years != one_too_few);
  EXPECT_FALSE(are_all_in_cohorts(all));
}

TEST_F(Cohorts, GiveTheCorrelationsOfAllPairs) {
  add_all_kinds();
  expect_the_plain_ones(1e-11);
  const PairSums sums = of_cohorts(1);
  EXPECT_GT(*std::ranges::max_element(sums.pairs_of), 400);
}

TEST_F(Cohorts, ArePairedWithOtherSeriesInTiles) {
  add_all_kinds();
  const std::size_t in_cohorts = kept.size();
  add(60, 1900, 100);  // of the same years as the first cohort, which they join
  for (int i = 0; i < 120; ++i) add(1, 1860 + i, 95 + i % 50);
  const PairSums plain = pair_correlations_plain(series(), forty), some = of_cohorts(1),
                 all = pair_correlations_in_cohorts(series(), forty);
  EXPECT_EQ(all.pairs, plain.pairs);
  EXPECT_EQ(all.pairs_of, plain.pairs_of);
  for (std::size_t i = 0; i < kept.size(); ++i)
    EXPECT_NEAR(all.sum_of[i], plain.sum_of[i], 1e-12 * plain.pairs_of[i]) << i;
  EXPECT_LT(some.pairs_of[0], all.pairs_of[0]);
  EXPECT_EQ(some.pairs_of[in_cohorts], some.pairs_of[0]);
  EXPECT_EQ(std::ranges::count(std::span(some.pairs_of).subspan(in_cohorts + 60), 0), 120);
}

// Over the years in common they are constant, or nearly: the plain correlations are what counts.
TEST_F(Cohorts, LeaveSeriesThatHardlyVaryOverTheCommonYearsToThePlainDefinition) {
  add(2 * fewest_in_cohort, 1900, 120);
  add(2 * fewest_in_cohort, 1840, 120);
  for (std::size_t i = 0; i < kept.size(); i += 5) {
    for (std::size_t y = 0; y < 60; ++y) {
      double& value = kept[i][first_years[i] == 1900 ? y : y + 60];
      value = i % 2 == 0 ? 0.3 : 11 + 1e-13 * value;
    }
  }
  expect_the_plain_ones(1e-10);
}

// The best that can be said of those of one cohort: nothing is lost.
TEST_F(Cohorts, OfOneTimeAreNearerToThePlainDefinition) {
  add(2 * fewest_in_cohort, 1900, 1'000);
  expect_the_plain_ones(2e-12);
}

TEST_F(Cohorts, LeaveSeriesThatFitNoTileToOthers) {
  add(fewest_in_cohort + 3, 1900, 100);
  kept[1][50] = std::numeric_limits<double>::quiet_NaN();
  kept[2][50] = std::numeric_limits<double>::infinity();
  std::ranges::fill(kept[3], 0.7);
  EXPECT_EQ(std::ranges::count(of_cohorts(1).pairs_of, 0), 3);
  const PairSums plain = pair_correlations_plain(series(), forty), all = pair_correlations(series(), forty);
  EXPECT_EQ(all.pairs_of, plain.pairs_of);
  EXPECT_EQ(all.sum_of[3], plain.sum_of[3]);
}

TEST_F(Cohorts, TellHowFarTheyAre) {
  add_all_kinds();
  for (const std::size_t threads : {1u, 3u}) {
    std::vector<double> shares;
    of_cohorts(threads, [&](double share) { shares.push_back(share); });
    EXPECT_GE(shares.size(), 2u);
    EXPECT_TRUE(std::ranges::is_sorted(shares));
    EXPECT_GT(shares.front(), 0);
    EXPECT_DOUBLE_EQ(shares.back(), 1);
  }
}

// Whoever closes the window is told of the end by an exception.
TEST_F(Cohorts, EndWhereWhoeverIsToldThrows) {
  add_all_kinds();
  for (const std::size_t threads : {1u, 2u})
    EXPECT_THROW(of_cohorts(threads, [](double) { throw std::runtime_error("closed"); }), std::runtime_error);
}

// More than the sums of which can be held at once.
TEST_F(Cohorts, OfManyYearsAreHadInTurn) {
  for (int c = 0; c < 14; ++c) add(fewest_in_cohort, 1900 + 10 * c, 6'000);
  std::vector<double> shares;
  const PairSums sums = of_cohorts(1, [&](double share) { shares.push_back(share); });
  EXPECT_TRUE(std::ranges::is_sorted(shares));
  EXPECT_EQ(std::ranges::count(sums.pairs_of, 14 * static_cast<std::int32_t>(fewest_in_cohort) - 1),
            static_cast<std::ptrdiff_t>(kept.size()));
  double plain = 0;
  for (std::size_t j = 1; j < kept.size(); ++j) {
    const YearSpan both = common(series()[0].years(), series()[j].years());
    plain += cov(series()[0].over(both).values, series()[j].over(both).values);
  }
  EXPECT_NEAR(sums.sum_of[0], plain, 1e-9);
}

TEST_F(Cohorts, GiveTheSameBitsForAnyNumberOfThreads) {
  add_all_kinds();
  const PairSums one = of_cohorts(1);
  for (const std::size_t threads : {2u, 3u, 4u, 7u}) {
    const PairSums more = of_cohorts(threads);
    EXPECT_EQ(more.pairs_of, one.pairs_of);
    for (std::size_t i = 0; i < kept.size(); ++i)
      EXPECT_EQ(std::bit_cast<std::uint64_t>(more.sum_of[i]), std::bit_cast<std::uint64_t>(one.sum_of[i]));
  }
}

TEST_F(Cohorts, AreNoneWhereSeriesDiffer) {
  for (int i = 0; i < 200; ++i) add(1, 1900 + i, 100);
  const PairSums sums = of_cohorts(1);
  EXPECT_EQ(std::ranges::count(sums.pairs_of, 0), 200);
  EXPECT_EQ(work_of_cohorts(plans(), forty), 0);
}

// Not with their pairs.
TEST_F(Cohorts, TakeWorkThatGrowsWithTheirSeries) {
  add(200, 1900, 100);
  const double few = work_of_cohorts(plans(), forty);
  EXPECT_GT(few, 200 * 100);
  EXPECT_EQ(work_of_tiles(plans(), forty), 0);
  add(200, 1900, 100);
  EXPECT_DOUBLE_EQ(work_of_cohorts(plans(), forty), 2 * few);
  add(200, 1980, 100);  // 20 years in common with the others
  EXPECT_DOUBLE_EQ(work_of_cohorts(plans(), forty), 3 * few);
}

}  // namespace
}  // namespace vorn
