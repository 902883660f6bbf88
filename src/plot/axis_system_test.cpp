#include "plot/axis_system.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "plot/plot.h"
#include "support/queue_screen.h"

namespace vorn {
namespace {

// The axes of the series graph: from (200, 1300) 2500 across and 850 up, years by 25 units, values from -3
// to 3.
struct SeriesAxes : testing::Test {
  QueueScreen screen;
  Plot plot{screen};

  void draw(int first_year, int last_year) {
    plot.axspos(200, 1300);
    plot.axslen(2500, 850);
    plot.height(20);
    plot.setclr(colour::light_grey);
    plot.labdig(-1, 'X');
    plot.labdig(1, 'Y');
    plot.ticks(10, 'X');
    plot.ticks(1, 'Y');
    plot.name("Years", 'X');
    plot.name("S.Dev", 'Y');
    plot.graf(first_year - 0.5, last_year + 0.5, 10 * (first_year / 10 + 1), 10, -3, 3, -3, 1);
  }
  std::vector<std::string> lines(std::string_view kind) const {
    std::ostringstream out;
    plot.page().write_text(out);
    std::istringstream in(out.str());
    std::vector<std::string> result;
    for (std::string line; std::getline(in, line);) {
      if (line.starts_with(kind)) result.push_back(line);
    }
    return result;
  }
  bool has(const std::string& line) const {
    const auto all = lines("");
    return std::find(all.begin(), all.end(), line) != all.end();
  }
};

TEST_F(SeriesAxes, HaveABorderInTheCurrentColour) {
  draw(1601, 1700);
  EXPECT_EQ(lines("").front(), "line 7 200 1300 2700 1300 2700 450 200 450 200 1300");
}

TEST_F(SeriesAxes, TicksStandInsideOnAllFourSides) {
  draw(1601, 1700);
  // 1610 is labelled and lies 9.5 years from the left: x = 437.5; 1611 has a short tick.
  EXPECT_TRUE(has("line 7 437.5 1300 437.5 1276"));
  EXPECT_TRUE(has("line 7 437.5 450 437.5 474"));
  EXPECT_TRUE(has("line 7 462.5 1300 462.5 1288"));
  EXPECT_TRUE(has("line 7 462.5 450 462.5 462"));
  // 0 on the Y axis is at half height; there are no ticks between its labels.
  EXPECT_TRUE(has("line 7 200 875 224 875"));
  EXPECT_TRUE(has("line 7 2700 875 2676 875"));
  EXPECT_EQ(lines("line").size(), 1u + 2 * 100 + 2 * 7);
}

TEST_F(SeriesAxes, TicksBeforeTheFirstLabelAreDrawnToo) {
  draw(1600, 1699);
  // 1600 itself never has a label, so its tick is one of those between labels.
  EXPECT_TRUE(has("line 7 212.5 1300 212.5 1288"));
  EXPECT_TRUE(has("line 7 237.5 1300 237.5 1288"));
  EXPECT_EQ(lines("label").front(), "label 7 20 c 0 462.5 1320 \"1610\"");
}

TEST_F(SeriesAxes, YearsAreIntegersCentredBelowTheAxis) {
  draw(1601, 1700);
  EXPECT_EQ(lines("label 7 20 c 0").size(), 10u + 1);  // 1610 to 1700 and the title
  EXPECT_TRUE(has("label 7 20 c 0 437.5 1320 \"1610\""));
  EXPECT_TRUE(has("label 7 20 c 0 2687.5 1320 \"1700\""));
  EXPECT_TRUE(has("label 7 20 c 0 1450 1360 \"Years\""));
}

TEST_F(SeriesAxes, ValuesHaveOneDecimalAndStandLeftOfTheAxis) {
  draw(1601, 1700);
  EXPECT_TRUE(has("label 7 20 r 0 180 1290 \"-3.0\""));
  EXPECT_TRUE(has("label 7 20 r 0 180 865 \"0.0\""));
  EXPECT_TRUE(has("label 7 20 r 0 180 440 \"3.0\""));
  EXPECT_EQ(lines("label 7 20 r").size(), 7u);
}

TEST_F(SeriesAxes, TheTitleIsTurnedAndStandsLeftOfTheValues) {
  draw(1601, 1700);
  // "-3.0" is 3529/1409 of 20 units wide, 50.1; the title's letters end 20 units left of it and are 20 high.
  EXPECT_TRUE(has("label 7 20 c 90 90 875 \"S.Dev\""));
}

TEST_F(SeriesAxes, TheTitleHeightIsItsOwn) {
  plot.hname(30);
  draw(1601, 1700);
  EXPECT_TRUE(has("label 7 30 c 0 1450 1360 \"Years\""));
  EXPECT_TRUE(has("label 7 30 c 90 80 875 \"S.Dev\""));
}

TEST_F(SeriesAxes, YearsAroundZeroAreLabelledWithoutAMinusZero) {
  draw(-25, 74);  // the division that finds the first label truncates: -10, and -20 goes without
  EXPECT_EQ(lines("label 7 20 c 0").front(), "label 7 20 c 0 587.5 1320 \"-10\"");
  EXPECT_TRUE(has("label 7 20 c 0 837.5 1320 \"0\""));
}

TEST_F(SeriesAxes, ValuesThatRoundToZeroAreLabelledWithoutAMinusZero) {
  plot.labdig(1, 'Y');
  plot.graf(0, 1, 2, 1, -0.04, 0.04, -0.04, 0.02);
  const auto labels = lines("label");
  EXPECT_EQ(labels.size(), 5u);
  for (const std::string& label : labels) EXPECT_TRUE(label.ends_with(" \"0.0\"")) << label;
}

TEST_F(SeriesAxes, GridLinesStandAtTheLabelIntervals) {
  draw(1601, 1700);
  plot.erase();
  plot.grid(1, 1);
  EXPECT_EQ(lines("line").size(), 10u + 5);  // the border stands at -3 and 3 already
  EXPECT_TRUE(has("line 7 437.5 1300 437.5 450"));
  EXPECT_TRUE(has("line 7 200 875 2700 875"));
}

TEST_F(SeriesAxes, NoGridLineIsDrawnOnTheBorder) {
  plot.axspos(200, 1300);
  plot.axslen(1000, 1000);
  plot.graf(1600, 1602, 1600, 1, 0, 2, 0, 1);
  plot.erase();
  plot.grid(1, 1);
  EXPECT_EQ(lines("line"),
            (std::vector<std::string>{"line 15 700 1300 700 300", "line 15 200 800 1200 800"}));
}

TEST_F(SeriesAxes, TicksCanStandOutside) {
  plot.ticpos("LABELS", "X");
  draw(1601, 1700);
  EXPECT_TRUE(has("line 7 437.5 1300 437.5 1324"));
  EXPECT_TRUE(has("line 7 200 875 224 875"));
  plot.erase();
  plot.ticpos("REVERS", "X");
  plot.ticpos("LABELS", "Y");
  draw(1601, 1700);
  EXPECT_TRUE(has("line 7 437.5 1300 437.5 1276"));
  EXPECT_TRUE(has("line 7 200 875 176 875"));
  plot.erase();
  plot.ticpos("REVERS", "XY");
  draw(1601, 1700);
  EXPECT_TRUE(has("line 7 437.5 1300 437.5 1276"));
}

TEST_F(SeriesAxes, TwelveThousandYearsAreLabelledAsAsked) {
  draw(-5999, 6000);
  EXPECT_EQ(lines("label 7 20 c 0").size(), 1200u);  // -5980 to 6000 are 1199, and the title
}

TEST_F(SeriesAxes, AStepFarTooFineMarksNothing) {
  plot.graf(0, 1e9, 0, 1e-3, 0, 1, 0, 1e-12);
  EXPECT_EQ(lines("").size(), 1u);  // the border
  plot.grid(1, 1);
  EXPECT_EQ(lines("").size(), 1u);
}

TEST_F(SeriesAxes, NoLinesToAnIntervalAreNoGrid) {
  draw(1601, 1700);
  plot.erase();
  plot.grid(0, 0);
  EXPECT_EQ(lines("").size(), 0u);
}

TEST_F(SeriesAxes, LabelsFarFromTheAxisAreNotLookedFor) {
  plot.graf(0, 1, 1e300, 1, 0, 1, -1e300, 0.5);
  EXPECT_EQ(lines("").size(), 1u);
}

}  // namespace
}  // namespace vorn
