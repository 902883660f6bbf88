#include "plot/font_metrics.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vorn {
namespace {

// Advance widths of the characters 32 to 126 and the height of a capital letter, in 2048ths of the font's
// size.
struct Metrics {
  std::array<std::int16_t, 95> widths;
  double capital;
};

// clang-format off
constexpr Metrics arial = {{
    569, 569, 727, 1139, 1139, 1821, 1366, 391, 682, 682, 797, 1196, 569, 682, 569, 569,              //  !"#$%&'()*+,-./
    1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 1139, 569, 569, 1196, 1196, 1196, 1139,     // 0 to 9 :;<=>?
    2079, 1366, 1366, 1479, 1479, 1366, 1251, 1593, 1479, 569, 1024, 1366, 1139, 1706, 1479, 1593,    // @ A to O
    1366, 1593, 1479, 1366, 1251, 1479, 1366, 1933, 1366, 1366, 1251, 569, 569, 569, 961, 1139,       // P to Z [\]^_
    682, 1139, 1139, 1024, 1139, 1139, 569, 1139, 1139, 455, 455, 1024, 455, 1706, 1139, 1139,        // ` a to o
    1139, 1139, 682, 1024, 569, 1139, 1024, 1479, 1024, 1024, 1024, 684, 532, 684, 1196}, 1409};      // p to z {|}~
constexpr Metrics times = {{
    512, 682, 836, 1024, 1024, 1706, 1593, 369, 682, 682, 1024, 1155, 512, 682, 512, 569,
    1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 1024, 569, 569, 1155, 1155, 1155, 909,
    1886, 1479, 1366, 1366, 1479, 1251, 1139, 1479, 1479, 682, 797, 1479, 1251, 1821, 1479, 1479,
    1139, 1479, 1366, 1139, 1251, 1479, 1479, 1933, 1479, 1479, 1251, 682, 569, 682, 961, 1024,
    682, 909, 1024, 909, 1024, 909, 682, 1024, 1024, 569, 569, 1024, 569, 1593, 1024, 1024,
    1024, 1024, 682, 797, 569, 1024, 1024, 1479, 1024, 1024, 909, 983, 410, 983, 1108}, 1341};
// clang-format on

// How many bytes the UTF-8 sequence at the start of `text` has; 0 where there is no valid one.
std::size_t utf8_length(std::string_view text) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
  const auto follows = [&](std::size_t i) { return (byte(i) & 0xC0u) == 0x80u; };
  const unsigned first = byte(0), second = byte(1);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return follows(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool overlong = first == 0xE0 && second < 0xA0, surrogate = first == 0xED && second > 0x9F;
    return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool overlong = first == 0xF0 && second < 0x90, too_large = first == 0xF4 && second > 0x8F;
    return follows(1) && follows(2) && follows(3) && !overlong && !too_large ? 4 : 0;
  }
  return 0;
}

}  // namespace

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = utf8_length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

double text_width(std::string_view text, double height, Font font) {
  const Metrics& metrics = font == Font::times ? times : arial;
  const bool utf8 = is_utf8(text);
  double width = 0;
  for (std::size_t i = 0; i < text.size(); i += utf8 ? utf8_length(text.substr(i)) : 1) {
    if (is_control(text[i])) continue;
    const auto code = static_cast<unsigned char>(text[i]);
    width += metrics.widths[code < 127 ? code - 32u : '0' - 32u];
  }
  return width * height / metrics.capital;
}

Box text_extent(const Mark& text) {
  const PagePoint at = text.points.front();
  const std::string_view writing = text.writing;
  const std::size_t blanks = std::min(writing.find_first_not_of(' '), writing.size());
  return {at.x + text_width(writing.substr(0, blanks), text.height, text.font), at.y,
          at.x + text_width(writing, text.height, text.font), at.y + text.height};
}

}  // namespace vorn
