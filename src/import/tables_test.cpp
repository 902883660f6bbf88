// Tables as people write them: each specimen has one trap.
#include "import/tables.h"

#include <gtest/gtest.h>

#include "import/fields.h"
#include "import/width_unit.h"
#include "support/imported_specimens.h"

namespace vorn {
namespace {

constexpr const char* two_series = "A 1990: 1.25 1.5 1\nB 1990: 0.5 0.75 1.25\n";

TEST(WideTable, HasAColumnASeries) {
  const Imported one = taken("Year,A,B\n1990,1.25,0.50\n1991,1.50,0.75\n1992,1.00,1.25\n");
  EXPECT_EQ(shown(one), two_series);
  EXPECT_EQ(one.layout, OtherLayout::wide_table);
  EXPECT_EQ(doubts(one), "unit-guessed:1");
  EXPECT_EQ(one.tucson,
            "A       1990   125   150   100   999     0     0     0     0     0     0\n"
            "B       1990    50    75   125   999\n");
}

TEST(WideTable, HasAnySeparatorAndAnyLineEnd) {
  EXPECT_EQ(series_of("Year;A;B\n1990;1.25;0.50\n1991;1.50;0.75\n1992;1.00;1.25"), two_series);
  EXPECT_EQ(series_of("Year\tA\tB\r\n1990\t1.25\t0.50\r\n1991\t1.50\t0.75\r\n1992\t1.00\t1.25\r\n"),
            two_series);
  EXPECT_EQ(series_of("Year,A,B\r1990,1.25,0.50\r1991,1.50,0.75\r1992,1.00,1.25\r"), two_series);
  EXPECT_EQ(series_of("\xef\xbb\xbf"
                      "Year,A,B\n\n1990,1.25,0.50\n\n1991,1.50,0.75\n1992,1.00,1.25\n\x1a"),
            two_series);
}

TEST(WideTable, MayBeSavedAsUtf16) {
  std::string bytes = "\xff\xfe";
  for (const char c : std::string_view("Year\tA\n1990\t1.25\n1991\t1.50\n")) bytes += std::string{c, '\0'};
  EXPECT_EQ(series_of(bytes), "A 1990: 1.25 1.5\n");
  EXPECT_NE(notes(taken(bytes)).find("utf-16"), std::string::npos);
}

TEST(WideTable, HasRowNamesAsRWritesThem) {
  // write.csv(rwl), where the years are the row names; then data.frame(year, …), with numbers of rows.
  EXPECT_EQ(series_of("\"\",\"A\",\"B\"\n\"1990\",1.25,0.5\n\"1991\",1.5,0.75\n\"1992\",1,1.25\n"),
            two_series);
  EXPECT_EQ(
      series_of("\"\",\"year\",\"A\",\"B\"\n\"1\",1990,1.25,0.5\n\"2\",1991,1.5,0.75\n\"3\",1992,1,1.25\n"),
      two_series);
  // write.table leaves the name above them out.
  EXPECT_EQ(series_of("\"A\"\t\"B\"\n\"1990\"\t1.25\t0.5\n\"1991\"\t1.5\t0.75\n\"1992\"\t1\t1.25\n"),
            two_series);
}

// Of one series write.table writes a name alone, which is no title.
TEST(WideTable, MayHaveTheNameOfItsOnlySeriesAlone) {
  const std::string rows = "\"1990\" 1.25\n\"1991\" 1.5\n\"1992\" 1\n\"1993\" NA\n\"1994\" 0.75\n";
  EXPECT_EQ(series_of("\"A\"\n" + rows), "A 1990: 1.25 1.5 1 - 0.75\n");
  EXPECT_EQ(series_of("# a stand\nA\n" + rows), "A 1990: 1.25 1.5 1 - 0.75\n");
  EXPECT_FALSE(imported("1990\n" + rows, {})) << "a number names nothing";
  EXPECT_FALSE(imported("A\n" + rows + "and so on\n", {})) << "words, not a table";
}

TEST(WideTable, MayHaveNoNames) {
  const Imported one = taken("1990,1.25,0.50\n1991,1.50,0.75\n1992,1.00,1.25\n");
  EXPECT_EQ(shown(one), "S1 1990: 1.25 1.5 1\nS2 1990: 0.5 0.75 1.25\n");
  EXPECT_EQ(doubts(one), "no-names:1 unit-guessed:1");
}

TEST(WideTable, MayBeTurnedSoThatARowIsASeries) {
  EXPECT_EQ(series_of("series,1990,1991,1992\nA,1.25,1.50,1.00\nB,0.50,0.75,1.25\n"), two_series);
  EXPECT_EQ(series_of("site,core,1990,1991,1992\nX,A,1.25,1.50,1.00\nX,B,0.50,0.75,1.25\n"), two_series);
  // Trees that are numbered: which are the years?
  EXPECT_EQ(series_of("Year,101,102,103\n1990,1.1,1.2,1.3\n1991,2.1,2.2,2.3\n"),
            "101 1990: 1.1 2.1\n102 1990: 1.2 2.2\n103 1990: 1.3 2.3\n");
  EXPECT_EQ(series_of("core,1990,1991,1992\n1,1.1,1.2,1.3\n2,2.1,2.2,2.3\n3,2.1,2.2,2.3\n"),
            "1 1990: 1.1 1.2 1.3\n2 1990: 2.1 2.2 2.3\n3 1990: 2.1 2.2 2.3\n");
}

TEST(WideTable, HasRingsWhereThereAreNumbers) {
  const Imported one = taken("year,A,B,C\n1990,NA,1.1,\n1991,1.2,NaN,.\n1992,0,1.3,-\n1993,1.4,1.5,n/a\n");
  EXPECT_EQ(shown(one), "A 1991: 1.2 0 1.4\nB 1990: 1.1 - 1.3 1.5\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1");
  EXPECT_EQ(notes(one), "layout no-rings copy-form series zeros series inner-gap missing-marks")
      << "C has none";
}

TEST(WideTable, TakesNegativeNumbersForMissingRings) {
  const Imported one = taken("year,A\n1990,100\n1991,-9999\n1992,120\n1993,-1\n1994,110\n");
  EXPECT_EQ(shown(one), "A 1990: 1 - 1.2 - 1.1\n");
  EXPECT_NE(notes(one).find("negative"), std::string::npos);
}

TEST(WideTable, SaysWhatIsNoNumber) {
  const Imported one = taken("year,A,B\n1990,1.25,0.5\n1991,1.5O,0.75\n1992,1.00,1.25\n");
  EXPECT_EQ(shown(one), "A 1990: 1.25 - 1\nB 1990: 0.5 0.75 1.25\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-number:3");
  EXPECT_EQ(one.findings.back().column, 6);
  EXPECT_EQ(one.findings.back().series, "A");
  EXPECT_EQ(one.findings.back().words, "\"1.5O\" is no number: 1991 has no ring");
}

TEST(WideTable, TakesRingsByTheirYears) {
  EXPECT_EQ(series_of("Year,A,B\n1992,1.00,1.25\n1991,1.50,0.75\n1990,1.25,0.50\n"), two_series);
  const Imported odd = taken("Year,A,B\n1990,1.25,0.50\n1992,1.00,1.25\n1991,1.50,0.75\n1993,1,1\n");
  EXPECT_EQ(shown(odd), "A 1990: 1.25 1.5 1 1\nB 1990: 0.5 0.75 1.25 1\n");
  EXPECT_EQ(doubts(odd), "unit-guessed:1 years-out-of-order:4");
}

TEST(WideTable, TakesTheFirstRingOfAYearThatStandsThereTwice) {
  const Imported one = taken("Year,A,B\n1990,1.25,0.50\n1991,1.50,0.75\n1991,1.60,0.75\n1992,1.00,1.25\n");
  EXPECT_EQ(shown(one), two_series);
  EXPECT_EQ(doubts(one), "unit-guessed:1 year-twice:4 year-twice:4");
}

TEST(WideTable, SaysWhichRowsHaveNoYear) {
  const Imported one = taken(
      "Year,A,B\n1990,1.25,0.50\n1991,1.50,0.75\n1992,1.00,1.25\n1993,1,1\n1994,1,1\nmean,1.25,0.83\nnote\n,,"
      "\n");
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5 1 1 1\nB 1990: 0.5 0.75 1.25 1 1\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-year:7");
}

TEST(WideTable, SaysWhatHasNoColumn) {
  const Imported one = taken("Year,A,B\n1990,1.25,0.50\n1991,1.50,0.75,9.99\n1992,1.00\n");
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5 1\nB 1990: 0.5 0.75\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 no-column:3 short-rows:4");
  EXPECT_EQ(series_of("Year;A;B;\n1990;1.25;0.50;\n1991;1.50;0.75;\n1992;1.00;1.25;\n"), two_series);
}

TEST(WideTable, PassesOverWhatIsNoWidth) {
  const Imported one =
      taken("Year,A,samp.depth,species\n1990,1.25,1,QURO\n1991,1.50,1,QURO\n1992,1,1,QURO\n");
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5 1\n");
  EXPECT_EQ(notes(one), "layout other-column other-column copy-form series");
}

TEST(WideTable, MayHaveColumnsOfWords) {
  const Imported one = taken("year,A,slope\n1990,1.25,steep\n1991,1.5,\n1992,1,flat\n");
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5 1\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1");
}

TEST(WideTable, OfAChronologyAloneHasNoSeries) {
  const Imported one = taken("year,std,samp.depth\n1990,1.01,3\n1991,0.97,4\n1992,1.1,4\n");
  EXPECT_EQ(shown(one), "");
  EXPECT_EQ(doubts(one), "no-copy");
  EXPECT_EQ(one.tucson, "");
}

TEST(WideTable, HasQuotedFields) {
  EXPECT_EQ(series_of("\"Year\",\"A, left\",\"\"\"B\"\"\"\n\"1990\",\"1.25\",0.5\n1991,1.5,\"0.75\"\n"),
            "A__left 1990: 1.25 1.5\n_B_ 1990: 0.5 0.75\n");
  EXPECT_EQ(series_of("Year,\"A\nof the\r\nslope\",B\n1990,1.25,0.50\n1991,1.50,0.75\n"),
            "Aoeslope 1990: 1.25 1.5\nB 1990: 0.5 0.75\n");
  const Imported open = taken("Year,A,\"B\n1990,1.25,0.50\n1991,1.50,0.75\n");
  EXPECT_EQ(shown(open), "A 1990: 1.25 1.5\n_B 1990: 0.5 0.75\n");
  EXPECT_EQ(doubts(open), "open-quote:1 unit-guessed:1");
}

TEST(WideTable, HasDecimalCommas) {
  const Imported one = taken("Jahr;A;B\n1990;1,25;0,50\n1991;1,50;0,75\n1992;1,00;1,25\n");
  EXPECT_EQ(shown(one), two_series);
  EXPECT_EQ(notes(one), "layout copy-form series series decimal-comma");
  EXPECT_EQ(series_of("Year,A,B\n1990,\"1,25\",\"0,50\"\n1991,\"1,50\",\"0,75\"\n1992,\"1,00\",\"1,25\"\n"),
            two_series);
  EXPECT_EQ(doubts(taken("Year\tA\n1990\t1,25\n1991\t1.50\n1992\t1,1\n")), "unit-guessed:1 two-points:3");
}

// --- Units

TEST(Units, AreThoseOfTheHeader) {
  EXPECT_EQ(series_of("year,A (mm)\n1990,1\n1991,2\n"), "A 1990: 1 2\n");
  EXPECT_EQ(doubts(taken("year,A (0.01mm)\n1990,100\n1991,200\n")), "");
  EXPECT_EQ(series_of("year;A [1/100 mm]\n1990;100\n1991;200\n"), "A 1990: 1 2\n");
  EXPECT_EQ(series_of("year,A_um\n1990,1000\n1991,2500\n"), "A_um 1990: 1 2.5\n");
  EXPECT_EQ(series_of("year,A (\xc2\xb5m)\n1990,1000\n1991,2500\n"), "A 1990: 1 2.5\n");
  EXPECT_EQ(series_of("year,A\n,1/1000 mm\n1990,100\n1991,250\n"), "A 1990: 0.1 0.25\n") << "a row of units";
  EXPECT_EQ(series_of("# units: 0.001 mm\nyear,A\n1990,100\n1991,250\n"), "A 1990: 0.1 0.25\n");
}

TEST(Units, AreGuessedByTheValues) {
  EXPECT_EQ(series_of("year,A\n1990,100\n1991,250\n"), "A 1990: 1 2.5\n");
  EXPECT_EQ(series_of("year,A\n1990,1000\n1991,250\n"), "A 1990: 1 0.25\n") << "a mean above 300";
  EXPECT_EQ(series_of("year,A\n1990,1.0\n1991,2.0\n"), "A 1990: 1 2\n");
  EXPECT_EQ(series_of("year,A\n1990,100.0\n1991,250.0\n"), "A 1990: 1 2.5\n") << "too wide for millimetres";
}

TEST(Units, ThatCannotBeAreDoubted) {
  EXPECT_EQ(doubts(taken("year,A (mm)\n1990,100\n1991,250\n")), "unit-unlikely:1");
  EXPECT_EQ(doubts(taken("year,A (um)\n1990,1.2\n1991,2.5\n")), "unit-unlikely:1 rounded:1");
}

TEST(Units, OfTheCopyAreThoseThatAreNeeded) {
  EXPECT_EQ(taken("year,A\n1990,1.25\n1991,1.5\n").series[0].unit, 100);
  EXPECT_EQ(taken("year,A\n1990,1.251\n1991,1.5\n").series[0].unit, 1000);
  const Imported fine = taken("year,A\n1990,1.2514\n1991,1.5\n");
  EXPECT_EQ(doubts(fine), "unit-guessed:1 rounded:1");
  EXPECT_EQ(fine.tucson, "A       1990  1251  1500 -9999     0     0     0     0     0     0     0\n");
}

// --- A row a ring

TEST(LongTable, HasColumnsInAnyOrder) {
  EXPECT_EQ(
      series_of(
          "series,year,width\nA,1990,1.25\nA,1991,1.5\nB,1990,0.5\nA,1992,1\nB,1991,0.75\nB,1992,1.25\n"),
      two_series);
  const Imported one =
      taken("Ring Width (mm);Core ID;species;Date\n1,25;A;QURO;1990\n1,5;A;QURO;1991\n1;A;QURO;1992\n");
  EXPECT_EQ(shown(one), "A 1990: 1.25 1.5 1\n");
  EXPECT_EQ(one.layout, OtherLayout::long_table);
  EXPECT_EQ(doubts(one), "");
}

TEST(LongTable, NamesACoreByItsTree) {
  EXPECT_EQ(
      series_of(
          "tree,core,year,rw\nT1,A,1990,1.5\nT1,A,1991,1.5\nT1,B,1990,2.5\nT2,A,1990,3.5\nT2,A,1991,3\n"),
      "T1_A 1990: 1.5 1.5\nT1_B 1990: 2.5\nT2_A 1990: 3.5 3\n");
}

TEST(LongTable, SaysWhatIsNotTaken) {
  const Imported one = taken(
      "id,year,value\nA,1990,1.5\nA,1990,1.6\nA,199O,1.7\n,1991,1.8\nA,1991,one\nA,99999,1.9\nA,1992,1.5,"
      "7\nA,1993,1\n");
  EXPECT_EQ(shown(one), "A 1990: 1.5 - 1.5 1\n");
  EXPECT_EQ(doubts(one),
            "unit-guessed:2 year-twice:3 no-year:4 no-series:5 no-number:6 year-outside:7 no-column:8");
}

TEST(LongTable, CountsYearsBeforePresentFrom1950) {
  const Imported one = taken("sample,age_BP,width\nA,12,1.5\nA,11,1.25\nA,10,1.75\n");
  EXPECT_EQ(shown(one), "A 1938: 1.5 1.25 1.75\n");
  EXPECT_NE(notes(one).find("years-bp"), std::string::npos);
}

// --- Years

TEST(Years, MayLieBeforeYear0) {
  EXPECT_EQ(taken("year,A\n-2,1.5\n-1,1.5\n0,1.25\n1,1.75\n").tucson,
            "A         -2   150   150\nA          0   125   175   999\n");
  EXPECT_EQ(series_of("year,ABCDEFGH,B\n-1003,1.5,1\n-1002,1.5,1\n-1001,1.25,1\n-1000,1.75,1\n-999,1,1\n"),
            "ABDEFGH -1003: 1.5 1.5 1.25 1.75 1\nB -1003: 1 1 1 1 1\n");
}

TEST(Years, ThatTheCopyHasNoColumnsForAreSaid) {
  const Imported one = taken("year,A\n9997,1.5\n9998,1.5\n9999,1.25\n");
  EXPECT_EQ(shown(one), "A 9997: 1.5 1.5\n");
  EXPECT_EQ(doubts(one), "unit-guessed:1 years-to-come:1 year-outside:4");
}

// Two tables beside each other: the widths of the second lie behind years of their own.
TEST(Years, OfATableBesideTheFirstAreNotItsYears) {
  const Imported one = taken("Year,A,,Year,B\n1990,1.5,,1880,1\n1991,1.5,,1881,2\n1992,1.25,,1882,1.5\n");
  EXPECT_EQ(doubts(one), "second-table:1 unit-guessed:1");
  for (const FileFinding& finding : one.findings) {
    if (finding.kind == kind("second-table")) {
      EXPECT_EQ(finding.column, 9);
    }
  }
  const Imported again = taken("year,A,YEAR.1,B\n1990,1.5,1880,1\n1991,1.5,1881,2\n1992,1.25,1882,1.5\n");
  EXPECT_NE(doubts(again).find("second-table:1"), std::string::npos);
  EXPECT_EQ(doubts(taken("Year,A,Year,B\n1990,1.5,1990,1\n1991,1.5,1991,2\n1992,1.25,,1.5\n")),
            "unit-guessed:1");
  EXPECT_EQ(doubts(taken("Year,A,Age\n1990,1.5,10\n1991,1.5,11\n1992,1.25,12\n")), "unit-guessed:1");
}

TEST(Years, FarApartAreTwoSeries) {
  std::string table = "year,A\n";
  for (int year = 1000; year <= 1010; ++year) table += std::to_string(year) + ",1.5\n";
  const std::string near = table + "1111,1.5\n1112,2\n", far = table + "1112,1.5\n1113,2\n";
  EXPECT_EQ(taken(near).series.size(), 1u) << "a gap of 100 years";
  const Imported one = taken(far);
  ASSERT_EQ(one.series.size(), 2u);
  EXPECT_EQ(one.series[1].name, "A");
  EXPECT_EQ(one.series[1].taken_as, "A_2");
  EXPECT_EQ(one.series[1].first, 1112);
  EXPECT_EQ(doubts(one), "unit-guessed:1 gap:13");
}

TEST(Years, ThatSpanMoreThanAChronologyGiveNoCopy) {
  const Imported one = taken("year,A,B\n-9000,1.5,\n-8999,1.5,\n2000,1,2\n2001,1,2\n5000,,3\n");
  EXPECT_EQ(one.tucson, "");
  EXPECT_NE(doubts(one).find("no-copy"), std::string::npos);
}

// --- Names

TEST(Names, AreShortenedSoThatTheyStayApart) {
  const Imported one = taken(
      "year,SITE-TREE-01-A,SITE-TREE-01-B,ABCDEFGH,SITE TREE 02 "
      "\xc3\xa4,ABCDEFGH,ABCDEFG-\n1990,1.1,2.1,3.1,4.1,5.1,6.1\n"
      "1991,1.1,2.1,3.1,4.1,5.1,6.1\n");
  std::string names;
  for (const ImportedSeries& series : one.series) names += series.taken_as + " ";
  EXPECT_EQ(names, "SIREE01A SIREE01B ABCDEFGH SIREE02a ABCDEF_2 ABCDEFG_ ");
  EXPECT_EQ(one.series[3].name, "SITE TREE 02 \xc3\xa4");
  EXPECT_EQ(doubts(one), "unit-guessed:1 name-twice-same-years:1");
}

TEST(Names, OfOlderCharacterTablesAreReadAsWindowsHasThem) {
  const Imported one = taken("year,H\xe4gg\xf6\n1990,1.1\n1991,1.2\n");
  EXPECT_EQ(one.series[0].name, "H\xc3\xa4gg\xc3\xb6");
  EXPECT_EQ(one.series[0].taken_as, "Haggo");
}

TEST(Names, ThatAreNoneAreGiven) {
  EXPECT_EQ(series_of("year,,A\n1990,1.1,2\n1991,1.2,2\n"), "S 1990: 1.1 1.2\nA 1990: 2 2\n");
  EXPECT_EQ(series_of("year,HEADER:\n1990,1.1\n1991,1.2\n"), "HEADER_ 1990: 1.1 1.2\n");
}

// --- Strict

TEST(Tables, AreNotMadeOfWhatIsNone) {
  for (const char* none :
       {"", "\n\n", "year", "Year,A,B\n",
        "Dear all,\nthis is a letter, not a table,\nof 1990, 1991 and 1992.\n",
        "A       1990   125   150   100   999\n", "a,b\nc,d\n", "x,y\n1.5,2.5\n3.5,7.5\n2.5,1.5\n",
        "id,name\n1,Ann\n2,Bob\n3,Cid\n", "HEADER:\nLength=3\n", "1,2\n",
        "name,height\n100,7\n180,8\n150,9\n", "core,tree,species\nA,1,QURO\nB,2,QURO\n"})
    EXPECT_FALSE(imported(none, {2026})) << none;
  EXPECT_FALSE(imported(std::string("Year,A\n\0\0\n", 10), {2026}));
}

// --- What is no table of widths, or not as it seems

TEST(Tables, CoresBelowOneAnotherAreNoWideTable) {
  EXPECT_FALSE(imported(
      "year,core "
      "name,thing\n1900,A,1.5\n1900,B,2.5\n1901,A,1.5\n1901,B,2.5\n1902,A,1\n1902,B,1\n1903,A,1\n1903,B,2\n",
      {2026}));
  const auto one = imported("year,series,rwl\n1900,A,1.5\n1900,B,2.5\n1901,A,1.25\n1901,B,2.75\n", {2026});
  ASSERT_TRUE(one);
  ASSERT_EQ(one->series.size(), 2u);
  EXPECT_DOUBLE_EQ(one->series[1].widths[1], 2.75);
}

TEST(Tables, ACalendarYearGoesBeforeTheAgeOfTheTree) {
  const auto one = imported("core_id,age,year,width\nA,1,1850,0.82\nA,2,1851,1.50\nA,3,1852,1.25\n", {2026});
  ASSERT_TRUE(one);
  ASSERT_EQ(one->series.size(), 1u);
  EXPECT_EQ(one->series[0].first, 1850);
}

TEST(Tables, YearsThatCountBackwardsAreBeforeThePresentOrNone) {
  const auto one = imported("age (yr BP),A\n150,0.82\n149,1.50\n148,1.25\n", {2026});
  ASSERT_TRUE(one);
  ASSERT_EQ(one->series.size(), 1u);
  EXPECT_EQ(one->series[0].first, 1800);
  EXPECT_DOUBLE_EQ(one->series[0].widths[0], 0.82);
  for (const char* name : {"year BC", "Jahr v. Chr.", "age_b2k"})
    EXPECT_FALSE(imported(std::string(name) + ",A\n150,0.82\n149,1.50\n148,1.25\n", {2026})) << name;
}

TEST(Tables, AFewMarksDoNotMoveTheUnit) {
  std::string table = "year,A\n";
  for (int year = 1850; year < 1900; ++year)
    table += std::to_string(year) + (year == 1853 ? ",1250\n" : ",0.82\n");
  const auto one = imported(table, {2026});
  ASSERT_TRUE(one);
  EXPECT_DOUBLE_EQ(one->series[0].widths[0], 0.82);
  EXPECT_NE(doubts(*one).find("unit-unlikely"), std::string::npos);
}

TEST(Tables, MonthsAndMeansAreNoCores) {
  EXPECT_FALSE(imported("year,Jan,Feb,Mar\n1900,1.5,2.5,3.5\n1901,2.5,3.5,4.5\n1902,1,2,3\n", {2026})
                   .value_or(Imported())
                   .tucson.size() > 0);
  const auto one = imported("year,A,mean\n1900,1.5,2.5\n1901,2.5,3.5\n1902,1.5,2.5\n", {2026});
  ASSERT_TRUE(one);
  EXPECT_EQ(one->series.size(), 1u);
}

TEST(Tables, AFurtherRowOfNamesIsAnError) {
  const auto one = imported("year,A\n1850,0.82\n1851,1.8\n1852,1.72\nyear,B\n1850,1.5\n", {2026});
  ASSERT_TRUE(one);
  EXPECT_NE(doubts(*one).find("second-table:5"), std::string::npos) << doubts(*one);
}

TEST(Tables, NotesMayStandBeforeTheNames) {
  constexpr const char* rings = "A 1850: 0.82 1.8 1.72\n";
  EXPECT_EQ(series_of("Site:,Nowhere\nyear,A\n1850,0.82\n1851,1.8\n1852,1.72\n"), rings);
  EXPECT_EQ(
      series_of("Site;Nowhere\nDate;2003-05-01\nBy;all of us; and others\n\nyear;A\n1850;0,82\n1851;1,8\n"
                "1852;1,72\n"),
      rings);
  EXPECT_EQ(series_of("Site,Nowhere\ncore,1850,1851,1852\nA,0.82,1.8,1.72\n"), rings);
  EXPECT_EQ(series_of("Site,Nowhere\ncore,year,width\nA,1850,0.82\nA,1851,1.8\nA,1852,1.72\n"), rings);
  const Imported one = taken("Site:,45.5\nyear,A\n1850,0.82\n1851,1.8\n1852,1.72\n");
  EXPECT_EQ(shown(one), rings);
  EXPECT_EQ(notes(one), "layout header copy-form series");
}

TEST(Tables, YearsMayBeDatesOrNamesOfR) {
  constexpr const char* rings = "A 1850: 0.82 1.8 1.72\n";
  const Imported dated = taken("date,A\n1850-01-01,0.82\n1851-01-01,1.8\n1852-01-01,1.72\n");
  EXPECT_EQ(shown(dated), rings);
  EXPECT_EQ(notes(dated), "layout copy-form series years-of-dates");
  EXPECT_EQ(series_of("date;A\n31.12.1850;0,82\n31.12.1851;1,8\n31.12.1852;1,72\n"), rings);
  EXPECT_EQ(series_of("\"\",\"X1850\",\"X1851\",\"X1852\"\n\"A\",0.82,1.8,1.72\n"), rings);
  EXPECT_EQ(series_of("year,A\n1850.0,0.82\n1851.0,1.8\n1852.0,1.72\n"), rings);
  EXPECT_EQ(series_of("core,X.2,X.1,X0,X1,X2,X300\nA,1,2,3,4,5,6\n"),
            "A -2: 0.01 0.02 0.03 0.04 0.05\nA_2 300: 0.06\n");
  EXPECT_EQ(series_of("\"core\",\"X.8\",\"X.7\",\"X.6\"\n\"A\",0.8,1.8,1.7\n"), "A -8: 0.8 1.8 1.7\n");
  // Cores that R has numbered.
  EXPECT_EQ(series_of("\"\",\"X1\",\"X2\",\"X3\"\n\"1\",0.8,0.9,1\n\"2\",1,1.5,1\n\"3\",2,2.5,2\n"),
            "X1 1: 0.8 1 2\nX2 1: 0.9 1.5 2.5\nX3 1: 1 1 2\n");
}

TEST(Tables, OnlyDatesAndYearsAreYears) {
  for (const char* year : {"1850", "1850.0", "X1850", "1850-12-31", "31/12/1850", "1850-01-01T00:00:00"}) {
    ASSERT_TRUE(year_written(year)) << year;
    EXPECT_EQ(year_written(year)->year, 1850) << year;
  }
  EXPECT_EQ(year_written("X.5")->year, -5);
  for (const char* none : {"", "X", "X.", "X1.5", "x1850", "1850-", "1850-1", "1850-123-1", "1850-1-123",
                           "1-2-3", "18-12-31", "1850-12/31", "a1850", "--", "..."})
    EXPECT_FALSE(year_written(none)) << none;
}

TEST(Tables, BlanksMayPartTheFieldsWhereAllRowsHaveAsMany) {
  EXPECT_EQ(series_of("year A B\n1990 1.25 0.5\n1991 1.5 0.75\n1992 1 1.25\n"), two_series);
  EXPECT_EQ(series_of("  year      A     B\n  1990   1.25   0.5\n  1991   1.5   0.75\n  1992      1  1.25\n"),
            two_series);
  EXPECT_EQ(series_of("\"A\" \"B\"\n\"1990\" 1.25 0.5\n\"1991\" 1.5 0.75\n\"1992\" 1 1.25\n"), two_series);
  EXPECT_EQ(series_of("\"OAK 1\" \"B\"\n\"1990\" 1,25 NA\n\"1991\" 1,5 0,75\n\"1992\" 1 1,25\n"),
            "OAK_1 1990: 1.25 1.5 1\nB 1991: 0.75 1.25\n");
  EXPECT_EQ(series_of("series year width\nA 1990 1.25\nA 1991 1.5\nA 1992 1\n"), "A 1990: 1.25 1.5 1\n");
  for (const char* none :
       {"year A B\n1990 1.25\n1991 1.5 0.75\n1992 1 1.25\n",
        "1990 1.25 0.5\n1991 1.5 0.75\n1992 1 1.25\n1993 1 1.25\n",
        "These are the words\nof a letter that was\nsent 1990 to us\nand 12 others here\n"})
    EXPECT_FALSE(imported(none, {2026})) << none;
}

// As write.table has them, and below notes.
TEST(Tables, NamesMayBeNumbers) {
  constexpr const char* rings = "0611 1990: 1.25 1.5 1\n0612 1990: 0.5 0.75 1.25\n";
  EXPECT_EQ(series_of("\"0611\" \"0612\"\n\"1990\" 1.25 0.5\n\"1991\" 1.5 0.75\n\"1992\" 1 1.25\n"), rings);
  EXPECT_EQ(series_of("0611\t0612\n1990\t1.25\t0.5\n1991\t1.5\t0.75\n1992\t1\t1.25\n"), rings);
  EXPECT_EQ(
      series_of("Site;Nowhere\n\"Year\";\"0611\";\"0612\"\n1990;1,25;0,5\n1991;1,5;0,75\n1992;1;1,25\n"),
      rings);
  EXPECT_EQ(taken("1990,150\n1991,150,200\n1992,125,210\n1993,150,200\n").series.front().first, 1990)
      << "a short row of data is none of names";
}

TEST(Tables, CoresAreNamedByTheColumnThatTellsRowsApart) {
  constexpr const char* rings = "P1A 1850: 0.82 1.8 1.72\nP1B 1850: 1 1.5 1\n";
  const Imported one =
      taken("site,species,core,1850,1851,1852\nNowhere,PISY,P1A,0.82,1.8,1.72\nNowhere,PISY,P1B,1,1.5,1\n");
  EXPECT_EQ(shown(one), rings);
  EXPECT_EQ(notes(one), "layout name-column other-column other-column copy-form series series");
  EXPECT_EQ(series_of("site,no,which,1850,1851,1852\nNowhere,1,P1A,0.82,1.8,1.72\nNowhere,2,P1B,1,1.5,1\n"),
            rings);
  EXPECT_EQ(series_of("tree,core,1850,1851,1852\nP1,A,0.82,1.8,1.72\nP1,B,1,1.5,1\n"),
            "P1_A 1850: 0.82 1.8 1.72\nP1_B 1850: 1 1.5 1\n");
}

TEST(Tables, SignsOfSpreadsheetsForNoValueAreSaid) {
  const Imported one = taken("year;A\n1850;0,82\n1851;#NV\n1852;#N/A\n1853;1,5\n1854;NULL\n1855;2\n1856;.\n");
  EXPECT_EQ(shown(one), "A 1850: 0.82 - - 1.5 - 2\n");
  EXPECT_NE(notes(one).find("missing-marks"), std::string::npos);
  EXPECT_EQ(doubts(taken("year;A\n1850;0,82\n1851;#WERT!\n1852;2,5\n")), "unit-guessed:1 no-number:3");
}

TEST(Tables, ZeroBytesAreSaid) {
  std::string text = "year,A\n";
  for (int year = 1850; year < 1900; ++year) text += std::to_string(year) + ",1.25\n";
  const Imported padded = taken(text + std::string(4096, '\0'));
  EXPECT_EQ(doubts(padded), "unit-guessed:1");
  EXPECT_EQ(padded.series.front().widths.size(), 50u);
  text[20] = '\0';
  EXPECT_EQ(doubts(taken(text)), "unit-guessed:1 no-year:3 control-character:3");
}

TEST(Tables, Utf16NeedsNoMark) {
  for (const bool big_end : {false, true}) {
    std::string bytes;
    for (const char c : std::string_view("year,A\n1850,0.82\n1851,1.8\n1852,1.72\n"))
      bytes += big_end ? std::string{'\0', c} : std::string{c, '\0'};
    EXPECT_EQ(series_of(bytes), "A 1850: 0.82 1.8 1.72\n");
  }
}

TEST(Tables, ThreeDigitsBehindAPointMayBeHundreds) {
  EXPECT_EQ(doubts(taken("year;A\n1850;1,234\n1851;2,345\n1852;987\n1853;1,100\n")),
            "unit-guessed:1 unit-unlikely:1 unit-unlikely:2");
  EXPECT_EQ(doubts(taken("year;A\n1850;1,234\n1851;2,345\n1852;0,987\n1853;1,100\n")), "unit-guessed:1");
  EXPECT_EQ(doubts(taken("year,A (um)\n1850,\"1,234\"\n1851,\"2,345\"\n1852,987\n")),
            "rounded:1 unit-unlikely:2");
}

TEST(Tables, AYear0ThatStandsNowhereIsDoubted) {
  const Imported one = taken("year,A,B\n-2,1.5,1\n-1,1.25,1\n1,1.5,1\n2,1,1\n");
  EXPECT_EQ(shown(one), "A -2: 1.5 1.25 - 1.5 1\nB -2: 1 1 - 1 1\n");
  EXPECT_EQ(doubts(one), "no-year-0:1 unit-guessed:1");
  EXPECT_EQ(doubts(taken("year,A,B\n-1,1.25,1\n0,,1\n1,1.5,1\n2,1,1\n")), "unit-guessed:1");
}

TEST(Tables, TreesAndCoresThatAreNumbersStayApart) {
  const auto one =
      imported("tree,core,year,width\n1,1,1850,0.82\n1,2,1850,1.5\n2,1,1850,1.25\n2,2,1850,1.75\n", {2026});
  ASSERT_TRUE(one);
  std::vector<std::string> names;
  for (const ImportedSeries& series : one->series) names.push_back(series.name);
  EXPECT_EQ(names, (std::vector<std::string>{"1_1", "1_2", "2_1", "2_2"}));
}

TEST(Tables, APointThatPartsThousandsIsDoubted) {
  const auto one = imported("Jahr;A\n1850;820\n1851;1.500\n1852;950\n1853;1.120\n1854;700\n", {2026});
  ASSERT_TRUE(one);
  EXPECT_NE(doubts(*one).find("unit-unlikely:3"), std::string::npos) << doubts(*one);
  const auto plain = imported("Jahr;A\n1850;820\n1851;5\n1852;950\n1853;120\n1854;700\n", {2026});
  EXPECT_EQ(doubts(plain.value()).find("unit-unlikely"), std::string::npos);
}

TEST(Tables, AnAreaIsNoWidth) {
  EXPECT_FALSE(unit_said("mm2"));
  EXPECT_FALSE(unit_said("mm^2"));
  EXPECT_EQ(unit_said("mm"), 1);
}

}  // namespace
}  // namespace vorn
