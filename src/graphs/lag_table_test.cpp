#include "graphs/lag_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "statistics/lag_table.h"
#include "support/graph_page.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Columns are 110 wide from x = 300 on, lag L at 300 + 110 (L + 10); rows 44 high from y = 350 on. Values
// stand 17 right of their column's left edge and 25 above the bottom of their row.
class LagTableDisplay : public testing::Test {
 protected:
  LagTableDisplay() {
    bench.add_tree("TREE1", 1800, noise(200, 1));
    bench.add_tree("TREE2", 1700, noise(300, 2));
    bench.set_pair(1800, noise(200, 1), 1700, noise(300, 2));
    w.chc(1) = 1;
    w.chc(2) = 2;
    w.cyrs.fill(-9999);
  }
  // Puts in row k: its years and one value for all lags.
  void row(int k, int first, int last, double value) {
    w.cyrs(1, k) = first;
    w.cyrs(2, k) = last;
    for (double& cell : w.ctab.column(k, 21)) cell = value;
  }
  void cell(int k, int lag, double value) { w.ctab(lag + 11, k) = value; }
  void draw() {
    w.plot.erase();
    cor_plot(w);
  }
  // The values that row k shows, in the order of the lags.
  Lines values(int k) const {
    Lines found;
    for (const Mark& mark : bench.page().marks()) {
      const bool value = mark.kind == Mark::Kind::text && mark.colour == colour::ink;
      if (value && mark.points[0].y == 350 + 44 * k - 25) found.push_back(mark.writing);
    }
    return found;
  }
  // The lag whose cell in row k is shaded as the best one.
  int shaded_lag(int k) const {
    int lag = -99, cells = 0;
    for (const Mark& mark : bench.page().marks()) {
      if (mark.kind != Mark::Kind::fill || mark.colour != colour::light_red ||
          mark.points[0].y != 350 + 44 * (k - 1))
        continue;
      lag = static_cast<int>(mark.points[0].x - 300) / 110 - 10;
      ++cells;
    }
    EXPECT_EQ(cells, 1);
    return lag;
  }

  GraphBench bench;
  Workspace& w = bench.w;
};

TEST_F(LagTableDisplay, IsAGridWithARowASegmentAndAColumnALag) {
  row(1, 1850, 1899, 0.1);
  row(2, 1875, 1924, 0.2);
  cell(1, -3, 0.45);
  draw();
  const Lines fills = bench.marks("fill 7");
  EXPECT_EQ(fills, (Lines{"fill 7 1400 350 1510 350 1510 438 1400 438"}));  // lag 0, both rows
  EXPECT_EQ(bench.marks("fill 12").front(), "fill 12 1070 350 1180 350 1180 394 1070 394");  // -3, row 1
  const Lines lines = bench.marks("line 2");
  ASSERT_EQ(lines.size(), 2u + 21 + 2);
  EXPECT_EQ(lines[0], "line 2 300 350 2610 350");
  EXPECT_EQ(lines[1], "line 2 300 350 300 438");
  EXPECT_EQ(lines[2], "line 2 410 350 410 438");
  EXPECT_EQ(lines[22], "line 2 2610 350 2610 438");
  EXPECT_EQ(lines[23], "line 2 300 394 2610 394");
  EXPECT_EQ(lines[24], "line 2 300 438 2610 438");
  EXPECT_EQ(bench.marks("text 9"),
            (Lines{"text 9 20 120 369 \" 1850 1899\"", "text 9 20 120 413 \" 1875 1924\""}));
  EXPECT_TRUE(bench.has("text 15 20 1087 369 \"+.45\""));
  EXPECT_TRUE(bench.has("text 15 20 317 413 \"+.20\""));
}

