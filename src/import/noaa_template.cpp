#include "import/noaa_template.h"

#include <algorithm>
#include <map>
#include <utility>

#include "import/fields.h"
#include "import/source_text.h"
#include "import/table_reading.h"
#include "import/table_words.h"
#include "import/template_decades.h"
#include "import/width_unit.h"

namespace vorn {
namespace {

constexpr std::size_t most_header_lines = 200'000;  // a file of 10,000 series has a line for each

bool any_in(std::string_view text, std::span<const std::string_view> words) {
  return std::ranges::any_of(
      words, [&](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

std::vector<std::string> parts_of(std::string_view text, std::string_view separators) {
  constexpr std::size_t most = 100;
  std::vector<std::string> all;
  while (all.size() < most) {
    const std::size_t end = std::min(text.find_first_of(separators), text.size());
    all.push_back(lower_case(bare(text.substr(0, end))));
    if (end == text.size()) return all;
    text.remove_prefix(end + 1);
  }
  return all;
}

std::string_view behind_hashes(std::string_view line) {
  return bare(line.substr(std::min(line.find_first_not_of("# \t"), line.size())));
}

// "# Key: value"
struct Comment {
  std::string key = {};  // its letters and digits, small
  std::string_view value = {};
};

std::optional<Comment> comment_of(std::string_view line) {
  constexpr std::size_t longest_key = 60;
  if (!line.starts_with('#') || line.starts_with("##")) return std::nullopt;
  const std::string_view text = behind_hashes(line);
  const std::size_t colon = text.find(':');
  if (colon > longest_key) return std::nullopt;
  return Comment{letters_of(text.substr(0, colon)), bare(text.substr(colon + 1))};
}

bool is_one_of(const std::string& key, std::span<const std::string_view> keys) {
  return std::ranges::find(keys, key) != keys.end();
}

// --- The header

struct TemplateHeader {
  std::map<std::string, TemplateVariable> variables = {};  // by their names in small letters
  MissingMarks marks = {};
  std::optional<std::int64_t> first_year = {}, last_year = {};
  std::int64_t year_line = 0;
  std::optional<std::size_t> last_comment = {};  // before the table; from 0
  bool names_archive = false;
};

void take_marks(std::string_view value, MissingMarks& marks) {
  for (const std::string& part : parts_of(value, ",; \t")) {
    const auto number = number_in(part, false);
    if (number) marks.numbers.push_back(number->value);
    if (!number && !part.empty()) marks.words.push_back(part);
  }
}

void take_comment(const Comment& comment, std::int64_t line, TemplateHeader& header) {
  using namespace noaa_template;
  if (comment.key.starts_with(missing_key)) take_marks(comment.value, header.marks);
  const auto year = whole_number_in(comment.value);
  if (!year) return;
  const bool first = is_one_of(comment.key, first_year_keys), last = is_one_of(comment.key, last_year_keys);
  if (first) header.first_year = year;
  if (last) header.last_year = year;
  if (first || last) header.year_line = line;
}

TemplateHeader header_of(std::span<const FileLine> lines) {
  constexpr std::array<std::string_view, 4> signs = {"noaa", "world data service", "paleoclimatology", "wds"};
  TemplateHeader header;
  for (std::size_t k = 0; k < std::min(lines.size(), most_header_lines); ++k) {
    const std::string_view text = lines[k].text;
    if (is_blank(lines[k])) continue;
    if (!text.starts_with('#')) break;
    header.last_comment = k;
    header.names_archive = header.names_archive || any_in(lower_case(text.substr(0, 200)), signs);
    if (auto variable = template_variable(text)) {
      const std::string name = lower_case(variable->name);
      header.variables.emplace(name, std::move(*variable));
    }
    if (const auto comment = comment_of(text))
      take_comment(*comment, static_cast<std::int64_t>(k) + 1, header);
  }
  return header;
}

char separator_of(std::string_view text) {
  for (const char separator : {'\t', ';', ','}) {
    if (text.find(separator) != std::string_view::npos) return separator;
  }
  return ' ';
}

// --- The table

class TemplateImport {
 public:
  TemplateImport(std::span<const FileLine> lines, TemplateHeader header, char separator,
                 const ImportWishes& wishes)
      : lines_(lines),
        header_(std::move(header)),
        found_(wishes),
        table_(lines, separator, found_),
        file_unit_(unit_of_comments(lines)) {
    found_.marks = header_.marks;
    found_.commas = separator != ',';
  }

  // Whether the first row, or the comment before it, names a column of years.
  bool read_names();
  Imported read(bool is_utf_16);

 private:
  void take_names(std::span<const TableField> fields);
  VariableMeaning meaning_of_column(const NamedColumn& column) const;
  const TemplateVariable* variable_of(const NamedColumn& column) const;
  bool find_years();
  void add_columns();
  void look_at_years(const Imported& one);

  std::span<const FileLine> lines_;
  TemplateHeader header_;
  FoundFile found_;
  TableReading table_;
  std::optional<double> file_unit_;
  std::vector<TableColumn> columns_;
  std::size_t year_ = 0;
  bool is_bp_ = false;
  bool row_at_hand_ = false;  // the first row holds data
};

const TemplateVariable* TemplateImport::variable_of(const NamedColumn& column) const {
  const auto found = header_.variables.find(lower_case(column.name));
  return found == header_.variables.end() ? nullptr : &found->second;
}

VariableMeaning TemplateImport::meaning_of_column(const NamedColumn& column) const {
  const ColumnMeaning by_name = vorn::meaning_of(column.name);
  const TemplateVariable* variable = variable_of(column);
  if (variable) {
    const VariableMeaning meaning = vorn::meaning_of(*variable);
    if (meaning == VariableMeaning::year && by_name == ColumnMeaning::year_bp)
      return VariableMeaning::year_bp;
    return meaning;
  }
  if (by_name == ColumnMeaning::year) return VariableMeaning::year;
  if (by_name == ColumnMeaning::year_bp) return VariableMeaning::year_bp;
  return by_name == ColumnMeaning::unknown || by_name == ColumnMeaning::width ? VariableMeaning::width
                                                                              : VariableMeaning::other;
}

void TemplateImport::take_names(std::span<const TableField> fields) {
  columns_.clear();
  for (const TableField& field : fields) columns_.push_back({named(field)});
}

// A calendar year before an age, which may be that of the tree.
bool TemplateImport::find_years() {
  const auto names = [](const TableColumn& column) -> const std::string& { return column.named.name; };
  if (std::ranges::any_of(columns_, counts_backwards, names)) return false;
  for (const bool may_be_age : {false, true}) {
    for (std::size_t k = 0; k < columns_.size(); ++k) {
      const VariableMeaning meaning = meaning_of_column(columns_[k].named);
      if (meaning != VariableMeaning::year && meaning != VariableMeaning::year_bp) continue;
      if (!may_be_age && is_age(columns_[k].named.name)) continue;
      year_ = k;
      is_bp_ = meaning == VariableMeaning::year_bp;
      return columns_[k].is_year = true;
    }
  }
  return false;
}

bool TemplateImport::read_names() {
  if (!table_.next()) return false;
  take_names(table_.rows.fields());
  if (find_years()) return true;
  // The names may stand in the last comment.
  if (!header_.last_comment) return false;
  const FileLine names{behind_hashes(lines_[*header_.last_comment].text), LineEnd::none};
  TableRows row(std::span(&names, 1), separator_of(names.text));
  if (!row.next()) return false;
  take_names(row.fields());
  for (TableColumn& column : columns_)
    column.named.line = static_cast<std::int64_t>(*header_.last_comment) + 1;
  row_at_hand_ = true;
  return find_years();
}

// Widths of a part of the ring are no ring widths where those of the whole stand beside them.
void TemplateImport::add_columns() {
  const bool whole_rings = std::ranges::any_of(columns_, [this](const TableColumn& column) {
    return !column.is_year && meaning_of_column(column.named) == VariableMeaning::width;
  });
  for (TableColumn& column : columns_) {
    const VariableMeaning meaning = meaning_of_column(column.named);
    const VariableMeaning taken = whole_rings ? VariableMeaning::width : VariableMeaning::width_of_part;
    if (column.is_year || meaning != taken) continue;
    column.series = found_.add_series(column.named.name, column.named.line, column.named.column);
    if (!column.series) continue;
    const TemplateVariable* variable = variable_of(column.named);
    const auto said = variable ? unit_said(variable->units) : unit_in_name(column.named.name);
    found_.series(*column.series).unit = said ? said : file_unit_;
  }
}

void TemplateImport::look_at_years(const Imported& one) {
  if (is_bp_ || one.series.empty()) return;
  std::int64_t first = one.series.front().first, last = first;
  for (const ImportedSeries& series : one.series) {
    first = std::min(first, series.first);
    last = std::max(last, series.first + static_cast<std::int64_t>(series.widths.size()) - 1);
  }
  const bool agree = header_.first_year.value_or(first) == first && header_.last_year.value_or(last) == last;
  if (agree) return;
  found_.findings.add({.kind = kind("dates-disagree"),
                       .line = header_.year_line,
                       .value = first,
                       .words = "the header says other years than the data have, " + std::to_string(first) +
                                " to " + std::to_string(last) + ", which are taken"});
}

Imported TemplateImport::read(bool is_utf_16) {
  if (is_utf_16)
    found_.findings.add({.kind = kind("utf-16"),
                         .words = "saved as UTF-16; lines and columns are those of the same text in UTF-8"});
  add_columns();
  if (row_at_hand_) table_.take_row(columns_, year_, is_bp_);
  while (table_.next()) table_.take_row(columns_, year_, is_bp_);
  table_.tell_others(columns_);
  table_.finish(lines_);
  return found_.finished(
      OtherLayout::noaa_template, "NOAA template text",
      "comments that begin with \"#\"" +
          std::string(header_.variables.empty() ? "" : " and describe the variables by \"##\"") +
          ", and a table with a column of years named \"" + columns_[year_].named.name + "\"",
      [this](const Imported& one) { look_at_years(one); });
}

}  // namespace

std::optional<TemplateVariable> template_variable(std::string_view line) {
  if (!line.starts_with("##")) return std::nullopt;
  const std::string_view text = behind_hashes(line);
  const std::size_t end = text.find_first_of(text.find('\t') == std::string_view::npos ? " " : "\t");
  if (end == std::string_view::npos) return std::nullopt;
  TemplateVariable variable;
  std::string_view name = bare(text.substr(0, end));
  if (name.size() > 1 && name.starts_with('"') && name.ends_with('"')) name = name.substr(1, name.size() - 2);
  variable.name = as_utf_8(name.substr(0, 200));
  // A long name may stand before the components, behind a tab of its own.
  std::string_view components = bare(text.substr(end));
  const std::size_t tab = components.find_last_of('\t');
  if (tab != std::string_view::npos && components.find(',', tab) != std::string_view::npos)
    components = components.substr(tab + 1);
  const std::vector<std::string> parts = parts_of(components, ",");
  const auto part = [&](std::size_t k) { return k < parts.size() ? parts[k] : std::string(); };
  variable.what = part(0);
  variable.units = part(3);
  variable.detail = part(6);
  variable.is_text = part(8) == "c";
  return variable;
}

VariableMeaning meaning_of(const TemplateVariable& variable) {
  constexpr std::array<std::string_view, 3> before_present = {"bp", "before present", "b.p."};
  constexpr std::array<std::string_view, 11> no_widths = {"index",      "indices",   "standard", "residual",
                                                          "chronology", "depth",     "count",    "number",
                                                          "density",    "intensity", "isotope"};
  constexpr std::array<std::string_view, 5> no_units = {"percent", "index", "dimensionless", "unitless",
                                                        "count"};
  constexpr std::array<std::string_view, 4> of_part = {"earlywood", "latewood", "early wood", "late wood"};
  const std::string& what = variable.what;
  const bool by_name = vorn::meaning_of(variable.name) == ColumnMeaning::year ||
                       vorn::meaning_of(variable.name) == ColumnMeaning::year_bp;
  if (what == "age" || what == "year" || (by_name && what.find("width") == std::string::npos)) {
    const bool bp =
        any_in(variable.units, before_present) || vorn::meaning_of(variable.name) == ColumnMeaning::year_bp;
    return bp ? VariableMeaning::year_bp : VariableMeaning::year;
  }
  if (variable.is_text || any_in(what, no_widths) || any_in(variable.units, no_units))
    return VariableMeaning::other;
  if (any_in(what, of_part)) return VariableMeaning::width_of_part;
  const bool is_width = what.find("width") != std::string::npos || what.empty() || unit_said(variable.units);
  return is_width ? VariableMeaning::width : VariableMeaning::other;
}

std::optional<Imported> import_noaa_template(std::span<const FileLine> lines, bool is_utf_16,
                                             const ImportWishes& wishes) {
  TemplateHeader header = header_of(lines);
  if (header.variables.empty() && !header.names_archive) return std::nullopt;
  const auto row = std::ranges::find_if(
      lines, [](const FileLine& line) { return !is_blank(line) && !line.text.starts_with('#'); });
  if (row == lines.end()) return std::nullopt;
  TemplateImport table(lines, std::move(header), separator_of(row->text), wishes);
  if (!table.read_names())
    return import_template_decades(lines, static_cast<std::size_t>(row - lines.begin()), wishes);
  return table.read(is_utf_16);
}

}  // namespace vorn
