#include "statistics/pair_correlations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <limits>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "support/test_store.h"

namespace vorn {
namespace {

// Series whose values are kept here and whose years the test sets.
struct PairCorrelations : ::testing::Test {
  void add(std::int64_t first, std::vector<double> values) {
    kept.push_back(std::move(values));
    years.push_back(first);
  }
  std::vector<SeriesView> series() const {
    std::vector<SeriesView> all;
    for (std::size_t i = 0; i < kept.size(); ++i) all.push_back({years[i], kept[i]});
    return all;
  }
  void expect_both_alike(std::int64_t fewest_years) {
    const PairSums plain = pair_correlations_plain(series(), fewest_years);
    expect_alike(pair_correlations_tiled(series(), fewest_years), plain);
    expect_alike(pair_correlations_in_cohorts(series(), fewest_years), plain);
  }
  static void expect_alike(const PairSums& found, const PairSums& plain) {
    EXPECT_EQ(found.pairs, plain.pairs);
    EXPECT_EQ(found.pairs_of, plain.pairs_of);
    for (std::size_t i = 0; i < plain.sum_of.size(); ++i) {
      // 1e-12 for each correlation that was added.
      EXPECT_NEAR(found.sum_of[i], plain.sum_of[i], 1e-12 * std::max(1, plain.pairs_of[i])) << i;
    }
    EXPECT_NEAR(found.sum, plain.sum, 1e-12 * std::max(1.0, plain.pairs));
  }

  static void expect_grow_to_all(const std::vector<double>& shares) {
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_GT(shares.front(), 0);
    EXPECT_DOUBLE_EQ(shares.back(), 1);
  }
  static std::string printed(double mean) { return printed("%.2f", mean); }
  static std::string printed_in_full(double mean) { return printed("%.6g", mean); }
  static std::string printed(const char* format, double mean) {
    char text[40];
    std::snprintf(text, sizeof text, format, mean);
    return text;
  }
  void clear() { kept.clear(), years.clear(); }

  std::vector<std::vector<double>> kept;
  std::vector<std::int64_t> years;
};

// Collections of all kinds, by number: series of like or unlike years, far apart, short and long; some
// constant, constant for a time, hardly varying, far from zero, not finite; all of these kinds mixed.
struct AllKindsOfPairs : PairCorrelations, ::testing::WithParamInterface<unsigned> {
  static constexpr unsigned kinds = 24;