TEST_F(LagTableDisplay, LabelsItsColumnsFromMinus10ToPlus10) {
  row(1, 1850, 1899, 0.1);
  draw();
  const Lines labels = bench.marks("text 12 20");
  ASSERT_EQ(labels.size(), 21u);
  EXPECT_EQ(labels[0], "text 12 20 310 325 \"-10\"");
  EXPECT_EQ(labels[1], "text 12 20 420 325 \" -9\"");
  EXPECT_EQ(labels[10], "text 12 20 1410 325 \"  0\"");
  EXPECT_EQ(labels[11], "text 12 20 1520 325 \" +1\"");
  EXPECT_EQ(labels[20], "text 12 20 2510 325 \"+10\"");
}

TEST_F(LagTableDisplay, ARowThatIsBestAtLag0HasItsCellOnTopOfTheShadedColumn) {
  row(1, 1850, 1899, 0.1);
  cell(1, 0, 0.7);
  draw();
  const std::string marks = marks_of(bench.page());
  const auto column = marks.find("fill 7 1400 350 1510 350 1510 394 1400 394\n"),
             best = marks.find("fill 12 1400 350 1510 350 1510 394 1400 394\n");
  EXPECT_EQ(column, 0u);
  EXPECT_NE(best, std::string::npos);
  EXPECT_LT(column, best);
  EXPECT_LT(best, marks.find("line 2"));  // the grid and the values lie above both
}

TEST_F(LagTableDisplay, ShadesTheFirstOfEqualValues) {
  row(1, 1850, 1899, 0.1);
  cell(1, -4, 0.5);
  cell(1, 6, 0.5);
  row(2, 1875, 1924, 0.0);
  draw();
  EXPECT_EQ(shaded_lag(1), -4);
  EXPECT_EQ(shaded_lag(2), -10);
}

TEST_F(LagTableDisplay, ACellOfTooFewPairsWinsAndIsShownAsNought) {
  row(1, 1850, 1899, 0.1);
  cell(1, 2, 0.99);
  cell(1, 5, 2.0);
  draw();
  EXPECT_EQ(shaded_lag(1), 5);
  EXPECT_EQ(values(1)[15], "+.00");
}

TEST_F(LagTableDisplay, CarefullyCellsWithTooFewPairsAreEmptyAndWinNothing) {
  w.careful.set(Mend::short_samples, true);
  row(1, 1850, 1899, 0.1);
  cell(1, -3, 0.45);
  cell(1, 2, 2.0);
  row(2, 1850, 1899, 2.0);
  draw();
  EXPECT_EQ(shaded_lag(1), -3);
  EXPECT_EQ(values(1).size(), 20u);
  EXPECT_EQ(values(2), Lines{});
  EXPECT_EQ(bench.marks("fill 12").size(), 1u);
}

TEST_F(LagTableDisplay, ShowsValuesAsTheirSignAndTheirLastThreeCharacters) {
  row(1, 1850, 1899, 0.0);
  for (const auto& [lag, value] : {std::pair{-10, 0.45},
                                   {-9, -0.45},
                                   {-8, -0.05},
                                   {-7, 0.004},
                                   {-6, -0.004},
                                   {-5, 1.0},
                                   {-4, -1.0},
                                   {-3, std::nan("")}}) {
    cell(1, lag, value);
  }
  draw();
  const Lines shown = values(1);
  ASSERT_EQ(shown.size(), 21u);
  EXPECT_EQ(Lines(shown.begin(), shown.begin() + 8),
            (Lines{"+.45", "-.45", "-.05", "+.00", "-.00", "+.00", "-.00", " NaN"}));
}

