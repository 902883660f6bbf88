#include "loading/chronology_summary.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "support/test_store.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Two trees of three years, and the chronologies of two files.
struct TwoFiles : TestStore {
  TwoFiles() {
    add_tree("A", 1900, {1, 2, 3});
    add_tree("B", 1901, {4, 5, 6});
    set_chronology(1, "dir/first.rwl", 1900, {1.0, 3.0, 4.0, 6.0}, {1, 2, 2, 1});
    set_chronology(2, "second.crn", 1800, {1100, 1000, 900}, {3, 0, -1});
  }
};

TEST(ShowCrns, MakesEveryChronologyAnEntryBehindTheCores) {
  TwoFiles store;
  show_crns(store.w);
  const Workspace& w = store.w;
  EXPECT_EQ(w.nd, 4);
  EXPECT_EQ(w.nam(3), Name("first"));
  EXPECT_EQ(w.fy(3), 1900);
  EXPECT_EQ(w.ly(3), 1903);
  EXPECT_EQ(w.yr(3), 4);
  EXPECT_EQ(w.ad(3), 7);
  EXPECT_EQ(w.ax(7), 1.0);
  EXPECT_EQ(w.ax(10), 6.0);
  EXPECT_EQ(w.nam(4), Name("second"));
  EXPECT_EQ(w.fy(4), 1800);
  EXPECT_EQ(w.ly(4), 1802);
  EXPECT_EQ(w.ad(4), 11);
  EXPECT_EQ(w.ad(5), 14);
  EXPECT_EQ(w.ax(11), 1100.0);
}

TEST(ShowCrns, MarksChronologyYearsPresentWhereTheDepthIsAboveZero) {
  TwoFiles store;
  show_crns(store.w);
  for (int p = 7; p <= 11; ++p) EXPECT_TRUE(store.w.xok(p)) << p;
  EXPECT_FALSE(store.w.xok(12));
  EXPECT_FALSE(store.w.xok(13));
}

TEST(ShowCrns, WritesTheSummaryLines) {
  TestStore store;
  const auto a = noise(60, 1);
  store.add_tree("A", 1900, a);
  store.add_tree("B", 1900, a);
  store.set_chronology(1, "a.rwl", 1900, a, depths(60, 2));
  show_crns(store.w);
  const auto& text = store.w.mtext;
  EXPECT_EQ(text(MessageNumber{1}).trimmed(), "Years  1900 to  1959");
  EXPECT_EQ(text(MessageNumber{3}).trimmed(), "Number of cores      2");
  EXPECT_EQ(text(MessageNumber{4}).trimmed(), "Mean tree to CRN  1.00");
  EXPECT_EQ(text(MessageNumber{5}).trimmed(), "RBar tree to tree   1.00");
  EXPECT_TRUE(text(MessageNumber{2}).blank());
}

TEST(ShowCrns, WritesMeansOfNothingAsNotANumber) {
  TwoFiles store;
  show_crns(store.w);
  EXPECT_EQ(store.w.mtext(MessageNumber{4}).trimmed(), "Mean tree to CRN   NaN");
  EXPECT_EQ(store.w.mtext(MessageNumber{5}).trimmed(), "RBar tree to tree    NaN");
}

TEST(ShowCrns, NamesTheCurrentFileOnItsButtonAndChoosesItsNumber) {
  TwoFiles store;
  store.w.cf = 2;
  store.w.chs = 7;
  show_crns(store.w);
  EXPECT_EQ(store.w.b(button::current_chronology).label.trimmed(), "second.crn");
  EXPECT_EQ(store.w.chc(1), 2);
  EXPECT_EQ(store.w.chs, 1);
  EXPECT_EQ(store.w.mtext(MessageNumber{1}).trimmed(), "Years  1800 to  1802");
}

TEST(ShowCrns, IsFalseWithOneRawFileAndTrueWithTwo) {
  TwoFiles store;
  store.w.nraw = 1;
  store.w.b(button::move_core).on = true;
  EXPECT_FALSE(show_crns(store.w));
  EXPECT_FALSE(store.w.b(button::move_core).on);
  store.w.nraw = 2;
  EXPECT_TRUE(show_crns(store.w));
  EXPECT_TRUE(store.w.b(button::move_core).on);
}

TEST(ShowCrns, RebuildsTheEntriesFromScratch) {
  TwoFiles store;
  show_crns(store.w);
  show_crns(store.w);
  EXPECT_EQ(store.w.nd, 4);
  EXPECT_EQ(store.w.ad(5), 14);
}

TEST(ShowCrns, WithoutFilesLeavesTheCoresAlone) {
  TestStore store;
  store.w.cnam(1) = "gone.rwl";
  store.w.nd = 55;
  EXPECT_FALSE(show_crns(store.w));
  EXPECT_EQ(store.w.nd, 0);
  EXPECT_EQ(store.w.mtext(MessageNumber{1}).trimmed(), "Years     0 to     0");
  EXPECT_EQ(store.w.b(button::current_chronology).label.trimmed(), "gone.rwl");
}

TEST(ShowCrns, GivesAChronologyThatWouldPassThePoolsEndNoYearsAndSaysSo) {
  TwoFiles store;
  store.w.ad(3) = 1200000 - 3;  // room for four values: the first file's fit, the second's do not
  store.screen.presses = 1;
  show_crns(store.w);
  const Workspace& w = store.w;
  EXPECT_EQ(w.yr(3), 4);
  EXPECT_EQ(w.ad(4), 1200001);
  EXPECT_EQ(w.ax(1200000), 6.0);
  EXPECT_EQ(w.nd, 4);
  EXPECT_EQ(w.yr(4), 0);
  EXPECT_EQ(w.fy(4), 1800);
  EXPECT_EQ(w.ly(4), 1799);
  EXPECT_EQ(w.ad(5), 1200001);
  EXPECT_EQ(w.nam(4), Name("second"));
  EXPECT_NE(store.messages.str().find("Would be too many rings"), std::string::npos);
  EXPECT_EQ(store.screen.presses, 0);
}

TEST(RefreshCrns, SetsEntriesAndLinesAndLeavesTheSelectionAlone) {
  TwoFiles store;
  store.w.chc(1) = 5;
  store.w.chs = 2;
  store.w.derived_stale = true;
  refresh_crns(store.w);
  EXPECT_EQ(store.w.nd, 4);
  EXPECT_EQ(store.w.mtext(MessageNumber{3}).trimmed(), "Number of cores      2");
  EXPECT_EQ(store.w.chc(1), 5);
  EXPECT_EQ(store.w.chs, 2);
  EXPECT_FALSE(store.w.derived_stale);
}

}  // namespace
}  // namespace vorn
