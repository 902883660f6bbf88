#include "study/likely_years.h"

#include <gtest/gtest.h>

#include <vector>

namespace vorn {
namespace {

using Values = std::vector<double>;

// 0.5 + 0.3 are less than nine tenths, with 0.15 they are more: 1903, 1901, 1906; what lies between belongs.
TEST(LikelyYears, AreThoseOfTheLeastSetOfNineTenths) {
  EXPECT_EQ(likely_years(Values{0, 0.3, 0, 0.5, 0.05, 0, 0.15}, 1900), (YearSpan{1901, 1906}));
  EXPECT_EQ(likely_years(Values{0.02, 0.95, 0.03}, 1900), (YearSpan{1901, 1901}));
  EXPECT_EQ(likely_years(Values{7}, -3), (YearSpan{-3, -3}));
}

// However they are measured.
TEST(LikelyYears, AreNoSharesOfOne) {
  EXPECT_EQ(likely_years(Values{0, 3e9, 0, 5e9, 5e8, 0, 1.5e9}, 1900), (YearSpan{1901, 1906}));
}

// Nine tenths exactly are enough.
TEST(LikelyYears, EndAtNineTenths) {
  EXPECT_EQ(likely_years(Values{9, 1}, 1900), (YearSpan{1900, 1900}));
}

// 1900 alone is the likeliest, 6 x 4 = 24; but around 1911 there are 6 x 2 + 2 x 5 x 2 = 32. With 6 x 7 = 42
// it is 1900.
TEST(LikeliestYear, IsTheOneWithTheMostNearIt) {
  Values likelihoods(30, 0.0);
  likelihoods[0] = 4;
  likelihoods[10] = likelihoods[11] = likelihoods[12] = 2;
  EXPECT_EQ(likeliest_year(likelihoods, 1900), 1911);
  likelihoods[0] = 7;
  EXPECT_EQ(likeliest_year(likelihoods, 1900), 1900);
}

TEST(LikeliestYear, IsThePeakThatStandsAlone) {
  EXPECT_EQ(likeliest_year(Values{0, 1, 0, 0, 0, 0, 0, 0}, 1900), 1901);
  EXPECT_EQ(likeliest_year(Values{1}, -5), -5);
}

}  // namespace
}  // namespace vorn
