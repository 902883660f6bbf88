#include "formats/heidelberg.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/format_bench.h"

namespace vorn {
namespace {

class Heidelberg : public FormatBench {
 protected:
  void read(const std::string& contents) {
    current_file("site.fh", contents);
    read_heidel(w);
  }

  // A data block of `count` values, all the same.
  static std::string block(int count, int value) {
    std::string lines;
    char text[16];
    std::snprintf(text, sizeof text, "%6d", value);
    for (int k = 1; k <= count; ++k) lines += text + std::string(k % 10 == 0 || k == count ? "\n" : "");
    return lines;
  }

  std::string written(int i, Careful careful = {}) {
    TextOutput out;
    EXPECT_EQ(out.create(disk, "out.fh"), status::ok);
    Writing target = writing(out);
    target.careful = careful;
    EXPECT_TRUE(write_hrec(w, target, i));
    EXPECT_EQ(out.close(), status::ok);
    return ScratchFolder::read("out.fh");
  }
};

TEST_F(Heidelberg, RecordGivesNameYearsAndWidths) {
  read("HEADER:\nKeyCode=CORE01\nUnit=1/1000 mm\nDateBegin=1901\nLength=12\nDATA:Tree\n" + block(10, 1234) +
       "   567    89\n");
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.fy(1), 1901);
  EXPECT_EQ(w.ly(1), 1912);
  EXPECT_EQ(w.x(1), 1.234);
  EXPECT_EQ(w.x(11), 0.567);
  EXPECT_EQ(w.x(12), 0.089);
  EXPECT_EQ(w.ad(2), 13);
  EXPECT_EQ(values(w.xok, 1), std::vector<bool>(12, true));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Heidelberg, DateBegin1901AndLength100Give1901To2000WhicheverComesFirst) {
  for (const std::string keys : {"DateBegin=1901\nLength=100\n", "Length=100\nDateBegin=1901\n"}) {
    read("HEADER:\n" + keys + "DATA:Tree\n" + block(100, 500));
    EXPECT_EQ(w.fy(1), 1901) << keys;
    EXPECT_EQ(w.ly(1), 2000) << keys;
  }
}

TEST_F(Heidelberg, YearsAreReadFromSixColumns) {
  read("HEADER:\nLength=1\nDateBegin=  1901\nDATA:Tree\n" + block(1, 500));
  EXPECT_EQ(w.fy(1), 1901);
  read("HEADER:\nLength=1\nDateEnd=  2000\nDATA:Tree\n" + block(1, 500));
  EXPECT_EQ(w.ly(1), 2000);
}

TEST_F(Heidelberg, DateEnd2000BeforeOrBehindLength100GivesFirstYear1901) {
  for (const std::string keys : {"DateEnd=2000\nLength=100\n", "Length=100\nDateEnd=2000\n"}) {
    read("HEADER:\n" + keys + "DATA:Tree\n" + block(100, 500));
    EXPECT_EQ(w.fy(1), 1901) << keys;
    EXPECT_EQ(w.ly(1), 2000) << keys;
  }
}

// Each date before the length marks the other as pending, so that the later one counts.
TEST_F(Heidelberg, OfTwoDatesBeforeTheLengthTheLaterOneCounts) {
  read("HEADER:\nDateBegin=1901\nDateEnd=1999\nLength=10\nDATA:Tree\n" + block(10, 500));
  EXPECT_EQ(w.fy(1), 1990);
  EXPECT_EQ(w.ly(1), 1999);
  read("HEADER:\nDateEnd=1999\nDateBegin=1901\nLength=10\nDATA:Tree\n" + block(10, 500));
  EXPECT_EQ(w.fy(1), 1901);
  EXPECT_EQ(w.ly(1), 1910);
}

TEST_F(Heidelberg, RecordWithoutLengthKeepsItsOtherYearPending) {
  read("HEADER:\nKeyCode=CORE01\nDateBegin=1901\nDATA:Tree\n\nHEADER:\nDateEnd=1999\nDATA:Tree\n\n");
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.fy(1), 1901);
  EXPECT_EQ(w.ly(1), -999999);
  EXPECT_EQ(w.yr(1), 0);
  EXPECT_EQ(w.fy(2), -999999);
  EXPECT_EQ(w.ly(2), 1999);
}

