#include "graphs/skeleton_graph.h"

#include <gtest/gtest.h>

#include <limits>

#include "graphs/series_graph.h"
#include "support/graph_page.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// 100 years across: year y stands in the middle of 212.5 + 25 (y - fs); length v at y = 875 - 850/24 v.
class SkeletonGraph : public testing::Test {
 protected:
  SkeletonGraph() {
    w.careful.set(Mend::skeleton, true);
    w.lineon = false;
    values_[10] = 0.2;
    values_[30] = 5;
  }
  void draw(std::string_view mask = {}) {
    w.plot.erase();
    bench.set_pair(1900, values_, 1900, values_, mask);
    plot_graph(w);
  }
  Lines letters(const std::string& colour) const { return bench.marks("text " + colour + " 20"); }

  std::vector<double> values_ = std::vector<double>(60, 1.0);
  GraphBench bench;
  Workspace& w = bench.w;
};

TEST_F(SkeletonGraph, BarsOfTheSampleGoUpAndThoseOfTheReferenceDown) {
  draw();
  EXPECT_EQ(bench.marks("fill 9"), (Lines{"fill 9 458.75 520.83 466.25 520.83 466.25 875 458.75 875"}));
  EXPECT_EQ(bench.marks("fill 12").back(), "fill 12 458.75 875 466.25 875 466.25 1229.17 458.75 1229.17");
  EXPECT_TRUE(bench.marks("line 9").empty());
  EXPECT_TRUE(bench.marks("line 12").empty());
}

TEST_F(SkeletonGraph, WideAndMissingRingsAreLettersOnTheSeriesOwnSide) {
  draw(std::string(20, '+') + "-");
  ASSERT_EQ(letters("9").size(), 2u);  // 1920 is missing, 1930 wide
  EXPECT_TRUE(letters("9")[0].ends_with(" 847 \"m\"")) << letters("9")[0];
  EXPECT_TRUE(letters("9")[1].ends_with(" 847 \"b\"")) << letters("9")[1];
  ASSERT_EQ(letters("12").size(), 1u);
  EXPECT_TRUE(letters("12")[0].ends_with(" 883 \"b\"")) << letters("12")[0];
}

TEST_F(SkeletonGraph, TheAxisIsOfLengths) {
  draw();
  EXPECT_FALSE(bench.marks("label 7 20 c 90").empty());
  EXPECT_TRUE(bench.has("label 7 20 r 0 180 510.83 \"10\""));
  EXPECT_TRUE(bench.has("label 7 20 r 0 180 1219.17 \"-10\""));
}

TEST_F(SkeletonGraph, LettersThatWouldLieOnOthersAreLeftOut) {
  bench.view(1900, 625);
  draw(std::string(60, '-'));
  EXPECT_EQ(letters("9").size(), 12u);  // 60 years are 240 page units, a letter takes 18: every fifth year
  EXPECT_TRUE(Desk::reads(bench.page(), "m: missing"));
  bench.view(1900, 626);
  draw(std::string(60, '-'));
  EXPECT_TRUE(letters("9").empty());
  EXPECT_FALSE(Desk::reads(bench.page(), "m: missing"));
}

TEST_F(SkeletonGraph, AWideDisplayHasLinesForBars) {
  bench.view(1900, 400);
  draw();
  EXPECT_EQ(bench.marks("line 9"), (Lines{"line 9 265.62 875 265.62 520.83"}));
}

// Only what is near is looked at: whatever the view, the marks of a year are the same.
TEST_F(SkeletonGraph, WhatIsScrolledOffStillCountsAsANeighbour) {
  bench.view(1910, 100);
  draw();
  EXPECT_EQ(bench.marks("fill 9"), (Lines{"fill 9 208.75 520.83 216.25 520.83 216.25 875 208.75 875"}));
}

TEST_F(SkeletonGraph, TheYearPickedAndTheYearMarksStandAtTheEdges) {
  w.b(button::upper_plot).on = true;
  draw();
  EXPECT_TRUE(bench.has("fill 9 200 450 225 450 225 591.67 200 591.67"));
  w.b(button::upper_plot).on = false;
  w.b(button::insertion_ok).on = true;
  w.insdel = 1905;
  w.ul = false;
  draw();
  EXPECT_TRUE(bench.has("fill 11 325 1158.33 350 1158.33 350 1300 325 1300"));
}

TEST_F(SkeletonGraph, YearsThatNoPoolHasAreDrawnAsMissingOrNotAtAll) {
  using Limits = std::numeric_limits<std::int32_t>;
  for (const auto& [first, last] :
       {std::pair{Limits::min(), Limits::max()}, {1900, 1800}, {Limits::max(), 5}}) {
    bench.set_pair(1900, values_, 1900, values_);
    w.fy(w.nd + 1) = first;
    w.ly(w.nd + 1) = last;
    for (const int years : {21, 12'000}) {
      bench.view(1900, years);
      plot_graph(w);
      w.fs = Limits::max() - years;
      w.ls = Limits::max() - 1;
      plot_graph(w);
    }
  }
}

TEST_F(SkeletonGraph, UsuallyTheCurvesStay) {
  w.careful = {};
  draw();
  EXPECT_FALSE(bench.marks("line 9").empty());
  EXPECT_TRUE(bench.marks("fill 9").empty());
}

}  // namespace
}  // namespace vorn
