#include "editing/raw_editor.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>

#include "support/desk.h"
#include "support/scratch_folder.h"
#include "support/test_store.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Eight cores of 60 years, one after the other five years later, and a chronology behind them. Ring k of core
// i is i.0k mm wide, so that every ring can be told. The years shown begin in 1900, the first year of core 1.
struct RawEditor : ::testing::Test {
  RawEditor() {
    set_up_graph(w);
    for (int i = 1; i <= 9; ++i) put_entry(i, 1895 + 5 * i, 60);
    w.nam(9) = "oaks";
    w.nc = 8;
    w.nfil = 1;
    w.nd = 9;
    w.cf = 1;
    w.tr1 = 1;
    w.tr2 = 2;
    w.fs = 1900;
    pack_starts(w, 1);
    for (const int slot : {10, 11}) w.fy(slot) = w.ly(slot) + 1;
    choose({2});
  }
  void put_entry(int i, int first, int years) {
    w.nam(i) = "OAK" + std::to_string(i);
    w.fy(i) = first;
    w.ly(i) = first + years - 1;
    w.yr(i) = years;
    w.ad(i + 1) = w.ad(i) + years;
    for (int k = 0; k < years; ++k) {
      const int p = w.ad(i) + k;
      w.x(p) = i + k / 100.0;
      w.xok(p) = k % 7 != 3;
      w.ax(p) = 100 * i + k;
    }
  }
  void choose(std::initializer_list<int> cores) {
    w.chs = 0;
    for (const int core : cores) w.chc(++w.chs) = core;
  }

