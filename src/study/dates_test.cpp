#include "study/dates.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <memory>
#include <random>

#include "statistics/correlation.h"
#include "study/agreement.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

Values noise(std::size_t n, unsigned seed) {
  std::mt19937 random(seed);
  std::normal_distribution<double> normal;
  Values values(n);
  for (double& value : values) value = normal(random);
  return values;
}

Values widths_like(const Values& values) {
  Values widths;
  for (const double value : values) widths.push_back(std::exp(0.3 * value));
  return widths;
}

struct Series {
  Series(std::int64_t first_year, Values all)
      : first(first_year),
        values(std::move(all)),
        growth(widths_like(values)),
        present(std::make_unique<bool[]>(values.size())) {
    std::fill_n(present.get(), values.size(), true);
  }
  SeriesToDate view() const { return {{first, values, {present.get(), values.size()}}, growth}; }
  bool has(std::int64_t year) const { return view().compared.has(year); }

  std::int64_t first;
  Values values, growth;
  std::unique_ptr<bool[]> present;
};

Dates dates_of(const Series& sample, const Series& reference) {
  const SeriesToDate one = reference.view();
  return dates(sample.view(), {&one, 1}).front();
}

// Part of a reference, moved: 1850 to 1899 of it, dated as 1700 to 1749.
TEST(Dates, ASampleOfTheReferenceItselfIsDatedThere) {
  const Values site = noise(200, 1);
  const Series reference(1800, site), sample(1700, {site.begin() + 50, site.begin() + 100});
  const Dates found = dates_of(sample, reference);
  const DatedPosition& best = found.ranked.front();
  EXPECT_EQ(best.first_year, 1850);
  EXPECT_EQ(best.shift, 150);
  EXPECT_EQ(best.overlap, 50);
  EXPECT_NEAR(best.r, 1, 1e-12);
  EXPECT_NEAR(best.glk, 1, 1e-12);
  EXPECT_GT(best.t_bp, 100);
  EXPECT_GT(best.t_h, 100);
  EXPECT_LT(best.p, 1e-12);
  EXPECT_GT(found.margin, 10);
  EXPECT_TRUE(found.stands_out);
  EXPECT_EQ(found.ranked.size(), 200u + 50 - 2 * 20 + 1);  // from 20 years in common to 20
}

// Ten intervals up in both, four down against up, two level in both, one level against up, one up in both,
// one up against level: 10 + 0 + 0 + 0.5 + 1 + 0.5 of 19.
TEST(Dates, GleichlaeufigkeitCountsHalvesForNoChange) {
  const std::vector<int> sample_changes = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, -1, -1, -1, -1, 0, 0, 0, 1, 1};
  const std::vector<int> reference_changes = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 1, 1, 0};
  Series sample(1900, noise(20, 1)), reference(1900, noise(20, 2));
  for (std::size_t k = 0; k < 19; ++k) {
    sample.growth[k + 1] = sample.growth[k] + sample_changes[k];
    reference.growth[k + 1] = reference.growth[k] + reference_changes[k];
  }
  const Dates found = dates_of(sample, reference);
  ASSERT_EQ(found.ranked.size(), 1u);
  EXPECT_NEAR(found.ranked[0].glk, 12 / 19.0, 1e-12);
  EXPECT_TRUE(std::isinf(found.margin));
}

// --- The plain definition: what is in common is written out, value by value.

struct Common {
  Values a, b;
  void add(double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    a.push_back(x);
    b.push_back(y);
  }
  double n() const { return static_cast<double>(a.size()); }
  double t() const { return n() < 3 ? std::numeric_limits<double>::quiet_NaN() : t_of(cov(a, b), n()); }
};

double of_year(const Values& values, const Series& series, std::int64_t year) {
  return values[static_cast<std::size_t>(year - series.first)];
}

int way(const Series& series, std::int64_t year) {
  const double change = of_year(series.growth, series, year) - of_year(series.growth, series, year - 1);
  return (change > 0) - (change < 0);
}

