// Tucson ring widths: each ring that stands in the file against those that were taken.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

#include "formats/tucson_raw_layout.h"
#include "study/file_findings_parts.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

using Years = std::vector<std::int64_t>;

// A finding about a core; its lines are those of the core unless others are said.
FileFinding about(const CoreLines& core, const FindingKind* of, std::int64_t line = 0) {
  FileFinding one{.kind = of, .series = core.name};
  one.line = line > 0 ? line : core.decades.front().line;
  one.from = line > 0 ? line : core.decades.front().line;
  one.to = line > 0 ? line : core.decades.back().line;
  return one;
}

// What became of the rings of one core.
struct CoreAudit {
  Years lost, changed, empty;
  std::vector<std::int64_t> lost_lines;
  std::int64_t rings = 0;                            // that the file has
  std::optional<std::int64_t> from_year, read_from;  // where the first was dated otherwise
  std::int64_t moved_line = 0;
  double read_unit = 0;  // where it is not that of the core's end mark
  std::int64_t unit_line = 0;
};

class RawAudit {
 public:
  RawAudit(const FileTaken& file, FindingList& found)
      : file_(file), found_(found), met_(file.cores.size()), moved_(file.cores.size()) {}

  void look_at(const CoreLines& core);
  void add_invented();

 private:
  std::optional<std::size_t> series_on(std::int64_t line) const;
  void look_at_decade(const CoreLines& core, std::size_t k, CoreAudit& audit);
  void look_at_start(const DecadeLine& decade, std::size_t series, const CoreLines& core, CoreAudit& audit);
  void look_at_ring(const DecadeLine& decade, std::size_t k, std::size_t series, CoreAudit& audit);
  void tell(const CoreLines& core, const CoreAudit& audit);
  std::string cause_of(std::int64_t line) const;

  const FileTaken& file_;
  FindingList& found_;
  std::vector<std::int64_t> met_;                   // of each series, rings that stand in the file
  std::vector<std::optional<std::int64_t>> moved_;  // by how many years each was dated otherwise
};

// The series that the reader made of a line.
std::optional<std::size_t> RawAudit::series_on(std::int64_t line) const {
  const auto& all = file_.decided.series;
  const auto behind = std::ranges::upper_bound(all, line, {}, &SeriesRead::first_line);
  if (behind == all.begin()) return std::nullopt;
  const auto k = static_cast<std::size_t>(behind - all.begin()) - 1;
  if (line > all[k].last_line || k >= file_.cores.size()) return std::nullopt;
  return k;
}

// By how many years the series was dated otherwise than its first line says.
void RawAudit::look_at_start(const DecadeLine& decade, std::size_t series, const CoreLines& core,
                             CoreAudit& audit) {
  if (!moved_[series]) {
    moved_[series] = file_.cores[series].first - decade.year;
    if (*moved_[series] != 0 && !audit.read_from) {
      audit.from_year = decade.year;
      audit.read_from = file_.cores[series].first;
      audit.moved_line = decade.line;
    }
  }
  const double unit = file_.decided.series[series].unit;
  if (core.unit && unit != *core.unit && audit.read_unit == 0) {
    audit.read_unit = unit;
    audit.unit_line = decade.line;
  }
}

void RawAudit::look_at_ring(const DecadeLine& decade, std::size_t k, std::size_t series, CoreAudit& audit) {
  const SeriesView& taken = file_.cores[series];
  const DecadeField& field = decade.fields[k];
  const std::int64_t year = decade.year + static_cast<std::int64_t>(k);
  const std::int64_t read_year = year + *moved_[series];
  const bool is_within = read_year >= taken.first && read_year <= taken.years().last;
  if (field.kind == DecadeField::Kind::empty) {
    if (!is_within) return;
    audit.empty.push_back(year);
    ++met_[series];
    return;
  }
  ++audit.rings;
  if (!is_within) {
    audit.lost.push_back(year);
    audit.lost_lines.push_back(decade.line);
    return;
  }
  ++met_[series];
  const double width = field.number / file_.decided.series[series].unit;
  const bool same = field.kind == DecadeField::Kind::number &&
                    (taken.has(read_year) ? std::abs(taken.at(read_year) - width) < 1e-9 : field.number < 0);
  if (!same) audit.changed.push_back(year);
}

