#include "import/fields.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "records/number_text.h"

namespace vorn {
namespace {

constexpr std::size_t longest_number = 40;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Takes the digits that `rest` begins with; how many.
int take_digits(std::string_view& rest) {
  const auto end = std::find_if_not(rest.begin(), rest.end(), is_digit);
  const auto count = static_cast<std::size_t>(end - rest.begin());
  rest.remove_prefix(count);
  return static_cast<int>(count);
}

void take_sign(std::string_view& rest) {
  if (rest.starts_with('+') || rest.starts_with('-')) rest.remove_prefix(1);
}

bool takes_exponent(std::string_view& rest) {
  constexpr int most_digits = 3;
  if (rest.empty() || lower(rest.front()) != 'e') return true;
  rest.remove_prefix(1);
  take_sign(rest);
  const int digits = take_digits(rest);
  return digits >= 1 && digits <= most_digits;
}

}  // namespace

std::optional<FieldNumber> number_in(std::string_view text, bool commas) {
  text = bare(text);
  if (text.empty() || text.size() > longest_number) return std::nullopt;
  FieldNumber number;
  std::string_view rest = text;
  take_sign(rest);
  const int whole = take_digits(rest);
  if (rest.starts_with('.') || (commas && rest.starts_with(','))) {
    number.comma = rest.front() == ',';
    rest.remove_prefix(1);
    number.decimals = take_digits(rest);
  }
  if (whole + number.decimals == 0 || !takes_exponent(rest) || !rest.empty()) return std::nullopt;
  std::string plain(text);
  std::ranges::replace(plain, ',', '.');
  if (read_real(plain, 0, number.value) != status::ok || !std::isfinite(number.value)) return std::nullopt;
  return number;
}

std::optional<std::int64_t> whole_number_in(std::string_view text) {
  constexpr double largest = 1e9;
  constexpr std::size_t most_digits = 9;
  if (!text.empty() && text.size() <= most_digits && std::ranges::all_of(text, is_digit)) {
    std::int64_t whole = 0;
    for (const char digit : text) whole = 10 * whole + (digit - '0');
    return whole;
  }
  const auto number = number_in(text, false);
  if (!number || std::abs(number->value) > largest || number->value != std::floor(number->value))
    return std::nullopt;
  return static_cast<std::int64_t>(number->value);
}

namespace {

// The one that is a year where the three are those of a date; nothing where they are none.
std::optional<std::int64_t> year_of_date(std::string_view first, std::string_view second,
                                         std::string_view third) {
  const auto is_part = [](std::string_view text, std::size_t least, std::size_t most) {
    return text.size() >= least && text.size() <= most && std::ranges::all_of(text, is_digit);
  };
  if (!is_part(second, 1, 2)) return std::nullopt;
  if (is_part(first, 4, 4) && is_part(third, 1, 2)) return whole_number_in(first);
  return is_part(first, 1, 2) && is_part(third, 4, 4) ? whole_number_in(third) : std::nullopt;
}

std::optional<std::int64_t> year_of_date(std::string_view text) {
  constexpr std::size_t fewest = 8;
  text = text.substr(0, text.find_first_of("T "));  // what follows is the time of day
  const std::size_t sign = std::min(text.find_first_of("-/."), text.size());
  if (text.size() < fewest || sign == text.size()) return std::nullopt;
  const std::size_t next = text.find(text[sign], sign + 1);
  if (next == std::string_view::npos) return std::nullopt;
  return year_of_date(text.substr(0, sign), text.substr(sign + 1, next - sign - 1), text.substr(next + 1));
}

}  // namespace

std::optional<WrittenYear> year_written(std::string_view text) {
  constexpr std::size_t longest = 40;
  text = bare(text.substr(0, longest + 1));
  if (text.size() > longest) return std::nullopt;
  if (const auto year = whole_number_in(text)) return WrittenYear{*year};
  if (const auto year = year_of_date(text)) return WrittenYear{*year, true};
  if (!text.starts_with('X') || text.size() < 2) return std::nullopt;
  const bool is_early = text[1] == '.';
  text.remove_prefix(is_early ? 2 : 1);
  if (text.empty() || !std::ranges::all_of(text, is_digit)) return std::nullopt;
  const auto year = whole_number_in(text);
  return year ? std::optional(WrittenYear{is_early ? -*year : *year}) : std::nullopt;
}

bool says_missing(std::string_view text) {
  constexpr std::array<std::string_view, 18> words = {"",    "na",   "n/a",     "#n/a", "nan",  "-nan",
                                                      ".",   "..",   "...",     "-",    "--",   "---",
                                                      "#nv", "n.a.", "missing", "null", "none", "?"};
  text = bare(text);
  if (!text.empty() && is_digit(text.front())) return false;
  return text.size() <= 7 && std::ranges::find(words, lower_case(text)) != words.end();
}

std::string_view bare(std::string_view text) {
  constexpr std::string_view no_break = "\xc2\xa0", blanks = " \t\v\f";
  for (;;) {
    const std::size_t before = text.size();
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    text = text.substr(0, text.find_last_not_of(blanks) + 1);
    if (text.starts_with(no_break)) text.remove_prefix(no_break.size());
    if (text.ends_with(no_break)) text.remove_suffix(no_break.size());
    if (text.size() == before) return text;
  }
}

std::string decimal(double value, int decimals) {
  constexpr std::size_t widest = 24;
  std::string text;
  append_real(text, value, widest, decimals, false);
  return std::string(bare(text));
}

std::string lower_case(std::string_view text) {
  std::string all(text);
  std::ranges::transform(all, all.begin(), lower);
  return all;
}

std::string letters_of(std::string_view text) {
  std::string all;
  for (const char c : text) {
    const char small = lower(c);
    if ((small >= 'a' && small <= 'z') || is_digit(small) || static_cast<unsigned char>(c) >= 0x80)
      all += small;
  }
  return all;
}

}  // namespace vorn
