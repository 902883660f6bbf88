#include "sessions/script.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vorn {
namespace {

using Kind = Statement::Kind;

Script parsed(const std::string& text) {
  std::istringstream in(text);
  return read_script(in);
}

// What is said of a script of one line; empty when it is valid.
std::string complaint(const std::string& line) {
  const Script script = parsed(line);
  return script.errors.empty() ? "" : script.errors[0].what;
}

TEST(ScriptReading, EveryStatement) {
  const Script script = parsed(
      "click 2300 50\nhelp 100 200\npress 105\nkey 27\ntype 12 34\nenter\npage a b.png\nexpect Quit\nrefuse  "
      "fail err =\n");
  ASSERT_TRUE(script.errors.empty());
  const auto& s = script.statements;
  ASSERT_EQ(s.size(), 9u);
  EXPECT_EQ(s[0].kind, Kind::click);
  EXPECT_EQ(s[0].x, 2300);
  EXPECT_EQ(s[0].y, 50);
  EXPECT_EQ(s[1].kind, Kind::help);
  EXPECT_EQ(s[1].y, 200);
  EXPECT_EQ(s[2].kind, Kind::press);
  EXPECT_EQ(s[2].number, 105);
  EXPECT_EQ(s[3].kind, Kind::key);
  EXPECT_EQ(s[3].number, 27);
  EXPECT_EQ(s[4].kind, Kind::type);
  EXPECT_EQ(s[4].text, "12 34");
  EXPECT_EQ(s[5].kind, Kind::enter);
  EXPECT_EQ(s[6].kind, Kind::page);
  EXPECT_EQ(s[6].text, "a b.png");
  EXPECT_EQ(s[7].kind, Kind::expect);
  EXPECT_EQ(s[8].kind, Kind::refuse);
  EXPECT_EQ(s[8].text, "fail err =");
  EXPECT_EQ(s[8].line, 9);
}

TEST(ScriptReading, CommentsAndEmptyLinesAreCountedButDoNothing) {
  const Script script =
      parsed("# a session\n\n   \t\n  press 105  # to the cross-dating screen\r\n\r\nenter");
  ASSERT_TRUE(script.errors.empty());
  ASSERT_EQ(script.statements.size(), 2u);
  EXPECT_EQ(script.statements[0].line, 4);
  EXPECT_EQ(script.statements[1].line, 6);
}

TEST(ScriptReading, AByteOrderMarkAtTheStartIsPassedOver) {
  const Script script = parsed("\xEF\xBB\xBF# a session\nenter\n");
  EXPECT_TRUE(script.errors.empty());
  EXPECT_EQ(script.statements.size(), 1u);
}

TEST(ScriptReading, AByteOrderMarkElsewhereIsNot) {
  const Script script = parsed(
      "enter\n\xEF\xBB\xBF"
      "enter\n");
  EXPECT_EQ(script.errors.size(), 1u);
  EXPECT_EQ(script.statements.size(), 1u);
}

TEST(ScriptReading, ANumberSignInsideAWordIsNoComment) {
  const Script script = parsed("expect core#7 here # the seventh");
  ASSERT_EQ(script.statements.size(), 1u);
  EXPECT_EQ(script.statements[0].text, "core#7 here");
}

TEST(ScriptReading, ATypedTextKeepsTheBlanksAtItsEnd) {
  EXPECT_EQ(parsed("type 12 \n").statements.at(0).text, "12 ");
  EXPECT_EQ(parsed("type  AB\r\n").statements.at(0).text, " AB");
  EXPECT_EQ(parsed("type 12   # years\n").statements.at(0).text, "12");
}

TEST(ScriptReading, ClicksMayLieOffThePage) {
  EXPECT_EQ(complaint("click -5 +3000"), "");
  EXPECT_EQ(complaint("click 100001 0"), "100001 is not in -100000 to 100000");
}

TEST(ScriptReading, NumbersMustBeWellFormed) {
  EXPECT_EQ(complaint("click 12x 5"), "\"12x\" is not a whole number");
  EXPECT_EQ(complaint("click 1.5 5"), "\"1.5\" is not a whole number");
  EXPECT_EQ(complaint("click + 5"), "\"+\" is not a whole number");
  EXPECT_EQ(complaint("click 99999999999999999999 5"), "\"99999999999999999999\" is not a whole number");
  EXPECT_EQ(complaint("click 5"), "expected a page position, X Y");
  EXPECT_EQ(complaint("help 5 6 7"), "expected a page position, X Y");
}

TEST(ScriptReading, ButtonsAreNumbered1To140) {
  EXPECT_EQ(complaint("press 1"), "");
  EXPECT_EQ(complaint("press 140"), "");
  EXPECT_EQ(complaint("press 0"), "0 is not in 1 to 140");
  EXPECT_EQ(complaint("press 141"), "141 is not in 1 to 140");
  EXPECT_EQ(complaint("press"), "expected the name or the number of a button");
  EXPECT_EQ(complaint("press 1st"), "\"1st\" is not a whole number");
}

TEST(ScriptReading, FiveAndSixAreNoKeys) {
  EXPECT_EQ(complaint("key 5"), "5 is no key (see click and help)");
  EXPECT_EQ(complaint("key 6"), "6 is no key (see click and help)");
  EXPECT_EQ(complaint("key 0"), "");
  EXPECT_EQ(complaint("key 255"), "");
  EXPECT_EQ(complaint("key 256"), "256 is not in 0 to 255");
  EXPECT_EQ(complaint("key -1"), "-1 is not in 0 to 255");
}

TEST(ScriptReading, PagesAreWrittenInFourForms) {
  for (const char* name : {"p.txt", "p.png", "p.svg", "p.pdf", "folder/P.PNG"}) {
    EXPECT_EQ(complaint(std::string("page ") + name), "") << name;
  }
  for (const char* name : {"p.jpg", "p", "png", ".png", "p.png.gz"}) {
    EXPECT_NE(complaint(std::string("page ") + name), "") << name;
  }
}

TEST(ScriptReading, TextsMustNotBeEmpty) {
  EXPECT_NE(complaint("type"), "");
  EXPECT_NE(complaint("expect"), "");
  EXPECT_NE(complaint("refuse   "), "");
  EXPECT_NE(complaint("page"), "");
  EXPECT_NE(complaint("enter now"), "");
}

TEST(ScriptReading, EveryErrorIsToldWithItsLine) {
  const Script script = parsed("enter\nclck 5 5\nEnter\nkey 5\n");
  ASSERT_EQ(script.errors.size(), 3u);
  EXPECT_EQ(script.errors[0].line, 2);
  EXPECT_EQ(script.errors[0].what, "\"clck\" is no statement");
  EXPECT_EQ(script.errors[1].line, 3);
  EXPECT_EQ(script.errors[2].line, 4);
}

TEST(ScriptReading, AButtonMayHaveItsName) {
  const auto number_of = [](std::string_view name) { return name == "quit" ? 102 : 0; };
  std::istringstream in("press quit  # the program\npress 7\npress leave\npress Quit\n");
  const Script script = read_script(in, number_of);
  ASSERT_EQ(script.statements.size(), 2u);
  EXPECT_EQ(script.statements[0].number, 102);
  EXPECT_EQ(script.statements[0].text, "quit");
  EXPECT_EQ(script.statements[1].number, 7);
  EXPECT_EQ(script.statements[1].text, "");
  ASSERT_EQ(script.errors.size(), 2u);
  EXPECT_EQ(script.errors[0].line, 3);
  EXPECT_EQ(script.errors[0].what, "there is no button \"leave\"");
  EXPECT_EQ(script.errors[1].line, 4);
  EXPECT_EQ(complaint("press quit"), "there is no button \"quit\"");  // where no names are known
}

}  // namespace
}  // namespace vorn
