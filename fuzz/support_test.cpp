// What the fuzz targets stand on: inputs cut in parts, a workspace made fresh, a user made of bytes.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "event_player.h"
#include "fresh_workspace.h"
#include "fuzz_folder.h"
#include "small_store.h"
#include "target.h"
#include "toolkit/buttons.h"

namespace vorn::fuzz {
namespace {

using Parts = std::vector<std::string_view>;

TEST(FuzzInput, IsCutAtLinesOfTwoPercentSigns) {
  EXPECT_EQ(parts_of(""), Parts{""});
  EXPECT_EQ(parts_of("a\nb"), Parts{"a\nb"});
  EXPECT_EQ(parts_of("a\n%%\nb\n"), (Parts{"a\n", "b\n"}));
  EXPECT_EQ(parts_of("%%\nb\n"), (Parts{"", "b\n"}));
  EXPECT_EQ(parts_of("a\n%%\n%%\nc"), (Parts{"a\n", "", "c"}));
  EXPECT_EQ(parts_of("a%%\nb %%"), Parts{"a%%\nb %%"});
}

TEST(FuzzInput, GivesBytesAndThenZeros) {
  Bytes bytes("\xFFto\nend");
  EXPECT_EQ(bytes.byte(), 255);
  EXPECT_EQ(bytes.until('\n'), "to");
  EXPECT_EQ(bytes.text(2), "en");
  EXPECT_EQ(bytes.text(5), "d");
  EXPECT_TRUE(bytes.empty());
  EXPECT_EQ(bytes.byte(), 0);
}

TEST(FuzzFolder, NoNameLeadsOutOfIt) {
  EXPECT_EQ(kept_inside("/etc/x"), "|etc|x");
  EXPECT_EQ(kept_inside("../../x"), "..|..|x");
  EXPECT_EQ(kept_inside("d/x d/../y"), "d/x d/..|y");
}

// One workspace serves all tests: a process has one.
class Fresh : public ::testing::Test {
 protected:
  static FreshWorkspace& workspace() {
    static const FuzzFolder folder(mixed_store());
    static FreshWorkspace fresh(start_program);
    return fresh;
  }
};

TEST_F(Fresh, NothingIsLeftOfWhatWasDone) {
  ConfirmingScreen screen;
  Workspace& w = workspace().start(screen);
  ASSERT_EQ(w.nc, 4);
  const double width = w.x(1);
  w.nc = 7;
  w.x(1) = -1;
  w.x(w.x.size()) = 8;
  w.crn(max_years, max_files) = 9;
  w.b(button::quit).label = "Stay";
  w.plot.line(1, 2, 3, 4);

  Workspace& again = workspace().start(screen);
  EXPECT_EQ(&again, &w);
  EXPECT_EQ(again.nc, 4);
  EXPECT_EQ(again.x(1), width);
  EXPECT_EQ(again.x(again.x.size()), 0);
  EXPECT_EQ(again.crn(max_years, max_files), 0);
  EXPECT_EQ(again.b(button::quit).label.trimmed(), "Quit");
  EXPECT_TRUE(again.plot.page().marks().empty());
}

TEST_F(Fresh, HasTheFilesLoaded) {
  ConfirmingScreen screen;
  Workspace& w = workspace().start(screen);
  EXPECT_EQ(w.nfil, 4);
  EXPECT_EQ(w.nraw, 3);
  EXPECT_EQ(w.rftype(1), Layout::tucson_raw);
  EXPECT_EQ(w.rftype(2), Layout::heidelberg);
  EXPECT_EQ(w.rftype(3), Layout::compact);
  EXPECT_EQ(w.rftype(4), Layout::tucson_index);
  for (int f = 1; f <= 4; ++f) EXPECT_GE(w.cyr(f), 60) << f;
}

using FreshDeath = Fresh;

// The address sanitizer knows where each table ends, though the tables follow each other.
TEST_F(FreshDeath, NothingMayTouchWhatLiesBehindATable) {
#ifndef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "built without the address sanitizer";
#endif
  ConfirmingScreen screen;
  Workspace& w = workspace().start(screen);
  const volatile double* const end = w.wk1.range(1, max_years).data() + max_years;
  EXPECT_DEATH(EXPECT_EQ(*end, 0), "AddressSanitizer");
}

// What a user of `bytes` does at the start menu, up to the closing of the window.
std::vector<Event> events_of(Workspace& w, EventPlayer& user) {
  std::vector<Event> all;
  user.begin(w);
  try {
    for (;;) all.push_back(user.next_event());
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(static_cast<int>(end.reason()), static_cast<int>(EndReason::closed));
  }
  return all;
}

class UserOfBytes : public Fresh {
 protected:
  std::vector<int> codes(std::string_view bytes) {
    std::vector<int> all;
    for (const Event& event : events(bytes)) all.push_back(event.code);
    return all;
  }
  std::vector<Event> events(std::string_view bytes) {
    EventPlayer user(bytes, {});
    return events_of(workspace().start(user), user);
  }
};

TEST_F(UserOfBytes, PressesButtons) {
  ConfirmingScreen screen;
  const Button quit = workspace().start(screen).b(button::quit);
  const auto pressed = events(std::string{static_cast<char>(button::quit)});
  ASSERT_EQ(pressed.size(), 1u);
  EXPECT_EQ(pressed[0].code, Event::click);
  EXPECT_EQ(pressed[0].x, (quit.x1 + quit.x2) / 2);
  EXPECT_EQ(pressed[0].y, (quit.y1 + quit.y2) / 2);
}

TEST_F(UserOfBytes, ClicksAnywhereAndAsksForHelp) {
  using namespace std::string_view_literals;
  const auto done = events("\x8D\x00\x00\xFF\x8E\xFF\x00"sv);
  ASSERT_EQ(done.size(), 2u);
  EXPECT_EQ(done[0].code, Event::click);
  EXPECT_EQ(done[0].x, 0);
  EXPECT_EQ(done[0].y, 2100);
  EXPECT_EQ(done[1].code, Event::help);
  EXPECT_EQ(done[1].x, 2970);
  EXPECT_EQ(done[1].y, 0);
}

TEST_F(UserOfBytes, TypesTextsAndNumbers) {
  EXPECT_EQ(codes("\x90\x02it"), (std::vector<int>{'i', 't', 13}));
  EXPECT_EQ(codes("\x95\x02it\x94"), (std::vector<int>{'i', 't', 8}));
  EXPECT_EQ(codes("\x93\xFE\xFF"), (std::vector<int>{'-', '2', 13}));
  EXPECT_EQ(codes("\x91\x92\x8F\x05\x8F\x41"), (std::vector<int>{13, 27, 'x', 'A'}));
}

}  // namespace
}  // namespace vorn::fuzz
