#include "plot/page.h"

#include <gtest/gtest.h>

#include <sstream>

namespace vorn {
namespace {

std::string as_text(const Page& page) {
  std::ostringstream out;
  page.write_text(out);
  return out.str();
}

Mark text_mark(std::string writing) {
  return {.kind = Mark::Kind::text,
          .colour = colour::ink,
          .points = {{310, 1560}},
          .writing = std::move(writing),
          .height = 25};
}

TEST(PageText, WritesEveryKindOfMarkOnALineInDrawingOrder) {
  Page page;
  page.add({.kind = Mark::Kind::fill,
            .colour = colour::yellow,
            .points = {{10, 20}, {30, 20}, {30, 40}, {10, 40}}});
  page.add({.kind = Mark::Kind::outline, .colour = colour::light_red, .points = {{1, 2}, {3, 2}, {3, 4}}});
  page.add({.kind = Mark::Kind::line, .colour = colour::light_blue, .points = {{0, 0}, {2970, 2100}}});
  page.add(text_mark("Open"));
  page.add({.kind = Mark::Kind::label,
            .colour = colour::light_grey,
            .points = {{90, 875}},
            .writing = "S.Dev",
            .height = 20,
            .align = Align::centre,
            .angle = 90});
  EXPECT_EQ(as_text(page),
            "fill 14 10 20 30 20 30 40 10 40\n"
            "outline 12 1 2 3 2 3 4\n"
            "line 9 0 0 2970 2100\n"
            "text 15 25 310 1560 \"Open\"\n"
            "label 7 20 c 90 90 875 \"S.Dev\"\n");
}

TEST(PageText, LettersOfAlignment) {
  for (const auto& [align, letter] :
       {std::pair{Align::left, 'l'}, {Align::centre, 'c'}, {Align::right, 'r'}}) {
    Page page;
    Mark mark = text_mark("1.0");
    mark.kind = Mark::Kind::label, mark.align = align;
    page.add(mark);
    EXPECT_EQ(as_text(page), std::string("label 15 25 ") + letter + " 0 310 1560 \"1.0\"\n");
  }
}

TEST(PageText, NumbersCarryAtMostTwoDecimalsAndNeverAMinusZero) {
  Page page;
  page.add({.kind = Mark::Kind::line,
            .colour = colour::light_blue,
            .points = {{1.5, 2.25}, {3.999, 100}, {-0.001, 0.004}, {-0.25, 1200.10}, {-12, 1e9}}});
  EXPECT_EQ(as_text(page), "line 9 1.5 2.25 4 100 0 0 -0.25 1200.1 -12 1000000000\n");
}

TEST(PageText, EscapesQuotesBackslashesAndControlCharacters) {
  Page page;
  page.add(text_mark("a\"b\\c\x08\x1B\x7F"));
  EXPECT_EQ(as_text(page), "text 15 25 310 1560 \"a\\\"b\\\\c\\x08\\x1B\\x7F\"\n");
}

TEST(PageText, KeepsBytesAboveAsciiAsTheyAre) {
  Page page;
  page.add(text_mark("M\xFChle \xC3\xBC"));
  EXPECT_EQ(as_text(page), "text 15 25 310 1560 \"M\xFChle \xC3\xBC\"\n");
}

TEST(PageText, AnEmptyPageWritesNothing) {
  EXPECT_EQ(as_text(Page()), "");
}

TEST(PageBlanks, OnlyThoseAtTheEndAreDropped) {
  EXPECT_EQ(without_trailing_blanks("  Exit   "), "  Exit");
  EXPECT_EQ(without_trailing_blanks("    "), "");
  EXPECT_EQ(without_trailing_blanks(""), "");
}

TEST(Page, OfItsOwnSizeSaysItFirst) {
  Page page(600, 80);
  page.add({.kind = Mark::Kind::line, .colour = colour::hairline, .points = {{0, 0}, {600, 80}}});
  std::ostringstream out;
  page.write_text(out);
  EXPECT_EQ(out.str(), "size 600 80\nline 26 0 0 600 80\n");
  EXPECT_EQ(page.across(), 600);
  EXPECT_EQ(page.down(), 80);
}

}  // namespace
}  // namespace vorn
