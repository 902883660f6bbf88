#include "formats/compact.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/format_bench.h"

namespace vorn {
namespace {

class Compact : public FormatBench {
 protected:
  void read(const std::string& contents) {
    current_file("site.rwm", contents);
    read_compact(w);
  }

  static std::string header(int count, int first_year, const char* name, const char* exponent,
                            const char* format) {
    char text[128];
    std::snprintf(text, sizeof text, "%8d=N%8d=I %-8s%39s%3s%-8s\n", count, first_year, name, "", exponent,
                  format);
    return text;
  }

  std::string written(int i) {
    TextOutput out;
    EXPECT_EQ(out.create(disk, "out.rwm"), status::ok);
    EXPECT_TRUE(write_crec(w, writing(out), i));
    EXPECT_EQ(out.close(), status::ok);
    return ScratchFolder::read("out.rwm");
  }
};

TEST_F(Compact, SeriesAreReadOneBehindTheOther) {
  read(header(5, 1953, "CORE01", "", "(3F4.0)") + " 101 102 103\n 104 105\n" +
       header(2, -10, "CORE02", "", "(3F4.0)") + " 201 202\n");
  EXPECT_EQ(messages(), Messages{});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.fy(1), 1953);
  EXPECT_EQ(w.ly(1), 1957);
  EXPECT_EQ(values(w.xok, 1), std::vector<bool>(5, true));
  EXPECT_EQ(w.fy(2), -10);
  EXPECT_EQ(w.ly(2), -9);
  EXPECT_EQ(w.ad(2), 6);
  EXPECT_EQ(w.ad(3), 8);
}

// "(3F4.0)" has an "F" as its third character and a "." as its fifth: hundredths.
TEST_F(Compact, FormatWithoutA4AsItsFifthCharacterAndABlankExponentIsHundredths) {
  read(header(2, 1953, "CORE01", "", "(26F3.0)") + "101102\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 1.02}));
  read(header(2, 1953, "CORE01", "", "(9F4.0)") + " 101 102\n");  // the 4 is the fourth
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 1.02}));
  read(header(2, 1953, "CORE01", "", "(19F4.0)") + " 101 102\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.101, 0.102}));
}

