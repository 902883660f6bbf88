#include "import/sheet_cells.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "import/fields.h"
#include "import/xml_text.h"

namespace vorn {
namespace {

constexpr std::size_t longest_cell = 32'767;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// As a field of a row: on one line, without tabs, in quotes where it would begin with one or with "#".
std::string as_field(std::string text) {
  if (text.size() > longest_cell) text.resize(longest_cell);
  std::ranges::replace_if(
      text, [](char c) { return c == '\t' || c == '\n' || c == '\r' || c == '\0'; }, ' ');
  const std::string_view inner = bare(text);
  if (!inner.starts_with('"') && !inner.starts_with('#')) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + '"';
}

// A number as short as it can be written; the text itself where it is none.
std::string number_text(std::string_view text) {
  constexpr std::size_t most_exact_digits = 15;
  if (text.size() <= most_exact_digits) return std::string(text);
  const auto number = number_in(text, false);
  if (!number) return std::string(text);
  std::array<char, 40> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number->value);
  return {digits.data(), end.ptr};
}

// What a cell says of itself.
struct CellSaid {
  std::string_view place = {}, type = {}, style = {};
  explicit CellSaid(const pugi::xml_node& cell) {
    for (const pugi::xml_attribute& one : cell.attributes()) {
      const std::string_view name = local_name(one.name());
      if (name == "r") place = one.value();
      if (name == "t") type = one.value();
      if (name == "s") style = one.value();
    }
  }
};

class SheetReading {
 public:
  SheetReading(const std::vector<std::string>& shared, const CellStyles& styles, std::size_t& room,
               SheetCells& sheet)
      : shared_(shared), styles_(styles), room_(room), sheet_(sheet) {}
  void read(const pugi::xml_node& data);
  void count_hidden_columns(const pugi::xml_node& columns);

 private:
  bool read_row(const pugi::xml_node& row);
  void read_cell(const pugi::xml_node& cell, std::string& line);
  std::string text_of(const pugi::xml_node& cell, const CellSaid& said);
  std::string value_of(const pugi::xml_node& cell, const CellSaid& said);
  bool is_date(const CellSaid& said) const;
  bool has_room(std::size_t bytes);
  void cut(std::string_view what);
  void cut_text();

