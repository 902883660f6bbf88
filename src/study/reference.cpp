#include "study/reference.h"

#include <algorithm>
#include <cmath>
#include <limits>

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
  first_ = all.first;
  values_.assign(static_cast<std::size_t>(all.last - all.first + 1), 0.0);
  std::vector<int> rings(values_.size(), 0);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    if (i == left_out) continue;
    const auto start = static_cast<std::size_t>(cores[i].first - first_);
    for (std::size_t k = 0; k < cores[i].values.size(); ++k) {
      if (!cores[i].has(cores[i].first + static_cast<std::int64_t>(k)) || !std::isfinite(cores[i].values[k]))
        continue;
      values_[start + k] += cores[i].values[k];
      ++rings[start + k];
    }
  }
  present_ = std::make_unique<bool[]>(values_.size());
  for (std::size_t k = 0; k < values_.size(); ++k) {
    present_[k] = rings[k] >= depth && rings[k] > 0;
    if (rings[k] > 0) values_[k] /= rings[k];
  }
}

}  // namespace vorn
