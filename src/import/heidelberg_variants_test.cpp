// Heidelberg files that are meant otherwise than the program's own reader takes them.
#include "import/heidelberg_variants.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/imported_specimens.h"
#include "support/places.h"

namespace vorn {
namespace {

const std::string plain =
    "HEADER:\nKeyCode=CORE01\nUnit=1/100 mm\nDateBegin=1990\nLength=12\nDATA:Tree\n"
    "   101   102   103   104   105   106   107   108   109   110\n   111   112     0     0     0     0     "
    "0     0     0     0\n";

constexpr const char* as_plain = "CORE01 1990: 1.01 1.02 1.03 1.04 1.05 1.06 1.07 1.08 1.09 1.1 1.11 1.12\n";

std::string file(const std::string& keys, const std::string& data) {
  return "HEADER:\n" + keys + data;
}

TEST(Heidelberg, FilesThatTheProgramReadsAreLeftToIt) {
  EXPECT_FALSE(imported(plain, {2026}));
  EXPECT_FALSE(imported(plain + plain, {2026}));
  EXPECT_FALSE(imported("HEADER:\nKeyCode=A\n", {2026})) << "without data";
  EXPECT_FALSE(imported("HEADER:\n", {2026}));
}

TEST(Heidelberg, ValuesMayStandAnywhere) {
  std::string one_a_line = plain;
  const std::size_t data = one_a_line.find("   101");
  for (std::size_t k = data; k + 1 < one_a_line.size(); ++k) {
    if (one_a_line[k] != ' ' && one_a_line[k + 1] == ' ') one_a_line[k + 1] = '\n';
  }
  EXPECT_EQ(series_of(one_a_line), as_plain);
  EXPECT_EQ(doubts(taken(one_a_line)), "");
  EXPECT_EQ(series_of(file("KeyCode=A\nDateBegin=1990\nLength=2\nUnit=mm\n", "DATA:Tree\n1.25 0.75\n")),
            "A 1990: 1.25 0.75\n");
  EXPECT_EQ(series_of(file("keycode=A\nDateBegin=1990\nLength=3\nUnit=1/1000 mm\n",
                           "DATA:Tree\n100000200000   100\n")),
            "A 1990: 100 200 0.1\n")
      << "values that touch are parted by columns";
}

TEST(Heidelberg, KeysMayBeWrittenOtherwise) {
  EXPECT_EQ(
      series_of(
          "\n header :\nkeycode = core 1\nunit= 1/100mm\nDATEBEGIN =1990\nlength= 2\ndata: tree\n 101 102\n"),
      "core_1 1990: 1.01 1.02\n");
  EXPECT_EQ(series_of("\xef\xbb\xbf" + plain), as_plain);
}

TEST(Heidelberg, PairsAndQuadruplesHaveTheirWidthFirst) {
  const Imported pairs = taken(file("KeyCode=A\nDateEnd=1992\nLength=3\nUnit=1/100 mm\n",
                                    "DATA:Double\n   125     1   130     2   120     2     0     0\n"));
  EXPECT_EQ(shown(pairs), "A 1990: 1.25 1.3 1.2\n");
  EXPECT_EQ(doubts(pairs), "");
  EXPECT_EQ(notes(pairs), "layout unit-said copy-form series trailing-zeros counts");
  EXPECT_EQ(series_of(file("KeyCode=A\nDateBegin=1990\nLength=2\nUnit=1/100 mm\n",
                           "DATA:Quadro\n   125     1     0     0   130     2     1     1\n")),
            "A 1990: 1.25 1.3\n");
  EXPECT_EQ(series_of(file("KeyCode=A\nDateBegin=1990\nLength=2\nUnit=1/100 mm\n",
                           "DATA:Chrono\n125 1 0 0\n130 2 1 1\n")),
            "A 1990: 1.25 1.3\n");
  EXPECT_EQ(series_of(file("KeyCode=A\nDateBegin=1990\nUnit=1/100 mm\n",
                           "DATA:HalfChrono\n125 1\n0 1\n130 2\n0 0\n")),
            "A 1990: 1.25 0 1.3\n")
      << "a ring of width 0 with a count";
}

TEST(Heidelberg, KindsOfDataThatTheValuesDoNotHaveAreSaid) {
  const Imported plain_values = taken(
      file("KeyCode=A\nDateBegin=1990\nLength=3\nUnit=1/100 mm\n", "DATA:Double\n   125   126   130\n"));
  EXPECT_EQ(shown(plain_values), "A 1990: 1.25 1.26 1.3\n");
  EXPECT_EQ(doubts(plain_values), "data-kind:6");
  const Imported pairs =
      taken(file("KeyCode=A\nDateBegin=1990\nLength=2\nUnit=1/100 mm\nDataFormat=HalfChrono\n",
                 "DATA:Tree\n   125     1   130     2\n"));
  EXPECT_EQ(shown(pairs), "A 1990: 1.25 1.3\n");
  EXPECT_EQ(doubts(pairs), "numbers-a-year:7");
  EXPECT_EQ(doubts(taken(file("KeyCode=A\nDateBegin=1990\nUnit=mm\n", "DATA:Triple\n 1.25 1\n"))),
            "data-kind:5");
}

TEST(Heidelberg, YearsAreCompletedOrCountedFrom1) {
  EXPECT_EQ(series_of(file("KeyCode=A\nDateEnd=1992\nUnit=mm\n", "DATA:Tree\n1.25 1.5 1\n")),
            "A 1990: 1.25 1.5 1\n");
  EXPECT_EQ(
      series_of(file("KeyCode=A\nDateBegin=1990\nDateEnd=1992\nUnit=mm\n", "DATA:Tree\n1.25 1.5 1 0 0\n")),
      "A 1990: 1.25 1.5 1\n");
  const Imported undated = taken(file("KeyCode=A\nLength=2\nUnit=mm\n", "DATA:Tree\n1.25 1.5\n"));
  EXPECT_EQ(shown(undated), "A 1: 1.25 1.5\n");
  EXPECT_EQ(doubts(undated), "undated:1");
}

TEST(Heidelberg, DatesThatDoNotAgreeAreSaid) {
  const Imported no_year_0 =
      taken(file("KeyCode=A\nUnit=mm\nDateBegin=-2\nDateEnd=2\nLength=4\n", "DATA:Tree\n1 2 3 4\n"));
  EXPECT_EQ(shown(no_year_0), "A -1: 1 2 3 4\n");
  EXPECT_EQ(doubts(no_year_0), "dates-disagree:1");
  const Imported wrong_length =
      taken(file("KeyCode=A\nUnit=mm\nDateBegin=1990\nDateEnd=1993\nLength=3\n", "DATA:Tree\n1 2 3 4\n"));
  EXPECT_EQ(shown(wrong_length), "A 1990: 1 2 3 4\n");
  EXPECT_EQ(doubts(wrong_length), "dates-disagree:1");
  const Imported wrong_end =
      taken(file("KeyCode=A\nUnit=mm\nDateBegin=1990\nDateEnd=1999\nLength=4\n", "DATA:Tree\n1 2 3 4\n"));
  EXPECT_EQ(shown(wrong_end), "A 1990: 1 2 3 4\n");
  EXPECT_EQ(doubts(wrong_end), "dates-disagree:1");
}

TEST(Heidelberg, LengthsAgainstTheValues) {
  const Imported few = taken(file("KeyCode=A\nUnit=mm\nDateBegin=1990\nLength=5\n", "DATA:Tree\n1 2 3\n"));
  EXPECT_EQ(shown(few), "A 1990: 1 2 3\n");
  EXPECT_EQ(doubts(few), "short-data:6");
  const Imported many = taken(file("KeyCode=A\nUnit=mm\nDateBegin=1990\nLength=2\n", "DATA:Tree\n1 2 3\n"));
  EXPECT_EQ(shown(many), "A 1990: 1 2\n");
  EXPECT_EQ(doubts(many), "behind-length:6");
  const Imported zeros = taken(file("KeyCode=A\nUnit=mm\nDateBegin=1990\n", "DATA:Tree\n1 0 3 0 0\n"));
  EXPECT_EQ(shown(zeros), "A 1990: 1 0 3\n");
  EXPECT_EQ(notes(zeros), "layout unit-said copy-form series zeros trailing-zeros");
}

TEST(Heidelberg, UnitsMayBeSaidOtherwise) {
  const auto with = [](const std::string& unit) {
    return series_of(file("KeyCode=A\nUnit=" + unit + "\nDateBegin=1990\n", "DATA:Tree\n 150 20\n"));
  };
  EXPECT_EQ(with("1/100 mm"), "A 1990: 1.5 0.2\n");
  EXPECT_EQ(with("0.01mm"), "A 1990: 1.5 0.2\n");
  EXPECT_EQ(with("100"), "A 1990: 1.5 0.2\n");
  EXPECT_EQ(with("1/1000 mm"), "A 1990: 0.15 0.02\n");
  EXPECT_EQ(with("micron"), "A 1990: 0.15 0.02\n");
  EXPECT_EQ(with("1/10 mm"), "A 1990: 15 2\n");
  EXPECT_EQ(with("mm"), "A 1990: 150 20\n");
  EXPECT_EQ(with("ell"), "A 1990: 1.5 0.2\n");
  EXPECT_EQ(doubts(taken(file("KeyCode=A\nUnit=ell\nDateBegin=1990\n", "DATA:Tree\n 150 20\n"))),
            "unit-by-mean:1");
}

TEST(Heidelberg, NamesMayBeLongOrMissing) {
  const Imported one = taken(file("KeyCode=Stra\xdf"
                                  "e 17-0001\nUnit=mm\nDateBegin=1990\n",
                                  "DATA:Tree\n 1.5 2\n") +
                             file("Unit=mm\nDateBegin=1990\n", "DATA:Tree\n 1.5 2\n"));
  EXPECT_EQ(one.series[0].name,
            "Stra\xc3\x9f"
            "e 17-0001");
  EXPECT_EQ(one.series[0].taken_as, "St170001");
  EXPECT_EQ(one.series[1].name, "S2");
  EXPECT_EQ(doubts(one), "no-names:7");
}

TEST(Heidelberg, WhatIsNotTakenIsSaid) {
  const Imported one =
      taken(file("KeyCode=A\nUnit=mm\nDateBegin=1990\nMissingRingsBefore=3\nMissingRingsAfter=0\n",
                 "DATA:Tree\n1.5 x 2\n") +
            file("KeyCode=B\nDataType=Maximum density\nDateBegin=1990\n", "DATA:Tree\n1 2\n") +
            file("KeyCode=C\nDateBegin=1990\n", ""));
  EXPECT_EQ(shown(one), "A 1990: 1.5 - 2\n");
  EXPECT_EQ(doubts(one), "no-number:8 no-widths:9 cut-header:15");
  EXPECT_NE(notes(one).find("missing-outside"), std::string::npos);
}

// --- Real files, where they are there

std::string real(const std::string& name) {
  std::ifstream input(real_files_folder() / name, std::ios::binary);
  std::ostringstream all;
  all << input.rdbuf();
  return all.str();
}

TEST(HeidelbergReal, FilesAreReadAsTheyAreMeant) {
  if (real("uakk0530.fh").empty()) GTEST_SKIP() << "the real files are not here";
  EXPECT_FALSE(imported(real("bababa.fh"), {2026})) << "the program's own reader takes them";
  EXPECT_FALSE(imported(real("set01.fh"), {2026}));
  const Imported pairs = taken(real("uakk0530.fh"));
  ASSERT_EQ(pairs.series.size(), 1u);
  EXPECT_EQ(pairs.series[0].first, 987);
  ASSERT_EQ(pairs.series[0].widths.size(), 105u);
  EXPECT_EQ(pairs.series[0].widths[2], 2.64);
  EXPECT_EQ(pairs.series[0].widths[104], 0.46);
  EXPECT_EQ(doubts(pairs), "unit-by-mean:1");
}

TEST(HeidelbergReal, QuadruplesStandBesidePlainValues) {
  if (real("doel1.fh").empty()) GTEST_SKIP() << "the real files are not here";
  const Imported one = taken(real("doel1.fh"));
  ASSERT_EQ(one.series.size(), 10u);
  EXPECT_EQ(one.series[0].first, 1158);
  EXPECT_EQ(one.series[0].widths.size(), 135u);
  EXPECT_EQ(one.series[3].widths[1], 1.17);
}

TEST(HeidelbergReal, ASeriesAcrossYear0HasItsLastYear) {
  if (real("melolontha_4yr.fh").empty()) GTEST_SKIP() << "the real files are not here";
  const Imported one = taken(real("melolontha_4yr.fh"));
  ASSERT_EQ(one.series.size(), 5u);
  EXPECT_EQ(one.series[0].first, -18);
  EXPECT_EQ(one.series[0].first + static_cast<int>(one.series[0].widths.size()) - 1, 121);
}

}  // namespace
}  // namespace vorn
