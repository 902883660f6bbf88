#include "workspace/series_view.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <vector>

namespace vorn {
namespace {

TEST(YearSpan, CountsBothItsEnds) {
  EXPECT_EQ((YearSpan{1900, 1900}.count()), 1);
  EXPECT_EQ((YearSpan{-2, 2}.count()), 5);  // with a year 0
  EXPECT_EQ(YearSpan().count(), 0);
  constexpr std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  EXPECT_EQ((YearSpan{lowest, 2147483647}.count()), 4294967296);
}

TEST(YearSpan, InCommonIsNoneWhereTwoDoNotMeet) {
  EXPECT_EQ(common({1900, 1950}, {1940, 1990}), (YearSpan{1940, 1950}));
  EXPECT_EQ(common({1940, 1990}, {1900, 2000}), (YearSpan{1940, 1990}));
  EXPECT_EQ(common({1900, 1950}, {1950, 1990}).count(), 1);
  EXPECT_EQ(common({1900, 1949}, {1950, 1990}).count(), 0);
  EXPECT_LT(common({1900, 1920}, {1950, 1990}).count(), 1);
}

TEST(SeriesView, OverSomeOfItsYearsIsThatPart) {
  const std::vector<double> values = {1, 2, 3, 4};
  const std::array<bool, 4> present = {true, false, true, true};
  const SeriesView series{1900, values, present};
  EXPECT_EQ(series.years(), (YearSpan{1900, 1903}));
  const SeriesView part = series.over({1901, 1902});
  EXPECT_EQ(part.years(), (YearSpan{1901, 1902}));
  EXPECT_EQ(part.values[0], 2);
  EXPECT_FALSE(part.present[0]);
  EXPECT_TRUE(part.present[1]);
  EXPECT_EQ(series.over({1902, 1901}).values.size(), 0u);
  EXPECT_TRUE((SeriesView{1900, values}.over({1900, 1901}).present.empty()));
}

TEST(SeriesView, HasTheYearsOfItsRings) {
  const std::vector<double> values = {1, 2, 3};
  const std::array<bool, 3> present = {true, false, true};
  const SeriesView series{1900, values, present}, all{-1, values};
  EXPECT_FALSE(series.has(1899));
  EXPECT_TRUE(series.has(1900));
  EXPECT_FALSE(series.has(1901));
  EXPECT_FALSE(series.has(1903));
  EXPECT_EQ(series.at(1901), 2);
  EXPECT_TRUE(all.has(0));
  EXPECT_FALSE(all.has(2));
  EXPECT_EQ(all.at(1), 3);
}

TEST(SeriesView, OfNoValuesEndsBeforeItBegins) {
  EXPECT_EQ(SeriesView{}.years(), (YearSpan{0, -1}));
}

}  // namespace
}  // namespace vorn
