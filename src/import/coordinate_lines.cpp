#include "import/coordinate_lines.h"

#include <algorithm>
#include <cmath>

#include "import/fields.h"

namespace vorn {
namespace {

constexpr double farthest = 1e6;  // mm
constexpr std::size_t most_numbers = 5, longest_line = 2'000;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string_view before_comment(std::string_view text) {
  return bare(text.substr(0, std::min(text.find('#'), text.size())));
}

// Whether the line may hold a point: a digit, or a sign, at its beginning or behind one letter.
bool begins_as_point(std::string_view text) {
  const auto begins_number = [](std::string_view rest) {
    return !rest.empty() && (is_digit(rest[0]) || std::string_view("+-.").find(rest[0]) < 3);
  };
  if (begins_number(text)) return true;
  return text.size() > 1 && is_letter(text[0]) && begins_number(bare(text.substr(1)));
}

// The end of the number that `text` begins with.
std::size_t number_end(std::string_view text, bool decimal_commas) {
  std::size_t at = std::min(text.find_first_not_of("+-"), text.size());
  bool has_point = false;
  for (; at < text.size(); ++at) {
    const bool is_point = text[at] == '.' || (decimal_commas && text[at] == ',');
    if (is_point && has_point) break;
    if (!is_point && !is_digit(text[at])) break;
    has_point = has_point || is_point;
  }
  return at;
}

// Takes what parts numbers: blanks, and one comma or semicolon.
void take_separator(std::string_view& text) {
  text = bare(text);
  if (text.starts_with(',') || text.starts_with(';')) text = bare(text.substr(1));
}

std::string_view first_of(std::string_view text) {
  return text.substr(0, longest_line);
}

}  // namespace

double distance(const PathPoint& one, const PathPoint& other) {
  return std::hypot(one.x - other.x, one.y - other.y);
}

bool has_decimal_commas(std::span<const FileLine> lines) {
  bool any = false;
  for (const FileLine& line : lines) {
    const std::string_view text = before_comment(first_of(line.text));
    if (!begins_as_point(text)) continue;
    if (text.find('.') != std::string_view::npos) return false;
    // "12,5;7,25", "12,5 7,25", "12,5,7,25"; of "12,5" the comma parts whole numbers.
    if (std::ranges::count(text, ',') < 2 && text.find(';') == std::string_view::npos) return false;
    any = true;
  }
  return any;
}

std::optional<PathLine> path_line(std::string_view text, bool decimal_commas) {
  if (text.size() > longest_line) return std::nullopt;
  const std::size_t hash = std::min(text.find('#'), text.size());
  std::string_view rest = bare(text.substr(0, hash));
  if (!begins_as_point(rest)) return std::nullopt;
  PathLine line;
  line.comment = bare(text.substr(std::min(hash + 1, text.size())));
  if (is_letter(rest[0])) {
    line.mark = static_cast<char>(rest[0] >= 'a' ? rest[0] - 'a' + 'A' : rest[0]);
    rest = bare(rest.substr(1));
  }
  while (!rest.empty() && line.numbers.size() < most_numbers) {
    const std::size_t end = number_end(rest, decimal_commas);
    const auto number = number_in(rest.substr(0, end), decimal_commas);
    if (!number || std::abs(number->value) > farthest) return std::nullopt;
    line.numbers.push_back(number->value);
    rest.remove_prefix(end);
    take_separator(rest);
  }
  return line;
}

std::vector<KeyedWords> keyed_words(std::string_view text) {
  constexpr std::size_t most = 50;
  text = bare(first_of(text));
  while (text.starts_with('#')) text = bare(text.substr(1));
  if (lower_case(text.substr(0, 2)) == "c ") text = bare(text.substr(2));
  std::vector<KeyedWords> all;
  while (!text.empty() && all.size() < most) {
    const std::size_t end = std::min(text.find(';'), text.size());
    const std::string_view part = bare(text.substr(0, end));
    const std::size_t word = std::min(part.find_first_of("=: \t"), part.size());
    std::string_view value = bare(part.substr(word));
    if (value.starts_with('=') || value.starts_with(':')) value = bare(value.substr(1));
    all.push_back({lower_case(part.substr(0, word)), value});
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return all;
}

}  // namespace vorn