  void press(ButtonNumber n) {
    const Button& button = w.b(n);
    desk.screen.click((button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2);
  }
  // A click on row r of the table's column c, both as the clicks are read: 30 rows of the whole height.
  void click_row(int r, int column = 1) {
    desk.screen.click(200 + 250 * column + 60, 240 + (r * 1400 + 700) / 30);
  }
  void type(const std::string& keys) { desk.screen.type(keys); }
  void enter(const std::string& keys) {
    type(keys);
    desk.screen.key(Event::enter);
  }
  // Runs the editor until it is left by "Exit".
  void run() {
    press(button::editor_exit);
    edit_menu(w);
    EXPECT_EQ(desk.screen.events_left(), 0u);
  }
  // Makes one edit in core `e`: `mode` on, a click on `row`.
  void edit_once(int e, ButtonNumber mode, int row) {
    choose({e});
    press(mode);
    click_row(row);
    press(mode);
    run();
  }

  double x(int e, int year) { return w.x(w.ad(e) + year - w.fy(e)); }
  bool xok(int e, int year) { return w.xok(w.ad(e) + year - w.fy(e)); }
  std::string entry(int i) {
    std::string text = std::to_string(w.fy(i)) + " " + std::to_string(w.ly(i));
    for (int k = 0; k < w.yr(i); ++k) {
      const int p = w.ad(i) + k;
      text += " " + std::to_string(w.x(p)) + (w.xok(p) ? "+" : "-") + std::to_string(w.ax(p));
    }
    return text;
  }
  std::vector<std::string> all_entries() {
    std::vector<std::string> all;
    for (int i = 1; i <= w.nd; ++i) all.push_back(entry(i));
    return all;
  }
  void expect_only_changed(std::set<int> changed, const std::vector<std::string>& before) {
    for (int i = 1; i <= w.nd; ++i) {
      EXPECT_EQ(w.ad(i + 1), w.ad(i) + w.yr(i)) << i;
      if (changed.contains(i)) continue;
      EXPECT_EQ(entry(i), before[static_cast<std::size_t>(i - 1)]) << i;
    }
  }

  // The marks of page n, and whether one is `mark`.
  std::string page(std::size_t n) { return marks_of(desk.screen.shown.at(n)); }
  bool shows(std::size_t n, const std::string& mark) {
    return page(n).find(mark + "\n") != std::string::npos;
  }
  bool reads(std::size_t n, const std::string& text) { return Desk::reads(desk.screen.shown.at(n), text); }
  // The four corners of a rectangle, as fills and outlines have them.
  static std::string area(int x1, int y1, int x2, int y2) {
    char text[80];
    std::snprintf(text, sizeof text, "%d %d %d %d %d %d %d %d", x1, y1, x2, y1, x2, y2, x1, y2);
    return text;
  }
  std::string told() const { return desk.log.str(); }

  ScratchFolder folder;
  Desk desk;
  Workspace& w = desk.w;
};

// --- How it opens.

TEST_F(RawEditor, WithOneChosenSeriesThereIsNoAllTreesColumn) {
  edit_setup(w);
  EXPECT_EQ(w.edtree, 2);
  EXPECT_EQ(w.edcol, 1);
  EXPECT_EQ(w.edcols, 1);
  EXPECT_TRUE(w.b(button::editor_column_1).on);
  EXPECT_TRUE(w.b(button::editor_column_1).lit);
  EXPECT_EQ(w.b(button::editor_column_1).label.view(), "OAK2" + std::string(56, ' '));
  for (int c = 1; c <= 5; ++c) EXPECT_FALSE(w.b(button::editor_columns.at(c)).on) << c;
}

TEST_F(RawEditor, WithThreeThereAreFourColumns) {
  choose({4, 1, 3});
  edit_setup(w);
  EXPECT_EQ(w.edcols, 4);
  EXPECT_EQ(w.edtree, 4);
  const std::vector<std::string> labels = {"OAK4", "OAK1", "OAK3", "All Trees"};
  for (int c = 0; c < 4; ++c) {
    EXPECT_TRUE(w.b(button::editor_columns.at(c)).on);
    EXPECT_EQ(w.b(button::editor_columns.at(c)).lit, c == 0);
    EXPECT_EQ(w.b(button::editor_columns.at(c)).label.trimmed(), labels[static_cast<std::size_t>(c)]);
  }
  EXPECT_FALSE(w.b(button::editor_column_5).on);
  EXPECT_FALSE(w.b(button::editor_column_6).on);
}

TEST_F(RawEditor, WithFiveTheSixthColumnIsAllTrees) {
  choose({1, 2, 3, 4, 5});
  edit_setup(w);
  EXPECT_EQ(w.edcols, 6);
  EXPECT_EQ(w.b(button::editor_column_6).label.trimmed(), "All Trees");
}

TEST_F(RawEditor, WithSixThereIsNoColumnLeftForAllTrees) {
  choose({1, 2, 3, 4, 5, 6});
  edit_setup(w);
  EXPECT_EQ(w.edcols, 6);
  EXPECT_EQ(w.b(button::editor_column_6).label.trimmed(), "OAK6");
}

TEST_F(RawEditor, ShowsTheTableAndItsModesOnOpening) {
  for (const ButtonNumber n : {button::editor_table, button::editor_insert, button::editor_delete})
    w.b(n).on = false;
  edit_setup(w);
  for (const ButtonNumber n : {button::editor_table, button::editor_insert, button::editor_delete})
    EXPECT_TRUE(w.b(n).on);
}

// Core 2 has the years 1905 to 1964.
TEST_F(RawEditor, BeginsWithTheFirstYearShownInTheGraph) {
  w.fs = 1920;
  edit_setup(w);
  EXPECT_EQ(w.edfs, 1920);
}
TEST_F(RawEditor, BeginsNotBeforeTheSeries) {
  w.fs = 1800;
  edit_setup(w);
  EXPECT_EQ(w.edfs, 1905);
}
TEST_F(RawEditor, BeginsSoThatTheLastThirtyYearsFillTheTable) {
  w.fs = 1950;
  edit_setup(w);
  EXPECT_EQ(w.edfs, 1935);
}
TEST_F(RawEditor, ASeriesShorterThanThirtyYearsIsShownWholeAtTheTablesFoot) {
  put_entry(2, 1905, 12);
  edit_setup(w);
  EXPECT_EQ(w.edfs, 1916 - 29);
  edit_disp(w);
  EXPECT_TRUE(desk.reads(" 2000"));  // its first ring, 2.00 mm
  EXPECT_TRUE(desk.reads(" 2110"));
  EXPECT_NE(desk.marks().find("text 15 25 490 1582 \" 2110\""), std::string::npos);  // in the last row
}

// --- The table.

TEST_F(RawEditor, FillsTheSelectedColumnAndMovesItsButtonThere) {
  choose({1, 2, 3});
  edit_setup(w);
  w.edcol = 3;
  edit_disp(w);
  EXPECT_EQ(desk.marks().find("fill 7 " + area(950, 240, 1200, 1640) + "\n"), 0u);
  EXPECT_EQ(w.b(button::editor_table).x1, 950);
  EXPECT_EQ(w.b(button::editor_table).x2, 1200);
}

TEST_F(RawEditor, FillsNoColumnForAllTrees) {
  choose({1, 2, 3});
  edit_setup(w);
  w.edcol = 4;
  edit_disp(w);
  EXPECT_EQ(desk.marks().find("fill"), std::string::npos);
}

TEST_F(RawEditor, RulesOneColumnMoreThanItShowsSeries) {
  choose({1, 2, 3});
  edit_setup(w);
  edit_disp(w);
  const std::string marks = desk.marks();
  int up = 0, across = 0;
  for (int c = 0; c <= 5; ++c) {
    const std::string x = std::to_string(200 + 250 * c);
    up += marks.find("line 2 " + x + " 240 " + x + " 1620\n") != std::string::npos;
  }
  for (int r = 0; r <= 30; ++r) {
    const std::string y = std::to_string(240 + 46 * r);
    across += marks.find("line 2 200 " + y + " 1450 " + y + "\n") != std::string::npos;
  }
  EXPECT_EQ(up, 6);
  EXPECT_EQ(across, 31);
}

TEST_F(RawEditor, WritesYearsAndWidthsRowByRow) {
  choose({1, 2});
  edit_setup(w);  // from 1900 on; core 2 begins in 1905
  edit_disp(w);
  const std::string marks = desk.marks();
  EXPECT_NE(marks.find("text 15 25 210 210 \"Years\"\n"), std::string::npos);
  for (int r = 0; r < 30; ++r) {
    char year[80], one[80], two[80];
    std::snprintf(year, sizeof year, "text 15 25 210 %d \"%5d\"\n", 248 + 46 * r, 1900 + r);
    std::snprintf(one, sizeof one, "text 15 25 490 %d \"%5d\"\n", 248 + 46 * r, 1000 + 10 * r);
    std::snprintf(two, sizeof two, "text 15 25 740 %d \"%5d\"\n", 248 + 46 * r, 2000 + 10 * (r - 5));
    EXPECT_NE(marks.find(year), std::string::npos) << year;
    EXPECT_NE(marks.find(one), std::string::npos) << one;
    EXPECT_EQ(marks.find(two) != std::string::npos, r >= 5) << two;
  }
}

TEST_F(RawEditor, WidthsAreRoundedHalfAwayFromZero) {
  w.x(w.ad(2)) = 0.0625 + 0.0005 - 0.0625;  // half a thousandth
  w.x(w.ad(2) + 1) = -1.0005;
  edit_setup(w);
  edit_disp(w);
  EXPECT_NE(desk.marks().find("text 15 25 490 248 \"    1\"\n"), std::string::npos);
  EXPECT_NE(desk.marks().find("text 15 25 490 294 \"-1001\"\n"), std::string::npos);
}

TEST_F(RawEditor, EndsAtTheLastYearOfTheSeries) {
  choose({1, 2});
  edit_setup(w);
  w.edfs = 1950;  // core 1 ends in 1959
  edit_disp(w);
  EXPECT_NE(desk.marks().find("text 15 25 490 662 \" 1590\"\n"), std::string::npos);
  EXPECT_EQ(desk.marks().find("text 15 25 490 708"), std::string::npos);
}

// --- The screen.

TEST_F(RawEditor, DrawsItsShownButtonsItsTableAndItsCaptions) {
  run();
  EXPECT_TRUE(shows(0, "fill 14 " + area(40, 30, 160, 75)));
  EXPECT_TRUE(shows(0, "text 15 25 45 42 \"-150\""));
  EXPECT_TRUE(shows(0, "text 15 25 455 192 \"OAK2\""));
  EXPECT_TRUE(shows(0, "text 15 25 2745 102 \"Exit\""));
  EXPECT_TRUE(shows(0, "text 15 25 2400 105 \"Keep all changes\""));
  EXPECT_TRUE(shows(0, "text 15 25 2400 165 \"Lose all changes\""));
  EXPECT_TRUE(shows(0, "text 15 25 2400 435 \"Undo all edits\""));
  EXPECT_FALSE(reads(0, "Insert a year"));
  EXPECT_FALSE(reads(0, "Delete a year"));
  EXPECT_FALSE(shows(0, "outline 12 " + area(450, 240, 700, 1640)));  // the table is no button to be drawn
  EXPECT_TRUE(reads(0, "Years"));
}

TEST_F(RawEditor, InsertAndDeleteExcludeEachOtherAndSwitchOffAgain) {
  press(button::editor_insert);
  press(button::editor_delete);
  press(button::editor_delete);
  run();
  EXPECT_TRUE(reads(1, "Insert a year"));
  EXPECT_FALSE(reads(1, "Delete a year"));
  EXPECT_FALSE(reads(2, "Insert a year"));
  EXPECT_TRUE(reads(2, "Delete a year"));
  EXPECT_FALSE(reads(3, "Insert a year"));
  EXPECT_FALSE(reads(3, "Delete a year"));
}

TEST_F(RawEditor, ItsModeStaysFromOneCallToTheNext) {
  press(button::editor_insert);
  run();
  run();
  EXPECT_TRUE(reads(2, "Insert a year"));
}

TEST_F(RawEditor, AClickBesideEveryButtonChangesNothing) {
  const auto before = all_entries();
  desk.screen.click(1500, 1000);
  desk.screen.click(300, 300);  // on the years
  run();
  EXPECT_EQ(all_entries(), before);
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(RawEditor, SelectingAColumnTakesItsSeries) {
  choose({1, 2, 3});
  press(button::editor_column_3);
  run();
  EXPECT_EQ(w.edtree, 3);
  EXPECT_EQ(w.edcol, 3);
  for (const ButtonNumber n : button::editor_columns) EXPECT_EQ(w.b(n).lit, n == button::editor_column_3);
  EXPECT_TRUE(shows(1, "fill 7 " + area(950, 240, 1200, 1640)));
}

TEST_F(RawEditor, EveryColumnCanBeSelected) {
  choose({1, 2, 3, 4, 2});
  for (int c = 5; c >= 0; --c) {
    const ButtonNumber n = button::editor_columns.at(c);
    press(n);
    run();
    EXPECT_EQ(w.edcol, c + 1);
    EXPECT_TRUE(w.b(n).lit) << c;
    EXPECT_EQ(w.b(button::editor_table).on, c != 5) << c;  // the sixth is "All Trees"
    EXPECT_EQ(w.edtree, c == 5 ? w.chc(1) : w.chc(c + 1)) << c;
  }
}

TEST_F(RawEditor, AllTreesHidesTheTableInsertAndDelete) {
  choose({1, 2});
  const auto before = all_entries();
  press(button::editor_insert);
  press(button::editor_column_3);
  desk.screen.click(560, 300);  // where the table was; then where "Delete" was
  press(button::editor_delete);
  press(button::editor_column_2);
  run();
  EXPECT_EQ(all_entries(), before);
  for (std::size_t n : {2u, 3u, 4u}) {
    EXPECT_FALSE(reads(n, "Delete")) << n;
    EXPECT_FALSE(reads(n, "Insert a year")) << n;  // the mode is on, but not shown
  }
  EXPECT_TRUE(reads(5, "Delete"));
  EXPECT_TRUE(reads(5, "Insert a year"));
  EXPECT_EQ(w.edtree, 2);
}

TEST_F(RawEditor, LeavesAfterTenThousandClicks) {
  struct Idle : Screen {
    void show(const Page&) override {}
    Event next_event() override {
      ++waits;
      return {1500, 1000, Event::click};
    }
    int waits = 0;
  } idle;
  Plot plot(idle);
  // No buttons: nothing to draw but an empty table.
  const auto bare = std::make_unique<Workspace>(plot, desk.disk);
  bare->fy(1) = 1900;
  bare->ly(1) = 1899;
  bare->chc(1) = bare->chs = 1;
  edit_menu(*bare);
  EXPECT_EQ(idle.waits, 10'000);
}

// --- Scrolling and dating.

TEST_F(RawEditor, ScrollingWithASeriesSelectedRedatesItByTheStep) {
  const int steps[] = {-50, -10, -1, 1, 10, 50};
  for (int k = 0; k < 6; ++k) {
    const auto before = all_entries();
    const int first = w.fy(2), last = w.ly(2);
    const double width = w.x(w.ad(2) + 7);
    press(button::editor_row.at(k));
    run();
    EXPECT_EQ(w.fy(2), first + steps[k]) << k;
    EXPECT_EQ(w.ly(2), last + steps[k]) << k;
    EXPECT_EQ(w.x(w.ad(2) + 7), width);
    expect_only_changed({2}, before);
  }
  EXPECT_TRUE(w.derived_stale);
}

TEST_F(RawEditor, TheSeriesOfTheSelectedColumnIsTheOneRedated) {
  choose({1, 2, 3});
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_plus_10);
  run();
  EXPECT_EQ(w.fy(2), 1915);
  EXPECT_EQ(w.edfs, 1900);  // the view stays
  expect_only_changed({2}, before);
}

// Cores 1 to 3: 1900 to 1959, 1964, 1969.
TEST_F(RawEditor, ScrollingWithAllTreesSelectedMovesTheView) {
  choose({1, 2, 3});
  const auto before = all_entries();
  press(button::editor_column_4);
  press(button::editor_plus_10);
  run();
  EXPECT_EQ(w.edfs, 1910);
  EXPECT_EQ(all_entries(), before);
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(RawEditor, ScrollingNeverGoesAboveTheLatestLastYearMinus28) {
  choose({1, 2, 3});
  press(button::editor_column_4);
  press(button::editor_plus_50);
  press(button::editor_plus_50);
  run();
  EXPECT_EQ(w.edfs, 1969 - 28);
}

TEST_F(RawEditor, ScrollingNeverGoesBelowTheYearBeforeTheEarliestFirst) {
  choose({3, 1, 2});
  press(button::editor_column_4);
  press(button::editor_minus_50);
  press(button::editor_minus_50);
  run();
  EXPECT_EQ(w.edfs, 1899);
}

// The upper limit is applied last.
TEST_F(RawEditor, ScrollingShortSeriesStandsStillAtTheUpperLimit) {
  put_entry(1, 1900, 12);
  put_entry(2, 1905, 12);
  choose({1, 2});
  press(button::editor_column_3);
  press(button::editor_minus_50);
  run();
  EXPECT_EQ(w.edfs, 1916 - 28);
}

// --- Typing. Core 2 has the years 1905 to 1964, and the first row is 1905.

TEST_F(RawEditor, Typing250Stores250AndTheTableShowsAsterisks) {
  const auto before = all_entries();
  const bool was_present = xok(2, 1908);
  click_row(3);
  enter("250");
  run();
  EXPECT_EQ(x(2, 1908), 250);
  EXPECT_EQ(xok(2, 1908), was_present);
  EXPECT_FALSE(was_present);  // a missing ring stays one
  EXPECT_TRUE(shows(desk.screen.shown.size() - 1, "text 15 25 490 386 \"*****\""));
  EXPECT_TRUE(w.derived_stale);
  expect_only_changed({2}, before);
}

TEST_F(RawEditor, NumbersFrom0To9998AreStored) {
  click_row(0);
  enter("0");
  click_row(1);
  enter("9998");
  click_row(2);
  enter("9999");
  click_row(3);
  enter("-1");
  run();
  EXPECT_EQ(x(2, 1905), 0);
  EXPECT_EQ(x(2, 1906), 9998);
  EXPECT_EQ(x(2, 1907), 2.02);
  EXPECT_EQ(x(2, 1908), 2.03);
}

// Return alone is the number 0.
TEST_F(RawEditor, ReturnAloneStoresAWidthOf0) {
  click_row(1);
  enter("");
  run();
  EXPECT_EQ(x(2, 1906), 0);
}

TEST_F(RawEditor, AnAbandonedEntryStoresNothing) {
  const auto before = all_entries();
  click_row(1);
  type("12 ");
  click_row(1);
  type("123456");
  click_row(1);
  type("7");
  desk.screen.click(1000, 1000);  // anything but a digit ends the entry
  run();
  EXPECT_EQ(all_entries(), before);
  EXPECT_FALSE(w.derived_stale);
}

// scy is -140/3: row 3 begins at 240 + 140, row 29 at 240 + 1353 (1353.33 rounded), and each is 47 high.
TEST_F(RawEditor, TheInputFieldCoversTheClickedRow) {
  click_row(3);
  enter("1");
  click_row(29);
  enter("1");
  run();
  EXPECT_TRUE(shows(1, "fill 14 " + area(450, 380, 700, 427)));
  EXPECT_TRUE(shows(4, "fill 14 " + area(450, 1593, 700, 1640)));
  EXPECT_EQ(w.b(button::editor_table).y1, 240);
  EXPECT_EQ(w.b(button::editor_table).y2, 1640);
}

TEST_F(RawEditor, ARowIsAThirtiethOfTheTablesButtonNotOfItsLines) {
  // 1286 is in the row of 1927 as drawn (1284 to 1330) and in that of 1926 … 1928 as read: 30 x 1046 / 1400
  // = 22.4
  desk.screen.click(500, 1286);
  enter("5");
  run();
  EXPECT_EQ(x(2, 1927), 5);
}

// On the lower edge it is row 30: the year behind the last one shown.
TEST_F(RawEditor, TheLowerEdgeIsTheYearBehindTheLastOneShown) {
  desk.screen.click(500, 1640);
  enter("5");
  run();
  EXPECT_EQ(x(2, 1935), 5);
}

TEST_F(RawEditor, OutsideTheSeriesNothingIsAsked) {
  choose({3, 1});  // from 1910 on; core 1 begins in 1900 and ends in 1959
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_column_3);  // "All Trees", to scroll
  press(button::editor_plus_50);   // to 1939 (1969 - 28 would be 1941)
  press(button::editor_column_2);
  click_row(25, 2);
  run();
  EXPECT_EQ(w.edfs, 1941);
  EXPECT_EQ(all_entries(), before);
}

// --- Inserting.

TEST_F(RawEditor, InsertingPutsAMissingRingThereAndMovesLaterOnesOneYearOn) {
  const auto before = all_entries();
  edit_once(2, button::editor_insert, 10);
  EXPECT_EQ(w.yr(2), 61);
  EXPECT_EQ(w.fy(2), 1905);
  EXPECT_EQ(w.ly(2), 1965);
  EXPECT_EQ(x(2, 1914), 2.09);
  EXPECT_FALSE(xok(2, 1915));
  EXPECT_NEAR(x(2, 1915), (2.10 + 2.11 + 2.12 + 2.13 + 2.14 + 2.15) / 6, 1e-12);
  EXPECT_EQ(x(2, 1916), 2.10);
  EXPECT_EQ(x(2, 1965), 2.59);
  EXPECT_TRUE(w.derived_stale);
  expect_only_changed({2}, before);
}

TEST_F(RawEditor, InsertingInTheLastCoreMovesTheChronologyWhole) {
  const auto before = all_entries();
  edit_once(8, button::editor_insert, 10);
  EXPECT_EQ(w.yr(8), 61);
  expect_only_changed({8}, before);
}

TEST_F(RawEditor, InsertingTwiceLeavesNoGap) {
  const auto before = all_entries();
  press(button::editor_insert);
  click_row(10);
  click_row(20);
  press(button::editor_insert);
  run();
  EXPECT_EQ(w.yr(2), 62);
  expect_only_changed({2}, before);
}

// 1965, the year behind the last: 1941 + 24, where the table scrolled to its end begins.
TEST_F(RawEditor, InsertingTheYearBehindTheLastPutsARingAtTheEnd) {
  choose({2, 3});
  const auto before = all_entries();
  press(button::editor_column_3);
  press(button::editor_plus_50);
  press(button::editor_column_1);
  press(button::editor_insert);
  click_row(24);
  press(button::editor_insert);
  run();
  ASSERT_EQ(w.edfs, 1941);
  EXPECT_EQ(w.ly(2), 1965);
  EXPECT_EQ(x(2, 1964), 2.59);
  EXPECT_FALSE(xok(2, 1965));
  EXPECT_NEAR(x(2, 1965), (3.00 + 3.01 + 3.02 + 3.03 + 3.04 + 3.05) / 6, 1e-12);  // of the next core
  expect_only_changed({2}, before);
}

TEST_F(RawEditor, InsertingTwoYearsBehindTheLastDoesNothing) {
  choose({2, 3});
  const auto before = all_entries();
  press(button::editor_column_3);
  press(button::editor_plus_50);
  press(button::editor_column_1);
  press(button::editor_insert);
  click_row(25);
  run();
  EXPECT_EQ(all_entries(), before);
}

// Core 2 begins in 1905 and stands in row 5. The year before is the last place of core 1: its ring of 1959 is
// the new one now, and what it was comes first in core 2.
TEST_F(RawEditor, InsertingTheYearBeforeTheFirstTakesTheLastPlaceOfTheSeriesBefore) {
  choose({1, 2});
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_insert);
  click_row(4, 2);
  press(button::editor_insert);
  run();
  EXPECT_EQ(w.fy(2), 1905);
  EXPECT_EQ(w.yr(2), 61);
  EXPECT_DOUBLE_EQ(x(2, 1905), 1.59);
  EXPECT_EQ(x(2, 1906), 2.00);
  EXPECT_EQ(w.yr(1), 60);
  EXPECT_FALSE(xok(1, 1959));
  EXPECT_NEAR(x(1, 1959), (1.59 + 2.00 + 2.01 + 2.02 + 2.03 + 2.04) / 6, 1e-12);
  expect_only_changed({1, 2}, before);
}

// Before the first core lies nothing: its new first ring is 0 wide and missing.
TEST_F(RawEditor, InsertingTheYearBeforeTheFirstOfTheFirstSeries) {
  choose({2, 1});
  const auto before = all_entries();
  press(button::editor_column_3);
  press(button::editor_minus_50);  // from 1899 on
  press(button::editor_column_2);
  press(button::editor_insert);
  click_row(0, 2);
  press(button::editor_insert);
  run();
  EXPECT_EQ(w.yr(1), 61);
  EXPECT_EQ(x(1, 1900), 0);
  EXPECT_FALSE(xok(1, 1900));
  EXPECT_EQ(x(1, 1901), 1.00);
  expect_only_changed({1}, before);
}

TEST_F(RawEditor, InsertingTwoYearsBeforeTheFirstDoesNothing) {
  choose({1, 2});
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_insert);
  click_row(3, 2);
  run();
  EXPECT_EQ(all_entries(), before);
}

