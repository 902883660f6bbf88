#include "plot/clip.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vorn {
namespace {

bool finite(PagePoint point) {
  return std::isfinite(point.x) && std::isfinite(point.y);
}

// The point at the fraction `t` of the way from a to b; rounding never carries it out of the box.
PagePoint between(const Box& box, PagePoint a, PagePoint b, double t) {
  return {std::clamp(a.x + t * (b.x - a.x), box.left, box.right),
          std::clamp(a.y + t * (b.y - a.y), box.top, box.bottom)};
}

}  // namespace

std::optional<std::pair<PagePoint, PagePoint>> clip_line(const Box& box, PagePoint a, PagePoint b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  // Each pair: how fast the line runs out through an edge, and how far its start lies inside that edge.
  const std::array<std::pair<double, double>, 4> edges = {
      {{-dx, a.x - box.left}, {dx, box.right - a.x}, {-dy, a.y - box.top}, {dy, box.bottom - a.y}}};
  double enter = 0, leave = 1;
  for (const auto& [outwards, inside] : edges) {
    if (outwards == 0) {
      if (inside < 0) return std::nullopt;
    } else if (outwards < 0) {
      enter = std::max(enter, inside / outwards);
    } else {
      leave = std::min(leave, inside / outwards);
    }
  }
  if (enter > leave) return std::nullopt;
  return std::pair{enter > 0 ? between(box, a, b, enter) : a, leave < 1 ? between(box, a, b, leave) : b};
}

std::vector<std::vector<PagePoint>> clip_polyline(const Box& box, std::span<const PagePoint> points) {
  std::vector<std::vector<PagePoint>> pieces;
  bool joined = false;  // the last piece ends at the point before
  for (std::size_t i = 1; i < points.size(); ++i) {
    const PagePoint a = points[i - 1], b = points[i];
    const auto part = finite(a) && finite(b) ? clip_line(box, a, b) : std::nullopt;
    const bool only_touches = part && part->first == part->second;
    if (!part || (only_touches && !joined)) {
      joined = false;
      continue;
    }
    if (!joined) pieces.push_back({part->first});
    pieces.back().push_back(part->second);
    joined = part->second == b;
  }
  return pieces;
}

}  // namespace vorn
