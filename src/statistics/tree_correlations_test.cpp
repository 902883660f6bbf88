#include "statistics/tree_correlations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <utility>
#include <vector>

#include "statistics/correlation.h"
#include "support/test_store.h"

namespace vorn {
namespace {

std::vector<double> part(const std::vector<double>& values, int from, int count) {
  return {values.begin() + from, values.begin() + from + count};
}

TEST(Rbar, LeavesOutTwoTreesThatOverlapBy39Years) {
  TestStore store;
  store.add_tree("A", 1900, noise(60, 1));
  store.add_tree("B", 1921, noise(60, 2));  // common 1921 to 1959
  std::vector<double> rtree(10000, 7.0);
  EXPECT_TRUE(std::isnan(rbar(store.w, rtree)));
  EXPECT_EQ(rtree[0], 0.0);
  EXPECT_EQ(rtree[1], 0.0);
  EXPECT_EQ(rtree[9999], 0.0);
}

TEST(Rbar, TakesTwoTreesThatOverlapBy40Years) {
  TestStore store;
  const auto a = noise(60, 1), b = noise(60, 2);
  store.add_tree("A", 1900, a);
  store.add_tree("B", 1920, b);  // common 1920 to 1959
  std::vector<double> rtree(10000);
  const double r = cov(part(a, 20, 40), part(b, 0, 40));
  EXPECT_EQ(rbar(store.w, rtree), r);
  EXPECT_EQ(rtree[0], r);  // a tree with one pair keeps its correlation
  EXPECT_EQ(rtree[1], r);
}

TEST(Rbar, IsTheMeanOverPairsAndByTreeTheMeanOverItsPairs) {
  TestStore store;
  const auto a = noise(50, 1), b = noise(50, 2), c = noise(45, 3);
  store.add_tree("A", 1900, a);
  store.add_tree("B", 1900, b);
  store.add_tree("C", 1905, c);
  store.add_tree("ALONE", 1600, noise(50, 4));
  const double ab = cov(a, b), ac = cov(part(a, 5, 45), c), bc = cov(part(b, 5, 45), c);
  std::vector<double> rtree(10000);
  EXPECT_DOUBLE_EQ(rbar(store.w, rtree), (ab + ac + bc) / 3);
  EXPECT_DOUBLE_EQ(rtree[0], (ab + ac) / 2);
  EXPECT_DOUBLE_EQ(rtree[1], (ab + bc) / 2);
  EXPECT_DOUBLE_EQ(rtree[2], (ac + bc) / 2);
  EXPECT_EQ(rtree[3], 0.0);
}

TEST(Rbar, TakesEstimatesAtMissingRingsAsTheyAre) {
  TestStore store;
  const auto a = noise(50, 1), b = noise(50, 2);
  store.add_tree("A", 1900, a, std::string(50, '-'));
  store.add_tree("B", 1900, b);
  std::vector<double> rtree(10000);
  EXPECT_EQ(rbar(store.w, rtree), cov(a, b));
}

// What was kept must never be taken for what is not the same to the last bit.
TEST(Rbar, IsComputedAgainWhereAnythingThatItDependsOnHasChanged) {
  TestStore store;
  Workspace& w = store.w;
  for (unsigned t = 1; t <= 4; ++t) store.add_tree("T", 1900, noise(60, t));
  const std::vector<std::function<void()>> changes = {
      [&] { w.ax(7) = std::nextafter(w.ax(7), 10.0); },
      [&] { std::swap(w.ax(61), w.ax(62)); },
      [&] { ++w.fy(2), ++w.ly(2); },
      [&] { --w.ly(4); },
      [&] { w.ad(1) = 2; },
      [&] { w.nc = 3; },
      [&] { w.nc = 0; },
      [&] { w.nc = 4; },
  };
  std::vector<double> before(5), after(5), anew(5);
  rbar(w, before);
  for (std::size_t k = 0; k < changes.size(); ++k) {
    changes[k]();
    const double mean = rbar(w, after);
    EXPECT_NE(after, before) << k;
    w.rbar_kept.valid = false;
    const double mean_anew = rbar(w, anew);
    EXPECT_EQ(after, anew) << k;
    EXPECT_TRUE(mean == mean_anew || (std::isnan(mean) && std::isnan(mean_anew))) << k;
    before = after;
  }
}

// Its work vector too: nothing tells whether a figure was kept.
TEST(Rbar, OfTreesThatHaveNotChangedGivesAgainAllThatItGave) {
  TestStore store;
  for (unsigned t = 1; t <= 3; ++t) store.add_tree("T", 1900 + 15 * static_cast<int>(t), noise(60, t));
  std::vector<double> once(10, 7.0), again(10, 8.0);
  const double mean = rbar(store.w, once);
  EXPECT_EQ(store.w.iwk1(2), 2);
  store.w.iwk1.fill(77);
  store.w.wk1.fill(0.5);
  EXPECT_EQ(rbar(store.w, again), mean);
  EXPECT_EQ(again, once);
  EXPECT_EQ(store.w.iwk1(1), 1);
  EXPECT_EQ(store.w.iwk1(2), 2);
  EXPECT_EQ(store.w.iwk1(4), 77);
}

TEST(Rbar, OfAnEmptyStoreIsNotANumber) {
  TestStore store;
  std::vector<double> rtree(10000);
  EXPECT_TRUE(std::isnan(rbar(store.w, rtree)));
}

// The tree taken out of the chronology, by the full depth.
std::vector<double> rest(const std::vector<double>& crn, const std::vector<double>& tree, double depth) {
  std::vector<double> values;
  for (std::size_t k = 0; k < crn.size(); ++k) values.push_back((depth * crn[k] - tree[k]) / depth);
  return values;
}

TEST(Cbar, DividesBySampleDepthAndNotByOneLess) {
  TestStore store;
  const auto tree = noise(60, 1), crn = noise(60, 9);
  store.add_tree("A", 1900, tree);
  store.set_chronology(1, "a.crn", 1900, crn, depths(60, 3));
  std::vector<double> rcrn(10000, 7.0);
  const double r = cov(tree, rest(crn, tree, 3));
  EXPECT_EQ(cbar(store.w, store.w, store.w, rcrn), r);
  EXPECT_EQ(rcrn[0], r);
  EXPECT_EQ(rcrn[1], 0.0);
  // A constant divisor does not show in a correlation; one that changes half way does.
  std::vector<int> deep = depths(60, 3);
  std::vector<double> mixed;
  for (std::size_t k = 0; k < 60; ++k) {
    if (k >= 30) deep[k] = 2;
    mixed.push_back((deep[k] * crn[k] - tree[k]) / deep[k]);
  }
  store.set_chronology(1, "a.crn", 1900, crn, deep);
  EXPECT_EQ(cbar(store.w, store.w, store.w, rcrn), cov(tree, mixed));
}

TEST(Cbar, LeavesOutATreeOf45YearsOfWhichTheFirst6HaveDepth1) {
  TestStore store;
  store.add_tree("A", 1900, noise(45, 1));
  std::vector<int> deep = depths(45, 2);
  for (std::size_t k = 0; k < 6; ++k) deep[k] = 1;
  store.set_chronology(1, "a.crn", 1900, noise(45, 9), deep);
  std::vector<double> rcrn(10000, 7.0);
  EXPECT_TRUE(std::isnan(cbar(store.w, store.w, store.w, rcrn)));
  EXPECT_EQ(rcrn[0], 0.0);
  deep[5] = 2;  // 40 years are left
  store.set_chronology(1, "a.crn", 1900, noise(45, 9), deep);
  EXPECT_FALSE(std::isnan(cbar(store.w, store.w, store.w, rcrn)));
  EXPECT_NE(rcrn[0], 0.0);
}

TEST(Cbar, TrimsTheEndsOnlyAndKeepsThinYearsBetween) {
  TestStore store;
  const auto tree = noise(60, 1), crn = noise(60, 9);
  store.add_tree("A", 1900, tree);
  std::vector<int> deep = depths(60, 2);
  deep[0] = deep[1] = deep[59] = 1;
  deep[30] = 0;
  deep[31] = 1;
  store.set_chronology(1, "a.crn", 1900, crn, deep);
  std::vector<double> values;
  for (std::size_t k = 2; k < 59; ++k) values.push_back((deep[k] * crn[k] - tree[k]) / std::max(deep[k], 1));
  std::vector<double> rcrn(10000);
  EXPECT_EQ(cbar(store.w, store.w, store.w, rcrn), cov(part(tree, 2, 57), values));
}

TEST(Cbar, TakesTheMeanOverTheTreesThatQualify) {
  TestStore store;
  const auto crn = noise(100, 9);
  store.add_tree("A", 1900, noise(100, 1));
  store.add_tree("SHORT", 1900, noise(39, 2));
  store.add_tree("C", 1930, noise(70, 3));
  store.set_chronology(1, "a.crn", 1900, crn, depths(100, 3));
  std::vector<double> rcrn(10000);
  const double mean = cbar(store.w, store.w, store.w, rcrn);
  EXPECT_EQ(rcrn[1], 0.0);
  EXPECT_NE(rcrn[0], 0.0);
  EXPECT_NE(rcrn[2], 0.0);
  EXPECT_EQ(mean, (rcrn[0] + rcrn[2]) / 2);
}

TEST(Cbar, IsTheSameWhenItsResultsGoToItsOwnWorkVector) {
  TestStore store;
  for (unsigned i = 1; i <= 5; ++i) store.add_tree("T", 1900, noise(60, i));
  store.set_chronology(1, "a.crn", 1900, noise(60, 9), depths(60, 5));
  std::vector<double> rcrn(10000);
  const double mean = cbar(store.w, store.w, store.w, rcrn);
  EXPECT_EQ(cbar(store.w, store.w, store.w, store.w.wk1.range(1, 10000)), mean);
}

TEST(Cbar, PassesOverTreesOutsideTheChronology) {
  TestStore store;
  store.add_tree("BEFORE", 1700, noise(60, 1));
  store.add_tree("BEHIND", 2100, noise(60, 2));
  store.add_tree("ACROSS", 1880, noise(60, 3));  // 1900 to 1939 in common
  store.add_tree("NOTHING", 1900, {});
  store.set_chronology(1, "a.crn", 1900, noise(60, 9), depths(60, 4));
  std::vector<double> rcrn(10000);
  EXPECT_EQ(cbar(store.w, store.w, store.w, rcrn), rcrn[2]);
  EXPECT_NE(rcrn[2], 0.0);
}

TEST(Cbar, OfAChronologyWithoutYearsIsNotANumber) {
  TestStore store;
  store.add_tree("A", 1900, noise(60, 1));
  std::vector<double> rcrn(10000);
  EXPECT_TRUE(std::isnan(cbar(store.w, store.w, store.w, rcrn)));
}

// --- Constant trees, carefully: what is computed of the others is as if they were not there.

TEST(Rbar, CarefullyLeavesOutConstantTreesAndThoseWhoseIndicesAreNoNumbers) {
  TestStore alone, store;
  for (TestStore* one : {&alone, &store}) {
    one->add_tree("A", 1900, noise(60, 1));
    one->add_tree("B", 1900, noise(60, 2));
    one->add_tree("C", 1900, noise(60, 3));
  }
  store.add_tree("FLAT", 1900, repeated(60, 1.5));
  store.add_tree("INF", 1900, noise(60, 4));
  store.w.ax(store.w.ad(5) + 7) = -INFINITY;
  std::vector<double> of_alone(10000), of_all(10000);
  const double mean = rbar(alone.w, of_alone);
  EXPECT_NE(rbar(store.w, of_all), mean);
  store.w.careful.set(Mend::constant_series, true);
  EXPECT_EQ(rbar(store.w, of_all), mean);
  EXPECT_EQ(of_all, of_alone);
  store.w.careful = {};
  EXPECT_NE(rbar(store.w, of_all), mean);  // nothing that was kept is taken for it
}

TEST(Cbar, CarefullyLeavesOutConstantTrees) {
  TestStore alone, store;
  for (TestStore* one : {&alone, &store}) {
    one->add_tree("A", 1900, noise(60, 1));
    one->add_tree("B", 1900, noise(60, 2));
    one->set_chronology(1, "two", 1900, noise(60, 3), depths(60, 2));
  }
  store.add_tree("FLAT", 1900, repeated(60, 1.5));
  Careful careful;
  careful.set(Mend::constant_series, true);
  std::vector<double> of_alone(10000), of_all(10000);
  const double mean = cbar(alone.w, alone.w, alone.w, of_alone);
  EXPECT_NE(cbar(store.w, store.w, store.w, of_all), mean);
  EXPECT_EQ(cbar(store.w, store.w, store.w, of_all, careful), mean);
  EXPECT_EQ(of_all, of_alone);
}

}  // namespace
}  // namespace vorn
