#include "formats/recognition.h"

#include <gtest/gtest.h>

#include "support/format_bench.h"

namespace vorn {
namespace {

class Recognition : public FormatBench {
 protected:
  // The layout found in a file of these contents.
  Layout layout_of(std::string_view contents) {
    current_file("site.dat", contents);
    find_rftyp(w);
    return w.rftype(1);
  }
};

// 1953 to 1959: seven values, 12 + 7 x 6 = 54 columns.
const std::string raw_1953 = "CORE01  1953   101   102   103   104   105   106   107";
// 1950 to 1959: 80 columns.
const std::string index_1950 =
    "SITE0119509990  09990  09990  0 987  1 995  21015  31170  4 880  5 956  61021123";
const std::string heading = "SITE 1  some words that are no numbers at all";

TEST_F(Recognition, FirstLineBeginningHEADERIsHeidelbergWhateverFollows) {
  EXPECT_EQ(layout_of("HEADER:\nanything\n"), Layout::heidelberg);
  EXPECT_EQ(layout_of("HEADER:"), Layout::heidelberg);
  EXPECT_EQ(layout_of("HEADER:and more\n" + raw_1953 + "\n"), Layout::heidelberg);
  EXPECT_EQ(w.rfhead(1), 0);
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Recognition, HeidelbergIsLookedForOnTheFirstLineOnly) {
  EXPECT_EQ(layout_of("\nHEADER:\n"), Layout::not_recognised);
  EXPECT_EQ(layout_of(" HEADER:\n"), Layout::not_recognised);
}

TEST_F(Recognition, CompactHasAnEditFormatInColumns72To79OfItsFirstLine) {
  const std::string to_column_71 = "      38=N    1953=I CORE01" + std::string(44, ' ');
  EXPECT_EQ(layout_of(to_column_71 + "(19F4.0)\n"), Layout::compact);
  EXPECT_EQ(layout_of(to_column_71 + "(19F4.0\n"), Layout::not_recognised);
  EXPECT_EQ(layout_of(to_column_71 + " (19F4.0)\n"), Layout::not_recognised);
  EXPECT_EQ(layout_of("\n" + to_column_71 + "(19F4.0)\n"), Layout::not_recognised);
}

TEST_F(Recognition, RawFileWithThreeHeaderLinesHasRfhead3) {
  EXPECT_EQ(layout_of(heading + "\n" + heading + "\n" + heading + "\n" + raw_1953 + "\n"),
            Layout::tucson_raw);
  EXPECT_EQ(w.rfhead(1), 3);
}

TEST_F(Recognition, RawFileWithFourHeaderLinesIsNotRecognised) {
  std::string file;
  for (int k = 1; k <= 4; ++k) file += heading + "\n";
  EXPECT_EQ(layout_of(file + raw_1953 + "\n"), Layout::not_recognised);
  EXPECT_EQ(w.rfhead(1), 0);
}

TEST_F(Recognition, FirstDecadeLineFrom1953IsExactly54ColumnsLong) {
  EXPECT_EQ(layout_of(raw_1953), Layout::tucson_raw);
  EXPECT_EQ(w.rfhead(1), 0);
  EXPECT_EQ(layout_of(raw_1953 + "          \n"), Layout::tucson_raw);  // trailing blanks do not count
  EXPECT_EQ(layout_of(raw_1953.substr(0, 48)), Layout::not_recognised);
  EXPECT_EQ(layout_of(raw_1953 + "   108"), Layout::not_recognised);
}

TEST_F(Recognition, FullDecadeLineIs72ColumnsLong) {
  EXPECT_EQ(layout_of(raw_line("CORE01", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10})), Layout::tucson_raw);
  EXPECT_EQ(layout_of(raw_line("CORE01", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9})), Layout::not_recognised);
}

