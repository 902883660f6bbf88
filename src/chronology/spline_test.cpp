#include "chronology/spline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numbers>
#include <span>
#include <vector>

namespace vorn {
namespace {

using Series = std::vector<double>;

Series curve_of(const Series& y, int ss) {
  Series f(y.size());
  spline(y, ss, f);
  return f;
}

// Ring widths about 1 mm without any pattern, the same in every run.
Series random_widths(std::size_t n, std::uint32_t seed) {
  Series widths(n);
  for (double& width : widths) {
    seed = seed * 1664525u + 1013904223u;
    width = 0.2 + 1.6 * (seed >> 8) / 16777216.0;
  }
  return widths;
}

Series wave(std::size_t n, double period) {
  Series y(n);
  for (std::size_t t = 0; t < n; ++t) y[t] = std::sin(2 * std::numbers::pi * static_cast<double>(t) / period);
  return y;
}

// How much of a wave's amplitude the curve follows, well away from the ends.
double response(double period, int ss) {
  const std::size_t n = 4000, from = 1500, to = 2500;
  const Series y = wave(n, period), f = curve_of(y, ss);
  double both = 0, power = 0;
  for (std::size_t t = from; t < to; ++t) {
    both += f[t] * y[t];
    power += y[t] * y[t];
  }
  return both / power;
}

TEST(Spline, OneOrTwoValuesAreTheirOwnCurve) {
  EXPECT_EQ(curve_of({}, 32), Series{});
  EXPECT_EQ(curve_of({0.05}, 32), Series{0.05});
  EXPECT_EQ(curve_of({1.5, -0.25}, 32), (Series{1.5, -0.25}));
}

// A period of 4 years has cosine 0, so r = 6 / 6 = 1 and the diagonal is 4 + 6 = 10. One second difference,
// 1 - 4 + 5 = 2, gives D = 2 / 10, and the curve is y - (D, -2D, D).
TEST(Spline, OfThreeValuesAsCalculatedByHand) {
  const Series f = curve_of({1, 2, 5}, 4);
  EXPECT_NEAR(f[0], 0.8, 1e-15);
  EXPECT_NEAR(f[1], 2.4, 1e-15);
  EXPECT_NEAR(f[2], 4.8, 1e-15);
}

// r = 1 again: 10 a - 3 b = 1 and -3 a + 10 b = -2, so a = 4/91 and b = -17/91; the curve is
// y - (a, b - 2a, a - 2b, b).
TEST(Spline, OfFourValuesAsCalculatedByHand) {
  const Series f = curve_of({0, 0, 1, 0}, 4);
  EXPECT_NEAR(f[0], -4 / 91., 1e-15);
  EXPECT_NEAR(f[1], 25 / 91., 1e-15);
  EXPECT_NEAR(f[2], 53 / 91., 1e-15);
  EXPECT_NEAR(f[3], 17 / 91., 1e-15);
}

// The discretised response is exactly one half, by the choice of the stiffness; at twice the period
// r (4 + 2c) / (4 (c - 1)^2 + r (4 + 2c)) is about 16 / 17, at half the period about 1 / 17.
TEST(Spline, FollowsHalfOfAWaveWhosePeriodIsItsStiffness) {
  for (const int ss : {3, 4, 7, 16, 32, 67, 100}) EXPECT_NEAR(response(ss, ss), 0.5, 1e-9) << ss;
  EXPECT_NEAR(response(64, 32), 16 / 17., 2e-3);
  EXPECT_NEAR(response(16, 32), 1 / 17., 2e-3);
}

// A wave of 30 years under the stiffest and the loosest curve that a user may ask for. The theoretical
// response at ss = 3 is 0.99996.
TEST(Spline, OfThreeYearsFollowsTheDataCloselyAndOf999YearsIsAlmostAStraightLine) {
  const Series y = wave(90, 30);
  const Series close = curve_of(y, 3), straight = curve_of(y, 999);
  const double slope = (straight.back() - straight.front()) / 89;
  for (std::size_t t = 0; t < y.size(); ++t) {
    EXPECT_NEAR(close[t], y[t], 0.002) << t;
    EXPECT_NEAR(straight[t], straight[0] + slope * static_cast<double>(t), 0.002) << t;
  }
}

TEST(Spline, LeavesAStraightLineAsItIs) {
  Series y(50);
  for (std::size_t t = 0; t < y.size(); ++t) y[t] = 4 - 0.0625 * static_cast<double>(t);
  EXPECT_EQ(curve_of(y, 32), y);
}

TEST(Spline, MayBeFittedInPlace) {
  Series y = random_widths(80, 5);
  const Series f = curve_of(y, 20);
  spline(y, 20, y);
  EXPECT_EQ(y, f);
}

TEST(Spline, SpreadsAValueThatIsNotANumberOverTheWholeCurve) {
  Series y = random_widths(40, 6);
  y[17] = std::numeric_limits<double>::quiet_NaN();
  for (const double f : curve_of(y, 32)) EXPECT_TRUE(std::isnan(f));
}

TEST(Spline, TakesSeriesLongerThanAnyChronology) {
  const Series y = random_widths(30000, 7);
  const Series f = curve_of(y, 999);
  double difference = 0;
  for (std::size_t t = 0; t < y.size(); ++t) difference += f[t] - y[t];
  EXPECT_NEAR(difference, 0, 1e-6);  // second differences of D sum up to nothing
}

// The bands A, B, C and the right side D written out with places -1 to n, every band filled where it applies.
class BandsWrittenOut {
 public:
  BandsWrittenOut(const Series& y, int ss)
      : n_(static_cast<int>(y.size())), a_(places()), b_(a_), c_(a_), d_(a_) {
    const double cosine = std::cos(6.283185307179587 / ss);
    const double r = 6 * ((cosine - 1) * (cosine - 1)) / (3 * (2 + cosine));
    for (int j = 1; j <= n_ - 2; ++j) {
      if (j >= 3) at(a_, j) = 1;
      if (j >= 2) at(b_, j) = r - 4;
      at(c_, j) = 4 * r + 6;
      at(d_, j) = value(y, j) - 2 * value(y, j + 1) + value(y, j + 2);
    }
    for (int j = 1; j <= n_ - 2; ++j) {
      at(a_, j) = at(c_, j - 2) * at(a_, j);
      at(b_, j) = at(c_, j - 1) * (at(b_, j) - at(b_, j - 1) * at(a_, j));
      at(c_, j) = 1 / std::sqrt(at(c_, j) - at(a_, j) * at(a_, j) - at(b_, j) * at(b_, j));
      at(d_, j) = (at(d_, j) - at(a_, j) * at(d_, j - 2) - at(b_, j) * at(d_, j - 1)) * at(c_, j);
    }
    for (int j = n_ - 2; j >= 1; --j) {
      at(d_, j) = (at(d_, j) - at(b_, j + 1) * at(d_, j + 1) - at(a_, j + 2) * at(d_, j + 2)) * at(c_, j);
    }
  }
  Series curve(const Series& y) {
    Series f(y.size());
    for (int t = 1; t <= n_; ++t) {
      f[static_cast<std::size_t>(t - 1)] = value(y, t) - (at(d_, t - 2) - 2 * at(d_, t - 1) + at(d_, t));
    }
    return f;
  }

