#include "toolkit/drawing.h"

#include <gtest/gtest.h>

#include "plot/plot.h"
#include "support/desk.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

class Drawing : public ::testing::Test {
 protected:
  Drawing() {
    set_up_graph(w);
    w.nd = 5;
    w.nam(6) = "SAMPLE6";
    w.nam(7) = "REFER7";
    w.tr1 = 2;
    w.tr2 = 4;
    w.nam(2) = "CORE2";
    w.nam(4) = "CORE4";
  }
  bool draws(const std::string& mark) const {
    return ("\n" + desk_.marks()).find("\n" + mark + "\n") != std::string::npos;
  }
  Desk desk_;
  Workspace& w = desk_.w;
};

TEST_F(Drawing, AButtonIsAFaceABorderAndItsLabel) {
  but_draw(w, button::quit);
  EXPECT_EQ(desk_.marks(),
            "fill 14 2240 30 2400 30 2400 75 2240 75\n"
            "outline 12 2240 30 2400 30 2400 75 2240 75\n"
            "text 15 25 2245 42 \"Quit\"\n");
}

TEST_F(Drawing, ATextThatIsNotBlankIsShownInsteadOfTheLabel) {
  but_draw(w, button::quit, "Leave now ");
  EXPECT_TRUE(draws("text 15 25 2245 42 \"Leave now\""));
  EXPECT_FALSE(desk_.reads("Quit"));
}

TEST_F(Drawing, ABlankTextShowsTheLabel) {
  but_draw(w, button::quit, "   ");
  EXPECT_TRUE(draws("text 15 25 2245 42 \"Quit\""));
}

TEST_F(Drawing, WithoutAColourALitButtonIsYellowAndAnUnlitOneGrey) {
  but_draw(w, button::raw_tucson);
  but_draw(w, button::raw_heidelberg);
  EXPECT_TRUE(draws("fill 14 1880 1440 2050 1440 2050 1500 1880 1500"));
  EXPECT_TRUE(draws("fill 7 2060 1440 2220 1440 2220 1500 2060 1500"));
}

TEST_F(Drawing, AColourGivenWinsOverTheState) {
  but_draw(w, button::raw_tucson, "", colour::light_cyan);
  EXPECT_TRUE(draws("fill 11 1880 1440 2050 1440 2050 1500 1880 1500"));
}

TEST_F(Drawing, AButtonThatIsOffIsNotDrawnNotEvenItsBorder) {
  but_draw(w, button::insertion_ok, "text", colour::red);
  EXPECT_EQ(desk_.marks(), "");
}

TEST_F(Drawing, AfterAButtonAreasAreSolidAndInk) {
  w.plot.shdpat(0);
  but_draw(w, button::quit);
  w.plot.rectangle(1, 2, 3, 4);
  EXPECT_TRUE(draws("fill 15 1 2 3 2 3 4 1 4"));
}

TEST_F(Drawing, AMessageLineStandsFifteenUnitsBelowItsUpperEdge) {
  w.plot.setclr(colour::green);
  mwrite(w, message::ar_range);
  EXPECT_EQ(desk_.marks(), "text 15 25 1040 795 \"(Range limit 1 to 11)\"\n");
}

TEST_F(Drawing, ABlankMessageLineMakesNoMark) {
  mwrite(w, message::chooser_blank);
  EXPECT_EQ(desk_.marks(), "");
}

TEST_F(Drawing, TheSeriesComparedAreNamedInTheColoursOfTheirCurves) {
  graph_mes(w, "Cores");
  EXPECT_EQ(desk_.marks(),
            "text 15 25 2710 55 \"Cores\"\n"
            "text 9 25 2710 117 \"CORE2\"\n"
            "text 12 25 2710 192 \"CORE4\"\n");
}

TEST_F(Drawing, ASeriesThatIsNotChosenHasABlankName) {
  w.tr1 = w.tr2 = 0;
  graph_mes(w, "Cores");
  EXPECT_EQ(desk_.marks(), "text 15 25 2710 55 \"Cores\"\n");
}

TEST_F(Drawing, ThePanelBeginsWithAnEmptyPage) {
  w.plot.messag("old", 1, 1);
  setupbuttons(w);
  EXPECT_FALSE(desk_.reads("old"));
}

TEST_F(Drawing, ThePanelHasEveryButtonThatIsOnButNoClickZone) {
  for (const ButtonNumber n : button::crossdating) w.b(n).on = true;
  setupbuttons(w);
  int faces = 0;
  for (const Mark& mark : w.plot.page().marks()) faces += mark.kind == Mark::Kind::fill;
  EXPECT_EQ(faces, 35 - 2);
  EXPECT_FALSE(draws("fill 14 200 450 2700 450 2700 591 200 591"));
  EXPECT_FALSE(draws("fill 14 200 1159 2700 1159 2700 1300 200 1300"));
}

TEST_F(Drawing, ThePanelNamesTheWorkingEntriesBetweenTheScrollButtons) {
  setupbuttons(w);
  EXPECT_TRUE(draws("text 9 25 580 117 \"SAMPLE6\""));
  EXPECT_TRUE(draws("text 12 25 580 192 \"REFER7\""));
  EXPECT_TRUE(draws("text 15 25 580 42 \"Scroll\""));
  EXPECT_TRUE(draws("text 15 25 1040 270 \"Line/Skeleton\""));
  EXPECT_TRUE(draws("text 15 25 280 270 \"Indices/Raw\""));
  EXPECT_TRUE(draws("text 15 25 1800 270 \"Display width\""));
  EXPECT_TRUE(draws("text 15 25 2710 55 \"Cores\""));
}

TEST_F(Drawing, WithoutScrollButtonsThereAreNoScrollCaptions) {
  for (const ButtonNumber n : ButtonRange{button::scroll_minus_50, button::reference_plus_50})
    w.b(n).on = false;
  setupbuttons(w);
  EXPECT_FALSE(desk_.reads("Scroll"));
  EXPECT_FALSE(desk_.reads("SAMPLE6"));
  EXPECT_FALSE(desk_.reads("Display width"));
  EXPECT_TRUE(desk_.reads("CORE2"));
}

TEST_F(Drawing, WhileAYearIsPickedThePanelSaysWhatFor) {
  setupbuttons(w);
  EXPECT_FALSE(desk_.reads("Select"));
  w.b(button::lower_plot).on = true;
  setupbuttons(w);
  EXPECT_TRUE(draws("text 15 25 800 270 \"Select year to Delete\""));
  w.ins = true;
  setupbuttons(w);
  EXPECT_TRUE(draws("text 15 25 800 270 \"Select Insert (before) year\""));
}

TEST_F(Drawing, WhileAnEditIsPendingThePanelSaysWhich) {
  w.mtext(message::pending_edit) = "Insert 1868";
  setupbuttons(w);
  EXPECT_FALSE(desk_.reads("Insert 1868"));
  w.b(button::deletion_ok).on = true;
  setupbuttons(w);
  EXPECT_TRUE(draws("text 15 25 1520 150 \"Insert 1868\""));
}

}  // namespace
}  // namespace vorn
