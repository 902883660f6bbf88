#include "formats/tucson_index.h"

#include <gtest/gtest.h>

#include "support/format_bench.h"

namespace vorn {
namespace {

// Index and depth of one year.
using Year = std::pair<int, int>;

class TucsonIndex : public FormatBench {
 protected:
  void read(const std::string& contents) {
    current_file("site.crn", contents);
    read_ind(w);
  }

  // A line of ten years; those not given are fillers behind.
  static std::string decade(const char* site, int year, std::vector<Year> years) {
    years.resize(10, {9990, 0});
    char text[32];
    std::snprintf(text, sizeof text, "%-6s%4d", site, year);
    std::string line = text;
    for (const auto& [index, depth] : years) {
      std::snprintf(text, sizeof text, "%4d%3d", index, depth);
      line += text;
    }
    return line + "  IND\n";
  }

  static std::vector<Year> ten(int first_index) {
    std::vector<Year> years;
    for (int k = 0; k < 10; ++k) years.emplace_back(first_index + k, 5);
    return years;
  }

  std::string written() {
    TextOutput out;
    EXPECT_EQ(out.create(disk, "Index.prn"), status::ok);
    write_indcrn(w, w.cf, {"Index.prn", out, troubles});
    EXPECT_EQ(out.close(), status::ok);
    return ScratchFolder::read("Index.prn");
  }

  // The chronology of file 1: indices 1.001, 1.002, … of depth 5.
  void chronology(int first_year, int years) {
    w.cnam(1) = "site01.rwl";
    w.cfy(1) = first_year;
    w.cyr(1) = years;
    w.cly(1) = first_year + years - 1;
    for (int k = 1; k <= years; ++k) {
      w.crn(k, 1) = 1 + k / 1000.0;
      w.num(k, 1) = 5;
    }
  }
};

const Year filler = {9990, 0};

TEST_F(TucsonIndex, Chronology1953To1990AsWrittenReadsBackWithFirstYear1953And38Years) {
  chronology(1953, 38);
  const std::string file = written();
  EXPECT_EQ(file, "site01.rwl" + std::string(50, ' ') + "\n" +
                      decade("site01", 1953,
                             {filler,
                              filler,
                              filler,
                              {1001, 5},
                              {1002, 5},
                              {1003, 5},
                              {1004, 5},
                              {1005, 5},
                              {1006, 5},
                              {1007, 5}}) +
                      decade("site01", 1960, ten(1008)) + decade("site01", 1970, ten(1018)) +
                      decade("site01", 1980, ten(1028)) + decade("site01", 1990, {{1038, 5}}));
  w.rfhead(1) = 1;
  read(file);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(w.cfy(1), 1953);
  EXPECT_EQ(w.cyr(1), 38);
  EXPECT_EQ(w.cly(1), 1990);
  EXPECT_EQ(w.crn(1, 1), 1001.0);  // thousandths, as read
  EXPECT_EQ(w.crn(38, 1), 1038.0);
  EXPECT_EQ(w.num(38, 1), 5);
}

TEST_F(TucsonIndex, YearOf9990InsideTheChronologyIsKeptWithItsCount) {
  read(decade("SITE", 1950, {{1000, 3}, {9990, 2}, {1010, 3}}));
  EXPECT_EQ(w.cyr(1), 3);
  EXPECT_EQ(w.crn(2, 1), 9990.0);
  EXPECT_EQ(w.num(2, 1), 2);
}

TEST_F(TucsonIndex, FirstYearOf0OrANegativeMultipleOf10PassesOverTheFirstLine) {
  for (const int first_year : {0, -20}) {
    read(decade("SITE", first_year, ten(100)) + decade("SITE", first_year + 10, ten(200)));
    EXPECT_EQ(w.cfy(1), first_year);
    EXPECT_EQ(w.cyr(1), 10);
    EXPECT_EQ(w.cly(1), first_year + 9);
    EXPECT_EQ(w.crn(1, 1), 200.0);
  }
}

TEST_F(TucsonIndex, CarefullyFirstYearsOf0AndBelowKeepTheirFirstLine) {
  w.careful.set(Mend::early_years, true);
  for (const int first_year : {0, -20, -15}) {
    const int behind = first_year == -15 ? -10 : first_year + 10;
    read(decade("SITE", first_year, ten(100)) + decade("SITE", behind, ten(200)));
    EXPECT_EQ(w.cfy(1), first_year);
    EXPECT_EQ(w.cly(1), behind + 9);
    EXPECT_EQ(w.crn(1, 1), first_year == -15 ? 105.0 : 100.0);
    EXPECT_EQ(w.crn(w.cyr(1), 1), 209.0);
  }
}

// -15 is five years from the end of a decade that ends in -11: the last five pairs of the first line.
TEST_F(TucsonIndex, NegativeFirstYearTakesTheLastPairsOfTheFirstLine) {
  read(decade("SITE", -15, ten(100)) + decade("SITE", -10, ten(200)));
  EXPECT_EQ(w.cfy(1), -15);
  EXPECT_EQ(w.cyr(1), 15);
  EXPECT_EQ(w.crn(1, 1), 105.0);
  EXPECT_EQ(w.crn(6, 1), 200.0);
}

TEST_F(TucsonIndex, MinusInColumn6NegatesTheYear) {
  read(decade("SITE -", 1995, ten(100)));
  EXPECT_EQ(w.cfy(1), -1995);
}

TEST_F(TucsonIndex, TheStoreIsNotTouched) {
  add_core(1900, {1, 2, 3});
  read(decade("SITE", 1950, ten(100)));
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1, 2, 3}));
}

