#include "statistics/lag_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "statistics/correlation.h"
#include "support/test_store.h"

namespace vorn {
namespace {

using Years = std::pair<int, int>;
using Segments = std::vector<Years>;

// The segments of the table, up to the first column that has none.
Segments segments(const Workspace& w) {
  Segments found;
  for (int k = 1; k <= max_segments && w.cyrs(1, k) != -9999; ++k)
    found.emplace_back(w.cyrs(1, k), w.cyrs(2, k));
  return found;
}

// The lags of segment k that hold something else than 0.0.
std::vector<int> lags(const Workspace& w, int k) {
  std::vector<int> found;
  for (int lag = -10; lag <= 10; ++lag) {
    if (w.ctab(lag + 11, k) != 0.0) found.push_back(lag);
  }
  return found;
}

std::vector<int> from_to(int first, int last) {
  std::vector<int> numbers;
  for (int n = first; n <= last; ++n) numbers.push_back(n);
  return numbers;
}

std::vector<double> years(const std::vector<double>& values, int first_year, int from, int count) {
  return {values.begin() + (from - first_year), values.begin() + (from - first_year) + count};
}

bool empty(const Workspace& w) {
  bool none = true;
  for (int k = 1; k <= max_segments; ++k) {
    none = none && w.cyrs(1, k) == -9999 && w.cyrs(2, k) == -9999 && lags(w, k).empty();
  }
  return none;
}

TEST(LagTable, OfFiftyYearsWithAnOverlapOf25StartsASegmentEvery25) {
  TestStore store;
  const auto a = noise(100, 1), b = noise(100, 2);
  store.set_pair(1900, a, 1900, b);
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w), (Segments{{1900, 1949}, {1925, 1974}, {1950, 1999}}));
  // A lag of +3: the reference's 1925-1974 with the sample's 1928-1977.
  EXPECT_EQ(store.w.ctab(3 + 11, 2), cov(years(b, 1900, 1925, 50), years(a, 1900, 1928, 50)));
  EXPECT_EQ(store.w.ctab(-10 + 11, 2), cov(years(b, 1900, 1925, 50), years(a, 1900, 1915, 50)));
  EXPECT_EQ(lags(store.w, 1), from_to(0, 10));
  EXPECT_EQ(lags(store.w, 2), from_to(-10, 10));
  EXPECT_EQ(lags(store.w, 3), from_to(-10, 0));
}

TEST(LagTable, FindsASampleDatedFourYearsTooLateAtPlusFour) {
  TestStore store;
  const auto b = noise(120, 2);
  store.set_pair(1904, b, 1900, b);
  cor_tab(store.w, store.w, store.w, 1904);
  for (int k = 1; k <= 2; ++k) EXPECT_NEAR(store.w.ctab(4 + 11, k), 1.0, 1e-12);
}

TEST(LagTable, EndsWithASegmentThatEndsWithTheShorterSeries) {
  TestStore store;
  store.set_pair(1900, noise(110, 1), 1900, noise(200, 2));
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w), (Segments{{1900, 1949}, {1925, 1974}, {1950, 1999}, {1960, 2009}}));
}

TEST(LagTable, StartsWithTheLaterSeriesOrWithTheYearAskedFor) {
  TestStore store;
  store.set_pair(1900, noise(100, 1), 1910, noise(100, 2));
  cor_tab(store.w, store.w, store.w, 1800);
  EXPECT_EQ(segments(store.w), (Segments{{1910, 1959}, {1935, 1984}, {1950, 1999}}));
  cor_tab(store.w, store.w, store.w, 1940);
  EXPECT_EQ(segments(store.w), (Segments{{1940, 1989}, {1950, 1999}}));
  cor_tab(store.w, store.w, store.w, 1974);
  EXPECT_EQ(segments(store.w), (Segments{{1950, 1999}}));
  cor_tab(store.w, store.w, store.w, 1975);
  EXPECT_TRUE(empty(store.w));
}

TEST(LagTable, OfASampleShorterThanTenYearsMoreThanASegmentHasFewerLags) {
  TestStore store;
  store.set_pair(1900, noise(55, 1), 1850, noise(150, 2));
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w), (Segments{{1900, 1949}, {1905, 1954}}));
  EXPECT_EQ(lags(store.w, 1), from_to(0, 5));
  EXPECT_EQ(lags(store.w, 2), from_to(-5, 0));
}

