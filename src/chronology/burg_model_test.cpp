#include "chronology/burg_model.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace vorn {
namespace {

using Series = std::vector<double>;

// A model with the coefficients that it came with.
struct Fitted {
  int order;
  double explained;
  Series coefficients;
};

constexpr double untouched = -77;

Fitted fit(const Series& series, int max_order) {
  Series column(12, untouched);
  const BurgModel model = memcof2(series, max_order, column);
  for (std::size_t k = static_cast<std::size_t>(model.order); k < column.size(); ++k) {
    EXPECT_EQ(column[k], untouched) << "place " << k << " is not the model's";
  }
  column.resize(static_cast<std::size_t>(model.order));
  return {model.order, model.explained, column};
}

Series prewhitened(const Series& index, int max_order) {
  Series column(12), out(index.size());
  armod2(index, out, column, max_order);
  return out;
}

// Noise of standard deviation 1 about 0, the same in every run: sums of twelve evenly spread numbers.
class Noise {
 public:
  explicit Noise(std::uint32_t seed) : state_(seed) {}
  double operator()() {
    double sum = -6;
    for (int k = 0; k < 12; ++k) {
      state_ = state_ * 1664525u + 1013904223u;
      sum += (state_ >> 8) / 16777216.0;
    }
    return sum;
  }

