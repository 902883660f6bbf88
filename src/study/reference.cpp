#include "study/reference.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vorn {
namespace {

// The years that the cores span; fewer than none without any.
struct Span {
  std::int64_t first = std::numeric_limits<std::int64_t>::max();
  std::int64_t last = std::numeric_limits<std::int64_t>::min();
};

Span span_of(std::span<const SeriesView> cores, std::size_t left_out) {
  Span all;
  for (std::size_t i = 0; i < cores.size(); ++i) {
    if (i == left_out || cores[i].values.empty()) continue;
    all.first = std::min(all.first, cores[i].first);
    all.last = std::max(all.last, cores[i].years().last);
  }
  return all;
}

}  // namespace

Reference::Reference(std::span<const SeriesView> cores, std::size_t left_out, int depth) {
  const Span all = span_of(cores, left_out);
  if (all.first > all.last) return;
  std::vector<double> sums(static_cast<std::size_t>(all.last - all.first + 1), 0.0);
  std::vector<int> rings(sums.size(), 0);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    if (i == left_out) continue;
    const auto start = static_cast<std::size_t>(cores[i].first - all.first);
    for (std::size_t k = 0; k < cores[i].values.size(); ++k) {
      if (!cores[i].has(cores[i].first + static_cast<std::int64_t>(k)) || !std::isfinite(cores[i].values[k]))
        continue;
      sums[start + k] += cores[i].values[k];
      ++rings[start + k];
    }
  }
  mean_ = OwnedSeries(all.first, all.last - all.first + 1);
  for (std::size_t k = 0; k < sums.size(); ++k) {
    if (rings[k] > 0)
      mean_.put(all.first + static_cast<std::int64_t>(k), sums[k] / rings[k], rings[k] >= depth);
  }
}

}  // namespace vorn