void expect_same(double a, double b) {
  if (std::isnan(b)) {
    EXPECT_TRUE(std::isnan(a));
  } else {
    EXPECT_NEAR(a, b, 1e-7 * std::max(1.0, std::abs(b)));
  }
}

void expect_plain(const DatedPosition& at, const Series& sample, const Series& reference, double tries) {
  Common compared, five, ratios;
  double alike = 0;
  int changes = 0;
  for (std::int64_t y = reference.first;
       y < reference.first + static_cast<std::int64_t>(reference.values.size()); ++y) {
    const std::int64_t s = y - at.shift;
    if (!sample.has(s) || !reference.has(y)) continue;
    compared.add(of_year(sample.values, sample, s), of_year(reference.values, reference, y));
    five.add(of_year(five_year_logarithms(sample.growth), sample, s),
             of_year(five_year_logarithms(reference.growth), reference, y));
    if (!sample.has(s - 1) || !reference.has(y - 1)) continue;
    ratios.add(of_year(growth_ratios(sample.growth), sample, s),
               of_year(growth_ratios(reference.growth), reference, y));
    const int both = way(sample, s) + way(reference, y);
    alike += std::abs(both) == 2 ? 1 : std::abs(both) == 1 ? 0.5 : 0;
    ++changes;
  }
  EXPECT_EQ(at.overlap, static_cast<int>(compared.n()));
  expect_same(at.r, cov(compared.a, compared.b));
  expect_same(at.t_bp, five.t());
  expect_same(at.t_h, ratios.t());
  expect_same(at.glk, alike / changes);
  const double a = autocorrelation(sample.view().compared), b = autocorrelation(reference.view().compared);
  const double pairs = std::min(compared.n(), compared.n() * (1 - a * b) / (1 + a * b));
  const double z = std::atanh(at.r) * std::sqrt(pairs - 3);
  expect_same(at.z, z);
  expect_same(at.p, 1 - std::pow(1 - std::erfc(std::abs(z) / std::sqrt(2)), tries));
}

TEST(Dates, AreThoseOfThePlainDefinition) {
  for (unsigned seed = 1; seed <= 10; ++seed) {
    Series sample(1500, noise(30 + seed, seed)), reference(1880, noise(70, seed + 20));
    std::mt19937 random(seed);
    if (seed > 4) {
      for (int k = 0; k < 4; ++k) {
        sample.present[random() % 30] = false;
        reference.present[random() % 70] = false;
        sample.growth[random() % 30] = 0;
      }
    }
    const Dates found = dates_of(sample, reference);
    ASSERT_GT(found.ranked.size(), 20u);
    for (const DatedPosition& at : found.ranked)
      expect_plain(at, sample, reference, static_cast<double>(found.ranked.size()));
  }
}

TEST(Dates, AreRankedByTheirProbability) {
  const Dates found = dates_of(Series(1, noise(60, 3)), Series(1, noise(120, 4)));
  for (std::size_t k = 1; k < found.ranked.size(); ++k) {
    const DatedPosition &before = found.ranked[k - 1], &at = found.ranked[k];
    EXPECT_GE(before.z, at.z);
    if (at.r > 0) {
      EXPECT_LE(before.p, at.p);
    }
  }
}

// The best but two years away from it belongs to it.
TEST(Dates, TheMarginIsOverTheBestMoreThanTwoYearsAway) {
  const Dates found = dates_of(Series(1, noise(60, 5)), Series(1, noise(120, 6)));
  const DatedPosition& best = found.ranked.front();
  double second = -std::numeric_limits<double>::infinity();
  for (const DatedPosition& at : found.ranked) {
    if (std::abs(at.first_year - best.first_year) > 2) second = std::max(second, at.z);
  }
  EXPECT_EQ(found.margin, best.z - second);
}

