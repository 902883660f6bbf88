#include "formats/chronology_writer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

#include "support/format_bench.h"

namespace vorn {
namespace {

class ChronologyWriter : public FormatBench {
 protected:
  ChronologyWriter() { w.cnam(1) = "site01.rwl"; }

  void chronology(int first_year, const std::vector<std::pair<double, int>>& years) {
    w.cfy(1) = first_year;
    w.cyr(1) = static_cast<int>(years.size());
    w.cly(1) = first_year + w.cyr(1) - 1;
    for (int k = 1; k <= w.cyr(1); ++k) {
      std::tie(w.crn(k, 1), w.num(k, 1)) = years[static_cast<std::size_t>(k - 1)];
    }
  }

  // The lines of the file that a choice of layout makes, without the first.
  std::vector<std::string> lines(ChronologyOutput choice, const std::string& name) {
    w.crn_output = choice;
    write_ind(w);
    std::istringstream file(ScratchFolder::read(name));
    std::vector<std::string> all;
    for (std::string line; std::getline(file, line);) all.push_back(line);
    if (!all.empty()) all.erase(all.begin());
    return all;
  }
  std::vector<std::string> index_lines() { return lines(ChronologyOutput::index, "Index.prn"); }
  std::vector<std::string> column_lines() { return lines(ChronologyOutput::column, "Column.prn"); }

