// The files of examples/ are those that the generator writes, and carry the errors that PLANTED.md tells of.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "example_files.h"
#include "example_layouts.h"
#include "made_up_trees.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn::examples {
namespace {

namespace fs = std::filesystem;

const fs::path committed = source_folder() / "examples";
// What stands in examples/ beside the generator's files.
const std::set<std::string> written_by_hand = {"README.md", "Help.prn", "demo.vrs"};

// The number of the first line in which two texts differ, 0 when they are the same.
int first_difference(const std::string& a, const std::string& b) {
  int line = 1;
  for (std::size_t i = 0; i < a.size() || i < b.size(); ++i) {
    if (i >= a.size() || i >= b.size() || a[i] != b[i]) return line;
    if (a[i] == '\n') ++line;
  }
  return 0;
}

TEST(Examples, TheGeneratorWritesTheCommittedFilesToTheByte) {
  ScratchFolder scratch;
  ASSERT_EQ(std::system("\"" MAKE_EXAMPLES "\" made"), 0);
  int compared = 0;
  for (const auto& entry : fs::directory_iterator("made")) {
    const std::string name = entry.path().filename().string();
    ASSERT_TRUE(fs::exists(committed / name)) << name << " is not committed";
    EXPECT_EQ(first_difference(ScratchFolder::read(entry.path().string()),
                               ScratchFolder::read((committed / name).string())),
              0)
        << "the first line that differs in " << name;
    ++compared;
  }
  EXPECT_EQ(compared, static_cast<int>(example_files().size()));
}

TEST(Examples, NothingElseStandsAmongThem) {
  const auto made = example_files();
  for (const auto& entry : fs::directory_iterator(committed)) {
    const std::string name = entry.path().filename().string();
    EXPECT_TRUE(made.contains(name) || written_by_hand.contains(name)) << name;
  }
}

TEST(Examples, TheDemonstrationPlaysToItsEndAndLeavesReportsAndPictures) {
  ScratchFolder scratch;
  fs::copy(committed, scratch.path());
  ASSERT_EQ(std::system("\"" VORN_REPLAY "\" demo.vrs"), 0);
  for (const char* written :
       {"Stats.prn", "Corr.prn", "Index.prn", "nowhere.RWW", "1-start.png", "3-lags.svg", "6-best-fit.pdf"}) {
    EXPECT_TRUE(fs::exists(written) && fs::file_size(written) > 0) << written;
  }
  // Core 7 as its years stand in the report once the lost ring is back.
  EXPECT_NE(ScratchFolder::read("Stats.prn").find("NOW07      1740   2014"), std::string::npos);
}

// A site without noise of its own, so that the same year gives the same width whoever measures it.
Series measured(Planted planted, int year) {
  const Site site = {5, 1.0, 0.0, {{"ONE", 1900, 1999, planted, year}}};
  return measure(site, climate(1, 200), 1850).front();
}

TEST(PlantedErrors, ALostRingIsGoneAndWhatFollowsIsDatedAYearTooEarly) {
  const Series right = measured(Planted::nothing, 0), wrong = measured(Planted::lost_ring, 1950);
  EXPECT_EQ(wrong.first, 1900);
  EXPECT_EQ(wrong.last(), 1998);
  EXPECT_EQ(wrong.widths[49], right.widths[49]);  // 1949 stands where it should
  EXPECT_EQ(wrong.widths[50], right.widths[51]);  // 1951 is taken for 1950
  EXPECT_EQ(wrong.widths.back(), right.widths.back());
}

TEST(PlantedErrors, AFalseRingMakesTwoOfOneAndWhatFollowsIsDatedAYearTooLate) {
  const Series right = measured(Planted::nothing, 0), wrong = measured(Planted::false_ring, 1950);
  EXPECT_EQ(wrong.first, 1900);
  EXPECT_EQ(wrong.last(), 2000);
  EXPECT_EQ(wrong.widths[49], right.widths[49]);
  EXPECT_EQ(wrong.widths[50] + wrong.widths[51], right.widths[50]);
  EXPECT_EQ(wrong.widths[52], right.widths[51]);
}

TEST(PlantedErrors, AShiftedSeriesKeepsItsRingsAndIsDatedSevenYearsTooLate) {
  const Series right = measured(Planted::nothing, 0), wrong = measured(Planted::shifted, 0);
  EXPECT_EQ(wrong.first, 1907);
  EXPECT_EQ(wrong.widths, right.widths);
}

// The layouts, laid beside lines typed by hand.
const std::vector<Series> two_cores = {{"AB", 1953, {1000, missing_ring, 20, 30, 40, 50, 60, 70}},
                                       {"OLD", -1002, {110, 120, 130, 140}}};

TEST(ExampleLayouts, TucsonRawStartsTheSecondLineAtTheDecadeAndEndsInItsMarker) {
  EXPECT_EQ(tucson_raw(two_cores, TucsonUnit::thousandths),
            "AB      1953  1000 -9990    20    30    40    50    60\n"
            "AB      1960    70 -9999\n"
            "OLD    -1002   110   120\n"
            "OLD    -1000   130   140 -9999\n");
  EXPECT_EQ(tucson_raw({two_cores[1]}, TucsonUnit::hundredths),
            "OLD    -1002    11    12\n"
            "OLD    -1000    13    14   999\n");
}

TEST(ExampleLayouts, HeidelbergCompletesItsLastLineWithZeros) {
  EXPECT_EQ(heidelberg({two_cores[0]}, "Here"),
            "HEADER:\nKeyCode=AB\nLocation=Here\nUnit=1/1000 "
            "mm\nDateBegin=1953\nDateEnd=1960\nLength=8\nDATA:Tree\n"
            "  1000 -9990    20    30    40    50    60    70     0     0\n");
}

TEST(ExampleLayouts, CompactCarriesItsEditFormatInColumns72To79) {
  const std::string text = compact({two_cores[0]});
  EXPECT_EQ(text.substr(0, 29), "       8=N    1953=I AB      ");
  EXPECT_EQ(text.substr(71, 9), "(19F4.0)\n");
  EXPECT_EQ(text.substr(80), "1000-999  20  30  40  50  60  70\n");
}

TEST(ExampleLayouts, TucsonIndexFillsTheDecadeAroundItsYears) {
  EXPECT_EQ(tucson_index("SITE", 1958, {{900, 3}, {1010, 4}, {1100, 12}}),
            "SITE  19589990  09990  09990  09990  09990  09990  09990  09990  0 900  31010  4  STD\n"
            "SITE  19601100 129990  09990  09990  09990  09990  09990  09990  09990  09990  0  STD\n");
}

TEST(ExampleLayouts, TwoColumnsHoldTheYearInColumns15To20AndMillimetresBehind) {
  EXPECT_EQ(two_column({"AB", 0, {1234, missing_ring, 56}}),
            "AB                 0  1.234\n"
            "AB                 1 -9.990\n"
            "AB                 2  0.056\n");
}

}  // namespace
}  // namespace vorn::examples
