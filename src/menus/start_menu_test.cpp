#include "menus/start_menu.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "menus/main_program.h"
#include "plot/plot.h"
#include "plot/visible_text.h"
#include "records/disk_files.h"
#include "support/desk.h"
#include "support/scratch_folder.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Plays its events; `meddle` runs before each of them.
class MeddlingScreen : public QueueScreen {
 public:
  Event next_event() override {
    if (meddle) meddle();
    return QueueScreen::next_event();
  }
  void subject(std::string_view file) override { subjects.emplace_back(file); }
  std::function<void()> meddle;
  std::vector<std::string> subjects;  // what was told of the file worked on
};

// One core of 60 years from `first` on, a multiple of 10, in the Tucson raw layout; widths of 0.6 to 1.4 mm
// that look random and differ from core to core.
std::string raw_core(const std::string& name, int first, unsigned seed) {
  char field[40];
  std::string text;
  for (int year = first; year < first + 60; ++year) {
    if (year % 10 == 0) {
      std::snprintf(field, sizeof field, "%-8s%4d", name.c_str(), year);
      text += field;
    }
    seed = seed * 1103515245u + 12345u;
    std::snprintf(field, sizeof field, "%6u", 600 + (seed >> 16) % 800);
    text += field;
    if (year % 10 == 9) text += "\n";
  }
  std::snprintf(field, sizeof field, "%-8s%4d%6d", name.c_str(), first + 60, 999);
  return text + field + "\n";
}

std::string raw_file(const std::string& name, int first, int cores) {
  std::string text;
  for (int k = 1; k <= cores; ++k) {
    text += raw_core(name + std::to_string(k), first, static_cast<unsigned>(k) * 7919u);
  }
  return text;
}

// A chronology of three decades in the Tucson index layout.
std::string index_file(const std::string& name) {
  std::string text = name + " 1 Somewhere\n" + name + " 2 Nowhere\n" + name + " 3 Nobody\n";
  char field[40];
  for (int decade = 1900; decade < 1930; decade += 10) {
    std::snprintf(field, sizeof field, "%4d", decade);
    text += name + field;
    for (int k = 0; k < 10; ++k) {
      std::snprintf(field, sizeof field, "%4d%3d", 900 + 17 * k, 5);
      text += field;
    }
    text += "\n";
  }
  return text;
}

std::string right_justified(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%5d", value);
  return text;
}

class StartMenu : public ::testing::Test {
 protected:
  StartMenu() {
    w->log = &log_;
    folder_.write("oak.rwl", raw_file("OAK", 1900, 3));
    folder_.write("larch.rwl", raw_file("LARCH", 1800, 2));
    folder_.write("Vorn.fil", "oak.rwl\nlarch.rwl\n");
    set_up_graph(*w);
  }

