#include "statistics/sliding_match.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace vorn {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr float minus_infinite = -std::numeric_limits<float>::infinity();

std::vector<double> noise(std::size_t years, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<double> all(years);
  for (double& value : all) value = static_cast<double>(random() % 2001) / 1000 - 1;
  return all;
}

// z of each position by its definition, in double precision.
std::vector<double> plain(const std::vector<double>& sample, const std::vector<double>& reference, int least,
                          double a, double b) {
  std::vector<double> all;
  const int m = static_cast<int>(sample.size()), years = static_cast<int>(reference.size());
  if (std::min(m, years) < least) return {};
  for (int start = least - m; start <= years - least; ++start) {
    std::vector<double> x, y;
    for (int i = 0; i < m; ++i) {
      const int k = start + i;
      if (k < 0 || k >= years) continue;
      const double value = reference[static_cast<std::size_t>(k)];
      if (std::isnan(sample[static_cast<std::size_t>(i)]) || std::isnan(value)) continue;
      x.push_back(sample[static_cast<std::size_t>(i)]);
      y.push_back(value);
    }
    const auto n = static_cast<double>(x.size());
    double mean_x = 0, mean_y = 0, v_x = 0, v_y = 0, v_xy = 0;
    for (std::size_t i = 0; i < x.size(); ++i) mean_x += x[i] / n, mean_y += y[i] / n;
    for (std::size_t i = 0; i < x.size(); ++i) {
      v_x += (x[i] - mean_x) * (x[i] - mean_x);
      v_y += (y[i] - mean_y) * (y[i] - mean_y);
      v_xy += (x[i] - mean_x) * (y[i] - mean_y);
    }
    const double r = v_x > 1e-9 && v_y > 1e-9 ? v_xy / std::sqrt(v_x * v_y) : 0;
    const double pairs = n * std::min(1.0, (1 - a * b) / (1 + a * b));
    all.push_back(n < least ? -1e9 : std::atanh(r) * std::sqrt(std::max(pairs - 3, 0.0)));
  }
  return all;
}

void expect_alike(SlidingMatch& match, const std::vector<double>& sample,
                  const std::vector<double>& reference, int least, double a, double b) {
  const auto expected = plain(sample, reference, least, a, b);
  const BestMatch best = match.best_on(standardised(reference), b);
  ASSERT_EQ(match.z().size(), expected.size());
  std::size_t best_expected = 0, positions = 0;
  for (std::size_t k = 0; k < expected.size(); ++k) {
    if (expected[k] < -1e8) {
      EXPECT_EQ(match.z()[k], minus_infinite) << k;
      continue;
    }
    EXPECT_NEAR(match.z()[k], expected[k], 1e-3) << k;
    ++positions;
    if (expected[k] > expected[best_expected]) best_expected = k;
  }
  EXPECT_EQ(best.positions, positions);
  if (positions == 0) return;
  EXPECT_NEAR(expected[best.position], expected[best_expected], 1e-3);
  EXPECT_EQ(best.z, match.z()[best.position]);
}

// References of all lengths to each other, one after the other, with one match: what one leaves may not tell
// in the next.
TEST(SlidingMatch, GivesWhatEachPositionGivesAlone) {
  constexpr int least = 20;
  for (const std::size_t years : {20u, 21u, 64u, 150u, 333u}) {
    auto sample = noise(years, 1);
    SlidingMatch match(sample, 0.3, least);
    for (const std::size_t long_years : {19u, 20u, 47u, 47u, 150u, 300u, 300u, 1'000u, 21u})
      expect_alike(match, sample, noise(long_years, 2 + static_cast<unsigned>(long_years)), least, 0.3, -0.2);
  }
}

TEST(SlidingMatch, LeavesOutYearsWithoutARing) {
  constexpr int least = 20;
  auto sample = noise(90, 3);
  for (const bool is_sample : {false, true}) {
    if (is_sample) sample[40] = sample[41] = nan;
    SlidingMatch match(sample, 0, least);
    for (const std::size_t hole : {0u, 1u, 60u, 150u, 299u}) {
      auto reference = noise(300, 5);
      expect_alike(match, sample, reference, least, 0, 0.5);
      for (std::size_t k = hole; k < std::min<std::size_t>(hole + 70, 300); ++k) reference[k] = nan;
      expect_alike(match, sample, reference, least, 0, 0.5);
    }
  }
}

// A stretch without any variation has no correlation, one with hardly any the one that it has.
TEST(SlidingMatch, KnowsSeriesThatHardlyVary) {
  auto sample = noise(40, 7), reference = noise(200, 8);
  for (std::size_t k = 50; k < 120; ++k) reference[k] = 0.25;
  for (std::size_t k = 130; k < 190; ++k) reference[k] = 3 + reference[k] * 1e-3;
  SlidingMatch match(sample, 0, 20);
  expect_alike(match, sample, reference, 20, 0, 0);
  const std::vector<double> level(100, 4.0);
  expect_alike(match, sample, level, 20, 0, 0);
  SlidingMatch of_level(level, 0, 20);
  expect_alike(of_level, level, sample, 20, 0, 0);
}

TEST(SlidingMatch, FindsASampleInItself) {
  const auto reference = noise(300, 9);
  const std::vector<double> sample(reference.begin() + 100, reference.begin() + 250);
  SlidingMatch match(sample, 0, 20);
  const BestMatch best = match.best_on(standardised(reference), 0);
  EXPECT_EQ(best.position, 100u + 130u);
  EXPECT_EQ(best.positions, 300u + 150u - 40u + 1u);
  EXPECT_GT(best.z, 60);
}

TEST(SlidingMatch, HasNoPositionForShortOnes) {
  const auto sample = noise(19, 1), reference = noise(300, 2);
  SlidingMatch match(sample, 0, 20);
  EXPECT_EQ(match.best_on(standardised(reference), 0).positions, 0u);
  SlidingMatch none({}, 0, 20);
  EXPECT_EQ(none.best_on(standardised(reference), 0).positions, 0u);
  EXPECT_EQ(none.best_on({}, 0).z, minus_infinite);
}

TEST(Standardised, HasMeanNoneAndDeviationOne) {
  EXPECT_EQ(standardised(std::vector<double>{1, 3}), (std::vector<float>{-1, 1}));
  EXPECT_EQ(standardised(std::vector<double>{5, 5, 5}), (std::vector<float>{0, 0, 0}));
  const auto gap = standardised(std::vector<double>{1, nan, 3, std::numeric_limits<double>::infinity()});
  EXPECT_EQ(gap[0], -1);
  EXPECT_TRUE(std::isnan(gap[1]));
  EXPECT_EQ(gap[2], 1);
  EXPECT_TRUE(std::isnan(gap[3]));
  EXPECT_TRUE(standardised({}).empty());
}

}  // namespace
}  // namespace vorn
