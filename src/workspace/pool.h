// A vector of the pool: a table whose formulas may reach past its ends.
#pragma once

#include <algorithm>
#include <cstring>

#include "workspace/table.h"

namespace vorn {

// A Table<T> (T is double or bool) with the access that formulas kept as they stand go through: a place
// before the first or behind the last reads as T{} (0, or absent) and takes nothing.
template <class T>
class Pool : public Table<T> {
 public:
  using Table<T>::Table;

  T at(int p) const { return this->holds(p) ? (*this)(p) : T{}; }
  void put(int p, T value) {
    if (this->holds(p)) (*this)(p) = value;
  }
  // Copies `count` values from place `from` on to place `to` on, as if by way of a third place where they
  // overlap.
  void copy(int from, int to, int count) { move(from, from + count - 1, to - from); }
  // Moves the values of places first to last by `by` places, all at once, so that an overlap does no harm.
  void move(int first, int last, int by) {
    const int low = std::max(first + by, 1), high = std::min(last + by, this->size());
    if (low > high || by == 0) return;
    const int from = std::max(low, 1 + by), to = std::min(high, this->size() + by);
    if (from <= to) {
      T* const begin = &(*this)(1);
      std::memmove(begin + (from - 1), begin + (from - by - 1),
                   static_cast<std::size_t>(to - from + 1) * sizeof(T));
    }
    for (int p = low; p < std::min(from, high + 1); ++p) (*this)(p) = T{};
    for (int p = std::max(to + 1, low); p <= high; ++p) (*this)(p) = T{};
  }
};

}  // namespace vorn
