#include "records/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <optional>
#include <sstream>

#include "records/edit_format.h"

namespace vorn {
namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_sign(char c) {
  return c == '+' || c == '-';
}
char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
bool is_letter(char c) {
  return lower(c) >= 'a' && lower(c) <= 'z';
}

void skip_blanks(std::string_view& field) {
  field.remove_prefix(std::min(field.find_first_not_of(' '), field.size()));
}

// Takes the sign that `field` may begin with; true when it is a minus.
bool take_sign(std::string_view& field) {
  if (field.empty() || !is_sign(field.front())) return false;
  const bool minus = field.front() == '-';
  field.remove_prefix(1);
  return minus;
}

// A decimal number as it is read: digits times a power of ten.
class Decimal {
 public:
  void add_digit(char digit) {
    if (!digits_.empty() || digit != '0') digits_ += digit;
  }
  void shift(int powers) { power_ += powers; }

  // The nearest double; infinite when there is none so large.
  double value() const;

 private:
  std::string digits_;  // without leading zeros
  int power_ = 0;
};

// Those that a double holds exactly.
constexpr std::array<double, most_plain_decimals + 1> powers_of_ten{
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
    1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// The double nearest to the number that `text` shows as digits, "e" and a power; `outside` when it is too
// large or too small for one. (The libraries of some systems lack the direct way for reals; the other depends
// on a locale.)
double nearest(const std::string& text, double outside) {
#ifdef __cpp_lib_to_chars
  double value = outside;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
#else
  double value = outside;
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  stream >> value;
  return stream ? value : outside;
#endif
}

double Decimal::value() const {
  // Both operands of the last step are exact, so that its result is correctly rounded.
  if (digits_.empty()) return 0.0;
  if (digits_.size() <= 15 && std::abs(power_) <= 22) {
    double whole = 0.0;
    for (const char digit : digits_) whole = 10.0 * whole + (digit - '0');
    const double scale = powers_of_ten[static_cast<std::size_t>(std::abs(power_))];
    return power_ < 0 ? whole / scale : whole * scale;
  }
  const bool large = power_ + static_cast<long long>(digits_.size()) > 0;
  return nearest(digits_ + "e" + std::to_string(power_), large ? HUGE_VAL : 0.0);
}

// "Inf", "Infinity", "NaN", "NaN(...)", in letters of either case, blanks behind them.
Status read_name_of_number(std::string_view field, bool minus, double& value) {
  std::string name;
  for (const char c : field.substr(0, field.find_last_not_of(' ') + 1)) name += lower(c);
  const bool payload =
      name.starts_with("nan(") && name.ends_with(')') &&
      std::all_of(name.begin() + 4, name.end() - 1, [](char c) { return is_digit(c) || is_letter(c); });
  if (name == "nan" || payload)
    value = std::numeric_limits<double>::quiet_NaN();
  else if (name == "inf" || name == "infinity")
    value = minus ? -HUGE_VAL : HUGE_VAL;
  else
    return status::not_a_number;
  return status::ok;
}

// Larger powers of ten are taken for damage, not for numbers.
constexpr int largest_exponent = 9999;

// Reads an exponent with its letter, its sign or both. A sign with nothing but blanks behind it is an
// exponent of 0, as it is an integer of 0; one that ends the field is neither.
Status read_exponent(std::string_view field, int& exponent) {
  if (is_letter(field.front())) field.remove_prefix(1);
  skip_blanks(field);
  if (field.empty()) return status::not_a_number;
  const bool minus = take_sign(field);
  if (field.empty()) return status::not_a_number;
  int value = 0;
  for (const char c : field) {
    if (c == ' ') continue;
    if (!is_digit(c)) return status::not_a_number;
    value = std::min(10 * value + (c - '0'), largest_exponent + 1);
  }
  exponent = minus ? -value : value;
  return value > largest_exponent ? status::not_a_number : status::ok;
}

// Appends `text` right-justified in `width` columns, or asterisks.
void append_right(std::string& record, std::string_view text, std::size_t width) {
  if (text.size() > width) {
    record.append(width, '*');
    return;
  }
  record.append(width - text.size(), ' ');
  record += text;
}

// Deliberate: [infinite-plus] the plus sign of an infinite value gives way where there is no room for it.
void append_infinite(std::string& record, std::string_view sign, std::size_t width) {
  const bool spelled_out = width >= sign.size() + 8;
  const bool signed_ = sign == "-" || width >= sign.size() + 3;
  append_right(record, std::string(signed_ ? sign : "") + (spelled_out ? "Infinity" : "Inf"), width);
}

// `value`, which is no less than 0, with `decimals` digits behind the point.
std::string fixed(double value, int decimals) {
#ifdef __cpp_lib_to_chars
  constexpr std::size_t longest_whole_part = 310;
  std::string text(longest_whole_part + 1 + static_cast<std::size_t>(decimals), '\0');
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, decimals);
  text.resize(static_cast<std::size_t>(end.ptr - text.data()));
#else
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream.precision(decimals);
  stream << std::fixed << value;
  std::string text = stream.str();
#endif
  if (decimals == 0) text += '.';
  return text;
}

}  // namespace

