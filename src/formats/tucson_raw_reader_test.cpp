#include <gtest/gtest.h>

#include "formats/tucson_raw.h"
#include "support/format_bench.h"

namespace vorn {
namespace {

class TucsonRawReader : public FormatBench {
 protected:
  void read(const std::string& contents) {
    current_file("site.rwl", contents);
    read_raw(w);
  }

  // A core of 1953 to 1990: widths 101 to 138, and the mark.
  static std::string core_1953_to_1990(int mark) {
    return raw_line("CORE01", 1953, {101, 102, 103, 104, 105, 106, 107}) +
           raw_line("CORE01", 1960, {108, 109, 110, 111, 112, 113, 114, 115, 116, 117}) +
           raw_line("CORE01", 1970, {118, 119, 120, 121, 122, 123, 124, 125, 126, 127}) +
           raw_line("CORE01", 1980, {128, 129, 130, 131, 132, 133, 134, 135, 136, 137}) +
           raw_line("CORE01", 1990, {138, mark});
  }
};

TEST_F(TucsonRawReader, Series1953To1990EndingIn999HasThirtyEightValuesInHundredths) {
  read(core_1953_to_1990(999));
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.fy(1), 1953);
  EXPECT_EQ(w.ly(1), 1990);
  EXPECT_EQ(w.yr(1), 38);
  EXPECT_EQ(w.ad(1), 1);
  EXPECT_EQ(w.ad(2), 39);
  for (int k = 1; k <= 38; ++k) EXPECT_EQ(w.x(k), (100 + k) / 100.0) << k;
  EXPECT_EQ(values(w.xok, 1), std::vector<bool>(38, true));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(TucsonRawReader, TheSameEndingInMinus9999IsInThousandths) {
  read(core_1953_to_1990(-9999));
  ASSERT_EQ(w.yr(1), 38);
  for (int k = 1; k <= 38; ++k) EXPECT_EQ(w.x(k), (100 + k) / 1000.0) << k;
}

TEST_F(TucsonRawReader, TwoSeriesWithTheSameNameButAGapInYearsAreTwo) {
  read(raw_line("CORE01", 1955, {1, 2, 3, 4, 999}) + raw_line("CORE01", 1970, {5, 6, 999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.fy(1), 1955);
  EXPECT_EQ(w.yr(1), 4);
  EXPECT_EQ(w.nam(2).view(), "CORE01  ");
  EXPECT_EQ(w.fy(2), 1970);
  EXPECT_EQ(values(w.x, 2), (std::vector<double>{0.05, 0.06}));
}

TEST_F(TucsonRawReader, BlankNamedLineEndsTheFile) {
  read(raw_line("CORE01", 1955, {1, 2, 999}) + raw_line("        ", 1955, {1, 2, 999}) +
       raw_line("CORE02", 1955, {1, 2, 999}));
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(TucsonRawReader, BlankNamedLineEndsTheFileWithoutAMessageEvenIfItsRestIsBad) {
  read(raw_line("CORE01", 1955, {1, 2, 999}) + "        written by hand\n");
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 2);
  EXPECT_EQ(messages(), Messages{});
}

// CORE01 has 2, missing, 4 (hundredths), CORE02 has 20, 40, 60. Mean width of year 2: 0.4. Growth curve at
// rings 1 and 3: (0.02 + 0.2) / 2 = 0.11 and (0.04 + 0.6) / 2 = 0.32. q = (0.02 + 0.04) / (0.11 + 0.32).
TEST_F(TucsonRawReader, NegativeRingMakesXokFalseAndIsEstimated) {
  read(raw_line("CORE01", 1955, {2, -1, 4, 999}) + raw_line("CORE02", 1955, {20, 40, 60, 999}));
  EXPECT_EQ(values(w.xok, 1), (std::vector<bool>{true, false, true}));
  EXPECT_NEAR(w.x(2), 0.4 * 0.06 / 0.43, 1e-15);
  EXPECT_EQ(values(w.x, 2), (std::vector<double>{0.2, 0.4, 0.6}));
}

TEST_F(TucsonRawReader, SeriesWhoseFirstYearEndsIn0HasAFullFirstLine) {
  read(raw_line("CORE01", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) + raw_line("CORE01", 1960, {11, 999}));
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.fy(1), 1950);
  EXPECT_EQ(w.ly(1), 1960);
  EXPECT_EQ(values(w.x, 1),
            (std::vector<double>{0.01, 0.02, 0.03, 0.04, 0.05, 0.06, 0.07, 0.08, 0.09, 0.1, 0.11}));
}

TEST_F(TucsonRawReader, SkipsHeaderLinesAndReadsTheSecondSeriesBehindTheFirst) {
  w.rfhead(1) = 2;
  read("SITE 1\nSITE 2\n" + raw_line("CORE01", 1955, {1, 2, 999}) + raw_line("CORE02", 1959, {7}) +
       raw_line("CORE02", 1960, {8, -9999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.ad(2), 3);
  EXPECT_EQ(values(w.x, 2), (std::vector<double>{0.007, 0.008}));
  EXPECT_EQ(w.ly(2), 1960);
}

TEST_F(TucsonRawReader, LoadingStartsTheStoreAnew) {
  add_core(1900, {1, 1, 1, 1, 1});
  add_core(1900, {1, 1});
  read(raw_line("CORE01", 1955, {1, 2, 999}));
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.ad(1), 1);
  EXPECT_EQ(w.ad(2), 3);
}

// --- Series without a mark.

// The search looks through 1960's line for a mark, finds none and ends one below it: 1959 is lost too.
TEST_F(TucsonRawReader, SeriesWithoutAMarkLosesItsLastLineAndTheValueBeforeIt) {
  read(raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) + raw_line("CORE01", 1960, {6, 7, 8}));
  EXPECT_EQ(w.yr(1), 4);
  EXPECT_EQ(w.ly(1), 1958);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.01, 0.02, 0.03, 0.04}));
  EXPECT_EQ(messages(), Messages{});
}

