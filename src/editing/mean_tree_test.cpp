#include "editing/mean_tree.h"

#include <gtest/gtest.h>

#include <cmath>

#include "editing/working_pair.h"
#include "support/test_store.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

// Widths from .25 up in steps of an eighth: no two years alike, all sums and halves exact.
Values counted(int n, double from) {
  Values values;
  for (int k = 0; k < n; ++k) values.push_back(from + 0.125 * k);
  return values;
}

// Cores put in by each test, then the chronologies of two files behind them. Switches off: tx is x, and ax is
// x over the mean of all.
struct MeanTree : ::testing::Test {
  MeanTree() {
    w.splineon = w.aron = w.logon = false;
    w.b(button::mean_name).label = "Mean Name";
  }
  // Puts the chronologies behind the cores, makes 1 and 2 the working pair and marks `cores`.
  void mark(std::initializer_list<int> cores) {
    const int count = w.nc;
    store.add_tree("oaks", 1900, counted(40, 5.0));
    store.add_tree("larches", 1850, counted(30, 7.0));
    w.nc = count;
    w.nfil = 2;
    w.tr1 = 1;
    w.tr2 = 2;
    set_chs(w);
    w.chs = 0;
    for (const int core : cores) w.chc(++w.chs) = core;
  }
  Values widths(int entry) {
    const auto stretch = w.widths(entry);
    return {stretch.begin(), stretch.end()};
  }
  double width(int entry, int year) { return w.x(w.ad(entry) + year - w.fy(entry)); }
  bool present(int entry, int year) { return w.xok(w.ad(entry) + year - w.fy(entry)); }
  std::string name(int entry) { return std::string(w.nam(entry).view()); }
  std::string told() { return store.messages.str(); }
  std::string name_when_typed(const std::string& text) {
    store.add_tree("OAK1", 1900, counted(3, 1));
    store.add_tree("OAK2", 1900, counted(3, 1));
    mark({1, 2});
    w.b(button::mean_name).label = text;
    EXPECT_TRUE(mean_create(w));
    return name(3);
  }
  std::string name_after(const std::string& first) {
    store.add_tree(first, 1900, counted(3, 1));
    store.add_tree("OTHER", 1900, counted(3, 1));
    mark({1, 2});
    EXPECT_TRUE(mean_create(w));
    return name(3);
  }

  TestStore store;
  Workspace& w = store.w;
};

TEST_F(MeanTree, Of1900To1950And1940To2000CopiesTheOneCoreAndAveragesTheTwo) {
  store.add_tree("OAK1", 1900, counted(51, 0.25));
  store.add_tree("OAK2", 1940, counted(61, 2.0));
  mark({1, 2});
  EXPECT_TRUE(mean_create(w));
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(w.fy(3), 1900);
  EXPECT_EQ(w.ly(3), 2000);
  EXPECT_EQ(w.yr(3), 101);
  for (int year = 1900; year <= 1939; ++year) EXPECT_EQ(width(3, year), 0.25 + 0.125 * (year - 1900));
  // 1940: (0.25 + 40/8 + 2.0) / 2 = 3.625; the sum then grows by a quarter a year, its half by an eighth.
  for (int year = 1940; year <= 1950; ++year) EXPECT_EQ(width(3, year), 3.625 + 0.125 * (year - 1940));
  for (int year = 1951; year <= 2000; ++year) EXPECT_EQ(width(3, year), 2.0 + 0.125 * (year - 1940));
  for (int year = 1900; year <= 2000; ++year) EXPECT_TRUE(present(3, year)) << year;
  EXPECT_EQ(told(), "");
}

TEST_F(MeanTree, OfThreeDividesByTheNumberOfRings) {
  store.add_tree("A", 1900, {1, 2, 3});
  store.add_tree("B", 1901, {5, 6, 7});
  store.add_tree("C", 1902, {9, 10, 11});
  mark({3, 1, 2});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(4), (Values{1, (2 + 5) / 2.0, (9 + 3 + 6) / 3.0, (10 + 7) / 2.0, 11}));
}

// A core marked twice counts twice.
TEST_F(MeanTree, OfACoreAndItselfIsTheCore) {
  store.add_tree("A", 1900, {1, 2, 3});
  store.add_tree("B", 1900, {4, 5, 6});
  mark({2, 2});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(3), (Values{4, 5, 6}));
}

// --- The order of choice. B lacks its ring of 1901; its width there is an estimate, 20.

