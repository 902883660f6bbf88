#include "plot/plot.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <sstream>

#include "support/queue_screen.h"

namespace vorn {
namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

struct PlotCalls : testing::Test {
  QueueScreen screen;
  Plot plot{screen};
  std::string page() const {
    std::ostringstream out;
    plot.page().write_text(out);
    return out.str();
  }
  // An axis system of 100 x 100 units from (0, 100) up, 10 units to one of its values; what it draws is not
  // kept.
  void small_axes() {
    plot.axspos(0, 100);
    plot.axslen(100, 100);
    plot.graf(0, 10, 0, 1, 0, 10, 0, 1);
    plot.erase();
  }
};

TEST_F(PlotCalls, AreasAreFilledOrDrawnAsTheirBorder) {
  plot.setclr(colour::yellow);
  plot.rectangle(840, 540, 1000, 585);
  plot.setclr(colour::light_red);
  plot.shdpat(0);
  plot.areaf(std::array{1, 5, 3}, std::array{2, 2, 9});
  plot.shdpat(16);
  plot.rectangle(0, 0, 1, 1);
  EXPECT_EQ(page(),
            "fill 14 840 540 1000 540 1000 585 840 585\n"
            "outline 12 1 2 5 2 3 9\n"
            "fill 12 0 0 1 0 1 1 0 1\n");
}

TEST_F(PlotCalls, TextsLoseTheBlanksAtTheirEndAndBlankOnesMakeNoMark) {
  plot.messag("  Exit     ", 2685, 1122);
  plot.messag("      ", 10, 10);
  plot.messag("", 10, 10);
  EXPECT_EQ(page(), "text 15 25 2685 1122 \"  Exit\"\n");
}

TEST_F(PlotCalls, HeightAndFontBelongToTheTextsThatFollow) {
  plot.height(30);
  plot.winfnt("Times New Roman");
  plot.messag("one", 0, 0);
  plot.winfnt("Arial");
  plot.simplx();
  plot.height(25);
  plot.messag("two", 0, 0);
  const auto& marks = plot.page().marks();
  ASSERT_EQ(marks.size(), 2u);
  EXPECT_EQ(marks[0].font, Font::times);
  EXPECT_EQ(marks[0].height, 30);
  EXPECT_EQ(marks[1].font, Font::arial);
  EXPECT_EQ(marks[1].height, 25);
}

TEST_F(PlotCalls, EraseEmptiesThePageAndKeepsTheColour) {
  plot.setclr(colour::light_blue);
  plot.line(0, 0, 10, 10);
  plot.erase();
  EXPECT_EQ(page(), "");
  plot.line(1, 2, 3, 4);
  EXPECT_EQ(page(), "line 9 1 2 3 4\n");
}

TEST_F(PlotCalls, WaitingShowsThePageFirst) {
  plot.messag("Quit", 0, 0);
  screen.click(2300, 50);
  const Event event = plot.csrpos();
  EXPECT_EQ(event.x, 2300);
  EXPECT_EQ(event.y, 50);
  EXPECT_EQ(event.code, Event::click);
  ASSERT_EQ(screen.shown.size(), 1u);
  EXPECT_EQ(screen.shown[0].marks().size(), 1u);
  EXPECT_EQ(screen.times_forgotten, 0);
}

TEST_F(PlotCalls, AFreshWaitForgetsWhatCameBefore) {
  screen.key('x');
  EXPECT_EQ(plot.csrpos_fresh().code, 'x');
  EXPECT_EQ(screen.times_forgotten, 1);
  EXPECT_EQ(screen.shown.size(), 1u);
}

TEST_F(PlotCalls, AClosedScreenEndsTheProgram) {
  try {
    plot.csrpos();
    FAIL() << "went on without a screen";
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.reason(), EndReason::closed);
  }
}

TEST_F(PlotCalls, CurvesRunInTheValuesOfTheAxes) {
  small_axes();
  plot.setclr(colour::light_blue);
  plot.curve(std::array{1.0, 2.0, 3.5}, std::array{0.0, 10.0, 5.0});
  plot.rline(0, 0, 10, 10);
  EXPECT_EQ(page(), "line 9 10 100 20 0 35 50\nline 9 0 100 100 0\n");
}