// What then stands one below the line searched is no mark, even if it looks like one.
TEST_F(TucsonRawReader, SeriesWithoutAMarkIsInHundredths) {
  read(raw_line("CORE01", 1955, {1, 2, 3, 4, -9999}) + raw_line("CORE01", 1960, {6, 7, 8}));
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.01, 0.02, 0.03, 0.04}));
}

TEST_F(TucsonRawReader, SeriesOfOneLineWithoutAMarkHasNoYears) {
  read(raw_line("CORE01", 1955, {1, 2, 3}) + raw_line("CORE02", 1955, {1, 999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.yr(1), 0);
  EXPECT_EQ(w.ly(1), 1954);
  EXPECT_EQ(w.yr(2), 1);
}

TEST_F(TucsonRawReader, RingOf999InTheLastLineOfASeriesWithoutAMarkIsTakenAsItsMark) {
  read(raw_line("CORE01", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) +
       raw_line("CORE01", 1960, {11, 12, 999, 14, 15}));
  EXPECT_EQ(w.yr(1), 12);
}

TEST_F(TucsonRawReader, TheLastMarkOfTheLineCounts) {
  read(raw_line("CORE01", 1950, {1, 999, 3, -9999}));
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.001, 0.999, 0.003}));
}

// --- Years before 0.

TEST_F(TucsonRawReader, NameEndingInMinusHasNegativeYearsUntilTheYearCarriesItsOwnSign) {
  read(raw_line("CORE01 -", 1003, {1, 2, 3}) +
       raw_line("CORE01 -", 1000, {4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) +
       raw_line("CORE01", -990, {14, 15, 16, 17, 18, 19, 20, 21, 22, 23}) +
       raw_line("CORE01", -980, {24, -9999}));
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.fy(1), -1003);
  EXPECT_EQ(w.yr(1), 24);
  EXPECT_EQ(w.ly(1), -980);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.x(24), 0.024);
}

TEST_F(TucsonRawReader, SeriesThatBeginsADecadeBefore0HasAFullFirstLine) {
  read(raw_line("CORE01", -20, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) + raw_line("CORE01", -10, {11, 999}));
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 11);
  EXPECT_EQ(w.x(11), 0.11);
}

