#include "statistics/pool_window.h"

#include <algorithm>
#include <functional>

namespace vorn {

PoolWindow::PoolWindow(const Workspace& w, std::int64_t from, int count)
    : values_(std::max(count, 0)), present_(std::max(count, 0)) {
  for (int k = 1; k <= count; ++k) {
    const std::int64_t place = from + k - 1;
    if (place < 1 || place > w.ax.size()) continue;
    values_(k) = w.ax(static_cast<int>(place));
    present_(k) = w.xok(static_cast<int>(place));
  }
}

void mark_present(std::span<const bool> a, std::span<const bool> b, std::span<bool> both) {
  std::transform(a.begin(), a.end(), b.begin(), both.begin(), std::logical_and<>());
}

}  // namespace vorn