TEST_F(MeanTree, OrderDependenceAnEstimateCountsBehindAPresentRing) {
  store.add_tree("A", 1900, {1, 2, 3});
  store.add_tree("B", 1900, {10, 20, 30}, " - ");
  mark({1, 2});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(3), (Values{5.5, (2 + 20) / 2.0, 16.5}));
  EXPECT_EQ(w.iwk1(2), 2);
}

TEST_F(MeanTree, OrderDependenceAnEstimateBeforeAnyPresentRingIsSkipped) {
  store.add_tree("A", 1900, {1, 2, 3});
  store.add_tree("B", 1900, {10, 20, 30}, " - ");
  mark({2, 1});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(3), (Values{5.5, 2, 16.5}));
  EXPECT_TRUE(present(3, 1901));
  EXPECT_EQ(w.iwk1(2), 1);
}

// B and C lack the ring, A in the middle has it: B's estimate is skipped, C's counts.
TEST_F(MeanTree, OrderDependenceOfThreeEstimatesCountFromThePresentRingOn) {
  store.add_tree("A", 1900, {1, 2, 3});
  store.add_tree("B", 1900, {10, 20, 30}, " - ");
  store.add_tree("C", 1900, {4, 8, 12}, " - ");
  mark({2, 1, 3});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(4), (Values{5, (2 + 8) / 2.0, 15}));
}

// --- Where a year has no counted ring.

TEST_F(MeanTree, Of1900To1920And1930To1950WarnsAndTheStoreHoldsOneCoreMore) {
  store.add_tree("OAK1", 1900, counted(21, 1.0));
  store.add_tree("OAK2", 1930, counted(21, 2.0));
  mark({2, 1});
  store.screen.presses = 1;
  EXPECT_FALSE(mean_create(w));
  EXPECT_EQ(told(), "Warning - trees do not overlap ?\n");
  EXPECT_EQ(w.nc, 3);
  EXPECT_EQ(w.nd, 5);
  EXPECT_EQ(w.fy(3), 1900);
  EXPECT_EQ(w.ly(3), 1950);
  for (int k = 1; k <= 51; ++k) {
    const int year = 1899 + k;
    const bool gap = year > 1920 && year < 1930;
    EXPECT_EQ(w.iwk1(k), gap ? 0 : 1) << year;
    EXPECT_EQ(present(3, year), !gap) << year;
  }
  EXPECT_EQ(width(3, 1925), 0);
  EXPECT_EQ(width(3, 1930), 2.0);
}

TEST_F(MeanTree, AfterTheWarningWidthsAreSumsAndNothingIsComputedAnew) {
  store.add_tree("OAK1", 1900, {1, 2});
  store.add_tree("OAK2", 1901, {10, 20});
  store.add_tree("OAK3", 1905, {3, 3});
  mark({3, 2, 1});
  w.ax(1) = w.tx(1) = 77;  // of OAK1; would be made from its width
  store.screen.presses = 1;
  EXPECT_FALSE(mean_create(w));
  EXPECT_EQ(width(4, 1901), 12);  // 2 + 10, not divided
  EXPECT_EQ(w.ax(1), 77);
  EXPECT_EQ(w.tx(1), 77);
  EXPECT_EQ(w.cyr(1), 0);  // no chronology was built
  EXPECT_EQ(w.chs, 3);
  EXPECT_EQ(w.chc(1), 3);
}

TEST_F(MeanTree, AYearInWhichEveryCoreLacksItsRingHasNoCountedRing) {
  store.add_tree("A", 1900, {1, 2, 3}, " - ");
  store.add_tree("B", 1900, {10, 20, 30}, " - ");
  mark({1, 2});
  store.screen.presses = 1;
  EXPECT_FALSE(mean_create(w));
  EXPECT_EQ(told(), "Warning - trees do not overlap ?\n");
  EXPECT_EQ(widths(3), (Values{11, 0, 33}));
  EXPECT_FALSE(present(3, 1901));
}

// --- The name.

