// What the reader itself decided, in words.
#include <algorithm>
#include <array>
#include <charconv>

#include "formats/layouts.h"
#include "study/file_findings_parts.h"
#include "study/tucson_lines.h"

namespace vorn {
namespace {

std::string_view unit_words(UnitBy by) {
  switch (by) {
    case UnitBy::hundredths_mark:
      return "by the end mark 999";
    case UnitBy::thousandths_mark:
      return "by the end mark -9999";
    case UnitBy::no_mark:
      return "since there is no end mark";
    case UnitBy::next_stretch:
      return "by the end mark of the stretch behind it";
    case UnitBy::unit_line:
      return "by its unit line";
    case UnitBy::mean:
      return "by the size of its values, since there is no unit line";
    case UnitBy::exponent:
      return "by the exponent of its header";
    case UnitBy::edit_format:
      return "by its format, since there is no exponent";
  }
  return "";
}

struct WhyLinesNotTaken {
  const FindingKind* kind;
  std::string_view words;
};

// Of lines that another part tells of: no kind.
WhyLinesNotTaken why(NotTaken reason) {
  switch (reason) {
    case NotTaken::header:
      return {kind("header"), "header lines before the data"};
    case NotTaken::unknown_key:
      return {kind("unknown-key"), "a keyword that is not read"};
    case NotTaken::no_decade:
      return {kind("no-decade"), "a line of statistics is no decade and is left out"};
    case NotTaken::no_end_mark:
    case NotTaken::no_name:
    case NotTaken::behind_end:
    case NotTaken::cut_header:
      break;
    case NotTaken::long_header:
      return {kind("long-header"), "no data within as many lines as a header may have"};
    case NotTaken::no_room:
      return {kind("no-room"), "there is no room for more rings"};
    case NotTaken::series_limit:
      return {kind("series-limit"), "more series than a file may hold"};
    case NotTaken::year_limit:
      return {kind("year-limit"), "more years than a chronology may have"};
  }
  return {};
}

std::string unit_text(double unit) {
  if (!(unit > 0)) return "unknown unit ";
  std::array<char, 32> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), unit, std::chars_format::general, 6).ptr;
  return "1/" + std::string(text.data(), end) + " mm ";
}

void add_series(const SeriesRead& series, FindingList& found) {
  FileFinding one = about(series, kind("series"));
  one.value = std::int64_t{series.rings};
  one.words = counted(series.rings, "ring", "rings") + " in " + unit_text(series.unit) +
              std::string(unit_words(series.unit_by));
  found.add(one);
  if (series.unit_by == UnitBy::no_mark) {
    one = about(series, kind("no-end-mark"));
    one.words = "the unit is a guess: there is no end mark";
    found.add(one);
  }
  if (series.split) {
    one = about(series, kind("split"));
    one.words = "too long for one series: what follows is one of its own";
    found.add(one);
  }
}

// Records without a unit line: as a rule all of a file or none.
void add_units_by_mean(const ReadDecisions& decided, FindingList& found) {
  const auto is_so = [](const SeriesRead& series) { return series.unit_by == UnitBy::mean; };
  const auto first = std::ranges::find_if(decided.series, is_so);
  if (first == decided.series.end()) return;
  const auto count = static_cast<std::int64_t>(std::ranges::count_if(decided.series, is_so));
  FileFinding one = about(*first, kind("unit-by-mean"));
  if (count > 1) one.series.clear();
  for (const SeriesRead& series : decided.series) {
    if (is_so(series)) one.to = series.last_line;
  }
  one.value = count;
  one.words = "the unit of " + counted(count, "series", "series") + " is a guess: there is no unit line";
  found.add(one);
}

std::span<const FileLine> lines_behind(const LinesNotTaken& end, std::span<const FileLine> lines) {
  return lines.subspan(
      std::min(static_cast<std::size_t>(std::max<std::int64_t>(end.first - 1, 0)), lines.size()));
}

// Behind the line that ends the file: data, words or nothing.
void add_end(const LinesNotTaken& end, Layout layout, std::span<const FileLine> lines, FindingList& found) {
  const auto rest = lines_behind(end, lines);
  const auto of_words = std::ranges::count_if(rest, [](const FileLine& line) { return !is_blank(line); });
  FileFinding one{.kind = kind("blank-end"), .line = end.first, .from = end.first, .to = end.last};
  one.words = "lines of blanks end the file";
  if (of_words > 0) {
    const bool is_cut = end.why == NotTaken::cut_header;
    const bool has_digits = std::ranges::any_of(rest, [](const FileLine& line) {
      return line.text.find_first_of("0123456789") != std::string_view::npos;
    });
    const bool has_data =
        layout == Layout::tucson_raw ? !cores_on(lines, lines.size() - rest.size()).empty() : has_digits;
    one.kind = !has_data ? kind("text-behind-end") : is_cut ? kind("cut-header") : kind("behind-end");
    one.value = static_cast<std::int64_t>(of_words);
    one.words = is_cut ? "the file ends in a header"
                       : "a line without a name ends the file: what follows is not read";
  }
  found.add(one);
}

}  // namespace

bool ends_in_blank_lines(const FileTaken& file) {
  const auto& not_taken = file.decided.not_taken;
  const auto cut = std::ranges::find(not_taken, NotTaken::cut_header, &LinesNotTaken::why);
  if (cut == not_taken.end()) return false;
  const std::vector<FileLine> lines = lines_of(file.bytes);
  return std::ranges::all_of(lines_behind(*cut, lines), is_blank);
}

void add_reading_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  const LayoutRow* row = row_of(file.recognition.layout);
  if (!row) return;
  const ReadDecisions& decided = file.decided;
  found.add({.kind = kind("layout"),
             .line = file.recognition.line,
             .value = std::string(row->name),
             .words = "since line " + std::to_string(file.recognition.line) + " " +
                      std::string(file.recognition.test)});
  for (const SeriesRead& series : decided.series) add_series(series, found);
  add_units_by_mean(decided, found);
  for (const LinesNotTaken& behind : decided.not_taken) {
    if (behind.why == NotTaken::behind_end || behind.why == NotTaken::cut_header)
      add_end(behind, decided.layout, lines, found);
    const auto [of, words] = why(behind.why);
    if (of)
      found.add({.kind = of,
                 .line = behind.first,
                 .from = behind.first,
                 .to = behind.last,
                 .words = std::string(words)});
  }
  if (decided.more_not_taken > 0)
    found.add({.kind = kind("more"),
               .value = static_cast<std::int64_t>(decided.more_not_taken),
               .words = "further lines were not taken"});
  if (decided.missing_rings > 0)
    found.add({.kind = kind("missing-rings"),
               .value = std::int64_t{decided.missing_rings},
               .words = "rings that the file marks as missing"});
}

}  // namespace vorn