 private:
  std::uint32_t state_;
};

// x(t) = one x(t-1) + two x(t-2) + noise.
Series autoregressive(std::size_t n, double one, double two, std::uint32_t seed) {
  Noise noise(seed);
  Series x(n + 100);
  for (std::size_t t = 2; t < x.size(); ++t) x[t] = one * x[t - 1] + two * x[t - 2] + noise();
  return {x.begin() + 100, x.end()};
}

// x(t) = noise(t) - noise(t-1): every further year helps to foretell it, by partial correlations of -1 / (k +
// 1).
Series differenced_noise(std::size_t n, std::uint32_t seed) {
  Noise noise(seed);
  Series x(n);
  double before = noise();
  for (double& value : x) {
    const double now = noise();
    value = now - before;
    before = now;
  }
  return x;
}

// --- The choice of the order ----------------------------------------------------------------------------

TEST(BurgOrder, IsZeroWithAMaximumOfOneAndTheOutputIsOnePlusTheInputFlooredAtZero) {
  const Series index = {1.0, 0.5, 2.25, -0.75, -1.5, 1.25, 0.75};  // mean 0.5, exact in binary
  const Series out = prewhitened(index, 1);
  EXPECT_EQ(fit(index, 1).order, 0);
  EXPECT_EQ(out, (Series{2.0, 1.5, 3.25, 0.25, 0.0, 2.25, 1.75}));
}

TEST(BurgOrder, IsTenWhenTheCriterionKeepsFallingUpToEleven) {
  EXPECT_EQ(fit(differenced_noise(20000, 1), 11).order, 10);
}

// The model of order p of differenced noise has the coefficients -(p + 1 - j) / (p + 1): at the tenth place
// -1/11 in the model of order 10, but -2/12 in the one of order 11 that is computed and not used.
TEST(BurgOrder, OfAFullRunTakesTheCoefficientsFromBeforeTheLastPass) {
  const Fitted model = fit(differenced_noise(20000, 1), 11);
  ASSERT_EQ(model.order, 10);
  for (int j = 1; j <= 10; ++j) {
    EXPECT_NEAR(model.coefficients[static_cast<std::size_t>(j - 1)], -(11 - j) / 11., 0.03) << j;
  }
}

TEST(BurgOrder, IsOneWhenTheCriterionRisesAtTwo) {
  const Fitted model = fit(autoregressive(400, 0.6, 0, 3), 11);
  EXPECT_EQ(model.order, 1);
  EXPECT_NEAR(model.coefficients[0], 0.6, 0.08);
  EXPECT_NEAR(model.explained, 0.36, 0.08);
}

TEST(BurgOrder, IsZeroWhenTheCriterionRisesAtTwoAndThatOfOrderOneLiesAboveThatOfNoModel) {
  const Fitted model = fit(autoregressive(400, 0, 0, 3), 11);
  EXPECT_EQ(model.order, 0);
  EXPECT_EQ(model.explained, 0);
}

TEST(BurgOrder, IsThatOfTheProcessWhereTheCriterionRisesBehindIt) {
  const Fitted model = fit(autoregressive(2000, 0.5, 0.3, 5), 11);
  EXPECT_EQ(model.order, 2);
  EXPECT_NEAR(model.coefficients[0], 0.5, 0.05);
  EXPECT_NEAR(model.coefficients[1], 0.3, 0.05);
}

// A year hangs on the second year before it alone, so that order 1 is worse than no model. It does not stop
// there.
TEST(BurgOrder, OneIsNeverRejectedByTheStopRule) {
  const Series series = autoregressive(1000, 0, -0.8, 2);
  EXPECT_LT(std::abs(fit(series, 2).coefficients[0]), 0.03);
  const Fitted model = fit(series, 11);
  EXPECT_GE(model.order, 2);
  EXPECT_NEAR(model.coefficients[1], -0.8, 0.05);
}

// The same series: a run to the end drops nothing, although order 1 is worse than no model.
TEST(BurgOrder, OfAFullRunIsNeverDropped) {
  EXPECT_EQ(fit(autoregressive(1000, 0, -0.8, 2), 2).order, 1);
}

// -5 -3 -1 1 3 5: the reflection coefficient is 70/90 = 7/9, that of order 2 has a square of 0.781. So order
// 2 stops (10 + 6 ln(1 - 0.781) > 0), and A1 - A0 = 6 ln(1 - 49/81) + 2 + 12/3 = 0.43: the model is dropped.
// With the correction of 4/4 that its formula would give order 0 it would stay.
TEST(BurgOrder, ZeroCarriesNoCorrection) {
  EXPECT_EQ(fit({-5, -3, -1, 1, 3, 5}, 11).order, 0);
}

// --- Coefficients by hand -------------------------------------------------------------------------------

// 1 -1 1 -1 1 -1: every year is minus the one before, the error variance 0 and the criterion of order 1 minus
// infinity. Nothing is left for order 2, whose criterion is not a number and stops nothing.
TEST(BurgModel, OfAnAlternatingSeriesForetellsItWholly) {
  const Series series = {1, -1, 1, -1, 1, -1};
  const Fitted model = fit(series, 2);
  EXPECT_EQ(model.order, 1);
  EXPECT_EQ(model.coefficients, Series{-1.0});
  EXPECT_EQ(prewhitened(series, 2), (Series{1, 1, 1, 1, 1, 1}));
  EXPECT_EQ(prewhitened(series, 3),
            (Series{0, 0, 0, 0, 0, 0}));  // order 2 has coefficients that are no numbers
}

// 1 0 -1 and seventeen zeros, of mean 0. F = 1 0 -1 0 … and G = 0 -1 0 …, so the first coefficient is 0. Then
// F = 1 0 -1 0 … and G = -1 0 …: F·G = -1 and F² + G² = 3, so the second is -2/3, and the first stays
// 0 - (-2/3) 0 = 0. A third would be 0 and only costs. 1 - 4/9 of the variance are left.
TEST(BurgModel, OfHalfAWaveAsCalculatedByHand) {
  Series series(20);
  series[0] = 1;
  series[2] = -1;
  const Fitted model = fit(series, 11);
  ASSERT_EQ(model.order, 2);
  EXPECT_EQ(model.coefficients[0], 0);
  EXPECT_NEAR(model.coefficients[1], -2 / 3., 1e-15);
  EXPECT_NEAR(model.explained, 4 / 9., 1e-15);
}

TEST(BurgModel, LeavesItsSeriesAndFurtherCoefficientsAlone) {
  const Series series = autoregressive(300, 0.6, 0, 3);
  const Series before = series;
  fit(series, 11);
  EXPECT_EQ(series, before);
}

// --- Residuals ------------------------------------------------------------------------------------------

// 3 5 4 about their mean are -1 1 0. The year before them is foretold as 0.5 (-1), so the first residual is
// -1 - 0.5 · 0.5 · (-1) = -0.75: the first value less the square of the coefficient times it.
TEST(BurgResiduals, OfAnOrderOneModelStartWithTheFirstValueLessItsBackCast) {
  Series w = {3, 5, 4};
  albino2(w, Series{0.5});
  EXPECT_EQ(w, (Series{4 - 0.75, 4 + 1.5, 4 - 0.5}));
}

// 3 1 2 2 about their mean are 1 -1 0 0. With 0.5 and 0.25 the year before is 0.5 · 1 - 0.25 · 1 = 0.25, the
// year before that 0.5 · 0.25 + 0.25 · 1 = 0.375. The residuals: 1 - 0.125 - 0.09375, -1 - 0.5 - 0.0625, 0 +
// 0.5 - 0.25, 0 - 0 + 0.25.
TEST(BurgResiduals, OfAnOrderTwoModelAsCalculatedByHand) {
  Series w = {3, 1, 2, 2};
  albino2(w, Series{0.5, 0.25});
  EXPECT_EQ(w, (Series{2.78125, 0.4375, 2.25, 2.25}));
}

TEST(BurgResiduals, OfNoModelAreTheSeries) {
  Series w = {3, 1, 2, 2};
  albino2(w, {});
  EXPECT_EQ(w, (Series{3, 1, 2, 2}));
}

// 1 3 about their mean are -1 1. The three years before, from the nearest: 0.5 (-1) + 0.5 · 1 + 0.5 · 0
// (beyond the end) = 0, then 0.5 · 0 + 0.5 (-1) + 0.5 · 1 = 0, then 0.5 · 0 + 0.5 · 0 - 0.5 = -0.5. The
// residuals: -1 - 0.5 (0 + 0 - 0.5) = -0.75 and 1 - 0.5 (-1 + 0 + 0) = 1.5.
TEST(BurgResiduals, OfASeriesShorterThanItsModelTakeItToGoOnAtItsMean) {
  Series w = {1, 3};
  albino2(w, Series{0.5, 0.5, 0.5});
  EXPECT_EQ(w, (Series{2 - 0.75, 2 + 1.5}));
}

// The residuals of the right model are the noise that the series was made of, so hardly correlated.
TEST(BurgResiduals, AreFreeOfPersistence) {
  Series index = autoregressive(2000, 0.7, 0, 9);
  for (double& value : index) value = 10 + value;  // far above the floor
  const Series white = prewhitened(index, 11);
  double mean = 0;
  for (const double value : white) mean += value / 2000;
  EXPECT_NEAR(mean, 11, 0.1);  // one more than the mean of the index
  double carried = 0, power = 0;
  for (std::size_t t = 1; t < white.size(); ++t) {
    carried += (white[t] - mean) * (white[t - 1] - mean);
    power += (white[t] - mean) * (white[t] - mean);
  }
  EXPECT_LT(std::abs(carried / power), 0.05);
}

// --- Degenerate series ----------------------------------------------------------------------------------

TEST(BurgDegenerate, AConstantSeriesHasNoModelAndBecomesZero) {
  const Series constant(50, 1.25);
  const Fitted model = fit(constant, 11);
  EXPECT_EQ(model.order, 10);
  for (const double coefficient : model.coefficients) EXPECT_TRUE(std::isnan(coefficient));
  EXPECT_EQ(prewhitened(constant, 11), Series(50, 0.0));
  EXPECT_EQ(prewhitened(constant, 1), Series(50, 2.25));  // no model is used at all
}

TEST(BurgDegenerate, AValueThatIsNotANumberMakesTheSeriesZero) {
  Series series = autoregressive(40, 0.5, 0, 1);
  series[20] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(prewhitened(series, 11), Series(40, 0.0));
}

// --- The same, step by step -----------------------------------------------------------------------------

// The steps written out with places from 1, the coefficients of every pass kept apart.
struct StepByStep {
  StepByStep(const Series& t, int mmax) : n(static_cast<int>(t.size())), data(1, 0.0) {
    data.insert(data.end(), t.begin(), t.end());
    estimate(mmax);
    residuals(t);
  }

