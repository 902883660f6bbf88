#include "statistics/correlation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

namespace vorn {
namespace {

using Values = std::vector<double>;

// A mask from text, one character a position: "+" present, "-" missing.
class MaskOf {
 public:
  explicit MaskOf(const std::string& text) : size_(text.size()), marks_(std::make_unique<bool[]>(size_)) {
    for (std::size_t i = 0; i < size_; ++i) marks_[i] = text[i] == '+';
  }
  operator std::span<const bool>() const { return {marks_.get(), size_}; }

 private:
  std::size_t size_;
  std::unique_ptr<bool[]> marks_;
};

TEST(Cov, AgreesWithACalculationByHand) {
  // Means 2 and 7/3; deviations -1 0 1 and -4/3 -1/3 5/3; sums of squares 2 and 14/3, of products 3.
  EXPECT_NEAR(cov(Values{1, 2, 3}, Values{1, 2, 4}), 3.0 / std::sqrt(28.0 / 3.0), 1e-15);
  EXPECT_NEAR(cov(Values{1, 2, 3}, Values{-1, -2, -4}), -3.0 / std::sqrt(28.0 / 3.0), 1e-15);
}

TEST(Cov, IsNotChangedByScaleOrOrigin) {
  const Values a{0.31, 1.20, 0.77, 0.95, 1.41, 0.62};
  Values scaled;
  for (const double value : a) scaled.push_back(1000 * value - 7);
  EXPECT_NEAR(cov(a, scaled), 1.0, 1e-12);
  EXPECT_LE(cov(a, scaled), 1.0 + 1e-12);
}

TEST(Cov, OfAConstantSeriesIsZero) {
  EXPECT_EQ(cov(Values{5, 5, 5, 5}, Values{1, 2, 3, 4}), 0.0);
  EXPECT_EQ(cov(Values{1, 2, 3, 4}, Values{5, 5, 5, 5}), 0.0);
  EXPECT_EQ(cov(Values{5, 5, 5}, Values{5, 5, 5}), 0.0);
}

TEST(Cov, OfNothingAndOfOneValueIsZero) {
  EXPECT_EQ(cov(Values{}, Values{}), 0.0);
  EXPECT_EQ(cov(Values{3}, Values{4}), 0.0);
}

TEST(Cov, OfValuesThatAreNoNumbersIsZero) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(cov(Values{1, nan, 3}, Values{1, 2, 4}), 0.0);
}

TEST(Covmiss, WithAllValidAndTwoPositionsIsPlusOrMinusOneOrZero) {
  const auto rising = covmiss(Values{1, 2}, Values{3, 7}, MaskOf("++"));
  EXPECT_DOUBLE_EQ(rising.r, 1.0);
  EXPECT_TRUE(rising.valid);
  const auto falling = covmiss(Values{1, 2}, Values{7, 3}, MaskOf("++"));
  EXPECT_DOUBLE_EQ(falling.r, -1.0);
  EXPECT_TRUE(falling.valid);
  const auto constant = covmiss(Values{1, 1}, Values{7, 3}, MaskOf("++"));
  EXPECT_EQ(constant.r, 0.0);
  EXPECT_TRUE(constant.valid);
}

TEST(Covmiss, OfTheSameTwoPositionsAndOneInvalidIsTwoAndNotValid) {
  const auto result = covmiss(Values{1, 2, 9}, Values{3, 7, 9}, MaskOf("++-"));
  EXPECT_EQ(result.r, 2.0);
  EXPECT_FALSE(result.valid);
}

TEST(Covmiss, WithExactlyThreeValidPairsIsACorrelation) {
  const auto result = covmiss(Values{1, 99, 2, 3}, Values{1, -5, 2, 4}, MaskOf("+-++"));
  EXPECT_TRUE(result.valid);
  EXPECT_EQ(result.r, cov(Values{1, 2, 3}, Values{1, 2, 4}));
  EXPECT_EQ(covmiss(Values{1, 99, 2, 3}, Values{1, -5, 2, 4}, MaskOf("+--+")).r, 2.0);
}

TEST(Covmiss, OfAConstantSeriesIsZeroAndValid) {
  const auto result = covmiss(Values{5, 5, 1, 5, 5}, Values{1, 2, 3, 4, 5}, MaskOf("++-++"));
  EXPECT_EQ(result.r, 0.0);
  EXPECT_TRUE(result.valid);
}

TEST(Covmiss, WithNoPositionsAtAllIsZeroAndValid) {
  const auto result = covmiss(Values{}, Values{}, MaskOf(""));
  EXPECT_EQ(result.r, 0.0);
  EXPECT_TRUE(result.valid);
}

TEST(Covmiss, TakesThePairsInTheirOrderToTheLastBit) {
  Values a, b, kept_a, kept_b;
  std::string mask;
  std::uint32_t state = 12345;  // a small congruential generator, so that the values are the same everywhere
  const auto next = [&state] {
    state = state * 1664525u + 1013904223u;
    return static_cast<double>(state >> 8) / 16777216.0;
  };
  for (int i = 0; i < 200; ++i) {
    a.push_back(next());
    b.push_back(next());
    mask += next() < 0.2 ? '-' : '+';
    if (mask.back() == '-') continue;
    kept_a.push_back(a.back());
    kept_b.push_back(b.back());
  }
  ASSERT_LT(kept_a.size(), a.size());
  EXPECT_EQ(covmiss(a, b, MaskOf(mask)).r, cov(kept_a, kept_b));
}

TEST(Absmiss, WithoutMissingValuesGivesTheDifferenceAndItsFiveNumbers) {
  // Both have mean 2 and standard deviation 1: deviations -1 0 1 and -1 1 0 differ by 0, 1 and 1.
  const auto result = absmiss(Values{1, 2, 3}, Values{1, 3, 2}, MaskOf("+++"));
  EXPECT_TRUE(result.valid);
  EXPECT_TRUE(result.complete);
  EXPECT_DOUBLE_EQ(result.mean_a, 2.0);
  EXPECT_DOUBLE_EQ(result.mean_b, 2.0);
  EXPECT_DOUBLE_EQ(result.s_a, 1.0);
  EXPECT_DOUBLE_EQ(result.s_b, 1.0);
  EXPECT_DOUBLE_EQ(result.d, 2.0 / 3.0);
}

TEST(Absmiss, WithTenValidPairsOfTwelveIsMinusOneAndNotValid) {
  const Values a{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
  const auto result = absmiss(a, a, MaskOf("+++++-+++++-"));
  EXPECT_EQ(result.d, -1.0);
  EXPECT_FALSE(result.valid);
  EXPECT_FALSE(result.complete);
}

TEST(Absmiss, CountsTheUnusedPlacesAsZeroesWherePairsAreMissing) {
  // Eleven pairs of twelve. a: five 0, five 2, one 1, so mean 1 and squares 10; the place left over is 0 - 1,
  // so 11 in all and s = sqrt(11 / 10). b: five 4, five 2, one 3: mean 3, squares 10 + 9, s = sqrt(19 / 10).
  const Values a{0, 0, 0, 0, 0, 77, 2, 2, 2, 2, 2, 1};
  const Values b{4, 4, 4, 4, 4, 77, 2, 2, 2, 2, 2, 3};
  const double s_a = std::sqrt(1.1), s_b = std::sqrt(1.9);
  const double expected = (10 * (1 / s_a + 1 / s_b) + 0 + std::abs(-1 / s_a + 3 / s_b)) / 11;
  const auto result = absmiss(a, b, MaskOf("+++++-++++++"));
  EXPECT_TRUE(result.valid);
  EXPECT_FALSE(result.complete);
  EXPECT_NEAR(result.d, expected, 1e-14);
}

TEST(Absmiss, OfOneCompletePairIsNotANumber) {
  EXPECT_TRUE(std::isnan(absmiss(Values{1}, Values{2}, MaskOf("+")).d));
}

}  // namespace
}  // namespace vorn
