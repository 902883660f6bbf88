#include "situation/graph_axis.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

GraphAxis axis(int first, int shown) {
  Situation situation;
  situation.first_year = first;
  situation.years_shown = shown;
  return GraphAxis(situation);
}

TEST(GraphAxis, PicksTheYearInWhoseWidthAClickLies) {
  EXPECT_EQ(axis(1900, 100).year_at(200), 1900);
  EXPECT_EQ(axis(1900, 100).year_at(224), 1900);
  EXPECT_EQ(axis(1900, 100).year_at(225), 1901);
  EXPECT_EQ(axis(1900, 100).x_of(1900), 212);
  EXPECT_EQ(axis(1900, 100).x_of(1999), 2687);
  EXPECT_FALSE(axis(1900, 100).x_of(1899));
  EXPECT_FALSE(axis(1900, 100).x_of(2000));
}

TEST(GraphAxis, FindsEachYearThatItGivesAPlaceFor) {
  for (const int shown : {1, 21, 100, 999, 2500, 2501, 12'000}) {
    const GraphAxis years = axis(-50, shown);
    int found = 0;
    for (std::int64_t year = years.first(); year <= years.last(); ++year) {
      const auto x = years.x_of(year);
      if (!x) continue;
      ++found;
      EXPECT_EQ(years.year_at(*x), year) << shown;
    }
    EXPECT_EQ(found, std::min(shown, 2500)) << shown;
  }
}

}  // namespace
}  // namespace vorn
