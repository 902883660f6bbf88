#include "plot/page.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <ostream>

namespace vorn {
namespace {

constexpr std::array<std::string_view, 5> kind_names = {"fill", "outline", "line", "text", "label"};
constexpr std::array<char, 3> align_letters = {'l', 'c', 'r'};

// At most two decimals, no trailing zeros, never "-0".
std::string number(double value) {
  std::array<char, 400> digits;  // to_chars, because a window system may set a locale with decimal commas
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 2);
  std::string text(digits.data(), end.ptr);
  if (text.find('.') != std::string::npos) {
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char byte : text) {
    if (is_control(byte)) {
      std::array<char, 5> code;
      std::snprintf(code.data(), code.size(), "\\x%02X", static_cast<unsigned>(byte));
      result += code.data();
      continue;
    }
    if (byte == '"' || byte == '\\') result += '\\';
    result += byte;
  }
  return result + '"';
}

void write_mark(std::ostream& out, const Mark& mark) {
  const bool label = mark.kind == Mark::Kind::label;
  const bool writing = label || mark.kind == Mark::Kind::text;
  out << kind_names[static_cast<std::size_t>(mark.kind)] << ' ' << number_of(mark.colour);
  if (writing) out << ' ' << number(mark.height);
  if (label) out << ' ' << align_letters[static_cast<std::size_t>(mark.align)] << ' ' << mark.angle;
  for (const PagePoint& point : mark.points) out << ' ' << number(point.x) << ' ' << number(point.y);
  if (writing) out << ' ' << quoted(mark.writing);
  out << '\n';
}

}  // namespace

void Page::write_text(std::ostream& out) const {
  if (has_own_size_) out << "size " << across_ << ' ' << down_ << '\n';
  for (const Mark& mark : marks_) write_mark(out, mark);
}

std::string_view without_trailing_blanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace vorn
