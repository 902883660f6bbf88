// Heidelberg and compact ring widths: what stands behind each header against the rings that were made of it.
#include <algorithm>
#include <cmath>
#include <optional>

#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "formats/heidelberg_layout.h"
#include "study/file_findings_parts.h"

namespace vorn {
namespace {

std::optional<double> number_of(std::string_view word) {
  double value = 0;
  static const EditFormat whole("(F40.0)");
  if (word.empty() || word.size() > 40 || edit_read(word, whole, value) != status::ok) return std::nullopt;
  return value;
}

// The values of some lines, as blanks part them; nothing behind the first word that is no number.
std::vector<double> numbers_on(std::span<const FileLine> lines, std::size_t most) {
  std::vector<double> all;
  for (const FileLine& line : lines) {
    std::string_view rest = line.text;
    while (!(rest = rest.substr(std::min(rest.find_first_not_of(" \t\x1a"), rest.size()))).empty()) {
      const std::size_t length = std::min(rest.find_first_of(" \t\x1a"), rest.size());
      const auto number = number_of(rest.substr(0, length));
      if (!number || all.size() == most) return all;
      all.push_back(*number);
      rest.remove_prefix(length);
    }
  }
  return all;
}

CoreAsWritten as_written(const SeriesRead& series, const SeriesView& core, const std::string& name) {
  CoreAsWritten written{name, series.first_line, series.last_line};
  for (std::size_t k = 0; k < core.values.size(); ++k) {
    written.years.push_back(core.first + static_cast<std::int64_t>(k));
    written.values.push_back(core.present.empty() || core.present[k] ? core.values[k] : -1);
  }
  return written;
}

// One record.
class RecordAudit {
 public:
  RecordAudit(const FileTaken& file, std::span<const FileLine> lines, std::size_t series, FindingList& found)
      : file_(file),
        series_(file.decided.series[series]),
        core_(file.cores[series]),
        lines_(lines),
        found_(found) {}
  void look();

 private:
  void look_at_keys(std::span<const FileLine> keys);
  void look_at_values(std::span<const FileLine> values);
  void tell(const FindingKind* of, std::int64_t value, const std::string& words) {
    FileFinding one = about(series_, of);
    one.value = value;
    one.words = words;
    found_.add(one);
  }