TEST_F(TucsonRawReader, SeriesMayCrossYear0) {
  read(raw_line("CORE01", -3, {1, 2, 3}) + raw_line("CORE01", 0, {4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) +
       raw_line("CORE01", 10, {14, 999}));
  EXPECT_EQ(w.fy(1), -3);
  EXPECT_EQ(w.yr(1), 14);
  EXPECT_EQ(w.ly(1), 10);
}

// The second line was negated to be compared, -1500, and is negated once more when it starts a series.
TEST_F(TucsonRawReader, YearThatBreaksASeriesOfNegativeYearsIsNegatedTwice) {
  read(raw_line("CORE01 -", 1003, {1, 2, 999}) + raw_line("CORE01 -", 1500, {3, 999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.fy(1), -1003);
  EXPECT_EQ(w.fy(2), 1500);
}

TEST_F(TucsonRawReader, AnotherNameThatEndsInMinusIsNegatedOnce) {
  read(raw_line("CORE01 -", 1003, {1, 2, 999}) + raw_line("CORE02 -", 1500, {3, 999}));
  EXPECT_EQ(w.fy(2), -1500);
}

// --- Failures.

TEST_F(TucsonRawReader, LineWithABadFieldIsToldAsRead2AndKeepsWhatCameBeforeIt) {
  read(raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) + "CORE01  1960     6     x     8\n" +
       raw_line("CORE01", 1970, {16, 999}));
  EXPECT_EQ(messages(), Messages{"Read2site.rwl fail err =  5010"});
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 16);
  EXPECT_EQ(w.x(6), 0.06);
  EXPECT_EQ(w.x(7), 0.0);  // never read
}

// The sixth value of the bad line is the eleventh of its series: there the buffer still has CORE01's, 16
// to 20.
TEST_F(TucsonRawReader, BadFieldLeavesTheOlderValuesOfTheLineBuffer) {
  read(raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) +
       raw_line("CORE01", 1960, {11, 12, 13, 14, 15, 16, 17, 18, 19, 20}) + raw_line("CORE01", 1970, {999}) +
       raw_line("CORE02", 1955, {1, 2, 3, 4, 5}) +
       "CORE02  1960    21    22    23    24    25     x    27\n" + raw_line("CORE02", 1970, {31, 999}));
  EXPECT_EQ(messages(), Messages{"Read2site.rwl fail err =  5010"});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(values(w.x, 2), (std::vector<double>{0.01, 0.02, 0.03, 0.04, 0.05, 0.21, 0.22, 0.23, 0.24, 0.25,
                                                 0.16, 0.17, 0.18, 0.19, 0.20, 0.31}));
}

TEST_F(TucsonRawReader, LineBufferIsClearedWhenAFileIsOpened) {
  read(raw_line("CORE01", 1950, {91, 92, 93, 94, 95, 96, 97, 98, 99, 999}));
  read("CORE02  1955     1     x\n" + raw_line("CORE02", 1960, {6, 999}));
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 6);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.01, 0, 0, 0, 0, 0.06}));
}

TEST_F(TucsonRawReader, UnreadableFirstLineIsNotTold) {
  read("CORE01  19x5     1     2   999\n");
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.yr(1), 0);
}

TEST_F(TucsonRawReader, MissingHeaderLinesAreToldOneByOne) {
  w.rfhead(1) = 3;
  read("SITE 1\n");
  EXPECT_EQ(messages(),
            (Messages{"Read Headers site.rwl fail err =    -1", "Read Headers site.rwl fail err =    -1"}));
}

TEST_F(TucsonRawReader, FileThatVanishedIsToldAndLeavesNoRing) {
  add_core(1900, {1, 2, 3});
  w.nam(1) = "OLD";
  w.cnam(1) = "gone.rwl";
  read_raw(w);
  EXPECT_EQ(messages(), Messages{"Opengone.rwl fail err =     2"});
  ASSERT_EQ(w.nc, 1);
  EXPECT_TRUE(w.nam(1).blank());
  EXPECT_EQ(w.fy(1), 0);
  EXPECT_EQ(w.ly(1), -1);
  EXPECT_EQ(w.yr(1), 0);
  EXPECT_EQ(w.ad(2), 1);
}

