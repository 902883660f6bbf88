// Text of a fixed length, padded with blanks: the names, labels and message lines of the tables.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace vorn {

// `text` without its trailing blanks.
inline std::string_view trimmed(std::string_view text) {
  const auto end = text.find_last_not_of(' ');
  return text.substr(0, end == std::string_view::npos ? 0 : end + 1);
}

// A text of exactly N bytes. What is longer is cut, what is shorter is padded with blanks.
template <std::size_t N>
class Text {
 public:
  Text() { chars_.fill(' '); }
  Text(std::string_view text) : Text() {  // NOLINT: a text is written wherever a label is wanted
    std::copy_n(text.begin(), std::min(text.size(), N), chars_.begin());
  }
  Text(const char* text) : Text(std::string_view(text)) {}         // NOLINT
  Text(const std::string& text) : Text(std::string_view(text)) {}  // NOLINT

  static constexpr std::size_t length = N;

  // All N characters, blanks included.
  std::string_view view() const { return {chars_.data(), N}; }
  // The characters up to the last one that is not a blank.
  std::string_view trimmed() const { return vorn::trimmed(view()); }
  bool blank() const { return trimmed().empty(); }
  // All N characters, to be written over.
  std::span<char> characters() { return chars_; }

  // Character k, counted from 1 as columns are.
  char& operator()(std::size_t k) { return chars_.at(k - 1); }
  char operator()(std::size_t k) const { return chars_.at(k - 1); }

  bool operator==(const Text&) const = default;

 private:
  std::array<char, N> chars_;
};

}  // namespace vorn
