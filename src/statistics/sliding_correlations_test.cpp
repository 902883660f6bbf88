#include "statistics/sliding_correlations.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "statistics/correlation.h"
#include "support/test_store.h"

namespace vorn {
namespace {

// A series and which of its values count.
struct Specimen {
  explicit Specimen(std::vector<double> all)
      : values(std::move(all)), ok(std::make_unique<bool[]>(values.size())) {
    for (std::size_t i = 0; i < values.size(); ++i) ok[i] = true;
  }
  // Every value for which the noise is below `share` does not count.
  Specimen&& without(double share, unsigned seed) && {
    const auto chance = noise(static_cast<int>(values.size()), seed);
    for (std::size_t i = 0; i < values.size(); ++i) ok[i] = chance[i] >= share;
    return std::move(*this);
  }
  std::span<const bool> mask() const { return {ok.get(), values.size()}; }

  std::vector<double> values;
  std::unique_ptr<bool[]> ok;
};

// covmiss at every place: the definition.
std::vector<MaskedCorrelation> plainly(const Specimen& a, const Specimen& b) {
  const std::size_t n = a.values.size();
  std::vector<MaskedCorrelation> all;
  const auto both = std::make_unique<bool[]>(n);
  for (std::size_t t = 0; t + n <= b.values.size(); ++t) {
    for (std::size_t k = 0; k < n; ++k) both[k] = a.ok[k] && b.ok[t + k];
    all.push_back(covmiss(a.values, std::span(b.values).subspan(t, n), {both.get(), n}));
  }
  return all;
}

std::vector<double> slid(const Specimen& a, const Specimen& b) {
  return sliding_correlations(a.values, a.mask(), b.values, b.mask());
}

// How many places have an estimate; each is compared with the definition.
int estimates_near(const Specimen& a, const Specimen& b, double tolerance) {
  const auto plain = plainly(a, b);
  const auto estimates = slid(a, b);
  EXPECT_EQ(estimates.size(), plain.size());
  int count = 0;
  for (std::size_t t = 0; t < plain.size(); ++t) {
    if (std::isnan(estimates[t])) continue;
    ++count;
    EXPECT_TRUE(plain[t].valid) << t;
    EXPECT_NEAR(estimates[t], plain[t].r, tolerance) << t;
  }
  return count;
}

TEST(SlidingCorrelations, AreThoseOfTheDefinitionAtEveryPlace) {
  EXPECT_EQ(estimates_near(Specimen(noise(50, 1)), Specimen(noise(1'500, 2)), 1e-12), 1'451);
  EXPECT_EQ(estimates_near(Specimen(noise(333, 3)), Specimen(noise(333, 4)), 1e-12), 1);
}

TEST(SlidingCorrelations, LeaveOutWhatDoesNotCountInEither) {
  const auto a = Specimen(noise(64, 1)).without(0.05, 7);
  const auto b = Specimen(noise(700, 2)).without(0.1, 8);
  EXPECT_EQ(estimates_near(a, Specimen(noise(700, 2)), 1e-12), 637);
  EXPECT_EQ(estimates_near(Specimen(noise(64, 1)), b, 1e-12), 637);
  EXPECT_EQ(estimates_near(a, b, 1e-12), 637);
}

TEST(SlidingCorrelations, HoldWhenMostValuesDoNotCount) {
  const auto a = Specimen(noise(60, 1)).without(0.7, 7);
  const auto b = Specimen(noise(400, 2)).without(0.7, 8);
  EXPECT_GT(estimates_near(a, b, 1e-11), 200);
}

// The values of a chronology in thousandths: the level must not cost digits.
TEST(SlidingCorrelations, KeepTheirDigitsOnAHighLevel) {
  std::vector<double> level = noise(2'000, 2);
  for (double& value : level) value += 1'000;
  EXPECT_EQ(estimates_near(Specimen(noise(80, 1)), Specimen(level), 1e-11), 1'921);
}

TEST(SlidingCorrelations, SayNothingWhereALevelOutweighsTheVariance) {
  std::vector<double> step = noise(200, 2);
  for (std::size_t i = 100; i < 200; ++i) step[i] += 1e6;
  const auto estimates = slid(Specimen(noise(20, 1)), Specimen(step));
  EXPECT_TRUE(std::isnan(estimates[0]));    // 20 values half a million from the mean
  EXPECT_FALSE(std::isnan(estimates[90]));  // ten on either side
  estimates_near(Specimen(noise(20, 1)), Specimen(step), sliding_error);
}

TEST(SlidingCorrelations, SayNothingOfConstantSeries) {
  const Specimen constant(repeated(30, 2.5)), any(noise(90, 1));
  EXPECT_EQ(estimates_near(constant, any, 0), 0);
  EXPECT_EQ(estimates_near(any, Specimen(repeated(90, 2.5)), 0), 0);
}

TEST(SlidingCorrelations, SayNothingOfFewerThanThreePairs) {
  EXPECT_EQ(estimates_near(Specimen(noise(2, 1)), Specimen(noise(50, 2)), 0), 0);
  EXPECT_EQ(estimates_near(Specimen(noise(1, 1)), Specimen(noise(50, 2)), 0), 0);
  auto two = Specimen(noise(10, 1)).without(2.0, 1);  // none counts
  two.ok[3] = two.ok[8] = true;
  EXPECT_EQ(estimates_near(two, Specimen(noise(50, 2)), 0), 0);
}

TEST(SlidingCorrelations, SayNothingOfValuesThatAreNotFinite) {
  for (const double bad :
       {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    std::vector<double> b = noise(60, 2);
    b[30] = bad;
    for (const double estimate : slid(Specimen(noise(20, 1)), Specimen(b))) EXPECT_TRUE(std::isnan(estimate));
    auto passed_over = Specimen(b);
    passed_over.ok[30] = false;
    EXPECT_EQ(estimates_near(Specimen(noise(20, 1)), passed_over, 1e-12), 41);
  }
}

}  // namespace
}  // namespace vorn
