#include "study/site.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <random>

#include "statistics/correlation.h"
#include "study/reference.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

// From tables of Student's distribution: t of 48, 28, 98 and 8 degrees is 2.407, 2.467, 2.365 and 2.896.
TEST(LeastCorrelation, IsThatOfTheTables) {
  EXPECT_NEAR(least_correlation(50), 0.328, 0.0005);
  EXPECT_NEAR(least_correlation(30), 2.467 / std::sqrt(28 + 2.467 * 2.467), 0.0005);
  EXPECT_NEAR(least_correlation(100), 2.365 / std::sqrt(98 + 2.365 * 2.365), 0.0005);
  EXPECT_NEAR(least_correlation(10), 2.896 / std::sqrt(8 + 2.896 * 2.896), 0.0005);
  EXPECT_EQ(least_correlation(2), 1);
}

// Cores of one signal, each with noise of its own; nothing is done to them but to compare them.
class MadeUpSite : public ::testing::Test {
 protected:
  MadeUpSite() { settings_.splineon = settings_.aron = settings_.logon = false; }

  static Values noise(std::size_t n, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> normal;
    Values values(n);
    for (double& value : values) value = normal(random);
    return values;
  }
  void add_core(std::int64_t first, std::size_t years) {
    Values values = noise(years, static_cast<unsigned>(cores_.size()) + 10);
    for (std::size_t k = 0; k < years; ++k)
      values[k] += 1.5 * signal_[static_cast<std::size_t>(first - 1800) + k];
    add(first, values);
  }
  void add(std::int64_t first, Values values) {
    values_.push_back(std::make_unique<Values>(std::move(values)));
    cores_.push_back({first, *values_.back()});
  }
  SiteSurvey surveyed() {
    studied_ = std::make_unique<StudiedCores>(cores_, settings_);
    return survey(*studied_, settings_);
  }

  Settings settings_;
  Values signal_ = noise(220, 1);
  std::vector<std::unique_ptr<Values>> values_;
  std::vector<SeriesView> cores_;
  std::unique_ptr<StudiedCores> studied_;
};

TEST_F(MadeUpSite, ThatIsDatedRightNeedsNothing) {
  for (int i = 0; i < 8; ++i) add_core(1810 + i, 180);
  const SiteSurvey found = surveyed();
  ASSERT_EQ(found.segments.size(), 7u);
  EXPECT_EQ(found.segments.front(), (YearSpan{1800, 1849}));
  EXPECT_EQ(found.segments.back(), (YearSpan{1950, 1999}));
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_EQ(found.cores[i].need, 0) << i;
    EXPECT_EQ(found.cores[i].remedy, Remedy::none) << i;
    EXPECT_EQ(todo(found.cores[i], cores_[i]), "") << i;
  }
}

TEST_F(MadeUpSite, TellsWhatToDoAboutEachCoreThatIsWrong) {
  for (int i = 0; i < 10; ++i) add_core(1810 + i, 180);
  values_[2]->erase(values_[2]->begin() + 90);  // 1902
  cores_[2].values = *values_[2];
  cores_[5].first += 13;
  const SiteSurvey found = surveyed();
  EXPECT_EQ(found.cores[2].remedy, Remedy::one_error);
  EXPECT_EQ(found.cores[5].remedy, Remedy::move);
  EXPECT_EQ(todo(found.cores[5], cores_[5]), "Move it by -13 years, to 1815 to 1994");
  EXPECT_TRUE(todo(found.cores[2], cores_[2]).starts_with("Look for a ring missing in 190"));
  EXPECT_GE(found.cores[2].lagging, 2);
  EXPECT_EQ(found.cores[2].cells[6]->best_lag, -1);  // 1950 to 1999, or as far as it goes
  EXPECT_EQ(found.cores[2].cells[1]->best_lag, 0);   // 1825 to 1874
  EXPECT_EQ(std::min(found.order[0], found.order[1]), 2u);
  EXPECT_EQ(std::max(found.order[0], found.order[1]), 5u);
  for (std::size_t i = 0; i < 10; ++i) {
    if (i != 2 && i != 5) {
      EXPECT_EQ(found.cores[i].remedy, Remedy::none) << i;
    }
  }
}