TEST_F(Compact, ExponentMinus2GivesValuesDividedBy100) {
  read(header(3, 1953, "CORE01", "-2", "(10F8.0)") + "     101     102   -1\n");
  EXPECT_EQ(w.x(1), 1.01);
  EXPECT_EQ(w.x(2), 1.02);
  EXPECT_FALSE(w.xok(3));
  read(header(2, 1953, "CORE01", " -3", "(19F4.0)") + " 101 102\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.101, 0.102}));
  read(header(2, 1953, "CORE01", "1", "(19F4.0)") + "   1 0.2\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{10, 2}));
}

TEST_F(Compact, FormatMayHaveIntegersOrDecimals) {
  read(header(2, 1953, "CORE01", "-2", "(10I5)") + "  101  102\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 1.02}));
  read(header(2, 1953, "CORE01", "-1", "(10F5.1)") + "  101 10.2\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 1.02}));
}

TEST_F(Compact, RecordWrittenReadsBackInThousandthsWithMissingRingsAtMinus0999) {
  std::vector<double> widths;
  for (int k = 1; k <= 38; ++k) widths.push_back((100 + k) / 1000.0);
  add_core(1953, widths);
  add_core(1953, widths);
  w.nam(1) = "CORE01";
  w.nam(2) = "CORE02";
  w.xok(2) = false;
  read(written(1) + written(2));
  EXPECT_EQ(messages(), Messages{});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.nam(1).view(), "CORE01  ");
  EXPECT_EQ(w.fy(1), 1953);
  EXPECT_EQ(w.ly(1), 1990);
  EXPECT_FALSE(w.xok(2));
  EXPECT_EQ(values(w.x, 2), widths);
  EXPECT_NEAR(w.x(2), widths[1], 1e-15);  // estimated: the same width as in the series beside it
}

// Over more than 12,000 years nothing is estimated, so that the value stands as it was read.
TEST_F(Compact, MissingRingIsReadAsMinus0999BeforeItIsEstimated) {
  read(header(2, 1000, "CORE01", "", "(19F4.0)") + "-999 100\n" +
       header(1, 20'000, "CORE02", "", "(19F4.0)") + " 100\n");
  EXPECT_FALSE(w.xok(1));
  EXPECT_EQ(w.x(1), -0.999);
}

TEST_F(Compact, EndOfFileAmongTheValuesKeepsThoseReadAndTheSeries) {
  w.x.fill(77);  // of whatever was loaded before
  read(header(7, 1953, "CORE01", "", "(3F4.0)") + " 101 102 103\n 104\n");
  EXPECT_EQ(messages(), Messages{});
  ASSERT_EQ(w.nc, 1);
  EXPECT_EQ(w.yr(1), 7);
  EXPECT_EQ(w.ly(1), 1959);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 1.02, 1.03, 1.04, 0, 0, 0}));
  EXPECT_EQ(w.ad(2), 8);
}

TEST_F(Compact, BlankNameEndsTheFile) {
  read(header(1, 1953, "CORE01", "", "(3F4.0)") + " 101\n" + header(1, 1953, "", "", "(3F4.0)") + " 101\n" +
       header(1, 1953, "CORE02", "", "(3F4.0)") + " 101\n");
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Compact, NoValuesStillUseOneRecord) {
  read(header(0, 1953, "CORE01", "", "(3F4.0)") + "\n" + header(-5, 1953, "CORE02", "", "(3F4.0)") +
       " 1 2 3\n" + header(1, 1953, "CORE03", "", "(3F4.0)") + " 101\n");
  EXPECT_EQ(messages(), Messages{});
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(w.yr(1), 0);
  EXPECT_EQ(w.yr(2), 0);  // fewer than none is none
  EXPECT_EQ(w.ly(2), 1952);
  EXPECT_EQ(values(w.x, 3), std::vector<double>{1.01});
}

// --- Failures.

TEST_F(Compact, BadValueIsToldAsReadC2AndLeavesZeros) {
  read(header(5, 1953, "CORE01", "", "(3F4.0)") + " 101   x 103\n" +
       header(1, 1953, "CORE02", "", "(3F4.0)") + " 101\n");
  EXPECT_EQ(messages(), Messages{"Read c2site.rwm fail err =  5010"});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 0, 0, 0, 0}));
  EXPECT_EQ(values(w.x, 2), std::vector<double>{1.01});
}

TEST_F(Compact, FormatThatCannotBeUsedIsToldAsReadC2) {
  for (const char* format : {"(3X4.0)", "(A4)", "(19X)", "19F4.0", "((((((("}) {
    read(header(1, 1953, "CORE01", "", format) + " 101\n");
    const auto told = messages();
    ASSERT_FALSE(told.empty()) << format;
    EXPECT_EQ(told[0], "Read c2site.rwm fail err =  5006") << format;
    EXPECT_EQ(w.x(1), 0.0) << format;
  }
}

TEST_F(Compact, BadExponentIsToldAsReadC1AndTheHeaderKeepsTheOneBefore) {
  read(header(1, 1953, "CORE01", "-1", "(10F8.0)") + "     101\n" +
       header(1, 1953, "CORE02", "x", "(3F4.0)") + "     102\n");
  EXPECT_EQ(messages(), Messages{"Read c1site.rwm fail err =  5010"});
  ASSERT_EQ(w.nc, 2);
  EXPECT_EQ(w.x(2), 10.2);  // and the format before, which stands behind the exponent
}

