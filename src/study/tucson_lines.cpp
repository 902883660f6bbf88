#include "study/tucson_lines.h"

#include <algorithm>
#include <charconv>

#include "formats/tucson_raw_layout.h"
#include "records/number_text.h"

namespace vorn {
namespace {

using namespace tucson_raw;

constexpr const LayoutField& name_columns = fields[0];
constexpr const LayoutField& year_columns = fields[1];
constexpr const LayoutField& width_columns = fields[2];
constexpr int width_of_a_field = (width_columns.last - width_columns.first + 1) / values_a_line;
constexpr std::size_t longest_name = 12;          // of a line whose name has outgrown its columns
constexpr std::size_t most_words_of_widths = 12;  // of a line that is not in columns
constexpr std::string_view between_words = " \t,;";

std::string_view columns(std::string_view text, int first, int width) {
  const auto from = std::min(static_cast<std::size_t>(first - 1), text.size());
  return text.substr(from, static_cast<std::size_t>(width));
}

std::string_view columns(std::string_view text, const LayoutField& field) {
  return columns(text, field.first, field.width());
}

std::optional<std::int32_t> whole_number(std::string_view word) {
  if (word.starts_with('+')) word.remove_prefix(1);
  if (word.empty() || word.starts_with('+')) return std::nullopt;
  std::int32_t number = 0;
  const auto [end, failed] = std::from_chars(word.data(), word.data() + word.size(), number);
  if (failed != std::errc() || end != word.data() + word.size()) return std::nullopt;
  return number;
}

// Digits with one point among them, not before the first.
std::optional<double> decimal_number(std::string_view word) {
  const std::size_t point = word.find('.');
  if (point == 0 || point == std::string_view::npos) return std::nullopt;
  const std::string_view digits = "0123456789", whole = word.substr(word.starts_with('-') ? 1 : 0);
  if (whole.find_first_not_of("0123456789.") != std::string_view::npos || digits.find(whole.front()) > 9)
    return std::nullopt;
  double value = 0;
  if (read_real(word, 0, value) != status::ok) return std::nullopt;
  return value;
}

DecadeField field_at(std::string_view text, int column) {
  const std::string_view word = without_blanks(columns(text, column, width_of_a_field));
  if (word.empty()) return {DecadeField::Kind::empty, 0, column};
  const auto number = whole_number(word);
  if (const auto decimal = decimal_number(word)) return {DecadeField::Kind::decimal, 0, column, *decimal};
  if (!number) return {DecadeField::Kind::bad, 0, column};
  return {DecadeField::Kind::number, *number, column};
}

bool is_full(std::string_view text, int column) {
  const std::string_view field = columns(text, column, width_of_a_field);
  return field.size() == static_cast<std::size_t>(width_of_a_field) &&
         field.find(' ') == std::string_view::npos;
}

// Whether a number goes on from the column before into a field that it does not fill: no columns of the
// layout part the two.
bool is_cut(std::string_view text, int column) {
  const auto at = static_cast<std::size_t>(column) - 1;
  return text.size() > at && text[at] != ' ' && text[at - 1] != ' ' && !is_full(text, column);
}

std::size_t count_of(const DecadeLine& decade, DecadeField::Kind kind) {
  return static_cast<std::size_t>(std::ranges::count(decade.fields, kind, &DecadeField::kind));
}

// Name and year of a line that keeps to the columns. A "-" in the last column of the name is the sign of the
// year.
bool take_start(std::string_view text, DecadeLine& decade) {
  std::string_view name = columns(text, name_columns);
  const std::string_view year_text = columns(text, year_columns);
  const auto year = whole_number(without_blanks(year_text));
  if (!year) return false;
  decade.year = *year;
  const bool is_negative =
      name.size() == static_cast<std::size_t>(name_columns.width()) && name.back() == '-';
  if (is_negative) {
    decade.year = -decade.year;
    name.remove_suffix(1);
  }
  decade.name = without_blanks(name);
  decade.is_shifted = year_text.ends_with(' ');
  return true;
}

std::optional<DecadeLine> by_columns(std::string_view text, std::int64_t line) {
  DecadeLine decade{line};
  if (text.find('\t') != std::string_view::npos || !take_start(text, decade)) return std::nullopt;
  for (int k = 0; k < values_a_line; ++k) {
    const int column = width_columns.first + k * width_of_a_field;
    decade.fields.push_back(field_at(text, column));
    if (k > 0 && is_cut(text, column)) decade.fields.back().kind = DecadeField::Kind::bad;
    decade.run_together = decade.run_together || (k > 0 && is_full(text, column) &&
                                                  text[static_cast<std::size_t>(column) - 2] != ' ');
    decade.touching += is_full(text, column) ? 1 : 0;
  }
  while (!decade.fields.empty() && decade.fields.back().kind == DecadeField::Kind::empty)
    decade.fields.pop_back();
  if (count_of(decade, DecadeField::Kind::number) + count_of(decade, DecadeField::Kind::decimal) == 0)
    return std::nullopt;
  return decade;
}

struct PlacedWord {
  std::string_view text;
  int column = 0;
};

std::vector<PlacedWord> words_on(std::string_view text) {
  std::vector<PlacedWord> all;
  for (std::size_t at = text.find_first_not_of(between_words); at < text.size();
       at = text.find_first_not_of(between_words, at)) {
    const std::size_t end = std::min(text.find_first_of(between_words, at), text.size());
    all.push_back({text.substr(at, end - at), static_cast<int>(at) + 1});
    if (all.size() > most_words_of_widths + 3) break;  // name, year, widths: it is no decade any more
    at = end;
  }
  return all;
}

// A name, a year and widths, wherever they stand.
std::optional<DecadeLine> by_words(std::string_view text, std::int64_t line) {
  const std::vector<PlacedWord> words = words_on(text);
  if (words.size() < 3 || words.size() > most_words_of_widths + 2) return std::nullopt;
  if (words[0].text.size() > longest_name || words[0].text.starts_with('#')) return std::nullopt;
  const auto year = whole_number(words[1].text);
  if (!year || *year < -9999 || *year > 9999) return std::nullopt;
  DecadeLine decade{line, std::string(words[0].text), *year};
  decade.in_columns = false;
  for (const PlacedWord& word : std::span(words).subspan(2)) {
    const auto number = whole_number(word.text);
    if (!number) return std::nullopt;
    decade.fields.push_back({DecadeField::Kind::number, *number, word.column});
  }
  return decade;
}

// The last field of a line that could be an end mark.
std::optional<std::size_t> mark_on(const DecadeLine& decade) {
  for (std::size_t k = decade.fields.size(); k-- > 0;) {
    const DecadeField& field = decade.fields[k];
    if (field.kind == DecadeField::Kind::number && unit_of_mark(field.number)) return k;
  }
  return std::nullopt;
}

// Whether a line ends its core whatever follows: nothing stands behind its mark, and no ring would leave the
// rest of a decade empty or be so negative.
bool is_closed(const DecadeLine& decade) {
  const auto mark = mark_on(decade);
  if (!mark || *mark + 1 != decade.fields.size()) return false;
  const auto room = static_cast<std::size_t>(decade.next_year() - decade.year);
  return *mark + 1 < room || decade.fields[*mark].number == end_of_thousandths;
}

bool goes_on(const CoreLines& core, const DecadeLine& decade) {
  if (!decade.name.empty() && decade.name != core.name) return false;
  const DecadeLine& last = core.decades.back();
  return !mark_on(last) || (decade.year == last.next_year() && !is_closed(last));
}

void close(CoreLines& core) {
  const DecadeLine& last = core.decades.back();
  core.mark = mark_on(last);
  if (core.mark) core.unit = unit_of_mark(last.fields[*core.mark].number);
}

}  // namespace

std::int64_t DecadeLine::next_year() const {
  return year + first_decade_end(static_cast<std::int32_t>(year));
}

std::size_t length_of_foreign_start(std::string_view text) {
  constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
  const std::size_t mark = text.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
  return std::min(text.find_first_not_of(std::string_view("\x1a\0", 2), mark), text.size());
}

std::optional<DecadeLine> decade_of(std::string_view text, std::int64_t line) {
  if (const std::size_t foreign = length_of_foreign_start(text); foreign > 0) {
    auto behind = decade_of(text.substr(foreign), line);
    if (behind) behind->in_columns = false;
    return behind;
  }
  auto decade = by_columns(text, line);
  if (decade && count_of(*decade, DecadeField::Kind::bad) == 0) return decade;
  if (auto words = by_words(text, line)) return words;
  if (decade && count_of(*decade, DecadeField::Kind::bad) < count_of(*decade, DecadeField::Kind::number))
    return decade;
  return std::nullopt;
}

std::string in_its_columns(std::string_view text) {
  const std::string_view year = columns(text, year_columns);
  const std::size_t by = year.size() - trimmed(year).size();
  const std::size_t cut = static_cast<std::size_t>(year_columns.first) - 1 - by;
  return std::string(text.substr(0, cut)) + std::string(by, ' ') + std::string(text.substr(cut));
}

std::optional<double> unit_of_mark(std::int32_t number) {
  if (number == end_of_hundredths) return 100.0;
  if (number == end_of_thousandths) return 1000.0;
  return std::nullopt;
}

std::size_t CoreLines::rings_on(std::size_t k) const {
  if (k + 1 < decades.size() || !mark) return decades[k].fields.size();
  return *mark;
}

std::vector<CoreLines> cores_on(std::span<const FileLine> lines, std::size_t from) {
  std::vector<CoreLines> all;
  for (std::size_t k = from; k < lines.size(); ++k) {
    auto decade = decade_of(lines[k].text, static_cast<std::int64_t>(k) + 1);
    if (!decade) continue;
    if (all.empty() || !goes_on(all.back(), *decade)) {
      if (!all.empty()) close(all.back());
      all.push_back({decade->name});
    }
    all.back().decades.push_back(std::move(*decade));
  }
  if (!all.empty()) close(all.back());
  return all;
}

}  // namespace vorn
