#include "study/pointer_years.h"

#include <gtest/gtest.h>

#include <memory>

namespace vorn {
namespace {

// Thirteen rings: twelve of 1 mm and 2 mm by turns, the seventh of `width`.
std::vector<double> window_with(double width) {
  std::vector<double> widths;
  for (int k = 0; k < pointer_window; ++k) widths.push_back(k % 2 == 0 ? 1.0 : 2.0);
  widths[6] = width;
  return widths;
}

TEST(PointerYears, ARingIsJudgedByTheWindowAroundIt) {
  // Six widths of 1, six of 2 and the one: of 0.1 mm it lies 2.0 standard deviations below the mean, 1.395
  // mm.
  const auto narrow = window_with(0.1), middling = window_with(1.5), wide = window_with(3.0);
  const std::vector<SeriesView> cores = {{1900, narrow}, {1900, middling}, {1900, wide}};
  const auto years = pointer_years(cores);
  ASSERT_EQ(years.size(), 13u);
  EXPECT_EQ(years.front().year, 1900);
  EXPECT_EQ(years[6].cores, 3);
  EXPECT_EQ(years[6].narrow, 1);
  EXPECT_EQ(years[6].wide, 1);
  // Nearer to an end than half a window nothing is judged.
  EXPECT_EQ(years[5].cores, 0);
  EXPECT_EQ(years[7].cores, 0);
}

TEST(PointerYears, ThreeCoresInFourMakeOne) {
  const auto narrow = window_with(0.1), wide = window_with(3.0);
  std::vector<SeriesView> cores = {{0, narrow}, {0, narrow}, {0, narrow}, {0, wide}};
  EXPECT_TRUE(pointer_years(cores)[6].is_narrow());
  cores[0] = {0, wide};
  EXPECT_FALSE(pointer_years(cores)[6].is_narrow());
  EXPECT_FALSE(pointer_years(cores)[6].is_wide());
  // Of two cores no pointer year can be told.
  cores = {{0, narrow}, {0, narrow}};
  EXPECT_FALSE(pointer_years(cores)[6].is_narrow());
}

TEST(PointerYears, AnAbsentRingIsNarrowAndManyOfThemAreNotJudged) {
  const auto widths = window_with(1.5);
  const auto present = std::make_unique<bool[]>(13);
  std::fill_n(present.get(), 13, true);
  present[6] = false;
  const SeriesView core{1900, widths, {present.get(), 13}};
  EXPECT_EQ(pointer_years({&core, 1})[6].narrow, 1);
  for (int k = 0; k < 3; ++k) present[k] = false;
  EXPECT_EQ(pointer_years({&core, 1})[6].cores, 0);
}

TEST(PointerYears, EqualWidthsAndNoCoresTellNothing) {
  const std::vector<double> widths(13, 1.0);
  const SeriesView core{1900, widths};
  EXPECT_EQ(pointer_years({&core, 1})[6].cores, 0);
  EXPECT_TRUE(pointer_years({}).empty());
}

}  // namespace
}  // namespace vorn
