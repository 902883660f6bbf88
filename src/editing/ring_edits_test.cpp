#include "editing/ring_edits.h"

#include <gtest/gtest.h>

#include "editing/working_pair.h"
#include "support/test_store.h"

namespace vorn {
namespace {

// Three trees; the first two are the working pair. Widths count up, so that every ring can be told.
struct RingEdits : ::testing::Test {
  RingEdits() {
    store.add_tree("ONE", 1900, counted(20, 100));
    store.add_tree("TWO", 1900, counted(20, 200));
    store.add_tree("THREE", 1900, counted(20, 300));
    w.tr1 = 1;
    w.tr2 = 2;
    set_chs(w);
    w.aron = w.splineon = w.logon = false;  // ax = x, so that values can be followed
    store.screen.presses = 1;
  }
  static std::vector<double> counted(int n, double from) {
    std::vector<double> values;
    for (int k = 0; k < n; ++k) values.push_back(from + k);
    return values;
  }
  double x(int entry, int k) { return w.x(w.ad(entry) + k); }  // ring k, from 0
  std::vector<double> all_x() {
    std::vector<double> values;
    for (int p = 1; p <= 120; ++p) values.push_back(w.x(p));
    return values;
  }

  TestStore store;
  Workspace& w = store.w;
  const int sample = 4, reference = 5;
};

TEST_F(RingEdits, DeletingMovesLaterRingsOneYearEarlier) {
  w.insdel = 1905;
  del_year(w, sample);
  EXPECT_EQ(w.yr(sample), 19);
  EXPECT_EQ(w.fy(sample), 1900);
  EXPECT_EQ(w.ly(sample), 1918);
  EXPECT_EQ(x(sample, 4), 104);
  EXPECT_EQ(x(sample, 5), 106);
  EXPECT_EQ(x(sample, 18), 119);
  EXPECT_EQ(x(reference, 0), 200);
  EXPECT_EQ(x(reference, 19), 219);
}

TEST_F(RingEdits, DeletingMovesWhatStandsBehindTheLastRingToo) {
  w.x(w.ad(reference) + 20) = 7;
  w.insdel = 1905;
  del_year(w, reference);
  EXPECT_EQ(x(reference, 18), 219);
  EXPECT_EQ(x(reference, 19), 7);
}

TEST_F(RingEdits, DeletingAndRestoringGivesTheRingBackExactly) {
  w.xok(w.ad(sample) + 5) = false;
  w.ax(w.ad(sample) + 5) = 0.625;
  w.tr1 = 3;  // the last core: the slot is not computed anew, so ax can be followed too
  w.insdel = 1905;
  del_year(w, sample);
  ins_year(w, sample, true);
  EXPECT_EQ(w.yr(sample), 20);
  EXPECT_EQ(x(sample, 5), 105);
  EXPECT_EQ(w.ax(w.ad(sample) + 5), 0.625);
  EXPECT_FALSE(w.xok(w.ad(sample) + 5));
  EXPECT_EQ(x(sample, 6), 106);
  EXPECT_TRUE(w.xok(w.ad(sample) + 6));
}

TEST_F(RingEdits, AnInsertedRingIsMissingWithTheMeanOfTheSixThatFollow) {
  w.insdel = 1905;
  ins_year(w, sample, false);
  EXPECT_EQ(w.yr(sample), 21);
  EXPECT_EQ(w.ly(sample), 1920);
  EXPECT_DOUBLE_EQ(x(sample, 5), (105 + 106 + 107 + 108 + 109 + 110) / 6.0);
  EXPECT_FALSE(w.xok(w.ad(sample) + 5));
  EXPECT_EQ(x(sample, 6), 105);
}

TEST_F(RingEdits, NearTheEndTheMeanTakesRingsOfTheNextEntry) {
  w.insdel = 1917;  // 117, 118, 119, then the reference's 200, 201, 202
  ins_year(w, sample, false);
  EXPECT_DOUBLE_EQ(x(sample, 17), (117 + 118 + 119 + 200 + 201 + 202) / 6.0);
}

TEST_F(RingEdits, OfElevenRingsOneCanGoOfTenNone) {
  w.yr(sample) = 11;
  w.ly(sample) = 1910;
  w.insdel = 1903;
  del_year(w, sample);
  EXPECT_EQ(w.yr(sample), 10);
  EXPECT_EQ(store.messages.str(), "");
  const auto before = all_x();
  del_year(w, sample);
  EXPECT_EQ(w.yr(sample), 10);
  EXPECT_EQ(all_x(), before);
  EXPECT_EQ(store.messages.str(), "Tree age too small \n");
}

TEST_F(RingEdits, InsertionBeyondTheAgeLimitIsRefused) {
  w.fy(3) = w.ly(sample) - 12000;
  const auto before = all_x();
  w.insdel = 1905;
  ins_year(w, sample, false);
  EXPECT_EQ(w.yr(sample), 20);
  EXPECT_EQ(all_x(), before);
  EXPECT_EQ(store.messages.str(), "Chronology age limit MXY reached\n");
}

TEST_F(RingEdits, TheOtherSlotCountsForTheAgeLimitToo) {
  w.fy(reference) = w.ly(sample) - 12000;
  w.insdel = 1905;
  ins_year(w, sample, false);
  EXPECT_EQ(w.yr(sample), 20);
  EXPECT_EQ(store.messages.str(), "Chronology age limit MXY reached\n");
}

TEST_F(RingEdits, InsertionOneYearBelowTheAgeLimitIsDone) {
  w.fy(3) = w.ly(sample) - 11999;
  w.insdel = 1905;
  ins_year(w, sample, false);
  EXPECT_EQ(w.yr(sample), 21);
}

// A core of the greatest span takes one ring more, its slot lying behind a store that is full.
TEST(RingEditsOfTheLongest, ACoreOf12000YearsTakesOneRingMoreAndThenNone) {
  TestStore store;
  Workspace& w = store.w;
  store.screen.presses = 1;
  store.add_tree("ONE", -9'999, noise(12'000, 1));
  store.add_tree("TWO", -9'999, noise(12'000, 2));
  store.add_tree("THREE", -9'999, noise(12, 3));
  const int shift = max_pool - (w.ad(4) - 1);
  w.ad(3) += shift;
  w.ad(4) += shift;
  w.tr1 = 1;
  w.tr2 = 2;
  set_chs(w);
  const double last_of_reference = w.x(w.ad(5) + 11'999);
  w.insdel = 1'000;
  ins_year(w, 4, false);
  EXPECT_EQ(w.yr(4), 12'001);
  EXPECT_EQ(w.ly(4), 2'001);
  EXPECT_EQ(w.x(w.ad(5) + 11'999), last_of_reference);
  EXPECT_TRUE(w.tr1ok);
  ins_year(w, 4, false);
  EXPECT_EQ(w.yr(4), 12'001);
  EXPECT_EQ(store.messages.str(), "Chronology age limit MXY reached\n");
}

TEST_F(RingEdits, OfAnOrdinaryEntryOnlyTheNextStartFollows) {
  const int two = w.ad(2), three = w.ad(3), slot = w.ad(sample);
  w.insdel = 1905;
  ins_year(w, 1, false);
  EXPECT_EQ(w.ad(2), two + 1);
  EXPECT_EQ(w.ad(3), three);
  EXPECT_EQ(w.ad(sample), slot);
  EXPECT_EQ(x(2, 0), 200);                                 // moved with its start
  EXPECT_EQ(w.x(three), 219);                              // moved away from its start
  EXPECT_EQ(w.x(w.ad(reference) + w.yr(reference)), 219);  // the move runs to the end of the reference's slot
}

// The year before the first: the place is the last one of the entry before, and the formula is applied as it
// stands.
TEST_F(RingEdits, TheYearIsNotCheckedAgainstTheEntry) {
  w.insdel = 1899;
  ins_year(w, 2, false);
  EXPECT_FALSE(w.xok(w.ad(1) + 19));  // the last ring of ONE is now the new one
  EXPECT_EQ(x(2, 0), 119);            // and what it was is the first ring of TWO
  EXPECT_EQ(x(2, 1), 200);
}

TEST_F(RingEdits, BeforeTheFirstEntryNothingIsWritten) {
  w.insdel = 1899;
  ins_year(w, 1, false);
  EXPECT_EQ(w.x(1), 0);  // what came in from before the pool
  EXPECT_FALSE(w.xok(1));
  EXPECT_EQ(w.x(2), 100);
}

TEST_F(RingEdits, FarBeyondThePoolNothingHappensToIt) {
  const auto before = all_x();
  w.insdel = 2'000'000'000;
  del_year(w, sample);
  EXPECT_EQ(w.rgx, 0);
  EXPECT_FALSE(w.rgxok);
  EXPECT_EQ(all_x(), before);
}

TEST_F(RingEdits, ASlotOfACoreIsComputedAnewAndMarked) {
  w.x(w.ad(sample) + 10) = 7.25;
  w.insdel = 1905;
  del_year(w, sample);
  EXPECT_TRUE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
  EXPECT_EQ(w.ax(w.ad(sample) + 9), 7.25);  // ax made from x again
}

// Strictly below nc: the last core's slot is neither computed nor marked.
TEST_F(RingEdits, TheLastCoresSlotIsNeitherComputedNorMarked) {
  w.tr2 = 3;
  w.ax(w.ad(reference) + 10) = 0.5;
  w.insdel = 1905;
  del_year(w, reference);
  EXPECT_FALSE(w.tr2ok);
  EXPECT_EQ(w.ax(w.ad(reference) + 9), 0.5);
}

TEST_F(RingEdits, CarefullyTheLastCoresSlotIsComputedAnewAndMarked) {
  w.careful.set(Mend::last_core, true);
  w.tr2 = 3;
  w.ax(w.ad(reference) + 10) = 0.5;
  w.x(w.ad(reference) + 10) = 7.25;
  w.insdel = 1905;
  del_year(w, reference);
  EXPECT_TRUE(w.tr2ok);
  EXPECT_EQ(w.ax(w.ad(reference) + 9), 7.25);
}

}  // namespace
}  // namespace vorn
