// Where years stand in the graph of the cross-dating screen.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>

#include "situation/situation.h"
#include "workspace/view.h"

namespace vorn {

// The graph within its axes, in page units.
inline constexpr Rectangle graph_area = {200, 450, 2700, 1300};

// The years shown, as a click picks them. With more years than page units not all can be picked.
class GraphAxis {
 public:
  // At least one year must be shown.
  explicit GraphAxis(const Situation& now)
      : first_(now.first_year),
        shown_(now.years_shown),
        unit_(static_cast<double>(graph_area.x2 - graph_area.x1) / now.years_shown) {}

  std::int64_t first() const { return first_; }
  std::int64_t last() const { return first_ + shown_ - 1; }
  double unit() const { return unit_; }  // page units a year
  bool shows(std::int64_t year) const { return year >= first_ && year <= last(); }
  // The middle of the page units at which the year is picked; nothing where there are none.
  std::optional<int> x_of(std::int64_t year) const {
    if (!shows(year)) return {};
    const auto k = static_cast<double>(year - first_);
    const int begin = static_cast<int>(std::ceil(k * unit_)),
              end = static_cast<int>(std::ceil((k + 1) * unit_));
    return begin < end ? std::optional(graph_area.x1 + (begin + end - 1) / 2) : std::nullopt;
  }
  // The year that a click at that place, within the graph, picks.
  int year_at(int x) const { return held_year(first_ + static_cast<int>((x - graph_area.x1) / unit_)); }

 private:
  std::int64_t first_;
  int shown_;
  double unit_;
};

}  // namespace vorn
