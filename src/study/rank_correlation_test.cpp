#include "study/rank_correlation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "study/biweight_mean.h"
#include "study/ring_statistics.h"
#include "study/yule_walker.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

TEST(Ranks, OfValuesAlikeAreTheirMean) {
  EXPECT_EQ(ranks_of(Values{3, 1, 3, 2}), (Values{3.5, 1, 3.5, 2}));
  EXPECT_TRUE(has_ties(Values{3, 1, 3}));
  EXPECT_FALSE(has_ties(Values{3, 1, 2}));
  EXPECT_TRUE(ranks_of(Values{}).empty());
}

// 1 - 6 (1 + 1) / (5 (25 - 1)) where two neighbours are exchanged.
TEST(Ranks, CorrelateBySpearman) {
  EXPECT_NEAR(rank_correlation(Values{1, 2, 3, 4, 5}, Values{10, 30, 20, 40, 90}), 0.9, 1e-12);
  EXPECT_EQ(rank_correlation(Values{1, 2, 3}, Values{7, 7, 7}), 0);
}

// Tables of Student's distribution: 5 % above 1.812 with 10 degrees, above 2.015 with 5 and above 6.314
// with 1.
TEST(StudentTail, IsThatOfTheTables) {
  EXPECT_NEAR(student_tail(1.812, 10), 0.05, 1e-4);
  EXPECT_NEAR(student_tail(2.015, 5), 0.05, 1e-4);
  EXPECT_NEAR(student_tail(6.314, 1), 0.05, 1e-4);
  EXPECT_NEAR(student_tail(2.920, 2), 0.05, 1e-4);
  EXPECT_NEAR(student_tail(2.353, 3), 0.05, 1e-4);
  EXPECT_NEAR(student_tail(0, 48), 0.5, 1e-12);
}

TEST(ProbabilityOfRanks, FallsAsTheCorrelationGrows) {
  EXPECT_NEAR(probability_of_ranks(0, 50, false), 0.5, 0.01);
  EXPECT_NEAR(probability_of_ranks(0.235, 50, false), 0.05, 0.002);
  EXPECT_NEAR(probability_of_ranks(0.235, 50, true), 0.05, 0.002);
  EXPECT_GE(probability_of_ranks(1, 50, false), 0);
  EXPECT_TRUE(std::isnan(probability_of_ranks(0.5, 9, false)));
}

// 1, 2, 3 and 100: median 2.5, distances 0.5, 0.5, 1.5, 97.5, their median 1; 100 counts nothing.
TEST(BiweightMean, LeavesOutliersOut) {
  const auto weight = [](double distance) { return std::pow(1 - std::pow(distance / 9.000001, 2), 2); };
  const double near = weight(0.5), far = weight(1.5);
  EXPECT_NEAR(biweight_mean(Values{1, 2, 3, 100}), (far + 5 * near) / (far + 2 * near), 1e-12);
  EXPECT_EQ(biweight_mean(Values{4}), 4);
  EXPECT_EQ(biweight_mean(Values{4, 4, 4, 9}), 4);
  EXPECT_TRUE(std::isnan(biweight_mean(Values{})));
}

// Held against its definition, sorted anew.
TEST(BiweightMean, IsThatOfItsDefinition) {
  std::mt19937 random(5);
  for (std::size_t n = 1; n < 40; ++n) {
    Values sorted;
    for (std::size_t k = 0; k < n; ++k) sorted.push_back(static_cast<double>(random() % 50) / 7);
    std::ranges::sort(sorted);
    const double median = median_of_sorted(sorted);
    Values distances;
    for (const double value : sorted) distances.push_back(std::abs(value - median));
    std::ranges::sort(distances);
    double sum = 0, weights = 0;
    for (const double value : sorted) {
      const double u = (value - median) / (9 * median_of_sorted(distances) + 1e-6);
      const double weight = std::abs(u) > 1 ? 0 : (1 - u * u) * (1 - u * u);
      sum += weight * value;
      weights += weight;
    }
    EXPECT_EQ(biweight_mean(sorted), sum / weights) << n;
  }
}

TEST(RingStatistics, AreThoseOfTheirFormulas) {
  const Values widths = {1, 3, 2};
  EXPECT_NEAR(mean_sensitivity(widths), (2.0 * 2 / 4 + 2.0 * 1 / 5) / 2, 1e-12);
  EXPECT_NEAR(weighted_sensitivity(widths), 3.0 / 2 * 3 / 6, 1e-12);
  EXPECT_NEAR(gini_coefficient(widths), 8.0 / (2 * 9 * 2), 1e-12);
  EXPECT_NEAR(skewness(widths), 0, 1e-12);
  EXPECT_NEAR(first_autocorrelation(widths), (-1.0 * 1 + 1.0 * 0) / 2, 1e-12);
  EXPECT_EQ(mean_sensitivity(Values{0, 0}), 0);
  EXPECT_TRUE(std::isnan(mean_sensitivity(Values{1})));
  EXPECT_TRUE(std::isnan(gini_coefficient(Values{0, 0})));
  EXPECT_TRUE(std::isnan(skewness(Values{2, 2})));
}

TEST(YuleWalker, HasNoModelOfWhatDoesNotVary) {
  EXPECT_FALSE(yule_walker(Values(30, 1.1)));
  EXPECT_FALSE(yule_walker(Values{}));
  EXPECT_FALSE(yule_walker(Values{1, 2, std::nan("")}));
  EXPECT_FALSE(yule_walker(Values{1e200, -1e200, 1e200}));
}

// Of an alternating series the neighbour foretells nearly all: about -(n - 1) / n of it.
TEST(YuleWalker, FindsWhatTheYearBeforeTells) {
  Values series;
  for (int k = 0; k < 40; ++k) series.push_back(k % 2 == 0 ? 1 : -1);
  const auto model = yule_walker(series);
  ASSERT_TRUE(model && !model->coefficients.empty());
  EXPECT_EQ(highest_order(40), 16);
  EXPECT_EQ(highest_order(4), 3);
  EXPECT_EQ(highest_order(1), 0);
  const auto rest = residuals_of(series, *model);
  for (std::size_t k = 0; k < rest.size(); ++k)
    EXPECT_EQ(std::isnan(rest[k]), k < model->coefficients.size()) << k;
}

}  // namespace
}  // namespace vorn
