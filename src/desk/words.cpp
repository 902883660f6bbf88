#include "desk/words.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vorn {

std::string named(std::span<const std::string> names) {
  constexpr std::size_t most = 10;
  const std::size_t shown = std::min(names.size(), most);
  std::string text;
  for (std::size_t k = 0; k < shown; ++k) {
    const bool is_last = k + 1 == names.size();
    if (k > 0) text += is_last ? " and " : ", ";
    text += names[k];
  }
  if (names.size() > shown) text += " and " + std::to_string(names.size() - shown) + " more";
  return text;
}

std::string counted(std::int64_t count, std::string_view one) {
  return std::to_string(count) + " " + std::string(one) + (count == 1 ? "" : "s");
}

std::string two_decimals(double value) {
  std::array<char, 400> text;  // the largest double has 309 digits before its point
  const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::fixed, 2).ptr;
  const std::string_view written(text.data(), static_cast<std::size_t>(end - text.data()));
  return std::string(written == "-0.00" ? written.substr(1) : written);
}

}  // namespace vorn