TEST_F(MeanTree, ATypedNameOfTwoToEightCharactersIsTaken) {
  EXPECT_EQ(name_when_typed("AB"), "AB      ");
}
TEST_F(MeanTree, ATypedNameOfEightCharactersIsTakenWhole) {
  EXPECT_EQ(name_when_typed("ABCDEFGH"), "ABCDEFGH");
}
TEST_F(MeanTree, ATypedNameOfOneCharacterIsIgnored) {
  EXPECT_EQ(name_when_typed("A"), "OAK1M   ");
}
TEST_F(MeanTree, ATypedNameOfMoreThanEightCharactersIsIgnored) {
  EXPECT_EQ(name_when_typed("ABCDEFGHI"), "OAK1M   ");
}
TEST_F(MeanTree, TheFieldsOwnTextIsNoName) {
  EXPECT_EQ(name_when_typed("Mean Core"), "OAK1M   ");
}
TEST_F(MeanTree, TypedKeysThatAreNoCharactersCountAsBlanks) {
  EXPECT_EQ(name_when_typed("A\bB\x05\x1B\x7F"), "A B     ");
}
TEST_F(MeanTree, NothingButSuchKeysIsNoName) {
  EXPECT_EQ(name_when_typed("\b\b\b"), "OAK1M   ");
}
TEST_F(MeanTree, AFirstMarkedCoreNamedAGivesItsLetterABlankAndM) {
  EXPECT_EQ(name_after("A"), "A M     ");
}
TEST_F(MeanTree, AFirstMarkedCoreWithoutNameGivesTwoBlanksAndM) {
  EXPECT_EQ(name_after(""), "  M     ");
}
TEST_F(MeanTree, ANameOfEightCharactersIsCutToSeven) {
  EXPECT_EQ(name_after("ABCDEFGH"), "ABCDEFGM");
}
TEST_F(MeanTree, ItIsNamedAfterTheFirstMarkedNotTheFirstInTheStore) {
  store.add_tree("OAK1", 1900, {1, 2});
  store.add_tree("OAK2", 1900, {1, 2});
  mark({2, 1});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(name(3), "OAK2M   ");
}

// --- The store.

TEST_F(MeanTree, ChronologiesMoveUpByOneNumberAndTheMeansLength) {
  store.add_tree("OAK1", 1900, counted(20, 1.0));
  store.add_tree("OAK2", 1900, counted(20, 2.0));
  mark({1, 2});
  const Values oaks = widths(3);
  const int first = w.ad(3), second = w.ad(4);
  for (int p = first; p < w.ad(4); ++p) w.tx(p) = p;
  w.xok(first + 3) = false;
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(w.nd, 5);
  EXPECT_EQ(w.ad(3), first);
  EXPECT_EQ(w.ad(4), first + 20);
  EXPECT_EQ(w.ad(5), second + 20);
  EXPECT_EQ(name(4), "oaks    ");
  EXPECT_EQ(name(5), "larches ");
  EXPECT_EQ(w.fy(5), 1850);
  EXPECT_EQ(w.ly(5), 1879);
  EXPECT_EQ(w.yr(5), 30);
  EXPECT_EQ(widths(4), oaks);
  for (int k = 0; k < 40; ++k) {
    EXPECT_EQ(w.tx(w.ad(4) + k), first + k);
    EXPECT_EQ(w.ax(w.ad(4) + k), 5.0 + 0.125 * k);
    EXPECT_EQ(w.xok(w.ad(4) + k), k != 3);
  }
  // All of the last chronology but its last value, which the sample's working copy has taken.
  for (int k = 0; k < 29; ++k) EXPECT_EQ(w.ax(w.ad(5) + k), 7.0 + 0.125 * k) << k;
}

TEST_F(MeanTree, TheMarkedCoresStayAsTheyAre) {
  store.add_tree("OAK1", 1900, counted(20, 1.0));
  store.add_tree("OAK2", 1910, counted(20, 2.0), "--");
  mark({2, 1});
  const Values one = widths(1), two = widths(2);
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(1), one);
  EXPECT_EQ(widths(2), two);
  EXPECT_FALSE(present(2, 1911));
  EXPECT_EQ(w.fy(2), 1910);
}

// Mean of all widths: (1 + 2 + 3 + 6 + 2 + 4) / 6 = 3.
TEST_F(MeanTree, IndicesAndChronologyAreMadeAnewWithIt) {
  store.add_tree("A", 1900, {1, 2});
  store.add_tree("B", 1900, {3, 6});
  mark({1, 2});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(w.tx(w.ad(3)), 2);
  EXPECT_EQ(w.ax(w.ad(3)), 2 / 3.0);
  EXPECT_EQ(w.ax(w.ad(3) + 1), 4 / 3.0);
  EXPECT_EQ(w.num(1, 1), 3);
  EXPECT_EQ(w.crn(1, 1), 2.0);
  EXPECT_EQ(w.crn(2, 1), 4.0);
}

TEST_F(MeanTree, TheSelectionIsTheWorkingPairAfterwards) {
  store.add_tree("A", 1900, {1, 2});
  store.add_tree("B", 1900, {3, 6});
  store.add_tree("C", 1900, {3, 6});
  mark({3, 2, 1});
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(w.chs, 2);
  EXPECT_EQ(w.chc(1), 1);
  EXPECT_EQ(w.chc(2), 2);
  EXPECT_EQ(w.nam(w.nd + 1), w.nam(1));
  EXPECT_EQ(w.ad(w.nd + 1), w.ad(w.nd) + w.yr(w.nd) - 1);
}

