// The numbers by which buttons and message lines are known: types of their own, so that neither is taken for
// the other, for a count or for a place.
#pragma once

#include "workspace/table.h"

namespace vorn {

enum class ButtonNumber : int;  // their names are in toolkit/buttons.h
enum class MessageNumber : int;

constexpr int plain(ButtonNumber n) {
  return static_cast<int>(n);
}
constexpr int plain(MessageNumber i) {
  return static_cast<int>(i);
}

// The numbers from first to last, none where first > last; for loops, and to ask whether a number is one of
// them.
template <class Number>
struct NumberRange {
  Number first{1}, last{0};

  class Iterator {
   public:
    constexpr explicit Iterator(int n) : n_(n) {}
    constexpr Number operator*() const { return Number{n_}; }
    constexpr Iterator& operator++() {
      ++n_;
      return *this;
    }
    constexpr bool operator==(const Iterator&) const = default;

   private:
    int n_;
  };

  constexpr Iterator begin() const { return Iterator(plain(first)); }
  constexpr Iterator end() const { return Iterator(plain(first) + size()); }
  constexpr int size() const { return first > last ? 0 : plain(last) - plain(first) + 1; }
  constexpr bool contains(Number n) const { return first <= n && n <= last; }
  // Which one of them n is, and the number that is the k-th, counted from 0.
  constexpr int place(Number n) const { return plain(n) - plain(first); }
  constexpr Number at(int k) const { return Number{plain(first) + k}; }
};

using ButtonRange = NumberRange<ButtonNumber>;
using MessageRange = NumberRange<MessageNumber>;

// A table whose places are known by such numbers.
template <class Number, class T>
class NumberedTable {
 public:
  explicit NumberedTable(int size) : table_(size) {}
  T& operator()(Number n) { return table_(plain(n)); }
  const T& operator()(Number n) const { return table_(plain(n)); }
  int size() const { return table_.size(); }

 private:
  Table<T> table_;
};

}  // namespace vorn
