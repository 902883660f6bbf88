// Which curve, model and offset there are is tested through data_man, in index_pipeline_test.cpp.
#include "chronology/compared_series.h"

#include <gtest/gtest.h>

#include <cmath>

#include "chronology/burg_model.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

Values wavering(std::size_t years) {
  Values widths(years);
  double before = 0;
  for (std::size_t k = 0; k < years; ++k) {
    const double age = static_cast<double>(k);
    before = 0.5 * before + 0.2 * std::sin(age * age);
    widths[k] = (0.6 + 1.5 * std::exp(-age / 40)) * (1 + before);
  }
  return widths;
}

ComparedSeries treated(const Values& widths, const Treatment& treatment) {
  SplineFactor factor(32);
  return compared_series(widths, treatment, factor);
}

TEST(ComparedSeries, KeepsEveryStage) {
  const Values widths = wavering(120);
  const ComparedSeries series = treated(widths, {});
  Values curve(120), white(120), coefficients(12);
  spline(widths, 32, curve);
  double mean = 0;
  for (std::size_t k = 0; k < 120; ++k) {
    EXPECT_EQ(series.index[k], widths[k] / curve[k]) << k;
  }
  armod2(series.index, white, coefficients, 11);
  EXPECT_EQ(series.prewhitened, white);

  for (const double value : white) mean += value / 120;
  EXPECT_NEAR(series.offset, mean / 6, 1e-14);
  for (std::size_t k = 0; k < 120; ++k) {
    EXPECT_EQ(series.compared[k], std::log(white[k] + series.offset)) << k;
  }
}

TEST(ComparedSeries, WithNothingToDoIsTheWidthsAtEveryStage) {
  const Values widths = {1.5, 0, 3};
  const ComparedSeries series = treated(widths, {false, false, 11, false});
  EXPECT_EQ(series.index, widths);
  EXPECT_EQ(series.prewhitened, widths);
  EXPECT_EQ(series.compared, widths);
  EXPECT_EQ(series.offset, 0);
}

TEST(ComparedSeries, OfNoValuesHasNone) {
  const ComparedSeries series = treated({}, {});
  EXPECT_TRUE(series.index.empty());
  EXPECT_TRUE(series.prewhitened.empty());
  EXPECT_TRUE(series.compared.empty());
  EXPECT_TRUE(merged_rings(series, {}).empty());
}

// 1 2 3 have the mean 2, and the offset 1/3: ln(1 + 2 + 1/3), ln(2 + 3 + 1/3).
TEST(MergedRings, AreTheTwoRingsAddedUp) {
  const Treatment logarithm_alone = {false, false, 11, true}, nothing = {false, false, 11, false};
  const Values merged = merged_rings(treated({1, 2, 3}, logarithm_alone), logarithm_alone);
  ASSERT_EQ(merged.size(), 2u);
  EXPECT_NEAR(merged[0], std::log(10 / 3.), 1e-15);
  EXPECT_NEAR(merged[1], std::log(16 / 3.), 1e-15);
  EXPECT_EQ(merged_rings(treated({1, 2, 3}, nothing), nothing), (Values{3, 5}));
  EXPECT_TRUE(merged_rings(treated({1}, nothing), nothing).empty());
}

// The two halves of a ring, put together again, are compared nearly as the ring was.
TEST(MergedRings, AreNearlyWhatTheWholeRingIsComparedAs) {
  Values widths = wavering(120);
  const double whole = treated(widths, {}).compared[60];
  const double width = widths[60];
  widths[60] = 0.6 * width;
  widths.insert(widths.begin() + 61, 0.4 * width);
  const ComparedSeries split = treated(widths, {});
  EXPECT_NEAR(merged_rings(split, {})[60], whole, 0.05);
  EXPECT_LT(split.compared[60], whole - 0.15);
}

}  // namespace
}  // namespace vorn