// Only a pending year is completed from the length; without dates there is none.
TEST_F(Heidelberg, RecordWithoutDatesKeepsBothYears0) {
  read("HEADER:\nKeyCode=CORE01\nLength=10\nDATA:Tree\n" + block(10, 500));
  EXPECT_EQ(w.fy(1), 0);
  EXPECT_EQ(w.ly(1), 0);
  EXPECT_EQ(w.yr(1), 10);
}

TEST_F(Heidelberg, LengthGivenTwiceLeavesTheLastYearOfTheFirst) {
  read("HEADER:\nLength=5\nDateBegin=1901\nLength=10\nDATA:Tree\n" + block(10, 500));
  EXPECT_EQ(w.fy(1), 1901);
  EXPECT_EQ(w.yr(1), 10);
  EXPECT_EQ(w.ly(1), 1905);
}

TEST_F(Heidelberg, KeysThatAreNotKnownAreIgnored) {
  read(
      "HEADER:\nDated=Dated\nDataFormat=Tree\nLocation=Somewhere far in the north of the country\nKeyCode=A\n"
      "DateBegin=1\nSapWoodRings=3\nLength=2\nDATA:Single\n   400   500\n");
  EXPECT_EQ(w.nam(1).view(), "A       ");
  EXPECT_EQ(w.fy(1), 1);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.4, 0.5}));
  EXPECT_EQ(messages(), Messages{});
}

// --- Units.

TEST_F(Heidelberg, WithoutUnitAMeanOf250IsHundredthsAndOneOf301Thousandths) {
  const std::string header = "HEADER:\nDateBegin=1901\nLength=4\nDATA:Tree\n";
  read(header + block(4, 250));
  EXPECT_EQ(w.x(1), 2.5);
  read(header + block(4, 301));
  EXPECT_EQ(w.x(1), 0.301);
  read(header + block(4, 300));  // not above 300
  EXPECT_EQ(w.x(1), 3.0);
}

// 310 310 310 -280 has a mean of 162.5; without the missing ring it would be 310.
TEST_F(Heidelberg, TheMeanThatDecidesTheUnitIncludesMissingRings) {
  read("HEADER:\nDateBegin=1901\nLength=4\nDATA:Tree\n   310   310   310  -280\n");
  EXPECT_EQ(w.x(1), 3.1);
}

TEST_F(Heidelberg, UnitHoldsForItsOwnRecordAlone) {
  read("HEADER:\nUnit=1/100 mm\nDateBegin=1901\nLength=2\nDATA:Tree\n" + block(2, 500) +
       "HEADER:\nDateBegin=1901\nLength=2\nDATA:Tree\n" + block(2, 500));
  EXPECT_EQ(w.x(1), 5.0);
  EXPECT_EQ(w.x(3), 0.5);
}

TEST_F(Heidelberg, LengthHoldsForItsOwnRecordAlone) {
  read("HEADER:\nDateBegin=1901\nLength=2\nDATA:Tree\n" + block(2, 500) +
       "HEADER:\nDateBegin=1950\nDATA:Tree\n\n");
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.ly(2), -999999);
}

TEST_F(Heidelberg, DeclaredUnitCountsWhateverTheMean) {
  read("HEADER:\nUnit=1/100 mm\nDateBegin=1901\nLength=4\nDATA:Tree\n" + block(4, 500));
  EXPECT_EQ(w.x(1), 5.0);
  read("HEADER:\nUnit=1/1000 mm\nDateBegin=1901\nLength=4\nDATA:Tree\n" + block(4, 100));
  EXPECT_EQ(w.x(1), 0.1);
  read("HEADER:\nUnit=1/10 mm\nDateBegin=1901\nLength=4\nDATA:Tree\n" + block(4, 500));  // no unit we know
  EXPECT_EQ(w.x(1), 0.5);
}

// --- Missing rings.