  void estimate(int mmax) {
    const double mean = centre();
    double p0 = 0;
    for (int j = 1; j <= n; ++j) p0 = p0 + at(data, j) * at(data, j);
    p0 = p0 / n;
    double p = p0;
    const double a0 = n * std::log(p0) + 2;
    double b = a0;
    Series f(places()), g(places()), phi(14), kept(14), before_last;
    for (int j = 1; j <= n - 1; ++j) {
      at(f, j) = at(data, j);
      at(g, j) = at(data, j + 1);
    }
    int stopped = 0;
    for (int k = 1; k <= mmax; ++k) {
      double num = 0, den = 0;
      for (int j = 1; j <= n - k; ++j) {
        num = num + at(f, j) * at(g, j);
        den = den + (at(f, j) * at(f, j) + at(g, j) * at(g, j));
      }
      at(phi, k) = 2 * num / den;
      p = p * (1 - at(phi, k) * at(phi, k));
      const double spare = n - k - 2;
      const double a = n * std::log(p) + 2 * (k + 1) + 2 * (k + 1) * (k + 2) / spare;
      for (int i = 1; i <= k - 1; ++i) at(phi, i) = at(kept, i) - at(phi, k) * at(kept, k - i);
      if (k > 1 && a > b) {
        stopped = k;
        break;
      }
      before_last = kept;
      for (int i = 1; i <= k; ++i) at(kept, i) = at(phi, i);
      for (int j = 1; j <= n - k - 1; ++j) {
        const double forward = at(f, j) - at(kept, k) * at(g, j);
        at(g, j) = at(g, j + 1) - at(kept, k) * at(f, j + 1);
        at(f, j) = forward;
      }
      b = a;
    }
    xms = 1 - p / p0;
    if (stopped > 0) {
      m = stopped - 1;
      cof = kept;
      if (b > a0) {
        m = 0;
        xms = 0;
      }
    } else {
      m = mmax - 1;
      cof = before_last;
    }
    for (int j = 1; j <= n; ++j) at(data, j) = at(data, j) + mean;
  }

