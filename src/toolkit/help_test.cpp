#include "toolkit/help.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "plot/font_metrics.h"
#include "plot/plot.h"
#include "plot/visible_text.h"
#include "support/desk.h"
#include "support/places.h"
#include "support/scratch_folder.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

constexpr const char* box_marks =
    "fill 7 80 1400 1640 1400 1640 1700 80 1700\n"
    "outline 12 80 1400 1640 1400 1640 1700 80 1700\n";

// A record as the file has it.
std::string record(int kind, int button, int message, int lines, const std::string& title) {
  char numbers[32];
  std::snprintf(numbers, sizeof numbers, "%2d%4d%4d%4d", kind, button, message, lines);
  return numbers + title + "\n";
}

class Help : public ::testing::Test {
 protected:
  Help() { set_up_graph(w); }
  // Asks for help at a place, with a file of two header lines and `records`.
  void ask(int x, int y, const std::string& records) {
    folder_.write("Help.prn", "header\nheader\n" + records);
    ask_as_it_is(x, y);
  }
  void ask_as_it_is(int x, int y) {
    w.plot.erase();
    w.msx = x;
    w.msy = y;
    vorn_help(w);
  }
  ScratchFolder folder_;
  Desk desk_;
  Workspace& w = desk_.w;
};

TEST_F(Help, NoRectangleOfTheTablesIsEverUnderTheCursor) {
  const std::string records = record(1, 94, 22, 0, "spline") + record(1, 0, 0, 0, "the fall-back");
  for (const ButtonNumber n : button::start) {
    const Button& button = w.b(n);
    ask((button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2, records);
    EXPECT_EQ(w.mous, 0) << plain(n);
    EXPECT_TRUE(desk_.reads("the fall-back")) << plain(n);
    EXPECT_FALSE(desk_.reads("spline")) << plain(n);
  }
  for (const MessageNumber i : message::with_help) {
    ask(w.madd(i).x1, w.madd(i).y1, records);
    EXPECT_EQ(w.mous, 0) << plain(i);
    EXPECT_TRUE(desk_.reads("the fall-back")) << plain(i);
  }
}

TEST_F(Help, TheTestRunsTheWrongWayUpSoAButtonOnItsHeadIsFound) {
  std::swap(w.b(button::log_on).y1, w.b(button::log_on).y2);
  ask(900, 800, record(1, 95, 0, 0, "a message of 0") + record(1, 96, 24, 0, "logarithms"));
  EXPECT_EQ(w.mous, plain(button::log_on));
  EXPECT_TRUE(desk_.reads("logarithms"));
}

TEST_F(Help, AButtonThatIsOffIsNotFound) {
  std::swap(w.b(button::log_on).y1, w.b(button::log_on).y2);
  w.b(button::log_on).on = false;
  ask(900, 800, record(1, 96, 24, 0, "logarithms") + record(0, 0, 0, 0, "end"));
  EXPECT_EQ(w.mous, 0);
  EXPECT_TRUE(desk_.reads("end"));
}

TEST_F(Help, AMessageOnItsHeadIsFoundByItsOwnNumber) {
  std::swap(w.madd(MessageNumber{24}).y1, w.madd(MessageNumber{24}).y2);
  ask(400, 800, record(1, 24, 9, 0, "a button of 24") + record(1, 96, 24, 0, "logarithms"));
  EXPECT_EQ(w.mous, 24);
  EXPECT_TRUE(desk_.reads("logarithms"));
}

TEST_F(Help, TheBoxHasATitleAndOneLineTheOthersFallBelowIt) {
  ask(1, 1, record(1, 9, 0, 3, "Title") + "first\nsecond\nthird\nfourth\n");
  EXPECT_EQ(desk_.marks(), std::string(box_marks) +
                               "text 15 25 88 1422 \"Title\"\n"
                               "text 15 20 88 1602 \"first\"\n"
                               "text 15 20 88 1782 \"second\"\n"
                               "text 15 20 88 1962 \"third\"\n");
  EXPECT_EQ(desk_.log.str(), "");
}

TEST_F(Help, AfterHelpTextsAreOfTheUsualHeightAndAreasSolid) {
  ask(1, 1, record(0, 0, 0, 0, "Title"));
  w.plot.erase();
  w.plot.rectangle(1, 2, 3, 4);
  w.plot.messag("after", 1, 2);
  EXPECT_EQ(desk_.marks(), "fill 15 1 2 3 2 3 4 1 4\ntext 15 25 1 2 \"after\"\n");
}

TEST_F(Help, ALongTitleAndLineAreReadFromTheirColumnsToTheEightieth) {
  const std::string eighty(80, 't');
  ask(1, 1, record(1, 0, 0, 1, eighty + "beyond") + std::string(80, 'l') + "beyond\n");
  EXPECT_TRUE(desk_.marks().find("\"" + eighty + "\"") != std::string::npos);
  EXPECT_TRUE(desk_.marks().find("\"" + std::string(80, 'l') + "\"") != std::string::npos);
}

TEST_F(Help, TextLinesOfRecordsPassedOverAreSkipped) {
  ask(1, 1,
      record(1, 94, 22, 2, "spline") + record(1, 9, 0, 0, "not a record") + " 0\n" +
          record(1, 0, 0, 0, "this one"));
  EXPECT_TRUE(desk_.reads("this one"));
}

TEST_F(Help, TheEndMarkerIsShownWhenNothingElseFits) {
  ask(1, 1, record(1, 94, 22, 0, "spline") + record(0, 7, 7, 1, "For help, read the manual") + "line\n");
  EXPECT_TRUE(desk_.reads("For help, read the manual"));
  EXPECT_TRUE(desk_.reads("line"));
}

TEST_F(Help, AMissingFileIsToldAsOpenThenOneReadAndTheBoxIsDrawn) {
  desk_.screen.key(' ');
  desk_.screen.key(' ');
  ask_as_it_is(1, 1);
  EXPECT_EQ(desk_.log.str(), "OpenHelp.prn fail err =     2\nReadHelp.prn fail err =    -1\n");
  const std::string marks = desk_.marks();
  EXPECT_EQ(marks.substr(marks.size() - std::string(box_marks).size()), box_marks);
}

TEST_F(Help, ADirectoryIsToldAsOpenThenOneRead) {
  std::filesystem::create_directory("Help.prn");
  desk_.screen.key(' ');
  desk_.screen.key(' ');
  ask_as_it_is(1, 1);
  EXPECT_EQ(desk_.log.str(), "OpenHelp.prn fail err =    21\nReadHelp.prn fail err =    -1\n");
}

TEST_F(Help, AtTheEndOfTheFileThereIsOneReadAndTheBoxWithWhatIsLeft) {
  desk_.screen.key(' ');
  ask(1, 1, record(1, 94, 22, 0, "spline") + record(1, 95, 23, 5, "the last title") + "only line\n");
  EXPECT_EQ(desk_.log.str(), "ReadHelp.prn fail err =    -1\n");
  EXPECT_NE(desk_.marks().find(std::string(box_marks) + "text 15 25 88 1422 \"the last title\"\n"),
            std::string::npos);
  EXPECT_FALSE(desk_.reads("only line"));
}

TEST_F(Help, ABadRecordIsToldAndTheNextOneIsRead) {
  desk_.screen.key(' ');
  ask(1, 1, record(1, 94, 22, 0, "spline") + " 1  9x  30   0bad\n" + record(1, 0, 0, 0, "good"));
  EXPECT_EQ(desk_.log.str(), "ReadHelp.prn fail err =  5010\n");
  EXPECT_TRUE(desk_.reads("good"));
}

TEST_F(Help, NegativeAndHugeNumbersOfLinesEndWithTheFile) {
  desk_.screen.key(' ');
  ask(1, 1, record(1, 94, 22, -999, "negative") + record(1, 95, 23, 9999, "huge") + "text\n");
  EXPECT_EQ(desk_.log.str(), "ReadHelp.prn fail err =    -1\n");
  ask(1, 1, record(1, 0, 0, 9999, "huge") + "text\n");
  EXPECT_TRUE(desk_.reads("text"));
  ask(1, 1, record(1, 0, 0, -5, "negative") + "text\n");
  EXPECT_FALSE(desk_.reads("text"));
}

TEST_F(Help, AtMost500RecordsAreRead) {
  std::string records;
  for (int k = 1; k <= 499; ++k) records += record(1, 94, 22, 0, "no");
  ask(1, 1, records + record(0, 0, 0, 0, "number 500"));
  EXPECT_TRUE(desk_.reads("number 500"));
  ask(1, 1, records + record(1, 94, 22, 0, "number 500") + record(0, 0, 0, 0, "number 501"));
  EXPECT_FALSE(desk_.reads("number 501"));
  EXPECT_TRUE(desk_.reads("number 500"));
}

TEST_F(Help, AnEmptyLineIsAnEndMarker) {
  ask(1, 1, "\n" + record(0, 0, 0, 0, "behind it"));
  EXPECT_EQ(desk_.marks(), box_marks);
}

// --- The help file that comes with the examples.

struct SampleRecord {
  int kind = 0, button = 0, message = 0;
  std::string title;
  std::vector<std::string> lines = {};
};

class SampleHelp : public Help {
 protected:
  SampleHelp() { std::filesystem::copy_file(source_folder() / "examples/Help.prn", "Help.prn"); }

  static std::vector<SampleRecord> records() {
    std::istringstream file(folder_read());
    std::vector<SampleRecord> all;
    std::string line;
    std::getline(file, line);
    std::getline(file, line);
    while (std::getline(file, line)) {
      SampleRecord record{.kind = std::stoi(line.substr(0, 2)),
                          .button = std::stoi(line.substr(2, 4)),
                          .message = std::stoi(line.substr(6, 4)),
                          .title = line.substr(14)};
      record.lines.resize(static_cast<std::size_t>(std::stoi(line.substr(10, 4))));
      for (std::string& text : record.lines) std::getline(file, text);
      all.push_back(record);
    }
    return all;
  }
  static std::string folder_read() { return ScratchFolder::read("Help.prn"); }
};

TEST_F(SampleHelp, HasARecordForEachButtonOfTheStartMenuAndEachMessageLineAsked) {
  const auto all = records();
  for (const ButtonNumber n : button::start) {
    const auto is_of = [n](const SampleRecord& record) { return record.button == plain(n); };
    EXPECT_EQ(std::count_if(all.begin(), all.end(), is_of), plain(n) == 103 ? 0 : 1)
        << plain(n);  // 103 is no button
  }
  for (const MessageNumber i : message::with_help) {
    const auto is_of = [i](const SampleRecord& record) { return record.message == plain(i); };
    EXPECT_EQ(std::count_if(all.begin(), all.end(), is_of), 1) << plain(i);
  }
}

TEST_F(SampleHelp, OnlyTheEndMarkerHasMessageNumber0) {
  const auto all = records();
  for (const SampleRecord& record : all) {
    EXPECT_EQ(record.message == 0, &record == &all.back()) << record.title;
    EXPECT_EQ(record.kind == 0, &record == &all.back()) << record.title;
  }
}

TEST_F(SampleHelp, EveryTitleAndTextLineFitsItsColumnsAndTheBox) {
  const auto all = records();
  for (const SampleRecord& record : all) {
    EXPECT_LE(record.title.size(), 80u) << record.title;
    EXPECT_LT(88 + text_width(record.title, 25, Font::arial), 1640) << record.title;
    EXPECT_EQ(record.lines.size(), &record == &all.back() ? 3u : 1u) << record.title;
    for (const std::string& line : record.lines) {
      EXPECT_LE(line.size(), 80u) << line;
      EXPECT_LT(88 + text_width(line, 20, Font::arial), 1640) << line;
    }
  }
}

// The title and the first line in the box, the other two below it: how to work a button and a number, what
// the list of files is, what a lag says, and where an edit goes.
TEST_F(SampleHelp, WhatUsersSeeIsTheEndMarkersAdvice) {
  ask_as_it_is(900, 560);
  EXPECT_EQ(desk_.log.str(), "");
  EXPECT_EQ(visible_texts(w.plot.page()),
            (std::vector<std::string>{
                "Click a button to use it. To change a number: click on it, type, press Return.",
                "Only Return keeps it: other keys may set 116. Vorn.fil names the files to load.",
                "Lag +7 best in all segments: the sample is dated 7 years too late; move it back.",
                "Save Change puts an edit into the store; Save Raw writes the store to a file."}));
  const std::vector<Mark>& marks = w.plot.page().marks();
  EXPECT_EQ(marks.back().points[0].y, 1962);  // above the foot of the page, at 2100
}

TEST_F(SampleHelp, EveryRecordCanBeReachedByItsNumber) {
  for (const SampleRecord& record : records()) {
    if (record.kind == 0) continue;
    Rectangle& place =
        record.kind == 1 ? w.b(ButtonNumber{record.button}) : w.madd(MessageNumber{record.message});
    const Rectangle before = place;
    place = {5, 9, 9, 5};  // on its head, where the test looks
    w.b(button::chronology_list).on = true;
    ask_as_it_is(7, 7);
    EXPECT_EQ(visible_texts(w.plot.page()), (std::vector<std::string>{record.title, record.lines.at(0)}));
    place = before;
  }
  EXPECT_EQ(desk_.log.str(), "");
}

// --- Carefully.

class CarefulHelp : public Help {
 protected:
  CarefulHelp() { w.careful.set(Mend::help, true); }
  void ask_in(ButtonNumber n, ButtonRange shown, const std::string& records) {
    folder_.write("Help.prn", "header\nheader\n" + records);
    w.plot.erase();
    w.msx = w.b(n).x1;
    w.msy = w.b(n).y2;
    vorn_help(w, shown);
  }
};

TEST_F(CarefulHelp, BelongsToTheButtonUnderTheCursor) {
  const std::string records = record(1, 94, 0, 0, "spline") + record(1, 105, 999, 0, "crossdating") +
                              record(0, 0, 0, 0, "the fall-back");
  ask(900, 560, records);
  EXPECT_EQ(w.mous, plain(button::spline_on));
  EXPECT_TRUE(desk_.reads("spline"));
  ask(2240, 195, records);
  EXPECT_TRUE(desk_.reads("crossdating"));
  ask(10, 2000, records);
  EXPECT_TRUE(desk_.reads("spline"));  // the first that has message number 0
}

TEST_F(CarefulHelp, BelongsToTheMessageUnderTheCursor) {
  ask(330, 560, record(1, 94, 999, 0, "the button") + record(2, 999, 22, 0, "the caption"));
  EXPECT_EQ(w.mous, 22);
  EXPECT_TRUE(desk_.reads("the caption"));
}

// On other pages the start menu's buttons are on too, unseen.
TEST_F(CarefulHelp, BelongsToWhatThePageShows) {
  const std::string records = record(1, 101, 999, 0, "the start menu's") +
                              record(1, 28, 999, 0, "the chooser's") + record(0, 0, 0, 0, "the fall-back");
  ask_in(button::choose_cores, button::crossdating, records);
  EXPECT_TRUE(desk_.reads("the chooser's"));
  ask_in(button::current_chronology, button::crossdating, records);
  EXPECT_TRUE(desk_.reads("the fall-back"));
  EXPECT_EQ(w.mous, 0);
}

TEST_F(CarefulHelp, AllLinesStandInTheBoxAndNoneOnAnother) {
  ask(10, 2000, record(0, 0, 0, 4, "title") + "one\ntwo\nthree\nfour\n");
  EXPECT_EQ(desk_.marks(), box_marks + std::string("text 15 25 88 1422 \"title\"\n"
                                                   "text 15 20 88 1480 \"one\"\n"
                                                   "text 15 20 88 1516 \"two\"\n"
                                                   "text 15 20 88 1552 \"three\"\n"
                                                   "text 15 20 88 1588 \"four\"\n"));
}

// Eighty of the widest letters are too wide for the box; forty lines are too many for the usual one.
TEST_F(CarefulHelp, LongTextsAreBrokenAndTheBoxGrowsWithThem) {
  std::string lines;
  for (int k = 0; k < 40; ++k) lines += std::string(80, 'W') + "\n";
  ask(10, 2000, record(0, 0, 0, 40, std::string(80, 'M')) + lines);
  const auto& marks = w.plot.page().marks();
  const Mark& box = marks.front();
  for (const Mark& mark : marks) {
    if (mark.kind != Mark::Kind::text) continue;
    const Box extent = text_extent(mark);
    EXPECT_GE(extent.left, box.points[0].x);
    EXPECT_LE(extent.right, box.points[1].x) << mark.writing;
    EXPECT_GE(extent.top, box.points[0].y);
    EXPECT_LE(extent.bottom, box.points[2].y) << mark.writing;
  }
  EXPECT_EQ(marks.back().writing, "...");
  EXPECT_GE(box.points[0].y, 0);
  EXPECT_LE(box.points[2].y, Page::height);
}

TEST_F(CarefulHelp, TextThatIsAboutSomethingElseIsNotShown) {
  desk_.screen.key(' ');  // "Read": the file ends without an end marker
  ask(900, 560, record(1, 105, 999, 0, "crossdating"));
  EXPECT_FALSE(desk_.reads("crossdating"));
  EXPECT_TRUE(desk_.reads("There is no help on this."));
}

// The page beneath is not drawn anew between two requests.
TEST_F(CarefulHelp, ABoxCoversTheOneBefore) {
  std::string records = record(1, 94, 999, 12, "long");
  for (int k = 0; k < 12; ++k) records += "line\n";
  folder_.write("Help.prn", "header\nheader\n" + records + record(0, 0, 0, 1, "short") + "line\n");
  w.msx = 900;
  w.msy = 560;
  const HelpShown first = vorn_help(w);
  EXPECT_EQ(first.lines, 12);
  w.msx = 10;
  EXPECT_EQ(vorn_help(w, button::start, first).lines, 12);
  EXPECT_EQ(vorn_help(w).lines, 6);
}

}  // namespace
}  // namespace vorn