// The chosen series has the years 1800 to 1999.
TEST_F(LagTableDisplay, ShowsTheLagsThatTheChosenSeriesCanReach) {
  row(1, 1804, 1853, 0.1);  // from -4 on
  row(2, 1790, 1839, 0.1);  // reached from +10 on: lag 0 is shown all the same
  row(3, 1947, 1996, 0.1);  // up to +3
  row(4, 1960, 2009, 0.1);  // reached up to -10: the same
  row(5, 1850, 1899, 0.1);  // all
  draw();
  EXPECT_EQ(values(1).size(), 15u);
  EXPECT_TRUE(bench.has("text 15 20 977 369 \"+.10\""));  // -4
  EXPECT_EQ(values(2).size(), 11u);
  EXPECT_TRUE(bench.has("text 15 20 1417 413 \"+.10\""));  // 0
  EXPECT_EQ(values(3).size(), 14u);
  EXPECT_TRUE(bench.has("text 15 20 1747 457 \"+.10\""));  // +3
  EXPECT_EQ(values(4).size(), 11u);
  EXPECT_TRUE(bench.has("text 15 20 1417 501 \"+.10\""));  // 0
  EXPECT_EQ(values(5).size(), 21u);
}

TEST_F(LagTableDisplay, TheChosenSeriesReachesAsFarAsItIsStoredWhereverItsCopyWasShifted) {
  row(1, 1804, 1853, 0.1);
  w.fy(w.nd + 1) = 1700;
  w.ly(w.nd + 1) = 1899;
  draw();
  EXPECT_EQ(values(1).size(), 15u);
}

TEST_F(LagTableDisplay, AChosenChronologyDoesSoToo) {
  w.nc = 1;
  w.nfil = 1;
  w.chc(1) = 2;  // 1700 to 1999
  row(1, 1704, 1753, 0.1);
  draw();
  EXPECT_EQ(values(1).size(), 15u);
}

TEST_F(LagTableDisplay, WithoutASegmentIsItsEmptyHead) {
  draw();
  EXPECT_EQ(bench.marks("fill 7"), (Lines{"fill 7 1400 350 1510 350 1510 350 1400 350"}));
  EXPECT_TRUE(bench.marks("fill 12").empty());
  EXPECT_EQ(bench.marks("line 2").size(), 23u);
  EXPECT_EQ(bench.marks("text 12").size(), 21u);
  EXPECT_TRUE(bench.marks("text 9").empty());
}

TEST_F(LagTableDisplay, HasRoomFor34Segments) {
  for (int k = 1; k <= 34; ++k) row(k, 1800 + k, 1849 + k, 0.01 * k);
  draw();
  EXPECT_EQ(bench.marks("text 9").size(), 34u);
  EXPECT_EQ(bench.marks("text 9")[33], "text 9 20 120 1821 \" 1834 1883\"");
  EXPECT_EQ(bench.marks("fill 7"), (Lines{"fill 7 1400 350 1510 350 1510 1846 1400 1846"}));
}

TEST_F(LagTableDisplay, CountsHalfTheYearsThatAreNotMinus9999) {
  row(1, -9999, -9950, 0.1);  // of this segment one year counts, and half a segment is none
  draw();
  EXPECT_TRUE(bench.marks("text 9").empty());
  row(2, -9974, -9925, 0.1);
  draw();
  EXPECT_EQ(bench.marks("text 9").size(), 1u);
}

TEST_F(LagTableDisplay, YearsBeforeYear0FillTheirFiveColumns) {
  w.fy(1) = -1300;
  w.ly(1) = -1000;
  row(1, -1234, -1185, 0.1);
  draw();
  EXPECT_EQ(bench.marks("text 9"), (Lines{"text 9 20 120 369 \"-1234-1185\""}));
}

TEST_F(LagTableDisplay, LeavesAHeightOf25Behind) {
  row(1, 1850, 1899, 0.1);
  draw();
  w.plot.messag("after", 10, 20);
  EXPECT_TRUE(bench.has("text 15 25 10 20 \"after\""));
}

TEST_F(LagTableDisplay, ShowsWhatTheTableOfTheWorkingPairHolds) {
  cor_tab(w, w, w, 1800);
  draw();
  // Segments of 50 years every 25 from 1800 to 1999, the reference's 1700 to 1999 around them.
  EXPECT_EQ(bench.marks("text 9").size(), 7u);
  EXPECT_EQ(values(1).size(), 11u);
  EXPECT_EQ(values(3).size(), 21u);
  EXPECT_EQ(values(7).size(), 11u);
}