// The same decade: with all 80 columns it is tested as indices, with the last column gone as raw data alone.
TEST_F(Recognition, LineOf79ColumnsIsTestedOnlyAsRawAndOneOf80OnlyAsIndex) {
  ASSERT_EQ(index_1950.size(), 80u);
  EXPECT_EQ(layout_of(index_1950), Layout::tucson_index);
  EXPECT_EQ(layout_of(index_1950.substr(0, 79)), Layout::not_recognised);
  // Good raw data with something in column 80 is no index line: its values straddle the pairs.
  std::string raw = raw_line("CORE01", 1950, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
  raw.pop_back();
  EXPECT_EQ(layout_of(raw + std::string(7, ' ') + "x"), Layout::not_recognised);
}

TEST_F(Recognition, IndexFileMayEndItsLinesWithAnyWord) {
  EXPECT_EQ(layout_of(heading + "\n" + index_1950 + "  IND\n"), Layout::tucson_index);
  EXPECT_EQ(w.rfhead(1), 1);
}

// From -1953 on the decade runs to -1951: three values, 30 columns. Read forwards it would be seven.
TEST_F(Recognition, NameEndingInMinusWithAFourDigitYearReversesTheCountOfValues) {
  EXPECT_EQ(layout_of("CORE01 -1953   101   102   103"), Layout::tucson_raw);
  EXPECT_EQ(layout_of("CORE01 -1001   101"), Layout::tucson_raw);
  EXPECT_EQ(layout_of("CORE01 -1953   101   102   103   104   105   106   107"), Layout::not_recognised);
}

TEST_F(Recognition, NameEndingInMinusWithAThreeDigitYearDoesNot) {
  EXPECT_EQ(layout_of("CORE01 - 953   101   102   103   104   105   106   107"), Layout::tucson_raw);
  EXPECT_EQ(layout_of("CORE01 - 999   101"), Layout::tucson_raw);
}

TEST_F(Recognition, YearWithItsOwnMinusSignReversesTheCountToo) {
  EXPECT_EQ(layout_of("CORE01  -953   101   102   103"), Layout::tucson_raw);
  EXPECT_EQ(layout_of("CORE01  -950   101   102   103   104   105   106   107   108   109   110"),
            Layout::tucson_raw);
}

TEST_F(Recognition, LinesBelow18ColumnsAndLinesThatAreNoNumbersCountAsHeaderLines) {
  EXPECT_EQ(layout_of("SITE\n\n" + raw_1953 + "\n"), Layout::tucson_raw);
  EXPECT_EQ(w.rfhead(1), 2);
  EXPECT_EQ(layout_of("CORE01  1953   101   102   103   104   105   106   1x7\n" + raw_1953),
            Layout::tucson_raw);
  EXPECT_EQ(w.rfhead(1), 1);
}

// A comma ends the year early; what stands behind it in column 12 is then read on its own.
TEST_F(Recognition, LineWhoseColumn12IsNoDigitCountsAsAHeaderLine) {
  EXPECT_EQ(layout_of("CORE01  19,x" + raw_1953.substr(12) + "\n" + raw_1953 + "\n"), Layout::tucson_raw);
  EXPECT_EQ(w.rfhead(1), 1);
}

// Of a series from 1959 on the first line has one value, 18 columns in all.
TEST_F(Recognition, LineOf18ColumnsIsTheShortestThatIsTested) {
  EXPECT_EQ(layout_of("CORE01  1959   101\n"), Layout::tucson_raw);
  EXPECT_EQ(layout_of("CORE01  1959    1\n"), Layout::not_recognised);
}

TEST_F(Recognition, LinesMayEndInAnyWay) {
  EXPECT_EQ(layout_of(heading + "\r\n" + raw_1953 + "\r\n"), Layout::tucson_raw);
  EXPECT_EQ(layout_of(heading + "\r" + raw_1953 + "\r"), Layout::tucson_raw);
  EXPECT_EQ(layout_of(heading + "\r\r\n" + raw_1953 + "\r\r\n"), Layout::tucson_raw);
  EXPECT_EQ(w.rfhead(1), 1);
}

TEST_F(Recognition, OfAnEmptyFileTellsReadAndDoesNotRecogniseIt) {
  EXPECT_EQ(layout_of(""), Layout::not_recognised);
  EXPECT_EQ(messages(), Messages{"Readsite.dat fail err =    -1"});
}

TEST_F(Recognition, OfAFolderTellsOpenThenRead) {
  w.cnam(1) = ".";
  find_rftyp(w);
  EXPECT_EQ(w.rftype(1), Layout::not_recognised);
  EXPECT_EQ(messages(), (Messages{"Open. fail err =    21", "Read. fail err =    -1"}));
}

TEST_F(Recognition, OfAFileThatVanishedTellsOpenThenRead) {
  w.cnam(1) = "gone.rwl";
  w.rftype(1) = Layout::tucson_raw;
  w.rfhead(1) = 3;
  find_rftyp(w);
  EXPECT_EQ(w.rftype(1), Layout::not_recognised);
  EXPECT_EQ(w.rfhead(1), 0);
  EXPECT_EQ(messages(), (Messages{"Opengone.rwl fail err =     2", "Readgone.rwl fail err =    -1"}));
}

TEST_F(Recognition, ShortFilesOfHeaderLinesAreReadToTheirEndWithoutAMessage) {
  EXPECT_EQ(layout_of(heading + "\n" + heading + "\n"), Layout::not_recognised);
  EXPECT_EQ(messages(), Messages{});
}

}  // namespace
}  // namespace vorn
