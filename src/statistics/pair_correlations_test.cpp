#include "statistics/pair_correlations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/test_store.h"

namespace vorn {
namespace {

// Series whose values are kept here and whose years the test sets.
struct PairCorrelations : ::testing::Test {
  void add(std::int64_t first, std::vector<double> values) {
    kept.push_back(std::move(values));
    years.push_back(first);
  }
  std::vector<DatedValues> series() const {
    std::vector<DatedValues> all;
    for (std::size_t i = 0; i < kept.size(); ++i) all.push_back({years[i], kept[i]});
    return all;
  }
  void expect_both_alike(std::int64_t fewest_years) {
    const PairSums plain = pair_correlations_plain(series(), fewest_years);
    const PairSums tiled = pair_correlations_tiled(series(), fewest_years);
    EXPECT_EQ(tiled.pairs, plain.pairs);
    EXPECT_EQ(tiled.pairs_of, plain.pairs_of);
    for (std::size_t i = 0; i < kept.size(); ++i) {
      // 1e-12 for each correlation that was added.
      EXPECT_NEAR(tiled.sum_of[i], plain.sum_of[i], 1e-12 * std::max(1, plain.pairs_of[i])) << i;
    }
    EXPECT_NEAR(tiled.sum, plain.sum, 1e-12 * std::max(1.0, plain.pairs));
  }

  std::vector<std::vector<double>> kept;
  std::vector<std::int64_t> years;
};

TEST_F(PairCorrelations, OfThreeSeriesAreThoseOfTheThreePairs) {
  add(1900, noise(60, 1));
  add(1910, noise(60, 2));
  add(1925, noise(60, 3));
  const PairSums sums = pair_correlations(series(), 40);
  EXPECT_EQ(sums.pairs, 2);  // the first and the third have 35 years in common
  EXPECT_EQ(sums.pairs_of, (std::vector<std::int32_t>{1, 2, 1}));
  EXPECT_DOUBLE_EQ(sums.sum_of[1], sums.sum);
}

TEST_F(PairCorrelations, InTilesAgreeWithThePlainOnesWhereAllSeriesOverlap) {
  for (unsigned i = 0; i < 200; ++i) add(1900 + i % 3, noise(118, i + 1));
  expect_both_alike(40);
}

TEST_F(PairCorrelations, InTilesAgreeWithThePlainOnesWhereFewDo) {
  for (unsigned i = 0; i < 300; ++i)
    add(-1000 + 7 * static_cast<int>(i), noise(static_cast<int>(98 + i % 41), i + 1));
  expect_both_alike(40);
}

TEST_F(PairCorrelations, InTilesNeedNoRoomForTheYearsBetweenSeriesFarApart) {
  for (unsigned i = 0; i < 60; ++i) add(i % 2 == 0 ? -1'000'000'000 : 1'000'000'000, noise(100, i + 1));
  expect_both_alike(40);
}

// 48 series start within 3,760 years: tiles of 4,010 years, 4.6 MB each, of which 24 MB hold six. Each series
// meets the three before and behind it, in another tile and another group too.
TEST_F(PairCorrelations, InTilesAgreeWithThePlainOnesWhereTheirTilesAreTooManyToBeHeldAtOnce) {
  for (int i = 0; i < 450; ++i) add(80 * i, noise(250, static_cast<unsigned>(i) + 1));
  expect_both_alike(10);
  std::vector<double> shares;
  pair_correlations_tiled(series(), 10, [&](double share) { shares.push_back(share); });
  EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
  EXPECT_DOUBLE_EQ(shares.back(), 1);
  EXPECT_EQ(pair_correlations_tiled(series(), 10).pairs, 449 + 448 + 447);
}

TEST_F(PairCorrelations, InTilesAgreeWithThePlainOnesForLengthsOfEveryKind) {
  for (unsigned i = 0; i < 160; ++i) {
    add(static_cast<int>(i * 37 % 500), noise(static_cast<int>(1 + i * i % 2300), i + 1));
  }
  expect_both_alike(40);
}

TEST_F(PairCorrelations, CountFromTheFewestYearsOn) {
  add(0, noise(79, 1));
  add(39, noise(79, 2));  // 40 years in common with the first
  add(40, noise(79, 3));  // 39 years
  const PairSums sums = pair_correlations_tiled(series(), 40);
  EXPECT_EQ(sums.pairs_of, (std::vector<std::int32_t>{1, 2, 1}));
}

// Over the common years one series is constant: the plain correlation is 0, and no difference of sums may say
// else.
TEST_F(PairCorrelations, OfSeriesThatAreConstantInTheCommonYearsAreThePlainOnes) {
  for (unsigned i = 0; i < 100; ++i) {
    auto values = noise(120, i + 1);
    if (i % 3 == 0) std::fill(values.begin(), values.begin() + 70, 0.3);
    add(i % 2 == 0 ? 0 : -60, std::move(values));
  }
  expect_both_alike(40);
}

TEST_F(PairCorrelations, OfValuesFarFromZeroKeepTheirDigits) {
  for (unsigned i = 0; i < 100; ++i) {
    auto values = noise(120, i + 1);
    for (double& value : values) value += 1e6;
    add(i, std::move(values));
  }
  const PairSums plain = pair_correlations_plain(series(), 40);
  const PairSums tiled = pair_correlations_tiled(series(), 40);
  EXPECT_NEAR(tiled.sum / tiled.pairs, plain.sum / plain.pairs,
              1e-9);  // the values themselves have ten digits
}

TEST_F(PairCorrelations, OfSeriesWithValuesThatAreNotFiniteAreThePlainOnes) {
  for (unsigned i = 0; i < 100; ++i) {
    auto values = noise(120, i + 1);
    if (i == 20) values[5] = std::numeric_limits<double>::quiet_NaN();
    if (i == 70) values[100] = std::numeric_limits<double>::infinity();
    add(i / 2, std::move(values));
  }
  expect_both_alike(40);
}

TEST_F(PairCorrelations, TellHowFarTheyAre) {
  for (unsigned i = 0; i < 200; ++i) add(static_cast<int>(i), noise(60, i + 1));
  std::vector<double> shares;
  pair_correlations_tiled(series(), 40, [&](double share) { shares.push_back(share); });
  EXPECT_GE(shares.size(), 4u);
  EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
  EXPECT_GT(shares.front(), 0);
  EXPECT_DOUBLE_EQ(shares.back(), 1);
}

TEST_F(PairCorrelations, OfNoSeriesOrOfShortOnesAreNone) {
  EXPECT_EQ(pair_correlations_tiled(series(), 40).pairs, 0);
  add(0, {});
  add(0, noise(39, 1));
  add(0, noise(39, 1));
  EXPECT_EQ(pair_correlations_tiled(series(), 40).pairs, 0);
}

}  // namespace
}  // namespace vorn