// The other series has 2 mm in the year; q = (1 + 3) / ((1 + 2)/2 + (3 + 2)/2) = 1.
TEST_F(Heidelberg, NegativeValueIsAMissingRingAndIsEstimated) {
  read(
      "HEADER:\nUnit=1/1000 mm\nDateBegin=1901\nLength=3\nDATA:Tree\n  1000 -9990  3000\n"
      "HEADER:\nUnit=1/1000 mm\nDateBegin=1901\nLength=3\nDATA:Tree\n  2000  2000  2000\n");
  EXPECT_EQ(values(w.xok, 1), (std::vector<bool>{true, false, true}));
  EXPECT_NEAR(w.x(2), 2.0, 1e-15);
}

TEST_F(Heidelberg, ARingThatIsMissingIsSoWhateverTheStoreHeld) {
  add_core(1901, {1, 2, 3});
  read("HEADER:\nDateBegin=1901\nLength=3\nDATA:Tree\n   100    -1   300\n");
  EXPECT_EQ(values(w.xok, 1), (std::vector<bool>{true, false, true}));
}

// --- Ends and failures.

TEST_F(Heidelberg, FileThatEndsInAHeaderIsToldOnceAndThatRecordDoesNotCount) {
  read("HEADER:\nDateBegin=1901\nLength=2\nDATA:Tree\n   400   500\nHEADER:\nKeyCode=CORE02\n");
  EXPECT_EQ(messages(), Messages{"Read3 site.fh fail err =    -1"});
  EXPECT_EQ(w.nc, 1);
}

TEST_F(Heidelberg, FileThatEndsAmongTheValuesKeepsTheLengthAndZerosForTheRest) {
  w.x.fill(77);  // of whatever was loaded before
  read("HEADER:\nUnit=1/1000 mm\nDateBegin=1901\nLength=25\nDATA:Tree\n" + block(10, 400) + "   700\n");
  EXPECT_EQ(messages(), Messages{"Read2 site.fh fail err =    -1"});
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 25);
  EXPECT_EQ(w.ly(1), 1925);
  EXPECT_EQ(w.x(10), 0.4);
  EXPECT_EQ(w.x(11), 0.7);
  for (int k = 12; k <= 25; ++k) EXPECT_EQ(w.x(k), 0.0) << k;
}

TEST_F(Heidelberg, BadValueIsToldAndItsRecordAndThoseBehindItAreReadAsAHeader) {
  read("HEADER:\nUnit=1/1000 mm\nDateBegin=1901\nLength=25\nDATA:Tree\n" + block(10, 400) +
       "   700     x   700\n" + block(5, 400) +
       "HEADER:\nUnit=1/1000 mm\nDateBegin=1950\nLength=1\nDATA:Tree\n   400\n");
  EXPECT_EQ(messages(), Messages{"Read2 site.fh fail err =  5010"});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.x(11), 0.7);
  EXPECT_EQ(w.x(12), 0.0);
  EXPECT_EQ(w.fy(2), 1950);
}

TEST_F(Heidelberg, BadNumberInAHeaderIsToldWithItsLine) {
  read("HEADER:\nDateBegin=early\nLength=2\nDATA:Tree\n   400   500\n");
  EXPECT_EQ(messages(), Messages{"Read DateBegin=early fail err =  5010"});
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.fy(1), 0);
  EXPECT_EQ(w.ly(1), 1);
}

TEST_F(Heidelberg, NegativeLengthIsNoneAndUsesUpOneRecord) {
  read(
      "HEADER:\nKeyCode=A\nUnit=1/1000 mm\nDateBegin=1901\nLength=2\nDATA:Tree\n   400   500\n"
      "HEADER:\nKeyCode=B\nDateBegin=1901\nLength=-2\nDATA:Tree\n   600   700\n"
      "HEADER:\nKeyCode=C\nUnit=1/1000 mm\nDateBegin=1901\nLength=1\nDATA:Tree\n   800\n");
  EXPECT_EQ(messages(), Messages{});
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.4, 0.5}));
  EXPECT_EQ(w.yr(2), 0);
  EXPECT_EQ(w.ly(2), 1900);
  EXPECT_EQ(values(w.x, 3), std::vector<double>{0.8});
}