// 60 years that have nothing to do with the others', which no year and no date explains.
TEST_F(MadeUpSite, WhatNothingExplainsIsToBeLookedAt) {
  for (int i = 0; i < 8; ++i) add_core(1810 + i, 180);
  const Values other = noise(60, 77);
  std::copy(other.begin(), other.end(), values_[3]->begin() + 60);  // 1873 to 1932
  const SiteSurvey found = surveyed();
  EXPECT_EQ(found.cores[3].remedy, Remedy::look);
  EXPECT_EQ(found.order[0], 3u);
  EXPECT_GE(found.cores[3].low, 1);
  EXPECT_EQ(todo(found.cores[3], cores_[3]), "Look at 1875 to 1924, which agrees least");
}

TEST_F(MadeUpSite, OfWhatHasTooLittleInCommonNothingCanBeSaid) {
  for (int i = 0; i < 4; ++i) add_core(1810, 60);
  add_core(1900, 60);
  const SiteSurvey found = surveyed();
  EXPECT_EQ(found.cores[4].remedy, Remedy::cannot_say);
  EXPECT_EQ(found.cores[4].years, 0);
  EXPECT_EQ(todo(found.cores[4], cores_[4]), "Cannot be told: no year in common with three others");
}

// Indices of rings that are all as wide are no numbers: it is not for want of years in common.
TEST_F(MadeUpSite, OfACoreWithoutDifferencesNothingIsSaidOfYears) {
  for (int i = 0; i < 4; ++i) add_core(1810, 60);
  add(1810, Values(60, std::nan("")));
  const SiteSurvey found = surveyed();
  EXPECT_EQ(found.cores[4].remedy, Remedy::cannot_say);
  EXPECT_EQ(todo(found.cores[4], cores_[4]), "Cannot be told: its rings are all as wide, or missing");
}

// --- The plain definition of a cell: the years are written out, and every lag is tried.

void expect_plain_cell(const SiteCell& cell, const SeriesView& core, const SeriesView& others) {
  const auto r_at = [&](int lag) {
    Values a, b;
    for (std::int64_t year = cell.years.first; year <= cell.years.last; ++year) {
      if (!core.has(year + lag) || !others.has(year)) continue;
      a.push_back(core.at(year + lag));
      b.push_back(others.at(year));
    }
    return cov(a, b);
  };
  EXPECT_NEAR(cell.r, r_at(0), 1e-9);
  int best = 0;
  for (int lag = -10; lag <= 10; ++lag) {
    const bool reaches = cell.years.first + lag >= core.first && cell.years.last + lag <= core.years().last;
    if (reaches && r_at(lag) > r_at(best)) best = lag;
  }
  EXPECT_EQ(cell.best_lag, best);
  EXPECT_NEAR(cell.best_r, r_at(best), 1e-9);
  EXPECT_EQ(cell.lagging, best != 0);
  EXPECT_EQ(cell.low, cell.r < least_correlation(cell.n));
}

TEST_F(MadeUpSite, HasTheCellsOfThePlainDefinition) {
  for (int i = 0; i < 5; ++i) add_core(1805 + 7 * i, 120);
  cores_[1].first += 1;
  add(1850, noise(90, 99));
  const SiteSurvey found = surveyed();
  int cells = 0, lagging = 0;
  for (std::size_t i = 0; i < cores_.size(); ++i) {
    const Reference others(studied_->compared(), i);
    for (const auto& cell : found.cores[i].cells) {
      if (!cell) continue;
      expect_plain_cell(*cell, cores_[i], others.view());
      ++cells;
      lagging += cell->lagging;
    }
  }
  EXPECT_GT(cells, 20);
  EXPECT_GT(lagging, 5);
}

TEST_F(MadeUpSite, OfOneCoreOrNoneCanBeSaidNothing) {
  EXPECT_TRUE(surveyed().cores.empty());
  add_core(1810, 100);
  EXPECT_EQ(surveyed().cores[0].remedy, Remedy::cannot_say);
  add(1900, {});
  EXPECT_EQ(surveyed().cores[1].remedy, Remedy::cannot_say);
}

TEST_F(MadeUpSite, WithoutAStepHasNoSegments) {
  for (int i = 0; i < 5; ++i) add_core(1810, 100);
  settings_.olap = settings_.seg;
  const SiteSurvey found = surveyed();
  EXPECT_TRUE(found.segments.empty());
  EXPECT_TRUE(found.cores[0].cells.empty());
  EXPECT_EQ(found.cores[0].need, 0);
}