  const std::vector<std::string>& shared_;
  const CellStyles& styles_;
  std::size_t& room_;
  SheetCells& sheet_;
  std::int64_t row_ = 0, column_ = 0;  // of the cell that was read last, from 1
  std::int64_t filled_ = 0;            // columns of the line at hand
  std::int64_t widest_ = 0;            // columns of the widest line
};

void SheetReading::cut(std::string_view what) {
  if (sheet_.cut.empty())
    sheet_.cut = "from row " + std::to_string(row_) + " on it is not looked at: " + std::string(what);
}

void SheetReading::cut_text() {
  cut("the sheets hold more than " + std::to_string(most_sheet_text >> 20U) + " MB of text");
}

bool SheetReading::has_room(std::size_t bytes) {
  if (bytes > room_) {
    cut_text();
    return false;
  }
  room_ -= bytes;
  return true;
}

void SheetReading::read(const pugi::xml_node& data) {
  for (pugi::xml_node row = child_named(data, "row"); row; row = next_named(row)) {
    const auto said = whole_number_in(attribute_named(row, "r"));
    const std::int64_t at = said ? *said : row_ + 1;
    if (at <= row_ || at > most_sheet_rows) {
      cut(at <= row_ ? "its rows are not in order"
                     : "a sheet has " + std::to_string(most_sheet_rows) + " rows");
      return;
    }
    row_ = at;
    if (!read_row(row)) return;
  }
}

bool SheetReading::read_row(const pugi::xml_node& row) {
  std::string line;
  column_ = filled_ = 0;
  for (pugi::xml_node cell = child_named(row, "c"); cell && sheet_.cut.empty(); cell = next_named(cell))
    read_cell(cell, line);
  if (line.empty() || !has_room(line.size())) return sheet_.cut.empty();
  sheet_.hidden_rows += says_yes(attribute_named(row, "hidden"));
  widest_ = std::max(widest_, filled_);
  if (static_cast<std::size_t>(row_) > sheet_.rows.size() + 1)
    sheet_.rows.resize(static_cast<std::size_t>(row_) - 1);
  sheet_.rows.push_back(std::move(line));
  return true;
}

void SheetReading::count_hidden_columns(const pugi::xml_node& columns) {
  for (pugi::xml_node one = child_named(columns, "col"); one; one = next_named(one)) {
    if (!says_yes(attribute_named(one, "hidden"))) continue;
    const auto first = whole_number_in(attribute_named(one, "min")),
               last = whole_number_in(attribute_named(one, "max"));
    if (first && last)
      sheet_.hidden_columns += std::max<std::int64_t>(std::min(*last, widest_) - *first + 1, 0);
  }
  sheet_.hidden_columns = std::min(sheet_.hidden_columns, widest_);
}

void SheetReading::read_cell(const pugi::xml_node& cell, std::string& line) {
  const CellSaid said(cell);
  const std::int64_t at = said.place.empty() ? column_ + 1 : place_of_cell(said.place).column;
  if (at <= column_ || at > most_sheet_columns) return cut("the cells of a row are not in order");
  column_ = at;
  const std::string text = text_of(cell, said);
  const auto gap = static_cast<std::size_t>(at - std::max<std::int64_t>(filled_, 1));
  if (text.empty() || line.size() + gap + text.size() > room_) return text.empty() ? void() : cut_text();
  // As many tabs as columns are passed over; behind the last cell none is needed.
  line.append(gap, '\t');
  filled_ = at;
  line += as_field(text);
}

bool SheetReading::is_date(const CellSaid& said) const {
  const auto style = whole_number_in(said.style);
  return style && *style >= 0 && static_cast<std::size_t>(*style) < styles_.are_dates.size() &&
         styles_.are_dates[static_cast<std::size_t>(*style)];
}

std::string SheetReading::text_of(const pugi::xml_node& cell, const CellSaid& said) {
  if (said.type == "inlineStr") return unescaped(text_of_runs(child_named(cell, "is")));
  std::string text = value_of(cell, said);
  if (styles_.computed_when_opened && text == "0" && child_named(cell, "f")) text.clear();
  if (text.empty() && said.type != "str" && child_named(cell, "f")) {
    if (++sheet_.not_computed == 1) sheet_.first_not_computed = row_;
  }
  return text;
}

// A cell of its type: numbers, shared texts ("s"), results of formulas ("str"), booleans, errors, dates.
std::string SheetReading::value_of(const pugi::xml_node& cell, const CellSaid& said) {
  std::string value = text_within(child_named(cell, "v"));
  if (said.type == "s") {
    const auto index = whole_number_in(value);
    const bool known = index && *index >= 0 && static_cast<std::size_t>(*index) < shared_.size();
    if (known) return shared_[static_cast<std::size_t>(*index)];
    if (++sheet_.without_text == 1) sheet_.first_without_text = row_;
    return {};
  }
  if (said.type == "b") return value.empty() ? "" : value == "0" ? "FALSE" : "TRUE";
  if (said.type == "str") return unescaped(std::move(value));
  if (said.type == "e" || said.type == "d") return value;
  if (is_date(said)) {
    const auto day = number_in(value, false);
    if (std::string date = day ? date_of(day->value, styles_.from_1904) : ""; !date.empty()) return date;
  }
  return number_text(bare(value));
}

// --- Dates

// Days since 0000-03-01 as a date of the calendar that is used today.
std::string calendar_date(std::int64_t days) {
  constexpr std::int64_t of_400_years = 146'097;
  const std::int64_t era = days / of_400_years, day_of_era = days % of_400_years;
  const std::int64_t year_of_era =
      (day_of_era - day_of_era / 1'460 + day_of_era / 36'524 - day_of_era / 146'096) / 365;
  const std::int64_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::int64_t month = (5 * day_of_year + 2) / 153, day = day_of_year - (153 * month + 2) / 5 + 1;
  const std::int64_t year = era * 400 + year_of_era + (month >= 10 ? 1 : 0);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", static_cast<int>(year),
                static_cast<int>(month < 10 ? month + 3 : month - 9), static_cast<int>(day));
  return text.data();
}

}  // namespace

