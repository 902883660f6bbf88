#include "statistics/correlation_report.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "statistics/correlation.h"
#include "support/kept_troubles.h"
#include "support/scratch_folder.h"
#include "support/test_store.h"

namespace vorn {
namespace {

std::string blanks(int n) {
  return std::string(static_cast<std::size_t>(n), ' ');
}

std::vector<double> part(const std::vector<double>& values, int from, int count) {
  return {values.begin() + from, values.begin() + from + count};
}

// The report as a file, written in a folder of its own.
std::string report(Workspace& w) {
  const ScratchFolder folder;
  std::ostringstream told;
  KeptTroubles troubles(told);
  cor_report(w, troubles);
  EXPECT_EQ(told.str(), "");
  return ScratchFolder::read("Corr.prn");
}

// The part of a text between the n-th line feed, from 0, and the next; lines are counted from 1.
std::string line(const std::string& text, int n) {
  std::size_t start = 0;
  for (int i = 1; i < n; ++i) start = text.find('\n', start) + 1;
  return text.substr(start, text.find('\n', start) - start);
}

std::size_t lines(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

// Two trees that are the whole of their chronology, so that each is compared with the other: (2c - a) / 1 =
// b.
//
// Segments of four years, one every two. By hand, with deviations from the means of 2.5 and sums of squares
// of 5:
//   1900-1903  1 2 3 4 with 1 2 4 3: products 4, r 0.8      1902-1905  3 4 1 2 with 4 3 2 1: products 3, r
//   0.6 1904-1907  1 2 3 4 with 2 1 3 4: products 4, r 0.8      1906-1909  3 4 1 2 with 3 4 2 1: products 4,
//   r 0.8
struct TwoTrees : TestStore {
  TwoTrees() {
    const std::vector<double> a{1, 2, 3, 4, 1, 2, 3, 4, 1, 2}, b{1, 2, 4, 3, 2, 1, 3, 4, 2, 1};
    std::vector<double> c;
    for (std::size_t k = 0; k < a.size(); ++k) c.push_back((a[k] + b[k]) / 2);
    add_tree("TREE01A", 1900, a);
    add_tree("TREE02BC", 1900, b);
    set_chronology(1, "data/two.rwl", 1900, c, depths(10, 2));
    w.seg = 4;
    w.olap = 2;
  }
};

TEST(CorrReport, OfTwoTreesIsThisFileToTheByte) {
  TwoTrees store;
  EXPECT_EQ(report(store.w), " Correlation tables from 1900 to 1909 for data/two.rwl" + blanks(48) +
                                 "\n"
                                 "\n"
                                 "Year      1900 1902 1904 1906  Mean\n"
                                 "To        1903 1905 1907 1909  Core\n"
                                 "TREE01A    .80  .60  .80  .80   .75\n"
                                 "TREE02BC   .80  .60  .80  .80   .75\n"
                                 "\n"
                                 "Means     0.80 0.60 0.80 0.80  0.75\n"
                                 "\n");
  EXPECT_EQ(store.messages.str(), "");
  EXPECT_EQ(store.w.ios, status::ok);
}

TEST(CorrReport, ListsOtherChronologiesBehindTheMeansAndNotTheCurrentOne) {
  TwoTrees store;
  std::vector<double> thousandths, against;
  for (int p = 1; p <= 10; ++p) thousandths.push_back(1000 * store.w.crn(p, 1));
  for (int p = 1; p <= 10; ++p) against.push_back(7 - store.w.crn(p, 1));
  // Entries: 3 the current chronology, 4 and 5 those of two other files.
  store.set_chronology(2, "same.crn", 1900, thousandths, depths(10, 9));
  store.set_chronology(3, "less.crn", 1900, against, depths(10, 9));
  for (int c = 1; c <= 3; ++c) {
    std::vector<double> values;
    for (int p = 1; p <= 10; ++p) values.push_back(store.w.crn(p, c));
    ++store.w.nd;
    store.w.nam(store.w.nd) = c == 1 ? "CURRENT" : c == 2 ? "SAME" : "LESS";
    store.w.fy(store.w.nd) = 1900;
    store.w.ly(store.w.nd) = 1909;
    store.w.yr(store.w.nd) = 10;
    store.w.ad(store.w.nd + 1) = store.w.ad(store.w.nd) + 10;
    for (int p = 1; p <= 10; ++p) {
      store.w.ax(store.w.ad(store.w.nd) + p - 1) = values[static_cast<std::size_t>(p - 1)];
      store.w.xok(store.w.ad(store.w.nd) + p - 1) = true;
    }
  }
  EXPECT_EQ(report(store.w), " Correlation tables from 1900 to 1909 for data/two.rwl" + blanks(48) +
                                 "\n"
                                 "\n"
                                 "Year      1900 1902 1904 1906  Mean\n"
                                 "To        1903 1905 1907 1909  Core\n"
                                 "TREE01A    .80  .60  .80  .80   .75\n"
                                 "TREE02BC   .80  .60  .80  .80   .75\n"
                                 "\n"
                                 "Means     0.80 0.60 0.80 0.80  0.75\n"
                                 "\n"
                                 "SAME       .00  .00  .00  .00   .00\n"
                                 "LESS      -.00 -.00 -.00 -.00  -.00\n");
  EXPECT_EQ(store.w.iwk2(2), 4);
  EXPECT_EQ(store.w.iwk2(store.w.nd), 0);  // trees alone are counted
}

TEST(CorrReport, PrintsACorrelationOfOneAsPointZeroZeroAndInTheMeansAsOne) {
  TestStore store;
  const std::vector<double> a{1, 2, 3, 4};
  store.add_tree("A", 1900, a);
  store.add_tree("B", 1900, a);
  store.set_chronology(1, "one.rwl", 1900, a, depths(4, 2));
  store.w.seg = 4;
  store.w.olap = 2;
  const std::string text = report(store.w);
  EXPECT_EQ(line(text, 5), "A" + blanks(8) + "  .00   .00");
  EXPECT_EQ(line(text, 8), "Means     1.00  1.00");
}

TEST(CorrReport, UsesTheChronologyFromItsFirstToItsLastYearOfDepthTwo) {
  TestStore store;
  const auto a = noise(60, 1), b = noise(60, 2);
  std::vector<double> c;
  for (std::size_t k = 0; k < 60; ++k) c.push_back((a[k] + b[k]) / 2);
  std::vector<int> deep = depths(60, 2);
  deep[0] = deep[1] = deep[2] = deep[58] = deep[59] = 1;
  deep[30] = 0;
  store.add_tree("A", 1900, a);
  store.add_tree("B", 1900, b);
  store.set_chronology(1, "ends.rwl", 1900, c, deep);
  store.w.seg = 20;
  store.w.olap = 10;
  const std::string text = report(store.w);
  // Used are 1903 to 1957. The cell of 1900-1919 is 1903-1922; the last segment, 1940-1959, is 1938-1957.
  EXPECT_EQ(line(text, 1).substr(0, 42), " Correlation tables from 1900 to 1959 for ");
  EXPECT_EQ(line(text, 3), "Year      1900 1910 1920 1930 1940  Mean");
  EXPECT_EQ(line(text, 4), "To        1919 1929 1939 1949 1959  Core");
  const auto correlation = [&](std::size_t from) {
    return cov(
        std::vector<double>(a.begin() + static_cast<long>(from), a.begin() + static_cast<long>(from) + 20),
        std::vector<double>(b.begin() + static_cast<long>(from), b.begin() + static_cast<long>(from) + 20));
  };
  EXPECT_NEAR(store.w.corr_tables.correlation(1, 1), correlation(3), 1e-12);
  EXPECT_NEAR(store.w.corr_tables.correlation(1, 2), correlation(10), 1e-12);
  EXPECT_NEAR(store.w.corr_tables.correlation(1, 5), correlation(38), 1e-12);
}

TEST(CorrReport, RaisesDepthsBelowTwoInTheStoreForGood) {
  TwoTrees store;
  store.w.num(1, 1) = 1;
  store.w.num(5, 1) = 0;
  store.w.num(6, 1) = -3;
  store.w.num(7, 1) = 5;
  store.w.num(11, 1) = 1;  // behind the chronology
  report(store.w);
  EXPECT_EQ(store.w.num(1, 1), 2);
  EXPECT_EQ(store.w.num(5, 1), 2);
  EXPECT_EQ(store.w.num(6, 1), 2);
  EXPECT_EQ(store.w.num(7, 1), 5);
  EXPECT_EQ(store.w.num(11, 1), 1);
  // The next report therefore uses the first year too.
  EXPECT_EQ(line(report(store.w), 5), "TREE01A    .80  .60  .80  .80   .75");
}

TEST(CorrReport, GivesATreeThatStartsInASegmentACellOfFullLengthFromItsFirstYear) {
  TestStore store;
  const auto a = noise(100, 1), b = noise(88, 2);
  std::vector<double> c = a;
  for (std::size_t k = 12; k < 100; ++k) c[k] = (a[k] + b[k - 12]) / 2;
  store.add_tree("A", 1900, a);
  store.add_tree("LATE", 1912, b);
  store.set_chronology(1, "late.rwl", 1900, c, depths(100, 2));
  store.w.seg = 50;
  store.w.olap = 25;
  report(store.w);
  // Segment 1900-1949 for the tree from 1912: 1912-1961, a full 50 years.
  const std::vector<double> own(b.begin(), b.begin() + 50), rest(a.begin() + 12, a.begin() + 62);
  EXPECT_TRUE(store.w.corr_tables.valid(2, 1));
  EXPECT_NEAR(store.w.corr_tables.correlation(2, 1), cov(own, rest), 1e-12);
}

// 775 used years, 1000 to 1774: 30 segments of 50 years, one every 25. Three trees; the third only in the
// years of the second block.
struct ThirtySegments : TestStore {
  ThirtySegments() {
    add_tree("A", 1000, noise(776, 1));
    add_tree("B", 1000, noise(776, 2));
    add_tree("NEW", 1700, noise(76, 3));
    set_chronology(1, "long.rwl", 1000, noise(776, 4), depths(776, 3));
  }
};

TEST(CorrReport, OfThirtySegmentsHasABlockOf24AndOneOf6) {
  ThirtySegments store;
  const std::string text = report(store.w);
  ASSERT_EQ(lines(text), 1u + 8u + 9u);
  EXPECT_EQ(line(text, 3).size(), 5u * 24 + 15);
  EXPECT_EQ(line(text, 3).substr(0, 20), "Year      1000 1025 ");
  EXPECT_EQ(line(text, 3).substr(124), " 1575  Mean");
  EXPECT_EQ(line(text, 4).substr(124), " 1624  Core");
  EXPECT_EQ(line(text, 5).substr(0, 9), "A        ");
  EXPECT_EQ(line(text, 6).substr(0, 9), "B        ");
  EXPECT_EQ(line(text, 7), "");
  EXPECT_EQ(line(text, 8).substr(0, 9), "Means    ");
  EXPECT_EQ(line(text, 9), "");
  EXPECT_EQ(line(text, 10), "");
  EXPECT_EQ(line(text, 11), "Year      1600 1625 1650 1675 1700 1725  Mean");
  EXPECT_EQ(line(text, 12), "To        1649 1674 1699 1724 1749 1774  Core");
  EXPECT_EQ(line(text, 13).substr(0, 9), "A        ");
  EXPECT_EQ(line(text, 15).substr(0, 9), "NEW      ");
  EXPECT_EQ(line(text, 17).size(), 45u);
}

TEST(CorrReport, TakesTheMeanOfASeriesOverAllBlocksSoFar) {
  ThirtySegments store;
  report(store.w);
  const auto& tables = store.w.corr_tables;
  EXPECT_EQ(tables.mean_count(1), 30.0);
  EXPECT_EQ(tables.mean_count(3), 2.0);  // 1700-1749 and 1725-1774; of 1675-1724 there are 25 years only
  double last_block = 0;
  for (int j = 1; j <= 6; ++j) last_block += tables.correlation(1, j);
  EXPECT_NE(tables.mean_sum(1), last_block);
  // A second report starts anew.
  report(store.w);
  EXPECT_EQ(tables.mean_count(1), 30.0);
}

// The cells as they are printed, each within half a hundredth of its value, tell what the Mean column must
// be.
TEST(CorrReport, PrintsInTheSecondBlocksMeanColumnTheMeanOfAllCellsOfBothBlocks) {
  ThirtySegments store;
  const std::string text = report(store.w);
  const auto sum_of_cells = [&text](int at, std::size_t segments) {
    double sum = 0;
    for (std::size_t j = 0; j < segments; ++j) sum += std::stod(line(text, at).substr(9 + 5 * j, 5));
    return sum;
  };
  const auto mean_printed = [&text](int at, std::size_t segments) {
    return std::stod(line(text, at).substr(5 * segments + 10));
  };
  for (const int tree : {0, 1}) {
    const double first = sum_of_cells(5 + tree, 24), second = sum_of_cells(13 + tree, 6);
    EXPECT_NEAR(mean_printed(5 + tree, 24), first / 24, 0.0101);
    EXPECT_NEAR(mean_printed(13 + tree, 6), (first + second) / 30, 0.0101);
    EXPECT_GT(std::abs(second / 6 - (first + second) / 30), 0.0203)
        << "the block alone would not be told apart";
  }
}

TEST(CorrReport, WritesTheMeansLineThoughTheLastTreeHasNoLine) {
  ThirtySegments store;  // in the first block the third tree has none
  const std::string text = report(store.w);
  EXPECT_EQ(line(text, 6).substr(0, 8), "B       ");
  EXPECT_EQ(line(text, 8).substr(0, 9), "Means    ");
}

TEST(CorrReport, MeansOfASegmentWithoutATreeAreNought) {
  TestStore store;
  store.add_tree("EARLY", 1000, noise(100, 1));
  store.add_tree("LATE", 1300, noise(100, 2));
  store.set_chronology(1, "gap.rwl", 1000, noise(400, 3), depths(400, 2));
  const std::string means = line(report(store.w), 8);
  EXPECT_EQ(means.substr(0, 9), "Means    ");
  EXPECT_EQ(means.substr(9 + 5 * 6, 5), " 0.00");  // 1150 to 1199
  EXPECT_EQ(means.find("NaN"), std::string::npos);
}

TEST(CorrReport, LeavesACellBlankWithTooFewRingsOrTooFewYears) {
  TestStore store;
  const auto a = noise(40, 1);
  store.add_tree("A", 1900, a, std::string(18, '-') + "++");  // two rings in 1900-1919
  store.add_tree("SHORT", 1900, noise(31, 2));                // 1920-1930 is a difference of 10
  store.set_chronology(1, "gaps.rwl", 1900, noise(40, 3), depths(40, 2));
  store.w.seg = 20;
  store.w.olap = 10;
  const std::string text = report(store.w);
  EXPECT_EQ(line(text, 3), "Year      1900 1910 1920  Mean");
  EXPECT_EQ(line(text, 5).substr(0, 14), "A" + blanks(13));
  EXPECT_NE(line(text, 5).substr(14, 5), blanks(5));
  EXPECT_EQ(line(text, 6).substr(0, 9), "SHORT    ");
  EXPECT_NE(line(text, 6).substr(14, 5), blanks(5));
  EXPECT_EQ(line(text, 6).substr(19, 5), blanks(5));
}

// One tree alone, `first_year` to 99 years later: no year has a depth of 2, no cell can be computed.
std::string report_of_one_tree(int first_year, int seg, int olap) {
  TestStore store;
  store.add_tree("ALONE", first_year, noise(100, 1));
  store.set_chronology(1, "alone.rwl", first_year, noise(100, 1), depths(100, 1));
  store.w.seg = seg;
  store.w.olap = olap;
  const std::string text = report(store.w);
  EXPECT_EQ(line(text, 1).substr(42, 9), "alone.rwl");
  return text.substr(text.find('\n') + 1);
}

TEST(CorrReport, OfOneTreeWritesABlockOfNoColumns) {
  // Used are 2002 to 2001: the grid is 2000 to 2024, (25 - 50) / 25 + 1 = 0 segments, lines of 15.
  EXPECT_EQ(report_of_one_tree(1902, 50, 25),
            "\n"
            "Year       Mean\n"
            "To         Core\n"
            "\n"
            "Means       NaN\n"
            "\n");
}

TEST(CorrReport, OfMinusOneColumnLaysTheMeanOverTheHeading) {
  // Used are 2000 to 1999: the grid is 2000 to 1999, (0 - 50) / 25 + 1 = -1 segment, lines of 10.
  EXPECT_EQ(report_of_one_tree(1900, 50, 25),
            "\n"
            "Year  Mean\n"
            "To    Core\n"
            "\n"
            "Means  NaN\n"
            "\n");
}

TEST(CorrReport, OfMinusTwoColumnsIsNothingButTheMean) {
  EXPECT_EQ(report_of_one_tree(1900, 75, 25),
            "\n"
            " Mean\n"
            " Core\n"
            "\n"
            "  NaN\n"
            "\n");
}

TEST(CorrReport, OfMinusThreeColumnsAndLessIsEmptyLinesAlone) {
  EXPECT_EQ(report_of_one_tree(1900, 100, 25), "\n\n\n");
  EXPECT_EQ(report_of_one_tree(1900, 575, 25), "\n\n\n");  // -22 columns, the last that make a block
  EXPECT_EQ(report_of_one_tree(1900, 600, 25), "");
  EXPECT_EQ(report_of_one_tree(1900, 12000, 1), "");
}

TEST(CorrReport, OfAHundredYearsAndSegmentsOf116StillHasOneColumn) {
  TestStore store;
  const auto a = noise(100, 1), b = noise(100, 2);
  std::vector<double> c;
  for (std::size_t k = 0; k < 100; ++k) c.push_back((a[k] + b[k]) / 2);
  store.add_tree("A", 1900, a);
  store.add_tree("B", 1900, b);
  store.set_chronology(1, "young.rwl", 1900, c, depths(100, 2));
  store.w.seg = 116;
  store.w.olap = 25;
  // (100 - 116) / 25 cuts to 0, and 0 + 1 = 1. The cell takes what years there are.
  const std::string text = report(store.w);
  EXPECT_EQ(line(text, 3), "Year      1900  Mean");
  EXPECT_EQ(line(text, 4), "To        2015  Core");
  EXPECT_NEAR(store.w.corr_tables.correlation(1, 1), cov(a, b), 1e-12);
}

TEST(CorrReport, OfAnEmptyStoreIsATitleAndAHeading) {
  TestStore store;
  store.w.cnam(1) = "missing.rwl";
  // No years: used are 0 to -1, the grid is 0 to 24, no segment; no trees, so no line of means.
  EXPECT_EQ(report(store.w), " Correlation tables from    0 to    0 for missing.rwl" + blanks(49) +
                                 "\n"
                                 "\n"
                                 "Year       Mean\n"
                                 "To         Core\n");
}

TEST(CorrReport, CutsYearsBeforeZeroTowardsZero) {
  TestStore store;
  const auto a = noise(60, 1);
  store.add_tree("A", -107, a);
  store.add_tree("B", -107, noise(60, 2));
  store.set_chronology(1, "old.rwl", -107, a, depths(60, 2));
  store.w.seg = 20;
  store.w.olap = 10;
  // From 10 (-107 / 10) = -100; used to -48: 10 (-49 / 10 + 1) - 1 = -31.
  const std::string text = report(store.w);
  EXPECT_EQ(line(text, 1).substr(0, 42), " Correlation tables from -107 to  -48 for ");
  EXPECT_EQ(line(text, 3), "Year      -100  -90  -80  -70  -60  -50  Mean");
  EXPECT_EQ(line(text, 4), "To         -81  -71  -61  -51  -41  -31  Core");
  // From -50 to -48 is too short; the cell of -60 is moved back to -67.
  EXPECT_EQ(line(text, 5).substr(34, 5), blanks(5));
  EXPECT_NE(line(text, 5).substr(29, 5), blanks(5));
}

TEST(CorrReport, ComparesOtherChronologiesWithWhatTheEntryBeforeLeftBehindTheirLength) {
  TestStore store;
  // The current chronology is 1900 to 1939; the other, of 20 years, 1910 to 1929. Its line refreshes places 1
  // to 20 (1900 to 1919) only; behind them stands what the tree left: (2c - tree) / 1.
  const auto tree = noise(40, 1), c = noise(40, 2), other = noise(20, 3);
  store.add_tree("TREE", 1900, tree);
  store.set_chronology(1, "now.rwl", 1900, c, depths(40, 2));
  store.set_chronology(2, "other.crn", 1910, other, depths(20, 5));
  store.w.nd = 3;
  store.w.ad(3) = store.w.ad(2);
  store.w.fy(3) = 1910;
  store.w.ly(3) = 1929;
  store.w.yr(3) = 20;
  for (int k = 0; k < 20; ++k) {
    store.w.ax(store.w.ad(3) + k) = other[static_cast<std::size_t>(k)];
    store.w.xok(store.w.ad(3) + k) = true;
  }
  store.w.seg = 20;
  store.w.olap = 10;
  report(store.w);
  std::vector<double> compared;
  for (std::size_t k = 10; k < 30; ++k) compared.push_back(k < 20 ? c[k] : 2 * c[k] - tree[k]);
  ASSERT_TRUE(store.w.corr_tables.valid(3, 2));
  EXPECT_EQ(store.w.corr_tables.correlation(3, 2), cov(other, compared));
  // Carefully it is compared with the current chronology alone.
  store.w.careful.set(Mend::constant_series, true);
  report(store.w);
  EXPECT_EQ(store.w.corr_tables.correlation(3, 2), cov(other, part(c, 10, 20)));
  store.w.careful = {};
  // What the last entry left is still there in the next report, where the tree has gone.
  for (int p = 21; p <= 40; ++p) store.w.corr_tables.comparison(p) = 1.0;
  store.w.yr(1) = 0;
  store.w.ly(1) = 1899;
  report(store.w);
  compared.clear();
  for (std::size_t k = 10; k < 30; ++k) compared.push_back(k < 20 ? c[k] : 1.0);
  EXPECT_EQ(store.w.corr_tables.correlation(3, 2), cov(other, compared));
}

// A span of 1920 to 1930 is a step of ten and no more: the tree is passed over, and so leaves nothing behind.
TEST(CorrReport, PassesOverASeriesThatHasNoMoreThanAStep) {
  for (const int more : {0, 1}) {
    TestStore store;
    const auto tree = noise(40, 1), c = noise(40, 2), other = noise(20, 3), late = noise(11 + more, 4);
    store.add_tree("TREE", 1900, tree);
    store.add_tree("SHORT", 1920, late);
    store.set_chronology(1, "now.rwl", 1900, c, depths(40, 2));
    store.set_chronology(2, "other.crn", 1910, other, depths(20, 5));
    store.w.ad(4) = store.w.ad(3);
    put_entry(store.w, 4, "other", 1910, other);
    store.w.nd = 4;
    store.w.seg = 20;
    store.w.olap = 10;
    report(store.w);
    std::vector<double> compared;  // 1910 to 1919 the chronology, then it less the tree that came last
    for (std::size_t k = 10; k < 30; ++k) {
      const double left = more == 0 ? tree[k] : k < 20 ? 0 : late[k - 20];
      compared.push_back(k < 20 ? c[k] : 2 * c[k] - left);
    }
    ASSERT_TRUE(store.w.corr_tables.valid(4, 2));
    EXPECT_EQ(store.w.corr_tables.correlation(4, 2), cov(other, compared)) << more;
  }
}

TEST(CorrReport, CountsWhatItPrintsForTreesAndNeverClearsTheCounts) {
  TwoTrees store;
  store.w.iwk1(1) = 100;
  store.w.wk2(2) = 10.0;
  report(store.w);
  EXPECT_EQ(store.w.iwk1(1), 102);
  EXPECT_EQ(store.w.iwk1(4), 2);
  EXPECT_NEAR(store.w.wk1(2), 1.2, 1e-12);
  EXPECT_EQ(store.w.iwk2(1), 4);
  EXPECT_NEAR(store.w.wk2(2), 13.0, 1e-12);
  report(store.w);
  EXPECT_EQ(store.w.iwk2(1), 8);
}

TEST(CorrReport, IsSafeWhereTreesLieOutsideTheChronology) {
  TestStore store;
  store.add_tree("BEFORE", -20000, noise(300, 1));
  store.add_tree("BEHIND", 30000, noise(300, 2));
  store.add_tree("ACROSS", 1850, noise(300, 3));
  store.set_chronology(1, "index.crn", 1900, noise(100, 4), depths(100, 7));
  for (const int seg : {4, 50, 116, 12000}) {
    for (const int olap : {1, 3, 25, 99, 11999, 12000}) {
      store.w.seg = seg;
      store.w.olap = olap;
      const std::string text = report(store.w);
      EXPECT_EQ(text.find("BEFORE"), std::string::npos);
      EXPECT_EQ(text.find("BEHIND"), std::string::npos);
      const bool fits = (seg == 4 && olap == 1) || (seg == 50 && olap <= 25) || (seg == 116 && olap == 25);
      EXPECT_EQ(text.find("ACROSS") != std::string::npos, fits) << seg << " " << olap;
    }
  }
}

TEST(CorrReport, OfAStepOfNoneIsATitleAlone) {
  TwoTrees store;
  store.w.olap = 0;
  EXPECT_EQ(lines(report(store.w)), 1u);
}

TEST(CorrReport, TellsOnceThatItsFileCannotBeOpened) {
  TwoTrees store;
  const ScratchFolder folder;
  std::filesystem::create_directory("Corr.prn");
  cor_report(store.w, store.troubles);
  EXPECT_EQ(store.messages.str(), "Open Corr.prn fail err =    21\n");
  // The report itself was made all the same.
  EXPECT_NEAR(store.w.corr_tables.mean_sum(1), 3.0, 1e-12);
}

TEST(CorrReport, TellsOnceAtTheClosingThatItCouldNotBeWritten) {
  ThirtySegments store;
  const ScratchFolder folder;
  std::filesystem::create_symlink("/dev/full", "Corr.prn");  // a device that takes no byte
  cor_report(store.w, store.troubles);
  EXPECT_EQ(store.messages.str(), "CloseCorr.prn fail err =    28\n");
}

// It has a line as ever, of nothing but 0, which is no part of the means.
TEST(CorrReport, CarefullyAConstantTreeIsNoPartOfTheMeans) {
  TwoTrees two, store;
  store.add_tree("FLAT", 1900, repeated(10, 1.5));
  store.w.careful.set(Mend::constant_series, true);
  const std::string with = report(store.w), without = report(two.w);
  EXPECT_EQ(line(with, 7), "FLAT       .00  .00  .00  .00   .00");
  for (const int n : {1, 3, 4, 5, 6}) EXPECT_EQ(line(with, n), line(without, n));
  EXPECT_EQ(line(with, 9), line(without, 8));
}

}  // namespace
}  // namespace vorn
