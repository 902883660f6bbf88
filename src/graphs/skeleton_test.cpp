#include "graphs/skeleton.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace vorn {
namespace {

using Kind = SkeletonMark::Kind;

std::vector<SkeletonMark> marks_of(const std::vector<double>& values, std::string_view mask = {}) {
  const auto present = std::make_unique<bool[]>(values.size());
  for (std::size_t k = 0; k < values.size(); ++k) present[k] = k >= mask.size() || mask[k] == '+';
  return skeleton(values, {present.get(), values.size()});
}

// Eleven rings, the sixth 0.2 and the others 1: mean 0.92727, deviation 0.24121, z = -3.0151 for the sixth
// and 0.30151 for the others of a whole window.
TEST(Skeleton, ANarrowRingHasTheLongestBar) {
  std::vector<double> values(21, 1.0);
  values[10] = 0.2;
  const auto marks = marks_of(values);
  for (std::size_t k = 0; k < 21; ++k) {
    EXPECT_EQ(marks[k], k == 10 ? (SkeletonMark{Kind::narrow, 10}) : SkeletonMark{}) << k;
  }
}

// All of 0 to 10: mean 5, deviation sqrt(11) = 3.3166. The sixth is 2: z = -3 / 3.3166 = -0.9045, and
// (0.9045 - 0.5) / 0.15 = 2.70.
TEST(Skeleton, LengthsCountDeviationsBehindTheFirstHalf) {
  EXPECT_EQ(marks_of({0, 10, 1, 9, 3, 2, 4, 8, 6, 7, 5})[5], (SkeletonMark{Kind::narrow, 3}));
}

TEST(Skeleton, WideAndMissingRingsAreToldAndMissingOnesDoNotCount) {
  std::vector<double> values(21, 1.0);
  values[8] = 5;
  values[12] = 100;
  const auto marks = marks_of(values, "++++++++++++-");
  EXPECT_EQ(marks[8].kind, Kind::wide);
  EXPECT_EQ(marks[12].kind, Kind::missing);
  EXPECT_EQ(marks[13], SkeletonMark{});
}

TEST(Skeleton, HasNoMarkWhereNothingCanBeCompared) {
  const double none = std::numeric_limits<double>::quiet_NaN();
  EXPECT_TRUE(marks_of({}).empty());
  for (const auto& values : {std::vector<double>(9, 1.0),
                             std::vector<double>(11, 0.1),
                             {1, 2, 1, 0},
                             {1, none, 2, 1, 0, 3, 1, 2},
                             {1, 2, 1, 0, std::numeric_limits<double>::infinity(), 2}}) {
    for (const SkeletonMark& mark : marks_of(values)) EXPECT_EQ(mark, SkeletonMark{});
  }
  for (const SkeletonMark& mark : marks_of(std::vector<double>(30, 1.0), std::string(30, '-')))
    EXPECT_EQ(mark.kind, Kind::missing);
}

// However wide the series is, and whatever its trend: neighbours alone count.
TEST(Skeleton, IsTheSameForWidthsInOtherUnits) {
  std::vector<double> widths, hundredths;
  unsigned seed = 7;
  for (int k = 0; k < 60; ++k) {
    seed = seed * 1103515245u + 12345u;
    widths.push_back(0.5 + (seed >> 16) % 1024 / 512.0);
    hundredths.push_back(widths.back() * 128);
  }
  EXPECT_EQ(marks_of(widths), marks_of(hundredths));
}

}  // namespace
}  // namespace vorn
