#include "import/workbook.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "import/archive_parts.h"
#include "import/fields.h"
#include "import/found_series.h"
#include "import/refused_files.h"
#include "import/sheet_cells.h"
#include "import/source_text.h"
#include "import/tables.h"
#include "import/workbook_parts.h"

namespace vorn {
namespace {

constexpr std::string_view layout_name = "workbook", why_not_read = "an archive that holds a workbook";

// A sheet that is looked at, by the rows that it has among those of all sheets.
struct SheetRows {
  std::string name = {};
  std::size_t first = 0, end = 0;  // from 0
  bool is_table = false;
};

// The column of a cell, from 1, by its place in the row as text. Many findings may be about one long row.
class CellColumns {
 public:
  explicit CellColumns(std::span<const FileLine> lines) : lines_(lines) {}
  int of(std::int64_t line, int column) {
    if (line != line_) look_at(line);
    const auto at = static_cast<std::size_t>(std::max(column, 1)) - 1;
    return 1 + static_cast<int>(std::ranges::lower_bound(tabs_, at) - tabs_.begin());
  }

 private:
  void look_at(std::int64_t line) {
    const std::string_view row = lines_[static_cast<std::size_t>(line) - 1].text;
    tabs_.clear();
    for (std::size_t at = row.find('\t'); at != std::string_view::npos; at = row.find('\t', at + 1))
      tabs_.push_back(at);
    line_ = line;
  }

  std::span<const FileLine> lines_;
  std::int64_t line_ = 0;
  std::vector<std::size_t> tabs_;
};

class WorkbookImport {
 public:
  WorkbookImport(ArchiveParts& archive, const ImportWishes& wishes) : archive_(archive), found_(wishes) {}
  Imported read();

 private:
  void read_part(const SheetPart& part);
  void tell_cells(const SheetPart& part, const SheetCells& cells, std::size_t first);
  void tell(const FindingKind* of, std::size_t row, std::int64_t value, std::string words);
  void take_sheets();
  void put_in_place(Imported& one) const;
  void name_rows(FileFinding& finding, const SheetRows& own) const;
  const SheetRows* sheet_of(std::int64_t line) const;