  // The middle of button n, wherever the menus have left its flags.
  void press(ButtonNumber n) {
    const Button& button = w->b(n);
    screen_.click((button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2);
  }
  void enter(ButtonNumber n, const std::string& keys) {
    press(n);
    screen_.type(keys);
  }
  // Runs the menu until the program ends; the screen is closed when the events are used up.
  EndReason run() {
    try {
      start_menu(*w);
    } catch (const ProgramEnd& end) {
      return end.reason();
    }
    return EndReason::pass_limit;
  }
  void run_and_quit() {
    press(button::quit);
    EXPECT_EQ(run(), EndReason::quit);
    EXPECT_EQ(screen_.events_left(), 0u);
  }
  // What `setting` is after `keys` were typed into button n of a menu just started, or shown already.
  std::int32_t after(ButtonNumber n, const std::string& keys, const std::int32_t& setting) {
    enter(n, keys);
    run_and_quit();
    EXPECT_EQ(label(n), right_justified(setting));
    return setting;
  }
  std::string label(ButtonNumber n) const { return std::string(w->b(n).label.trimmed()); }
  std::string line(MessageNumber i) const { return std::string(w->mtext(i).trimmed()); }
  // Whether the page shown last but `before` reads so.
  bool reads(const std::string& part, std::size_t before = 0) const {
    return Desk::reads(screen_.shown.at(screen_.shown.size() - 1 - before), part);
  }

  ScratchFolder folder_;
  MeddlingScreen screen_;
  Plot plot_{screen_};
  DiskFiles disk_;
  std::unique_ptr<Workspace> w = std::make_unique<Workspace>(plot_, disk_);
  std::ostringstream log_;
};

// --- The analysis settings.

TEST_F(StartMenu, DefaultsStandOnTheirButtons) {
  run_and_quit();
  EXPECT_EQ(label(button::spline_on), " Yes");
  EXPECT_EQ(label(button::spline_years), "   32");
  EXPECT_EQ(label(button::ar_order), "   11");
  EXPECT_EQ(label(button::segment_length), "   50");
  EXPECT_EQ(label(button::segment_overlap), "   25");
  EXPECT_EQ(label(button::current_chronology), "oak.rwl");
  EXPECT_TRUE(reads("Number of cores      3"));
  EXPECT_TRUE(reads("Years  1900 to  1959"));
}

TEST_F(StartMenu, ASplineOf1000YearsKeepsTheOldValueAndRedrawsIt) {
  EXPECT_EQ(after(button::spline_years, "1000\r", w->ss), 32);
  EXPECT_TRUE(reads("   32"));
  EXPECT_FALSE(reads("1000"));
}

TEST_F(StartMenu, SplinesOf3To999YearsAreAccepted) {
  EXPECT_EQ(after(button::spline_years, "999\r", w->ss), 999);
  EXPECT_EQ(after(button::spline_years, "2\r", w->ss), 32);
  EXPECT_EQ(after(button::spline_years, "3\r", w->ss), 3);
  EXPECT_EQ(after(button::spline_years, "\r", w->ss), 32);
  EXPECT_EQ(after(button::spline_years, "-40\r", w->ss), 32);
}

TEST_F(StartMenu, AutoregressiveOrdersOf1To11AreAccepted) {
  EXPECT_EQ(after(button::ar_order, "0\r", w->jpr), 11);
  EXPECT_EQ(after(button::ar_order, "12\r", w->jpr), 11);
  EXPECT_EQ(after(button::ar_order, "1\r", w->jpr), 1);
  EXPECT_EQ(after(button::ar_order, "11\r", w->jpr), 11);
}

TEST_F(StartMenu, SegmentsOf4To12000YearsAreAccepted) {
  EXPECT_EQ(after(button::segment_length, "3\r", w->seg), 50);
  EXPECT_EQ(after(button::segment_length, "4\r", w->seg), 4);
  EXPECT_EQ(after(button::segment_length, "12000\r", w->seg), 12'000);
  EXPECT_EQ(after(button::segment_length, "12001\r", w->seg), 50);
}

TEST_F(StartMenu, AnOverlapEqualToTheSegmentLengthIsRefused) {
  EXPECT_EQ(after(button::segment_overlap, "50\r", w->olap), 25);
  EXPECT_EQ(after(button::segment_overlap, "49\r", w->olap), 49);
  EXPECT_EQ(after(button::segment_overlap, "1\r", w->olap), 1);
  EXPECT_EQ(after(button::segment_overlap, "0\r", w->olap), 25);
}

TEST_F(StartMenu, AnEntryAbandonedByAnotherKeySetsSplineAndSegmentTo116) {
  EXPECT_EQ(after(button::spline_years, "40 ", w->ss), 116);
  EXPECT_EQ(after(button::segment_length, "x", w->seg), 116);
  EXPECT_EQ(after(button::segment_length, "123456", w->seg), 116);  // the sixth digit abandons too
}

TEST_F(StartMenu, AnAbandonedEntryLeavesTheAutoregressiveOrder) {
  EXPECT_EQ(after(button::ar_order, "5 ", w->jpr), 11);
}

TEST_F(StartMenu, AnAbandonedOverlapIs116OnlyBelowTheSegmentLength) {
  EXPECT_EQ(after(button::segment_overlap, "30 ", w->olap), 25);
  enter(button::segment_length, "116\r");
  EXPECT_EQ(after(button::segment_overlap, "30 ", w->olap), 25);
  enter(button::segment_length, "117\r");
  EXPECT_EQ(after(button::segment_overlap, "30 ", w->olap), 116);
}

TEST_F(StartMenu, AClickAbandonsAnEntryAndIsNotTakenForAnotherButton) {
  press(button::spline_years);
  press(button::log_on);
  run_and_quit();
  EXPECT_EQ(w->ss, 116);
  EXPECT_TRUE(w->logon);
}

TEST_F(StartMenu, AFieldStaysLitAfterAnEntry) {
  w->b(button::ar_order).lit = false;
  after(button::ar_order, "5\r", w->jpr);
  EXPECT_TRUE(w->b(button::ar_order).lit);
}

TEST_F(StartMenu, TheSwitchesAreTurnedAndSaySo) {
  press(button::spline_on);
  press(button::ar_on);
  press(button::log_on);
  press(button::ar_on);
  run_and_quit();
  EXPECT_FALSE(w->splineon);
  EXPECT_TRUE(w->aron);
  EXPECT_FALSE(w->logon);
  EXPECT_EQ(label(button::spline_on), " No");
  EXPECT_EQ(label(button::ar_on), " Yes");
  EXPECT_EQ(label(button::log_on), " No");
}

TEST_F(StartMenu, WhatIsDerivedIsOutOfDateOnceASwitchAPeriodOrAnOrderIsChanged) {
  run_and_quit();
  EXPECT_FALSE(w->derived_stale);
  for (const ButtonNumber n : {button::spline_on, button::ar_on, button::log_on}) {
    press(n);
    run_and_quit();
    EXPECT_TRUE(w->derived_stale) << plain(n);
  }
  for (const ButtonNumber n : {button::spline_years, button::ar_order}) {
    enter(n, "7\r");
    run_and_quit();
    EXPECT_TRUE(w->derived_stale) << plain(n);
  }
}

TEST_F(StartMenu, WhatIsDerivedStaysUpToDateWhenNothingItDependsOnIsChanged) {
  enter(button::spline_years, "32\r");
  enter(button::ar_order, "12\r");
  enter(button::segment_length, "40\r");
  enter(button::segment_overlap, "20\r");
  run_and_quit();
  EXPECT_FALSE(w->derived_stale);
}

// --- The page.

TEST_F(StartMenu, AllOfTheMenuIsOnThePage) {
  run_and_quit();
  const std::vector<std::string> expected = {" Yes",
                                             "Use Spline Detrend",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             " Yes",
                                             "Use AR Modelling",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             " Yes",
                                             "Transform with Logs",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             "   32",
                                             "Spline - 50% cut off",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             "   11",
                                             "AR model - max years",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             "   50",
                                             "Correl segment length",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             "   25",
                                             "Correl segment overlap",
                                             "PARAMETER OPTIONS",
                                             "(Range limit 1 to 11)",
                                             "oak.rwl",
                                             line(MessageNumber{1}),
                                             "Current Chronology",
                                             line(MessageNumber{3}),
                                             line(MessageNumber{4}),
                                             line(MessageNumber{5}),
                                             "Quit",
                                             "Leave the Program",
                                             "Crossdate",
                                             "Crossdate the Data",
                                             "Save Raw",
                                             "Save raw '.RWW' file",
                                             "Save Crn",
                                             "Save crn '.IND' file",
                                             "Stats Rep",
                                             "Tree Stats Report",
                                             "Corr Rep",
                                             "Correlation Report",
                                             "Read TRW",
                                             "Ring Reader Format",
                                             "Tucson",
                                             "Raw data output type",
                                             "Tucson.prn",
                                             "Chronology output type",
                                             "Index.prn",
                                             "Heidel",
                                             "Compact",
                                             "Tucson",
                                             "Column"};
  std::vector<std::string> written;
  for (const Mark& mark : screen_.shown.back().marks()) {
    if (mark.kind == Mark::Kind::text) written.push_back(mark.writing);
  }
  EXPECT_EQ(written, expected);
}

TEST_F(StartMenu, EveryButtonStandsOnThePageInTheColourOfItsState) {
  run_and_quit();
  std::string faces;
  for (const Mark& mark : screen_.shown.back().marks()) {
    if (mark.kind == Mark::Kind::fill) faces += std::to_string(number_of(mark.colour)) + " ";
  }
  // 94 to 102 and 105 to 110; then Tucson, Heidel, Compact and Tucson, Column.
  EXPECT_EQ(faces, "14 14 14 14 14 14 14 14 14 14 14 14 14 14 14 14 7 7 14 7 ");
}

TEST_F(StartMenu, AClickBesideEveryButtonChangesNothing) {
  screen_.click(50, 2000);
  screen_.click(-5000, 90'000);
  run_and_quit();
  ASSERT_GE(screen_.shown.size(), 3u);
  EXPECT_EQ(marks_of(screen_.shown.back()), marks_of(screen_.shown[screen_.shown.size() - 3]));
}

// --- The list of chronologies.

TEST_F(StartMenu, TheListShowsTheFilesAndQuitAlone) {
  press(button::current_chronology);
  run_and_quit();
  const std::vector<std::string> expected = {"Quit", "Leave the Program", "Choose a Chronology", "oak.rwl",
                                             "larch.rwl"};
  EXPECT_EQ(visible_texts(screen_.shown.back()), expected);
  for (const ButtonNumber n : button::start) {
    EXPECT_EQ(w->b(n).on, n == button::quit || n == button::chronology_list) << plain(n);
    EXPECT_EQ(w->b(n).lit, n == button::quit || n == button::chronology_list) << plain(n);
  }
}

TEST_F(StartMenu, APickMakesTheFileTheCurrentOneAndBringsTheMenuBack) {
  press(button::raw_compact);
  press(button::current_chronology);
  screen_.click(300, 300);
  run_and_quit();
  EXPECT_EQ(w->cf, 2);
  EXPECT_EQ(w->nc, 2);
  EXPECT_EQ(w->nam(1).trimmed(), "LARCH1");
  EXPECT_EQ(label(button::current_chronology), "larch.rwl");
  EXPECT_TRUE(reads("Number of cores      2"));
  EXPECT_TRUE(reads("Years  1800 to  1859"));
  EXPECT_EQ(w->chc(1), 2);
  EXPECT_EQ(w->chs, 1);
  for (const ButtonNumber n : button::start) {
    EXPECT_EQ(w->b(n).on, plain(n) != 103 && n != button::chronology_list) << plain(n);
  }
  EXPECT_TRUE(w->b(button::raw_compact).lit);
  EXPECT_FALSE(w->b(button::raw_tucson).lit);
}

TEST_F(StartMenu, TheScreenIsToldWhichFileIsTheCurrentOne) {
  press(button::current_chronology);
  screen_.click(300, 300);
  run_and_quit();
  EXPECT_EQ(screen_.subjects, (std::vector<std::string>{"oak.rwl", "oak.rwl", "larch.rwl"}));
}

TEST_F(StartMenu, AClickBelowTheLastNameLeavesTheListOnScreen) {
  press(button::current_chronology);
  screen_.click(300, 350);
  screen_.click(1100, 250);
  run_and_quit();
  EXPECT_EQ(w->cf, 1);
  EXPECT_TRUE(reads("Choose a Chronology"));
}

TEST_F(StartMenu, AClickOnAnEntryWhoseFileFailedToReadLeavesTheListOnScreen) {
  screen_.meddle = [this] { w->rawok(2) = false; };
  press(button::current_chronology);
  screen_.click(300, 300);
  run_and_quit();
  EXPECT_EQ(w->cf, 1);
  EXPECT_TRUE(reads("Choose a Chronology"));
}

TEST_F(StartMenu, QuitLeavesFromTheListToo) {
  press(button::current_chronology);
  run_and_quit();
}

// Of a list of 40 files, one core each: the file that a click in the list makes the current one, 0 when the
// list stays.
class StartMenuList : public StartMenu {
 protected:
  StartMenuList() {
    std::string list;
    for (int f = 1; f <= 40; ++f) {
      const std::string name = "f" + std::to_string(f) + ".rwl";
      folder_.write(name, raw_core("F" + std::to_string(f), 1900, static_cast<unsigned>(f)));
      list += name + "\n";
    }
    folder_.write("Vorn.fil", list);
  }
  int picked(int x, int y) {
    press(button::current_chronology);
    screen_.click(x, y);
    run_and_quit();
    const bool list_stays = w->b(button::chronology_list).on;
    set_up_graph(*w);
    return list_stays ? 0 : w->cf;
  }
};

TEST_F(StartMenuList, AClickOnTheBottomEdgeIsTheFirstEntryOfTheNextColumn) {
  EXPECT_EQ(picked(300, 1639), 30);
  EXPECT_EQ(picked(300, 1640), 31);
  EXPECT_EQ(picked(300, 1641), 0);
}

TEST_F(StartMenuList, TheAreaIsDividedIntoThirdsAndThirtieths) {
  EXPECT_EQ(picked(200, 240), 1);
  EXPECT_EQ(picked(1033, 240), 1);  // 833 * 3 / 2500 is still below 1
  EXPECT_EQ(picked(1034, 240), 31);
  EXPECT_EQ(picked(200, 286), 1);  // 46 * 30 / 1400 is still below 1
  EXPECT_EQ(picked(200, 287), 2);
  EXPECT_EQ(picked(1034, 240 + 47 * 9), 40);
  EXPECT_EQ(picked(1034, 240 + 47 * 10), 0);
  EXPECT_EQ(picked(2700, 240), 0);  // a fourth column, of entry 91
}

TEST_F(StartMenuList, NearTheBottomTheUpperPartOfADrawnRowPicksTheRowAbove) {
  // "f30.rwl" is drawn in the row from 240 + 29 * 46 = 1574 on; the pick's own row 30 begins at 1593.3.
  EXPECT_EQ(picked(300, 1574), 29);
  EXPECT_EQ(picked(300, 1593), 29);
  EXPECT_EQ(picked(300, 1594), 30);
}

TEST_F(StartMenu, TheListShowsAsManyNamesAsThereAreRingWidthFilesButAllCanBePicked) {
  folder_.write("ref.crn", index_file("REFERE"));
  folder_.write("Vorn.fil", "oak.rwl\nref.crn\nlarch.rwl\n");
  press(button::current_chronology);
  screen_.click(300, 350);
  run_and_quit();
  EXPECT_TRUE(reads("ref.crn", 1));
  EXPECT_FALSE(reads("larch.rwl", 1));
  EXPECT_EQ(w->cf, 3);
  EXPECT_EQ(label(button::current_chronology), "larch.rwl");
}

TEST_F(StartMenu, AnIndexFileAsTheCurrentOneLeavesTheStoreAlone) {
  folder_.write("ref.crn", index_file("REFERE"));
  folder_.write("Vorn.fil", "oak.rwl\nref.crn\n");
  press(button::current_chronology);
  screen_.click(300, 300);
  run_and_quit();
  EXPECT_EQ(w->cf, 2);
  EXPECT_EQ(w->nc, 3);
  EXPECT_EQ(w->nam(1).trimmed(), "OAK1");
  EXPECT_TRUE(reads("Years  1900 to  1929"));
}

TEST_F(StartMenu, AFileThatHasVanishedIsToldAndTheMenuComesBack) {
  screen_.meddle = [] { std::filesystem::remove("larch.rwl"); };
  press(button::current_chronology);
  screen_.click(300, 300);
  for (int k = 0; k < 20; ++k) screen_.key(Event::escape);
  press(button::quit);
  EXPECT_EQ(run(), EndReason::quit);
  EXPECT_NE(log_.str().find("larch.rwl fail err =     2"), std::string::npos) << log_.str();
  EXPECT_EQ(w->cf, 2);
  EXPECT_TRUE(reads("Current Chronology"));
}

TEST_F(StartMenu, AnEmptyListOfFilesStillHasAMenu) {
  folder_.write("Vorn.fil", "");
  for (const ButtonNumber n : ButtonRange{button::start.first, button::crn_index}) {
    // Read TRW would end the program: there is no TRW.fil.
    if (n == button::quit || n == button::chronology_list || n == button::read_two_column) continue;
    if (n == button::current_chronology) continue;
    press(n);
    screen_.key(Event::escape);  // what asks or tells something goes on; otherwise the key is nothing
  }
  press(button::current_chronology);
  screen_.click(300, 300);
  press(button::quit);
  EXPECT_EQ(run(), EndReason::quit);
  EXPECT_EQ(w->nfil, 0);
  EXPECT_TRUE(reads("Choose a Chronology"));
  EXPECT_EQ(screen_.subjects.back(), "");
}

// --- What is started from the menu.

TEST_F(StartMenu, AnOutputTypeIsLitAloneAndNamesItsFile) {
  const std::tuple<ButtonNumber, MessageNumber, const char*> types[] = {
      {button::raw_heidelberg, message::raw_name, "Heidel.prn"},
      {button::raw_compact, message::raw_name, "Compact.prn"},
      {button::raw_tucson, message::raw_name, "Tucson.prn"},
      {button::crn_column, message::crn_name, "Column.prn"},
      {button::crn_index, message::crn_name, "Index.prn"}};
  for (const auto& [n, name_line, name] : types) {
    press(n);
    run_and_quit();
    EXPECT_EQ(line(name_line), name);
    EXPECT_TRUE(reads(name));
    const bool raw = n <= button::raw_compact;
    for (const ButtonNumber other : raw ? button::raw_types : button::crn_types) {
      EXPECT_EQ(w->b(other).lit, other == n) << plain(other);
    }
  }
}

TEST_F(StartMenu, TucsonAfterCompactNamesTucsonAgain) {
  press(button::raw_compact);
  press(button::raw_tucson);
  run_and_quit();
  EXPECT_EQ(line(message::raw_name), "Tucson.prn");
}

TEST_F(StartMenu, TheTwoKindsOfOutputDoNotTouchEachOther) {
  press(button::raw_compact);
  press(button::crn_column);
  run_and_quit();
  EXPECT_TRUE(w->b(button::raw_compact).lit);
  EXPECT_TRUE(w->b(button::crn_column).lit);
  EXPECT_EQ(line(message::raw_name), "Compact.prn");
}

TEST_F(StartMenu, SaveRawWritesTheCoresInTheLayoutChosen) {
  press(button::save_raw);
  run_and_quit();
  EXPECT_EQ(folder_.read("oak.RWW").substr(0, 12), "OAK1    1900");
  press(button::raw_heidelberg);
  press(button::save_raw);
  run_and_quit();
  EXPECT_EQ(folder_.read("oak.RWW").substr(0, 7), "HEADER:");
}

TEST_F(StartMenu, SaveCrnWritesTheChronologyInTheLayoutChosen) {
  press(button::save_crn);
  run_and_quit();
  EXPECT_TRUE(folder_.exists("Index.prn"));
  EXPECT_FALSE(folder_.exists("Column.prn"));
  press(button::crn_column);
  press(button::save_crn);
  run_and_quit();
  EXPECT_TRUE(folder_.exists("Column.prn"));
}

TEST_F(StartMenu, TheReportsAreWritten) {
  press(button::stats_report);
  press(button::correlation_report);
  run_and_quit();
  EXPECT_NE(folder_.read("Stats.prn").find("OAK2"), std::string::npos);
  EXPECT_NE(folder_.read("Corr.prn").find("OAK2"), std::string::npos);
}

TEST_F(StartMenu, ChronologyAndReportsAreMadeOfFreshIndices) {
  for (const ButtonNumber n : {button::save_crn, button::stats_report, button::correlation_report}) {
    press(button::spline_on);
    press(n);
    run_and_quit();
    EXPECT_EQ(w->tx(1), w->x(1)) << plain(n);  // without the spline an index is the width itself
    EXPECT_EQ(w->tx(100), w->x(100)) << plain(n);
  }
}

TEST_F(StartMenu, SaveRawLeavesTheIndicesAlone) {
  press(button::spline_on);
  press(button::save_raw);
  run_and_quit();
  EXPECT_NE(w->tx(1), w->x(1));
}

TEST_F(StartMenu, ReadTrwConvertsWhatItsListNames) {
  folder_.write("TRW.fil", "two.rwl\nA1.trw\n");
  folder_.write("A1.trw", "A1              1950  1.250\nA1              1951  0.750\n");
  press(button::read_two_column);
  run_and_quit();
  EXPECT_EQ(folder_.read("two.rwl").substr(0, 24), "A1      1950  1250   750");
  EXPECT_TRUE(w->derived_stale);
}

TEST_F(StartMenu, ReadTrwWithoutItsListEndsTheProgram) {
  press(button::read_two_column);
  screen_.key(' ');
  EXPECT_EQ(run(), EndReason::cannot_go_on);
  EXPECT_EQ(log_.str(), "TRW.fil does not exist\n");
}

TEST_F(StartMenu, CrossdateReturnsWithTheCurrentChronologyAloneChosen) {
  press(button::crossdate);
  press(button::exit_crossdating);
  run_and_quit();
  EXPECT_EQ(w->sccc, 0);
  EXPECT_EQ(w->chc(1), w->cf);
  EXPECT_EQ(w->chs, 1);
  EXPECT_TRUE(reads("Crossdate the Data"));
}

TEST_F(StartMenu, AfterCrossdatingTheListOfFilesBeginsWithTheFirstHoweverTheChooserWasScrolled) {
  int events = 0;
  screen_.meddle = [&] {
    if (++events == 2) w->sccc = 1;  // on the cross-dating screen
  };
  press(button::crossdate);
  press(button::exit_crossdating);
  press(button::current_chronology);
  run_and_quit();
  screen_.meddle = nullptr;
  EXPECT_EQ(w->sccc, 0);
  EXPECT_TRUE(reads("oak.rwl"));
  EXPECT_TRUE(reads("larch.rwl"));
}

TEST_F(StartMenu, CrossdateNeedsMoreThanOneEntry) {
  folder_.write("Vorn.fil", "");
  press(button::crossdate);
  screen_.key(' ');
  run_and_quit();
  EXPECT_EQ(log_.str(), "Need more than one core\n");
  EXPECT_TRUE(reads("Need more than one core", 1));
  EXPECT_TRUE(reads("Crossdate the Data"));
}

TEST_F(StartMenu, HelpIsThereAndTheMenuGoesOn) {
  folder_.write("Help.prn", "\n\n 1   0   0   1Help at last\nOne line.\n");
  screen_.help(920, 560);
  run_and_quit();
  EXPECT_TRUE(reads("Help at last"));
}

// --- The end.

TEST_F(StartMenu, WithoutAListFileTheProgramCannotGoOn) {
  std::filesystem::remove("Vorn.fil");
  screen_.key(' ');
  EXPECT_EQ(run(), EndReason::cannot_go_on);
  EXPECT_EQ(log_.str(), "Vorn.fil does not exist\n");
}

TEST_F(StartMenu, AClosedScreenEndsTheProgramWhereverItWaits) {
  EXPECT_EQ(run(), EndReason::closed);
  press(button::spline_years);
  EXPECT_EQ(run(), EndReason::closed);
}

// Clicks beside every button, for ever.
class RestlessScreen : public Screen {
 public:
  void show(const Page&) override {}
  Event next_event() override {
    ++clicks;
    return {1, 1, Event::click};
  }
  int clicks = 0;
};

TEST(MainProgram, ReturnsAfterTenThousandPassesOfTheStartMenu) {
  ScratchFolder folder;
  folder.write("Vorn.fil", "");
  RestlessScreen screen;
  Plot plot(screen);
  DiskFiles disk;
  Workspace w(plot, disk);
  run_program(w);
  EXPECT_EQ(screen.clicks, 10'000);
}

TEST(MainProgram, SetsUpTablesAndPageByItself) {
  ScratchFolder folder;
  folder.write("Vorn.fil", "");
  Desk desk;
  desk.plot.height(99);
  desk.plot.shdpat(0);
  desk.plot.winfnt("Times New Roman");
  desk.plot.hname(99);
  desk.plot.ticpos("LABELS", "XY");
  desk.screen.click(2300, 50);
  EXPECT_THROW(run_program(desk.w), ProgramEnd);
  const std::string page = marks_of(desk.screen.shown.back());
  EXPECT_NE(page.find("fill 14 2240 30 2400 30 2400 75 2240 75\n"), std::string::npos);
  EXPECT_NE(page.find("text 15 25 2245 42 \"Quit\"\n"), std::string::npos);
  EXPECT_EQ(desk.screen.shown.back().marks().back().font, Font::arial);
  desk.plot.axspos(200, 1300);
  desk.plot.axslen(1000, 1000);
  desk.plot.name("Years", 'X');
  desk.plot.graf(0, 1, 0, 1, 0, 1, 0, 1);
  EXPECT_NE(desk.marks().find("label 15 20 c 0 700 1365 \"Years\"\n"), std::string::npos);
  EXPECT_NE(desk.marks().find("line 15 200 1300 200 1276\n"), std::string::npos);  // a tick, inside
  EXPECT_NE(desk.marks().find("line 15 200 1300 224 1300\n"), std::string::npos);
}

// --- Carefully.

TEST_F(StartMenu, CarefullyAnAbandonedEntryOffersNothing) {
  w->careful.set(Mend::prompts, true);
  EXPECT_EQ(after(button::spline_years, "40 ", w->ss), 32);
  EXPECT_EQ(after(button::segment_length, "123456", w->seg), 50);
  EXPECT_EQ(after(button::segment_length, "\x1B", w->seg), 50);
  EXPECT_EQ(after(button::spline_years, "41\b0\r", w->ss), 40);
}

TEST_F(StartMenu, EscapeOffersNothingWhereItIsMended) {
  w->careful.set(Mend::escape, true);
  EXPECT_EQ(after(button::spline_years, "40\x1B", w->ss), 32);
  EXPECT_EQ(after(button::spline_years, "40x", w->ss), 116);
}

TEST_F(StartMenu, EscapeLeavesTheListWhereItIsMendedWithNothingChosen) {
  w->careful.set(Mend::escape, true);
  const int loads = (run_and_quit(), w->loads);
  press(button::current_chronology);
  screen_.key(Event::escape);
  press(button::log_on);  // of the menu, which is there again
  run_and_quit();
  EXPECT_FALSE(w->b(button::chronology_list).on);
  EXPECT_FALSE(w->logon);
  EXPECT_EQ(w->loads, 2 * loads);  // of its own start alone
  EXPECT_EQ(w->cf, 1);
}

TEST_F(StartMenu, UsuallyEscapeDoesNotLeaveTheList) {
  press(button::current_chronology);
  screen_.key(Event::escape);
  run_and_quit();
  EXPECT_TRUE(w->b(button::chronology_list).on);
}

// As the correlation screen sets them.
TEST_F(StartMenu, CarefullySettingsChangedElsewhereAreShown) {
  int waits = 0;
  screen_.meddle = [this, &waits] {
    if (++waits == 1) w->seg = 80, w->olap = 40;
  };
  screen_.click(2900, 2000);
  run_and_quit();
  EXPECT_TRUE(reads("   50"));
  EXPECT_FALSE(reads("   80"));
  waits = 0;
  w->careful.set(Mend::settings_shown, true);
  screen_.click(2900, 2000);
  run_and_quit();
  EXPECT_TRUE(reads("   80"));
  EXPECT_TRUE(reads("   40"));
}

TEST_F(StartMenu, CarefullyItGoesOnBehindItsLastPassAndCountsNone) {
  w->careful.set(Mend::pass_limits, true);
  screen_.meddle = [this] { EXPECT_EQ(w->passes_left, 0); };
  for (int pass = 0; pass < 10'005; ++pass) screen_.click(2900, 2000);
  run_and_quit();
}

}  // namespace
}  // namespace vorn
