#include "statistics/statistics_report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "records/edit_format.h"
#include "statistics/pair_correlations.h"
#include "statistics/tree_correlations.h"
#include "support/kept_troubles.h"
#include "support/scratch_folder.h"
#include "support/test_store.h"

namespace vorn {
namespace {

std::string report(Workspace& w) {
  const ScratchFolder folder;
  std::ostringstream told;
  KeptTroubles troubles(told);
  stats_rep(w, troubles);
  EXPECT_EQ(told.str(), "");
  return ScratchFolder::read("Stats.prn");
}

std::string title(const std::string& name) {
  return " Stats report for " + name + std::string(60 - name.size(), ' ') + "\n";
}

const std::string headings =
    "Name      First   Last    Age   Mean  S.Dev Correl.   RBAR\n"
    "           year   year        Ring (mm)    with CRN   Tree\n"
    "\n";

std::size_t count(const std::string& text, const std::string& what) {
  std::size_t times = 0;
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) ++times;
  return times;
}

TEST(StatsReport, OfThreeTreesIsThisFileToTheByte) {
  // Widths 1 2 3 4: mean 2.5, squares 5, deviation sqrt(5 / 3) = 1.29. 2 and 4: mean 3, deviation sqrt(2)
  // = 1.41. One ring: deviation 0/0. All are too short to be correlated. Rings: 10 + 6 + 5 over 7, 3.00; ages
  // 7 over 3, 2.33.
  TestStore store;
  store.add_tree("TREE01A", 1900, {1, 2, 3, 4});
  store.add_tree("TREE02BC", -12, {2, 4});
  store.add_tree("ONE", 1950, {5});
  store.set_chronology(1, "data/three.rwl", -12, repeated(1963, 1.0), depths(1963, 1));
  store.w.nd = 4;  // the chronology, which is no tree
  EXPECT_EQ(report(store.w), title("data/three.rwl") + headings +
                                 "TREE01A    1900   1903      4   2.50   1.29   0.00   0.00\n"
                                 "TREE02BC    -12    -11      2   3.00   1.41   0.00   0.00\n"
                                 "ONE        1950   1950      1   5.00    NaN   0.00   0.00\n"
                                 "\n"
                                 "\n"
                                 " Number of trees       3\n"
                                 " Mean tree age      2.33\n"
                                 " Mean ring width    3.00\n"
                                 " Mean correlation    NaN\n"
                                 " Mean RBAR           NaN\n");
  EXPECT_EQ(store.messages.str(), "");
  EXPECT_EQ(store.w.ios, status::ok);
}

TEST(StatsReport, ShowsTheCorrelationsOfTreesThatAreLongEnough) {
  // Three trees, alike but for scale, and a fourth that runs against them, compared with a chronology of
  // great depth that is itself like the first: taking a tree out changes little.
  TestStore store;
  const auto a = noise(60, 1);
  std::vector<double> twice, against;
  for (const double value : a) {
    twice.push_back(2 * value);
    against.push_back(1 - value);
  }
  store.add_tree("A", 1900, a);
  store.add_tree("TWICE", 1900, twice);
  store.add_tree("AGAINST", 1900, against);
  store.set_chronology(1, "a.rwl", 1900, a, depths(60, 1000));
  const std::string text = report(store.w);
  EXPECT_NE(text.find("   1.00   0.00\n"), std::string::npos);  // A: +1 and -1 with the others
  EXPECT_EQ(count(text, "  -1.00  -1.00\n"), 1u);  // AGAINST: -1 with both, and with the chronology
  EXPECT_NE(text.find(" Mean correlation   0.33\n"), std::string::npos);
  EXPECT_NE(text.find(" Mean RBAR         -0.33\n"), std::string::npos);
}

TEST(StatsReport, Of51TreesHasAPageOf50AndAPageOfOne) {
  TestStore store;
  for (int t = 1; t <= 51; ++t) store.add_tree("T" + std::to_string(t), 1900, {1, 2});
  store.set_chronology(1, "many.rwl", 1900, {1, 2}, {51, 51});
  const std::string text = report(store.w);
  EXPECT_EQ(count(text, headings), 2u);
  const auto second = text.find(headings, text.find(headings) + 1);
  EXPECT_EQ(count(text.substr(0, second), "   1900   1901      2   1.50   0.71   0.00   0.00\n"), 50u);
  EXPECT_EQ(text.substr(second - 59, 59), "T50        1900   1901      2   1.50   0.71   0.00   0.00\n\n");
  EXPECT_EQ(text.substr(second), headings +
                                     "T51        1900   1901      2   1.50   0.71   0.00   0.00\n"
                                     "\n"
                                     "\n"
                                     " Number of trees      51\n"
                                     " Mean tree age      2.00\n"
                                     " Mean ring width    1.50\n"
                                     " Mean correlation    NaN\n"
                                     " Mean RBAR           NaN\n");
}

// Pairs of so many trees are not correlated one by one; what is printed must not show it.
TEST(StatsReport, OfManyTreesShowsTheMeansOfThePlainDefinition) {
  TestStore store;
  std::vector<std::vector<double>> trees;
  std::vector<SeriesView> dated;
  for (int t = 0; t < 700; ++t) trees.push_back(noise(45 + t % 60, static_cast<unsigned>(t) + 1));
  for (int t = 0; t < 700; ++t) {
    store.add_tree("T" + std::to_string(t), 1900 + t % 7, trees[static_cast<std::size_t>(t)]);
    dated.push_back({1900 + t % 7, trees[static_cast<std::size_t>(t)]});
  }
  const PairSums plain = pair_correlations_plain(dated, fewest_common_years);
  std::istringstream lines(report(store.w));
  std::size_t t = 0;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(" Mean RBAR")) {
      EXPECT_EQ(line.substr(17), edit(EditFormat("(F7.2)"), plain.sum / plain.pairs));
    }
    if (!line.starts_with("T")) continue;
    EXPECT_EQ(line.substr(50), edit(EditFormat("(F7.2)"), plain.sum_of[t] / plain.pairs_of[t])) << t;
    ++t;
  }
  EXPECT_EQ(t, 700u);
}