void RawAudit::look_at_decade(const CoreLines& core, std::size_t k, CoreAudit& audit) {
  const DecadeLine& decade = core.decades[k];
  const std::size_t rings = core.rings_on(k);
  const auto series = series_on(decade.line);
  if (series) {
    look_at_start(decade, *series, core, audit);
    for (std::size_t place = 0; place < rings; ++place) look_at_ring(decade, place, *series, audit);
    // Empty fields at the end of a line that others follow are rings of width 0 to the reader.
    const auto room = static_cast<std::size_t>(decade.next_year() - decade.year);
    for (std::size_t place = rings; k + 1 < core.decades.size() && place < room; ++place) {
      const std::int64_t year = decade.year + static_cast<std::int64_t>(place);
      if (!file_.cores[*series].has(year + *moved_[*series])) continue;
      audit.empty.push_back(year);
      ++met_[*series];
    }
    return;
  }
  for (std::size_t place = 0; place < rings; ++place) {
    if (decade.fields[place].kind == DecadeField::Kind::empty) continue;
    ++audit.rings;
    audit.lost.push_back(decade.year + static_cast<std::int64_t>(place));
    audit.lost_lines.push_back(decade.line);
  }
}

// Why the rings of a line were not taken.
std::string RawAudit::cause_of(std::int64_t line) const {
  if (found_.is_full()) return "";  // it would not be given
  if (file_.recognition.layout == Layout::tucson_index)
    return "lines of 80 columns are taken for a chronology";
  if (file_.recognition.layout != Layout::tucson_raw) return "the layout is not recognised";
  for (const LinesNotTaken& lines : file_.decided.not_taken) {
    const bool is_on = line >= lines.first && (lines.last == LinesNotTaken::to_the_end || line <= lines.last);
    if (!is_on) continue;
    if (lines.why == NotTaken::behind_end)
      return "line " + std::to_string(lines.first) + ", without a name, ends the file";
    if (lines.why == NotTaken::no_name) return "it has no name and follows no series";
    if (lines.why == NotTaken::header) return "it is taken for a header line";
    if (lines.why == NotTaken::no_room) return "there is no room for more rings";
    if (lines.why == NotTaken::series_limit) return "there is no room for more series";
  }
  const auto series = series_on(line);
  if (!series) return "no series was made of the line";
  if (!file_.decided.series[*series].end_mark)
    return "a series without an end mark on its last line, " +
           std::to_string(file_.decided.series[*series].last_line) +
           ", loses that line and the ring before it";
  return "the line has more fields than its decade has years";
}

void RawAudit::tell(const CoreLines& core, const CoreAudit& audit) {
  const auto lost = static_cast<std::int64_t>(audit.lost.size());
  if (lost > 0) {
    FileFinding one = about(core, lost == audit.rings ? kind("lost-series") : kind("lost-rings"));
    one.line = one.from = audit.lost_lines.front();
    one.to = audit.lost_lines.back();
    one.value = lost;
    one.words = (lost == audit.rings ? "none of its " + counted(lost, "ring", "rings") + " is read, "
                                     : counted(lost, "ring", "rings") + " of " + std::to_string(audit.rings) +
                                           " not read, ") +
                spans_words(audit.lost) + ": " + cause_of(audit.lost_lines.front());
    found_.add(one);
  }
  if (!audit.changed.empty()) {
    FileFinding one = about(core, kind("changed-rings"));
    one.value = static_cast<std::int64_t>(audit.changed.size());
    one.words = "rings read otherwise than they stand there, " + spans_words(audit.changed);
    found_.add(one);
  }
  if (!audit.empty.empty()) {
    FileFinding one = about(core, kind("empty-field"));
    one.value = static_cast<std::int64_t>(audit.empty.size());
    one.words = "left empty, read as rings of width 0: " + spans_words(audit.empty);
    found_.add(one);
  }
  if (audit.read_from) {
    FileFinding one = about(core, kind("wrong-years"), audit.moved_line);
    one.value = *audit.read_from;
    one.words = "begins in " + std::to_string(*audit.from_year) + " and is read as from " +
                std::to_string(*audit.read_from) + " on";
    found_.add(one);
  }
  if (audit.read_unit > 0) {
    FileFinding one = about(core, kind("wrong-unit"), audit.unit_line);
    one.words = "widths in " +
                std::string(*core.unit == 1000 ? "thousandths are read as hundredths"
                                               : "hundredths are read as thousandths") +
                " of a millimetre";
    found_.add(one);
  }
}

