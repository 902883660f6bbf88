#include "toolkit/prompts.h"

#include <gtest/gtest.h>

#include "plot/plot.h"
#include "support/desk.h"
#include "toolkit/button_table.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

class Prompts : public ::testing::Test {
 protected:
  Prompts() {
    set_up_graph(w);
    w.b(name_button).on = true;
    w.b(name_button).label = "OLDNAME";
  }
  // What a number of 7777 becomes when `keys` are typed.
  std::int32_t number_after(const std::string& keys) {
    std::int32_t v = 7777;
    desk_.screen.type(keys);
    get_int(w, button::spline_years, v);
    return v;
  }
  std::string name_after(const std::string& keys) {
    desk_.screen.type(keys);
    get_str(w, name_button);
    return std::string(w.b(name_button).label.trimmed());
  }
  static constexpr ButtonNumber name_button = button::mean_name;
  Desk desk_;
  Workspace& w = desk_.w;
};

TEST_F(Prompts, Minus12ReturnGivesMinus12) {
  EXPECT_EQ(number_after("-12\r"), -12);
}

TEST_F(Prompts, TheSixDigits1To6GiveNoChange) {
  EXPECT_EQ(number_after("123456"), 7777);
  EXPECT_EQ(desk_.screen.events_left(), 0u);
}

TEST_F(Prompts, OneTwoSpaceGivesNoChange) {
  EXPECT_EQ(number_after("12 "), 7777);
}

TEST_F(Prompts, ReturnAloneGivesZero) {
  EXPECT_EQ(number_after("\r"), 0);
}

TEST_F(Prompts, FiveDigitsAreTheMost) {
  EXPECT_EQ(number_after("99999\r"), 99999);
}

TEST_F(Prompts, FiveDigitsMayFollowAMinus) {
  EXPECT_EQ(number_after("-99999\r"), -99999);
  EXPECT_EQ(number_after("-123456"), 7777);
}

TEST_F(Prompts, AMinusAloneIsZeroAndTwoMinusesAreNoNumber) {
  EXPECT_EQ(number_after("-\r"), 0);
  EXPECT_EQ(number_after("--"), 7777);
}

TEST_F(Prompts, AMinusBehindADigitAbandonsTheEntry) {
  EXPECT_EQ(number_after("1-"), 7777);
}

TEST_F(Prompts, LeadingZerosCountAsDigits) {
  EXPECT_EQ(number_after("00012\r"), 12);
  EXPECT_EQ(number_after("000012"), 7777);
}

TEST_F(Prompts, BackspaceEscapeClickAndHelpAbandonANumber) {
  for (const int code : {Event::backspace, Event::escape, Event::click, Event::help, 0, 255}) {
    std::int32_t v = 7777;
    desk_.screen.key('1');
    desk_.screen.key(code);
    get_int(w, button::spline_years, v);
    EXPECT_EQ(v, 7777) << code;
  }
}

TEST_F(Prompts, ANumberFieldTurnsYellowAndShowsWhatIsTypedAtHeight30) {
  w.b(button::spline_years).lit = false;
  number_after("-5\r");
  EXPECT_EQ(desk_.marks(),
            "fill 14 840 600 1000 600 1000 645 840 645\n"
            "outline 12 840 600 1000 600 1000 645 840 645\n"
            "text 15 30 848 612 \"-\"\n"
            "text 15 30 848 612 \"-5\"\n"
            "text 15 30 848 612 \"-5\\x0D\"\n");
  EXPECT_TRUE(w.b(button::spline_years).lit);
}

TEST_F(Prompts, AfterANumberTextsAreOfTheUsualHeight) {
  number_after("1x");
  w.plot.erase();
  w.plot.messag("after", 1, 2);
  EXPECT_EQ(desk_.marks(), "text 15 25 1 2 \"after\"\n");
}

TEST_F(Prompts, EveryKeyOfANumberIsSeenBeforeTheNext) {
  number_after("12\r");
  ASSERT_EQ(desk_.screen.shown.size(), 3u);
  EXPECT_TRUE(Desk::reads(desk_.screen.shown[1], "1"));
  EXPECT_TRUE(Desk::reads(desk_.screen.shown[2], "12"));
}

TEST_F(Prompts, OneLetterThenReturnRestoresTheOldLabel) {
  EXPECT_EQ(name_after("A\r"), "OLDNAME");
}

TEST_F(Prompts, ReturnAloneRestoresTheOldLabel) {
  EXPECT_EQ(name_after("\r"), "OLDNAME");
}

TEST_F(Prompts, TwoLettersThenReturnGiveThoseTwoLetters) {
  EXPECT_EQ(name_after("AB\r"), "AB");
}

TEST_F(Prompts, TwelveLettersWithoutReturnAreTakenAsTheyAre) {
  EXPECT_EQ(name_after("ABCDEFGHIJKLM"), "ABCDEFGHIJKL");
  EXPECT_EQ(desk_.screen.events_left(), 1u);
}

TEST_F(Prompts, ReturnAsTheTwelfthKeyLeavesElevenLetters) {
  EXPECT_EQ(name_after("ABCDEFGHIJK\r"), "ABCDEFGHIJK");
}

TEST_F(Prompts, BackspaceIsStoredAsACharacter) {
  EXPECT_EQ(name_after("AB\bC\r"), "AB\bC");
}

TEST_F(Prompts, AClickIsACharacterOfANameToo) {
  desk_.screen.key('A');
  desk_.screen.click(10, 20);
  desk_.screen.key(Event::enter);
  get_str(w, name_button);
  EXPECT_EQ(w.b(name_button).label.trimmed(), "A\x05");
  EXPECT_EQ(w.msx, 0);  // of the Return, which came last
}

TEST_F(Prompts, ANameIsDrawnFromTheVeryEdgeOfItsButton) {
  name_after("AB\r");
  EXPECT_EQ(desk_.marks(),
            "fill 14 2240 90 2560 90 2560 135 2240 135\n"
            "outline 12 2240 90 2560 90 2560 135 2240 135\n"
            "text 15 25 2240 102 \"A\"\n"
            "text 15 25 2240 102 \"AB\"\n"
            "text 15 25 2240 102 \"AB\\x0D\"\n");
}

}  // namespace
}  // namespace vorn
