// Tables of fixed size that count from 1, as the user does.
#pragma once

#include <algorithm>
#include <memory>
#include <span>

#include "base/loud_failure.h"

namespace vorn {

#ifdef NDEBUG
#define VORN_CHECK_INDEX(condition) static_cast<void>(0)
#else
#define VORN_CHECK_INDEX(condition) VORN_ASSERT(condition)
#endif

// `size` elements, indices 1 to size, all value-initialised. Bounds are checked in debug builds.
template <class T>
class Table {
 public:
  explicit Table(int size) : size_(size), data_(std::make_unique<T[]>(static_cast<std::size_t>(size))) {}

  int size() const { return size_; }
  T& operator()(int i) {
    VORN_CHECK_INDEX(i >= 1 && i <= size_);
    return data_[static_cast<std::size_t>(i - 1)];
  }
  const T& operator()(int i) const {
    VORN_CHECK_INDEX(i >= 1 && i <= size_);
    return data_[static_cast<std::size_t>(i - 1)];
  }
  void fill(const T& value) { std::fill_n(data_.get(), size_, value); }

  // The bridge to code that counts from 0: elements first to first + count - 1 (none when count is 0 or
  // less).
  std::span<T> range(int first, int count) {
    if (count <= 0) return {};
    VORN_ASSERT(first >= 1 && first - 1 + count <= size_);
    return {data_.get() + (first - 1), static_cast<std::size_t>(count)};
  }
  std::span<const T> range(int first, int count) const {
    return const_cast<Table*>(this)->range(first, count);
  }

 private:
  int size_;
  std::unique_ptr<T[]> data_;
};

// `rows` x `columns` elements, both counted from 1, stored column after column.
template <class T>
class Grid {
 public:
  Grid(int rows, int columns) : rows_(rows), columns_(columns), cells_(rows * columns) {}

  int rows() const { return rows_; }
  int columns() const { return columns_; }
  T& operator()(int row, int column) { return cells_(place(row, column)); }
  const T& operator()(int row, int column) const { return cells_(place(row, column)); }
  void fill(const T& value) { cells_.fill(value); }
  // Rows 1 to `count` of one column, for code that counts from 0.
  std::span<T> column(int c, int count) { return cells_.range(place(1, c), count); }
  std::span<const T> column(int c, int count) const { return cells_.range(place(1, c), count); }

 private:
  int place(int row, int column) const {
    VORN_CHECK_INDEX(row >= 1 && row <= rows_ && column >= 1 && column <= columns_);
    return (column - 1) * rows_ + row;
  }
  int rows_, columns_;
  Table<T> cells_;
};

}  // namespace vorn