TEST_F(PlotCalls, NothingOfACurveLiesOutsideTheBox) {
  small_axes();
  plot.curve(std::array{2.0, 4.0, 6.0}, std::array{5.0, 15.0, 5.0});
  plot.rline(-10, 5, 20, 5);
  plot.rline(11, 0, 12, 10);
  EXPECT_EQ(page(), "line 15 20 50 30 0\nline 15 50 0 60 50\nline 15 0 50 100 50\n");
}

TEST_F(PlotCalls, APointThatIsNotFiniteBreaksTheCurve) {
  small_axes();
  plot.curve(std::array{1.0, 2.0, 3.0, 4.0, 5.0}, std::array{1.0, 2.0, nan, 4.0, 5.0});
  plot.rline(1, inf, 2, 3);
  plot.curve(std::array{1.0, 2.0}, std::array{-inf, nan});
  EXPECT_EQ(page(), "line 15 10 90 20 80\nline 15 40 60 50 50\n");
}

TEST_F(PlotCalls, ValuesOfAnySizeAreDrawnWithinTheBox) {
  small_axes();
  const double huge = std::numeric_limits<double>::max();
  plot.curve(std::array{1.0, 2.0, 3.0}, std::array{5.0, huge, -huge});
  EXPECT_EQ(page(), "line 15 10 50 10 0\nline 15 25 0 25 100\n");
}

TEST_F(PlotCalls, RectanglesInValuesAreClippedToo) {
  small_axes();
  plot.rlrec(2, 10, 1, 1);    // the upper strip, one wide
  plot.rlrec(-0.5, 5, 1, 1);  // half of it left of the box
  plot.rlrec(10, 5, 1, 1);    // beside the box
  plot.rlrec(nan, 5, 1, 1);   // nowhere, as are the next three
  plot.rlrec(2, nan, 1, 1);
  plot.rlrec(2, 5, inf, 1);
  plot.rlrec(2, 5, 1, nan);
  plot.rlrec(2, 12, 1, 2);  // above the box, just touching it
  EXPECT_EQ(page(), "fill 15 20 0 30 0 30 10 20 10\nfill 15 0 50 5 50 5 60 0 60\n");
}

TEST_F(PlotCalls, OutsideAnAxisSystemNothingIsDrawnInIt) {
  small_axes();
  plot.endgrf();
  plot.curve(std::array{1.0, 2.0}, std::array{1.0, 2.0});
  plot.rline(0, 0, 1, 1);
  plot.rlrec(0, 1, 1, 1);
  plot.grid(1, 1);
  EXPECT_EQ(page(), "");
}

TEST_F(PlotCalls, AxesThatCannotBeDrawnDrawNothing) {
  const auto draw = [&](double xa, double xe, double first, double step) {
    plot.graf(xa, xe, first, step, 0, 1, 0, 1);
    plot.grid(1, 1);
    plot.rline(0, 0, 1, 1);
    plot.endgrf();
  };
  draw(1, 1, 0, 1);
  draw(2, 1, 0, 1);
  draw(0, 1, 0, 0);
  draw(0, 1, 0, -1);
  draw(nan, 1, 0, 1);
  draw(0, inf, 0, 1);
  draw(0, 1, nan, 1);
  draw(0, 1, 0, nan);
  draw(-std::numeric_limits<double>::max(), std::numeric_limits<double>::max(), 0, 1);
  plot.graf(0, 1, 0, 1, 1, 0, 0, 1);  // values that run the wrong way
  plot.grid(1, 1);
  EXPECT_EQ(page(), "");
}

using PlotMistakes = PlotCalls;
TEST_F(PlotMistakes, StopTheProgramLoudly) {
  EXPECT_DEATH(plot.setclr(Colour{16}), "violated");
  EXPECT_DEATH(plot.height(0), "violated");
  EXPECT_DEATH(plot.areaf(std::array{1, 2, 3}, std::array{1, 2}), "violated");
  EXPECT_DEATH(plot.ticks(1, 'Z'), "violated");
}

}  // namespace
}  // namespace vorn
