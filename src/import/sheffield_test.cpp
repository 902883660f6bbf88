// Sheffield files: one datum a line.
#include "import/sheffield.h"

#include <gtest/gtest.h>

#include <string>

#include "support/imported_specimens.h"

namespace vorn {
namespace {

// Header lines 6 to 14 in their order, then what was measured.
std::string header(const std::string& first_five, const std::string& variable = "D") {
  return first_five + "12\nY\nme (2026)\nC\n?\n?\nM\nQUSP\n?\n" + variable + "\n";
}

std::string dated(const std::string& rings, const std::string& start, const std::string& values) {
  return header("Hall beam 3\n" + rings + "\nA\n" + start + "\nR\n") + values;
}

TEST(Sheffield, ValuesAreHundredthsFromTheFirstYearOn) {
  const Imported one = taken(dated("3", "11450", "125\n98\n210\nR\n"));
  EXPECT_EQ(shown(one), "Halbeam3 1450: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(one), "");
  EXPECT_EQ(one.layout, OtherLayout::sheffield);
  EXPECT_EQ(notes(one), "layout unit-said taken-as copy-form series not-kept");
}

TEST(Sheffield, WhatTheHeaderSaysIsSaidAndNotKept) {
  for (const FileFinding& finding : taken(dated("1", "11450", "125\nR\n")).findings) {
    if (finding.kind != kind("not-kept")) continue;
    EXPECT_EQ(
        finding.words,
        "what the file says of it is not kept: sapwood or series \"12\", edge \"Y\", comment \"me (2026)\", "
        "pith \"C\", period \"M\", species \"QUSP\"");
  }
}

// 10,001 is the year 1; 10,000 the year before it.
TEST(Sheffield, YearsBefore1AreCountedWithAYear0) {
  EXPECT_EQ(series_of(dated("2", "10000", "125\n98\n")), "Halbeam3 0: 1.25 0.98\n");
  EXPECT_EQ(series_of(dated("2", "9900", "125\n98\n")), "Halbeam3 -100: 1.25 0.98\n");
  EXPECT_EQ(doubts(taken(dated("2", "1850", "125\n98\n"))), "dates-disagree:4");
}

TEST(Sheffield, RelativeSeriesKeepTheirYears) {
  const Imported one = taken(header("A\n2\nR\n1\nR\n") + "125\n98\nR\n");
  EXPECT_EQ(shown(one), "A 1: 1.25 0.98\n");
  EXPECT_EQ(doubts(one), "undated:3");
  EXPECT_EQ(series_of(header("A\n2\nR\n10001\nR\n") + "125\n98\nR\n"), "A 1: 1.25 0.98\n");
}

TEST(Sheffield, CountsOfMeansAreSaidAndNotTaken) {
  const Imported one = taken(header("Site\n3\nA\n11450\nW\n") + "125\n98\n210\nR\n2\n2\n1\n");
  EXPECT_EQ(shown(one), "Site 1450: 1.25 0.98 2.1\n");
  EXPECT_NE(notes(one).find("mean-series"), std::string::npos);
  EXPECT_NE(notes(one).find("counts"), std::string::npos);
  EXPECT_EQ(doubts(one), "");
}

TEST(Sheffield, NumbersOfRingsAgainstTheValues) {
  EXPECT_EQ(doubts(taken(dated("4", "11450", "125\n98\n210\nR\n"))), "short-data:2");
  const Imported more = taken(dated("2", "11450", "125\n98\n210\nR\n"));
  EXPECT_EQ(shown(more), "Halbeam3 1450: 1.25 0.98\n");
  EXPECT_EQ(doubts(more), "behind-length:18");
}

TEST(Sheffield, OtherMeasuresAreSaid) {
  EXPECT_EQ(doubts(taken(header("A\n2\nA\n11450\nR\n", "E") + "125\n98\n")), "variable:15");
  const Imported densities = taken(header("A\n2\nA\n11450\nR\n", "A") + "825\n798\n");
  EXPECT_EQ(densities.tucson, "");
  EXPECT_EQ(doubts(densities), "no-copy no-widths:15");
  // Two a ring: nothing is said of values that are taken.
  EXPECT_EQ(doubts(taken(header("A\n2\nA\n11450\nR\n", "S") + "82\n79\n50\n61\n")), "no-copy no-widths:15");
}

TEST(Sheffield, HeadersMayHaveALineMore) {
  const Imported one = taken("A\n3\nA\n11450\nR\n0\nY\nme\nC\n?\n?\n?\nM\nQUSP\n?\nD\n125\n98\n210\nR\n");
  EXPECT_EQ(shown(one), "A 1450: 1.25 0.98 2.1\n");
}

TEST(Sheffield, WhatAShorterHeaderSaysMayBeMistaken) {
  const Imported one = taken("A\n3\nA\n11450\nR\n0\nY\nme\nM\nQUSP\nD\n125\n98\n210\nR\n");
  EXPECT_EQ(shown(one), "A 1450: 1.25 0.98 2.1\n");
  EXPECT_NE(notes(one).find("header"), std::string::npos);
  EXPECT_EQ(notes(taken(dated("3", "11450", "125\n98\n210\nR\n"))).find("header"), std::string::npos);
}

// Where a single series ends no numbers of series follow: they are widths that nothing took.
TEST(Sheffield, NumbersBehindASingleSeriesAreLost) {
  const std::string one = dated("3", "11450", "125\n98\n210\nR\n");
  EXPECT_NE(doubts(taken(one + one)).find("behind-end:21"), std::string::npos);
  EXPECT_EQ(doubts(taken(dated("3", "11450", "125\n\n98\n210\nR\n"))), "short-data:2 behind-end:18");
}

TEST(Sheffield, OtherTextsAreNone) {
  EXPECT_FALSE(imported("A\nB\nA\n11450\nR\n", {2026}));
  EXPECT_FALSE(imported("A\n3\nX\n11450\nR\n", {2026}));
  EXPECT_FALSE(imported("A\n3\nA\n11450\nR\n", {2026})) << "no values";
  EXPECT_FALSE(imported(header("A\n0\nA\n11450\nR\n") + "125\n", {2026}));
  EXPECT_FALSE(imported(header("A\n99999999999999999999\nA\n11450\nR\n") + "125\n", {2026}));
}

TEST(Sheffield, WordsAmongTheValuesEndThem) {
  const Imported one = taken(dated("3", "11450", "125\nhm\n210\nR\n"));
  EXPECT_EQ(shown(one), "Halbeam3 1450: 1.25\n");
  EXPECT_EQ(doubts(one), "short-data:2 text-behind-end:17 behind-end:18");
}

}  // namespace
}  // namespace vorn
