#include "import/tables.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "import/column_names.h"
#include "import/fields.h"
#include "import/source_text.h"
#include "import/table_reading.h"
#include "import/table_shape.h"
#include "import/width_unit.h"

namespace vorn {
namespace {

class TableImport {
 public:
  // Of lines `first` (from 0) on.
  TableImport(std::span<const FileLine> lines, std::size_t first, const TableShape& shape, FoundFile& found)
      : lines_(lines),
        shape_(shape),
        found_(found),
        table_(lines, shape.separator, found_, first),
        file_unit_(unit_of_comments(lines.subspan(first))) {
    found_.commas = shape.separator != ',';
  }
  void read();
  void read_sheet() {
    table_.may_be_short = true;
    read();
  }
  std::string why() const;

 private:
  void skip_titles();
  void read_names();
  void read_wide();
  void read_across();
  void read_long();
  void add_columns();
  void tell_parts(const std::vector<std::string>& names);
  void read_wide_row();
  bool is_row_of_units();
  void add_years_across(std::vector<std::optional<std::int64_t>>& years);
  void read_row_across(const std::vector<std::optional<std::int64_t>>& years);
  void read_ring();
  std::string name_of_row() const;
  void tell_name_column();
  TableField field(std::size_t k) const;
  std::optional<std::size_t> new_series(std::string_view name, const TableField& at);

