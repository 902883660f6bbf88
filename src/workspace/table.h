// Tables of fixed size that count from 1, as the user does.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>

#include "base/loud_failure.h"
#include "base/zero_memory.h"

namespace vorn {

// The elements of a table, all value-initialised. Numbers cost nothing before they are written: most tables
// are never used to their end.
template <class T>
class Elements {
 public:
  explicit Elements(std::size_t size) : first_(fresh(size)) {}
  T* get() const { return first_.get(); }

 private:
  static constexpr bool zeros_are_numbers = std::is_arithmetic_v<T>;
  struct GiveBack {
    void operator()(T* elements) const { give_back_memory(elements, bytes); }
    std::size_t bytes = 0;
  };
  using Owner = std::conditional_t<zeros_are_numbers, std::unique_ptr<T[], GiveBack>, std::unique_ptr<T[]>>;

  static Owner fresh(std::size_t size) {
    if constexpr (zeros_are_numbers) {
      const std::size_t bytes = size * sizeof(T);
      return Owner(static_cast<T*>(zero_memory(bytes)), GiveBack{bytes});
    } else {
      return std::make_unique<T[]>(size);
    }
  }

  Owner first_;
};

// `size` elements, indices 1 to size, all value-initialised. An index outside them stops the program.
template <class T>
class Table {
 public:
  explicit Table(int size) : size_(size), elements_(static_cast<std::size_t>(size)) {}

  int size() const { return size_; }
  bool holds(int i) const { return static_cast<unsigned>(i) - 1 < static_cast<unsigned>(size_); }
  T& operator()(int i) {
    VORN_ASSERT(holds(i));
    return elements_.get()[i - 1];
  }
  const T& operator()(int i) const {
    VORN_ASSERT(holds(i));
    return elements_.get()[i - 1];
  }
  void fill(const T& value) { std::fill_n(elements_.get(), size_, value); }
  // Tells that elements `first` to `last`, as far as there are such, will be written next.
  void expect_use(int first, int last) {
    first = std::max(first, 1), last = std::min(last, size_);
    if (first > last) return;
    vorn::expect_use(elements_.get() + (first - 1), static_cast<std::size_t>(last - first + 1) * sizeof(T));
  }

  // The bridge to code that counts from 0: elements first to first + count - 1 (none when count is 0 or
  // less).
  std::span<T> range(int first, int count) {
    if (count <= 0) return {};
    VORN_ASSERT(first >= 1 && first - 1 <= size_ - count);
    return {elements_.get() + (first - 1), static_cast<std::size_t>(count)};
  }
  std::span<const T> range(int first, int count) const {
    return const_cast<Table*>(this)->range(first, count);
  }

 private:
  int size_;
  Elements<T> elements_;
};

// `rows` x `columns` elements, both counted from 1, stored column after column.
template <class T>
class Grid {
 public:
  Grid(int rows, int columns)
      : rows_(rows), columns_(columns), elements_(static_cast<std::size_t>(rows * columns)) {}

  int rows() const { return rows_; }
  int columns() const { return columns_; }
  T& operator()(int row, int column) { return elements_.get()[place(row, column)]; }
  const T& operator()(int row, int column) const { return elements_.get()[place(row, column)]; }
  void fill(const T& value) { std::fill_n(elements_.get(), rows_ * columns_, value); }
  // Rows 1 to `count` of one column, for code that counts from 0.
  std::span<T> column(int c, int count) {
    if (count <= 0) return {};
    VORN_ASSERT(count <= rows_);
    return {&(*this)(1, c), static_cast<std::size_t>(count)};
  }
  std::span<const T> column(int c, int count) const { return const_cast<Grid*>(this)->column(c, count); }

 private:
  int place(int row, int column) const {
    VORN_ASSERT(row >= 1 && row <= rows_ && column >= 1 && column <= columns_);
    return (column - 1) * rows_ + (row - 1);
  }
  int rows_, columns_;
  Elements<T> elements_;
};

}  // namespace vorn
