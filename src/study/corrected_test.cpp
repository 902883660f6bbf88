#include "study/corrected.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "study/lagged_sums.h"

namespace vorn {
namespace {

std::vector<double> listed(const SeriesView& series, double absent) {
  std::vector<double> values;
  for (std::int64_t year = series.years().first; year <= series.years().last; ++year)
    values.push_back(series.has(year) ? series.at(year) : absent);
  return values;
}

const std::vector<double> five = {1, 2, 3, 4, 5}, merged = {1.5, 2.5, 3.5, 4.5};
const StudiedCore core = {{1900, five}, merged};

TEST(Corrected, ARingIsPutInAndTheOtherEndMoves) {
  const OwnedSeries inner = corrected_series(core, Correction::insert, KeptEnd::inner, 1902);
  EXPECT_EQ(inner.view().first, 1900);
  EXPECT_EQ(listed(inner.view(), -1), (std::vector<double>{1, 2, -1, 3, 4, 5}));
  const OwnedSeries outer = corrected_series(core, Correction::insert, KeptEnd::outer, 1902);
  EXPECT_EQ(outer.view().first, 1899);
  EXPECT_EQ(listed(outer.view(), -1), (std::vector<double>{1, 2, 3, -1, 4, 5}));
}

TEST(Corrected, TwoRingsBecomeOne) {
  const OwnedSeries inner = corrected_series(core, Correction::merge, KeptEnd::inner, 1902);
  EXPECT_EQ(inner.view().first, 1900);
  EXPECT_EQ(listed(inner.view(), -1), (std::vector<double>{1, 2, 3.5, 5}));
  const OwnedSeries outer = corrected_series(core, Correction::merge, KeptEnd::outer, 1902);
  EXPECT_EQ(outer.view().first, 1901);
  EXPECT_EQ(listed(outer.view(), -1), (std::vector<double>{1, 2.5, 4, 5}));
  // Where it is not known what the two would be compared as.
  const OwnedSeries unknown = corrected_series({core.compared}, Correction::merge, KeptEnd::inner, 1902);
  EXPECT_EQ(listed(unknown.view(), -1), (std::vector<double>{1, 2, -1, 5}));
}

// What the locator says of a candidate is what the corrected core gives.
TEST(Corrected, CorrelatesAsTheLocatorSays) {
  std::mt19937 random(7);
  std::normal_distribution<double> normal;
  for (int trial = 0; trial < 20; ++trial) {
    std::vector<double> reference, values, pairs;
    for (int k = 0; k < 90; ++k) reference.push_back(normal(random));
    for (int k = 0; k < 80; ++k)
      values.push_back(reference[static_cast<std::size_t>(k) + 5] + normal(random));
    for (std::size_t k = 0; k + 1 < values.size(); ++k) pairs.push_back(values[k] + values[k + 1]);
    const StudiedCore sample = {{1905, values}, pairs};
    const SeriesView others = {1900, reference};
    for (const ErrorCandidate& found : ring_errors(sample, others).candidates) {
      const OwnedSeries corrected = corrected_series(sample, found.kind, found.end, found.year);
      const Sums sums = RunningSums(corrected.view(), others, 0, corrected.view().years()).all();
      EXPECT_NEAR(sums.r(), found.r, 1e-9);
    }
  }
}

}  // namespace
}  // namespace vorn
