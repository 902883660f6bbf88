#include "statistics/pool_window.h"

#include <algorithm>
#include <functional>

namespace vorn {

PoolWindow::PoolWindow(const SeriesStore& store, std::int64_t from, int count)
    : values_(std::max(count, 0)), present_(std::max(count, 0)) {
  const auto first = std::max<std::int64_t>(from, 1);
  const auto last = std::min<std::int64_t>(from + count - 1, store.ax.size());
  if (first > last) return;
  const int place = static_cast<int>(first), to = static_cast<int>(first - from) + 1;
  const int inside = static_cast<int>(last - first) + 1;
  std::ranges::copy(store.ax.range(place, inside), values_.range(to, inside).begin());
  std::ranges::copy(store.xok.range(place, inside), present_.range(to, inside).begin());
}

void mark_present(std::span<const bool> a, std::span<const bool> b, std::span<bool> both) {
  std::transform(a.begin(), a.end(), b.begin(), both.begin(), std::logical_and<>());
}

}  // namespace vorn