// Lines are taken as decades that follow each other whatever they say.
TEST_F(TucsonIndex, LaterLabelsAreNotLookedAt) {
  read(decade("SITE", 1950, ten(100)) + decade("OTHER", 1234, ten(200)));
  EXPECT_EQ(w.cyr(1), 20);
  EXPECT_EQ(w.crn(11, 1), 200.0);
}

// --- The end of the chronology.

// Eleven 9990 behind nine values are cut off, of nineteen behind one value only the last eleven.
TEST_F(TucsonIndex, NoMoreThanElevenYearsWithoutDataAreCutOff) {
  std::vector<Year> nine = ten(100);
  nine.back() = filler;
  read(decade("SITE", 1950, nine) + decade("SITE", 1960, {}));
  EXPECT_EQ(w.cyr(1), 9);
  read(decade("SITE", 1950, {{100, 1}}) + decade("SITE", 1960, {}));
  EXPECT_EQ(w.cyr(1), 9);
  EXPECT_EQ(w.cly(1), 1958);
}

TEST_F(TucsonIndex, ChronologyOfFillersAloneEndsAtPosition0) {
  read(decade("SITE", 1957, {}));
  EXPECT_EQ(w.cyr(1), 0);
  EXPECT_EQ(w.cly(1), 1956);
}

