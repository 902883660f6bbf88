#include "chronology/standard_chronology.h"

#include <cmath>
#include <limits>

#include "plot/screen.h"
#include "support/specimen_store.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

class StandardChronology : public SpecimenStore {
 protected:
  // Whether std_crn ended the program, and with which exit status.
  int exit_status() {
    try {
      std_crn(w);
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(end.reason(), EndReason::cannot_go_on);
      return end.exit_status();
    }
    return 0;
  }
  Values column(int years) {
    const auto k = w.crn.column(w.cf, years);
    return {k.begin(), k.end()};
  }
  std::vector<int> depth(int years) {
    const auto k = w.num.column(w.cf, years);
    return {k.begin(), k.end()};
  }
};

TEST_F(StandardChronology, OfTwoCoresWithAGapBetweenThem) {
  add_core(1900, Values(51, 1.5));
  add_core(1960, Values(41, 0.5));
  std_crn(w);
  EXPECT_EQ(w.cfy(1), 1900);
  EXPECT_EQ(w.cly(1), 2000);
  EXPECT_EQ(w.cyr(1), 101);
  for (int year = 1951; year <= 1959; ++year) {
    EXPECT_EQ(w.num(year - 1899, 1), 0);
    EXPECT_EQ(w.crn(year - 1899, 1), 1.0);
  }
  EXPECT_EQ(w.crn(51, 1), 1.5);
  EXPECT_EQ(w.num(51, 1), 1);
  EXPECT_EQ(w.crn(61, 1), 0.5);
}

// 1900: 2. 1901: (4 + 1)/2. 1902: 5 alone, as the first core's ring is missing there. 1903: 4.
// The values present, 2 4 1 5 4, have the mean 16/5: the cores are divided by it, the missing ring as well.
TEST_F(StandardChronology, IsTheMeanBeforeTheCoresAreScaled) {
  add_core(1900, {2, 4, 8});
  add_core(1901, {1, 5, 4});
  w.xok(3) = false;
  std_crn(w);
  EXPECT_EQ(column(4), (Values{2, 2.5, 5, 4}));
  EXPECT_EQ(depth(4), (std::vector<int>{1, 2, 1, 1}));
  const double mean = 16 / 5.;
  EXPECT_EQ(values(w.ax, 1), (Values{2 / mean, 4 / mean, 8 / mean}));
  EXPECT_EQ(values(w.ax, 2), (Values{1 / mean, 5 / mean, 4 / mean}));
  EXPECT_EQ(values(w.tx, 1), (Values{2, 4, 8}));
}

TEST_F(StandardChronology, ACoreWhoseEveryRingIsMissingWidensTheSpanAlone) {
  add_core(1900, {1, 2});
  add_core(1898, {-1, -1, -1, -1, -1});
  std_crn(w);
  EXPECT_EQ(w.cfy(1), 1898);
  EXPECT_EQ(w.cly(1), 1902);
  EXPECT_EQ(depth(5), (std::vector<int>{0, 0, 1, 1, 0}));
  EXPECT_EQ(column(5), (Values{1, 1, 1, 2, 1}));
}

TEST_F(StandardChronology, StartsItsColumnFromNothingAndTouchesNoOther) {
  w.nfil = 3;
  w.cf = 2;
  w.crn.fill(7);
  w.num.fill(7);
  w.crn_written.fill(true);
  add_core(1900, {1, 2});
  std_crn(w);
  EXPECT_EQ(column(3), (Values{1, 2, 0}));
  EXPECT_EQ(w.crn(12000, 2), 0);
  EXPECT_EQ(w.num(12000, 2), 0);
  EXPECT_EQ(w.crn(12000, 1), 7);
  EXPECT_EQ(w.crn(1, 3), 7);
  EXPECT_EQ(w.num(1, 3), 7);
}

TEST_F(StandardChronology, TouchesTheCoresAlone) {
  add_core(1900, {4, 4});
  add_core(1900, {3, 3});  // to stand for the chronology's entry
  w.nc = 1;
  std_crn(w);
  EXPECT_EQ(values(w.ax, 1), (Values{1, 1}));
  EXPECT_EQ(values(w.ax, 2), (Values{3, 3}));
}

TEST_F(StandardChronology, OfATwelveThousandYearSpanIsAccepted) {
  add_core(-5999, {1});
  add_core(6000, {3});
  EXPECT_EQ(exit_status(), 0);
  EXPECT_EQ(w.cyr(1), 12000);
  EXPECT_EQ(w.crn(1, 1), 1);
  EXPECT_EQ(w.crn(12000, 1), 3);
  EXPECT_EQ(log.str(), "");
}

