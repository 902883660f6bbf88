#include "toolkit/clicks.h"

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <utility>
#include <vector>

#include "plot/plot.h"
#include "records/disk_files.h"
#include "support/desk.h"
#include "support/scratch_folder.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

class Clicks : public ::testing::Test {
 protected:
  Clicks() { set_up_graph(w); }
  ButtonNumber hit(int x, int y, ButtonRange buttons = button::start) {
    desk_.screen.click(x, y);
    const ButtonNumber answer = mouse_click(w, buttons);
    EXPECT_EQ(w.mous, plain(answer));
    return answer;
  }
  static constexpr ButtonRange questions{button::insert_ring, button::leave_pick};
  Desk desk_;
  Workspace& w = desk_.w;
};

TEST_F(Clicks, AClickExactlyOnAnEdgeHits) {
  // "Quit" is 2240-2400, 30-75.
  for (const auto& [x, y] :
       {std::pair{2240, 50}, {2400, 50}, {2300, 30}, {2300, 75}, {2240, 30}, {2400, 75}}) {
    EXPECT_EQ(hit(x, y), button::quit) << x << ' ' << y;
  }
}

TEST_F(Clicks, AClickOneUnitBesideAnEdgeMisses) {
  for (const auto& [x, y] : {std::pair{2239, 50}, {2401, 50}, {2300, 29}, {2300, 76}}) {
    EXPECT_EQ(hit(x, y), button::none) << x << ' ' << y;
  }
}

TEST_F(Clicks, OfTwoButtonsWithOneRectangleTheOneThatIsOnIsHit) {
  w.b(button::deletion_ok).on = true;
  EXPECT_EQ(hit(1900, 120, questions), button::deletion_ok);
  w.b(button::deletion_ok).on = false;
  w.b(button::insertion_not).on = true;
  EXPECT_EQ(hit(1900, 120, questions), button::insertion_not);
}

TEST_F(Clicks, OfTwoButtonsThatAreBothOnTheLowerNumberIsHit) {
  w.b(button::insertion_not).on = w.b(button::deletion_ok).on = true;
  EXPECT_EQ(hit(1900, 120, questions), button::insertion_not);
}

TEST_F(Clicks, AClickOnAButtonThatIsOffHitsNothing) {
  w.b(button::quit).on = false;
  EXPECT_EQ(hit(2300, 50), button::none);
}

TEST_F(Clicks, AClickOnAButtonOutsideTheRangeHitsNothing) {
  EXPECT_EQ(hit(2300, 50, {button::start.first, button::current_chronology}), button::none);
  EXPECT_EQ(hit(2300, 50, {button::chronology_list, button::start.last}), button::none);
  EXPECT_EQ(hit(2300, 50, {button::quit, button::quit}), button::quit);
}

TEST_F(Clicks, AnEmptyRangeIsNeverHit) {
  w.mous = 7;
  EXPECT_EQ(hit(2300, 50, {button::quit, button::current_chronology}), button::none);
}

class AskingScreen : public QueueScreen {
 public:
  Event next_event() override {
    offered.push_back({plain(w->offered.first), plain(w->offered.last)});
    return QueueScreen::next_event();
  }
  const Workspace* w = nullptr;
  std::vector<std::pair<int, int>> offered;
};

// Of the messages that a missing help file leads to, nothing is.
TEST(ClicksOffered, WhatTheWaitTakesClicksOnIsToldWhileItLasts) {
  const ScratchFolder folder;
  AskingScreen screen;
  Plot plot(screen);
  DiskFiles disk;
  Workspace w(plot, disk);
  std::ostringstream log;
  w.log = &log;
  screen.w = &w;
  screen.help(1, 1);
  screen.key(Event::escape);
  screen.click(1, 1);
  mouse_click(w, button::correlation);
  const std::pair menu{46, 52}, message{1, 0};
  EXPECT_EQ(screen.offered, (std::vector{menu, message, menu}));
  EXPECT_EQ(w.offered.size(), 0);
}

TEST_F(Clicks, ThePlaceOfTheClickIsKept) {
  hit(123, 456);
  EXPECT_EQ(w.msx, 123);
  EXPECT_EQ(w.msy, 456);
}

TEST_F(Clicks, KeysDoNotEndTheWait) {
  desk_.screen.type("abc\r");
  desk_.screen.key(Event::escape);
  EXPECT_EQ(hit(2300, 50), button::quit);
  EXPECT_EQ(desk_.screen.events_left(), 0u);
}

TEST_F(Clicks, ARequestForHelpShowsItAndTheClickThatFollowsIsTestedAsUsual) {
  ScratchFolder folder;
  folder.write("Help.prn", "one\ntwo\n 1   0   0   1Click the buttons.\nA line more.\n");
  desk_.screen.help(900, 560);
  EXPECT_EQ(hit(2300, 50), button::quit);
  ASSERT_EQ(desk_.screen.shown.size(), 2u);
  EXPECT_FALSE(Desk::reads(desk_.screen.shown[0], "Click the buttons."));
  EXPECT_TRUE(Desk::reads(desk_.screen.shown[1], "Click the buttons."));
}

TEST_F(Clicks, SeveralRequestsForHelpAreServedInTurn) {
  ScratchFolder folder;
  folder.write("Help.prn", "one\ntwo\n 1   0   0   0Help\n");
  for (int k = 0; k < 3; ++k) desk_.screen.help(900, 560);
  EXPECT_EQ(hit(2300, 50), button::quit);
  EXPECT_EQ(desk_.screen.shown.size(), 4u);
}

TEST_F(Clicks, ClicksFarOutsideThePageHitNothing) {
  using Limits = std::numeric_limits<int>;
  for (const int x : {Limits::min(), -1, 2971, Limits::max()}) {
    for (const int y : {Limits::min(), -1, 2101, Limits::max()}) EXPECT_EQ(hit(x, y), button::none);
  }
}

TEST_F(Clicks, EscapeLeavesTheHelpWhereItIsMended) {
  const ScratchFolder folder;
  folder.write("Help.prn", "1\n2\n 0   0   0   0anything\n");
  w.careful.set(Mend::escape, true);
  desk_.screen.key(Event::escape);  // shows no help: a key like others
  desk_.screen.key(Event::help);
  desk_.screen.key(Event::escape);
  EXPECT_EQ(mouse_click(w, questions, button::leave_pick), button::leave_pick);
  EXPECT_EQ(mouse_click(w, questions, button::leave_pick), button::none);  // and only then that
  EXPECT_EQ(w.mous, 0);
  EXPECT_EQ(desk_.screen.events_left(), 0u);
}

TEST_F(Clicks, UsuallyEscapeLeavesTheHelpWhereItIs) {
  const ScratchFolder folder;
  folder.write("Help.prn", "1\n2\n 0   0   0   0anything\n");
  desk_.screen.key(Event::help);
  desk_.screen.key(Event::escape);
  EXPECT_EQ(hit(2300, 50), button::quit);
}

}  // namespace
}  // namespace vorn