TEST_F(Heidelberg, RecordStartsEmptyWhateverTheStoreHeld) {
  add_core(1900, {1, 2, 3});
  w.nam(1) = "OLD";
  read("HEADER:\nDATA:Tree\n\n");
  ASSERT_EQ(w.nc, 1);
  EXPECT_TRUE(w.nam(1).blank());
  EXPECT_EQ(w.fy(1), 0);
  EXPECT_EQ(w.ly(1), 0);
  EXPECT_EQ(w.yr(1), 0);
}

TEST_F(Heidelberg, DATAOnThe200thLineIsSeenAndOnThe201stIsNot) {
  for (const int line_of_data : {200, 201}) {
    std::string file = "HEADER:\nUnit=1/100 mm\nDateBegin=1901\nLength=1\n";
    for (int line = 5; line < line_of_data; ++line) file += "Comment=\n";
    read(file + "DATA:Tree\n    40\n");
    ASSERT_EQ(w.nc, 1);
    EXPECT_EQ(w.x(1), line_of_data == 200 ? 0.4 : 0.0);
  }
}

// Lines 1 to 200 are examined; line 201 was read behind the last of them, line 202 starts the next record.
TEST_F(Heidelberg, After200LinesWithoutDATATheSeriesGetsNoValues) {
  std::string file = "HEADER:\nKeyCode=LONG\nDateBegin=1901\nLength=3\n";
  for (int line = 5; line <= 201; ++line) file += "Comment=\n";
  read(file + "HEADER:\nKeyCode=NEXT\nUnit=1/100 mm\nDateBegin=1950\nLength=1\nDATA:Tree\n    40\n");
  EXPECT_EQ(messages(), Messages{});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.nam(1).trimmed(), "LONG");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0, 0, 0}));
  EXPECT_EQ(w.nam(2).trimmed(), "NEXT");
  EXPECT_EQ(w.x(4), 0.4);
}