TEST(LagTable, HoldsTwoWhereThereAreFewerThanThreePairs) {
  TestStore store;
  const auto a = noise(20, 1), b = noise(20, 2);
  store.w.seg = 20;
  store.w.olap = 1;
  store.set_pair(1900, a, 1900, b, "++++++++++----------", "--------++++++++++++");
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(store.w.ctab(11, 1), 2.0);
  store.set_pair(1900, a, 1900, b, "+++++++++++---------", "--------++++++++++++");
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(store.w.ctab(11, 1), cov(years(b, 1900, 1908, 3), years(a, 1900, 1908, 3)));
}

TEST(LagTable, HasAtMost34Segments) {
  TestStore store;
  store.w.seg = 10;
  store.w.olap = 5;
  store.set_pair(1000, noise(1000, 1), 1000, noise(1000, 2));
  cor_tab(store.w, store.w, store.w, 1000);
  ASSERT_EQ(segments(store.w).size(), 34u);
  EXPECT_EQ(segments(store.w).back(), Years(1165, 1174));
}

TEST(LagTable, IsEmptyWhereTheOverlapIsTheSegment) {
  TestStore store;
  store.set_pair(1900, noise(100, 1), 1900, noise(100, 2));
  cor_tab(store.w, store.w, store.w, 1900);
  ASSERT_FALSE(empty(store.w));
  store.w.olap = 50;
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_TRUE(empty(store.w));
}

TEST(LagTable, RunsBackwards34SegmentsWhereTheOverlapIsGreaterThanTheSegment) {
  TestStore store;
  store.w.olap = 52;
  store.set_pair(1900, noise(100, 1), 1900, noise(100, 2));
  cor_tab(store.w, store.w, store.w, 1900);
  ASSERT_EQ(segments(store.w).size(), 34u);
  EXPECT_EQ(segments(store.w).front(), Years(1900, 1949));
  EXPECT_EQ(segments(store.w).back(), Years(1834, 1883));
  EXPECT_EQ(lags(store.w, 1), from_to(0, 10));
  EXPECT_EQ(lags(store.w, 6), from_to(10, 10));  // 1890-1939: the sample is read from 1900 on
  EXPECT_TRUE(lags(store.w, 7).empty());         // 1888: the sample begins more than ten years later
}

// As a record that gives its first year and no length leaves them.
TEST(LagTable, OfASampleThatEndsLongBeforeItBeginsHoldsNothing) {
  TestStore store;
  store.w.seg = 5;
  store.w.olap = 7;
  store.set_pair(1900, noise(100, 1), 1900, noise(100, 2));
  store.w.ly(1) = -999'999;
  store.w.yr(1) = 0;
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w).front(), Years(-1'000'003, -999'999));
  EXPECT_TRUE(lags(store.w, 1).empty());
}

// The last start is 1750, so that the range runs back to 1747: 77 steps of -2, of which the table has room
// for 34.
TEST(LagTable, RunsBackwardsNoFurtherThanItHasRoomWhereTheSeriesLieApart) {
  TestStore store;
  store.w.olap = 52;
  store.set_pair(1900, noise(100, 1), 1700, noise(100, 2));
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w), Segments(34, Years(1750, 1799)));
  EXPECT_TRUE(lags(store.w, 1).empty());
}

TEST(LagTable, KeepsTheLastStartForTheFirstSegmentAlsoBeforeTheCommonYears) {
  TestStore store;
  const auto a = noise(100, 1), b = noise(40, 2);
  store.set_pair(1900, a, 1900, b);
  cor_tab(store.w, store.w, store.w, 1900);
  // 50 years that end with the reference in 1939 start in 1890. Its years before 1900 are read as the pool
  // stands: the last ten values of the sample, which lies before it.
  EXPECT_EQ(segments(store.w), (Segments{{1890, 1939}}));
  EXPECT_EQ(lags(store.w, 1), from_to(10, 10));
  std::vector<double> read(a.end() - 10, a.end());
  read.insert(read.end(), b.begin(), b.end());
  EXPECT_EQ(store.w.ctab(10 + 11, 1), cov(read, years(a, 1900, 1900, 50)));
}

