#include "plot/pixel_marks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>

namespace vorn {
namespace {

using Marks = std::vector<Mark>;
using Points = std::vector<PagePoint>;

Mark line(Points points, Colour colour = colour::light_red) {
  return {.colour = colour, .points = std::move(points)};
}
// The line as the program draws curves: each piece by itself.
Marks in_pieces(const Points& points, Colour colour = colour::light_red) {
  Marks marks;
  for (std::size_t k = 1; k < points.size(); ++k) marks.push_back(line({points[k - 1], points[k]}, colour));
  return marks;
}
Marks played(const Marks& marks, double columns, double left = 0) {
  Marks all;
  play_on_pixels(marks, columns, left, [&](const Mark& mark) { all.push_back(mark); });
  return all;
}

TEST(PixelMarks, StayAsTheyAreWhereThreePointsAHalfColumnAreTheMost) {
  Points points;
  for (int k = 0; k < 300; ++k) points.push_back({k * 0.34, static_cast<double>(k % 7)});
  Marks marks = in_pieces(points);
  marks.push_back({.kind = Mark::Kind::fill, .points = {{0, 0}, {9, 0}, {9, 9}}});
  marks.push_back({.kind = Mark::Kind::text, .points = {{3, 3}}, .writing = "1900", .height = 20});
  EXPECT_EQ(played(marks, 0.5), marks);
  EXPECT_EQ(played({}, 0.5), Marks{});
}

// Seven points in the half column from 0 to 1, and five in the next but one.
TEST(PixelMarks, AreTheLowestAndTheHighestOfEachHalfInTheirOrder) {
  const Points points = {{0, 5},   {0.1, 9}, {0.2, 6},   {0.4, 1},   {0.6, 4},   {0.7, 2},
                         {0.8, 6}, {2, 7.2}, {2.1, 7.3}, {2.2, 7.4}, {2.3, 7.1}, {2.5, 7.3}};
  EXPECT_EQ(played(in_pieces(points), 0.5),
            (Marks{line({{0, 5}, {0.1, 9}, {0.4, 1}, {2.2, 7.4}, {2.3, 7.1}, {2.5, 7.3}})}));
}

TEST(PixelMarks, AreOneChainOnlyInOneColourAndEndToEnd) {
  Points points;
  for (int k = 0; k < 8; ++k) points.push_back({k * 0.2, static_cast<double>(k)});
  const Points thin = {points[0], points[4], points[5], points[7]};
  Marks marks = in_pieces(points);
  const Marks blue = in_pieces(points, colour::light_blue);
  marks.insert(marks.end(), blue.begin(), blue.end());
  EXPECT_EQ(played(marks, 0.5), (Marks{line(thin), line(thin, colour::light_blue)}));
  // A gap between them parts a chain.
  marks = in_pieces({points.begin(), points.begin() + 4});
  const Marks rest = in_pieces({points.begin() + 5, points.end()});
  marks.insert(marks.end(), rest.begin(), rest.end());
  EXPECT_EQ(played(marks, 0.5), marks);
}

TEST(PixelMarks, ReachInEachHalfAsFarAsAllYears) {
  Points points;
  for (int k = 0; k < 12'000; ++k) points.push_back({k * 0.2, static_cast<double>(k * 7919 % 1'000)});
  const Marks marks = played(in_pieces(points), 0.175);
  ASSERT_EQ(marks.size(), 1u);
  const Points& thin = marks[0].points;
  const auto reach = [](const Points& of) {
    std::map<double, std::pair<double, double>> all;
    for (const PagePoint& point : of) {
      const auto [at, is_new] = all.try_emplace(std::floor(point.x * 0.35), point.y, point.y);
      at->second = {std::min(at->second.first, point.y), std::max(at->second.second, point.y)};
    }
    return all;
  };
  EXPECT_EQ(reach(thin), reach(points));
  EXPECT_LE(thin.size(), 2 * reach(points).size() + 2);
  EXPECT_TRUE(std::ranges::is_sorted(thin, {}, &PagePoint::x));
  EXPECT_EQ(thin.front(), points.front());
  EXPECT_EQ(thin.back(), points.back());
}

TEST(PixelMarks, HaveOneTickOfAKindInEachHalfColumn) {
  const auto tick = [](double x, double top, Colour colour) { return line({{x, 1300}, {x, top}}, colour); };
  const Mark a = tick(10, 1288, colour::ink), other_height = tick(10.1, 1276, colour::ink),
             a_again = tick(10.2, 1288, colour::ink), other_colour = tick(10.3, 1288, colour::light_red),
             b = tick(10.6, 1288, colour::ink), b_again = tick(10.9, 1288, colour::ink);
  EXPECT_EQ(played({a, other_height, a_again, other_colour, b, b_again}, 1),
            (Marks{a, other_height, other_colour, b}));
  // Columns are those of the device: here each half begins a quarter later.
  EXPECT_EQ(played({a, a_again, b}, 1, 0.25), (Marks{a, b}));
  EXPECT_EQ(played({a, a_again}, 1, 0.35), (Marks{a, a_again}));
  // What was drawn between them may have covered the first.
  const Mark cover = {.kind = Mark::Kind::fill, .points = {{0, 0}, {99, 0}, {99, 2000}, {0, 2000}}};
  EXPECT_EQ(played({a, cover, a_again}, 1), (Marks{a, cover, a_again}));
}

}  // namespace
}  // namespace vorn
