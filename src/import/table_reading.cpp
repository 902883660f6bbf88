#include "import/table_reading.h"

#include <algorithm>
#include <utility>

#include "import/fields.h"
#include "import/source_text.h"
#include "import/table_words.h"
#include "import/width_unit.h"

namespace vorn {
namespace {

FileFinding at_row(const FindingKind* of, const TableRows& rows) {
  return {.kind = of, .line = rows.first_line(), .from = rows.first_line(), .to = rows.last_line()};
}

}  // namespace

NamedColumn named(const TableField& field) {
  return {as_utf_8(field.text.substr(0, 200)), field.line, field.column};
}

bool TableReading::next() {
  if (!rows.next()) return false;
  if (rows.is_cut()) {
    FileFinding one = at_row(kind("too-large"), rows);
    one.words = "fields behind " + the_nth(most_fields_a_row) + " of the line are not looked at";
    found.tell_each(std::move(one));
  }
  if (rows.has_open_quote()) {
    FileFinding one = at_row(kind("open-quote"), rows);
    one.words = "a quote on this line has no end: it is taken as it stands";
    found.tell_each(std::move(one));
  }
  return true;
}

namespace {

bool names_years(std::string_view text) {
  const ColumnMeaning meaning = meaning_of(text);
  return meaning == ColumnMeaning::year || meaning == ColumnMeaning::year_bp;
}

}  // namespace

std::optional<std::int64_t> TableReading::year_in(const TableField& field, bool is_bp) {
  const auto year = year_written(field.text);
  if (year && year->of_date && date_line_ == 0) {
    date_line_ = field.line;
    date_ = as_utf_8(field.text);
  }
  if (year && !is_bp) return year->year;
  if (year) {
    if (bp_line_ == 0) bp_line_ = field.line;
    return year_of_bp - year->year;
  }
  const bool is_empty =
      std::ranges::all_of(rows.fields(), [](const TableField& one) { return one.text.empty(); });
  if (is_empty) return std::nullopt;
  const std::int64_t numbers = found.numbers_among(rows.fields());
  if (names_years(field.text)) {
    FileFinding one = at_row(kind("second-table"), rows);
    one.column = field.column;
    one.value = numbers;
    one.words =
        "a further row of names: what stands above it was not read by these names, or what follows is "
        "another table";
    found.tell_each(std::move(one));
    return std::nullopt;
  }
  FileFinding one = at_row(numbers > 0 ? kind("no-year", Effect::lost) : kind("no-year", Effect::none), rows);
  one.column = field.column;
  one.value = numbers;
  one.words =
      quoted(as_utf_8(field.text.substr(0, 120))) + " is no year: " +
      (numbers > 0 ? counted(numbers, "number is", "numbers are") + " not taken" : "the line is passed over");
  found.tell_each(std::move(one));
  return std::nullopt;
}

void TableReading::look_behind(std::size_t from) {
  const auto& fields = rows.fields();
  if (from >= fields.size()) return;
  const std::span<const TableField> behind = std::span(fields).subspan(from);
  const auto first =
      std::ranges::find_if(behind, [](const TableField& field) { return !field.text.empty(); });
  if (first == behind.end()) return;
  FileFinding one = at_row(kind("no-column"), rows);
  one.column = first->column;
  one.value = found.numbers_among(behind);
  one.words = "stands behind the last column that has a name, and is not taken: " +
              quoted(as_utf_8(first->text.substr(0, 120)));
  found.tell_each(std::move(one));
}

void TableReading::tell_other(const NamedColumn& column, std::int64_t numbers, std::string_view what) {
  found.findings.add({.kind = kind("other-column"),
                      .line = column.line,
                      .column = column.column,
                      .series = column.name,
                      .value = numbers,
                      .words = "the column holds " + std::string(what) + ", and is passed over with " +
                               counted(numbers, "number", "numbers")});
}

void TableReading::take_row(std::vector<TableColumn>& columns, std::size_t year, bool is_bp) {
  const auto& fields = rows.fields();
  const TableField year_field = year < fields.size() ? fields[year] : TableField{.line = rows.last_line()};
  const auto of_row = year_in(year_field, is_bp);
  if (!of_row) return;
  const bool fits = *of_row >= earliest_year && *of_row <= latest_year;
  if (!found.can_hold(*of_row, year_field, fits ? 0 : found.numbers_among(fields))) return;
  for (std::size_t k = 0; k < std::min(columns.size(), fields.size()); ++k) {
    if (columns[k].series)
      found.take(*columns[k].series, *of_row, fields[k]);
    else if (!columns[k].is_year)
      columns[k].passed_over += found.numbers_among(std::span(fields).subspan(k, 1));
    if (!columns[k].repeats_years) continue;
    const auto said = whole_number_in(fields[k].text);
    columns[k].other_years += said && said != whole_number_in(year_field.text);
  }
  look_behind(columns.size());
  if (fields.size() < columns.size()) count_short();
}

void TableReading::tell_others(std::span<const TableColumn> columns) {
  for (const TableColumn& column : columns) {
    if (!column.series && !column.is_year && (column.passed_over > 0 || !column.named.name.empty()))
      tell_other(column.named, column.passed_over, column.what);
    if (column.other_years > 0)
      found.findings.add({.kind = kind("second-table"),
                          .line = column.named.line,
                          .column = column.named.column,
                          .value = column.other_years,
                          .words = "a further column of years: " +
                                   counted(column.other_years, "row has another one", "rows have others") +
                                   " there, and widths behind it were taken by those of the first"});
  }
}

void TableReading::finish(std::span<const FileLine> lines) {
  if (rows.comments() > 0)
    found.findings.add(
        {.kind = kind("comments"),
         .value = rows.comments(),
         .words = counted(rows.comments(), "line begins", "lines begin") + " with \"#\", and hold no data"});
  if (short_rows_ > 0)
    found.findings.add({.kind = kind("short-rows"),
                        .line = first_short_,
                        .value = short_rows_,
                        .words = counted(short_rows_, "line has", "lines have") +
                                 " fewer fields than there are columns: the last ones have no ring there"});
  if (bp_line_ > 0)
    found.findings.add({.kind = kind("years-bp"),
                        .line = bp_line_,
                        .words =
                            "years are counted back from 1950, which is year 0 before present: the year is "
                            "1950 less that number, with a year 0"});
  if (date_line_ > 0)
    found.findings.add({.kind = kind("years-of-dates"),
                        .line = date_line_,
                        .words = "of dates, as " + quoted(date_) + ", the year is taken"});
  if (lines.size() == most_lines_examined)
    found.findings.add({.kind = kind("too-large"),
                        .line = static_cast<std::int64_t>(lines.size()),
                        .words = "lines behind " + the_nth(most_lines_examined) + " are not looked at"});
}

std::optional<double> unit_of_comments(std::span<const FileLine> lines) {
  constexpr std::size_t most_lines = 2'000;
  for (const FileLine& line : lines.first(std::min(lines.size(), most_lines))) {
    if (!line.text.starts_with('#') || line.text.starts_with("##")) continue;
    const std::string text = lower_case(line.text.substr(0, 300));
    const std::size_t word = text.find("unit");
    if (word == std::string::npos) continue;
    if (const auto unit = unit_said(std::string_view(text).substr(word))) return unit;
  }
  return std::nullopt;
}

}  // namespace vorn