// Years before 0: segments begin on multiples of 25 all the same.
TEST_F(MadeUpSite, HasSegmentsBeforeTheYear0) {
  for (int i = 0; i < 5; ++i) {
    add_core(1810, 100);
    cores_.back().first -= 1840;  // -30 to 69
  }
  const SiteSurvey found = surveyed();
  ASSERT_EQ(found.segments.size(), 4u);
  EXPECT_EQ(found.segments[0], (YearSpan{-50, -1}));
  EXPECT_EQ(found.segments[3], (YearSpan{25, 74}));
}

TEST(Todo, NamesTheYearsOfErrors) {
  const Values values(100, 1.0);
  const SeriesView dated = {1800, values};
  SiteCore core;
  core.remedy = Remedy::one_error;
  core.errors.candidates = {{.kind = Correction::insert, .year = 1867, .from = 1866, .to = 1869}};
  EXPECT_EQ(todo(core, dated), "Look for a ring missing in 1866 to 1869");
  core.errors.candidates[0].kind = Correction::merge;
  core.errors.candidates[0].to = 1866;
  EXPECT_EQ(todo(core, dated), "Look for a ring counted twice in 1866");
  core.remedy = Remedy::two_errors;
  core.errors.pair = ErrorPair{.kinds = {Correction::merge, Correction::insert},
                               .years = {1850, 1880},
                               .sets = {{1850, 1850}, {1879, 1882}}};
  EXPECT_EQ(todo(core, dated), "Look for a ring counted twice in 1850 and a ring missing in 1879 to 1882");
  core.remedy = Remedy::move;
  core.elsewhere = DatedPosition{.first_year = 1804, .shift = 4};
  EXPECT_EQ(todo(core, dated), "Move it by +4 years, to 1804 to 1903");
}

// A core of another site loses nothing against its own median, which is as bad as its worst segment.
TEST(SiteSurvey, ACoreThatAgreesNowhereComesFirst) {
  std::vector<Values> widths;
  std::mt19937 random(11);
  std::normal_distribution<double> normal;
  Values common;
  for (int k = 0; k < 200; ++k) common.push_back(normal(random));
  for (int c = 0; c < 6; ++c) {
    Values core;
    for (const double value : common) core.push_back((c == 3 ? 0 : value) + 0.6 * normal(random));
    widths.push_back(core);
  }
  std::vector<StudiedCore> cores;
  for (const Values& core : widths) cores.push_back({{1800, core}});
  const auto found = survey(cores, Settings{}, [](std::size_t) { return true; });
  ASSERT_TRUE(found);
  EXPECT_EQ(found->order.front(), 3u);
  EXPECT_EQ(found->cores[3].remedy, Remedy::foreign);
  EXPECT_TRUE(todo(found->cores[3], cores[3].compared).starts_with("Agrees with the others nearly nowhere"));
  EXPECT_GT(found->cores[3].need, need_to_look_at);
  for (const std::size_t k : {0u, 1u, 2u, 4u, 5u}) EXPECT_EQ(found->cores[k].remedy, Remedy::none) << k;
}

TEST(LagRows, AreTheSegmentsOfTheSurveyAtEveryLag) {
  // The core is the others, read two years later from 1950 on.
  std::vector<double> others, core;
  for (int k = 0; k < 120; ++k) others.push_back(std::sin(k * k * 0.37));
  for (int k = 0; k < 100; ++k) core.push_back(others[static_cast<std::size_t>(k) + (k < 50 ? 10 : 12)]);
  Settings settings;
  settings.seg = 50;
  settings.olap = 25;
  const auto rows = lag_rows({1910, core}, {1900, others}, settings, 3);
  ASSERT_GE(rows.size(), 3u);
  for (const LagRow& row : rows) {
    ASSERT_EQ(row.r.size(), 7u);
    EXPECT_TRUE(row.r[3]);
  }
  EXPECT_EQ(rows.front().best(), 3u);
  EXPECT_NEAR(*rows.front().r[3], 1.0, 1e-9);
  EXPECT_EQ(rows.back().best(), 1u);
  // Its first two years are still those of before.
  EXPECT_GT(*rows.back().r[1], 0.95);
}

TEST(SiteSurvey, EndsWhenItIsTold) {
  const std::vector<double> widths(60, 1.0);
  const std::vector<StudiedCore> cores(3, StudiedCore{{1900, widths}});
  std::size_t done = 0;
  EXPECT_FALSE(survey(cores, Settings(), [&](std::size_t n) { return (done = n) < 2; }));
  EXPECT_EQ(done, 2u);
}

}  // namespace
}  // namespace vorn