TEST_F(StandardChronology, OfOneYearMoreEndsTheProgram) {
  add_core(-5999, {1});
  add_core(6001, {3});
  EXPECT_EQ(exit_status(), 4);
  EXPECT_EQ(screen.waits, 1);
}

TEST_F(StandardChronology, TooLongIsToldInFortyThreeCharacters) {
  add_core(1, {1});
  add_core(12500, {3});
  EXPECT_EQ(exit_status(), 4);
  const std::string message = "Chronology too long, max= 12000, age= 12500";
  EXPECT_EQ(message.size(), 43u);
  EXPECT_EQ(log.str().substr(0, 43), message);
}

// A span of more than six digits does not fit its columns. Years never given hold a mark of -999999.
TEST_F(StandardChronology, OfYearsThatCannotBeEndsTheProgramToo) {
  add_core(2000, {1});
  add_core(-999999, {});
  EXPECT_EQ(exit_status(), 4);
  EXPECT_EQ(log.str().substr(0, 43), "Chronology too long, max= 12000, age=******");
  w.fy(2) = std::numeric_limits<int>::min();
  w.ly(1) = std::numeric_limits<int>::max();
  EXPECT_EQ(exit_status(), 4);
  EXPECT_EQ(w.cyr(1), std::numeric_limits<int>::max());
}

// The other way round there is no year at all: nothing to mean, nothing to divide by.
TEST_F(StandardChronology, OfALastYearBeforeTheFirstIsEmpty) {
  add_core(2000, {});
  w.ly(1) = -999999;
  EXPECT_EQ(exit_status(), 0);
  EXPECT_EQ(w.cyr(1), -999999 - 2000 + 1);
  EXPECT_EQ(column(1), Values{0});
}

// A second length in a header contradicts the years: the rings behind the span are counted as far as the
// column goes.
TEST_F(StandardChronology, OfALengthThatContradictsTheYearsIsSafe) {
  add_core(1, Values(15000, 2.0));
  w.ly(1) = 10;
  EXPECT_EQ(exit_status(), 0);
  EXPECT_EQ(w.cyr(1), 10);
  EXPECT_EQ(w.num(12000, 1), 1);
  EXPECT_EQ(w.ax(15000), 1.0);
}

TEST_F(StandardChronology, WithoutAPresentRingMakesTheCoresNotANumber) {
  add_core(1900, {-1, -1});
  std_crn(w);
  EXPECT_TRUE(std::isnan(w.ax(1)));
  EXPECT_TRUE(std::isnan(w.ax(2)));
  EXPECT_EQ(column(3), (Values{1, 1, 0}));
}

// Logarithms may centre on zero.
TEST_F(StandardChronology, OfAGrandMeanOfZeroMakesTheCoresInfinite) {
  add_core(1900, {-1, 1, 0});
  w.xok(1) = true;
  std_crn(w);
  EXPECT_TRUE(std::isinf(w.ax(1)));
  EXPECT_TRUE(std::isinf(w.ax(2)));
  EXPECT_TRUE(std::isnan(w.ax(3)));
  EXPECT_EQ(column(3), (Values{-1, 1, 0}));
}

TEST_F(StandardChronology, WithoutCoresIsLeftAsItIs) {
  w.cfy(1) = 1900;
  w.crn(1, 1) = 7;
  std_crn(w);
  EXPECT_EQ(w.cfy(1), 1900);
  EXPECT_EQ(w.crn(1, 1), 7);
}

// The years of the constant core count, its values do not.
TEST_F(StandardChronology, CarefullyLeavesConstantCoresOut) {
  add_core(1900, {1, 2, 3});
  add_core(1901, {4, 4, 4});
  add_core(1900, {2, 4, 6});
  w.ax(w.ad(3) + 1) = -std::numeric_limits<double>::infinity();
  w.careful.set(Mend::constant_series, true);
  std_crn(w);
  EXPECT_EQ(w.cly(1), 1903);
  EXPECT_EQ(column(4), (Values{1, 2, 3, 1}));
  EXPECT_EQ(depth(4), (std::vector<int>{1, 1, 1, 0}));
  EXPECT_EQ(values(w.ax, 1), (Values{0.5, 1, 1.5}));
}

TEST_F(StandardChronology, CarefullyKeepsACoreOfOneRing) {
  add_core(1900, {1, 2, 3});
  add_core(1901, {4});
  w.careful.set(Mend::constant_series, true);
  std_crn(w);
  EXPECT_EQ(depth(3), (std::vector<int>{1, 2, 1}));
}

}  // namespace
}  // namespace vorn
