#include "graphs/series_graph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "plot/font_metrics.h"
#include "support/graph_page.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// With 100 years across, year y has its point at x = 212.5 + 25 (y - fs); value v is at y = 875 - 850/6 v.
//
// Specimen: 0 and 2 in turn, n of them, n even. Their mean is 1 and their deviation sqrt(n / (n - 1)), so
// that they stand at -s and +s with s = sqrt((n - 1) / n): for n of 100 s = 0.994987, y = 1015.96 and 734.04;
// for n of 60 s = 0.991632, y = 1015.48 and 734.52.
std::vector<double> in_turn(int n) {
  std::vector<double> values;
  for (int i = 0; i < n; ++i) values.push_back(2 * (i % 2));
  return values;
}

std::vector<double> operator+(std::vector<double> a, const std::vector<double>& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

std::size_t points_of(const std::string& line_mark) {
  return static_cast<std::size_t>(std::count(line_mark.begin(), line_mark.end(), ' ') - 1) / 2;
}

class SeriesGraph : public testing::Test {
 protected:
  static constexpr int far_away = 5000;  // where the reference is out of sight and of the strip's reach

  void draw_sample(int first, const std::vector<double>& values, std::string_view mask = {}) {
    bench.set_pair(first, values, far_away, in_turn(30), mask);
    plot_graph(w);
  }
  Lines curve() const { return bench.marks("line 9"); }
  // The one line of the sample's curve; its beginning and its end are what tests look at.
  std::string whole_curve() const {
    EXPECT_EQ(curve().size(), 1u);
    return curve().empty() ? std::string() : curve().front();
  }

  GraphBench bench;
  Workspace& w = bench.w;
};

// --- The axes.

TEST_F(SeriesGraph, From1601TheFirstLabelIs1610AndFrom1600TooNeverTheFirstYear) {
  for (const auto& [first, mark] : {std::pair{1601, "label 7 20 c 0 437.5 1320 \"1610\""},
                                    {1600, "label 7 20 c 0 462.5 1320 \"1610\""},
                                    {1609, "label 7 20 c 0 237.5 1320 \"1610\""}}) {
    bench.view(first, 100);
    draw_sample(first, in_turn(100));
    EXPECT_EQ(bench.marks("label 7 20 c 0").front(), mark) << first;
  }
}

TEST_F(SeriesGraph, BeforeYear0TheFirstLabelComesOfATruncatingDivision) {
  for (const auto& [first, mark] : {std::pair{-1605, "label 7 20 c 0 587.5 1320 \"-1590\""},
                                    {-1600, "label 7 20 c 0 462.5 1320 \"-1590\""},
                                    {-5, "label 7 20 c 0 587.5 1320 \"10\""},
                                    {-10, "label 7 20 c 0 462.5 1320 \"0\""}}) {
    bench.view(first, 100);
    draw_sample(first, in_turn(100));
    EXPECT_EQ(bench.marks("label 7 20 c 0").front(), mark) << first;
  }
}

TEST_F(SeriesGraph, AxesAreABoxInGreyWithTicksLabelsAndTitles) {
  draw_sample(1900, in_turn(100));
  EXPECT_TRUE(bench.has("line 7 200 1300 2700 1300 2700 450 200 450 200 1300"));
  // A tick a year, inside, longer at the labels, on both sides.
  EXPECT_TRUE(bench.has("line 7 462.5 1300 462.5 1276"));  // 1910
  EXPECT_TRUE(bench.has("line 7 462.5 450 462.5 474"));
  EXPECT_TRUE(bench.has("line 7 487.5 1300 487.5 1288"));  // 1911
  EXPECT_TRUE(bench.has("line 7 200 875 224 875"));        // 0.0
  EXPECT_TRUE(bench.has("line 7 2700 875 2676 875"));
  // Years in tens as integers, standard deviations with a decimal.
  const Lines years = bench.marks("label 7 20 c 0");
  ASSERT_EQ(years.size(), 10u);  // 1910 to 1990 and the title
  EXPECT_EQ(years[8], "label 7 20 c 0 2462.5 1320 \"1990\"");
  EXPECT_EQ(years[9], "label 7 20 c 0 1450 1360 \"Years\"");
  EXPECT_EQ(bench.marks("label 7 20 r 0"),
            (Lines{"label 7 20 r 0 180 1290 \"-3.0\"", "label 7 20 r 0 180 1148.33 \"-2.0\"",
                   "label 7 20 r 0 180 1006.67 \"-1.0\"", "label 7 20 r 0 180 865 \"0.0\"",
                   "label 7 20 r 0 180 723.33 \"1.0\"", "label 7 20 r 0 180 581.67 \"2.0\"",
                   "label 7 20 r 0 180 440 \"3.0\""}));
  EXPECT_EQ(bench.marks("label 7 20 c 90"), (Lines{"label 7 20 c 90 90 875 \"S.Dev\""}));
  // A grid line at every label that is not at the border.
  EXPECT_TRUE(bench.has("line 7 462.5 1300 462.5 450"));
  EXPECT_FALSE(bench.has("line 7 487.5 1300 487.5 450"));
  EXPECT_TRUE(bench.has("line 7 200 875 2700 875"));
}

TEST_F(SeriesGraph, IsDrawnOnAnEmptyPageWithControlsFirstAndCurvesLast) {
  w.plot.messag("LEFT FROM BEFORE", 100, 100);
  bench.set_pair(1900, in_turn(100), 1900, in_turn(100));
  plot_graph(w);
  EXPECT_FALSE(Desk::reads(bench.page(), "LEFT FROM BEFORE"));
  const std::string marks = marks_of(bench.page());
  const auto exit = marks.find("\"Exit Menu\""), strip = marks.find("\"Correlation to\""),
             axes = marks.find("line 7"), sample = marks.find("\nline 9"),
             reference = marks.find("\nline 12");
  EXPECT_LT(exit, strip);
  EXPECT_LT(strip, axes);
  EXPECT_LT(axes, sample);
  EXPECT_LT(sample, reference);
  EXPECT_NE(reference, std::string::npos);
}

TEST_F(SeriesGraph, LeavesInkAHeightOf25AndNoAxesBehind) {
  draw_sample(1900, in_turn(100));
  w.plot.messag("after", 10, 20);
  EXPECT_TRUE(bench.has("text 15 25 10 20 \"after\""));
  const std::size_t before = bench.page().marks().size();
  w.plot.rline(1910, 0, 1920, 1);
  EXPECT_EQ(bench.page().marks().size(), before);
}

// --- The year picked, and the marks for picking one.

TEST_F(SeriesGraph, TheYearOfAnEditThatWaitsIsMarkedInTheStripOfItsSeries) {
  w.insdel = 1904;
  for (const ButtonNumber waits : {button::insertion_ok, button::deletion_ok}) {
    w.b(waits).on = true;
    w.ul = true;
    draw_sample(1900, in_turn(100));
    EXPECT_EQ(bench.marks("fill 11"), (Lines{"fill 11 300 450 325 450 325 591.67 300 591.67"}));
    w.ul = false;
    draw_sample(1900, in_turn(100));
    EXPECT_EQ(bench.marks("fill 11"), (Lines{"fill 11 300 1158.33 325 1158.33 325 1300 300 1300"}));
    w.b(waits).on = false;
  }
  draw_sample(1900, in_turn(100));
  EXPECT_TRUE(bench.marks("fill 11").empty());
}

TEST_F(SeriesGraph, EverySecondYearIsMarkedInTheStripsThatCanBeClicked) {
  w.b(button::upper_plot).on = true;
  draw_sample(1900, in_turn(100));
  const Lines upper = bench.marks("fill 9");
  ASSERT_EQ(upper.size(), 50u);
  EXPECT_EQ(upper[0], "fill 9 200 450 225 450 225 591.67 200 591.67");  // 1900
  EXPECT_EQ(upper[1], "fill 9 250 450 275 450 275 591.67 250 591.67");  // 1902
  EXPECT_TRUE(bench.marks("fill 12").empty());

  w.b(button::upper_plot).on = false;
  w.b(button::lower_plot).on = true;
  draw_sample(1900, in_turn(100));
  EXPECT_TRUE(bench.marks("fill 9").empty());
  ASSERT_EQ(bench.marks("fill 12").size(), 50u);
  EXPECT_EQ(bench.marks("fill 12")[49], "fill 12 2650 1158.33 2675 1158.33 2675 1300 2650 1300");
}

TEST_F(SeriesGraph, TheYearPickedIsNotMarkedOutsideTheView) {
  w.b(button::insertion_ok).on = true;
  w.ul = true;
  w.insdel = 1899;
  draw_sample(1900, in_turn(100));
  EXPECT_TRUE(bench.marks("fill 11").empty());
}

// --- Standardising.

TEST_F(SeriesGraph, AHundredYearsAreStandardisedOverThemselves) {
  draw_sample(1900, in_turn(100));
  EXPECT_TRUE(whole_curve().starts_with("line 9 212.5 1015.96 237.5 734.04 262.5 1015.96 "));
  EXPECT_TRUE(whole_curve().ends_with(" 2662.5 1015.96 2687.5 734.04"));
}

TEST_F(SeriesGraph, FifteenYearsInViewAtTheStartAreStandardisedOverTheFirst100) {
  bench.view(1815, 100);
  draw_sample(1900, in_turn(100) + repeated(50, 70.0));
  EXPECT_EQ(points_of(whole_curve()), 15u);
  EXPECT_TRUE(whole_curve().starts_with("line 9 2337.5 1015.96 2362.5 734.04 "));
}

TEST_F(SeriesGraph, FifteenYearsInViewAtTheStartOfAShorterSeriesOverAllOfIt) {
  bench.view(1815, 100);
  draw_sample(1900, in_turn(60));
  EXPECT_TRUE(whole_curve().starts_with("line 9 2337.5 1015.48 2362.5 734.52 "));
}

TEST_F(SeriesGraph, FifteenYearsInViewAtTheEndAreStandardisedOverTheLast100) {
  bench.view(2035, 100);  // the series ends in 2049, its last 100 years begin in 1950
  draw_sample(1900, repeated(50, 70.0) + in_turn(100));
  EXPECT_EQ(points_of(whole_curve()), 15u);
  EXPECT_TRUE(whole_curve().starts_with("line 9 212.5 734.04 237.5 1015.96 "));  // 2035 is a 2
}

TEST_F(SeriesGraph, FifteenYearsInViewAtTheEndOfAShorterSeriesOverAllOfIt) {
  bench.view(1945, 100);
  draw_sample(1900, in_turn(60));
  EXPECT_TRUE(whole_curve().starts_with("line 9 212.5 734.52 237.5 1015.48 "));
}

// The mean over rings 1 to 16 is 1, s = sqrt(16/15) = 1.032796, 137.17 page units: the first ring takes part.
TEST_F(SeriesGraph, AViewThatBeginsAtTheSecondRingIsStandardisedOverTheYearsUpToItsEnd) {
  bench.view(1901, 100);
  draw_sample(1900, in_turn(16));
  EXPECT_EQ(points_of(whole_curve()), 15u);
  EXPECT_TRUE(whole_curve().starts_with("line 9 212.5 737.83 237.5 1012.17 "));
  w.ls = 1915;  // narrower than the years across the graph; the series goes on
  draw_sample(1900, in_turn(150));
  EXPECT_TRUE(whole_curve().find(" 737.83 ") != std::string::npos);
  EXPECT_TRUE(whole_curve().find(" 1012.17 ") != std::string::npos);
}

TEST_F(SeriesGraph, TwentyYearsInViewAreStandardisedOverThemselves) {
  bench.view(1820, 100);
  draw_sample(1900, in_turn(20) + repeated(80, 70.0));
  // s = sqrt(19/20) = 0.974679, 138.08 page units.
  EXPECT_TRUE(whole_curve().starts_with("line 9 2212.5 1013.08 2237.5 736.92 "));
}

TEST_F(SeriesGraph, AShortSeriesWhollyInViewIsStandardisedOverItself) {
  draw_sample(1950, in_turn(10));
  // s = sqrt(9/10) = 0.948683, 134.40 page units.
  EXPECT_TRUE(whole_curve().starts_with("line 9 1462.5 1009.4 1487.5 740.6 "));
}

TEST_F(SeriesGraph, MissingRingsDoNotCountForMeanAndDeviation) {
  auto values = in_turn(101);
  values[100] = 1e6;
  bench.view(1900, 101);
  draw_sample(1900, values, std::string(100, '+') + "-");
  EXPECT_TRUE(curve().front().ends_with(" 734.04"));
}

TEST_F(SeriesGraph, FewerThanThreeYearsInViewDrawNothing) {
  bench.view(1802, 100);
  draw_sample(1900, in_turn(50));  // 1900 and 1901
  EXPECT_TRUE(curve().empty());
  bench.view(1803, 100);
  draw_sample(1900, in_turn(50));
  EXPECT_EQ(points_of(whole_curve()), 3u);
}

// A file can give more rings than years.
TEST_F(SeriesGraph, RingsBehindTheLastYearAreNotDrawn) {
  bench.view(1900, 100);
  bench.set_pair(1900, in_turn(50), far_away, in_turn(30));
  w.ly(w.nd + 1) = 1904;
  plot_graph(w);
  EXPECT_EQ(points_of(whole_curve()), 5u);
}

TEST_F(SeriesGraph, ValuesThatAreAllAlikeHaveNoDeviationAndNoCurve) {
  draw_sample(1900, repeated(100, 1.0));
  EXPECT_TRUE(curve().empty());
}

TEST_F(SeriesGraph, OneRingLeftHasNoDeviationAndNoCurve) {
  draw_sample(1900, in_turn(4), "-+--");
  EXPECT_TRUE(curve().empty());
  draw_sample(1900, in_turn(4), "----");
  EXPECT_TRUE(curve().empty());
}

TEST_F(SeriesGraph, ValuesBeyondThreeDeviationsEndAtTheBox) {
  auto values = in_turn(100);
  values[50] = 1000;
  draw_sample(1900, values);
  // 1950 stands at 9.9 deviations: the curve leaves and enters again on its way.
  ASSERT_EQ(curve().size(), 2u);
  EXPECT_TRUE(curve()[0].ends_with(" 450"));
  for (const std::string& piece : curve()) EXPECT_EQ(piece.find(" -"), std::string::npos) << piece;
}

// --- Which values are drawn.

class SeriesGraphSource : public SeriesGraph {
 protected:
  // Three trees and two chronologies; widths rise in turn, what is analysed falls in turn.
  SeriesGraphSource() {
    w.nc = 3;
    w.nd = 5;
    w.ad(6) = 1;
    bench.set_pair(1900, in_turn(100), 1900, in_turn(100));
    for (int p = w.ad(6); p < w.ad(8); ++p) w.ax(p) = -w.x(p);
  }
  // Whether the curve of colour `c` is that of the widths, the first of which is low.
  bool draws_widths(int c) const {
    const Lines lines = bench.marks("line " + std::to_string(c));
    EXPECT_EQ(lines.size(), 1u);
    return lines.front().find(" 212.5 1015.96 ") != std::string::npos;
  }
};

TEST_F(SeriesGraphSource, IsTheIndicesWhileTheyAreOnShow) {
  w.indon = true;
  w.chc(1) = 1;
  w.chc(2) = 2;
  plot_graph(w);
  EXPECT_FALSE(draws_widths(9));
  EXPECT_FALSE(draws_widths(12));
}

TEST_F(SeriesGraphSource, IsTheWidthsOfTreesOtherwise) {
  w.indon = false;
  w.chc(1) = 1;
  w.chc(2) = 2;
  plot_graph(w);
  EXPECT_TRUE(draws_widths(9));
  EXPECT_TRUE(draws_widths(12));
}

TEST_F(SeriesGraphSource, OfAReferenceThatIsAChronologyIsAlwaysTheStatisticsValues) {
  w.chc(1) = 1;
  w.chc(2) = 4;
  for (const bool indices : {true, false}) {
    w.indon = indices;
    plot_graph(w);
    EXPECT_FALSE(draws_widths(12)) << indices;
  }
}

TEST_F(SeriesGraphSource, OfTheLastTreeIsTheStatisticsValuesToo) {
  w.indon = false;
  w.chc(1) = 3;  // = nc
  w.chc(2) = 2;
  plot_graph(w);
  EXPECT_FALSE(draws_widths(9));
}

// --- Missing rings.

TEST_F(SeriesGraph, ASeriesWithAMissingRingInTheMiddleIsDrawnAsTwoPieces) {
  draw_sample(1900, in_turn(7), "+++-+++");
  const Lines lines = curve();
  ASSERT_EQ(lines.size(), 4u);  // 1900-1901-1902, 1904-1905-1906
  EXPECT_TRUE(lines[0].starts_with("line 9 212.5 "));
  EXPECT_NE(lines[1].find(" 262.5 "), std::string::npos);
  EXPECT_TRUE(lines[2].starts_with("line 9 312.5 "));
  for (const std::string& line : lines) EXPECT_EQ(line.find(" 287.5 "), std::string::npos) << line;
}

TEST_F(SeriesGraph, ARingBetweenTwoMissingOnesIsNotDrawnAtAll) {
  draw_sample(1900, in_turn(7), "++-+-++");
  const Lines lines = curve();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].starts_with("line 9 212.5 "));
  EXPECT_TRUE(lines[1].starts_with("line 9 337.5 "));
}

