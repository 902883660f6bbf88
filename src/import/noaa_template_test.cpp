// The archive's template, as files have it. The headers are made up.
#include "import/noaa_template.h"

#include <gtest/gtest.h>

#include "support/imported_specimens.h"

namespace vorn {
namespace {

const std::string header =
    "# Made-up site - Tree Ring Widths\n"
    "#-----------------------------------------------------------------------\n"
    "#                World Data Service for Paleoclimatology, Boulder\n"
    "# Site_Information\n"
    "#     Site_Name: Nowhere\n"
    "# Data_Collection\n"
    "#     First_Year: 1990\n"
    "#     Last_Year: 1993\n"
    "# Missing_Values: NaN\n";

const std::string variables =
    "# Variables\n"
    "##age_CE\tage,,,year Common Era,,tree ring,,,N\n"
    "##NOW01A\ttree ring width,wood,,mm,,tree ring,raw,,N\n"
    "## NOW01B \t tree ring width , wood , , mm , , tree ring , raw , , N\n"
    "# Data:\n";

constexpr const char* two_series = "NOW01A 1990: 1.25 1.5 1.1 1\nNOW01B 1991: 0.5 0.75 1.25\n";

TEST(NoaaTemplate, DescribesItsColumns) {
  const Imported one =
      taken(header + variables +
            "age_CE\tNOW01A\tNOW01B\n1990\t1.25\tNaN\n1991\t1.50\t0.50\n1992\t1.10\t0.75\n1993\t1\t1.25\n");
  EXPECT_EQ(one.layout, OtherLayout::noaa_template);
  EXPECT_EQ(shown(one), two_series);
  EXPECT_EQ(doubts(one), "");
  EXPECT_EQ(notes(one), "comments layout unit-said copy-form series series missing-marks");
}

TEST(NoaaTemplate, MayHaveOtherLineEndsBlanksAndComments) {
  std::string file = header + variables +
                     "# more\nage_CE \tNOW01A\t NOW01B\n\n1990\t1.25\t\n# a comment\n1991\t 1.50 \t0.50\t\n"
                     "1992\t1.10\t0.75\n1993\t1\t1.25\n";
  EXPECT_EQ(series_of(file), two_series);
  std::string returns = file, both;
  std::ranges::replace(returns, '\n', '\r');
  EXPECT_EQ(series_of(returns), two_series);
  for (const char c : file) both += c == '\n' ? "\r\n" : std::string{c};
  EXPECT_EQ(series_of("\xef\xbb\xbf" + both), two_series);
}

TEST(NoaaTemplate, SaysWhichValuesAreMissing) {
  const auto file = [](const std::string& words, const std::string& value) {
    return "# NOAA\n# " + words + "\n##A\tring width,,,mm,,,,,N\nyear\tA\n1990\t1.5\n1991\t" + value +
           "\n1992\t2\n";
  };
  constexpr const char* gap = "A 1990: 1.5 - 2\n";
  EXPECT_EQ(series_of(file("Missing Values: -999", "-999.00")), gap);
  EXPECT_EQ(series_of(file("Missing_Value: 9.999, NaN", "9.999")), gap);
  EXPECT_EQ(series_of(file("Missing Values: gone", "Gone")), gap);
  EXPECT_EQ(series_of(file("Missing Values: 0", "0")), gap) << "where the file says so";
  EXPECT_EQ(series_of(file("Missing Values: NaN", "NA")), gap) << "and what is usual";
  EXPECT_EQ(notes(taken(file("Missing Values: -999", "-9.5"))).find("negative"),
            notes(taken(file("x", "-9.5"))).find("negative"));
}

TEST(NoaaTemplate, HasUnitsOfItsOwn) {
  const auto widths = [](const std::string& units, const std::string& comment = "NOAA") {
    return series_of("# " + comment + "\n##A\tring width,," + "," + units +
                     ",,,,,N\nage_CE\tA\n1990\t150\n1991\t200\n");
  };
  EXPECT_EQ(widths("0.01 mm"), "A 1990: 1.5 2\n");
  EXPECT_EQ(widths("hundredths of mm"), "A 1990: 1.5 2\n");
  EXPECT_EQ(widths("0.001 mm"), "A 1990: 0.15 0.2\n");
  EXPECT_EQ(widths("micrometer"), "A 1990: 0.15 0.2\n");
  EXPECT_EQ(widths("\xb5m"), "A 1990: 0.15 0.2\n") << "Latin-1";
  EXPECT_EQ(widths("", "Measurement_Units: 1/1000 mm"), "A 1990: 0.15 0.2\n");
  EXPECT_EQ(widths("furlong"), "A 1990: 1.5 2\n");
  EXPECT_EQ(doubts(taken("# NOAA\n##A\tring width,,,furlong,,,,,N\nage_CE\tA\n1990\t150\n1991\t200\n")),
            "unit-guessed:3");
}

TEST(NoaaTemplate, CountsBackFrom1950WhereItSaysSo) {
  EXPECT_EQ(series_of("##age\tage,,,calendar years before present,,,,,N\n##A\tring width,,,mm,,,,,N\nage\tA\n"
                      "12\t1.5\n11\t1.25\n"),
            "A 1938: 1.5 1.25\n");
  EXPECT_EQ(series_of("# NOAA\nage_calBP\tA\n10\t1.5\n11\t1.25\n"), "A 1939: 1.25 1.5\n");
}

TEST(NoaaTemplate, HasColumnsThatAreNoRingWidths) {
  const Imported one = taken(
      "# NOAA\n##age_CE\tage,,,year CE,,,,,N\n##A\ttotal ring width,,,mm,,,,,N\n##B\tearlywood "
      "width,,,mm,,,,,N\n"
      "##trsgi\ttree ring standardized growth index,,,percent relative to mean growth,,,,,N\n"
      "##num\tsample depth,,,count,,,,,N\n##spp\tspecies,,,,,,,,C\n"
      "age_CE\tA\tB\ttrsgi\tnum\tspp\n1990\t1.5\t1.1\t0.9\t12\tPISY\n1991\t1.5\t1.1\t0.9\t12\tPISY\n");
  EXPECT_EQ(shown(one), "A 1990: 1.5 1.5\n");
  EXPECT_EQ(notes(one),
            "comments layout other-column other-column other-column other-column unit-said copy-form series");
}

TEST(NoaaTemplate, OfAChronologyHasNoCopy) {
  const Imported one = taken(
      "# NOAA\n##age_CE\tage,,,year CE,,,,,N\n##trsgi\ttree ring standardized growth index,,,percent,,,,,N\n"
      "##num\tsample depth,,,count,,,,,N\nage_CE\ttrsgi\tnum\n1990\t0.9\t12\n1991\t1.1\t12\n");
  EXPECT_EQ(doubts(one), "no-copy");
}

TEST(NoaaTemplate, OfEarlywoodAloneHasItsWidths) {
  EXPECT_EQ(series_of("##A\tearlywood width,,,mm,,,,,N\nage_CE\tA\n1990\t1.5\n1991\t1.6\n"),
            "A 1990: 1.5 1.6\n");
}

TEST(NoaaTemplate, MayHaveItsNamesInAComment) {
  EXPECT_EQ(series_of("# NOAA\n# year\tA\tB\n1990\t1.5\t2\n1991\t1.25\t3\n"),
            "A 1990: 1.5 1.25\nB 1990: 2 3\n");
}

TEST(NoaaTemplate, MayBePartedByBlanksOrCommas) {
  EXPECT_EQ(series_of("# NOAA\n year   A    B\n 1990  1.5  2\n 1991 1.25 NaN \n"),
            "A 1990: 1.5 1.25\nB 1990: 2\n");
  EXPECT_EQ(series_of("# NOAA\nyear,A,B\n1990,1.5,2\n1991,1.25,NaN\n"), "A 1990: 1.5 1.25\nB 1990: 2\n");
}

TEST(NoaaTemplate, SaysWhatIsWrongLineByLine) {
  const Imported one = taken(
      "# NOAA\n# First_Year: 1989\n##A\tring "
      "width,,,mm,,,,,N\nage_CE\tA\tA\n1990\t1.5\t2\n1990\t1.6\t2\n1993\t1.25\tx\n"
      "1992\t1.1\t1\t9\n199O\t1\t1\n1994\t1\n");
  EXPECT_EQ(shown(one), "A 1990: 1.5 - 1.1 1.25 1\nA_2 1990: 2 - 1\n");
  EXPECT_EQ(doubts(one),
            "dates-disagree:2 name-twice-same-years:4 year-twice:6 year-twice:6 no-number:7 no-column:8 "
            "years-out-of-order:8 no-year:9 short-rows:10");
}

TEST(NoaaTemplate, MayHaveTucsonLinesBehindItsComments) {
  const Imported one =
      taken(header +
            "NOW    1 NOWHERE\nNOW01A  1997   125   150   100\nNOW01A  2000     0 -9990   110   999\n"
            "words\n# a comment\nNOW01B  1999  1251\nNOW01B  2000 12x    1100 -9999\n");
  EXPECT_EQ(shown(one), "NOW01A 1997: 1.25 1.5 1 0 - 1.1\nNOW01B 1999: 1.251 - 1.1\n");
  EXPECT_EQ(doubts(one), "no-decade:13 no-number:16");
  EXPECT_EQ(one.series[0].unit, 1000);
  EXPECT_FALSE(imported("A       1990   125   150   100   999\n", {2026}))
      << "without comments it is the program's";
}

TEST(NoaaTemplate, IsNotMadeOfComments) {
  for (const char* none :
       {"# NOAA\n", "# NOAA\n##A\tring width,,,mm,,,,,N\n", "# NOAA\nsome words\nand more\n",
        "# a comment\nA       1990   125   150   100   999\n"})
    EXPECT_FALSE(imported(none, {2026})) << none;
}

}  // namespace
}  // namespace vorn