TEST_F(Heidelberg, ReadingStopsAt5000RecordsWithoutAMessage) {
  std::string file;
  for (int k = 1; k <= 5'001; ++k)
    file += "HEADER:\nUnit=1/100 mm\nDateBegin=1901\nLength=1\nDATA:Tree\n    40\n";
  read(file);
  EXPECT_EQ(w.nc, 5000);
  EXPECT_EQ(w.ad(5001), 5001);
  EXPECT_EQ(messages(), Messages{});
  const ReadDecisions decided = read_heidel(w);
  ASSERT_EQ(decided.not_taken.size(), 1u);
  EXPECT_EQ(decided.not_taken[0].first, 30'001);
  EXPECT_EQ(limits_passed(decided, "site.fh"),
            std::vector<std::string>{"site.fh: series behind the 5,000th were not read"});
}

// 121 x 9,999 = 1,209,879 values: the 121st has no room.
TEST_F(Heidelberg, RecordThatWouldPassThePoolsEndIsRefusedAndThoseBeforeItKept) {
  std::string file;
  for (int k = 1; k <= 121; ++k) {
    file += "HEADER:\nUnit=1/100 mm\nDateBegin=0\nLength=9999\nDATA:Tree\n" + block(9999, 40);
  }
  read(file);
  EXPECT_EQ(messages(), Messages{"Would be too many rings"});
  EXPECT_EQ(w.nc, 120);
  EXPECT_EQ(w.ad(121), 120 * 9999 + 1);
  EXPECT_EQ(w.x(120 * 9999), 0.4);
}

// --- read_open.

TEST_F(Heidelberg, MissingFileIsToldAsNotExistingAndReadsAsAtItsEnd) {
  w.cnam(1) = "gone.fh";
  read_heidel(w);
  EXPECT_EQ(messages(), (Messages{"gone.fh - Does not exist", "Read1 gone.fh fail err =    -1"}));
  EXPECT_EQ(w.nc, 0);
}

TEST_F(Heidelberg, MissingFileWhoseNameEndsInPthIsPassedOverInSilence) {
  TextInput file;
  read_open(file, {disk, "gone.pth   ", 0, troubles});
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(file.read(EditFormat("(A8)")), status::end_of_file);
}

TEST_F(Heidelberg, FolderIsToldAsOpen) {
  TextInput file;
  read_open(file, {disk, ".", 0, troubles});
  EXPECT_EQ(messages(), Messages{"Open. fail err =    21"});
}

// --- The writer.

TEST_F(Heidelberg, RecordOf38ValuesEndsWithALineOfEightValuesAndTwoZeros) {
  std::vector<double> widths(38);
  std::iota(widths.begin(), widths.end(), 101.0);
  for (double& width : widths) width /= 1000;
  add_core(1953, widths);
  w.nam(1) = "CORE01";
  w.xok(3) = false;
  EXPECT_EQ(written(1),
            "HEADER:\n"
            "KeyCode=    CORE01  \n"
            "Unit=1/1000 mm\n"
            "DateEnd=1990  \n"
            "Length=38    \n"
            "DATA:Tree\n"
            "   101   102 -9990   104   105   106   107   108   109   110\n"
            "   111   112   113   114   115   116   117   118   119   120\n"
            "   121   122   123   124   125   126   127   128   129   130\n"
            "   131   132   133   134   135   136   137   138     0     0\n");
}

TEST_F(Heidelberg, NameReadBackIsFourBlanksAndItsFirstFourCharacters) {
  add_core(1950, {1.5, 0.25});
  w.nam(1) = "CORE0123";
  read(written(1));
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.nam(1).view(), "    CORE");
  EXPECT_EQ(w.fy(1), 1950);
  EXPECT_EQ(w.ly(1), 1951);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.5, 0.25}));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Heidelberg, NameWrittenToTheLeftIsReadBackWhole) {
  add_core(1950, {1.5, 0.25});
  w.nam(1) = "CORE0123";
  const std::string file = written(1, Careful::everything());
  EXPECT_NE(file.find("\nKeyCode=CORE0123    \n"), std::string::npos) << file;
  read(file);
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.nam(1).view(), "CORE0123");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.5, 0.25}));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Heidelberg, NameIsWrittenToTheLeftWithThatMendAlone) {
  add_core(1950, {1.5});
  w.nam(1) = "CORE0123";
  Careful others = Careful::everything(), alone;
  others.set(Mend::heidelberg_names, false);
  alone.set(Mend::heidelberg_names, true);
  EXPECT_NE(written(1, others).find("\nKeyCode=    CORE0123\n"), std::string::npos);
  EXPECT_NE(written(1, alone).find("\nKeyCode=CORE0123    \n"), std::string::npos);
}

TEST_F(Heidelberg, SeriesWithoutYearsIsWrittenWithOneEmptyLineAndReadsBack) {
  add_core(-20, {});
  w.nam(1) = "CORE01";
  const std::string file = written(1);
  EXPECT_TRUE(file.ends_with("DateEnd=-21   \nLength=0     \nDATA:Tree\n\n"));
  read(file + file);
  EXPECT_EQ(w.nc, 2);
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Heidelberg, FailureIsToldOnceAsWriteBehindTheData) {
  add_core(1950, std::vector<double>(50'000, 1.0));
  w.nam(1) = "CORE01";
  TextOutput out;
  ASSERT_EQ(out.create(disk, "/dev/full"), status::ok);
  EXPECT_FALSE(write_hrec(w, writing(out), 1));
  EXPECT_EQ(messages(), Messages{"Write CORE01 fail err =    28"});
}

// Records reach a file 64 KiB at a time: with 65,500 bytes behind it the header is what meets the full disk.
TEST_F(Heidelberg, FailureOfTheHeaderIsToldOnceAsWriteBehindTheData) {
  add_core(1950, {1.0, 2.0});
  w.nam(1) = "CORE01";
  TextOutput out;
  ASSERT_EQ(out.create(w.files, "/dev/full"), status::ok);
  for (int line = 1; line <= 655; ++line)
    ASSERT_EQ(out.write(EditFormat("(A99)"), std::string(99, 'x')), status::ok);
  EXPECT_FALSE(write_hrec(w, writing(out), 1));
  EXPECT_EQ(messages(), Messages{"Write CORE01 fail err =    28"});
}

}  // namespace
}  // namespace vorn
