#include "study/agreement.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace vorn {
namespace {

using Values = std::vector<double>;

// 3 is all of the mean of 1 to 5; 4 is 100 x 4 / 3.8 percent of that of 2 3 4 5 5.
TEST(FiveYearLogarithms, ArePercentOfTheMeanOfFiveYears) {
  const Values values = five_year_logarithms(Values{1, 2, 3, 4, 5, 5});
  ASSERT_EQ(values.size(), 6u);
  for (const std::size_t k : {0, 1, 4, 5}) EXPECT_TRUE(std::isnan(values[k])) << k;
  EXPECT_NEAR(values[2], std::log(100.0), 1e-12);
  EXPECT_NEAR(values[3], std::log(400 / 3.8), 1e-12);
}

TEST(FiveYearLogarithms, OfARingOfZeroAreNotKnownInItsYearAlone) {
  const Values values = five_year_logarithms(Values{1, 1, 0, 1, 1, 1});
  EXPECT_TRUE(std::isnan(values[2]));
  EXPECT_NEAR(values[3], std::log(125.0), 1e-12);
}

// ln 2 is 0.693147.
TEST(GrowthRatios, AreLogarithmsOfARingToTheOneBefore) {
  const Values values = growth_ratios(Values{1, 2, 1, 0, 3});
  EXPECT_TRUE(std::isnan(values[0]));
  EXPECT_NEAR(values[1], 69.3147, 1e-4);
  EXPECT_NEAR(values[2], -69.3147, 1e-4);
  EXPECT_TRUE(std::isnan(values[3]));
  EXPECT_TRUE(std::isnan(values[4]));
}

// 0.5 x 5 / sqrt(0.75)
TEST(TOf, ARAndItsPairs) {
  EXPECT_NEAR(t_of(0.5, 27), 2.886751, 1e-6);
  EXPECT_NEAR(t_of(-0.5, 27), -2.886751, 1e-6);
  EXPECT_TRUE(std::isinf(t_of(1, 10)));
  EXPECT_TRUE(std::isnan(t_of(0.5, 2)));
}

// 1 2 4 3 with 2 4 3 1: deviations -1.5 -0.5 1.5 0.5 and -0.5 1.5 0.5 -1.5, products 0.75 - 0.75 + 0.75 -
// 0.75.
TEST(Autocorrelation, IsThatWithTheYearBehind) {
  EXPECT_NEAR(autocorrelation({1900, Values{1, 2, 3, 4, 5}}), 1, 1e-12);
  EXPECT_NEAR(autocorrelation({1900, Values{1, 2, 1, 2, 1}}), -1, 1e-12);
  EXPECT_NEAR(autocorrelation({1900, Values{1, 2, 4, 3, 1}}), 0, 1e-12);
  EXPECT_EQ(autocorrelation({1900, Values{1, 2, 4}}), 0);
}

// Without 1902: 1 2, 5 3, 3 9.
TEST(Autocorrelation, PassesOverYearsWithoutARing) {
  const Values values = {1, 2, 99, 5, 3, 9};
  const std::array<bool, 6> present = {true, true, false, true, true, true};
  // Deviations -2 2 0 and -8/3 -5/3 13/3: 2 / sqrt(8 x 86/3 - ...) worked out as 2 / sqrt(8 x 28.667).
  EXPECT_NEAR(autocorrelation({1900, values, present}), 2 / std::sqrt(8 * 86 / 3.0), 1e-12);
}

TEST(EffectivePairs, AreFewerWhereBothCarryOver) {
  EXPECT_NEAR(effective_pairs(100, 0.5, 0.4), 100 * 0.8 / 1.2, 1e-12);
  EXPECT_NEAR(effective_pairs(100, -0.5, -0.4), 100 * 0.8 / 1.2, 1e-12);
  EXPECT_EQ(effective_pairs(100, 0.5, -0.5), 100);
  EXPECT_EQ(effective_pairs(100, 0, 0.9), 100);
  EXPECT_EQ(effective_pairs(100, 1, 1), 0);
}

// tanh 1 is 0.761594.
TEST(FisherZ, IsInStandardDeviations) {
  EXPECT_NEAR(fisher_z(std::tanh(1.0), 28), 5, 1e-12);
  EXPECT_EQ(fisher_z(0.9, 3), 0);
  EXPECT_TRUE(std::isinf(fisher_z(1, 10)));
}

// From tables of the normal distribution.
TEST(TwoSidedProbability, IsThatOfTheTables) {
  EXPECT_NEAR(two_sided_probability(1.959964), 0.05, 1e-7);
  EXPECT_NEAR(two_sided_probability(-2.575829), 0.01, 1e-7);
  EXPECT_EQ(two_sided_probability(0), 1);
}

// 1 - 0.99^100 is 0.633968.
TEST(OfTheBest, GrowsWithTheTries) {
  EXPECT_NEAR(of_the_best(0.05, 1), 0.05, 1e-15);
  EXPECT_NEAR(of_the_best(0.01, 100), 0.633968, 1e-6);
  EXPECT_NEAR(of_the_best(1e-20, 100), 1e-18, 1e-30);
  EXPECT_EQ(of_the_best(1, 7), 1);
  EXPECT_EQ(of_the_best(0, 7), 0);
}

}  // namespace
}  // namespace vorn
