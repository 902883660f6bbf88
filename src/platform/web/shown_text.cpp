#include "platform/web/shown_text.h"

#include <cstddef>
#include <cstdint>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

std::string latin_1(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x80) {
      text += c;
    } else {
      text += {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 0x3F))};
    }
  }
  return text;
}

// Of valid UTF-8.
std::size_t length_at(std::string_view text, std::size_t k) {
  const auto first = static_cast<unsigned char>(text[k]);
  return first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

std::uint32_t code_of(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  if (character.size() == 1) return first;
  std::uint32_t code = first & (0xFFU >> (character.size() + 1));
  for (const char c : character.substr(1)) code = code << 6 | (static_cast<unsigned char>(c) & 0x3F);
  return code;
}

bool is_shown(std::uint32_t code) {
  const bool is_control = code < 0x20 || (code >= 0x7F && code < 0xA0);
  const bool is_no_character = (code >= 0xFDD0 && code <= 0xFDEF) || (code & 0xFFFE) == 0xFFFE;
  return !is_control && !is_no_character;
}

}  // namespace

std::string shown_text(std::string_view bytes) {
  const std::string all = is_utf8(bytes) ? std::string(bytes) : latin_1(bytes);
  std::string shown;
  for (std::size_t k = 0; k < all.size(); k += length_at(all, k)) {
    const std::string_view character = std::string_view(all).substr(k, length_at(all, k));
    if (is_shown(code_of(character))) shown += character;
  }
  return shown;
}

std::string shown_lines(std::string_view bytes) {
  std::string shown;
  for (;;) {
    const std::size_t end = bytes.find('\n');
    shown += shown_text(bytes.substr(0, end));
    if (end == std::string_view::npos) return shown;
    shown += '\n';
    bytes.remove_prefix(end + 1);
  }
}

}  // namespace vorn