  AllKindsOfPairs() {
    const unsigned kind = GetParam();
    Chance chance(kind + 1);
    const int count = chance.below(2) == 0 ? 160 + chance.below(60) : 300 + chance.below(200);
    const int shortest = 30 + chance.below(60), spread = kind % 3 == 0 ? 1 : 1 + chance.below(200);
    const int all_years = kind % 4 == 0 ? 3 : kind % 4 == 1 ? 300 : 3'000;
    const int odd = kind % 5 == 0 ? 0 : kind % 5 == 1 ? 2 : 10;  // one in so many, 0 for none
    for (int i = 0; i < count; ++i) {
      auto values = noise(shortest + chance.below(spread), 1'000 * kind + static_cast<unsigned>(i));
      if (odd > 0 && chance.below(odd) == 0) make_odd(values, chance);
      add(chance.below(all_years), std::move(values));
    }
  }

  // Numbers at random.
  class Chance {
   public:
    explicit Chance(unsigned seed) : state_(seed * 2654435761u) {}
    int below(int end) {
      state_ = state_ * 1664525u + 1013904223u;
      return static_cast<int>((state_ >> 8) % static_cast<unsigned>(end));
    }

   private:
    unsigned state_;
  };

  static void make_odd(std::vector<double>& values, Chance& chance) {
    switch (chance.below(6)) {
      case 0:
      case 1:
        return std::fill(values.begin(), values.end(), 0.1 * (1 + chance.below(9)));
      case 2:
        std::fill_n(values.begin(), values.size() / 2, 0.3);
        return;
      case 3:
        for (double& value : values) value = 11 + 1e-13 * value;
        return;
      case 4:
        for (double& value : values) value += 1e4;
        return;
      default:
        values[values.size() / 2] = std::numeric_limits<double>::infinity();
    }
  }

  static void expect_same_bits(const PairSums& found, const PairSums& expected) {
    EXPECT_EQ(bits(found.sum), bits(expected.sum));
    EXPECT_EQ(found.pairs, expected.pairs);
    EXPECT_EQ(found.pairs_of, expected.pairs_of);
    for (std::size_t i = 0; i < expected.sum_of.size(); ++i)
      EXPECT_EQ(bits(found.sum_of[i]), bits(expected.sum_of[i])) << i;
  }
  static std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }
};

TEST_P(AllKindsOfPairs, HaveTheSameBitsForAnyNumberOfThreads) {
  const PairSums tiled = pair_correlations_tiled(series(), 40, {{}, 1}),
                 in_rows = pair_correlations_in_rows(series(), 40, {{}, 1}),
                 in_cohorts = pair_correlations_in_cohorts(series(), 40, {{}, 1}),
                 chosen = pair_correlations(series(), 40, {{}, 1});
  for (const std::size_t threads : {2u, 3u, 4u, 7u}) {
    expect_same_bits(pair_correlations_tiled(series(), 40, {{}, threads}), tiled);
    expect_same_bits(pair_correlations_in_rows(series(), 40, {{}, threads}), in_rows);
    expect_same_bits(pair_correlations_in_cohorts(series(), 40, {{}, threads}), in_cohorts);
    expect_same_bits(pair_correlations(series(), 40, {{}, threads}), chosen);
  }
}

TEST_P(AllKindsOfPairs, InRowsHaveTheBitsOfThePlainDefinition) {
  expect_same_bits(pair_correlations_in_rows(series(), 40), pair_correlations_plain(series(), 40));
}

TEST_P(AllKindsOfPairs, ArePrintedAsThePlainDefinitionGivesThem) {
  const PairSums plain = pair_correlations_plain(series(), 40), chosen = pair_correlations(series(), 40);
  EXPECT_EQ(chosen.pairs_of, plain.pairs_of);
  EXPECT_EQ(printed(chosen.sum / chosen.pairs), printed(plain.sum / plain.pairs));
  for (std::size_t i = 0; i < kept.size(); ++i) {
    const double found = chosen.sum_of[i] / chosen.pairs_of[i],
                 expected = plain.sum_of[i] / plain.pairs_of[i];
    EXPECT_EQ(printed(found), printed(expected)) << i;
    EXPECT_EQ(printed_in_full(found), printed_in_full(expected)) << i;
  }
}

TEST_P(AllKindsOfPairs, InTilesAgreeWithThePlainOnes) {
  expect_both_alike(40);
}

INSTANTIATE_TEST_SUITE_P(OfNumber, AllKindsOfPairs, ::testing::Range(0u, AllKindsOfPairs::kinds));

// Series that fit no tile have the sums of the plain definition, to the last bit.
TEST_F(PairCorrelations, OfConstantSeriesAmongOthersAreThePlainOnes) {
  for (unsigned i = 0; i < 200; ++i) {
    auto values = noise(118, i + 1);
    if (i % 5 == 0) std::ranges::fill(values, 0.1 * (1 + i % 7));
    add(1900 + i % 3, std::move(values));
  }
  const PairSums plain = pair_correlations_plain(series(), 40), tiled = pair_correlations_tiled(series(), 40);
  for (std::size_t i = 0; i < kept.size(); i += 5) EXPECT_EQ(tiled.sum_of[i], plain.sum_of[i]) << i;
}

// --- Which way is taken.

TEST_F(PairCorrelations, OfFewSeriesAreHadPlainlyOrInRows) {
  for (unsigned i = 1; i < fewest_in_rows; ++i) add(1900, noise(118, i));
  EXPECT_EQ(pair_way(series(), 40), PairWay::one_by_one);
  for (unsigned i = fewest_in_rows; i <= few_series; ++i) add(1900, noise(118, i));
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_rows);
  add(1900, noise(118, 1'000));
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_tiles);
}

TEST_F(PairCorrelations, OfSeriesThatHardlyMeetAreHadPlainly) {
  for (unsigned i = 0; i < 400; ++i) add(60 * static_cast<int>(i * 7 % 400), noise(118, i + 1));
  EXPECT_EQ(pair_way(series(), 40), PairWay::one_by_one);
}

TEST_F(PairCorrelations, OfSeriesThatHardlyMeetAreThePlainOnes) {
  for (unsigned i = 0; i < 400; ++i)
    add(31 * static_cast<int>(i * 7 % 400), noise(i % 9 == 0 ? 30 : 50 + static_cast<int>(i % 150), i + 1));
  ASSERT_EQ(pair_way(series(), 40), PairWay::one_by_one);
  const PairSums plain = pair_correlations_plain(series(), 40), found = pair_correlations(series(), 40);
  EXPECT_GT(plain.pairs, 500);
  EXPECT_EQ(found.sum, plain.sum);
  EXPECT_EQ(found.pairs, plain.pairs);
  EXPECT_EQ(found.sum_of, plain.sum_of);
  EXPECT_EQ(found.pairs_of, plain.pairs_of);
}

// Three hundred series that begin in one of so many years.
void add_long_series(PairCorrelations& to, int years) {
  for (unsigned i = 0; i < 300; ++i)
    to.add(years * static_cast<int>(i * 7 % 300) / 300, noise(150 + static_cast<int>(i * 37 % 300), i + 1));
}

TEST_F(PairCorrelations, OfLongSeriesFarApartAreHadInRows) {
  add_long_series(*this, 2'000);
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_rows);
}

TEST_F(PairCorrelations, OfLongSeriesFartherApartAreHadPlainly) {
  add_long_series(*this, 4'800);
  EXPECT_EQ(pair_way(series(), 40), PairWay::one_by_one);
}

TEST_F(PairCorrelations, OfLongSeriesOfOneTimeAreHadInTiles) {
  add_long_series(*this, 200);
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_tiles);
}

TEST_F(PairCorrelations, OfFewSeriesThatHardlyMeetAreHadPlainly) {
  for (unsigned i = 0; i < 30; ++i) add(60 * static_cast<int>(i * 7 % 30), noise(118, i + 1));
  EXPECT_EQ(pair_way(series(), 40), PairWay::one_by_one);
}

TEST_F(PairCorrelations, OfConstantSeriesAreHadInRows) {
  for (unsigned i = 0; i < 300; ++i)
    add(1900, i % 3 == 0 ? noise(118, i + 1) : std::vector<double>(118, 0.7));
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_rows);
}

TEST_F(PairCorrelations, OfSomeConstantSeriesAmongManyAreHadInTiles) {
  for (unsigned i = 0; i < 300; ++i) add(1900, i % 3 > 0 ? noise(118, i + 1) : std::vector<double>(118, 0.7));
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_tiles);
}

