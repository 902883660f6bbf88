#include "plot/clip.h"

#include <gtest/gtest.h>

#include <limits>

namespace vorn {
namespace {

constexpr Box box{0, 0, 100, 50};
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();
using Pieces = std::vector<std::vector<PagePoint>>;

TEST(ClipLine, KeepsWhatLiesInside) {
  const auto part = clip_line(box, {10, 10}, {90, 40});
  ASSERT_TRUE(part);
  EXPECT_EQ(part->first, (PagePoint{10, 10}));
  EXPECT_EQ(part->second, (PagePoint{90, 40}));
}

TEST(ClipLine, CutsBothEndsOfALineThatCrossesTheBox) {
  const auto part = clip_line(box, {-50, 25}, {150, 25});
  ASSERT_TRUE(part);
  EXPECT_EQ(part->first, (PagePoint{0, 25}));
  EXPECT_EQ(part->second, (PagePoint{100, 25}));
}

TEST(ClipLine, DropsWhatPassesBy) {
  EXPECT_FALSE(clip_line(box, {-10, -10}, {110, -1}));
  EXPECT_FALSE(clip_line(box, {110, 0}, {110, 50}));
  EXPECT_FALSE(clip_line(box, {-30, 40}, {20, 80}));  // passes the lower left corner
}

TEST(ClipLine, AnEdgeBelongsToTheBox) {
  const auto part = clip_line(box, {0, 50}, {100, 50});
  ASSERT_TRUE(part);
  EXPECT_EQ(part->second, (PagePoint{100, 50}));
}

TEST(ClipLine, ALineThatTouchesACornerIsOnePoint) {
  const auto part = clip_line(box, {-5, 5}, {5, -5});
  ASSERT_TRUE(part);
  EXPECT_EQ(part->first, (PagePoint{0, 0}));
  EXPECT_EQ(part->second, (PagePoint{0, 0}));
}

TEST(ClipPolyline, ACurveThatLeavesAndReturnsIsInTwoPieces) {
  const std::vector<PagePoint> points = {{10, 25}, {20, 75}, {30, 25}};
  EXPECT_EQ(clip_polyline(box, points), (Pieces{{{10, 25}, {15, 50}}, {{25, 50}, {30, 25}}}));
}

TEST(ClipPolyline, OnePieceWhileItStaysInside) {
  const std::vector<PagePoint> points = {{10, 25}, {20, 30}, {20, 30}, {30, 25}};
  EXPECT_EQ(clip_polyline(box, points), (Pieces{points}));
}

TEST(ClipPolyline, APointThatIsNotFiniteBreaksIt) {
  const std::vector<PagePoint> points = {{1, 1}, {2, 2}, {nan, 3}, {4, 4}, {5, inf}, {6, 6}, {7, 7}};
  EXPECT_EQ(clip_polyline(box, points), (Pieces{{{1, 1}, {2, 2}}, {{6, 6}, {7, 7}}}));
}

TEST(ClipPolyline, NothingComesOfAPointAloneOrOfATouch) {
  EXPECT_TRUE(clip_polyline(box, std::vector<PagePoint>{{1, 1}}).empty());
  EXPECT_TRUE(clip_polyline(box, std::vector<PagePoint>{}).empty());
  EXPECT_TRUE(clip_polyline(box, std::vector<PagePoint>{{-5, 5}, {0, 0}, {5, -5}}).empty());
}

TEST(ClipPolyline, FarAwayPointsNeverCarryItOutside) {
  const std::vector<PagePoint> points = {{-1e9, 25}, {50, -1e9}, {1e9, 1e9}, {50, 25}, {50.1, 1e9}};
  for (const auto& piece : clip_polyline(box, points)) {
    for (const PagePoint point : piece) EXPECT_TRUE(box.contains(point)) << point.x << ' ' << point.y;
  }
}

}  // namespace
}  // namespace vorn