double with_decimals(std::int32_t number, int decimals) {
  return number / powers_of_ten[static_cast<std::size_t>(decimals)];
}

Status read_integer(std::string_view field, std::int32_t& value) {
  skip_blanks(field);
  const bool signed_ = !field.empty() && is_sign(field.front());
  const bool minus = take_sign(field);
  if (signed_ && field.empty()) return status::not_a_number;
  const std::int64_t largest = std::int64_t{std::numeric_limits<std::int32_t>::max()} + (minus ? 1 : 0);
  std::int64_t number = 0;
  for (const char c : field) {
    if (c == ' ') continue;
    if (!is_digit(c)) return status::not_a_number;
    number = 10 * number + (c - '0');
    if (number > largest) return status::number_too_large;
  }
  value = static_cast<std::int32_t>(minus ? -number : number);
  return status::ok;
}

Status read_real(std::string_view field, int decimals, double& value) {
  skip_blanks(field);
  const bool minus = take_sign(field);
  skip_blanks(field);
  // Deliberate: [sign-alone] 0 for a real, though it is no integer.
  if (field.empty()) {
    value = 0.0;
    return status::ok;
  }
  if (lower(field.front()) == 'i' || lower(field.front()) == 'n')
    return read_name_of_number(field, minus, value);

  Decimal number;
  bool point = false;
  int exponent = 0;
  for (std::size_t k = 0; k < field.size(); ++k) {
    const char c = field[k];
    if (is_digit(c)) {
      number.add_digit(c);
      if (point) number.shift(-1);
    } else if (c == '.' && !point) {
      point = true;
    } else if (is_sign(c) || std::string_view("edq").find(lower(c)) != std::string_view::npos) {
      if (const Status bad = read_exponent(field.substr(k), exponent)) return bad;
      break;
    } else if (c != ' ') {
      return status::not_a_number;
    }
  }
  number.shift(exponent - (point ? 0 : decimals));
  value = minus ? -number.value() : number.value();
  return status::ok;
}

void append_integer(std::string& record, std::int32_t value, std::size_t width, bool plus) {
  std::array<char, 12> text{'+'};
  const std::size_t sign = plus && value >= 0 ? 1 : 0;
  const auto end = std::to_chars(text.data() + sign, text.data() + text.size(), value);
  append_right(record, {text.data(), static_cast<std::size_t>(end.ptr - text.data())}, width);
}

void append_real(std::string& record, double value, std::size_t width, int decimals, bool plus) {
  if (std::isnan(value)) return append_right(record, "NaN", width);
  const std::string sign = std::signbit(value) ? "-" : plus ? "+" : "";
  if (std::isinf(value)) return append_infinite(record, sign, width);
  const auto behind_point = static_cast<std::size_t>(decimals);
  if (behind_point >=
      width) {  // there is no room for the point: spare the digits, of which there may be millions
    record.append(width, '*');
    return;
  }
  std::string text = sign + fixed(std::abs(value), decimals);
  const bool zero_may_go = decimals > 0 && text[sign.size()] == '0';
  if (text.size() > width && zero_may_go) text.erase(sign.size(), 1);
  append_right(record, text, width);
}

}  // namespace vorn
