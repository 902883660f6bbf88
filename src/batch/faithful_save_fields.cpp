#include "batch/faithful_save_fields.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "records/number_text.h"

namespace vorn {
namespace {

constexpr std::size_t most_decimals_of_a_format = 9;
constexpr std::string_view digits_and_signs = "+-0123456789";

std::string_view part(std::string_view text, std::size_t from, std::size_t length) {
  return text.substr(std::min(from, text.size()), length);
}

// Takes the number that a text begins with; 0 where there is none, or one that no format has.
std::size_t take_number(std::string_view& text) {
  std::size_t number = 0;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failed != std::errc() || number > 1'000) return 0;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

std::string right_aligned(std::string_view digits, std::size_t width) {
  return std::string(width - std::min(width, digits.size()), ' ') + std::string(digits);
}

// Whether the rings of a line that is to be written, from `at` on, are those of one line that was there.
std::optional<std::size_t> line_before(std::span<const SavedRing> rings, std::size_t values_before,
                                       std::size_t a_line) {
  if (rings.empty() || !rings.front().kept || *rings.front().kept % a_line != 0) return std::nullopt;
  const std::size_t first = *rings.front().kept;
  for (std::size_t k = 0; k < rings.size(); ++k) {
    if (rings[k].kept != first + k) return std::nullopt;
  }
  if (rings.size() != std::min(a_line, values_before - first)) return std::nullopt;
  return first / a_line;
}

std::string text_of(std::span<const SavedRing> rings, const StandingCore& manner, std::size_t width) {
  std::string text;
  for (const SavedRing& ring : rings) {
    std::string field = ring.kept ? manner.fields[*ring.kept] : right_aligned(ring.digits, width);
    field.resize(std::max(field.size(), width), ' ');
    text += field;
  }
  return text;
}

void fill_up(std::string& text, const ValueColumns& columns, LineRest rest) {
  if (rest == LineRest::blanks) text.resize(std::max(text.size(), columns.length()), ' ');
  while (rest == LineRest::zeros && text.size() < columns.length()) text += right_aligned("0", columns.width);
}

}  // namespace

std::size_t ValueColumns::lines_for(std::size_t values) const {
  return std::max<std::size_t>(1, (values + a_line - 1) / a_line);
}

std::optional<ValueFormat> value_format(std::string_view columns) {
  std::string all(columns);
  std::erase(all, ' ');
  std::string_view text = all;
  if (!text.starts_with('(')) return std::nullopt;
  text.remove_prefix(1);
  ValueFormat format;
  const bool is_counted = !text.empty() && text.front() >= '0' && text.front() <= '9';
  format.columns.a_line = is_counted ? take_number(text) : 1;
  if (text.empty() || std::string_view("FIfi").find(text.front()) == std::string_view::npos)
    return std::nullopt;
  text.remove_prefix(1);
  format.columns.width = take_number(text);
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    format.decimals = take_number(text);
    if (text.starts_with('0')) text.remove_prefix(1);
  }
  const bool is_taken = text == ")" && format.columns.a_line > 0 && format.columns.width > 0 &&
                        format.decimals <= most_decimals_of_a_format;
  return is_taken ? std::optional(format) : std::nullopt;
}

std::vector<std::string> fields_on(std::span<const FileLine> lines, std::size_t values,
                                   const ValueColumns& columns) {
  std::vector<std::string> all;
  for (std::size_t k = 0; k < values; ++k)
    all.emplace_back(part(lines[k / columns.a_line].text, k % columns.a_line * columns.width, columns.width));
  return all;
}

int most_decimals(std::span<const std::string> fields) {
  std::size_t most = 0;
  for (const std::string& field : fields) {
    const std::size_t point = field.find('.');
    if (point == std::string::npos) continue;
    const std::size_t end = std::min(field.find_first_not_of("0123456789", point + 1), field.size());
    most = std::max(most, end - point - 1);
  }
  return static_cast<int>(most);
}

std::optional<std::string> value_digits(double value, int decimals, std::size_t width) {
  const double scaled = value * std::pow(10.0, decimals);
  if (!(std::abs(scaled - std::round(scaled)) < 1e-6) || !(std::abs(scaled) < 1e9)) return std::nullopt;
  std::string digits;
  append_real(digits, value, width + 1, decimals, false);
  if (decimals == 0) digits.pop_back();  // the point
  digits = without_blanks(digits);
  if (digits.empty() || digits.size() > width || digits.find('*') != std::string::npos) return std::nullopt;
  return digits;
}

std::optional<LineRest> rest_of(std::span<const FileLine> lines, std::size_t values,
                                const ValueColumns& columns) {
  if (values % columns.a_line == 0) return std::nullopt;
  const std::string_view text = lines[values / columns.a_line].text;
  const std::string_view rest = part(text, values % columns.a_line * columns.width, columns.length());
  if (rest.empty()) return LineRest::nothing;
  if (trimmed(rest).empty()) return LineRest::blanks;
  const bool is_zeros = rest.find_first_not_of(" 0.") == std::string_view::npos;
  return is_zeros ? LineRest::zeros : LineRest::nothing;
}

std::vector<SavedLine> value_lines(const SavedCore& core, const ValueColumns& columns, LineRest rest) {
  std::vector<SavedLine> all;
  const std::span<const SavedRing> rings(core.rings);
  for (std::size_t k = 0; k < columns.lines_for(rings.size()); ++k) {
    const std::size_t first = k * columns.a_line;
    const auto on_line = rings.subspan(first, std::min(columns.a_line, rings.size() - first));
    const auto before = line_before(on_line, core.manner.fields.size(), columns.a_line);
    SavedLine line;
    if (before && !core.is_new) line.same = core.manner.values_from + *before;
    line.text = text_of(on_line, core.manner, columns.width);
    if (on_line.size() < columns.a_line) fill_up(line.text, columns, rest);
    all.push_back(std::move(line));
  }
  return all;
}

std::string with_number(std::string_view line, std::size_t from, std::int64_t number) {
  const std::string digits = std::to_string(number);
  const std::size_t start = std::min(line.find_first_not_of(' ', from), line.size());
  const std::size_t end = std::min(line.find_first_not_of(digits_and_signs, start), line.size());
  const std::size_t blanks = start - std::min(from, start);
  std::string before(line.substr(0, std::min(from, start)));
  if (blanks > 0) return before + right_aligned(digits, blanks + end - start) + std::string(line.substr(end));
  std::string_view behind = line.substr(end);
  const std::size_t room = std::min(behind.find_first_not_of(' '), behind.size());
  const std::size_t more = digits.size() - std::min(digits.size(), end - start);
  const std::size_t fewer = end - start - std::min(digits.size(), end - start);
  behind.remove_prefix(std::min(room, more));
  return before + digits + std::string(behind.empty() ? 0 : fewer, ' ') + std::string(behind);
}

}  // namespace vorn
