// Runs of pool values for the kernels, also where a formula leads past the pool's ends.
#pragma once

#include <cstdint>
#include <span>

#include "workspace/series_store.h"

namespace vorn {

// A copy of the analysis values and presence flags of `count` places of the pool from `from` on. Places
// outside the pool are 0 and not present. Its parts are counted from 0, as kernels do.
class PoolWindow {
 public:
  PoolWindow(const SeriesStore& store, std::int64_t from, int count);

  std::span<const double> values(int first, int count) const { return values_.range(first + 1, count); }
  std::span<const bool> present(int first, int count) const { return present_.range(first + 1, count); }

 private:
  Table<double> values_;
  Table<bool> present_;
};

// Marks the places present in both `a` and `b` in `both`; all three are of the same length.
void mark_present(std::span<const bool> a, std::span<const bool> b, std::span<bool> both);

}  // namespace vorn
