// What the standard library that comes with emscripten lacks of C++20. Every file of the browser edition is
// compiled behind this one (-include), and none of any other edition.
#pragma once

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

// Algorithms of whole ranges, as far as the program uses them: by the older ones of two iterators.
namespace std::ranges {  // NOLINT(cert-dcl58-cpp): it stands in for the library here

template <class Projection>
auto projected(Projection& projection) {
  return [&projection](auto&& value) -> decltype(auto) {
    return std::invoke(projection, std::forward<decltype(value)>(value));
  };
}
template <class Less, class Projection>
auto projected(Less& less, Projection& projection) {
  return [&less, &projection](auto&& a, auto&& b) {
    return static_cast<bool>(std::invoke(less, std::invoke(projection, std::forward<decltype(a)>(a)),
                                         std::invoke(projection, std::forward<decltype(b)>(b))));
  };
}

template <class Range, class Predicate, class Projection = std::identity>
auto find_if(Range&& range, Predicate predicate, Projection projection = {}) {
  const auto at = projected(projection);
  return std::find_if(std::begin(range), std::end(range),
                      [&](auto&& value) { return std::invoke(predicate, at(value)); });
}
template <class Range, class Predicate, class Projection = std::identity>
auto find_if_not(Range&& range, Predicate predicate, Projection projection = {}) {
  return ranges::find_if(
      range, [&](auto&& value) { return !std::invoke(predicate, value); }, projection);
}
template <class Range, class Value, class Projection = std::identity>
auto find(Range&& range, const Value& wanted, Projection projection = {}) {
  const auto at = projected(projection);
  return std::find_if(std::begin(range), std::end(range), [&](auto&& value) { return at(value) == wanted; });
}
template <class Range, class Predicate, class Projection = std::identity>
bool any_of(Range&& range, Predicate predicate, Projection projection = {}) {
  return ranges::find_if(range, predicate, projection) != std::end(range);
}
template <class Range, class Predicate, class Projection = std::identity>
bool none_of(Range&& range, Predicate predicate, Projection projection = {}) {
  return !ranges::any_of(range, predicate, projection);
}
template <class Range, class Predicate, class Projection = std::identity>
bool all_of(Range&& range, Predicate predicate, Projection projection = {}) {
  return !ranges::any_of(
      range, [&](auto&& value) { return !std::invoke(predicate, value); }, projection);
}
template <class Range, class Predicate, class Projection = std::identity>
auto count_if(Range&& range, Predicate predicate, Projection projection = {}) {
  const auto at = projected(projection);
  return std::count_if(std::begin(range), std::end(range),
                       [&](auto&& value) { return std::invoke(predicate, at(value)); });
}
template <class Range, class Value, class Projection = std::identity>
auto count(Range&& range, const Value& wanted, Projection projection = {}) {
  const auto at = projected(projection);
  return std::count_if(std::begin(range), std::end(range), [&](auto&& value) { return at(value) == wanted; });
}
template <class A, class B, class Same = std::equal_to<>, class OfA = std::identity,
          class OfB = std::identity>
bool equal(A&& a, B&& b, Same same = {}, OfA of_a = {}, OfB of_b = {}) {
  return std::equal(std::begin(a), std::end(a), std::begin(b), std::end(b), [&](auto&& x, auto&& y) {
    return std::invoke(same, std::invoke(of_a, x), std::invoke(of_b, y));
  });
}
template <class Range, class Same = std::equal_to<>, class Projection = std::identity>
auto adjacent_find(Range&& range, Same same = {}, Projection projection = {}) {
  return std::adjacent_find(std::begin(range), std::end(range), projected(same, projection));
}
template <class Range, class Less = std::less<>, class Projection = std::identity>
bool is_sorted(Range&& range, Less less = {}, Projection projection = {}) {
  return std::is_sorted(std::begin(range), std::end(range), projected(less, projection));
}
template <class Range, class Value>
void fill(Range&& range, const Value& value) {
  std::fill(std::begin(range), std::end(range), value);
}
template <class Range, class Out>
void copy(Range&& range, Out out) {
  std::copy(std::begin(range), std::end(range), out);
}
template <class Range, class Out, class Change>
void transform(Range&& range, Out out, Change change) {
  std::transform(std::begin(range), std::end(range), out, change);
}
template <class Range>
void reverse(Range&& range) {
  std::reverse(std::begin(range), std::end(range));
}
template <class Range, class Value>
void replace(Range&& range, const Value& from, const Value& to) {
  std::replace(std::begin(range), std::end(range), from, to);
}
template <class Range, class Predicate, class Value>
void replace_if(Range&& range, Predicate predicate, const Value& to) {
  std::replace_if(std::begin(range), std::end(range), predicate, to);
}
template <class Range, class Action>
void for_each(Range&& range, Action action) {
  std::for_each(std::begin(range), std::end(range), action);
}
template <class Range, class Less = std::less<>, class Projection = std::identity>
void sort(Range&& range, Less less = {}, Projection projection = {}) {
  std::sort(std::begin(range), std::end(range), projected(less, projection));
}
template <class Range, class Less = std::less<>, class Projection = std::identity>
void stable_sort(Range&& range, Less less = {}, Projection projection = {}) {
  std::stable_sort(std::begin(range), std::end(range), projected(less, projection));
}
template <class Range, class Value, class Less = std::less<>, class Projection = std::identity>
auto lower_bound(Range&& range, const Value& value, Less less = {}, Projection projection = {}) {
  const auto at = projected(projection);
  return std::lower_bound(std::begin(range), std::end(range), value,
                          [&](auto&& element, const Value& wanted) {
                            return static_cast<bool>(std::invoke(less, at(element), wanted));
                          });
}
template <class Range, class Value, class Less = std::less<>, class Projection = std::identity>
auto upper_bound(Range&& range, const Value& value, Less less = {}, Projection projection = {}) {
  const auto at = projected(projection);
  return std::upper_bound(std::begin(range), std::end(range), value,
                          [&](const Value& wanted, auto&& element) {
                            return static_cast<bool>(std::invoke(less, wanted, at(element)));
                          });
}
template <class Range, class Less = std::less<>, class Projection = std::identity>
auto min_element(Range&& range, Less less = {}, Projection projection = {}) {
  return std::min_element(std::begin(range), std::end(range), projected(less, projection));
}
template <class Range, class Less = std::less<>, class Projection = std::identity>
auto max_element(Range&& range, Less less = {}, Projection projection = {}) {
  return std::max_element(std::begin(range), std::end(range), projected(less, projection));
}
template <class Range>
auto min(Range&& range) {
  return *std::min_element(std::begin(range), std::end(range));
}
template <class Range>
auto max(Range&& range) {
  return *std::max_element(std::begin(range), std::end(range));
}
template <class Range, class Less = std::less<>, class Projection = std::identity>
auto minmax(Range&& range, Less less = {}, Projection projection = {}) {
  using Value = std::remove_cvref_t<decltype(*std::begin(range))>;
  struct MinMax {
    Value min, max;
  };
  const auto [low, high] =
      std::minmax_element(std::begin(range), std::end(range), projected(less, projection));
  return MinMax{*low, *high};
}

}  // namespace std::ranges