  void residuals(const Series& t) {
    std::copy(t.begin(), t.end(), data.begin() + 1);
    const double mean = centre();
    Series e(places() + 30);
    for (int j = 1; j <= n; ++j) at(e, m + j) = at(data, j);
    for (int k = m; k >= 1; --k) {
      double sum = 0;
      for (int j = 1; j <= m; ++j) sum = sum + at(cof, j) * at(e, k + j);
      at(e, k) = sum;
    }
    for (int i = m + 1; i <= m + n; ++i) {
      double sum = 0;
      for (int j = 1; j <= m; ++j) sum = sum + at(cof, j) * at(e, i - j);
      at(data, i - m) = at(e, i) - sum;
    }
    for (int j = 1; j <= n; ++j) at(data, j) = at(data, j) + mean;
    for (int j = 1; j <= n; ++j) {
      const double value = 1 + at(data, j);
      at(data, j) = std::isnan(value) || value < 0 ? 0 : value;
    }
  }

  double centre() {
    double mean = 0;
    for (int j = 1; j <= n; ++j) mean = mean + at(data, j);
    mean = mean / n;
    for (int j = 1; j <= n; ++j) at(data, j) = at(data, j) - mean;
    return mean;
  }

  std::size_t places() const { return static_cast<std::size_t>(n + 2); }
  static double& at(Series& v, int j) { return v.at(static_cast<std::size_t>(j)); }

  int n, m = 0;
  double xms = 0;
  Series data;  // place 1 on: the prewhitened series
  Series cof;   // place 1 on
};

void expect_same(double a, double b, const std::string& where) {
  if (std::isnan(a) && std::isnan(b)) return;
  EXPECT_EQ(a, b) << where;
}

void compare_step_by_step(const Series& series, int mmax) {
  const std::string where = std::to_string(series.size()) + " values, highest order " + std::to_string(mmax);
  StepByStep steps(series, mmax);
  const Fitted model = fit(series, mmax);
  ASSERT_EQ(model.order, steps.m) << where;
  expect_same(model.explained, steps.xms, where);
  for (int k = 1; k <= steps.m; ++k) {
    expect_same(model.coefficients[static_cast<std::size_t>(k - 1)], StepByStep::at(steps.cof, k), where);
  }
  const Series out = prewhitened(series, mmax);
  for (std::size_t k = 0; k < out.size(); ++k) EXPECT_EQ(out[k], steps.data[k + 1]) << where;
}

TEST(BurgModel, AgreesToTheLastBitWithItsStepsWrittenOut) {
  for (std::size_t n = 0; n < 60; ++n) {
    for (int mmax = 1; mmax <= 11; ++mmax) {
      const auto seed = static_cast<std::uint32_t>(n);
      compare_step_by_step(autoregressive(n, 0.5, 0.2, seed), mmax);
      compare_step_by_step(autoregressive(n, 0, -0.7, seed), mmax);
      compare_step_by_step(differenced_noise(n, seed), mmax);
      compare_step_by_step(Series(n, 3.0), mmax);
    }
  }
  compare_step_by_step(differenced_noise(20000, 1), 11);
}

}  // namespace
}  // namespace vorn