TEST(Dates, EveryReferenceTriedMakesTheBestLessSure) {
  const Values site = noise(150, 7);
  const Series reference(1800, site), other(1000, noise(300, 8));
  Values near(site.begin() + 40, site.begin() + 90);
  const Values apart = noise(50, 9);
  for (std::size_t k = 0; k < near.size(); ++k) near[k] += 1.5 * apart[k];
  const Series sample(1, near);
  const std::vector<SeriesToDate> both = {reference.view(), other.view()};
  const std::vector<Dates> found = dates(sample.view(), both);
  const Dates alone = dates_of(sample, reference);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].ranked.front().z, alone.ranked.front().z);
  EXPECT_EQ(found[0].margin, alone.margin);
  const double one = two_sided_probability(alone.ranked.front().z);
  EXPECT_NEAR(alone.ranked.front().p, 1 - std::pow(1 - one, 161), 1e-10);
  EXPECT_NEAR(found[0].ranked.front().p, 1 - std::pow(1 - one, 161 + 311), 1e-10);
}

TEST(Dates, OfTooFewYearsThereAreNone) {
  EXPECT_TRUE(dates_of(Series(1, noise(19, 1)), Series(1, noise(100, 2))).ranked.empty());
  EXPECT_TRUE(dates_of(Series(1, noise(100, 1)), Series(1, noise(19, 2))).ranked.empty());
  EXPECT_TRUE(dates_of(Series(1, {}), Series(1, noise(100, 2))).ranked.empty());
  EXPECT_FALSE(dates_of(Series(1, {}), Series(1, {})).stands_out);
  EXPECT_EQ(dates_of(Series(1, noise(20, 1)), Series(1, noise(20, 2))).ranked.size(), 1u);
  EXPECT_TRUE(dates(Series(1, noise(20, 1)).view(), {}).empty());
}

TEST(Dates, WithoutWidthsThereIsRAlone) {
  const Values site = noise(60, 1);
  const SeriesToDate reference = {{1900, site}}, sample = {{1, {site.data() + 10, 30}}};
  const Dates found = dates(sample, {&reference, 1}).front();
  EXPECT_EQ(found.ranked.front().first_year, 1910);
  EXPECT_TRUE(std::isnan(found.ranked.front().t_bp));
  EXPECT_TRUE(std::isnan(found.ranked.front().t_h));
  EXPECT_TRUE(std::isnan(found.ranked.front().glk));
}

TEST(Dates, OfAConstantSampleNoneStandsOut) {
  const Dates found = dates_of(Series(1, Values(40, 0.7)), Series(1, noise(80, 1)));
  EXPECT_EQ(found.ranked.front().r, 0);
  EXPECT_EQ(found.ranked.front().p, 1);
  EXPECT_EQ(found.margin, 0);
  EXPECT_FALSE(found.stands_out);
}

// Red noise that has nothing to do with its reference: in 1,000 trials at a level of 5 % there may be 50, and
// 64 with the chance that goes beyond in one of fifty series of such trials.
Values red_noise(std::size_t n, double memory, std::mt19937& random) {
  std::normal_distribution<double> normal;
  Values values(n);
  double before = normal(random) / std::sqrt(1 - memory * memory);
  for (double& value : values) value = before = memory * before + normal(random);
  return values;
}

void expect_few_dates(std::size_t years, double memory, unsigned seed) {
  std::mt19937 random(seed);
  int dated = 0;
  for (int trial = 0; trial < 1000; ++trial) {
    const Values sample = red_noise(years, memory, random), reference = red_noise(200, memory, random);
    const SeriesToDate one = {{1, reference}};
    dated += dates({{1, sample}}, {&one, 1}).front().ranked.front().p < 0.05;
  }
  EXPECT_LE(dated, 64) << years << " years, " << memory;
}

TEST(Dates, OfRedNoiseAreChance) {
  expect_few_dates(80, 0.0, 1);
  expect_few_dates(80, 0.5, 2);
  expect_few_dates(80, 0.7, 3);
  expect_few_dates(30, 0.3, 4);
  expect_few_dates(22, 0.0, 6);
  expect_few_dates(150, 0.9, 5);
}

}  // namespace
}  // namespace vorn