// Of noise no mean lies near a tie: those of cohorts are given as they are.
TEST_F(PairCorrelations, OfManySeriesOfTheSameYearsAreHadInCohorts) {
  for (unsigned i = 0; i < 300; ++i) add(1900 + i % 2, noise(118, i + 1));
  ASSERT_EQ(pair_way(series(), 40), PairWay::in_tiles);
  const PairSums found = pair_correlations(series(), 40);
  EXPECT_EQ(found.sum_of, pair_correlations_in_cohorts(series(), 40).sum_of);
  EXPECT_NE(found.sum_of, pair_correlations_tiled(series(), 40).sum_of);
}

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

// Seven series stand in a tile of 730 years, so that there are some 130 tiles, one behind the other. Each
// series meets the three before and behind it, in another tile too.
TEST_F(PairCorrelations, InTilesAgreeWithThePlainOnesWhereTheirTilesAreTooManyToBeHeldAtOnce) {
  for (int i = 0; i < 900; ++i) add(80 * i, noise(250, static_cast<unsigned>(i) + 1));
  expect_both_alike(10);
  std::vector<double> shares;
  pair_correlations_tiled(series(), 10, {[&](double share) { shares.push_back(share); }, 1});
  EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
  EXPECT_DOUBLE_EQ(shares.back(), 1);
  EXPECT_EQ(pair_correlations_tiled(series(), 10).pairs, 899 + 898 + 897);
}