TEST_F(TucsonIndex, AtMost12000YearsAreKeptAndTheNextColumnIsNotReached) {
  w.crn(1, 2) = -77;
  w.num(1, 2) = -77;
  std::string file;
  for (int k = 0; k <= 1'205; ++k) file += decade("SITE", 1950, ten(k));
  read(file);
  EXPECT_EQ(w.cyr(1), 12'000);
  EXPECT_EQ(w.crn(12'000, 1), 1199.0 + 9);
  EXPECT_EQ(w.crn(1, 2), -77);
  EXPECT_EQ(w.num(1, 2), -77);
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(TucsonIndex, LastColumnOfAllTakesNothingBeyondItsEnd) {
  w.cf = max_files;
  std::string file;
  for (int k = 0; k <= 1'205; ++k) file += decade("SITE", 1953, ten(k));
  read(file);
  EXPECT_EQ(w.cyr(max_files), 12'000);
}

// The last line read is that of positions 12,011 to 12,020: behind a first line of ten years the 1,201st.
TEST_F(TucsonIndex, ReadingStopsBehindPosition12020) {
  std::string file;
  for (int k = 0; k <= 1'201; ++k) file += decade("SITE", 1950, ten(1));
  read(file + "SITE      no decade\n");
  EXPECT_EQ(messages(), Messages{});
  read(file.substr(86) + "SITE      no decade\n");
  EXPECT_EQ(messages(), Messages{"Read3site.crn fail err =  5010"});
}

// --- Failures.

TEST_F(TucsonIndex, LaterLineThatCannotBeReadIsToldAndTakenAsFarAsItGoes) {
  read(decade("SITE", 1950, ten(100)) + "SITE  1960 200  9 20x  9\n");
  EXPECT_EQ(messages(), Messages{"Read3site.crn fail err =  5010"});
  EXPECT_EQ(w.cyr(1), 20);
  EXPECT_EQ(w.crn(11, 1), 200.0);
  EXPECT_EQ(w.num(11, 1), 9);
  EXPECT_EQ(w.crn(12, 1), 101.0);  // as in the line before
  EXPECT_EQ(w.num(12, 1), 5);
}

TEST_F(TucsonIndex, MissingHeaderLinesAreToldAsRead1AndAMissingFirstLineAsRead2) {
  w.rfhead(1) = 2;
  w.cfy(1) = 1234;
  w.cyr(1) = 99;
  read("SITE\n");
  EXPECT_EQ(messages(), (Messages{"Read1site.crn fail err =    -1", "Read2site.crn fail err =    -1"}));
  EXPECT_EQ(w.cyr(1), 0);
  EXPECT_EQ(w.cly(1), -1);
}

TEST_F(TucsonIndex, HeaderLinesAreKeptAsLinesNotTaken) {
  w.rfhead(1) = 2;
  current_file("site.crn", "SITE of interest\nOak\n" + decade("SITE", 1950, ten(100)));
  const ReadDecisions decided = read_ind(w);
  ASSERT_EQ(decided.not_taken.size(), 1u);
  EXPECT_EQ(decided.not_taken[0].first, 1);
  EXPECT_EQ(decided.not_taken[0].last, 2);
  EXPECT_EQ(decided.not_taken[0].why, NotTaken::header);
}

TEST_F(TucsonIndex, YearsBehindThe12000thAreLeftOutAndThatIsKept) {
  std::string file;
  for (int k = 0; k < 1200; ++k) file += decade("SITE", 0, ten(100));
  current_file("site.crn", decade("SITE", 1950, ten(100)) + file);
  const ReadDecisions decided = read_ind(w);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(w.cyr(1), max_years);
  ASSERT_EQ(decided.not_taken.size(), 1u);
  EXPECT_EQ(decided.not_taken[0].first, 1201);
  EXPECT_EQ(decided.not_taken[0].last, LinesNotTaken::to_the_end);
  EXPECT_EQ(limits_passed(decided, "site.crn"),
            std::vector<std::string>{"site.crn: years behind the 12,000th were not read"});
}

TEST_F(TucsonIndex, MissingFileIsToldAsOpen) {
  w.cnam(1) = "gone.crn";
  read_ind(w);
  EXPECT_EQ(messages(), (Messages{"Opengone.crn fail err =     2", "Read2gone.crn fail err =    -1"}));
  EXPECT_EQ(w.cyr(1), 0);
}

// --- Read carefully.

const std::string statistics = "SITE498 .7494   .2927   .1606   1.0000  498.0000540.5796\n";

TEST_F(TucsonIndex, CarefullyALineOfStatisticsIsNoDecade) {
  const std::string file = decade("SITE", 1950, ten(100)) + decade("SITE", 1960, ten(200));
  for (const bool careful : {false, true}) {
    w.careful.set(Mend::statistics_line, careful);
    current_file("site.crn", file + statistics);
    const ReadDecisions decided = read_ind(w);
    EXPECT_EQ(w.cyr(1), careful ? 20 : 30);
    EXPECT_EQ(messages().empty(), careful);
    EXPECT_EQ(decided.left_out(NotTaken::no_decade), careful);
  }
}

// The lines behind it keep their years.
TEST_F(TucsonIndex, CarefullyALineOfStatisticsInTheMiddleMovesNothing) {
  w.careful.set(Mend::statistics_line, true);
  read(decade("SITE", 1950, ten(100)) + statistics + decade("SITE", 1960, ten(200)));
  EXPECT_EQ(w.cyr(1), 20);
  EXPECT_EQ(w.crn(11, 1), 200.0);
}

// Its label says that it is the next decade.
TEST_F(TucsonIndex, CarefullyADecadeWithABadFieldStaysOne) {
  for (const int first : {1953, -15, -10}) {
    w.careful = {};
    const int second = first < 0 ? first / 10 * 10 + (first == -10 ? 10 : 0) : 1960;
    const std::string file = decade("SITE", first, ten(100)) + "SITE  " +
                             std::string(second < 0    ? " "
                                         : second == 0 ? "   "
                                                       : "") +
                             std::to_string(second) + " 200  5 2x0  5 202  5\n" +
                             decade("SITE", second + 10, ten(300));
    read(file);
    const int years = w.cyr(1);
    w.careful = Careful::everything();
    w.careful.set(Mend::early_years, false);
    messages();
    read(file);
    EXPECT_EQ(w.cyr(1), years) << first;
    EXPECT_EQ(messages().size(), 1u) << first;
  }
}

TEST_F(TucsonIndex, CarefullyABlankLineIsNoDecade) {
  for (const bool careful : {false, true}) {
    w.careful.set(Mend::blank_line, careful);
    read(decade("SITE", 1953, ten(100)) + "\n" + decade("SITE", 1960, ten(200)) + "  \t\n\n");
    EXPECT_EQ(w.cyr(1), careful ? 17 : 47);
    EXPECT_EQ(w.crn(8, 1), careful ? 200.0 : 0.0);
  }
}

}  // namespace
}  // namespace vorn
