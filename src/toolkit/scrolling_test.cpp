#include "toolkit/scrolling.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/desk.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

class Scrolling : public ::testing::Test {
 protected:
  // Four cores and one chronology; sample 1 (1800-1950) is compared with reference 2 (1850-2000).
  Scrolling() {
    set_up_graph(w);
    w.nc = 4;
    w.nd = 5;
    w.tr1 = 1;
    w.tr2 = 2;
    span(1, 1800, 1950);
    span(2, 1850, 2000);
    for (int i = 3; i <= 5; ++i) span(i, 1900, 1990);
    span(6, 1800, 1950);
    span(7, 1850, 2000);
    w.b(button::save_sample).on = w.b(button::save_reference).on = false;
    view(1850, 100);
  }
  void span(int i, std::int32_t first, std::int32_t last) {
    w.fy(i) = first;
    w.ly(i) = last;
    w.yr(i) = last - first + 1;
  }
  void view(std::int32_t first, std::int32_t years) {
    w.fs = first;
    w.sl = years;
  }
  static constexpr int sample = 1, reference = 2;
  Desk desk_;
  Workspace& w = desk_.w;
};

TEST_F(Scrolling, AStepMovesTheYearsShown) {
  scr(w, w, w, 10);
  EXPECT_EQ(w.fs, 1840);
  EXPECT_EQ(w.ls, 1939);
  scr(w, w, w, -50);
  EXPECT_EQ(w.fs, 1890);
  EXPECT_EQ(w.ls, 1989);
}

TEST_F(Scrolling, NeverBeforeTheFirstYearOfTheEarlierSeries) {
  scr(w, w, w, 50);
  EXPECT_EQ(w.fs, 1800);
  scr(w, w, w, 50);
  EXPECT_EQ(w.fs, 1799);  // one year before it is the most
  scr(w, w, w, 50);
  EXPECT_EQ(w.fs, 1799);
}

TEST_F(Scrolling, NeverPastTheLastYearOfTheLaterSeries) {
  view(1890, 100);
  scr(w, w, w, -50);
  EXPECT_EQ(w.fs, 1900);  // 2000 - 100
  EXPECT_EQ(w.ls, 1999);
  scr(w, w, w, -50);
  EXPECT_EQ(w.fs, 1900);
}

TEST_F(Scrolling, AViewWiderThanBothSeriesTogetherIsNotHeldAtTheFirstYear) {
  view(1790, 400);
  scr(w, w, w, 50);
  EXPECT_EQ(w.fs, 1740);
  scr(w, w, w, -100);
  EXPECT_EQ(w.fs, 1600);  // behind the first year: the last year ends the view
}

// The pair spans 1800 to 2000. A view is held at 1799 only where, one year more than it begins before, it
// would end before 2000; one that is as wide as the pair or wider may begin earlier.
TEST_F(Scrolling, AViewAsWideAsThePairIsHeldAtTheFirstYearOnlyWhereItWouldEndBeforeTheLast) {
  view(1807, 201);
  scr(w, w, w, 10);
  EXPECT_EQ(w.fs, 1799);
  view(1808, 201);
  scr(w, w, w, 10);
  EXPECT_EQ(w.fs, 1798);
}

TEST_F(Scrolling, AViewWiderThanThePairMayStandAtTheFirstYearButNotBehindIt) {
  view(1810, 400);
  scr(w, w, w, 10);
  EXPECT_EQ(w.fs, 1800);
  EXPECT_EQ(w.ls, 2199);
  view(1811, 400);
  scr(w, w, w, 10);
  EXPECT_EQ(w.fs, 1600);  // 2000 - 400
}

