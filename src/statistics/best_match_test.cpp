#include "statistics/best_match.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "statistics/correlation.h"
#include "support/test_store.h"

namespace vorn {
namespace {

std::vector<int> first_years(const std::vector<MatchedStretch>& stretches) {
  std::vector<int> years;
  for (const auto& stretch : stretches) years.push_back(stretch.first);
  return years;
}

TEST(BestMatch, CutsASampleOf400YearsIntoEightStretchesThatShareAYear) {
  TestStore store;
  store.w.seg = 40;
  store.set_pair(1500, noise(400, 1), 1500, noise(60, 2));
  const auto stretches = best_matches(store.w);
  EXPECT_EQ(first_years(stretches), (std::vector<int>{1500, 1549, 1598, 1647, 1696, 1745, 1794, 1843}));
  EXPECT_EQ(stretches[0].last, 1549);
  EXPECT_EQ(stretches[7].last, 1892);
}

TEST(BestMatch, TakesStretchesOfASegmentWhereAnEighthIsShorter) {
  TestStore store;
  store.set_pair(1900, noise(120, 1), 1800, noise(300, 2));
  const auto stretches = best_matches(store.w);
  EXPECT_EQ(first_years(stretches), (std::vector<int>{1900, 1949}));
  EXPECT_EQ(stretches[1].last, 1998);
}

TEST(BestMatch, FindsHowManyYearsTooLateTheSampleIsDated) {
  TestStore store;
  const auto b = noise(300, 2);
  store.set_pair(1907, std::vector<double>(b.begin() + 100, b.begin() + 180), 1800, b);
  const auto stretches = best_matches(store.w);
  ASSERT_EQ(stretches.size(), 1u);
  EXPECT_NEAR(stretches[0].matches[0].r, 1.0, 1e-12);
  EXPECT_EQ(stretches[0].matches[0].offset, 7);
}

TEST(BestMatch, RanksAllPlacesByTheirCorrelation) {
  TestStore store;
  const auto a = noise(50, 1), b = noise(120, 2);
  store.set_pair(1900, a, 1850, b);
  std::vector<Match> all;
  for (int t = 0; t <= 70; ++t) {
    const std::vector<double> there(b.begin() + t, b.begin() + t + 50);
    all.push_back({cov(a, there), 1900 - (1850 + t)});
  }
  std::stable_sort(all.begin(), all.end(), [](const Match& m, const Match& n) { return m.r > n.r; });
  const auto stretches = best_matches(store.w);
  ASSERT_EQ(stretches.size(), 1u);
  for (std::size_t j = 0; j < 6; ++j) {
    EXPECT_EQ(stretches[0].matches[j].r, all[j].r);
    EXPECT_EQ(stretches[0].matches[j].offset, all[j].offset);
  }
}

// Estimates decide which places are looked at; what is ranked must be as if every place had been.
TEST(BestMatch, RanksAsIfEveryPlaceHadBeenCorrelated) {
  for (const unsigned seed : {1u, 2u, 3u, 4u}) {
    TestStore store;
    auto a = noise(420, seed), b = noise(900, seed + 10);
    std::copy(a.begin() + 100, a.begin() + 260, b.begin() + 300);  // equal to the last bit, but for the means
    for (std::size_t k = 600; k < 700; ++k) b[k] = seed % 2 == 0 ? 0.5 : b[k] * 1e-9;
    if (seed == 4) b[750] = std::numeric_limits<double>::quiet_NaN();
    std::string missing_a(420, '+'), missing_b(900, '+');
    for (std::size_t k = 0; k < 420; k += 13 * seed) missing_a[k] = '-';
    for (std::size_t k = 0; k < 900; k += 17 * seed) missing_b[k] = '-';
    store.set_pair(1500, a, 1200, b, missing_a, missing_b);
    const Workspace& w = store.w;
    for (const MatchedStretch& stretch : best_matches(w)) {
      const int count = stretch.last - stretch.first + 1, at = w.ad(w.nd + 1) + stretch.first - 1500;
      std::vector<Match> all;
      for (int place = 0; place + count <= 900; ++place) {
        const int there = w.ad(w.nd + 2) + place;
        Table<bool> both(count);
        for (int k = 0; k < count; ++k) both(k + 1) = w.xok(at + k) && w.xok(there + k);
        const auto [r, valid] =
            covmiss(w.ax.range(at, count), w.ax.range(there, count), both.range(1, count));
        if (valid && r > -1) all.push_back({r, stretch.first - (1200 + place)});
      }
      std::stable_sort(all.begin(), all.end(), [](const Match& m, const Match& n) { return m.r > n.r; });
      ASSERT_GE(all.size(), 6u);
      for (std::size_t j = 0; j < 6; ++j) {
        EXPECT_EQ(stretch.matches[j].r, all[j].r) << seed << " " << stretch.first << " rank " << j;
        EXPECT_EQ(stretch.matches[j].offset, all[j].offset) << seed << " " << stretch.first << " rank " << j;
      }
    }
  }
}

TEST(BestMatch, KeepsTheEarlierOfTwoPlacesWithTheSameCorrelationAhead) {
  TestStore store;
  const auto a = noise(50, 1);
  std::vector<double> b;
  for (int times = 0; times < 3; ++times) b.insert(b.end(), a.begin(), a.end());
  store.set_pair(1900, a, 1700, b);
  const auto matches = best_matches(store.w)[0].matches;
  EXPECT_EQ(matches[0].offset, 200);
  EXPECT_EQ(matches[1].offset, 150);
  EXPECT_EQ(matches[2].offset, 100);
  EXPECT_EQ(matches[0].r, matches[1].r);
  EXPECT_EQ(matches[1].r, matches[2].r);
  EXPECT_LT(matches[3].r, matches[2].r);
}

// Seven times the sample, each time a little less disturbed, so that correlations differ by a ten-thousandth
// of a millionth: less than the estimates are sure of.
TEST(BestMatch, RanksPlacesThatTheEstimatesCannotTellApart) {
  TestStore store;
  const auto a = noise(50, 1), other = noise(50, 2);
  std::vector<double> b;
  for (int time = 0; time < 7; ++time) {
    for (std::size_t k = 0; k < a.size(); ++k) b.push_back(a[k] + 1.4e-3 * (1 - 5e-5 * time) * other[k]);
  }
  store.set_pair(1900, a, 1700, b);
  std::vector<int> offsets;
  const auto stretches = best_matches(store.w);
  for (const Match& match : stretches[0].matches) offsets.push_back(match.offset);
  EXPECT_EQ(offsets, (std::vector<int>{-100, -50, 0, 50, 100, 150}));
}

TEST(BestMatch, NeverRanksAPlaceWithFewerThanThreePairs) {
  TestStore store;
  store.set_pair(1900, noise(50, 1), 1900, noise(52, 2), std::string(48, '-') + "++");
  const auto stretches = best_matches(store.w);
  ASSERT_EQ(stretches.size(), 1u);
  for (const Match& match : stretches[0].matches) {
    EXPECT_EQ(match.r, -1.0);
    EXPECT_EQ(match.offset, 0);
  }
}

TEST(BestMatch, FindsNothingForASampleShorterThanASegment) {
  TestStore store;
  store.set_pair(1900, noise(49, 1), 1800, noise(300, 2));
  EXPECT_TRUE(best_matches(store.w).empty());
}

// As a record is read that has a length but no dates.
TEST(BestMatch, FindsNothingForASeriesWithoutDates) {
  TestStore store;
  store.set_pair(0, noise(80, 1), 1900, noise(80, 2));
  store.w.ly(store.w.nd + 1) = 0;
  EXPECT_TRUE(best_matches(store.w).empty());
  store.set_pair(1900, noise(80, 1), 0, noise(80, 2));
  store.w.ly(store.w.nd + 2) = 0;
  EXPECT_EQ(best_matches(store.w)[0].matches[0].r, -1.0);
}

// As a record is read that has a last year but no length: a million years without a value.
TEST(BestMatch, FindsNothingForYearsWithoutValues) {
  TestStore store;
  store.set_pair(-999'999, {}, -999'999, {});
  store.w.ly(store.w.nd + 1) = store.w.ly(store.w.nd + 2) = 2000;
  EXPECT_TRUE(best_matches(store.w).empty());
}

TEST(BestMatch, FindsNothingInAReferenceShorterThanAStretch) {
  TestStore store;
  store.set_pair(1900, noise(50, 1), 1900, noise(49, 2));
  EXPECT_EQ(best_matches(store.w)[0].matches[0].r, -1.0);
}

TEST(BestMatch, TakesStretchesOfOneYear) {
  TestStore store;
  store.w.seg = 1;
  store.set_pair(1900, noise(15, 1), 1900, noise(3, 2));
  const auto stretches = best_matches(store.w);
  EXPECT_EQ(first_years(stretches), std::vector<int>(15, 1900));
  // One value correlates with nothing: 0.0 three times, and three ranks not filled.
  EXPECT_EQ(stretches[0].matches[2].r, 0.0);
  EXPECT_EQ(stretches[0].matches[2].offset, -2);
  EXPECT_EQ(stretches[0].matches[3].r, -1.0);
}

// --- Carefully.

TEST(BestMatch, CarefullyASampleShorterThanASegmentIsOneStretch) {
  TestStore store;
  store.w.careful.set(Mend::short_samples, true);
  const auto b = noise(300, 2);
  store.set_pair(1907, std::vector<double>(b.begin() + 100, b.begin() + 130), 1800, b);
  const auto stretches = best_matches(store.w);
  ASSERT_EQ(stretches.size(), 1u);
  EXPECT_EQ(stretches[0].first, 1907);
  EXPECT_EQ(stretches[0].last, 1936);
  EXPECT_NEAR(stretches[0].matches[0].r, 1.0, 1e-12);
  EXPECT_EQ(stretches[0].matches[0].offset, 7);
}

TEST(BestMatch, CarefullyTheLastStretchEndsWithTheSample) {
  TestStore store;
  store.w.careful.set(Mend::short_samples, true);
  store.set_pair(1900, noise(120, 1), 1800, noise(300, 2));
  const auto stretches = best_matches(store.w);
  EXPECT_EQ(first_years(stretches), (std::vector<int>{1900, 1935, 1970}));
  EXPECT_EQ(stretches[2].last, 2019);
  store.w.seg = 40;
  EXPECT_EQ(first_years(best_matches(store.w)), (std::vector<int>{1900, 1940, 1980}));
}

// The last 7 of 30 years grew when the reference had ended.
TEST(BestMatch, CarefullyAPlaceMayReachBeyondTheReferenceByAQuarter) {
  TestStore store;
  const auto b = noise(300, 2), later = noise(20, 3);
  const auto date = [&](int years_outside) {
    std::vector<double> sample(b.end() - (30 - years_outside), b.end());
    sample.insert(sample.end(), later.begin(), later.begin() + years_outside);
    store.set_pair(1907, sample, 1800, b);
    return best_matches(store.w);
  };
  EXPECT_TRUE(date(7).empty());
  store.w.careful.set(Mend::short_samples, true);
  EXPECT_NEAR(date(7)[0].matches[0].r, 1.0, 1e-12);
  EXPECT_EQ(date(7)[0].matches[0].offset, 1907 - 2077);
  EXPECT_LT(date(8)[0].matches[0].r, 0.9);
  std::vector<double> sample(later.begin(), later.begin() + 7);
  sample.insert(sample.end(), b.begin(), b.begin() + 23);
  store.set_pair(1907, sample, 1800, b);
  EXPECT_EQ(best_matches(store.w)[0].matches[0].offset, 1907 - 1793);
}

TEST(BestMatch, CarefullyThereIsNothingToMatchInFewerThanThreeYears) {
  TestStore store;
  store.w.careful.set(Mend::short_samples, true);
  for (const int years : {0, 1, 2}) {
    store.set_pair(1900, noise(years, 1), 1800, noise(300, 2));
    EXPECT_TRUE(best_matches(store.w).empty());
  }
  store.set_pair(1900, noise(3, 1), 1900, noise(2, 2));
  EXPECT_EQ(best_matches(store.w)[0].matches[0].r, -1.0);
}

}  // namespace
}  // namespace vorn