TEST_F(RawEditor, InsertingTakesTheLastPlaceOfThePool) {
  w.ad(9) = max_pool - w.yr(9);
  const int length = w.yr(2);
  edit_once(2, button::editor_insert, 10);
  EXPECT_EQ(w.yr(2), length + 1);
  EXPECT_EQ(told(), "");
}

TEST_F(RawEditor, InsertingIsRefusedWhenThePoolIsFull) {
  w.ad(9) = max_pool - w.yr(9) + 1;
  const auto before = all_entries();
  press(button::editor_insert);
  click_row(10);
  desk.screen.key(' ');
  press(button::editor_insert);
  run();
  EXPECT_EQ(told(), "Would be too many rings\n");
  EXPECT_EQ(all_entries(), before);
}

TEST_F(RawEditor, InsertingIsRefusedAtTheAgeLimit) {
  w.fy(9) = w.ly(2) - 12'000;
  const auto before = all_entries();
  press(button::editor_insert);
  click_row(10);
  desk.screen.key(' ');
  press(button::editor_insert);
  run();
  EXPECT_EQ(told(), "Chronology age limit MXY reached\n");
  EXPECT_EQ(all_entries(), before);
  EXPECT_FALSE(w.derived_stale);
}

// --- Deleting.

TEST_F(RawEditor, DeletingTakesTheRingOutAndMovesLaterOnesOneYearBack) {
  const auto before = all_entries();
  edit_once(2, button::editor_delete, 10);
  EXPECT_EQ(w.yr(2), 59);
  EXPECT_EQ(w.fy(2), 1905);
  EXPECT_EQ(w.ly(2), 1963);
  EXPECT_EQ(x(2, 1914), 2.09);
  EXPECT_EQ(x(2, 1915), 2.11);
  EXPECT_EQ(x(2, 1963), 2.59);
  EXPECT_TRUE(w.derived_stale);
  expect_only_changed({2}, before);
}