namespace std {

template <class To, class From>
To bit_cast(const From& from) noexcept {
  static_assert(sizeof(To) == sizeof(From) && is_trivially_copyable_v<To> && is_trivially_copyable_v<From>);
  To to;
  memcpy(&to, &from, sizeof(To));
  return to;
}

template <class Array>
unique_ptr<Array> make_unique_for_overwrite(size_t size) {
  return unique_ptr<Array>(new remove_extent_t<Array>[size]);
}

// Decimal numbers, as the C library writes and reads them: rounded rightly, and with a point, since no other
// locale is ever set.
#define __cpp_lib_to_chars 201611L  // NOLINT(bugprone-reserved-identifier)

inline to_chars_result to_chars(char* first, char* last, double value, chars_format format, int precision) {
  const char* const form = format == chars_format::fixed        ? "%.*f"
                           : format == chars_format::scientific ? "%.*e"
                                                                : "%.*g";
  const int needed = snprintf(nullptr, 0, form, precision, value);
  if (needed < 0 || needed > last - first) return {last, errc::value_too_large};
  string text(static_cast<size_t>(needed) + 1, '\0');
  snprintf(text.data(), text.size(), form, precision, value);
  return {std::copy_n(text.data(), needed, first), errc()};
}

// Of what is no number the answer stands at its beginning. What is too large or too small for a double leaves
// `value` as it is.
inline from_chars_result from_chars(const char* first, const char* last, double& value) {
  const string text(first, last);
  if (text.empty() || string_view("+ \t\n\v\f\r").find(text.front()) != string_view::npos)
    return {first, errc::invalid_argument};
  char* end = nullptr;
  const double read = strtod(text.c_str(), &end);
  const char* const behind = first + (end - text.c_str());
  if (behind == first) return {first, errc::invalid_argument};
  const string_view digits(text.data(), static_cast<size_t>(end - text.c_str()));
  const bool is_nought =
      digits.substr(0, digits.find_first_of("eE")).find_first_of("123456789") == string_view::npos;
  if (isinf(read) || (read == 0 && !is_nought)) return {behind, errc::result_out_of_range};
  value = read;
  return {behind, errc()};
}

}  // namespace std