  // The years that the lines of Index.prn are labelled with.
  std::vector<std::string> labels() {
    std::vector<std::string> all;
    for (const std::string& line : index_lines()) all.push_back(line.substr(6, 4));
    return all;
  }
};

const std::pair<double, int> average = {1.0, 5};

TEST_F(ChronologyWriter, Chronology1953To1990HasThreeLeadingFillersAndNineBehind) {
  chronology(1953, std::vector(38, average));
  const auto all = index_lines();
  ASSERT_EQ(all.size(), 5u);
  EXPECT_EQ(all[0], "site0119539990  09990  09990  01000  51000  51000  51000  51000  51000  51000  5  IND");
  EXPECT_EQ(all[4], "site0119901000  59990  09990  09990  09990  09990  09990  09990  09990  09990  0  IND");
  EXPECT_EQ(labels(), (std::vector<std::string>{"1953", "1960", "1970", "1980", "1990"}));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(ChronologyWriter, FirstYearEndingIn0HasNoLeadingFillersButALineOfFillersBehindFullDecades) {
  chronology(1950, std::vector(20, average));
  const auto all = index_lines();
  ASSERT_EQ(all.size(), 3u);
  EXPECT_EQ(all[0].substr(10, 7), "1000  5");
  EXPECT_EQ(all[2], "site0119709990  09990  09990  09990  09990  09990  09990  09990  09990  09990  0  IND");
}

TEST_F(ChronologyWriter, YearOfCount0Is9990InBothLayouts) {
  chronology(1950, {{1.5, 5}, {1.25, 0}, {1.75, 3}});
  EXPECT_EQ(index_lines()[0].substr(10, 21), "1500  59990  01750  3");
  EXPECT_EQ(column_lines(), (std::vector<std::string>{"   1950   1500      5", "   1951   9990      0",
                                                      "   1952   1750      3"}));
}

// A depth below 0 can only come from an index file.
TEST_F(ChronologyWriter, YearOfNegativeCountIs9990InIndexPrnAloneAsMeant) {
  chronology(1950, {{0.5, -1}});
  EXPECT_EQ(index_lines()[0].substr(10, 7), "9990 -1");
  EXPECT_EQ(column_lines()[0], "   1950    500     -1");
}

TEST_F(ChronologyWriter, ValueOf1Point0005IsWrittenAs1001) {
  chronology(1950, {{1.0005, 5}});
  EXPECT_EQ(index_lines()[0].substr(10, 7), "1001  5");
  EXPECT_EQ(column_lines()[0], "   1950   1001      5");
}

TEST_F(ChronologyWriter, ValuesThatDoNotFitAreAsterisks) {
  chronology(1950, {{987, 5}, {std::numeric_limits<double>::quiet_NaN(), 1000}});
  EXPECT_EQ(index_lines()[0].substr(10, 14), "****  5*******");
  EXPECT_EQ(column_lines(), (std::vector<std::string>{"   1950 987000      5", "   1951*******   1000"}));
}

// For -15 the rule gives a leading 5 and a first label of -10 + 5.
TEST_F(ChronologyWriter, LabelsOfFirstYearsOf0AndBelowAreAsTheRuleGivesThem) {
  chronology(-15, std::vector(10, average));
  EXPECT_EQ(labels(), (std::vector<std::string>{"  -5", "   0"}));
  chronology(0, std::vector(10, average));
  EXPECT_EQ(labels(), (std::vector<std::string>{"  10", "  10", "  20"}));
  chronology(-20, std::vector(5, average));
  EXPECT_EQ(labels(), (std::vector<std::string>{" -10", " -10"}));
}

TEST_F(ChronologyWriter, CarefullyLabelsOfEarlyYearsAreTheYears) {
  w.careful.set(Mend::early_years, true);
  chronology(-15, std::vector(10, average));
  EXPECT_EQ(labels(), (std::vector<std::string>{" -15", " -10"}));
  chronology(0, std::vector(10, average));
  EXPECT_EQ(labels(), (std::vector<std::string>{"   0", "  10"}));
  chronology(-20, std::vector(5, average));
  EXPECT_EQ(labels(), std::vector<std::string>{" -20"});
  chronology(1953, std::vector(3, average));
  EXPECT_EQ(labels(), std::vector<std::string>{"1953"});
}

// Of years below -999 the minus sign stands behind the site.
TEST_F(ChronologyWriter, CarefullyALineSaysByItsSixthCharacterWhetherItsYearIsNegative) {
  w.careful.set(Mend::early_years, true);
  chronology(-1005, std::vector(10, average));
  EXPECT_EQ(index_lines()[0].substr(0, 17), "site0-10059990  0");
  EXPECT_EQ(index_lines()[1].substr(0, 10), "site0-1000");
  w.cnam(1) = "north-west.rwl";
  chronology(1953, std::vector(3, average));
  EXPECT_EQ(index_lines()[0].substr(0, 10), "north 1953");
}

TEST_F(ChronologyWriter, CarefullyEarlyChronologiesComeBackWithTheirYears) {
  for (const int first : {-1999, -1001, -1000, -999, -990, -20, -15, -10, -1, 0, 1, 10, 1953}) {
    SCOPED_TRACE(first);
    w.careful.set(Mend::early_years, true);
    chronology(first, std::vector(25, std::pair(1.234, 5)));
    index_lines();
    current_file("back.crn", ScratchFolder::read("Index.prn"));
    w.rfhead(1) = 1;
    w.cfy(1) = w.cyr(1) = 77;
    read_ind(w);
    EXPECT_EQ(w.cfy(1), first);
    EXPECT_EQ(w.cyr(1), 25);
    EXPECT_EQ(w.crn(1, 1), 1234.0);
    EXPECT_EQ(w.crn(25, 1), 1234.0);
  }
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(ChronologyWriter, ColumnTableHasAHeadingWithTheNameOfTheFile) {
  chronology(-1, std::vector(2, average));
  EXPECT_EQ(column_lines(), (std::vector<std::string>{"     -1   1000      5", "      0   1000      5"}));
  EXPECT_EQ(ScratchFolder::read("Column.prn").substr(0, 85),
            "   Year  Value  Count  site01.rwl" + std::string(50, ' ') + "\n ");
}

TEST_F(ChronologyWriter, ChronologyWithoutYearsIsALineOfFillersOrAHeadingAlone) {
  chronology(1953, {});
  EXPECT_EQ(labels(), std::vector<std::string>{"1953"});
  EXPECT_EQ(column_lines(), std::vector<std::string>{});
  w.cyr(1) = -1'001'899;  // as of a file whose only core has no length
  EXPECT_EQ(labels(), std::vector<std::string>{});
  EXPECT_EQ(column_lines(), std::vector<std::string>{});
}

TEST_F(ChronologyWriter, OutputsGoByTheirNames) {
  EXPECT_EQ(output_name(ChronologyOutput::index), "Index.prn");
  EXPECT_EQ(output_name(ChronologyOutput::column), "Column.prn");
  EXPECT_EQ(output_name(ChronologyOutput::none), "");
}

TEST_F(ChronologyWriter, WithNeitherChoiceNothingIsWritten) {
  chronology(1950, {average});
  w.crn_output = ChronologyOutput::none;
  write_ind(w);
  EXPECT_FALSE(ScratchFolder::exists("Index.prn"));
  EXPECT_FALSE(ScratchFolder::exists("Column.prn"));
}

TEST_F(ChronologyWriter, AfterAFailedOpenItsOneMessageIsAll) {
  chronology(1950, std::vector(50, average));
  std::filesystem::create_directory("Index.prn");
  std::filesystem::create_directory("Column.prn");
  w.crn_output = ChronologyOutput::index;
  write_ind(w);
  EXPECT_EQ(messages(), Messages{"OpenIndex.prn fail err =    21"});
  w.crn_output = ChronologyOutput::column;
  write_ind(w);
  EXPECT_EQ(messages(), Messages{"OpenColumn.prn fail err =    21"});
}

// Behind a link to a device that is always full.
TEST_F(ChronologyWriter, FullDiskIsToldOnceWhenTheFileIsClosed) {
  chronology(1950, {average});
  std::filesystem::create_symlink("/dev/full", "Index.prn");
  w.crn_output = ChronologyOutput::index;
  write_ind(w);
  EXPECT_EQ(messages(), Messages{"CloseIndex.prn fail err =    28"});
}

TEST_F(ChronologyWriter, FullDiskIsToldOnceAsWriteWhereItShowsEarlier) {
  chronology(1950, std::vector(12'000, average));
  std::filesystem::create_symlink("/dev/full", "Column.prn");
  w.crn_output = ChronologyOutput::column;
  write_ind(w);
  EXPECT_EQ(messages(), Messages{"WriteColumn.prn fail err =    28"});
}

}  // namespace
}  // namespace vorn
