// Clipping of lines by a rectangle, in page units.
#pragma once

#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "plot/page.h"

namespace vorn {

// An upright rectangle of the page; left <= right, top <= bottom.
struct Box {
  double left = 0, top = 0, right = 0, bottom = 0;
  bool contains(PagePoint point) const {
    return left <= point.x && point.x <= right && top <= point.y && point.y <= bottom;
  }
};

// The part of the line from `a` to `b` that lies in the box, edges included; nothing where it passes by.
// Both ends must be finite. Method: Liang and Barsky (1984).
std::optional<std::pair<PagePoint, PagePoint>> clip_line(const Box& box, PagePoint a, PagePoint b);

// The pieces of a polyline that lie in the box, each with at least two points. A point that is not finite
// breaks the line. Points without a neighbour make no piece.
std::vector<std::vector<PagePoint>> clip_polyline(const Box& box, std::span<const PagePoint> points);

}  // namespace vorn