TEST(LagTable, CarefullyReadsNoYearOutsideTheTwoSeries) {
  TestStore store;
  const auto a = noise(100, 1), b = noise(40, 2);
  store.set_pair(1900, a, 1900, b);
  store.w.careful.set(Mend::short_samples, true);
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w), (Segments{{1900, 1939}}));
  EXPECT_EQ(lags(store.w, 1), from_to(0, 10));
  EXPECT_EQ(store.w.ctab(10 + 11, 1), cov(b, years(a, 1900, 1910, 40)));
  // Backwards: no year before 1900 is read of either.
  store.w.olap = 60;
  cor_tab(store.w, store.w, store.w, 1900);
  EXPECT_EQ(segments(store.w)[1], Years(1890, 1929));
  EXPECT_EQ(store.w.ctab(10 + 11, 2), cov(years(b, 1900, 1900, 30), years(a, 1900, 1910, 30)));
  store.w.olap = 25;
  // Where the reference ends before the sample begins there is nothing.
  store.set_pair(1900, a, 1800, b);
  cor_tab(store.w, store.w, store.w, 1800);
  EXPECT_TRUE(segments(store.w).empty());
}

TEST(LagTable, CarefullyIsTheSameWhereSegmentsLieInBothSeries) {
  TestStore store;
  store.set_pair(1900, noise(200, 1), 1880, noise(220, 2));
  cor_tab(store.w, store.w, store.w, 1900);
  std::vector<double> usual;
  for (int k = 1; k <= 34; ++k)
    for (int lag = 1; lag <= 21; ++lag) usual.push_back(store.w.ctab(lag, k));
  store.w.careful = Careful::everything();
  cor_tab(store.w, store.w, store.w, 1900);
  std::vector<double> carefully;
  for (int k = 1; k <= 34; ++k)
    for (int lag = 1; lag <= 21; ++lag) carefully.push_back(store.w.ctab(lag, k));
  EXPECT_EQ(carefully, usual);
}

TEST(LagTable, ReadsNothingOutsideThePool) {
  TestStore store;
  store.w.olap = 60;
  // The reference begins 200 years behind the end of the sample; 1950 would stand 250 places before it, and
  // the pool begins 100 places before it.
  store.set_pair(1900, noise(100, 1), 2200, noise(100, 2));
  cor_tab(store.w, store.w, store.w, 2200);
  ASSERT_EQ(segments(store.w).size(), 34u);
  EXPECT_EQ(segments(store.w).front(), Years(1950, 1999));
  EXPECT_EQ(segments(store.w).back(), Years(1870, 1919));
  for (int lag = -10; lag <= 0; ++lag) EXPECT_EQ(store.w.ctab(lag + 11, 1), 2.0);
  EXPECT_EQ(lags(store.w, 1), from_to(-10, 0));
}

TEST(LagTable, IsSafeForAllSegmentsAndOverlapsThatTheMenusAllow) {
  TestStore store;
  store.set_pair(-300, noise(90, 1), -250, noise(120, 2));
  for (const int seg : {1, 2, 4, 50, 90, 116, 12000}) {
    for (const int olap : {1, 2, 49, 50, 90, 115, 11999}) {
      store.w.seg = seg;
      store.w.olap = olap;
      for (const int start : {-300, -250, -212}) {
        cor_tab(store.w, store.w, store.w, start);
        for (int k = 1; k <= max_segments; ++k) {
          ASSERT_TRUE(store.w.cyrs(1, k) == -9999 || store.w.cyrs(2, k) == store.w.cyrs(1, k) + seg - 1);
        }
      }
    }
  }
}

TEST(LagTableOfDifferences, ShowsTheFiveNumbersForEachCellWithoutMissingRings) {
  TestStore store;
  store.w.seg = 12;
  store.w.olap = 1;
  const auto a = noise(12, 1), b = noise(12, 2);
  store.set_pair(1900, a, 1900, b);
  cor_abs(store.w, store.w, store.w, 1900, store.tells());
  EXPECT_EQ(segments(store.w), (Segments{{1900, 1911}}));
  EXPECT_EQ(store.messages.str().size(), 121u);
  EXPECT_GT(store.w.ctab(11, 1), 0.0);
}

TEST(LagTableOfDifferences, HoldsMinusOneWhereThereAreFewerThanElevenPairs) {
  TestStore store;
  store.w.seg = 12;
  store.w.olap = 1;
  store.set_pair(1900, noise(12, 1), 1900, noise(12, 2), "-+++++++++++", "+++++++++++-");
  cor_abs(store.w, store.w, store.w, 1900, store.tells());
  EXPECT_EQ(store.w.ctab(11, 1), -1.0);
  EXPECT_EQ(store.messages.str(), "");
}

}  // namespace
}  // namespace vorn