bool says_yes(std::string_view attribute) {
  return attribute == "1" || attribute == "true";
}

// Characters that XML cannot hold are written so, and "_" itself, as "_x005F_", where it would begin one.
std::string unescaped(std::string text) {
  constexpr std::size_t length = 7;
  for (std::size_t at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
    unsigned number = 0;
    const char* const digits = text.data() + at + 2;
    if (text.size() < at + length || text[at + length - 1] != '_') continue;
    const auto [end, failed] = std::from_chars(digits, digits + 4, number, 16);
    if (failed != std::errc() || end != digits + 4 || number >= 0x80) continue;
    text.replace(at, length, 1, number < ' ' ? ' ' : static_cast<char>(number));
  }
  return text;
}

std::string date_of(double day, bool from_1904) {
  constexpr std::int64_t day_0 = 693'899;          // 1899-12-30
  constexpr std::int64_t day_0_of_1904 = 695'361;  // 1904-01-01
  constexpr double last_day = 2'958'466, leap_day_of_1900 = 60;
  if (!(day >= 0) || day >= last_day) return {};
  const auto whole = static_cast<std::int64_t>(std::floor(day));
  if (from_1904) return calendar_date(day_0_of_1904 + whole);
  // Day 60 is counted as 1900-02-29, which was none: days before it are one later.
  return calendar_date(day_0 + whole + (day < leap_day_of_1900 ? 1 : 0));
}

bool shows_date(std::string_view format) {
  bool in_quotes = false;
  for (std::size_t k = 0; k < format.size(); ++k) {
    const char c = format[k];
    if (c == '"') in_quotes = !in_quotes;
    if (in_quotes) continue;
    if (c == '\\' || c == '_' || c == '*') ++k;
    if (c == ';') return false;  // what follows is for numbers below zero
    if (c == '[') k = std::min(format.find(']', k), format.size());
    if (std::string_view("yYdD").find(c) != std::string_view::npos) return true;
  }
  return false;
}

CellPlace place_of_cell(std::string_view reference) {
  CellPlace place;
  while (!reference.empty() &&
         ((reference[0] >= 'A' && reference[0] <= 'Z') || (reference[0] >= 'a' && reference[0] <= 'z'))) {
    const char letter = reference[0] >= 'a' ? static_cast<char>(reference[0] - 'a' + 'A') : reference[0];
    place.column = std::min(place.column * 26 + (letter - 'A' + 1), most_sheet_columns + 1);
    reference.remove_prefix(1);
  }
  if (place.column == 0 || !std::ranges::all_of(reference, is_digit)) return {};
  place.row = whole_number_in(reference).value_or(0);
  return place.row > 0 ? place : CellPlace{};
}

std::string read_sheet(std::string_view xml, const std::vector<std::string>& shared, const CellStyles& styles,
                       std::size_t& room, SheetCells& sheet) {
  pugi::xml_document document;
  if (std::string wrong = read_xml(document, xml); !wrong.empty()) return wrong;
  const pugi::xml_node root = document.document_element();
  SheetReading reading(shared, styles, room, sheet);
  reading.read(child_named(root, "sheetData"));
  reading.count_hidden_columns(child_named(root, "cols"));
  const pugi::xml_node merged = child_named(root, "mergeCells");
  for (pugi::xml_node one = child_named(merged, "mergeCell"); one; one = next_named(one)) ++sheet.merged;
  return {};
}

}  // namespace vorn
