#include "statistics/pool_window.h"

#include <algorithm>
#include <functional>

namespace vorn {

PoolWindow::PoolWindow(const SeriesStore& store, std::int64_t from, int count)
    : values_(std::max(count, 0)), present_(std::max(count, 0)) {
  for (int k = 1; k <= count; ++k) {
    const std::int64_t place = from + k - 1;
    if (place < 1 || place > store.ax.size()) continue;
    values_(k) = store.ax(static_cast<int>(place));
    present_(k) = store.xok(static_cast<int>(place));
  }
}

void mark_present(std::span<const bool> a, std::span<const bool> b, std::span<bool> both) {
  std::transform(a.begin(), a.end(), b.begin(), both.begin(), std::logical_and<>());
}

}  // namespace vorn