TEST_F(RawEditor, DeletingOutsideTheSeriesDoesNothing) {
  choose({1, 2});
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_delete);
  click_row(4, 2);
  run();
  EXPECT_EQ(all_entries(), before);
}

TEST_F(RawEditor, DeletingDownToTenRingsAndNoFurther) {
  put_entry(2, 1905, 11);
  pack_starts(w, 1);
  press(button::editor_delete);
  click_row(25);
  click_row(25);
  desk.screen.key(' ');
  press(button::editor_delete);
  run();
  EXPECT_EQ(w.yr(2), 10);
  EXPECT_EQ(told(), "Tree age too small \n");
}

// A file can give more years than rings. Behind the last ring lies another series.
TEST_F(RawEditor, YearsWithoutARingCannotBeEdited) {
  w.yr(2) = 5;
  pack_starts(w, 1);
  put_entry(3, 1910, 60);
  w.ly(2) = 1964;
  const auto before = all_entries();
  click_row(20);
  press(button::editor_delete);
  click_row(20);
  press(button::editor_insert);
  click_row(20);
  run();
  EXPECT_EQ(all_entries(), before);
}

TEST_F(RawEditor, RingsWithoutAYearCannotBeEdited) {
  w.ly(2) = w.fy(2) + 4;  // of more rings
  choose({1, 2});
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_delete);
  click_row(20, 2);
  run();
  EXPECT_EQ(all_entries(), before);
}

