// What reads and writes by edit format put their items into and take them from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "records/text.h"

namespace vorn {

// An integer to be written; nothing stands for a value that no integer can show, written as asterisks.
using Integer = std::optional<std::int32_t>;

// round(1000 w), halves away from zero, the product formed in 64 bits; nothing when that is not a number or
// does not fit 32 bits. Every width and index of an output file goes through here.
Integer thousandths(double w);

// Where a read puts its items, in order. A span of numbers stands for that many items, one of characters for
// a text.
using ReadItem =
    std::variant<std::int32_t*, double*, std::span<char>, std::span<std::int32_t>, std::span<double>>;

// What a write takes its items from, in order.
using WriteItem = std::variant<Integer, double, std::string_view, std::span<const std::int32_t>,
                               std::span<const Integer>, std::span<const double>>;

template <std::size_t N>
ReadItem as_read_item(Text<N>& text) {
  return text.characters();
}
inline ReadItem as_read_item(std::int32_t& number) {
  return &number;
}
inline ReadItem as_read_item(double& number) {
  return &number;
}
inline ReadItem as_read_item(std::span<std::int32_t> numbers) {
  return numbers;
}
inline ReadItem as_read_item(std::span<double> numbers) {
  return numbers;
}

template <std::size_t N>
WriteItem as_write_item(const Text<N>& text) {
  return text.view();
}
inline WriteItem as_write_item(std::string_view text) {
  return text;
}
inline WriteItem as_write_item(std::int32_t number) {
  return Integer(number);
}
inline WriteItem as_write_item(Integer number) {
  return number;
}
inline WriteItem as_write_item(double number) {
  return number;
}
inline WriteItem as_write_item(std::span<const std::int32_t> numbers) {
  return numbers;
}
inline WriteItem as_write_item(std::span<const Integer> numbers) {
  return numbers;
}
inline WriteItem as_write_item(std::span<const double> numbers) {
  return numbers;
}

}  // namespace vorn