TEST(StatsReport, Of50TreesHasOnePage) {
  TestStore store;
  for (int t = 1; t <= 50; ++t) store.add_tree("T", 1900, {1, 2});
  EXPECT_EQ(count(report(store.w), headings), 1u);
}

TEST(StatsReport, WithoutTreesIsTheTitleAndTotalsOfNothing) {
  TestStore store;
  store.w.cnam(1) = "none.rwl";
  EXPECT_EQ(report(store.w), title("none.rwl") +
                                 "\n"
                                 " Number of trees       0\n"
                                 " Mean tree age       NaN\n"
                                 " Mean ring width     NaN\n"
                                 " Mean correlation    NaN\n"
                                 " Mean RBAR           NaN\n");
}

TEST(StatsReport, WeighsEveryRingTheSameInTheMeanWidth) {
  TestStore store;
  store.add_tree("OLD", 1900, repeated(9, 1.0));
  store.add_tree("YOUNG", 1900, {6.0});
  // (9 + 6) / 10, not (1 + 6) / 2.
  EXPECT_NE(report(store.w).find(" Mean ring width    1.50\n"), std::string::npos);
}

TEST(StatsReport, CountsEstimatesAtMissingRings) {
  TestStore store;
  store.add_tree("GAPS", 1900, {1, 2, 3}, "+-+");
  EXPECT_NE(report(store.w).find("GAPS       1900   1902      3   2.00   1.00"), std::string::npos);
}

TEST(StatsReport, TakesATreeWithoutYears) {
  TestStore store;
  store.add_tree("EMPTY", 0, {});
  EXPECT_NE(report(store.w).find("EMPTY         0     -1      0    NaN  -0.00   0.00   0.00\n"),
            std::string::npos);
}

TEST(StatsReport, TellsOnceThatItsFileCannotBeOpened) {
  TestStore store;
  store.add_tree("A", 1900, {1, 2});
  const ScratchFolder folder;
  std::filesystem::create_directory("Stats.prn");
  stats_rep(store.w, store.troubles);
  EXPECT_EQ(store.messages.str(), "OpenStats.prn fail err =    21\n");
}

TEST(StatsReport, TellsOnceAtTheClosingThatItCouldNotBeWritten) {
  TestStore store;
  for (int t = 1; t <= 5000; ++t) store.add_tree("T", 1900, {1, 2});  // longer than any buffer
  const ScratchFolder folder;
  std::filesystem::create_symlink("/dev/full", "Stats.prn");
  stats_rep(store.w, store.troubles);
  EXPECT_EQ(store.messages.str(), "CloseStats.prn fail err =    28\n");
}

}  // namespace
}  // namespace vorn
