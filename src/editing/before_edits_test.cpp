#include "editing/before_edits.h"

#include <gtest/gtest.h>

#include "support/test_store.h"

namespace vorn {
namespace {

// Three trees of 20 years; the second is at work.
struct BeforeEditsTest : ::testing::Test {
  BeforeEditsTest() {
    for (const double from : {1.0, 2.0, 3.0}) {
      std::vector<double> widths;
      for (int k = 0; k < 20; ++k) widths.push_back(from + k / 100.0);
      store.add_tree("TREE", 1900, widths, "+-");
    }
    w.chc(1) = 2;
    w.chs = 1;
  }
  std::vector<double> widths(int i) const { return {w.widths(i).begin(), w.widths(i).end()}; }

  TestStore store;
  Workspace& w = store.w;
};

TEST_F(BeforeEditsTest, PutsRingsAndYearsBackWhateverTheLength) {
  const auto first = widths(1), second = widths(2), third = widths(3);
  for (const int length : {17, 20, 26}) {
    const BeforeEdits before(w);
    resize_entry(w, 2, length);
    w.fy(2) = 1950;
    w.ly(2) = 1950 + length - 1;
    std::ranges::fill(w.widths(2), 9.0);
    std::ranges::fill(w.presence(2), false);
    EXPECT_EQ(widths(3), third);
    before.restore(w);
    EXPECT_EQ(widths(1), first);
    EXPECT_EQ(widths(2), second);
    EXPECT_EQ(widths(3), third);
    EXPECT_EQ(w.fy(2), 1900);
    EXPECT_EQ(w.ly(2), 1919);
    EXPECT_TRUE(w.presence(2)[0]);
    EXPECT_FALSE(w.presence(2)[1]);
    EXPECT_EQ(w.ad(3), w.ad(2) + 20);
    EXPECT_TRUE(w.derived_stale);
  }
}

TEST_F(BeforeEditsTest, WhatIsAsItWasIsLeftAlone) {
  const BeforeEdits before(w);
  w.derived_stale = false;
  before.restore(w);
  EXPECT_FALSE(w.derived_stale);
}

// The pool was filled meanwhile, which the editor does not do.
TEST_F(BeforeEditsTest, IsRefusedWhereThePoolHasNoRoom) {
  const BeforeEdits before(w);
  resize_entry(w, 2, 10);
  w.yr(3) = max_pool - w.ad(3) + 1;
  store.screen.presses = 1;
  before.restore(w);
  EXPECT_EQ(w.yr(2), 10);
  EXPECT_EQ(store.messages.str(), "Would be too many rings\n");
}

}  // namespace
}  // namespace vorn
