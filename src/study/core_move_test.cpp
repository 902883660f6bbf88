#include "study/core_move.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cmath>
#include <random>

#include "statistics/correlation.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

class CoreMove : public ::testing::Test {
 protected:
  // A core that shares `share` of what the others have in common.
  SeriesView core(int first, std::size_t years, double share) {
    std::normal_distribution<double> noise(0, 1);
    auto& values = all_.emplace_back(std::make_unique<Values>());
    for (std::size_t k = 0; k < years; ++k)
      values->push_back(1 + 0.2 * (share * common_[static_cast<std::size_t>(first) - 1800 + k] +
                                   (1 - share) * noise(random_)));
    return {first, *values};
  }
  CoreMove() {
    std::normal_distribution<double> noise(0, 1);
    for (double& value : common_) value = noise(random_);
  }

  std::mt19937 random_{7};
  std::array<double, 300> common_ = {};
  std::vector<std::unique_ptr<Values>> all_;
};

void expect_alike(const FileAgreement& a, const FileAgreement& b) {
  EXPECT_EQ(a.cores, b.cores);
  EXPECT_NEAR(a.r.value(), b.r.value(), 1e-9);
  EXPECT_NEAR(a.rbar.value(), b.rbar.value(), 1e-9);
  EXPECT_NEAR(a.eps.value(), b.eps.value(), 1e-9);
}

TEST_F(CoreMove, OfTheFileThatIsLeftIsWhatTheFileWouldBeAnew) {
  std::vector<SeriesView> cores;
  for (int k = 0; k < 9; ++k) cores.push_back(core(1800 + 3 * k, 90 + 5 * static_cast<std::size_t>(k), 0.6));
  cores.push_back(core(1800, 150, 0));
  const AgreeingFile file(cores);
  for (const std::vector<std::size_t>& leaving : {std::vector<std::size_t>{9}, {0}, {2, 9, 4}}) {
    std::vector<SeriesView> stay;
    for (std::size_t k = 0; k < cores.size(); ++k) {
      if (std::ranges::find(leaving, k) == leaving.end()) stay.push_back(cores[k]);
    }
    expect_alike(file.without(leaving), AgreeingFile(stay).now());
  }
  EXPECT_GT(file.without(std::vector<std::size_t>{9}).rbar, file.now().rbar);
}

TEST_F(CoreMove, OfTheFileThatIsJoinedIsWhatTheFileWouldBeAnew) {
  std::vector<SeriesView> cores, joining = {core(1790 + 10, 200, 0.7), core(1850, 100, 0.5)};
  for (int k = 0; k < 6; ++k) cores.push_back(core(1810, 120, 0.6));
  const AgreeingFile file(cores);
  const FileAgreement after = file.with(joining);
  cores.insert(cores.end(), joining.begin(), joining.end());
  expect_alike(after, AgreeingFile(cores).now());
}

// Wigley, Briffa and Jones (1984): n rbar / (1 + (n - 1) rbar).
TEST_F(CoreMove, GivesTheExpressedPopulationSignal) {
  const std::vector<SeriesView> pair = {core(1800, 60, 0.8), core(1800, 60, 0.8)};
  const double r = cov(pair[0].values, pair[1].values);
  const FileAgreement now = AgreeingFile(pair).now();
  EXPECT_NEAR(now.rbar.value(), r, 1e-12);
  EXPECT_NEAR(now.eps.value(), 2 * r / (1 + r), 1e-12);
}

// It would seem to make the signal better, by its number alone.
TEST_F(CoreMove, OfACoreOfOtherYearsLeavesTheSignalAsItIs) {
  std::vector<SeriesView> cores;
  for (int k = 0; k < 5; ++k) cores.push_back(core(1800, 90, 0.6));
  const AgreeingFile file(cores);
  const std::vector<SeriesView> elsewhere = {core(1860, 200, 0.6)};
  const FileAgreement after = file.with(elsewhere);
  EXPECT_EQ(after.cores, 6u);
  EXPECT_EQ(after.rbar, file.now().rbar);
  EXPECT_EQ(after.eps, file.now().eps);
  cores.push_back(elsewhere[0]);
  EXPECT_EQ(AgreeingFile(cores).without(std::vector<std::size_t>{5}).eps, file.now().eps);
}

TEST_F(CoreMove, OfTooFewHasNoFigures) {
  const std::vector<SeriesView> two = {core(1800, 60, 0.8), core(1800, 39, 0.8)};
  const AgreeingFile file(two);
  EXPECT_FALSE(file.now().rbar);
  EXPECT_FALSE(file.now().eps);
  const FileAgreement one = file.without(std::vector<std::size_t>{1});
  EXPECT_EQ(one.cores, 1u);
  EXPECT_FALSE(one.r);
  const FileAgreement none = file.without(std::vector<std::size_t>{0, 1});
  EXPECT_EQ(none.cores, 0u);
  EXPECT_FALSE(AgreeingFile({}).now().r);
  EXPECT_EQ(AgreeingFile({}).with(two).cores, 2u);
}

TEST_F(CoreMove, LeavesConstantCoresOutCarefully) {
  const Values constant(80, 1.5);
  const std::vector<SeriesView> widths = {core(1800, 80, 0.6), {1800, constant}};
  Careful careful;
  EXPECT_EQ(those_that_count(widths, widths, careful)[1].values.size(), 80u);
  careful.set(Mend::constant_series, true);
  EXPECT_TRUE(those_that_count(widths, widths, careful)[1].values.empty());
  EXPECT_EQ(those_that_count(widths, widths, careful)[0].values.size(), 80u);
}

}  // namespace
}  // namespace vorn