void RawAudit::look_at(const CoreLines& core) {
  CoreAudit audit;
  for (std::size_t k = 0; k < core.decades.size(); ++k) look_at_decade(core, k, audit);
  tell(core, audit);
}

// Rings that no line of the file holds.
void RawAudit::add_invented() {
  for (std::size_t k = 0; k < met_.size(); ++k) {
    const SeriesRead& series = file_.decided.series[k];
    const auto rings = static_cast<std::int64_t>(file_.cores[k].values.size());
    const bool is_core = moved_[k].has_value();  // at least one of its lines is a decade
    if (is_core && rings <= met_[k]) continue;
    FileFinding one{.kind = kind("invented-rings"),
                    .line = series.first_line,
                    .from = series.first_line,
                    .to = series.last_line,
                    .series = std::string(without_blanks(series.name.view()))};
    one.value = rings - met_[k];
    one.words = is_core ? counted(rings - met_[k], "ring", "rings") + " that no line holds"
                        : "a series is made of lines that are no decades";
    found_.add(one);
  }
}

// --- What is odd although it is read

// A number that would end a core of that unit: 999 among thousandths is a ring as any other.
bool is_mark(const CoreLines& core, const DecadeField& field) {
  const auto unit = field.kind == DecadeField::Kind::number ? unit_of_mark(field.number) : std::nullopt;
  return unit && (!core.unit || *unit == *core.unit || *unit == unit_of_mark(tucson_raw::end_of_thousandths));
}

// Behind the end mark, and further marks before it.
void add_marks(const CoreLines& core, FindingList& found) {
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    const DecadeLine& decade = core.decades[k];
    const bool is_last = k + 1 == core.decades.size();
    std::size_t first = 0;
    while (first < core.rings_on(k) && !is_mark(core, decade.fields[first])) ++first;
    if (first < core.rings_on(k)) {
      const bool doubled = is_last && core.mark &&
                           std::all_of(decade.fields.begin() + static_cast<std::ptrdiff_t>(first),
                                       decade.fields.begin() + static_cast<std::ptrdiff_t>(*core.mark),
                                       [&](const DecadeField& field) { return is_mark(core, field); });
      FileFinding one = about(core, doubled ? kind("two-end-marks") : kind("mark-inside"), decade.line);
      one.column = decade.fields[first].column;
      one.value = std::int64_t{decade.fields[first].number};
      one.words = doubled ? "the last of several end marks counts: those before it are read as rings"
                          : "looks like an end mark and is read as a ring";
      found.add(one);
    }
    if (!is_last || !core.mark) continue;
    const auto behind = std::span(decade.fields).subspan(*core.mark + 1);
    const auto lost = std::ranges::count_if(
        behind, [](const DecadeField& field) { return field.kind != DecadeField::Kind::empty; });
    if (lost == 0) continue;
    FileFinding one = about(core, kind("behind-mark"), decade.line);
    one.column = behind.front().column;
    one.value = static_cast<std::int64_t>(lost);
    one.words =
        counted(static_cast<std::int64_t>(lost), "field", "fields") + " behind the end mark are not read";
    found.add(one);
  }
}