// After cores were deleted the working entries are those of an older store.
TEST_F(RawEditor, WorkingEntriesOfAnOlderStoreDoNoHarm) {
  const auto before = all_entries();
  for (const ButtonNumber mode : {button::editor_insert, button::editor_delete}) {
    for (const int slot : {10, 11}) {
      w.fy(slot) = w.ly(slot) = 1900;
      w.yr(slot) = 0;
      w.ad(slot) = 1;
    }
    edit_once(2, mode, 10);
    expect_only_changed({2}, before);
  }
  EXPECT_EQ(all_entries(), before);
}

// --- Edit.raw.

TEST_F(RawEditor, BeginsWithAnEmptyExchangeFile) {
  ScratchFolder::write("Edit.raw", "OAK2    1905     1 -9999\n");
  run();
  EXPECT_EQ(ScratchFolder::read("Edit.raw"), "");
}

TEST_F(RawEditor, ExitKeepsWhatWasEdited) {
  click_row(0);
  enter("5");
  run();
  EXPECT_EQ(x(2, 1905), 5);
  EXPECT_EQ(told(), "");
}

// Nothing is ever written into Edit.raw, so that there is nothing to go back to unless another program does.
TEST_F(RawEditor, QuitAndResetFindAnEmptyExchangeFile) {
  click_row(0);
  enter("5");
  press(button::editor_reset);
  desk.screen.key(' ');
  press(button::editor_quit);
  desk.screen.key(' ');
  edit_menu(w);
  EXPECT_EQ(desk.screen.events_left(), 0u);
  EXPECT_EQ(x(2, 1905), 5);
  EXPECT_EQ(told(), "ReadEdit.raw fail err =    -1\nReadEdit.raw fail err =    -1\n");
}

