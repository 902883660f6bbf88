#include "plot/visible_text.h"

#include <algorithm>
#include <array>
#include <span>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

// The corners of polygon side i.
std::pair<PagePoint, PagePoint> side(std::span<const PagePoint> polygon, std::size_t i) {
  return {polygon[i], polygon[(i + 1) % polygon.size()]};
}

// By counting the sides to the right of the point.
bool surrounds(std::span<const PagePoint> polygon, PagePoint point) {
  bool inside = false;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const auto [a, b] = side(polygon, i);
    if ((a.y > point.y) == (b.y > point.y)) continue;
    if (point.x < a.x + (point.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
  }
  return inside;
}

// A polygon covers a box when it surrounds the middle of it and none of its sides passes through the inside.
bool covers(std::span<const PagePoint> polygon, const Box& box) {
  if (!surrounds(polygon, {(box.left + box.right) / 2, (box.top + box.bottom) / 2})) return false;
  const double sliver = 0.01;  // of a page unit: a side along the edge of the box is not inside
  const Box inner{box.left + sliver, box.top + sliver, box.right - sliver, box.bottom - sliver};
  if (inner.left >= inner.right || inner.top >= inner.bottom) return true;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const auto [a, b] = side(polygon, i);
    if (clip_line(inner, a, b)) return false;
  }
  return true;
}

}  // namespace

std::vector<std::string> visible_texts(const Page& page) {
  std::vector<std::string> result;
  const std::span<const Mark> marks = page.marks();
  for (std::size_t i = 0; i < marks.size(); ++i) {
    if (marks[i].kind != Mark::Kind::text) continue;
    const Box extent = text_extent(marks[i]);
    const auto covered = [&](const Mark& later) {
      return later.kind == Mark::Kind::fill && covers(later.points, extent);
    };
    const auto rest = marks.subspan(i + 1);
    if (std::none_of(rest.begin(), rest.end(), covered)) result.push_back(marks[i].writing);
  }
  return result;
}

}  // namespace vorn
