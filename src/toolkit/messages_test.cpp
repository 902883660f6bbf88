#include "toolkit/messages.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "plot/plot.h"
#include "records/edit_format.h"
#include "support/desk.h"
#include "toolkit/clicks.h"

namespace vorn {
namespace {

constexpr const char* wiped_line = "fill 0 300 1550 2100 1550 2100 1760 300 1760\n";

class Messages : public ::testing::Test {
 protected:
  Desk desk_;
  Workspace& w = desk_.w;
  QueueScreen& screen_ = desk_.screen;
};

TEST_F(Messages, OutErrShowsTheTextAndReturnsAfterASingleKey) {
  screen_.key('q');
  screen_.key('r');
  out_err(w, "No file");
  ASSERT_EQ(screen_.shown.size(), 1u);
  EXPECT_EQ(marks_of(screen_.shown[0]), "text 15 25 310 1560 \"No file - hit key to continue\"\n");
  EXPECT_EQ(screen_.events_left(), 1u);
}

TEST_F(Messages, OutErrReturnsAfterASingleClick) {
  screen_.click(1, 2);
  out_err(w, "No file");
  EXPECT_EQ(screen_.events_left(), 0u);
}

TEST_F(Messages, ADismissedMessageIsWipedAndInkIsSetAgain) {
  screen_.key(' ');
  out_err(w, "No file");
  w.plot.messag("after", 1, 2);
  EXPECT_EQ(desk_.marks(), std::string("text 15 25 310 1560 \"No file - hit key to continue\"\n") +
                               wiped_line + "text 15 25 1 2 \"after\"\n");
  EXPECT_FALSE(desk_.reads("No file"));
}

TEST_F(Messages, WhatWasTypedBeforeAMessageAppearedDoesNotDismissIt) {
  screen_.key('x');
  out_err(w, "No file");
  EXPECT_EQ(screen_.times_forgotten, 1);
}

TEST_F(Messages, AMessageIsDrawnInInkWhateverColourWasSet) {
  w.plot.setclr(colour::light_blue);
  screen_.key(' ');
  out_err(w, "No file");
  EXPECT_EQ(desk_.marks().substr(0, 8), "text 15 ");
}

TEST_F(Messages, IoErrOfSuccessDrawsNothingWaitsForNothingAndIsFalse) {
  w.ios = status::ok;
  EXPECT_FALSE(io_err(w, "Open", "Help.prn"));
  EXPECT_EQ(desk_.marks(), "");
  EXPECT_EQ(screen_.shown.size(), 0u);
  EXPECT_EQ(desk_.log.str(), "");
}

TEST_F(Messages, IoErrShowsLabelNameAndStatusInSixColumns) {
  w.ios = status::no_such_file;
  screen_.key(' ');
  EXPECT_FALSE(io_err(w, "Open", "Help.prn    "));
  EXPECT_EQ(marks_of(screen_.shown.at(0)), "text 15 25 310 1560 \"OpenHelp.prn fail err =     2\"\n");
  EXPECT_EQ(desk_.log.str(), "OpenHelp.prn fail err =     2\n");
}

TEST_F(Messages, IoErrOfTheEndOfAFileShowsLikeAnyOtherStatusAndIsFalse) {
  w.ios = status::end_of_file;
  screen_.key(' ');
  EXPECT_FALSE(io_err(w, "Read", "Help.prn"));
  EXPECT_EQ(marks_of(screen_.shown.at(0)), "text 15 25 310 1560 \"ReadHelp.prn fail err =    -1\"\n");
  EXPECT_NE(desk_.marks().find(wiped_line), std::string::npos);
}

TEST_F(Messages, IoErrIsFalseAfterEveryFailureSoThatTheProgramGoesOn) {
  std::string told;
  std::size_t boxes = 0;
  for (const int status : {-2, -1, 1, 13, 21, 28, 4999, 5000, 5006, 5010, 5011, 999'999}) {
    w.ios = Status(status);
    screen_.key(' ');
    EXPECT_FALSE(io_err(w, "Write", "a.rwl")) << status;
    char line[64];
    std::snprintf(line, sizeof line, "Writea.rwl fail err =%6d", status);
    told += std::string(line) + "\n";
    EXPECT_EQ(desk_.log.str(), told) << status;
    ASSERT_EQ(screen_.shown.size(), ++boxes) << status;
    EXPECT_TRUE(desk_.reads(screen_.shown.back(), line)) << status;
  }
}

TEST_F(Messages, AStatusThatDoesNotFitItsColumnsIsAsterisks) {
  w.ios = Status(1'234'567);
  screen_.key(' ');
  io_err(w, "Open", "x");
  EXPECT_EQ(desk_.log.str(), "Openx fail err =******\n");
}

TEST_F(Messages, TheLogHasTheTextItselfOneLineEach) {
  screen_.key(' ');
  out_err(w, "Need more than one core");
  EXPECT_EQ(desk_.log.str(), "Need more than one core\n");
}

TEST_F(Messages, ControlCodesOfANameCannotSteerATerminal) {
  screen_.key(' ');
  out_err(w, "a\nb\x1B[2J\x7F");
  screen_.key(' ');
  out_err(w,
          "\x9B"
          "2J c\xC2\x9B"
          "2J");
  EXPECT_EQ(desk_.log.str(), "a\\x0Ab\\x1B[2J\\x7F\n\\x9B2J c\xC2\\x9B2J\n");
}

TEST_F(Messages, NamesOfOtherAlphabetsReachTheLogAsTheyAre) {
  // Its last letter has a byte that would be a control code.
  const std::string name = "\xC5\xBB\xC3\x93\xC5\x9A";
  screen_.key(' ');
  out_err(w, name);
  EXPECT_EQ(desk_.log.str(), name + "\n");
}

TEST_F(Messages, EscapePassesOverThoseThatFollowButNotTheirLog) {
  screen_.key(Event::escape);
  out_err(w, "first");
  const std::string marks = desk_.marks();
  out_err(w, "second");
  w.ios = status::not_a_number;
  EXPECT_FALSE(io_err(w, "Read", "a.rwl"));
  EXPECT_EQ(screen_.shown.size(), 1u);
  EXPECT_EQ(desk_.marks(), marks);
  EXPECT_EQ(desk_.log.str(), "first\nsecond\nReada.rwl fail err =  5010\n");
}

TEST_F(Messages, AfterAMessagePassedOverInkIsSetAsAfterAnyOther) {
  w.passing_over_messages = true;
  w.plot.setclr(colour::green);
  out_err(w, "not shown");
  w.plot.messag("after", 1, 2);
  EXPECT_EQ(desk_.marks(), "text 15 25 1 2 \"after\"\n");
}

TEST_F(Messages, TheNextWaitForAClickShowsMessagesAgain) {
  w.passing_over_messages = true;
  screen_.click(1, 1);
  mouse_click(w, {});
  screen_.key(' ');
  out_err(w, "shown");
  EXPECT_TRUE(desk_.reads(screen_.shown.back(), "shown"));
}

TEST_F(Messages, ClosingTheScreenAtAMessageEndsTheProgram) {
  EXPECT_THROW(out_err(w, "nobody there"), ProgramEnd);
  EXPECT_EQ(desk_.log.str(), "nobody there\n");
}

}  // namespace
}  // namespace vorn