  const FileTaken& file_;
  const SeriesRead& series_;
  const SeriesView& core_;
  std::span<const FileLine> lines_;  // from the record's first on, to the end of the file
  FindingList& found_;
};

std::optional<std::int64_t> key_number(std::string_view text, const KeyedLine& keyed) {
  if (!keyed.begins(text)) return std::nullopt;
  const auto number = number_of(
      trimmed(text.substr(std::min<std::size_t>(text.size(), static_cast<std::size_t>(keyed.first) - 1),
                          static_cast<std::size_t>(keyed.last - keyed.first) + 1)));
  if (!number || !(std::abs(*number) < 1e6)) return std::nullopt;
  return static_cast<std::int64_t>(*number);
}

void RecordAudit::look_at_keys(std::span<const FileLine> keys) {
  std::optional<std::int64_t> first, last, length;
  for (const FileLine& line : keys) {
    if (const auto number = key_number(line.text, heidelberg::first_year_key)) first = number;
    if (const auto number = key_number(line.text, heidelberg::last_year_key)) last = number;
    if (const auto number = key_number(line.text, heidelberg::length_key)) length = number;
  }
  if (!first && !last)
    tell(kind("no-date"), core_.first, "no date: dated as from year " + std::to_string(core_.first) + " on");
  if (first && last && length && *last - *first + 1 != *length)
    tell(
        kind("dates-disagree"), core_.first,
        std::to_string(*first) + " to " + std::to_string(*last) + " are not " +
            counted(*length, "ring", "rings") + "; it is read as from " + std::to_string(core_.first) +
            " on" +
            (*first < 0 && *last > 0 && *last - *first == *length ? " (who wrote it counts no year 0)" : ""));
}

void RecordAudit::look_at_values(std::span<const FileLine> values) {
  const std::size_t rings = core_.values.size();
  const std::vector<double> numbers = numbers_on(values, rings + 10'000);
  const std::size_t both = std::min(rings, numbers.size());
  std::vector<std::int64_t> changed;
  for (std::size_t k = 0; k < both; ++k) {
    const std::int64_t year = core_.first + static_cast<std::int64_t>(k);
    const bool same =
        core_.has(year) ? std::abs(core_.values[k] - numbers[k] / series_.unit) < 1e-9 : numbers[k] < 0;
    if (!same) changed.push_back(year);
  }
  if (!changed.empty())
    tell(kind("changed-rings"), static_cast<std::int64_t>(changed.size()),
         "rings read otherwise than they stand there, " + spans_words(changed));
  const auto filled = static_cast<std::int64_t>(
      std::find_if(numbers.rbegin(), numbers.rend(), [](double number) { return number != 0; }).base() -
      numbers.begin());
  const std::int64_t lost = filled - static_cast<std::int64_t>(rings);
  if (lost > 0)
    tell(rings == 0 ? kind("lost-series") : kind("behind-length"), lost,
         counted(filled, "value stands", "values stand") + " there, and " +
             counted(static_cast<std::int64_t>(rings), "ring is", "rings are") + " read, as its length says");
  if (rings > numbers.size())
    tell(kind("invented-rings"), static_cast<std::int64_t>(rings - numbers.size()),
         "its length says " + counted(static_cast<std::int64_t>(rings), "ring", "rings") + ", and " +
             counted(static_cast<std::int64_t>(numbers.size()), "value stands", "values stand") +
             " there; the others are read as 0");
}

void RecordAudit::look() {
  const auto own = lines_.first(
      std::min(lines_.size(), static_cast<std::size_t>(series_.last_line - series_.first_line) + 1));
  std::size_t data = 0;
  while (data < own.size() && !heidelberg::data_key.begins(own[data].text)) ++data;
  look_at_keys(own.first(data));
  if (data == own.size()) {
    if (!core_.values.empty())
      tell(kind("invented-rings"), static_cast<std::int64_t>(core_.values.size()),
           "no line of data is found in its header, and all its rings are read as 0");
    return;
  }
  const std::string_view marked = own[data].text;
  if (says_pairs(marked))
    return tell(kind("pairs"), 0,
                quoted(marked) + ": a width and other numbers take turns, and all are read as widths");
  look_at_values(lines_.subspan(data + 1));
}

// From the line of that number on.
std::span<const FileLine> lines_from(std::span<const FileLine> lines, std::int64_t line) {
  return lines.subspan(std::min(static_cast<std::size_t>(std::max<std::int64_t>(line - 1, 0)), lines.size()));
}

void add_cores(const FileTaken& file, std::span<const std::string> names, FindingList& found) {
  std::vector<CoreAsWritten> written;
  for (std::size_t k = 0; k < names.size(); ++k) {
    written.push_back(as_written(file.decided.series[k], file.cores[k], names[k]));
    add_value_findings(written.back(), file.this_year, found);
  }
  add_name_findings(written, found);
}

std::vector<std::string> names_of(const FileTaken& file) {
  std::vector<std::string> names;
  for (std::size_t k = 0; k < std::min(file.cores.size(), file.decided.series.size()); ++k)
    names.emplace_back(without_blanks(file.decided.series[k].name.view()));
  return names;
}

// The records that begin in lines that were not taken.
void add_lost_records(const LinesNotTaken& lost, std::span<const FileLine> lines, const char* why,
                      FindingList& found) {
  const auto rest = lines_from(lines, lost.first);
  constexpr std::size_t longest_name = 40;
  const auto from = static_cast<std::size_t>(heidelberg::name_key.first) - 1;
  for (std::size_t k = 0; k < rest.size(); ++k) {
    const std::string_view text = rest[k].text;
    if (!heidelberg::name_key.begins(text)) continue;
    const std::int64_t line = lost.first + static_cast<std::int64_t>(k);
    found.add({.kind = kind("lost-series"),
               .line = line,
               .from = line,
               .to = line,
               .series = std::string(without_blanks(text.substr(std::min(from, text.size()), longest_name))),
               .words = std::string("none of its rings is read: ") + why});
  }
}

// --- Compact

// Values a line, by an edit format such as "(19F4.0)"; 0 where it does not say.
std::int64_t values_a_line(std::string_view header) {
  const LayoutField& field = compact::header_fields.back();
  const std::string_view format =
      header.substr(std::min<std::size_t>(static_cast<std::size_t>(field.first) - 1, header.size()));
  std::int64_t count = 0;
  for (std::size_t k = 1; k < format.size() && format[k] >= '0' && format[k] <= '9' && count < 1000; ++k)
    count = 10 * count + (format[k] - '0');
  return count;
}

}  // namespace

void add_heidelberg_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  const std::vector<std::string> names = names_of(file);
  for (std::size_t k = 0; k < names.size(); ++k)
    RecordAudit(file, lines_from(lines, file.decided.series[k].first_line), k, found).look();
  add_cores(file, names, found);
  for (const LinesNotTaken& lost : file.decided.not_taken) {
    if (lost.why == NotTaken::cut_header) add_lost_records(lost, lines, "the file ends in its header", found);
    if (lost.why == NotTaken::no_room || lost.why == NotTaken::series_limit)
      add_lost_records(lost, lines, "there is no room for it", found);
  }
}

void add_compact_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  const std::vector<std::string> names = names_of(file);
  for (std::size_t k = 0; k < names.size(); ++k) {
    const SeriesRead& series = file.decided.series[k];
    const auto of_series = lines_from(lines, series.first_line);
    if (of_series.empty()) continue;
    const std::int64_t a_line = values_a_line(of_series.front().text);
    const std::int64_t held = a_line * (series.last_line - series.first_line);
    if (a_line == 0 || held >= series.rings) continue;
    FileFinding one = about(series, kind("invented-rings"));
    one.value = series.rings - held;
    one.words = "its header says " + counted(series.rings, "ring", "rings") +
                ", and the file ends before they do; the others are read as 0";
    found.add(one);
  }
  add_cores(file, names, found);
  for (const LinesNotTaken& behind : file.decided.not_taken) {
    if (behind.why != NotTaken::behind_end && behind.why != NotTaken::series_limit &&
        behind.why != NotTaken::no_room)
      continue;
    const auto rest = lines_from(lines, behind.first);
    for (std::size_t k = 0; k < rest.size(); ++k) {
      const std::string_view text = rest[k].text;
      const LayoutField& field = compact::header_fields[4];
      if (!is_compact(FirstLine(text))) continue;
      const std::int64_t line = behind.first + static_cast<std::int64_t>(k);
      found.add(
          {.kind = kind("lost-series"),
           .line = line,
           .from = line,
           .to = line,
           .series = std::string(trimmed(text.substr(static_cast<std::size_t>(field.first) - 1,
                                                     static_cast<std::size_t>(field.width())))),
           .words = "none of its rings is read: the reading ended in line " + std::to_string(behind.first)});
    }
  }
}

bool says_pairs(std::string_view line) {
  std::string small(line);
  std::ranges::transform(small, small.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return heidelberg::data_key.begins(line) &&
         (small.find("double") != std::string::npos || small.find("quadro") != std::string::npos ||
          small.find("chrono") != std::string::npos);
}

}  // namespace vorn
