#include "plot/pixel_marks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <tuple>
#include <vector>

namespace vorn {
namespace {

constexpr double most_in_a_column = 3;

bool is_short_line(const Mark& mark) {
  return mark.kind == Mark::Kind::line && mark.points.size() == 2;
}
bool is_tick(const Mark& mark) {
  return is_short_line(mark) && mark.points[0].x == mark.points[1].x;
}

// Behind the last of the short lines from the first of `marks` on of which each begins where the one before
// ends.
std::size_t end_of_chain(std::span<const Mark> marks) {
  std::size_t end = 1;
  while (end < marks.size() && is_short_line(marks[end - 1]) && is_short_line(marks[end]) &&
         marks[end].colour == marks[end - 1].colour &&
         marks[end].points.front() == marks[end - 1].points.back())
    ++end;
  return end;
}

std::vector<PagePoint> joined(std::span<const Mark> chain) {
  std::vector<PagePoint> points = {chain.front().points.front()};
  for (const Mark& mark : chain) points.push_back(mark.points.back());
  return points;
}

bool is_dense(const std::vector<PagePoint>& points, double columns) {
  const auto [left, right] = std::ranges::minmax(points, {}, &PagePoint::x);
  return static_cast<double>(points.size()) > most_in_a_column * ((right.x - left.x) * columns + 1);
}

// The lowest and the highest point of each stay in a column, in their order, with both ends of the line.
std::vector<PagePoint> thinned(std::span<const PagePoint> points, double columns) {
  std::vector<PagePoint> kept;
  const auto column = [&](std::size_t k) { return std::floor(points[k].x * columns); };
  for (std::size_t first = 0, end = 0; first < points.size(); first = end) {
    for (end = first + 1; end < points.size() && column(end) == column(first);) ++end;
    const auto here = points.subspan(first, end - first);
    const auto lower = [](const PagePoint& a, const PagePoint& b) { return a.y < b.y; };
    const auto [low, high] = std::minmax_element(here.begin(), here.end(), lower);
    if (first == 0 && low != here.begin() && high != here.begin()) kept.push_back(here.front());
    kept.push_back(*std::min(low, high));
    if (low != high) kept.push_back(*std::max(low, high));
    if (end == points.size() && std::max(low, high) != here.end() - 1) kept.push_back(here.back());
  }
  return kept;
}

// Where the ticks stand since something else was drawn, which may have covered them.
class Ticks {
 public:
  Ticks(double columns, double left) : columns_(columns), left_(left) {}

  void forget() { at_.clear(); }
  // Whether one like it was there already.
  bool take(const Mark& mark) {
    const double column = std::floor(mark.points[0].x * columns_ + left_);
    const auto [same, is_new] =
        at_.try_emplace({number_of(mark.colour), mark.points[0].y, mark.points[1].y}, column);
    const bool is_there = !is_new && same->second == column;
    same->second = column;
    return is_there;
  }

 private:
  double columns_, left_;
  std::map<std::tuple<int, double, double>, double> at_;
};

}  // namespace

void play_on_pixels(std::span<const Mark> marks, double columns, double left,
                    const std::function<void(const Mark&)>& use) {
  const double halves = 2 * columns;
  Ticks ticks(halves, 2 * left);
  while (!marks.empty()) {
    const auto chain = marks.first(end_of_chain(marks));
    marks = marks.subspan(chain.size());
    if (chain.size() == 1 && is_tick(chain.front())) {
      if (!ticks.take(chain.front())) use(chain.front());
      continue;
    }
    ticks.forget();
    if (chain.size() > 1) {
      const auto points = joined(chain);
      if (is_dense(points, halves)) {
        use({.colour = chain.front().colour, .points = thinned(points, halves)});
        continue;
      }
    }
    for (const Mark& mark : chain) use(mark);
  }
}

}  // namespace vorn