void add_years(const CoreLines& core, FindingList& found) {
  for (std::size_t k = 0; k + 1 < core.decades.size(); ++k) {
    const std::int64_t next = core.decades[k].next_year(), is = core.decades[k + 1].year;
    if (is == next) continue;
    FileFinding one = about(core, is < next ? kind("years-out-of-order") : kind("decades-do-not-follow"),
                            core.decades[k + 1].line);
    one.value = is;
    one.words = std::to_string(next) + " would follow, not " + std::to_string(is) +
                ": a series of its own begins here";
    found.add(one);
  }
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// Whether the year of a line begins in the last column of the name: 10000 to 10999, which leave a zero in
// front of the year that is read. Names and years that touch so by chance have a letter before the digit.
bool has_year_of_five_digits(std::string_view text, const CoreLines* before) {
  constexpr std::size_t last_of_name = Name::length - 1, behind_year = Name::length + 4;
  if (text.size() < behind_year || text[last_of_name] != '1' || text[Name::length] != '0') return false;
  if (!std::ranges::all_of(text.substr(Name::length, 4), is_digit)) return false;
  const std::string_view name = without_blanks(text.substr(0, last_of_name));
  return text[last_of_name - 1] == ' ' || (before && before->name == name);
}

void add_five_digit_years(const CoreLines& core, const CoreLines* before, std::span<const FileLine> lines,
                          FindingList& found) {
  for (const DecadeLine& decade : core.decades) {
    const std::string_view text = lines[static_cast<std::size_t>(decade.line) - 1].text;
    if (!decade.in_columns || decade.is_shifted || !has_year_of_five_digits(text, before)) continue;
    FileFinding one = about(core, kind("five-digit-years"), decade.line);
    one.value = std::int64_t{10'000} + decade.year;
    one.words = "the year " + std::to_string(10'000 + decade.year) +
                " has five digits: it is read as the year " + std::to_string(decade.year) + " of a core " +
                quoted(core.name);
    return found.add(one);
  }
}

// Decades of a core that are written in some way, told as one.
void add_written_so(const CoreLines& core, bool (*is_so)(const DecadeLine&), const FindingKind* of,
                    const std::string& words, FindingList& found) {
  const auto first = std::ranges::find_if(core.decades, is_so);
  if (first == core.decades.end()) return;
  FileFinding one = about(core, of, first->line);
  const auto count = static_cast<std::int64_t>(std::ranges::count_if(core.decades, is_so));
  for (const DecadeLine& decade : core.decades) {
    if (is_so(decade)) one.to = decade.line;
  }
  one.value = count;
  one.words = counted(count, "line", "lines") + " " + words;
  found.add(one);
}

void add_columns(const CoreLines& core, FindingList& found) {
  add_written_so(
      core, [](const DecadeLine& decade) { return !decade.in_columns; }, kind("not-in-columns"),
      "not in the columns of the layout", found);
  add_written_so(
      core, [](const DecadeLine& decade) { return decade.is_shifted; }, kind("shifted"),
      "to the left of the columns, which cut name and year in the wrong place: read as " + quoted(core.name) +
          " from " + std::to_string(core.decades.front().year) + " on",
      found);
  add_written_so(
      core, [](const DecadeLine& decade) { return decade.run_together; }, kind("run-together"),
      "with numbers that touch, told apart by columns alone", found);
  for (const DecadeLine& decade : core.decades) {
    const auto bad = std::ranges::find_if(decade.fields, [](const DecadeField& field) {
      return field.kind == DecadeField::Kind::bad || field.kind == DecadeField::Kind::decimal;
    });
    if (bad == decade.fields.end()) continue;
    FileFinding one = about(core, kind("bad-field"), decade.line);
    one.column = bad->column;
    one.words = bad->kind == DecadeField::Kind::bad ? "a width that is no number"
                                                    : "a width with a decimal point, which is not read";
    found.add(one);
  }
}

CoreAsWritten as_written(const CoreLines& core) {
  CoreAsWritten written{core.name, core.decades.front().line, core.decades.back().line};
  for (std::size_t k = 0; k < core.decades.size(); ++k) {
    for (std::size_t place = 0; place < core.rings_on(k); ++place) {
      const DecadeField& field = core.decades[k].fields[place];
      if (field.kind != DecadeField::Kind::number) continue;
      written.years.push_back(core.decades[k].year + static_cast<std::int64_t>(place));
      written.values.push_back(field.number);
    }
  }
  return written;
}

// --- Lines that are no decades

// Runs of lines with words that are no decade, behind the header lines.
void add_other_lines(const FileTaken& file, std::span<const FileLine> lines, std::span<const CoreLines> cores,
                     FindingList& found) {
  std::vector<bool> is_decade(lines.size() + 1);
  for (const CoreLines& core : cores) {
    for (const DecadeLine& decade : core.decades) is_decade[static_cast<std::size_t>(decade.line)] = true;
  }
  const auto is_other = [&](std::size_t k) { return !is_decade[k + 1] && !is_blank(lines[k]); };
  for (auto k = static_cast<std::size_t>(std::max(file.decided.header_lines, 0)); k < lines.size(); ++k) {
    if (!is_other(k)) continue;
    std::size_t last = k;
    while (last + 1 < lines.size() && is_other(last + 1)) ++last;
    FileFinding one{.kind = kind("no-decade"), .line = static_cast<std::int64_t>(k) + 1};
    one.from = one.line;
    one.to = static_cast<std::int64_t>(last) + 1;
    one.words = (last > k ? counted(static_cast<std::int64_t>(last - k) + 1, "line", "lines") +
                                " among the data are no decades: "
                          : "a line among the data is no decade: ") +
                quoted(lines[k].text);
    found.add(one);
    k = last;
  }
}

void add_behind_columns(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  const auto last_column = static_cast<std::size_t>(tucson_raw::fields.back().last);
  FileFinding one{.kind = kind("behind-columns")};
  std::int64_t count = 0;
  for (auto k = static_cast<std::size_t>(std::max(file.decided.header_lines, 0)); k < lines.size(); ++k) {
    const std::string_view text = lines[k].text;
    if (text.size() <= last_column) continue;
    const std::size_t at = text.find_first_not_of(" \x1a", last_column);
    if (at == std::string_view::npos) continue;
    if (count++ == 0) {
      one.line = one.from = static_cast<std::int64_t>(k) + 1;
      one.column = static_cast<int>(std::min<std::size_t>(at, 1'000'000)) + 1;
    }
    one.to = static_cast<std::int64_t>(k) + 1;
  }
  if (count == 0) return;
  one.value = count;
  one.words = "what stands behind column " + std::to_string(last_column) + " is not read, on " +
              counted(count, "line", "lines");
  found.add(one);
}

}  // namespace

void add_lost_cores(const FileTaken& file, std::span<const CoreLines> cores, FindingList& found) {
  RawAudit audit(file, found);
  for (const CoreLines& core : cores) audit.look_at(core);
  audit.add_invented();
}

// Whether the line is in columns and ends in an end mark, as no header line does by chance.
bool ends_a_core(const DecadeLine& decade) {
  return decade.in_columns && decade.fields.back().kind == DecadeField::Kind::number &&
         unit_of_mark(decade.fields.back().number).has_value();
}

std::optional<DecadeLine> decade_in_columns(std::string_view text) {
  auto decade = decade_of(text, 1);
  return decade && decade->is_shifted ? decade_of(in_its_columns(text), 1) : decade;
}

// The line of data before which, among the header lines, there may be more of the same core.
std::size_t first_line_of_data(const FileTaken& file, std::span<const FileLine> lines) {
  std::size_t from = std::min(static_cast<std::size_t>(std::max(file.decided.header_lines, 0)), lines.size());
  if (from == lines.size()) return from;
  auto next = decade_in_columns(lines[from].text);
  while (next && from > 0) {
    auto before = decade_in_columns(lines[from - 1].text);
    if (!before || before->name.empty()) break;
    if (before->name != next->name && before->next_year() != next->year && !ends_a_core(*before)) break;
    // A line of numbers in a header may look like one that does not keep to the columns.
    if (!before->in_columns && before->next_year() != next->year) break;
    next = std::move(before);
    --from;
  }
  return from;
}

// Cores as careful reading has them: a 999 before other widths is a ring.
void take_rings_for_rings(std::vector<CoreLines>& cores) {
  for (CoreLines& core : cores) {
    if (!core.mark || core.unit != unit_of_mark(tucson_raw::end_of_hundredths)) continue;
    const auto behind = std::span(core.decades.back().fields).subspan(*core.mark + 1);
    if (std::ranges::all_of(behind, [](const DecadeField& field) { return field.number == 0; })) continue;
    core.mark.reset();
    core.unit.reset();
  }
}

void add_raw_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  const std::size_t from = first_line_of_data(file, lines);
  const auto header_lines = static_cast<std::size_t>(std::max(file.decided.header_lines, 0));
  if (from < header_lines)
    found.add(
        {.kind = kind("header-is-data"),
         .line = static_cast<std::int64_t>(from) + 1,
         .from = static_cast<std::int64_t>(from) + 1,
         .to = static_cast<std::int64_t>(header_lines),
         .words =
             "data are taken for header lines, since the first of them is not as long as its year asks for"});
  std::vector<CoreLines> cores = cores_on(lines, from);
  if (file.decided.careful.has(Mend::end_mark)) take_rings_for_rings(cores);
  add_lost_cores(file, cores, found);
  std::vector<CoreAsWritten> written;
  const CoreLines* before = nullptr;
  for (const CoreLines& core : cores) {
    add_marks(core, found);
    add_years(core, found);
    add_five_digit_years(core, std::exchange(before, &core), lines, found);
    add_columns(core, found);
    written.push_back(as_written(core));
    add_value_findings(written.back(), file.this_year, found);
  }
  add_name_findings(written, found);
  add_other_lines(file, lines, cores, found);
  add_behind_columns(file, lines, found);
}

}  // namespace vorn