// A tile for each length, of 26, 25, 14 and 7 MB, that meet each other: no more than 40 MB of those behind
// one are held at once.
TEST_F(PairCorrelations, InTilesAgreeWithThePlainOnesWhereThoseThatMeetAreTooLarge) {
  unsigned seed = 0;
  for (const auto& [length, last_start] :
       {std::pair(12000, 11000), {8000, 14000}, {4000, 7900}, {2000, 3900}}) {
    for (int i = 0; i <= 5; ++i) add(last_start * i / 5, noise(length + i, ++seed));
  }
  expect_both_alike(10);
  std::vector<double> shares;
  pair_correlations_tiled(series(), 10, {[&](double share) { shares.push_back(share); }, 1});
  expect_grow_to_all(shares);
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

// Cores that vary in their last two digits: what is left when the mean is taken off depends on the way.
TEST_F(PairCorrelations, OfSeriesThatHardlyVaryAreThePlainOnes) {
  for (unsigned i = 0; i < 60; ++i) {
    auto values = noise(120, i + 1);
    if (i % 4 == 0) {
      for (double& value : values) value = 11 + 1e-13 * value;
    }
    add(i / 2, std::move(values));
  }
  expect_both_alike(40);
}

// The product of two spreads is infinite for the largest of these and 0 for the smallest, their correlation
// is neither.
TEST_F(PairCorrelations, OfSeriesOfAnySizeAreThePlainOnes) {
  for (int i = 0; i < 60; ++i) {
    auto values = noise(120, static_cast<unsigned>(i) + 1);
    for (double& value : values) value *= std::pow(10.0, 5 * (i - 30));
    add(i / 2, std::move(values));
  }
  expect_both_alike(40);
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

// Trees of 64 years, above and below their mean by turns and alike far every fourth year. Two that move
// together in 36 years and against each other in the other 28 correlate at (9 - 7) / 16 = 1/8. A mean of 1/8
// is a tie when it is rounded to two decimals: its last bit decides.
struct TiedMeans : PairCorrelations {
  static std::vector<double> tree(int size, int together_until) {
    std::vector<double> values;
    for (int k = 0; k < 64; ++k) {
      const double distance = (k % 4 < 2 ? 0.37 : 0.73) * (1 + 0.01 * size);
      values.push_back(1.3 + ((k < together_until) == (k % 2 == 0) ? distance : -distance));
    }
    return values;
  }
};

TEST_F(TiedMeans, OfATreeInACohortArePrintedAsThePlainDefinitionGivesThem) {
  int otherwise = 0;
  for (int k = 0; k < 40; ++k) {
    clear();
    add(1900, tree(k, 64));
    for (int i = 1; kept.size() <= few_series; ++i) add(1900, tree(k + i, 36));
    const double plain = pair_correlations_plain(series(), 40).sum_of[0] / few_series;
    ASSERT_NEAR(plain, 0.125, 1e-12);
    const double found = pair_correlations_in_cohorts(series(), 40).sum_of[0] / few_series;
    otherwise += printed(found) != printed(plain) ? 1 : 0;
    EXPECT_EQ(pair_correlations(series(), 40).sum_of[0] / few_series, plain);
  }
  EXPECT_GT(otherwise, 0);  // else this would show nothing
}

// The others began in years of their own, before the tree.
TEST_F(TiedMeans, OfATreeArePrintedAsThePlainDefinitionGivesThem) {
  int otherwise_by_tiles = 0;
  for (int k = 0; k < 40; ++k) {
    clear();
    add(1900, tree(k, 64));
    for (int i = 1; kept.size() <= few_series; ++i) {
      auto values = noise(i, static_cast<unsigned>(i));
      std::ranges::copy(tree(k + i, 36), std::back_inserter(values));
      add(1900 - i, std::move(values));
    }
    const double plain = pair_correlations_plain(series(), 40).sum_of[0] / few_series;
    ASSERT_NEAR(plain, 0.125, 1e-12);
    otherwise_by_tiles +=
        printed(pair_correlations_tiled(series(), 40).sum_of[0] / few_series) != printed(plain) ? 1 : 0;
    EXPECT_EQ(pair_correlations(series(), 40).sum_of[0] / few_series, plain);
  }
  EXPECT_EQ(pair_way(series(), 40), PairWay::in_tiles);
  EXPECT_GT(otherwise_by_tiles, 0);
}

// Couples, each in a century of its own.
TEST_F(TiedMeans, OfAllPairsArePrintedAsThePlainDefinitionGivesThem) {
  int otherwise_by_tiles = 0;
  for (int k = 0; k < 12; ++k) {
    clear();
    for (int i = 0; kept.size() <= few_series; ++i) {
      add(64 * i, tree(k + i, 64));
      add(64 * i, tree(2 * k + i, 36));
    }
    const PairSums plain = pair_correlations_plain(series(), 40),
                   tiled = pair_correlations_tiled(series(), 40), settled = pair_correlations(series(), 40);
    ASSERT_NEAR(plain.sum / plain.pairs, 0.125, 1e-12);
    otherwise_by_tiles += printed(tiled.sum / tiled.pairs) != printed(plain.sum / plain.pairs) ? 1 : 0;
    EXPECT_EQ(settled.sum, plain.sum);
    EXPECT_EQ(settled.sum_of, plain.sum_of);
  }
  EXPECT_GT(otherwise_by_tiles, 0);
}

// A tree among couples of trees that are each other's opposites is as unlike the one as it is like the other:
// its mean is nought, and the sign of a nought is printed.
TEST_F(TiedMeans, OfNoughtKeepTheSignOfThePlainDefinition) {
  int otherwise = 0;
  for (unsigned k = 0; k < 10; ++k) {
    clear();
    add(1900, noise(60, 1'000 + k));
    for (unsigned i = 1; kept.size() <= few_series; ++i) {
      add(1900, noise(60, i));
      add(1900, noise(60, i));
      for (double& value : kept.back()) value = 1 - value;
    }
    const double plain = pair_correlations_plain(series(), 40).sum_of[0];
    ASSERT_NEAR(plain, 0, 1e-12);
    otherwise += printed(pair_correlations_in_cohorts(series(), 40).sum_of[0]) != printed(plain) ? 1 : 0;
    EXPECT_EQ(pair_correlations(series(), 40).sum_of[0], plain);
  }
  EXPECT_GT(otherwise, 0);
}

// A tree with 256 others: unlike any but one, with which it correlates at 1/4. A mean of 1/1024, which is
// 0.0009765625, is a tie when it is rounded to six significant digits.
TEST_F(TiedMeans, ArePrintedWithSixDigitsAsThePlainDefinitionGivesThem) {
  int otherwise = 0;
  for (int k = 0; k < 40; ++k) {
    clear();
    add(1900, tree(k, 64));
    add(1900, tree(k + 1, 40));
    for (int i = 2; i <= 256; ++i) add(1900, tree(k + i, 32));
    const double plain = pair_correlations_plain(series(), 40).sum_of[0] / 256;
    ASSERT_NEAR(plain, 1.0 / 1024, 1e-14);
    const double found = pair_correlations_in_cohorts(series(), 40).sum_of[0] / 256;
    otherwise += printed_in_full(found) != printed_in_full(plain) ? 1 : 0;
    EXPECT_EQ(pair_correlations(series(), 40).sum_of[0] / 256, plain);
  }
  EXPECT_GT(otherwise, 0);
}

TEST_F(PairCorrelations, TellHowFarTheyAre) {
  for (unsigned i = 0; i < 200; ++i) add(static_cast<int>(i), noise(60, i + 1));
  std::vector<double> shares;
  pair_correlations_tiled(series(), 40, {[&](double share) { shares.push_back(share); }, 1});
  EXPECT_GE(shares.size(), 4u);
  expect_grow_to_all(shares);
}

TEST_F(PairCorrelations, OnSeveralThreadsTellTheCallingOneHowFarTheyAre) {
  for (unsigned i = 0; i < 400; ++i)
    add(static_cast<int>(i), i % 3 == 0 ? std::vector<double>(60, 1.5) : noise(60, i + 1));
  std::vector<double> shares;
  const auto caller = std::this_thread::get_id();
  pair_correlations_tiled(series(), 40,
                          {[&](double share) {
                             EXPECT_EQ(std::this_thread::get_id(), caller);
                             shares.push_back(share);
                           },
                           3});
  expect_grow_to_all(shares);
}

// Whoever closes the window is told of the end by an exception.
TEST_F(PairCorrelations, EndWhereWhoeverIsToldThrows) {
  for (unsigned i = 0; i < 400; ++i) add(static_cast<int>(i), noise(60, i + 1));
  for (const std::size_t threads : {1u, 2u}) {
    const ShareDone closed = [](double) { throw std::runtime_error("closed"); };
    EXPECT_THROW(pair_correlations_tiled(series(), 40, {closed, threads}), std::runtime_error);
    EXPECT_THROW(pair_correlations_in_rows(series(), 40, {closed, threads}), std::runtime_error);
  }
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
