// A series as kernels take it: years and values, without the store that holds them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "workspace/years.h"

namespace vorn {

// values[k] is the value of year first + k. It views what others own.
struct SeriesView {
  std::int64_t first = 0;
  std::span<const double> values = {};
  std::span<const bool> present = {};  // whether a ring is; as many as values, or none where nobody asks

  YearSpan years() const { return {first, first + static_cast<std::int64_t>(values.size()) - 1}; }

  // Whether a ring is that of `year`; where nobody asks, every year within years() has one.
  bool has(std::int64_t year) const {
    const std::int64_t k = year - first;
    return k >= 0 && k < static_cast<std::int64_t>(values.size()) &&
           (present.empty() || present[static_cast<std::size_t>(k)]);
  }
  // The value of a year within years().
  double at(std::int64_t year) const { return values[static_cast<std::size_t>(year - first)]; }

  // The part of `span`, which must lie within years().
  SeriesView over(YearSpan span) const {
    const auto from = static_cast<std::size_t>(span.first - first);
    const auto count = static_cast<std::size_t>(span.count());
    return {span.first, values.subspan(from, count),
            present.empty() ? present : present.subspan(from, count)};
  }
};

}  // namespace vorn