  ArchiveParts& archive_;
  FoundFile found_;
  WorkbookParts parts_;
  std::vector<std::string> rows_;
  std::vector<FileLine> lines_;
  std::vector<SheetRows> sheets_;
  std::size_t room_ = most_sheet_text;
  std::size_t tables_ = 0;
  std::string failure_;
};

std::string sheet_words(std::string_view name) {
  return "sheet " + quoted(as_utf_8(name));
}

void WorkbookImport::tell(const FindingKind* of, std::size_t row, std::int64_t value, std::string words) {
  found_.findings.add(
      {.kind = of, .line = static_cast<std::int64_t>(row), .value = value, .words = std::move(words)});
}

void WorkbookImport::tell_cells(const SheetPart& part, const SheetCells& cells, std::size_t first) {
  const std::string name = sheet_words(part.name);
  if (!cells.cut.empty()) tell(kind("too-large"), 0, 0, name + ": " + cells.cut);
  if (cells.not_computed > 0)
    tell(kind("no-stored-value"), first + static_cast<std::size_t>(cells.first_not_computed),
         cells.not_computed,
         counted(cells.not_computed, "formula has", "formulas have") +
             " no stored value: open the workbook, " + "compute it and save it");
  if (cells.without_text > 0)
    tell(kind("no-stored-value"), first + static_cast<std::size_t>(cells.first_without_text),
         cells.without_text,
         counted(cells.without_text, "cell has a text", "cells have texts") +
             " that the workbook does not hold");
  if (cells.hidden_rows + cells.hidden_columns > 0)
    tell(kind("hidden-sheet"), 0, cells.hidden_rows + cells.hidden_columns,
         name + ": " + counted(cells.hidden_rows, "row", "rows") + " and " +
             counted(cells.hidden_columns, "column", "columns") +
             " that are hidden are taken as if they were not");
  if (cells.merged > 0)
    tell(kind("merged-cells"), 0, cells.merged,
         name + ": " + counted(cells.merged, "span of cells is", "spans of cells are") +
             " one cell: its value stands in the first");
}

void WorkbookImport::read_part(const SheetPart& part) {
  const std::string name = sheet_words(part.name);
  if (part.is_hidden) return tell(kind("hidden-sheet"), 0, 0, name + " is hidden, and is passed over");
  if (!part.is_table || part.part.empty())
    return tell(kind("sheet"), 0, 0, name + " holds no cells, and is passed over");
  const auto xml = archive_.read(part.part);
  SheetCells cells;
  std::string wrong = xml ? read_sheet(*xml, parts_.shared, parts_.styles, room_, cells)
                      : archive_.failure().empty() ? "its part " + part.part + " is missing"
                                                   : archive_.failure();
  if (!wrong.empty()) {
    if (failure_.empty()) failure_ = name + ": " + wrong;
    return;
  }
  const std::size_t first = rows_.size();
  std::ranges::move(cells.rows, std::back_inserter(rows_));
  const std::size_t most = std::min(rows_.size(), most_lines_examined - 1);
  if (most < rows_.size()) {
    cells.cut = "rows behind " + std::to_string(most) + " of all sheets together are not looked at";
    rows_.resize(most);
  }
  sheets_.push_back({.name = part.name, .first = std::min(first, rows_.size()), .end = rows_.size()});
  tell_cells(part, cells, first);
  if (cells.rows.empty() && first == rows_.size()) tell(kind("sheet"), 0, 0, name + " is empty");
}

void WorkbookImport::take_sheets() {
  lines_.reserve(rows_.size());
  for (const std::string& row : rows_) lines_.push_back({row, LineEnd::lf});
  const std::span<const FileLine> lines(lines_);
  for (SheetRows& sheet : sheets_) {
    if (sheet.first == sheet.end) continue;
    sheet.is_table = take_table(lines.first(sheet.end), sheet.first, found_);
    tables_ += sheet.is_table;
    if (sheet.is_table) continue;
    std::int64_t numbers = 0;
    for (std::size_t row = sheet.first; row < sheet.end; ++row) {
      TableRows fields(lines.subspan(row, 1), '\t');
      if (fields.next()) numbers += found_.numbers_among(fields.fields());
    }
    tell(kind("sheet"), sheet.first + 1, numbers,
         sheet_words(sheet.name) + " holds no table of ring widths that is known, and is passed over with " +
             counted(numbers, "number", "numbers"));
  }
}

const SheetRows* WorkbookImport::sheet_of(std::int64_t line) const {
  const auto found = std::ranges::find_if(sheets_, [line](const SheetRows& sheet) {
    return line > static_cast<std::int64_t>(sheet.first) && line <= static_cast<std::int64_t>(sheet.end);
  });
  return found == sheets_.end() ? nullptr : &*found;
}

// Lines that are named in the words of findings which hold no text of the file, as rows of their sheet, which
// is named where it is another one.
void WorkbookImport::name_rows(FileFinding& finding, const SheetRows& own) const {
  constexpr std::array<std::string_view, 5> kinds = {"year-twice", "two-points", "name-twice",
                                                     "name-twice-same-years", "gap"};
  constexpr std::string_view before_number = "line ", digits = "0123456789";
  if (std::ranges::find(kinds, finding.kind->id) == kinds.end()) return;
  for (std::size_t at = 0; (at = finding.words.find(before_number, at)) != std::string::npos;) {
    at += before_number.size();
    const std::size_t end = std::min(finding.words.find_first_not_of(digits, at), finding.words.size());
    const auto line = whole_number_in(std::string_view(finding.words).substr(at, end - at));
    const SheetRows* sheet = line ? sheet_of(*line) : nullptr;
    if (!sheet) continue;
    std::string row = std::to_string(*line - static_cast<std::int64_t>(sheet->first));
    if (sheet != &own) row += " of " + sheet_words(sheet->name);
    finding.words.replace(at, end - at, row);
    at += row.size();
  }
}

// Lines of all sheets become rows of each; where there are several, findings name theirs.
void WorkbookImport::put_in_place(Imported& one) const {
  CellColumns columns(lines_);
  for (ImportedSeries& series : one.series) {
    const SheetRows* sheet = sheet_of(series.line);
    if (!sheet) continue;
    series.column = columns.of(series.line, series.column);
    series.line -= static_cast<std::int64_t>(sheet->first);
  }
  for (FileFinding& finding : one.findings) {
    const SheetRows* sheet = sheet_of(finding.line);
    if (!sheet) continue;
    if (finding.column > 0) finding.column = columns.of(finding.line, finding.column);
    const auto before = static_cast<std::int64_t>(sheet->first);
    for (std::int64_t* line : {&finding.line, &finding.from, &finding.to})
      *line = std::max<std::int64_t>(*line - before, 0);
    name_rows(finding, *sheet);
    if (sheets_.size() > 1 && finding.kind != kind("sheet"))
      finding.words += " (" + sheet_words(sheet->name) + ")";
  }
}

Imported WorkbookImport::read() {
  std::string wrong = read_workbook_parts(archive_, parts_);
  if (wrong.empty() && parts_.sheets.empty()) wrong = "it has no sheet";
  if (!wrong.empty()) return refused_file(std::string(layout_name), std::string(why_not_read), wrong);
  for (const SheetPart& part : parts_.sheets) read_part(part);
  if (parts_.sheets_behind > 0)
    tell(kind("too-large"), 0, parts_.sheets_behind,
         counted(parts_.sheets_behind, "sheet", "sheets") + " behind " + the_nth(most_sheets) +
             (parts_.sheets_behind == 1 ? " is" : " are") + " not looked at");
  if (!failure_.empty()) return refused_file(std::string(layout_name), std::string(why_not_read), failure_);
  take_sheets();
  const std::string tables =
      counted(static_cast<std::int64_t>(tables_), "sheet is a table", "sheets are tables");
  Imported one = found_.finished(OtherLayout::wide_table, std::string(layout_name),
                                 tables + " of ring widths, of " + std::to_string(parts_.sheets.size()));
  put_in_place(one);
  return one;
}

}  // namespace

std::optional<Imported> import_workbook(std::string_view bytes, const ImportWishes& wishes) {
  if (!bytes.starts_with("PK\x03\x04")) return std::nullopt;
  ArchiveParts archive(bytes);
  if (archive.failure().empty() && archive.has("content.xml") && archive.has("META-INF/manifest.xml"))
    return refused_open_document("the parts of the archive say so");
  if (archive.failure().empty() && !holds_workbook(archive))
    return refused_file("archive", "begins as an archive",
                        "it holds no workbook: unpack it and open the files in it");
  if (!archive.failure().empty())
    return refused_file(std::string(layout_name), "begins as an archive", archive.failure());
  return WorkbookImport(archive, wishes).read();
}

}  // namespace vorn