TEST_F(Compact, NegativeCountIsNoneAndHarmsNoSeriesBeforeIt) {
  read(header(2, 1953, "CORE01", "", "(3F4.0)") + " 101 102\n" + header(-2, 1960, "CORE02", "", "(3F4.0)") +
       "\n" + header(1, 1953, "CORE03", "", "(3F4.0)") + " 103\n");
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{1.01, 1.02}));
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(w.yr(2), 0);  // whose values use up a line all the same
  EXPECT_EQ(w.ad(3), w.ad(2));
}

// What is left of the file is lost, so it is told.
TEST_F(Compact, HeaderWithoutANameToReadIsToldAndEndsTheFile) {
  w.nam(2) = "OLD";  // of whatever was loaded before
  read(header(1, 1953, "CORE01", "", "(3F4.0)") + " 101\nno header at all\n" +
       header(1, 1953, "CORE02", "", "(3F4.0)") + " 101\n");
  EXPECT_EQ(messages(), Messages{"Read c1site.rwm fail err =  5010"});
  EXPECT_EQ(w.nc, 1);
}

TEST_F(Compact, MissingFileIsToldAsOpenInSmallLetters) {
  add_core(1900, {1, 2, 3});
  w.cnam(1) = "gone.rwm";
  read_compact(w);
  EXPECT_EQ(messages(), Messages{"opengone.rwm fail err =     2"});
  EXPECT_EQ(w.nc, 0);
}

// --- Limits.

TEST_F(Compact, SeriesThatWouldPassThePoolsEndIsRefusedAndThoseBeforeItKept) {
  read(header(2, 1953, "CORE01", "", "(3F4.0)") + " 101 102\n" +
       header(1'199'999, 1953, "LONG", "", "(3F4.0)") + " 101\n");
  EXPECT_EQ(messages(), Messages{"Would be too many rings"});
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.ad(2), 3);
  EXPECT_EQ(w.x(2), 1.02);
  read(header(2, 1953, "CORE01", "", "(3F4.0)") + " 101 102\n" +
       header(1'199'998, 1953, "LONG", "", "(3F4.0)") + " 103\n");
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(w.nc, 2);
  EXPECT_EQ(w.ad(3), 1'200'001);
  EXPECT_EQ(w.x(3), 1.03);
}

