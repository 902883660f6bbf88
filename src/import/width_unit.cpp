#include "import/width_unit.h"

#include <algorithm>
#include <array>
#include <string>

#include "import/fields.h"

namespace vorn {
namespace {

struct UnitWord {
  std::string_view word;
  double unit;
};

// Tried in this order, anywhere in the words, which are in small letters and without blanks.
constexpr std::array parts = {
    UnitWord{"1/1000", 1000},    UnitWord{"0.001", 1000},      UnitWord{"0,001", 1000},
    UnitWord{"/1000", 1000},     UnitWord{"x1000", 1000},      UnitWord{"*1000", 1000},
    UnitWord{"10^-3", 1000},     UnitWord{"thousandth", 1000}, UnitWord{"micromet", 1000},
    UnitWord{"micron", 1000},    UnitWord{"mikromet", 1000},   UnitWord{"\xc2\xb5m", 1000},
    UnitWord{"\xce\xbcm", 1000}, UnitWord{"1/100", 100},       UnitWord{"0.01", 100},
    UnitWord{"0,01", 100},       UnitWord{"/100", 100},        UnitWord{"x100", 100},
    UnitWord{"*100", 100},       UnitWord{"10^-2", 100},       UnitWord{"hundredth", 100},
    UnitWord{"1/10", 10},        UnitWord{"0.1mm", 10},        UnitWord{"0,1mm", 10},
    UnitWord{"/10", 10},         UnitWord{"x10", 10},          UnitWord{"*10", 10},
    UnitWord{"tenth", 10},       UnitWord{"centimet", 0.1},    UnitWord{"millimet", 1}};

// Those that are too short to be looked for within words.
constexpr std::array whole = {UnitWord{"um", 1000}, UnitWord{"mm", 1}, UnitWord{"cm", 0.1},
                              UnitWord{"mym", 1000}};

std::string without_blanks_in(std::string_view words) {
  std::string all = lower_case(words);
  std::erase_if(all, [](char c) { return c == ' ' || c == '\t'; });
  std::size_t at = 0;
  // The sign of micro of older tables.
  while ((at = all.find('\xb5', at)) != std::string::npos) {
    if (at == 0 || all[at - 1] != '\xc2') all.insert(at++, 1, '\xc2');
    ++at;
  }
  return all;
}

bool is_letter(char c) {
  return c >= 'a' && c <= 'z';
}

// Of areas and volumes: mm2, mm^2.
bool is_power(char c) {
  return c == '2' || c == '3' || c == '^';
}

// Whether `word` stands in the text with no letter beside it, and not as an area.
bool stands_alone(std::string_view text, std::string_view word) {
  for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
    const bool before = at > 0 && is_letter(text[at - 1]);
    const std::size_t end = at + word.size();
    if (!before && (end == text.size() || (!is_letter(text[end]) && !is_power(text[end])))) return true;
  }
  return false;
}

}  // namespace

std::optional<double> unit_said(std::string_view words) {
  constexpr std::size_t most_looked_at = 200;
  const std::string text = without_blanks_in(words.substr(0, most_looked_at));
  const auto part = std::ranges::find_if(
      parts, [&](const UnitWord& one) { return text.find(one.word) != std::string::npos; });
  if (part != parts.end()) return part->unit;
  const std::string parted = lower_case(words.substr(0, most_looked_at));
  const auto one =
      std::ranges::find_if(whole, [&](const UnitWord& word) { return stands_alone(parted, word.word); });
  return one == whole.end() ? std::nullopt : std::optional(one->unit);
}

std::optional<double> unit_in_name(std::string_view name) {
  const std::size_t open = name.find_last_of("([{");
  if (open != std::string_view::npos) return unit_said(name.substr(open + 1));
  const std::size_t separator = name.find_last_of(" _.,-");
  if (separator == std::string_view::npos) return std::nullopt;
  const std::string_view last = name.substr(separator + 1);
  return last.find_first_of("0123456789") == std::string_view::npos ? unit_said(last) : std::nullopt;
}

std::string_view unit_words(double unit) {
  if (unit == 1000) return "thousandths of a millimetre";
  if (unit == 100) return "hundredths of a millimetre";
  if (unit == 10) return "tenths of a millimetre";
  return unit == 1 ? "millimetres" : "centimetres";
}

double unit_guessed(const ValuesSeen& values) {
  const bool points = values.has_decimals || values.has_points;
  if (points && values.middle <= most_mean_of_mm) return 1;
  return values.middle > least_mean_of_thousandths ? 1000 : 100;
}

}  // namespace vorn