// --- Limits.

// From -999 on: nine values on the first line, then decades -990, -980, … The 1,003rd further line is that of
// 9030. That of 9020 is lost and 9019 with it.
TEST_F(TucsonRawReader, SeriesOfMoreThan1003FurtherLinesIsSplitAtThe1003rd) {
  std::string file = raw_line("CORE01", -999, std::vector<int>(9, 5));
  for (int decade = -990; decade <= 9030; decade += 10) {
    file += raw_line("CORE01", decade, std::vector<int>(10, 5));
  }
  read(file + raw_line("CORE01", 9040, {6, 999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.fy(1), -999);
  EXPECT_EQ(w.ly(1), 9018);
  EXPECT_EQ(w.fy(2), 9030);
  EXPECT_EQ(w.yr(2), 11);
  EXPECT_EQ(messages(), Messages{});
  const ReadDecisions decided = read_raw(w);
  EXPECT_TRUE(decided.series[0].split);
  EXPECT_FALSE(decided.series[1].split);
  EXPECT_EQ(limits_passed(decided, "site.rwl"),
            std::vector<std::string>{"site.rwl: CORE01 is too long for one series and was split"});
}

TEST_F(TucsonRawReader, ReadingStopsBehindThe10000thSeriesWithoutAMessage) {
  std::string file;
  for (int k = 1; k <= 10'001; ++k) file += raw_line(std::to_string(k).c_str(), 1950, {k % 900, 999});
  read(file);
  EXPECT_EQ(w.nc, 10'000);
  EXPECT_EQ(w.nam(10'000).trimmed(), "10000");
  EXPECT_EQ(w.ad(10'001), 10'001);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(limits_passed(read_raw(w), "site.rwl"),
            std::vector<std::string>{"site.rwl: series behind the 10,000th were not read"});
}

// 300 series of 4,001 rings would be 1,200,300: the 300th has no room.
TEST_F(TucsonRawReader, SeriesThatWouldPassThePoolsEndIsRefusedAndThoseBeforeItKept) {
  const std::vector<int> decade(10, 123);
  std::string file;
  for (int k = 1; k <= 300; ++k) {
    const std::string name = std::to_string(k);
    for (int year = 0; year < 4000; year += 10) file += raw_line(name.c_str(), year, decade);
    file += raw_line(name.c_str(), 4000, {123, 999});
  }
  read(file);
  EXPECT_EQ(messages(), Messages{"Would be too many rings"});
  EXPECT_EQ(w.nc, 299);
  EXPECT_EQ(w.ad(300), 299 * 4001 + 1);
  EXPECT_TRUE(w.xok(299 * 4001));
  EXPECT_EQ(w.x(299 * 4001), 1.23);
}

// --- Read carefully.

class TucsonRawCarefully : public TucsonRawReader {
 protected:
  ReadDecisions read_with(Mend mend, const std::string& contents) {
    w.careful = {};
    w.careful.set(mend, true);
    current_file("site.rwl", contents);
    return read_raw(w);
  }
  using Widths = std::vector<double>;
};

TEST_F(TucsonRawCarefully, BlankLinesAreNotThere) {
  for (const char* blank : {"\n", "        \n", "\t \n", "   \x1a\n", "\n\n\n"}) {
    const ReadDecisions decided =
        read_with(Mend::blank_line, raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) + blank +
                                        raw_line("CORE01", 1960, {6, 999}) + blank +
                                        raw_line("CORE02", 1950, {7, 8, -9999}) + blank);
    ASSERT_EQ(w.nc, 2);
    EXPECT_EQ(values(w.x, 1), (Widths{0.01, 0.02, 0.03, 0.04, 0.05, 0.06}));
    EXPECT_EQ(values(w.x, 2), (Widths{0.007, 0.008}));
    EXPECT_TRUE(decided.not_taken.empty());
    EXPECT_EQ(messages(), Messages{});
  }
}

TEST_F(TucsonRawCarefully, LinesOfASeriesAreCountedWithTheBlankOnesBetween) {
  const ReadDecisions decided = read_with(Mend::blank_line, raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) + "\n" +
                                                                raw_line("CORE01", 1960, {6, 999}) + "\n\n" +
                                                                raw_line("CORE02", 1950, {7, -9999}) + "\n");
  ASSERT_EQ(decided.series.size(), 2u);
  EXPECT_EQ(decided.series[0].first_line, 1);
  EXPECT_EQ(decided.series[0].last_line, 3);
  EXPECT_EQ(decided.series[1].first_line, 6);
  EXPECT_EQ(decided.series[1].last_line, 6);
}

TEST_F(TucsonRawCarefully, LineWithoutANameThatFollowsIsOneOfItsSeries) {
  const ReadDecisions decided = read_with(Mend::blank_line, raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) +
                                                                raw_line("        ", 1960, {6, 7, -9999}) +
                                                                raw_line("CORE02", 1955, {1, 999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.yr(1), 7);
  EXPECT_EQ(w.ly(1), 1961);
  EXPECT_TRUE(decided.not_taken.empty());
}

TEST_F(TucsonRawCarefully, LineWithoutANameThatFollowsNothingIsPassedOverAndNotInSilence) {
  for (const std::string& unnamed :
       {raw_line("        ", 1990, {6, 7, -9999}), raw_line("        ", 1957, {6, 7, -9999}),
        std::string("        written by hand\n"), std::string("        195x     1     2\n")}) {
    const ReadDecisions decided =
        read_with(Mend::blank_line,
                  raw_line("CORE01", 1955, {1, 2, 999}) + unnamed + raw_line("CORE02", 1955, {1, 999}));
    ASSERT_EQ(w.nc, 2);
    EXPECT_EQ(w.yr(1), 2);
    EXPECT_EQ(w.yr(2), 1);
    ASSERT_EQ(decided.not_taken.size(), 1u);
    EXPECT_EQ(decided.not_taken[0].why, NotTaken::no_name);
    EXPECT_EQ(decided.not_taken[0].first, 2);
    EXPECT_EQ(limits_passed(decided, "site.rwl"),
              Messages{"site.rwl: lines without a name were not read, the first of them line 2"});
  }
}

TEST_F(TucsonRawCarefully, SeriesWithoutAMarkKeepsAllItsRings) {
  const ReadDecisions decided =
      read_with(Mend::end_mark, raw_line("CORE01", 1955, {1, 2, 3, 4, 5}) +
                                    raw_line("CORE01", 1960, {6, 7, 8}) + raw_line("CORE02", 1958, {9}) +
                                    raw_line("CORE03", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(values(w.x, 1), (Widths{0.01, 0.02, 0.03, 0.04, 0.05, 0.06, 0.07, 0.08}));
  EXPECT_EQ(w.ly(1), 1962);
  EXPECT_EQ(values(w.x, 2), (Widths{0.09}));
  EXPECT_EQ(w.yr(3), 10);
  EXPECT_TRUE(decided.not_taken.empty());
  EXPECT_FALSE(decided.series[0].end_mark);
  EXPECT_EQ(decided.series[0].unit_by, UnitBy::no_mark);
}

// Left empty inside, it is a ring of width 0 as ever; behind the last one there is none.
TEST_F(TucsonRawCarefully, EmptyFieldsAtTheEndOfASeriesAreNoRings) {
  read_with(Mend::end_mark,
            "CORE01  1955     1           3            \nCORE02  1955\nCORE03  1950 12,13,,15,\n");
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(values(w.x, 1), (Widths{0.01, 0, 0.03}));
  EXPECT_EQ(w.yr(2), 0);
  EXPECT_EQ(values(w.x, 3), (Widths{0.12, 0.13, 0, 0.15}));
}

TEST_F(TucsonRawCarefully, BadFieldInTheLastLineEndsWhatIsKeptOfIt) {
  read_with(Mend::end_mark, raw_line("CORE01", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}) +
                                "CORE01  1960    11    12   1x3    14\n");
  EXPECT_EQ(w.yr(1), 12);
  EXPECT_EQ(messages().size(), 1u);
}

TEST_F(TucsonRawCarefully, RingOf999BeforeOthersIsARing) {
  read_with(Mend::end_mark,
            raw_line("CORE01", 1950, {1, 2, 999, 4, 5}) + raw_line("CORE02", 1950, {1, 2, 999, 0}) +
                raw_line("CORE03", 1950, {1, 999, 999}) + raw_line("CORE04", 1950, {1, -9999, 7}));
  ASSERT_EQ(w.nc, 4);
  EXPECT_EQ(values(w.x, 1), (Widths{0.01, 0.02, 9.99, 0.04, 0.05}));
  EXPECT_EQ(w.yr(2), 2);
  EXPECT_EQ(values(w.x, 3), (Widths{0.01, 9.99}));
  EXPECT_EQ(values(w.x, 4), (Widths{0.001}));
}

// As above: of the part before the 1,003rd further line nothing is lost.
TEST_F(TucsonRawCarefully, PartsOfASplitSeriesLoseNothing) {
  std::string file = raw_line("CORE01", -999, std::vector<int>(9, 5));
  for (int decade = -990; decade <= 9030; decade += 10)
    file += raw_line("CORE01", decade, std::vector<int>(10, 5));
  read_with(Mend::end_mark, file + raw_line("CORE01", 9040, {6, 999}));
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.ly(1), 9029);
  EXPECT_EQ(w.fy(2), 9030);
  EXPECT_EQ(w.yr(2), 11);
}

// The widths of all stretches of a core are in one unit, which the mark behind the last of them says.
TEST_F(TucsonRawCarefully, StretchWithoutAMarkIsInTheUnitOfTheOneBehindIt) {
  const std::string first = raw_line("CORE01", 1955, {1234, 0, -9990}),
                    rest = raw_line("CORE01", 1970, {5, -9999}) + raw_line("CORE02", 1970, {7, 999});
  const ReadDecisions decided = read_with(Mend::end_mark, first + rest);
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(values(w.xok, 1), (std::vector<bool>{true, true, false}));
  EXPECT_EQ(w.x(1), 1.234);
  EXPECT_EQ(w.x(w.ad(2)), 0.005);
  EXPECT_EQ(w.x(w.ad(3)), 0.07);
  EXPECT_EQ(decided.series[0].unit, 1000.0);
  EXPECT_EQ(decided.series[0].unit_by, UnitBy::next_stretch);
  // Of a core of its own nothing says it.
  read_with(Mend::end_mark, raw_line("CORE00", 1955, {1234, 0, 5}) + rest);
  EXPECT_EQ(w.x(1), 12.34);
}

TEST_F(TucsonRawCarefully, EarlyStretchesOfACoreKeepTheirYears) {
  const std::string file = raw_line("CORE01 -", 1003, {1, 2, 999}) +
                           raw_line("CORE01 -", 1500, std::vector<int>(10, 3)) +
                           raw_line("CORE01 -", 1490, {4, 999});
  read_with(Mend::early_years, file);
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.fy(1), -1003);
  EXPECT_EQ(w.fy(2), -1500);
  EXPECT_EQ(w.yr(2), 11);
  read_with(Mend::prompts, file);
  EXPECT_EQ(w.fy(2), 1500);
}

// No mend is read into what is well.
TEST_F(TucsonRawCarefully, FilesWithoutFlawsAreReadAsEver) {
  const std::string file = core_1953_to_1990(999) + core_1953_to_1990(-9999);
  const ReadDecisions usual = read_with(Mend::prompts, file);
  const auto widths = values(w.x, 2);
  w.careful = Careful::everything();
  const ReadDecisions carefully = read_raw(w);
  EXPECT_EQ(values(w.x, 2), widths);
  ASSERT_EQ(carefully.series.size(), usual.series.size());
  for (std::size_t k = 0; k < usual.series.size(); ++k) {
    EXPECT_EQ(carefully.series[k].last_line, usual.series[k].last_line);
    EXPECT_EQ(carefully.series[k].unit, usual.series[k].unit);
  }
}

}  // namespace
}  // namespace vorn