TEST_F(Scrolling, YearsOfAnyFileAreScrolledWithoutOverflow) {
  using Limits = std::numeric_limits<std::int32_t>;
  span(1, Limits::min(), Limits::min());
  span(2, Limits::max(), Limits::max());
  view(Limits::max() - 10, 12'000);
  scr(w, w, w, -50);
  EXPECT_EQ(w.fs, Limits::max() - 12'000);
  view(Limits::min(), 100);
  scr(w, w, w, 50);
  EXPECT_EQ(w.fs, Limits::min());
}

TEST_F(Scrolling, TheSampleIsMovedAndKeepsItsLength) {
  for (int k = 1; k <= 6; ++k) topbot(w, sample, 10);
  EXPECT_EQ(w.fy(6), 1860);
  EXPECT_EQ(w.ly(6), 2010);
  EXPECT_EQ(w.fy(7), 1850);
  EXPECT_TRUE(w.b(button::save_sample).on);
  EXPECT_FALSE(w.b(button::save_reference).on);
  EXPECT_TRUE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
}

TEST_F(Scrolling, TheReferenceIsMovedToo) {
  for (int k = 1; k <= 6; ++k) topbot(w, reference, -10);
  EXPECT_EQ(w.fy(7), 1790);
  EXPECT_EQ(w.ly(7), 1940);
  EXPECT_EQ(w.fy(6), 1800);
  EXPECT_FALSE(w.b(button::save_sample).on);
  EXPECT_TRUE(w.b(button::save_reference).on);
  EXPECT_FALSE(w.tr1ok);
  EXPECT_TRUE(w.tr2ok);
}

TEST_F(Scrolling, OnlyTheWorkingCopyIsMoved) {
  topbot(w, sample, 10);
  EXPECT_EQ(w.fy(1), 1800);
  EXPECT_EQ(w.ly(1), 1950);
}

TEST_F(Scrolling, TheLastTreeAndChronologiesAreNotMarkedAsChanged) {
  w.tr1 = 4;  // the last of nc = 4: meant
  w.tr2 = 5;
  topbot(w, sample, 10);
  topbot(w, reference, 10);
  EXPECT_FALSE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
  EXPECT_TRUE(w.b(button::save_sample).on);
  EXPECT_TRUE(w.b(button::save_reference).on);
}

// Each by its own mend: that of the last core marks no chronology, and the other way round.
TEST_F(Scrolling, CarefullyTheLastTreeIsMarked) {
  w.careful.set(Mend::last_core, true);
  w.tr1 = 4;
  w.tr2 = 5;
  topbot(w, sample, 10);
  topbot(w, reference, 10);
  EXPECT_TRUE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
}

TEST_F(Scrolling, CarefullyAChronologyIsMarked) {
  w.careful.set(Mend::shift_lasts, true);
  w.tr1 = 4;
  w.tr2 = 5;
  topbot(w, sample, 10);
  topbot(w, reference, 10);
  EXPECT_FALSE(w.tr1ok);
  EXPECT_TRUE(w.tr2ok);
}

TEST_F(Scrolling, TheLastTreeAsReferenceIsNotMarkedEither) {
  w.tr1 = 1;
  w.tr2 = 4;
  topbot(w, sample, 10);
  topbot(w, reference, 10);
  EXPECT_TRUE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
}

// Both slots are among the entries that must span 12,000 years at most: here the other one was moved away
// first.
TEST_F(Scrolling, TheOtherSlotLimitsAMoveToo) {
  for (int k = 0; k < 60; ++k) topbot(w, reference, -50);
  EXPECT_EQ(w.fy(7), 1850 - 3000);
  for (int k = 0; k < 300; ++k) topbot(w, sample, 50);
  EXPECT_EQ(w.fy(6), 1850 - 3000 + 11'999);
  span(6, 1800, 1950);
  span(7, 1850, 2000);
  for (int k = 0; k < 60; ++k) topbot(w, reference, 50);
  for (int k = 0; k < 300; ++k) topbot(w, sample, -50);
  EXPECT_EQ(w.fy(6), 2000 + 3000 - 11'999);
  span(6, 1800, 1950);
  span(7, 1850, 2000);
  for (int k = 0; k < 60; ++k) topbot(w, sample, -50);
  for (int k = 0; k < 300; ++k) topbot(w, reference, 50);
  EXPECT_EQ(w.fy(7), 1800 - 3000 + 11'999);
}

TEST_F(Scrolling, TheButtonsOfARowScrollFromFiftyYearsBackToFiftyOn) {
  const int years[] = {-50, -10, -1, 1, 10, 50};
  for (const ButtonRange row :
       {button::scroll_row, button::sample_row, button::reference_row, button::editor_row}) {
    for (int k = 0; k < 6; ++k) EXPECT_EQ(scroll_years(row, row.at(k)), years[k]) << k;
  }
}

TEST_F(Scrolling, NoSeriesIsMovedSoFarThatAllSpanMoreThan12000YearsForward) {
  for (int k = 0; k < 300; ++k) topbot(w, sample, 50);
  // The earliest first year is 1800, of core 1.
  EXPECT_EQ(w.fy(6), 1800 + 11'999);
  EXPECT_EQ(w.ly(6), w.fy(6) + 150);
}

TEST_F(Scrolling, NoSeriesIsMovedSoFarThatAllSpanMoreThan12000YearsBack) {
  for (int k = 0; k < 300; ++k) topbot(w, sample, -50);
  // The latest last year is 2000, of core 2.
  EXPECT_EQ(w.fy(6), 2000 - 11'999);
  EXPECT_EQ(w.ly(6), w.fy(6) + 150);
}

TEST_F(Scrolling, WhereBothLimitsContradictTheUpperOneWins) {
  span(3, -20'000, -19'900);
  topbot(w, sample, 1);
  EXPECT_EQ(w.fy(6), -20'000 + 11'999);
}

TEST_F(Scrolling, YearsOfAnyFileAreMovedWithoutOverflow) {
  using Limits = std::numeric_limits<std::int32_t>;
  span(1, Limits::min(), Limits::min());
  span(2, Limits::max(), Limits::max());
  topbot(w, sample, 50);
  EXPECT_EQ(w.fy(6), Limits::min() + 11'999);
}

}  // namespace
}  // namespace vorn
