// Going through the items of a read or write, each number of a span on its own.
#pragma once

#include <cstddef>
#include <span>
#include <variant>

namespace vorn {

// How many items an entry of a list stands for: a span of numbers for its length, all else for one.
template <class Entry>
std::size_t items_in(const Entry&) {
  return 1;
}
template <class Number>
std::size_t items_in(std::span<Number> numbers) {
  return numbers.size();
}
inline std::size_t items_in(std::span<char>) {
  return 1;
}

// `Entry` is ReadItem or WriteItem.
template <class Entry>
class ItemList {
 public:
  explicit ItemList(std::span<const Entry> entries) : entries_(entries) { pass_finished(); }

  bool empty() const { return entries_.empty(); }

  // Answers `take(entry, k)` for the next item, the one at place k of its entry. There must be one.
  template <class Take>
  auto front(Take take) const {
    return std::visit([&](const auto& entry) { return take(entry, index_); }, entries_.front());
  }

  // What is left of the entry at hand, where that is a span of such numbers; otherwise nothing.
  template <class Number>
  std::span<Number> numbers() const {
    const auto* all = empty() ? nullptr : std::get_if<std::span<Number>>(&entries_.front());
    return all ? all->subspan(index_) : std::span<Number>();
  }

  void pop_front(std::size_t count = 1) {
    index_ += count;
    pass_finished();
  }

 private:
  void pass_finished() {
    while (!entries_.empty() &&
           index_ >= std::visit([](const auto& entry) { return items_in(entry); }, entries_.front())) {
      entries_ = entries_.subspan(1);
      index_ = 0;
    }
  }

  std::span<const Entry> entries_;
  std::size_t index_ = 0;
};

}  // namespace vorn
