#include "chronology/missing_rings.h"

#include <cmath>
#include <limits>

#include "chronology/standard_chronology.h"
#include "support/specimen_store.h"

namespace vorn {
namespace {

using Widths = std::vector<double>;
using MissingRings = SpecimenStore;

constexpr double missing = -0.999;

TEST_F(MissingRings, AFileWithoutMissingRingsStaysUnchanged) {
  add_core(1900, {1, 2, 3});
  add_core(1901, {4, 0, 6});  // a width of 0 is a ring
  mdet_miss(w, 1, 2);
  EXPECT_EQ(values(w.x, 1), (Widths{1, 2, 3}));
  EXPECT_EQ(values(w.x, 2), (Widths{4, 0, 6}));
}

// Year 1901 has the second series' 4 alone. The growth curve is (1 + 2)/2, 4/1, (3 + 6)/2; the first series
// has 1 + 3 = 4 where the curve has 1.5 + 4.5 = 6. The estimate is 4 · 4/6.
TEST_F(MissingRings, TheEstimateIsTheOtherSeriesWidthTimesTheGrowthLevel) {
  add_core(1900, {1, missing, 3});
  add_core(1900, {2, 4, 6});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(values(w.x, 1), (Widths{1, 4 * (4 / 6.), 3}));
  EXPECT_EQ(values(w.x, 2), (Widths{2, 4, 6}));
}

// The second series begins a year later, so that year 1902 is its second ring and the first series' third.
// Year 1902: 8 alone. Curve by ring number: (2 + 4)/2 = 3, (4 + 8)/2 = 6, 6/1, 6/1. The first series has 2 +
// 4 + 6 = 12 where the curve has 3 + 6 + 6 = 15.
TEST_F(MissingRings, YearsAndRingNumbersAreCountedApart) {
  add_core(1900, {2, 4, missing, 6});
  add_core(1901, {4, 8, 6});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(w.x(3), 8 * (12 / 15.));
}

TEST_F(MissingRings, TheEstimatedRingStillCountsAsMissing) {
  add_core(1900, {1, missing, 3});
  add_core(1900, {2, missing, 6});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(values(w.xok, 1), (std::vector<bool>{true, false, true}));
  std_crn(w);
  EXPECT_EQ(w.num(1, 1), 2);
  EXPECT_EQ(w.num(2, 1), 0);
  EXPECT_EQ(w.crn(2, 1), 1.0);
}

TEST_F(MissingRings, AYearInWhichNoSeriesHasARingGivesZero) {
  add_core(1900, {1, missing, 3});
  mdet_miss(w, 1, 1);
  EXPECT_EQ(values(w.x, 1), (Widths{1, 0, 3}));
}

TEST_F(MissingRings, ASeriesWithoutAnyRingBecomesNotANumber) {
  add_core(1900, {missing, missing});
  add_core(1900, {2, 4});
  mdet_miss(w, 1, 2);
  EXPECT_TRUE(std::isnan(w.x(1)));
  EXPECT_TRUE(std::isnan(w.x(2)));
  EXPECT_EQ(values(w.x, 2), (Widths{2, 4}));
}

TEST_F(MissingRings, AWidthThatIsNotANumberIsAMissingRing) {
  add_core(1900, {1, std::numeric_limits<double>::quiet_NaN(), 3});
  add_core(1900, {1, 2, 3});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(values(w.x, 1), (Widths{1, 2, 3}));
}

TEST_F(MissingRings, AGroupIsTheEntriesAskedForAlone) {
  add_core(1900, {50, 50, 50});
  add_core(1900, {1, missing, 3});
  add_core(1900, {1, 2, 3});
  mdet_miss(w, 2, 3);
  EXPECT_EQ(values(w.x, 2), (Widths{1, 2, 3}));
}

TEST_F(MissingRings, AnEmptyGroupIsNone) {
  add_core(1900, {1, missing, 3});
  mdet_miss(w, 1, 0);
  EXPECT_EQ(w.x(2), missing);
}

// From 1 to 12,000 are 12,000 years.
TEST_F(MissingRings, AreEstimatedInAGroupOfTwelveThousandYears) {
  add_core(1, {1, missing, 3});
  add_core(11998, {1, 2, 3});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(w.x(2), 0);  // no other series has that year
}

TEST_F(MissingRings, AreLeftInAGroupOfMoreThanTwelveThousandYears) {
  add_core(1, {1, missing, 3});
  add_core(11999, {1, 2, 3});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(w.x(2), missing);
}

// A header that never gave its years leaves a mark far from all others, or the largest years that a file can
// state.
TEST_F(MissingRings, YearsThatCannotBeAreSafe) {
  add_core(1900, {1, missing, 3});
  add_core(-999999, {});
  mdet_miss(w, 1, 2);
  EXPECT_EQ(w.x(2), missing);
  w.fy(2) = std::numeric_limits<int>::min();
  w.ly(1) = std::numeric_limits<int>::max();
  mdet_miss(w, 1, 2);
  EXPECT_EQ(w.x(2), missing);
}

TEST_F(MissingRings, ASeriesLongerThanAnyChronologyIsSafe) {
  Widths widths(20000, 1.0);
  widths[19000] = missing;
  add_core(1, widths);
  mdet_miss(w, 1, 1);
  EXPECT_EQ(w.x(19001), missing);  // its span is too long
  w.ly(1) = 12000;  // a length that contradicts the years: rings behind year 12,000 have no year
  mdet_miss(w, 1, 1);
  EXPECT_EQ(w.x(19001), 0);
}

// Of 8 mm, 6 of them behind ring 12,000, where the other series has twice as much at each ring number: the
// level counts them all.
TEST_F(MissingRings, RingNumbersGoOnBehindTheLongestChronology) {
  Widths narrow(12006, 0.0), wide(12006, 0.0);
  for (const std::size_t k : {0u, 1u, 12'000u, 12'001u, 12'002u, 12'003u, 12'004u, 12'005u})
    narrow[k] = wide[k] = 1;
  for (std::size_t k = 12'000; k < wide.size(); ++k) wide[k] = 3;
  narrow[2] = missing;
  wide[2] = 5;
  add_core(1, narrow);
  add_core(1, wide);
  w.ly(1) = w.ly(2) = 12000;
  mdet_miss(w, 1, 2);
  EXPECT_EQ(w.x(3), 5 * (8 / 14.));
}

}  // namespace
}  // namespace vorn