TEST_F(LagTableDisplay, AChoiceThatNamesNoEntryGivesWayToTheWorkingCopy) {
  row(1, 1804, 1853, 0.1);
  for (const int chosen : {0, -1, std::numeric_limits<int>::min(), 3, 5, 20'000}) {
    w.chc(1) = chosen;
    draw();
    EXPECT_EQ(values(1).size(), 15u) << chosen;
  }
}

TEST_F(LagTableDisplay, YearsAtTheEndsOfTheirRangeDoNotOverflow) {
  constexpr int last = std::numeric_limits<int>::max(), first = std::numeric_limits<int>::min();
  for (const auto& [fy, ly] : {std::pair{first, last}, {last, first}, {first, first}, {last, last}}) {
    w.fy(1) = fy;
    w.ly(1) = ly;
    row(1, first, last, 0.1);
    row(2, last, first, 0.1);
    draw();
    EXPECT_GE(values(1).size(), 1u);
    EXPECT_LE(values(2).size(), 21u);
    EXPECT_EQ(bench.marks("text 9").front(), "text 9 20 120 369 \"**********\"");
  }
}

// --- The controls.

TEST_F(LagTableDisplay, ControlsShowSegmentOverlapAndStartYear) {
  w.seg = 50;
  w.olap = 25;
  cor_but(w, 1740);
  EXPECT_EQ(w.b(button::correlation_segment).label.trimmed(), "  50");
  EXPECT_EQ(w.b(button::correlation_overlap).label.trimmed(), "  25");
  EXPECT_EQ(w.b(button::correlation_start).label.trimmed(), "  1740");
  EXPECT_EQ(bench.marks("fill 14").size(), 7u);
  EXPECT_TRUE(bench.marks("fill 7").empty());
  EXPECT_TRUE(bench.has("text 15 25 2685 372 \"  50\""));
  EXPECT_TRUE(bench.has("text 15 25 2685 492 \"  25\""));
  EXPECT_TRUE(bench.has("text 15 25 2685 612 \"  1740\""));
  EXPECT_TRUE(bench.has("text 15 25 2685 1122 \"  Exit\""));
  EXPECT_TRUE(bench.has("text 15 25 2685 852 \"Correlate\""));
  EXPECT_TRUE(bench.has("text 15 25 2685 912 \"Best Fit\""));
  EXPECT_TRUE(bench.has("text 15 25 2685 972 \" Choose\""));
  EXPECT_TRUE(bench.has("text 15 25 2710 55 \"Correlation\""));
  EXPECT_TRUE(bench.has("text 9 25 2710 117 \"TREE1\""));
  EXPECT_TRUE(bench.has("text 12 25 2710 192 \"TREE2\""));
  EXPECT_TRUE(bench.has("text 15 25 2680 330 \"Segment\""));
  EXPECT_TRUE(bench.has("text 15 25 2680 450 \"Overlap\""));
  EXPECT_TRUE(bench.has("text 15 25 2680 570 \"Start Year\""));
}

TEST_F(LagTableDisplay, ControlsAreYellowWhicheverViewIsChosen) {
  w.b(button::best_fit).lit = false;
  w.b(button::correlation_table).lit = false;
  cor_but(w, 1740);
  EXPECT_EQ(bench.marks("fill 14").size(), 7u);
  EXPECT_TRUE(bench.marks("fill 7").empty());
}

TEST_F(LagTableDisplay, ControlsShowNumbersTooLongForTheirFieldAsAsterisks) {
  w.seg = 12'000;
  w.olap = -1'000;
  cor_but(w, -100'000);
  EXPECT_EQ(w.b(button::correlation_segment).label.trimmed(), "****");
  EXPECT_EQ(w.b(button::correlation_overlap).label.trimmed(), "****");
  EXPECT_EQ(w.b(button::correlation_start).label.trimmed(), "******");
}

}  // namespace
}  // namespace vorn
