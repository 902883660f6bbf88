#include "import/source_text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vorn {
namespace {

constexpr std::string_view mark = "\xef\xbb\xbf", small_end_mark = "\xff\xfe", big_end_mark = "\xfe\xff";
constexpr char32_t no_character = 0xfffd;

void append_utf_8(std::string& text, char32_t c) {
  const auto put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xc0 | (c >> 6U));
    put(0x80 | (c & 0x3fU));
  } else if (c < 0x10000) {
    put(0xe0 | (c >> 12U));
    put(0x80 | ((c >> 6U) & 0x3fU));
    put(0x80 | (c & 0x3fU));
  } else {
    put(0xf0 | (c >> 18U));
    put(0x80 | ((c >> 12U) & 0x3fU));
    put(0x80 | ((c >> 6U) & 0x3fU));
    put(0x80 | (c & 0x3fU));
  }
}

std::string from_utf_16(std::string_view bytes, bool small_end) {
  const auto unit = [&](std::size_t at) -> char32_t {
    const auto one = static_cast<unsigned char>(bytes[at]), two = static_cast<unsigned char>(bytes[at + 1]);
    return small_end ? one | (two << 8U) : two | (one << 8U);
  };
  std::string text;
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const char32_t c = unit(at);
    const bool high = c >= 0xd800 && c < 0xdc00, low = c >= 0xdc00 && c < 0xe000;
    const char32_t next = high && at + 3 < bytes.size() ? unit(at + 2) : 0;
    if (next >= 0xdc00 && next < 0xe000) {
      append_utf_8(text, 0x10000 + ((c - 0xd800) << 10U) + (next - 0xdc00));
      at += 2;
    } else {
      append_utf_8(text, high || low ? no_character : c);
    }
  }
  return text;
}

// The character that `text` begins with, which is taken from it; no_character where it is no UTF-8, of which
// one byte is taken.
char32_t take_character(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = first < 0x80                    ? 1
                             : first >= 0xc2 && first < 0xe0 ? 2
                             : first >= 0xe0 && first < 0xf0 ? 3
                             : first >= 0xf0 && first < 0xf5 ? 4
                                                             : 0;
  const auto follows = [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) == 0x80; };
  if (length == 0 || text.size() < length || !std::ranges::all_of(text.substr(1, length - 1), follows)) {
    text.remove_prefix(1);
    return no_character;
  }
  char32_t c = length == 1 ? first : first & (0xffU >> (length + 1));
  for (const char next : text.substr(1, length - 1))
    c = (c << 6U) | (static_cast<unsigned char>(next) & 0x3fU);
  text.remove_prefix(length);
  return c;
}

// Of Windows, from 0x80 to 0x9f; above it each is its own number.
constexpr std::array<char16_t, 32> windows = {0x20ac, 0xfffd, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                              0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0xfffd, 0x017d, 0xfffd,
                                              0xfffd, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                              0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0xfffd, 0x017e, 0x0178};

// Letters without their marks: from 0xc0 on, and from 0x100 on. "_" where there is none.
constexpr std::string_view of_latin_1 = "AAAAAAACEEEEIIIIDNOOOOO_OUUUUYTsaaaaaaaceeeeiiiidnooooo_ouuuuyty";
constexpr std::string_view of_latin_a =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIiIiJjKkkLlLlLlLlLlNnNnNnnNnOoOoOoOoRrRrRrSsSsSsSsTtTtTt"
    "UuUuUuUuUuUuWwYyYZzZzZzs";

char ascii_of(char32_t c) {
  constexpr std::string_view kept = "_-.+/()";
  if (c < 0x80) {
    const char letter = static_cast<char>(c);
    const bool is_kept = (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
                         (letter >= 'a' && letter <= 'z') || kept.find(letter) != std::string_view::npos;
    return is_kept ? letter : '_';
  }
  if (c >= 0xc0 && c < 0xc0 + of_latin_1.size()) return of_latin_1[c - 0xc0];
  if (c >= 0x100 && c < 0x100 + of_latin_a.size()) return of_latin_a[c - 0x100];
  return '_';
}

enum class ByteOrder { none, small_end, big_end };

// Of UTF-16 without a mark.
ByteOrder order_by_zeros(std::string_view file) {
  constexpr std::size_t looked_at = 4096, fewest = 16;
  const std::string_view text = file.substr(0, looked_at);
  std::size_t even = 0, odd = 0;
  for (std::size_t k = 0; k < text.size(); ++k) (k % 2 == 0 ? even : odd) += text[k] == '\0' ? 1U : 0U;
  const auto most = [&](std::size_t zeros) { return 10 * zeros >= 9 * (text.size() / 2); };
  if (file.size() % 2 != 0 || text.size() < fewest) return ByteOrder::none;
  if (even == 0 && most(odd)) return ByteOrder::small_end;
  return odd == 0 && most(even) ? ByteOrder::big_end : ByteOrder::none;
}

std::string_view without_zeros(std::string_view text) {
  return text.substr(0, text.find_last_not_of('\0') + 1);
}

std::string_view without_ctrl_z(std::string_view text) {
  const std::size_t last = text.find_last_not_of("\x1a\r\n");
  const std::size_t first = text.find('\x1a', last == std::string_view::npos ? 0 : last);
  return text.substr(0, std::min(first, text.size()));
}

}  // namespace

SourceText::SourceText(std::string_view file) : bytes(file) {
  const bool has_mark = file.starts_with(small_end_mark) || file.starts_with(big_end_mark);
  const ByteOrder order = file.starts_with(small_end_mark) ? ByteOrder::small_end
                          : has_mark                       ? ByteOrder::big_end
                                                           : order_by_zeros(file);
  is_utf_16 = order != ByteOrder::none;
  if (is_utf_16) {
    decoded_ = from_utf_16(file.substr(has_mark ? 2 : 0), order == ByteOrder::small_end);
    bytes = decoded_;
  } else if (file.starts_with(mark)) {
    bytes.remove_prefix(mark.size());
  }
  bytes = without_ctrl_z(without_zeros(bytes));
}

bool is_utf_8(std::string_view text) {
  while (!text.empty()) {
    const bool plain = static_cast<unsigned char>(text.front()) < 0x80;
    if (plain)
      text.remove_prefix(1);
    else if (take_character(text) == no_character)
      return false;
  }
  return true;
}

std::string as_utf_8(std::string_view text) {
  if (is_utf_8(text)) return std::string(text);
  std::string all;
  for (const char one : text) {
    const auto byte = static_cast<unsigned char>(one);
    append_utf_8(all, byte >= 0x80 && byte < 0xa0 ? windows.at(byte - 0x80U) : char32_t{byte});
  }
  return all;
}

std::string as_ascii(std::string_view utf_8) {
  std::string all;
  while (!utf_8.empty()) all += ascii_of(take_character(utf_8));
  return all;
}

}  // namespace vorn