TEST_F(Compact, ReadingStopsBehindThe10000thSeriesWithoutAMessage) {
  std::string file;
  for (int k = 1; k <= 10'001; ++k) file += header(1, 1953, "CORE", "", "(3F4.0)") + " 101\n";
  read(file);
  EXPECT_EQ(w.nc, 10'000);
  EXPECT_EQ(messages(), Messages{});
  EXPECT_EQ(limits_passed(read_compact(w), "site.rwm"),
            std::vector<std::string>{"site.rwm: series behind the 10,000th were not read"});
}

// --- The writer.

TEST_F(Compact, HeaderLineNamesCountFirstYearSeriesAndFormatInTheirColumns) {
  add_core(1953, std::vector<double>(20, 0.1));
  w.nam(1) = "CORE0123";
  w.xok(20) = false;
  std::string line;
  for (int k = 1; k <= 19; ++k) line += " 100";
  EXPECT_EQ(written(1),
            "      20=N    1953=I CORE0123" + std::string(42, ' ') + "(19F4.0)\n" + line + "\n-999\n");
}

TEST_F(Compact, WidthOf10mmOrMoreIsAsterisks) {
  add_core(1953, {9.9994, 9.9995, 10.0, 12.5, 0.001});
  EXPECT_EQ(written(1).substr(80), "9999************   1\n");
}

TEST_F(Compact, WidthsFitUpToWhatIsRoundedTo9999Thousandths) {
  add_core(1953, {9.9994, -1, 0});  // a missing ring is written as its own value
  add_core(1953, {1, 9.9995});
  add_core(1953, {std::numeric_limits<double>::quiet_NaN()});
  w.xok(w.ad(3)) = true;
  EXPECT_TRUE(fits_compact(w, {}, 1));
  EXPECT_FALSE(fits_compact(w, {}, 2));
  EXPECT_FALSE(fits_compact(w, {}, 3));
}

TEST_F(Compact, SeriesWithoutYearsIsWrittenWithOneEmptyLine) {
  add_core(1953, {});
  w.nam(1) = "CORE01";
  EXPECT_EQ(written(1).substr(80), "\n");
}

TEST_F(Compact, FailureIsToldOnceAsWriteD) {
  add_core(1950, std::vector<double>(50'000, 1.0));
  w.nam(1) = "CORE01";
  TextOutput out;
  ASSERT_EQ(out.create(disk, "/dev/full"), status::ok);
  EXPECT_FALSE(write_crec(w, writing(out), 1));
  EXPECT_EQ(messages(), Messages{"writeDCORE01 fail err =    28"});
}

// Records reach a file 64 KiB at a time: with 65,500 bytes behind it the header is what meets the full disk.
TEST_F(Compact, FailureOfTheHeaderIsToldOnceAsWriteH) {
  add_core(1950, {1.0, 2.0});
  w.nam(1) = "CORE01";
  TextOutput out;
  ASSERT_EQ(out.create(w.files, "/dev/full"), status::ok);
  for (int line = 1; line <= 655; ++line)
    ASSERT_EQ(out.write(EditFormat("(A99)"), std::string(99, 'x')), status::ok);
  EXPECT_FALSE(write_crec(w, writing(out), 1));
  EXPECT_EQ(messages(), Messages{"writeHCORE01 fail err =    28"});
}

// --- Written carefully.

TEST_F(Compact, CarefullyASeriesWithWidthsOf10mmHasTenColumnsForAll) {
  w.careful.set(Mend::compact_widths, true);
  add_core(-5, {9.9995, 12.5, 0.001, 123.456, -1, 1'000'000, 0, 1, 2});
  w.nam(1) = "CORE01";
  w.xok(5) = false;
  EXPECT_EQ(
      written(1),
      header(9, -5, "CORE01", " -3", "(8F10.0)") +
          "     10000     12500         1    123456      -9991000000000         0      1000\n      2000\n");
}

TEST_F(Compact, CarefullyWideSeriesComeBackAmongOthers) {
  w.careful.set(Mend::compact_widths, true);
  const std::vector<double> wide{9.999, 10, 12.345, 0.001, 2'000'000};
  add_core(1953, {0.5, 0.25});
  add_core(1900, wide);
  add_core(1953, {9.999, 0.25});
  for (int i = 1; i <= 3; ++i) w.nam(i) = "CORE0" + std::to_string(i);
  const std::string file = written(1) + written(2) + written(3);
  w.careful = {};
  read(file);
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(values(w.x, 1), (std::vector<double>{0.5, 0.25}));
  EXPECT_EQ(values(w.x, 2), wide);
  EXPECT_EQ(w.fy(2), 1900);
  EXPECT_EQ(values(w.x, 3), (std::vector<double>{9.999, 0.25}));
  EXPECT_EQ(messages(), Messages{});
}

TEST_F(Compact, CarefullyAFileThatBeginsWithAWideSeriesIsRecognised) {
  w.careful.set(Mend::compact_widths, true);
  add_core(1900, {12, 13});
  current_file("wide.rwm", written(1));
  EXPECT_EQ(find_rftyp(w).layout, Layout::compact);
}

TEST_F(Compact, CarefullyAllWidthsFitThatAreNumbers) {
  w.careful.set(Mend::compact_widths, true);
  add_core(1953, {1, 9.9995});
  add_core(1953, {std::numeric_limits<double>::quiet_NaN()});
  w.xok(w.ad(2)) = true;
  EXPECT_TRUE(fits_compact(w, w.careful, 1));
  EXPECT_FALSE(fits_compact(w, w.careful, 2));
}

TEST_F(Compact, CarefullyNarrowSeriesAreWrittenAsEver) {
  add_core(1953, {9.999, 0.001});
  const std::string usual = written(1);
  w.careful = Careful::everything();
  EXPECT_EQ(written(1), usual);
}

}  // namespace
}  // namespace vorn