 private:
  std::size_t places() const { return static_cast<std::size_t>(n_ + 2); }
  static double& at(Series& v, int j) { return v.at(static_cast<std::size_t>(j + 1)); }
  static double value(const Series& y, int j) { return y.at(static_cast<std::size_t>(j - 1)); }

  int n_;
  Series a_, b_, c_, d_;
};

TEST(Spline, AgreesToTheLastBitWithTheBandsWrittenOut) {
  for (std::size_t n = 0; n < 120; ++n) {
    const Series y = random_widths(n, static_cast<std::uint32_t>(n));
    for (const int ss : {3, 4, 5, 10, 32, 100, 999}) {
      EXPECT_EQ(curve_of(y, ss), BandsWrittenOut(y, ss).curve(y)) << n << " values, ss " << ss;
    }
  }
}

// Longer and shorter ones side by side, in any order, and what is left over of them.
TEST(Spline, OfManySeriesIsTheCurveOfEachToTheLastBit) {
  for (std::size_t many = 0; many <= 13; ++many) {
    for (const std::size_t step : {1u, 7u, 31u}) {
      std::vector<Series> y;
      Series own;
      for (std::size_t s = 0; s < many; ++s) {
        const std::size_t n = (s * step + many) % 40;
        y.push_back(random_widths(n, static_cast<std::uint32_t>(40 * many + s)));
        if (s % 3 == 1 && n > 0) y.back()[n / 2] = -0.0;
        const Series curve = BandsWrittenOut(y.back(), 32).curve(y.back());
        own.insert(own.end(), curve.begin(), curve.end());
      }
      SplineFactor factor(32);
      const Series all = splines(std::vector<std::span<const double>>(y.begin(), y.end()), factor);
      ASSERT_EQ(all.size(), own.size());
      EXPECT_TRUE(all.empty() || std::memcmp(all.data(), own.data(), own.size() * sizeof(double)) == 0)
          << many << " series";
    }
  }
}

// To the last bit, whichever lengths came before: one factor serves all series of a file.
TEST(Spline, OfAFactorThatServedOthersIsTheCurveOfItsOwn) {
  for (const int ss : {3, 4, 5, 17, 32, 67, 100, 400, 999}) {
    SplineFactor factor(ss);
    for (const std::size_t n : {5u, 1u, 4u, 700u, 3u, 2u, 0u, 699u, 64u, 1500u, 12u, 12000u, 701u}) {
      Series y = random_widths(n, static_cast<std::uint32_t>(n) + static_cast<std::uint32_t>(ss));
      for (std::size_t t = 0; t < n; t += 7) y[t] = t % 2 == 0 ? 0.0 : -0.0;
      Series f(n);
      spline(y, factor, f);
      const Series own = curve_of(y, ss);
      ASSERT_EQ(n == 0 ? 0 : std::memcmp(f.data(), own.data(), n * sizeof(double)), 0) << ss << " " << n;
    }
  }
}

}  // namespace
}  // namespace vorn
