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

// --- Carefully.

class CarefulPrompts : public Prompts {
 protected:
  CarefulPrompts() { w.careful.set(Mend::prompts, true); }
};

TEST_F(CarefulPrompts, BackspaceRubsOutTheLastDigit) {
  EXPECT_EQ(number_after("13\b2\r"), 12);
  EXPECT_EQ(number_after("-5\b\b7\r"), 7);
  EXPECT_EQ(number_after("123456\b"), 7777);  // the sixth digit has ended it
  EXPECT_EQ(number_after("\b\b12345\b6\r"), 12346);
}

TEST_F(CarefulPrompts, WhatIsRubbedOutIsGoneFromThePage) {
  number_after("13\b2\r");
  EXPECT_EQ(desk_.screen.shown.size(), 5u);
  const Page& behind_the_backspace = desk_.screen.shown[3];
  EXPECT_EQ(marks_of(behind_the_backspace).substr(marks_of(behind_the_backspace).rfind("fill")),
            "fill 14 840 600 1000 600 1000 645 840 645\n"
            "outline 12 840 600 1000 600 1000 645 840 645\n"
            "text 15 30 848 612 \"1\"\n");
}

TEST_F(CarefulPrompts, AbandonedNumbersAndReturnAloneChangeNothingAndSaySo) {
  std::int32_t v = 7777;
  for (const char* keys : {"\r", "-\r", "4x", "123456", "12\x1B"}) {
    desk_.screen.type(keys);
    EXPECT_EQ(get_int(w, button::spline_years, v), Entry::left) << keys;
    EXPECT_EQ(v, 7777) << keys;
  }
  desk_.screen.type("4\r");
  EXPECT_EQ(get_int(w, button::spline_years, v), Entry::taken);
}

TEST_F(Prompts, UsuallyOnlyReturnTakesANumberAndAnythingElseAbandonsIt) {
  std::int32_t v = 7777;
  for (const auto& [keys, ended] : {std::pair{"4\r", Entry::taken},
                                    {"\r", Entry::empty},
                                    {"-\r", Entry::empty},
                                    {"4x", Entry::abandoned},
                                    {"4\b", Entry::abandoned},
                                    {"4\x1B", Entry::abandoned},
                                    {"123456", Entry::abandoned}}) {
    desk_.screen.type(keys);
    EXPECT_EQ(get_int(w, button::spline_years, v), ended) << keys;
  }
}

TEST_F(CarefulPrompts, BackspaceRubsOutTheLastCharacterOfAName) {
  EXPECT_EQ(name_after("AB\bC\r"), "AC");
  EXPECT_EQ(name_after("A\b\b\bBC\r"), "BC");
  EXPECT_EQ(name_after("AB\b\r"), "BC");  // one letter is no name: the old one stays
}

TEST_F(CarefulPrompts, AClickAndARequestForHelpAreNoCharactersOfAName) {
  desk_.screen.type("A");
  desk_.screen.click(10, 20);
  desk_.screen.key(Event::help);
  desk_.screen.type("B\r");
  get_str(w, name_button);
  EXPECT_EQ(w.b(name_button).label.trimmed(), "AB");
}

TEST_F(CarefulPrompts, EscapeBringsTheOldNameBack) {
  EXPECT_EQ(name_after("ABC\x1B"), "OLDNAME");
}

// The mend of Escape does it alone too, and nothing else.
TEST_F(Prompts, EscapeLeavesWhereItIsMended) {
  w.careful.set(Mend::escape, true);
  EXPECT_EQ(name_after("ABC\x1B"), "OLDNAME");
  EXPECT_EQ(name_after("AB\bC\r"), "AB\bC");
  std::int32_t v = 7777;
  desk_.screen.type("12\x1B");
  EXPECT_EQ(get_int(w, button::spline_years, v), Entry::left);
  desk_.screen.type("12x");
  EXPECT_EQ(get_int(w, button::spline_years, v), Entry::abandoned);
  EXPECT_EQ(v, 7777);
}

TEST_F(Prompts, UsuallyEscapeIsACharacterOfAName) {
  EXPECT_EQ(name_after("AB\x1B\r"), "AB\x1B");
}

}  // namespace
}  // namespace vorn