// A pair that named the first chronology names the new core, which has its number now.
TEST_F(MeanTree, TheWorkingPairKeepsItsNumbers) {
  store.add_tree("A", 1900, {1, 2});
  store.add_tree("B", 1900, {3, 6});
  mark({1, 2});
  w.tr2 = 3;
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(w.tr2, 3);
  EXPECT_EQ(w.nam(w.nd + 2), Name("A M"));
}

TEST_F(MeanTree, CanItselfBeAveraged) {
  store.add_tree("A", 1900, {1, 2});
  store.add_tree("B", 1900, {3, 6});
  mark({1, 2});
  EXPECT_TRUE(mean_create(w));
  w.chc(1) = 3;
  w.chc(2) = 1;
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(name(4), "A MM    ");
  EXPECT_EQ(widths(4), (Values{1.5, 3}));
  EXPECT_EQ(w.nd, 6);
}

// --- Refusals change nothing.

struct MeanTreeRefused : MeanTree {
  MeanTreeRefused() {
    store.add_tree("A", 1900, {1, 2});
    store.add_tree("B", 1900, {3, 6});
    mark({1, 2});
    store.screen.presses = 1;
  }
  void expect_refusal(const std::string& why) {
    const int nc = w.nc, nd = w.nd, chs = w.chs;
    const Name third = w.nam(3);
    EXPECT_FALSE(mean_create(w));
    EXPECT_EQ(told(), why + "\n");
    EXPECT_EQ(w.nc, nc);
    EXPECT_EQ(w.nd, nd);
    EXPECT_EQ(w.chs, chs);
    EXPECT_EQ(w.nam(3), third);
  }
};

TEST_F(MeanTreeRefused, From11999EntriesOn) {
  w.nd = 11'999;
  expect_refusal("Would be too many trees");
}

// The tables end sooner than the limit of entries.
TEST_F(MeanTreeRefused, When10000CoresAreThere) {
  w.nc = 10'000;
  w.nd = 10'002;
  expect_refusal("Would be too many trees");
}

TEST_F(MeanTreeRefused, WithOneCoreMarked) {
  w.chs = 1;
  expect_refusal("Need more than one core");
}

// The number of entries is looked at first.
TEST_F(MeanTreeRefused, WithOneCoreMarkedAndTooManyEntries) {
  w.chs = 1;
  w.nd = 11'999;
  expect_refusal("Would be too many trees");
}

// n + ad(nd + 1) - 1 must be below 1,200,000; here n is 2.
TEST_F(MeanTreeRefused, WhenThePoolWouldBeFull) {
  w.ad(w.nd + 1) = 1'199'999;
  expect_refusal("Would be too many rings");
}

TEST_F(MeanTreeRefused, ButNotWithOnePlaceLeft) {
  w.ad(w.nd + 1) = 1'199'998;
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(told(), "");
}

// The editor can date cores as far apart as one likes.
TEST_F(MeanTreeRefused, WhenTheSpanIsLongerThanAnyChronology) {
  w.fy(2) = 1900 + 12'000;
  w.ly(2) = 1901 + 12'000;
  expect_refusal("Would be too many rings");
}

TEST_F(MeanTreeRefused, ForTheGapAloneWhereTheSpanIsThatOfTheLongestChronology) {
  w.fy(2) = 1898 + 12'000;
  w.ly(2) = 1899 + 12'000;
  EXPECT_FALSE(mean_create(w));
  EXPECT_EQ(told(), "Warning - trees do not overlap ?\n");
}

TEST_F(MeanTreeRefused, OfCoresWithoutAYearBetweenThem) {
  w.yr(1) = w.yr(2) = 0;
  w.ly(1) = w.ly(2) = -999'999;  // a file that gave a first year and no length
  expect_refusal("Warning - trees do not overlap ?");
}

// A file can give 50 rings and no dates: years 0 to 0. What lies behind the span is left out.
TEST_F(MeanTree, RingsBehindTheYearsOfACoreAreLeftOut) {
  store.add_tree("A", 0, Values(50, 1.0));
  store.add_tree("B", 0, {3, 6});
  w.ly(1) = 0;
  mark({1, 2});
  const Values chronology = widths(3);
  EXPECT_TRUE(mean_create(w));
  EXPECT_EQ(widths(3), (Values{2, 3.5}));
  EXPECT_EQ(widths(4), chronology);
}

}  // namespace
}  // namespace vorn
