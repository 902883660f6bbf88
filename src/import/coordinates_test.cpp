// Points along a path: rings are the distances between them, from the bark inwards.
#include "import/coordinates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "import/coordinate_lines.h"
#include "support/imported_specimens.h"

namespace vorn {
namespace {

const std::string head =
    "#DENDRO Coordinate file\n#Imagefile C:\\scans\\A12.jpg\n#DPI 1200.000\n#All coordinates in "
    "millimeters\n";

std::string path(const std::string& points, const std::string& year = "DATED 1992\n") {
  return head + "SCALE 1\n" + year + points;
}

// Three, four, five: 0.5 mm from the first to the second; then 1.2 down, 2 to the right.
TEST(Coordinates, DistancesAreRingsFromTheBarkInwards) {
  const Imported one = taken(path("0.3,0.4\n0,0\n0,1.2\n2,1.2\n"));
  EXPECT_EQ(shown(one), "A12 1990: 2 1.2 0.5\n");
  EXPECT_EQ(doubts(one), "");
  EXPECT_EQ(one.layout, OtherLayout::coordinates);
  EXPECT_EQ(notes(one), "layout comments unit-said copy-form series years-descend");
}

TEST(Coordinates, TheNameOfTheFileComesBeforeThatOfThePicture) {
  const auto one = imported(path("0,0\n0,1\n"), {.this_year = 2026, .file = "beam7"});
  ASSERT_TRUE(one);
  EXPECT_EQ(shown(*one), "beam7 1992: 1\n");
  EXPECT_EQ(doubts(taken("#DENDRO\nDATED 1992\n0,0\n0,1\n")), "no-names:1");
}

// Three of a ring: 0 to 1 is measured, 1 to 4 is the gap, 4 to 6 the next ring.
TEST(Coordinates, WhatLiesInAGapIsLeftOut) {
  for (const std::string mark : {"", "D", "d "}) {
    const Imported one = taken(path("0,0\n" + mark + "0,1 0,4\n0,6\n"));
    EXPECT_EQ(shown(one), "A12 1991: 2 1\n") << mark;
    EXPECT_NE(notes(one).find("path-gap"), std::string::npos);
    EXPECT_EQ(doubts(one), "");
  }
}

TEST(Coordinates, RingsAreTakenWholeWherePointsPartThem) {
  const Imported one = taken(path("0,0\nW0,0.4\n0,1\nW 0,1.5\n0,3\n"));
  EXPECT_EQ(shown(one), "A12 1991: 2 1\n");
  EXPECT_NE(notes(one).find("wood-points"), std::string::npos);
  EXPECT_EQ(doubts(one), "");
}

TEST(Coordinates, TwoPointsInOnePlaceAreARingOfWidthZero) {
  EXPECT_EQ(series_of(path("0,0\n0,1\n0,1  #missing ring\n0,3\n")), "A12 1990: 2 0 1\n");
}

TEST(Coordinates, CommentsAndPithAreSaidAndNotKept) {
  const Imported one = taken(path("0,0 #bark\n0,1\n0,3 # scar; healed\n",
                                  "#C DATED 1992; PithCoordinates=1.5,9.5; DistanceToPith=6;\n"));
  EXPECT_EQ(shown(one), "A12 1991: 2 1\n");
  EXPECT_EQ(std::ranges::count(one.findings, kind("not-kept"), &FileFinding::kind), 2);
}

TEST(Coordinates, WithoutAYearTheyAreCountedFrom1) {
  for (const std::string year : {"", "DATED\n", "DATED unknown\n"}) {
    const Imported one = taken(path("0,0\n0,1\n0,3\n", year));
    EXPECT_EQ(shown(one), "A12 1: 2 1\n") << year;
    EXPECT_EQ(doubts(one), "undated:1") << year;
  }
}

// Words on the core may stand there with "#" or without; what they say beside its year is not asked for.
TEST(Coordinates, WordsOnTheCoreMayBeAny) {
  for (const std::string sign : {"#", ""}) {
    const Imported one =
        taken(path("0,0\n0,1\n0,3\n", sign + "C DATED 1992; Written=2013-01-02 11:12:13; Version=7;\n"));
    EXPECT_EQ(shown(one), "A12 1991: 2 1\n") << sign;
    EXPECT_EQ(doubts(one), "") << sign;
  }
  EXPECT_EQ(doubts(taken(path("0,0\n0,1\n", "Cores 3\n"))), "no-copy not-understood:6");
}

TEST(Coordinates, OfTwoYearsTheLastIsTaken) {
  const Imported one = taken(path("0,0\n0,1\n0,3\n", "#C DATED 1990\nDATED 1992\n"));
  EXPECT_EQ(shown(one), "A12 1991: 2 1\n");
  EXPECT_EQ(doubts(one), "dates-disagree:7");
  EXPECT_EQ(doubts(taken(path("0,0\n0,1\n", "#C DATED 1992\nDATED 1992\n"))), "");
}

// The path of a second file would go on from the pith of the first.
TEST(Coordinates, AFileHoldsOnePath) {
  const Imported one = taken(path("0,0\n0,1\n") + path("0,0\n0,3\n", "DATED 1700\n"));
  EXPECT_EQ(one.tucson, "");
  EXPECT_NE(doubts(one).find("not-understood:9"), std::string::npos) << doubts(one);
}

TEST(Coordinates, YearsBefore1AreWritten) {
  EXPECT_EQ(series_of(path("0,0\n0,1\n0,3\n", "DATED 0\n")), "A12 -1: 2 1\n");
  EXPECT_EQ(doubts(taken(path("0,0\n0,1\n0,3\n", "DATED -9999\n"))), "year-outside:9");
}

TEST(Coordinates, CommasMayStandForPoints) {
  for (const std::string points : {"0,5;0,5\n0,5;1,5\n0,5;3,5\n", "0,5,0,5\n0,5,1,5\n0,5,3,5\n",
                                   "0,5 0,5\n0,5 1,5\n0,5 3,5\n", "0,5\t0,5\n0,5\t1,5\n0,5\t3,5\n"}) {
    const Imported one = taken(path(points));
    EXPECT_EQ(shown(one), "A12 1991: 2 1\n") << points;
    EXPECT_NE(notes(one).find("decimal-comma"), std::string::npos) << points;
  }
  EXPECT_EQ(series_of(path("0,5,0,5\nD0,5,1,5 0,5,2,5\n0,5,3,5\n")), "A12 1991: 1 1\n");
}

// From a line that is not understood on no year is known: nothing is taken.
TEST(Coordinates, LinesThatAreNotUnderstoodLeaveNoCopy) {
  for (const std::string line : {"Q0,5\n", "0,5,7\n", "0,\n", "words\n", "W1,2 3,4\n", "D1,2\n", "1e9,4\n",
                                 "1,2,3,4,5\n", "1..2,3\n"}) {
    const Imported one = taken(path("0,0\n" + line + "0,1\n"));
    EXPECT_EQ(one.tucson, "") << line;
    EXPECT_EQ(doubts(one), "no-copy not-understood:8") << line;
  }
  EXPECT_EQ(doubts(taken(path("0,0\n"))), "no-copy");
}

TEST(Coordinates, ScalesOtherThanOneAreSaid) {
  EXPECT_EQ(doubts(taken(head + "SCALE 2\nDATED 1992\n0,0\n0,1\n")), "scale:5");
}

TEST(Coordinates, LinesMayEndAsTheyLike) {
  std::string text = path("0,0\n0,1\n0,3\n");
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2) text.insert(at, 1, '\r');
  EXPECT_EQ(series_of(text), "A12 1991: 2 1\n");
  std::ranges::replace(text, '\n', ' ');
  EXPECT_EQ(series_of("\xef\xbb\xbf" + text), "A12 1991: 2 1\n");
}

// Points along a straight path at random distances, with random gaps, come back as the distances.
TEST(Coordinates, RandomPathsComeBack) {
  std::uint32_t state = 7;
  const auto below = [&state](int end) {
    state = state * 1664525U + 1013904223U;
    return static_cast<int>((state >> 8U) % static_cast<std::uint32_t>(end));
  };
  for (int turn = 0; turn < 200; ++turn) {
    const int rings = 1 + below(60), year = below(4000) - 1500;
    std::string points = "0.000,1.000\n", meant;
    int at = 0;
    for (int k = 0; k < rings; ++k) {
      const int width = 1 + below(3000);
      at += width;
      char text[80];
      std::snprintf(text, sizeof text, " %g", width / 1000.0);
      meant.insert(0, text);
      std::snprintf(text, sizeof text, "%.3f,1.000", at / 1000.0);
      points += text;
      if (below(5) == 0) {
        at += below(500);
        std::snprintf(text, sizeof text, "  %.3f,1.000", at / 1000.0);
        points += text;
      }
      points += "\n";
    }
    const std::string first = std::to_string(year - rings + 1);
    ASSERT_EQ(series_of(path(points, "DATED " + std::to_string(year) + "\n")),
              "A12 " + first + ":" + meant + "\n");
  }
}

TEST(Coordinates, LongLinesAreNoPoints) {
  const Imported one = taken(path("0,0\n" + std::string(3'000'000, '1') + "\n0,1\n"));
  EXPECT_EQ(doubts(one), "no-copy not-understood:8");
  EXPECT_EQ(doubts(taken(path(std::string("0,0\n0,1\0,\n", 10)))),
            "no-copy not-understood:8 control-character:8");
}

}  // namespace
}  // namespace vorn