  std::span<const FileLine> lines_;
  const TableShape& shape_;
  FoundFile& found_;
  TableReading table_;
  std::optional<double> file_unit_;
  std::vector<NamedColumn> names_;  // of the first row
  std::vector<TableColumn> columns_;
  std::map<std::string, std::optional<std::size_t>, std::less<>> series_;  // long: by name
  bool any_rows_ = false;
};

// The field of a column; an empty one at the end of the row where there is none.
TableField TableImport::field(std::size_t k) const {
  const auto& fields = table_.rows.fields();
  if (k < fields.size()) return fields[k];
  return {.line = table_.rows.last_line()};
}

std::optional<std::size_t> TableImport::new_series(std::string_view name, const TableField& at) {
  const auto one = found_.add_series(name, at.line, at.column);
  if (one) found_.series(*one).unit = unit_in_name(name) ? unit_in_name(name) : file_unit_;
  return one;
}

void TableImport::skip_titles() {
  for (std::size_t k = 0; k < shape_.titles && table_.next(); ++k)
    found_.findings.add({.kind = kind("header"),
                         .line = table_.rows.first_line(),
                         .from = table_.rows.first_line(),
                         .to = table_.rows.last_line(),
                         .value = found_.numbers_among(table_.rows.fields()),
                         .words = "a line before the table is passed over"});
}

void TableImport::read_names() {
  if (!shape_.has_header || !table_.next()) return;
  if (shape_.shifted) names_.push_back({"", table_.rows.first_line(), 1});
  for (const TableField& one : table_.rows.fields()) names_.push_back(named(one));
}

// --- Years down the side

// "Year" or "Year.1" of "Year".
bool is_name_again(std::string_view name, std::string_view first) {
  const std::string letters = letters_of(name), of_first = letters_of(first);
  return !of_first.empty() && letters.starts_with(of_first) &&
         letters.find_first_not_of("0123456789", of_first.size()) == std::string::npos;
}

void TableImport::add_columns() {
  std::vector<std::string> names;
  for (const NamedColumn& one : names_) names.push_back(one.name);
  const std::vector<bool> indices = indices_among(names);
  tell_parts(names);
  for (std::size_t k = 0; k < names_.size(); ++k) {
    TableColumn column{names_[k]};
    column.is_year = k == shape_.year;
    const ColumnMeaning meaning = meaning_of(names_[k].name);
    column.repeats_years = !column.is_year && is_name_again(names_[k].name, names_[shape_.year].name);
    const bool unnamed_before_years = k < shape_.year && names_[k].name.empty();
    const bool is_width = meaning == ColumnMeaning::unknown || meaning == ColumnMeaning::width ||
                          meaning == ColumnMeaning::core || meaning == ColumnMeaning::tree;
    const bool holds_words = k < shape_.words.size() && shape_.words[k];
    if (indices[k]) column.what = "indices of a chronology, no ring widths";
    const bool is_other = unnamed_before_years || holds_words || indices[k];
    if (!column.is_year && is_width && !is_other)
      column.series = new_series(names_[k].name, {names_[k].name, names_[k].line, names_[k].column, false});
    columns_.push_back(std::move(column));
  }
}

void TableImport::tell_parts(const std::vector<std::string>& names) {
  const auto parts = ring_parts_among(names);
  if (!parts) return;
  found_.findings.add(
      {.kind = kind("parts-of-rings"),
       .line = names_[parts->early].line,
       .column = names_[parts->early].column,
       .series = names[parts->early],
       .words = quoted(names[parts->early]) + " and " + quoted(names[parts->late]) +
                " look like earlywood and latewood of one core" +
                (parts->whole ? ", whose rings stand whole in " + quoted(names[*parts->whole]) : "") +
                ": each column of the table is taken for a core of its own"});
}

// A row below the names may say the units.
bool TableImport::is_row_of_units() {
  if (any_rows_ || year_written(field(shape_.year).text) || found_.numbers_among(table_.rows.fields()) > 0)
    return false;
  bool any = false;
  for (std::size_t k = 0; k < std::min(columns_.size(), table_.rows.fields().size()); ++k) {
    const auto unit = columns_[k].series ? unit_said(field(k).text) : std::nullopt;
    if (unit) found_.series(*columns_[k].series).unit = unit;
    any = any || unit.has_value();
  }
  return any;
}

void TableImport::read_wide_row() {
  if (is_row_of_units()) return;
  any_rows_ = true;
  table_.take_row(columns_, shape_.year, shape_.is_bp);
}

void TableImport::read_wide() {
  read_names();
  if (shape_.has_header) add_columns();
  while (table_.next()) {
    if (!shape_.has_header && columns_.empty()) {
      for (std::size_t k = 0; k < table_.rows.fields().size(); ++k)
        names_.push_back({k == 0 ? "" : "S" + std::to_string(k), table_.rows.first_line(), field(k).column});
      add_columns();
      found_.findings.add({.kind = kind("no-names"),
                           .line = table_.rows.first_line(),
                           .words = "there is no row of names: series are named S1, S2 and so on"});
    }
    read_wide_row();
  }
  table_.tell_others(columns_);
}

// --- Years across the top

void TableImport::add_years_across(std::vector<std::optional<std::int64_t>>& years) {
  years.resize(names_.size());
  for (std::size_t k = shape_.year; k < names_.size(); ++k) {
    const auto year = year_written(names_[k].name);
    const TableField at{names_[k].name, names_[k].line, names_[k].column, false};
    if (year && found_.can_hold(year->year, at, 0)) years[k] = year->year;
  }
}

void TableImport::read_row_across(const std::vector<std::optional<std::int64_t>>& years) {
  const auto& fields = table_.rows.fields();
  const std::size_t before = std::min(shape_.year, fields.size());
  for (std::size_t k = 0; k < before; ++k) {
    if (!columns_[k].is_year)
      columns_[k].passed_over += found_.numbers_among(std::span(fields).subspan(k, 1));
  }
  const std::string name = name_of_row();
  if (name.empty() && found_.numbers_among(std::span(fields).subspan(before)) == 0) return;
  const auto series = new_series(name, field(shape_.series));
  if (!series) return;
  for (std::size_t k = shape_.year; k < std::min(years.size(), fields.size()); ++k) {
    if (years[k])
      found_.take(*series, *years[k], fields[k]);
    else
      columns_[k].passed_over += found_.numbers_among(std::span(fields).subspan(k, 1));
  }
  table_.look_behind(years.size());
  if (fields.size() < years.size()) table_.count_short();
}

void TableImport::tell_name_column() {
  const NamedColumn& one = names_[shape_.series];
  const std::string tree = shape_.tree ? quoted(names_[*shape_.tree].name) + " and " : "";
  found_.findings.add(
      {.kind = kind("name-column"),
       .line = one.line,
       .column = one.column,
       .value = one.name,
       .words = "of the columns before the years the cores have their names from " + tree +
                (one.name.empty() ? "column " + std::to_string(shape_.series + 1) : quoted(one.name))});
}

void TableImport::read_across() {
  read_names();
  std::vector<std::optional<std::int64_t>> years;
  add_years_across(years);
  for (std::size_t k = 0; k < names_.size(); ++k) {
    columns_.push_back({names_[k]});
    columns_.back().is_year =
        k == shape_.series || (shape_.tree && k == *shape_.tree) || years[k].has_value();
  }
  if (shape_.year > 1) tell_name_column();
  while (table_.next()) read_row_across(years);
  table_.tell_others(columns_);
}

// --- A row a ring

// Also of a row that is a series.
std::string TableImport::name_of_row() const {
  std::string core(field(shape_.series).text);
  if (!shape_.tree) return core;
  const std::string tree(field(*shape_.tree).text);
  // Numbers of trees and cores may begin alike without saying the same.
  const bool is_number = whole_number_in(tree).has_value();
  return !is_number && core.starts_with(tree) ? core : tree + "_" + core;
}

void TableImport::read_ring() {
  const auto& fields = table_.rows.fields();
  for (std::size_t k = 0; k < std::min(columns_.size(), fields.size()); ++k) {
    if (!columns_[k].is_year)
      columns_[k].passed_over += found_.numbers_among(std::span(fields).subspan(k, 1));
  }
  table_.look_behind(columns_.size());
  const TableField width = field(shape_.width), year_field = field(shape_.year);
  const auto year = table_.year_in(year_field, shape_.is_bp);
  if (!year || !found_.can_hold(*year, year_field, found_.numbers_among(std::span(&width, 1)))) return;
  if (fields.size() <= std::max(shape_.width, shape_.series)) table_.count_short();
  const std::string name = name_of_row();
  if (name.empty()) {
    if (says_missing(width.text)) return;
    found_.tell_each(
        {.kind = kind("no-series"),
         .line = table_.rows.first_line(),
         .from = table_.rows.first_line(),
         .to = table_.rows.last_line(),
         .column = width.column,
         .value = std::int64_t{1},
         .words = "the ring of " + std::to_string(*year) + " belongs to no series, and is not taken"});
    return;
  }
  const auto [place, is_new] = series_.try_emplace(name);
  if (is_new) {
    place->second = new_series(name, field(shape_.series));
    if (place->second && !found_.series(*place->second).unit)
      found_.series(*place->second).unit = unit_in_name(names_[shape_.width].name);
  }
  if (place->second) found_.take(*place->second, *year, width);
}

void TableImport::read_long() {
  read_names();
  for (std::size_t k = 0; k < names_.size(); ++k) {
    columns_.push_back({names_[k]});
    columns_.back().is_year =
        k == shape_.series || k == shape_.year || k == shape_.width || (shape_.tree && k == *shape_.tree);
  }
  while (table_.next()) read_ring();
  table_.tell_others(columns_);
}

// --- The whole

std::string TableImport::why() const {
  const std::string separator = shape_.separator == '\t'  ? "tabs"
                                : shape_.separator == ';' ? "semicolons"
                                : shape_.separator == ',' ? "commas"
                                                          : "blanks";
  if (shape_.layout == OtherLayout::long_table)
    return "columns parted by " + separator + " are named \"" + names_[shape_.series].name + "\", \"" +
           names_[shape_.year].name + "\" and \"" + names_[shape_.width].name + "\"";
  if (shape_.years_across)
    return "fields parted by " + separator + ", years across the top and a row a series";
  return "fields parted by " + separator + ", years down column " + std::to_string(shape_.year + 1) +
         " and a column a series";
}

void TableImport::read() {
  skip_titles();
  if (shape_.layout == OtherLayout::long_table)
    read_long();
  else if (shape_.years_across)
    read_across();
  else
    read_wide();
  table_.finish(lines_);
}

}  // namespace

std::optional<Imported> import_table(std::span<const FileLine> lines, bool is_utf_16,
                                     const ImportWishes& wishes) {
  const auto shape = table_shape(lines);
  if (!shape) return std::nullopt;
  FoundFile found(wishes);
  if (is_utf_16)
    found.findings.add({.kind = kind("utf-16"),
                        .words = "saved as UTF-16; lines and columns are those of the same text in UTF-8"});
  TableImport table(lines, 0, *shape, found);
  table.read();
  return found.finished(
      shape->layout,
      shape->layout == OtherLayout::long_table ? "table of a row a ring" : "table of ring widths",
      table.why());
}

bool take_table(std::span<const FileLine> lines, std::size_t first, FoundFile& found) {
  const auto shape = table_shape(lines.subspan(first), "\t");
  if (!shape) return false;
  TableImport(lines, first, *shape, found).read_sheet();
  return true;
}

}  // namespace vorn