TEST_F(SeriesGraph, EveryRingPresentMakesOneCurve) {
  draw_sample(1900, noise(100, 3));
  EXPECT_EQ(points_of(whole_curve()), 100u);
}

TEST_F(SeriesGraph, LineMissWorksThroughTheWorkVectors) {
  draw_sample(1900, in_turn(100));
  w.plot.graf(1899.5, 1999.5, 1910, 10, -3, 3, -3, 1);
  const std::vector<double> values = {1, 2, 3};
  const std::array<bool, 3> present = {true, true, true};
  line_miss(w, 1901, values, present);
  EXPECT_EQ(w.wk1(1), 1901);
  EXPECT_EQ(w.wk1(3), 1903);
  const std::size_t marks = bench.page().marks().size();
  line_miss(w, 1901, {}, {});
  EXPECT_EQ(bench.page().marks().size(), marks);
}

// --- Whatever files and clicks may bring.

TEST_F(SeriesGraph, EveryWidthFrom21To12000KeepsTheCurvesInTheBox) {
  for (const int years : {21, 22, 63, 100, 500, 2500, 12'000}) {
    bench.view(1900, years);
    w.b(button::upper_plot).on = w.b(button::lower_plot).on = true;
    bench.set_pair(1890, noise(12'000, 1), 1880, noise(12'000, 2));
    plot_graph(w);
    for (const Mark& mark : bench.page().marks()) {
      if (mark.kind != Mark::Kind::line ||
          (mark.colour != colour::light_blue && mark.colour != colour::light_red))
        continue;
      for (const PagePoint& point : mark.points) {
        EXPECT_TRUE((Box{200, 450, 2700, 1300}).contains(point)) << years;
      }
    }
    EXPECT_EQ(bench.marks("fill 9").size(), static_cast<std::size_t>(years + 1) / 2);
    EXPECT_GE(bench.marks("line 12").size(), 1u);
  }
}

TEST_F(SeriesGraph, ASeriesOfOneYearLeavesTheAxesAlone) {
  bench.set_pair(1950, {1.0}, 1950, {2.0});
  plot_graph(w);
  EXPECT_TRUE(curve().empty());
  EXPECT_TRUE(bench.has("line 7 200 1300 2700 1300 2700 450 200 450 200 1300"));
}

TEST_F(SeriesGraph, YearsBeforeYear0AreDrawnLikeAnyOther) {
  bench.view(-150, 100);
  draw_sample(-150, in_turn(100));
  EXPECT_TRUE(whole_curve().starts_with("line 9 212.5 1015.96 237.5 734.04 "));
}

TEST_F(SeriesGraph, ValuesThatAreNotFiniteBreakTheCurveOrLeaveNothing) {
  for (const double value : {std::nan(""), std::numeric_limits<double>::infinity(), 1e308, -1e308}) {
    auto values = in_turn(100);
    values[50] = value;
    values[51] = -value;
    draw_sample(1900, values);
    EXPECT_EQ(marks_of(bench.page()).find("nan"), std::string::npos);
    EXPECT_EQ(marks_of(bench.page()).find("inf"), std::string::npos);
  }
}

TEST_F(SeriesGraph, YearsAtTheEndsOfTheirRangeDoNotOverflow) {
  constexpr int last = std::numeric_limits<int>::max(), first = std::numeric_limits<int>::min();
  const auto date = [this](int slot, int year) { w.fy(w.nd + slot) = year, w.ly(w.nd + slot) = year + 99; };
  w.b(button::upper_plot).on = w.b(button::insertion_ok).on = true;
  bench.set_pair(0, in_turn(100), 0, in_turn(100));
  for (const int start : {last - 99, first}) {
    bench.view(start, 100);
    w.insdel = start;
    date(1, start);
    date(2, start);
    plot_graph(w);
    EXPECT_EQ(points_of(whole_curve()), 100u);
    EXPECT_EQ(bench.marks("fill 9").size(), 50u);
  }
  // The sample at the one end of the years, the view and the reference at the other.
  date(1, last - 99);
  plot_graph(w);
  EXPECT_TRUE(curve().empty());
  EXPECT_EQ(bench.marks("line 12").size(), 1u);
}

TEST_F(SeriesGraph, PlacesOutsideThePoolCountAsAbsent) {
  bench.set_pair(1900, in_turn(10), far_away, in_turn(30));
  const int sample = w.nd + 1;
  w.ad(sample) = -4;  // places -4 to 5: the last five rings are there
  for (int p = 1; p <= 5; ++p) w.x(p) = w.ax(p) = p % 2, w.xok(p) = true;
  plot_graph(w);
  EXPECT_EQ(curve().size(), 4u);
  w.ad(sample) = pool_places - 2;  // the first three
  for (int p = pool_places - 2; p <= pool_places; ++p) w.x(p) = w.ax(p) = p % 2, w.xok(p) = true;
  plot_graph(w);
  EXPECT_EQ(curve().size(), 2u);
}

TEST_F(SeriesGraph, AnyChoiceOfEntriesIsTaken) {
  w.indon = false;
  for (const int chosen : {std::numeric_limits<int>::min(), 0, 1, 20'000}) {
    w.chc(1) = w.chc(2) = chosen;
    draw_sample(1900, in_turn(100));
    EXPECT_EQ(points_of(whole_curve()), 100u);
  }
}

// --- Carefully.

TEST_F(SeriesGraph, CarefullyLabelsDoNotOverlap) {
  w.careful.set(Mend::thin_labels, true);
  for (const int years : {21, 60, 100, 400, 3'000, 12'000}) {
    w.plot.erase();
    bench.view(-6'000, years);
    draw_sample(-6'000, in_turn(100));
    double free_from = 0;
    for (const Mark& mark : w.plot.page().marks()) {
      if (mark.kind != Mark::Kind::label || mark.align != Align::centre || mark.angle != 0) continue;
      if (mark.writing == "Years") continue;
      const double half = text_width(mark.writing, mark.height, mark.font) / 2;
      EXPECT_GT(mark.points[0].x - half, free_from) << years << ": " << mark.writing;
      free_from = mark.points[0].x + half;
    }
    EXPECT_GT(free_from, 2'000) << years;
  }
}

TEST_F(SeriesGraph, CarefullyARoundFirstYearIsLabelled) {
  w.careful.set(Mend::thin_labels, true);
  draw_sample(1900, in_turn(100));
  EXPECT_EQ(bench.marks("label 7 20 c 0").front(), "label 7 20 c 0 212.5 1320 \"1900\"");
  w.plot.erase();
  bench.view(-1605, 100);
  draw_sample(-1605, in_turn(100));
  EXPECT_EQ(bench.marks("label 7 20 c 0").front(), "label 7 20 c 0 337.5 1320 \"-1600\"");
}

TEST_F(SeriesGraphSource, CarefullyOfTheLastTreeIsTheWidthsToo) {
  w.careful.set(Mend::last_core, true);
  w.indon = false;
  w.chc(1) = 3;  // = nc
  w.chc(2) = 4;
  plot_graph(w);
  EXPECT_TRUE(draws_widths(9));
  EXPECT_FALSE(draws_widths(12));  // a chronology has none
}

}  // namespace
}  // namespace vorn
