// Runs of calendar years.
#pragma once

#include <algorithm>
#include <cstdint>

namespace vorn {

// Calendar years, both ends included; none where the last lies before the first. Years come from files and
// may be anything that 32 bits hold; so that they can be added up they have 64.
struct YearSpan {
  std::int64_t first = 0, last = -1;

  std::int64_t count() const { return last - first + 1; }  // less than 1 where there is none
  bool operator==(const YearSpan&) const = default;
};

// The years of both; a span of none where they do not meet.
inline YearSpan common(YearSpan a, YearSpan b) {
  return {std::max(a.first, b.first), std::min(a.last, b.last)};
}

}  // namespace vorn
