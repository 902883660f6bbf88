#include "import/template_decades.h"

#include <algorithm>
#include <string>

#include "import/found_series.h"
#include "import/source_text.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

constexpr std::size_t most_header_lines = 3, field_width = 6, last_column = 72;

bool is_passed_over(const FileLine& line) {
  return is_blank(line) || line.text.starts_with('#');
}

bool goes_on_behind_columns(std::string_view text) {
  return text.size() > last_column && !without_blanks(text.substr(last_column)).empty();
}

bool is_decade(std::span<const FileLine> lines, std::size_t k) {
  if (goes_on_behind_columns(lines[k].text)) return false;
  const auto decade = decade_of(lines[k].text, static_cast<std::int64_t>(k) + 1);
  return decade && decade->in_columns && !decade->fields.empty();
}

// From 0; as many as there are lines where there is none.
std::size_t first_decade(std::span<const FileLine> lines, std::size_t from) {
  std::size_t headers = 0;
  for (std::size_t k = from; k < lines.size(); ++k) {
    if (is_passed_over(lines[k])) continue;
    if (is_decade(lines, k)) return k;
    if (++headers > most_header_lines) return lines.size();
  }
  return lines.size();
}

class DecadesImport {
 public:
  DecadesImport(std::span<const FileLine> lines, std::size_t from, std::size_t first,
                const ImportWishes& wishes)
      : lines_(lines), from_(from), first_(first), found_(wishes) {}
  Imported read();

 private:
  void tell_other_lines();
  void take(const CoreLines& core);
  void take_field(std::size_t series, std::int64_t year, const DecadeLine& decade, const DecadeField& field);

  std::span<const FileLine> lines_;
  std::size_t from_, first_;
  FoundFile found_;
};

void DecadesImport::tell_other_lines() {
  std::int64_t comments = 0;
  for (std::size_t k = 0; k < lines_.size(); ++k) {
    const auto number = static_cast<std::int64_t>(k) + 1;
    comments += lines_[k].text.starts_with('#');
    if (k < from_ || is_passed_over(lines_[k])) continue;
    const std::string_view text = lines_[k].text;
    if (const auto decade = decade_of(text, number)) {
      if (decade->in_columns && goes_on_behind_columns(text))
        found_.tell_each({.kind = kind("behind-columns"),
                          .line = number,
                          .from = number,
                          .to = number,
                          .column = static_cast<int>(last_column) + 1,
                          .words = "stands behind column 72, and is passed over: " +
                                   quoted(as_utf_8(text.substr(last_column, 120)))});
      continue;
    }
    found_.tell_each({.kind = k < first_ ? kind("header") : kind("no-decade"),
                      .line = number,
                      .from = number,
                      .to = number,
                      .words = quoted(as_utf_8(text.substr(0, 120))) + " is passed over"});
  }
  found_.findings.add(
      {.kind = kind("comments"),
       .value = comments,
       .words = counted(comments, "line begins", "lines begin") + " with \"#\", and hold no data"});
}

void DecadesImport::take_field(std::size_t series, std::int64_t year, const DecadeLine& decade,
                               const DecadeField& field) {
  if (field.kind == DecadeField::Kind::empty) return;
  const std::string_view line = lines_[static_cast<std::size_t>(decade.line) - 1].text;
  const std::size_t column = std::min(static_cast<std::size_t>(std::max(field.column, 1)) - 1, line.size());
  const std::string number = std::to_string(field.number);
  const bool is_number = field.kind == DecadeField::Kind::number;
  const TableField at{is_number ? number : line.substr(column, field_width), decade.line, field.column,
                      false};
  if (found_.can_hold(year, at, 1)) found_.take(series, year, at);
}

void DecadesImport::take(const CoreLines& core) {
  const std::int64_t line = core.decades.front().line;
  const auto series = found_.add_series(core.name.empty() ? "S" : core.name, line, 1);
  if (!series) return;
  found_.series(*series).unit = core.unit;
  if (!core.mark)
    found_.findings.add({.kind = kind("no-end-mark"),
                         .line = core.decades.back().line,
                         .from = line,
                         .to = core.decades.back().line,
                         .series = found_.series(*series).name,
                         .words = "no end mark says its unit; all its values are taken for rings"});
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    const std::size_t rings = std::min(core.rings_on(k), decade.fields.size());
    for (std::size_t f = 0; f < rings; ++f)
      take_field(*series, decade.year + static_cast<std::int64_t>(f), decade, decade.fields[f]);
  }
}

Imported DecadesImport::read() {
  tell_other_lines();
  for (const CoreLines& core : cores_on(lines_, first_)) take(core);
  return found_.finished(
      OtherLayout::noaa_template, "NOAA template text with Tucson lines",
      "comments that begin with \"#\", and lines of ring widths in the columns of Tucson files");
}

}  // namespace

std::optional<Imported> import_template_decades(std::span<const FileLine> lines, std::size_t from,
                                                const ImportWishes& wishes) {
  const std::size_t first = first_decade(lines, from);
  if (first >= lines.size()) return std::nullopt;
  return DecadesImport(lines, from, first, wishes).read();
}

}  // namespace vorn