// Another program writes the exchange file while the editor waits.
TEST_F(RawEditor, ResetShowsWhatTheExchangeFileBringsAndGoesOn) {
  struct Writing : QueueScreen {
    Event next_event() override {
      ScratchFolder::write("Edit.raw",
                           "OAK2    1905   111   222   333   444   555\nOAK2    1910   666 -9999\n");
      return QueueScreen::next_event();
    }
  } screen;
  Plot plot(screen);
  const auto other = std::make_unique<Workspace>(plot, desk.disk);
  set_up_graph(*other);
  other->nam(1) = "OAK2";
  other->fy(1) = 1900;
  other->ly(1) = 1959;
  other->yr(1) = 60;
  other->nc = other->nd = other->chs = other->chc(1) = 1;
  other->ad(2) = 61;
  screen.click(2800, 440);  // "Reset"
  screen.click(2800, 110);  // "Exit"
  edit_menu(*other);
  EXPECT_EQ(other->fy(1), 1905);
  EXPECT_EQ(other->yr(1), 6);
  EXPECT_EQ(other->x(other->ad(1) + 5), 0.666);
  EXPECT_EQ(screen.events_left(), 0u);
  EXPECT_EQ(screen.shown.size(), 2u);
}

// --- Whatever is clicked and typed, no series that is not shown changes, nor anything that lies behind one
// that is. (What lies before can lose its last ring, see above; so no core is chosen whose neighbour before
// is not.)
TEST_F(RawEditor, NoClickChangesASeriesThatIsNotShown) {
  unsigned seed = 3;
  const auto next = [&seed](int below) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<int>((seed >> 8) % static_cast<unsigned>(below));
  };
  for (int shown = 1; shown <= 6; ++shown) {
    w.chs = shown;
    for (int m = 1; m <= shown; ++m) w.chc(m) = m;
    const auto before = all_entries();
    for (int k = 0; k < 400; ++k) {
      switch (next(4)) {
        case 0:
          press(button::editor.at(next(15)));
          break;
        case 1:
          click_row(next(31), 1 + next(7));
          break;
        case 2:
          desk.screen.click(next(2970), next(2100));
          break;
        default:
          enter(std::to_string(next(12'000)));
      }
    }
    try {
      for (;;) edit_menu(w);
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(end.reason(), EndReason::closed);
    }
    std::set<int> edited;
    for (int m = 1; m <= shown; ++m) edited.insert(m);
    expect_only_changed(edited, before);
    EXPECT_EQ(desk.screen.events_left(), 0u);
    desk.screen.shown.clear();
  }
}

// --- Carefully.

struct CarefulEditor : RawEditor {
  CarefulEditor() {
    w.careful.set(Mend::editor, true);
    desk.screen.shown.clear();
  }
  // A click into row r as it is drawn, `down` units below its upper edge.
  void click_drawn(int r, int down = 23, int column = 1) {
    desk.screen.click(200 + 250 * column + 60, 240 + 46 * r + down);
  }
  void leave_by(ButtonNumber n) {
    press(n);
    edit_menu(w);
    EXPECT_EQ(desk.screen.events_left(), 0u);
  }
};

// Ring 3 of core 2, 1908, is missing.
TEST_F(CarefulEditor, AWidthIsTypedInThousandthsAndMakesItsRingPresent) {
  ASSERT_FALSE(xok(2, 1908));
  click_drawn(3);
  enter("250");
  run();
  EXPECT_EQ(x(2, 1908), 0.25);
  EXPECT_TRUE(xok(2, 1908));
  EXPECT_TRUE(w.derived_stale);
}

TEST_F(CarefulEditor, AWidthOf0LeavesARingAsPresentAsItWas) {
  click_drawn(3);
  enter("0");
  click_drawn(4);
  enter("0");
  run();
  EXPECT_FALSE(xok(2, 1908));
  EXPECT_TRUE(xok(2, 1909));
  EXPECT_EQ(x(2, 1909), 0);
}

TEST_F(CarefulEditor, ReturnAloneChangesNothing) {
  const auto before = all_entries();
  click_drawn(1);
  enter("");
  click_drawn(1);
  enter("-");
  run();
  EXPECT_EQ(all_entries(), before);
  EXPECT_FALSE(w.derived_stale);
}

// The upper edge of the last row drawn lies in the row of the year before as it is read else.
TEST_F(CarefulEditor, TheRowThatIsDrawnIsClicked) {
  for (const int row : {0, 15, 29}) {
    for (const int down : {1, 45}) {
      click_drawn(row, down);
      enter("777");
      run();
      EXPECT_EQ(x(2, 1905 + row), 0.777) << row << " " << down;
      w.x(w.ad(2) + row) = 1;
    }
  }
  EXPECT_TRUE(shows(1, "fill 14 " + area(450, 240, 700, 286)));
}

TEST_F(CarefulEditor, QuitUndoesEverything) {
  const auto before = all_entries();
  press(button::editor_insert);
  click_drawn(4);
  press(button::editor_delete);
  click_drawn(9);
  click_drawn(9);
  press(button::editor_delete);
  click_drawn(2);
  enter("5");
  press(button::editor_plus_10);
  leave_by(button::editor_quit);
  EXPECT_EQ(w.fy(2), 1905);
  EXPECT_EQ(w.ly(2), 1964);
  for (int k = 0; k < 60; ++k) {
    EXPECT_EQ(x(2, 1905 + k), 2 + k / 100.0) << k;
    EXPECT_EQ(xok(2, 1905 + k), k % 7 != 3) << k;
  }
  expect_only_changed({2}, before);  // the indices of core 2, which are made anew
  EXPECT_TRUE(w.derived_stale);
  EXPECT_EQ(told(), "");
}

TEST_F(CarefulEditor, ResetUndoesWhatIsBehindItAndGoesOn) {
  click_drawn(2);
  enter("5");
  press(button::editor_reset);
  click_drawn(3);
  enter("6");
  run();
  EXPECT_EQ(x(2, 1907), 2.02);
  EXPECT_EQ(x(2, 1908), 0.006);
  EXPECT_EQ(told(), "");
}

TEST_F(CarefulEditor, QuitWithNothingEditedTouchesNothing) {
  const auto before = all_entries();
  leave_by(button::editor_quit);
  EXPECT_EQ(all_entries(), before);
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(CarefulEditor, ARingBeforeTheFirstComesFirstAndTheOthersKeepTheirYears) {
  choose({1, 2});
  const auto before = all_entries();
  press(button::editor_column_2);
  press(button::editor_insert);
  click_drawn(4, 23, 2);
  press(button::editor_insert);
  run();
  EXPECT_EQ(w.fy(2), 1904);
  EXPECT_EQ(w.ly(2), 1964);
  EXPECT_EQ(w.yr(2), 61);
  EXPECT_FALSE(xok(2, 1904));
  EXPECT_EQ(x(2, 1905), 2.00);
  EXPECT_EQ(x(2, 1964), 2.59);
  expect_only_changed({2}, before);
}

TEST_F(RawEditor, CarefullyItGoesOnBehindItsLastClick) {
  w.careful.set(Mend::pass_limits, true);
  for (int click = 0; click < 10'005; ++click) desk.screen.click(2900, 2000);
  run();
  EXPECT_EQ(w.passes_left, 0);
}

}  // namespace
}  // namespace vorn
