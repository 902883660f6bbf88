#include "import/heidelberg_variants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

#include "formats/heidelberg.h"
#include "formats/recognition.h"
#include "import/fields.h"
#include "import/found_series.h"
#include "import/heidelberg_record.h"
#include "import/source_text.h"
#include "import/width_unit.h"
#include "records/memory_files.h"
#include "workspace/series_store.h"

namespace vorn {
namespace {

const HeidelbergData* data_of(std::string_view word) {
  const auto* found = std::ranges::find(heidelberg_data, word, &HeidelbergData::word);
  return found == heidelberg_data.end() ? nullptr : found;
}

// What a record says of its years; nothing where it does not.
struct RecordYears {
  std::optional<std::int64_t> first = {}, last = {}, length = {};
  std::optional<std::int64_t> span() const {
    if (!first || !last || *last < *first) return std::nullopt;
    return *last - *first + 1;
  }
};

// Takes one record.
class RecordImport {
 public:
  RecordImport(const HeidelbergRecord& record, FoundFile& found, std::size_t number)
      : record_(record), found_(found), number_(number) {}
  void take();

 private:
  void find_name();
  bool holds_widths();
  void find_years();
  std::optional<std::int64_t> number_of(std::string_view key);
  void find_numbers_a_year();
  void find_length();
  void tell_behind(std::int64_t years);
  std::int64_t first_year();
  std::int64_t completed_year();
  void take_values();
  void find_unit();
  void tell_counts();
  void doubt_pairs();
  void tell_other_keys();
  void tell_missing_outside();
  void tell(const FindingKind* of, std::int64_t value, const std::string& words, std::int64_t line = 0);

  std::int64_t years_there() const { return (std::ssize(record_.values) + step_ - 1) / step_; }
  std::int64_t filled_years() const { return (filled_values() + step_ - 1) / step_; }
  std::int64_t filled_values() const;
  int numbers_that_fit() const;
  bool second_numbers_look_like_widths() const;

  const HeidelbergRecord& record_;
  FoundFile& found_;
  std::size_t number_;  // from 1
  std::string name_;
  TableField name_field_;
  RecordYears years_;
  int step_ = 1;
  std::int64_t rings_ = 0;
  std::size_t series_ = 0;
};

void RecordImport::tell(const FindingKind* of, std::int64_t value, const std::string& words,
                        std::int64_t line) {
  found_.findings.add({.kind = of,
                       .line = line > 0 ? line : record_.first_line,
                       .from = record_.first_line,
                       .to = record_.last_line,
                       .series = name_,
                       .value = value,
                       .words = words});
}

void RecordImport::find_name() {
  for (const std::string_view key : {"keycode", "keyno"}) {
    name_field_ = record_.of(key);
    name_ = as_utf_8(name_field_.text.substr(0, 200));
    if (!name_.empty()) return;
  }
  name_ = "S" + std::to_string(number_);
  name_field_ = {{}, record_.first_line, 1, false};
  tell(kind("no-names"), 0, "the record has no KeyCode: it is named " + name_);
}

bool RecordImport::holds_widths() {
  constexpr std::array<std::string_view, 8> others = {"density", "index", "indices", "maxd",
                                                      "mind",    "blue",  "isotop",  "height"};
  const std::string_view said = record_.of("datatype").text.substr(0, 100);
  const std::string what = letters_of(said);
  const bool is_other = std::ranges::any_of(
      others, [&](std::string_view word) { return what.find(word) != std::string::npos; });
  if (is_other)
    tell(kind("no-widths"), std::ssize(record_.values),
         "DataType says " + quoted(as_utf_8(said)) + ": its values are no ring widths, and are not taken");
  return !is_other;
}

std::optional<std::int64_t> RecordImport::number_of(std::string_view key) {
  const TableField field = record_.of(key);
  if (field.text.empty()) return std::nullopt;
  const auto number = whole_number_in(field.text);
  if (!number)
    found_.findings.add({.kind = kind("no-number"),
                         .line = field.line,
                         .column = field.column,
                         .series = name_,
                         .words = quoted(as_utf_8(field.text.substr(0, 100))) + " is no number"});
  return number;
}

void RecordImport::find_years() {
  years_ = {number_of("datebegin"), number_of("dateend"), number_of("length")};
  if (years_.length && *years_.length <= 0) years_.length.reset();
}

void RecordImport::find_numbers_a_year() {
  const HeidelbergData* by_data = data_of(record_.data);
  const HeidelbergData* by_format = data_of(letters_of(record_.of("dataformat").text.substr(0, 100)));
  const HeidelbergData* meant = by_data ? by_data : by_format;
  step_ = meant ? meant->numbers : 1;
  if (!by_data)
    tell(kind("data-kind"), step_,
         "\"DATA:" + record_.data + "\" is not known: " + (meant ? "DataFormat says " : "taken as ") +
             (step_ == 1 ? "a number a year" : std::to_string(step_) + " numbers a year"),
         record_.data_line);
  if (!years_.length) return;
  const auto there = std::ssize(record_.values);
  const int in_format = by_format && by_data && by_data->numbers == 1 ? by_format->numbers : 1;
  const bool too_many = step_ == 1 && in_format > 1 && there >= *years_.length * in_format;
  const bool too_few = step_ > 1 && there < *years_.length * step_;
  const int other = too_many ? in_format : too_few ? numbers_that_fit() : step_;
  if (other == step_) return;
  const std::string word = record_.data;
  step_ = other;
  // With one a year the length may as well count both numbers of each.
  tell(step_ == 1 ? kind("data-kind") : kind("numbers-a-year"), step_,
       "the values are not those of \"DATA:" + word + "\": by their number there " +
           (step_ == 1 ? "is one a year" : "are " + std::to_string(step_) + " a year"),
       record_.data_line);
}

// Numbers a year of which as many stand there as its length asks for, with nothing but zeros behind them;
// where there are none, those that are known so far.
int RecordImport::numbers_that_fit() const {
  const std::int64_t filled = filled_values();
  for (const int numbers : {1, 2, 4}) {
    const std::int64_t needed = *years_.length * numbers;
    if (filled <= needed && needed <= std::ssize(record_.values)) return numbers;
  }
  return step_;
}

// Values up to the last that is a number other than 0.
std::int64_t RecordImport::filled_values() const {
  std::int64_t filled = std::ssize(record_.values);
  const auto is_zero = [](const TableField& field) {
    const auto number = number_in(field.text, true);
    return number && number->value == 0;
  };
  while (filled > 0 && is_zero(record_.values[static_cast<std::size_t>(filled) - 1])) --filled;
  return filled;
}

void RecordImport::tell_behind(std::int64_t years) {
  const std::int64_t behind = years_there() - years;
  if (behind <= 0) return;
  if (filled_years() <= years)
    return tell(kind("trailing-zeros"), behind * step_,
                counted(behind * step_, "zero", "zeros") + " behind the last ring, left out",
                record_.data_line);
  tell(kind("behind-length"), behind * step_,
       counted(years_there(), "year stands", "years stand") + " there, and " + std::to_string(years) +
           " are taken, as its length says",
       record_.data_line);
}

// How many of the years that stand there are rings.
void RecordImport::find_length() {
  const auto span = years_.span();
  const std::int64_t there = years_there(), filled = filled_years();
  if (years_.length && span && *span != *years_.length && (*span == filled || *span == there)) {
    tell(kind("dates-disagree"), *span,
         "Length says " + std::to_string(*years_.length) + ", and the dates and the values " +
             std::to_string(*span) + ", which are taken");
    years_.length = span;
  }
  if (!years_.length && span && *span <= there) years_.length = span;
  rings_ = std::min(years_.length.value_or(filled), there);
  tell_behind(rings_);
  if (years_.length && *years_.length > there)
    tell(kind("short-data"), *years_.length - there,
         counted(there, "value stands", "values stand") + " there, and its length says " +
             std::to_string(*years_.length) + ": the last ones are taken to be missing",
         record_.data_line);
}

std::int64_t RecordImport::completed_year() {
  const std::int64_t length = years_.length.value_or(rings_);
  if (years_.first && !years_.last) return *years_.first;
  if (years_.last && !years_.first) return *years_.last - length + 1;
  if (*years_.last - *years_.first + 1 == length) return *years_.first;
  if (*years_.first < 0 && *years_.last > 0 && *years_.last - *years_.first == length) {
    tell(kind("dates-disagree"), *years_.last - length + 1,
         std::to_string(*years_.first) + " to " + std::to_string(*years_.last) + " are " +
             std::to_string(length) +
             " rings where no year 0 is counted: its last year is taken, and it begins in " +
             std::to_string(*years_.last - length + 1));
    return *years_.last - length + 1;
  }
  tell(kind("dates-disagree"), *years_.first,
       std::to_string(*years_.first) + " to " + std::to_string(*years_.last) + " are not " +
           counted(length, "ring", "rings") + ": its first year is taken");
  return *years_.first;
}

std::int64_t RecordImport::first_year() {
  if (years_.first || years_.last) return completed_year();
  tell(kind("undated"), 1, "no date: its years are counted from 1 on");
  return 1;
}

void RecordImport::take_values() {
  const std::int64_t first = first_year();
  for (std::int64_t k = 0; k < rings_; ++k) {
    const TableField& field = record_.values[static_cast<std::size_t>(k * step_)];
    if (found_.can_hold(first + k, field, 1)) found_.take(series_, first + k, field);
  }
}

void RecordImport::find_unit() {
  FoundSeries& series = found_.series(series_);
  const std::string_view words = record_.of("unit").text;
  series.unit = unit_said(words);
  if (const auto plain = whole_number_in(words); !series.unit && plain && (*plain == 100 || *plain == 1000))
    series.unit = static_cast<double>(*plain);
  if (series.unit || series.rings.empty()) return;
  ValuesSeen seen{0, false, series.has_points};
  for (const FoundRing& ring : series.rings) {
    seen.middle += ring.value / static_cast<double>(series.rings.size());  // the mean, as the program has it
    seen.has_decimals = seen.has_decimals || ring.value != std::floor(ring.value);
  }
  series.unit = found_.wishes().unit.value_or(unit_guessed(seen));
  series.unit_is_guess = true;
  tell(
      kind("unit-by-mean"), static_cast<std::int64_t>(*series.unit),
      (words.empty() ? "no unit: " : quoted(as_utf_8(words.substr(0, 100))) + " is no unit that is known: ") +
          ("taken for " + std::string(unit_words(*series.unit))) + ", by a mean of " +
          decimal(seen.middle, 2));
}

void RecordImport::tell_counts() {
  const std::int64_t counts = std::min<std::int64_t>(std::ssize(record_.values), rings_ * step_) - rings_;
  if (step_ == 1 || counts <= 0) return;
  tell(kind("counts"), counts,
       "each width is followed by " + counted(step_ - 1, "other number", "other numbers") +
           ", as numbers of samples, which are not taken",
       record_.data_line);
}

// Numbers of samples stay the same for years, widths do not.
bool RecordImport::second_numbers_look_like_widths() const {
  constexpr std::int64_t fewest = 10;
  std::int64_t changes = 0;
  std::optional<double> before;
  for (std::int64_t k = 0; k < rings_ && k * step_ + 1 < std::ssize(record_.values); ++k) {
    const auto number = number_in(record_.values[static_cast<std::size_t>(k * step_ + 1)].text, true);
    changes += number && before && number->value != *before;
    if (number) before = number->value;
  }
  return rings_ >= fewest && 2 * changes > rings_;
}

void RecordImport::doubt_pairs() {
  const std::string kind_of_data = letters_of(record_.of("datatype").text.substr(0, 100)) +
                                   letters_of(record_.of("dataformat").text.substr(0, 100));
  const bool is_said =
      kind_of_data.find("early") != std::string::npos || kind_of_data.find("late") != std::string::npos;
  if (step_ != 2 || !(is_said || second_numbers_look_like_widths())) return;
  tell(kind("data-kind"), step_,
       "the second numbers " +
           std::string(is_said ? "are said to be of earlywood or latewood"
                               : "change from year to year, as widths do") +
           ": they are not taken, and where they are latewood the first are no ring widths",
       record_.data_line);
}

void RecordImport::tell_other_keys() {
  for (const KeyInOtherWords& other : other_keys) {
    const auto found = record_.keys.find(std::string(other.words));
    if (found == record_.keys.end() || record_.keys.contains(std::string(other.key))) continue;
    tell(kind("unknown-key"), 0, quoted(as_utf_8(other.words)) + " is taken for " + std::string(other.key),
         found->second.line);
  }
}

void RecordImport::tell_missing_outside() {
  for (const std::string_view key : {"missingringsbefore", "missingringsafter"}) {
    const TableField field = record_.of(key);
    const auto number = whole_number_in(field.text);
    if (!number || *number <= 0) continue;
    tell(kind("missing-outside"), *number,
         counted(*number, "ring is", "rings are") + " said to be missing " +
             (key.ends_with("before") ? "before" : "behind") + " the series; no years are added",
         field.line);
  }
}

void RecordImport::take() {
  find_name();
  if (!holds_widths()) return;
  if (record_.is_cut)
    tell(kind("too-large"), std::ssize(record_.values), "the record has more values than are looked at");
  const auto series = found_.add_series(name_, name_field_.line, name_field_.column);
  if (!series) return;
  series_ = *series;
  find_years();
  find_numbers_a_year();
  find_length();
  take_values();
  find_unit();
  tell_counts();
  doubt_pairs();
  tell_other_keys();
  tell_missing_outside();
}

void tell_header_without_data(const HeidelbergRecord& record, FoundFile& found) {
  const std::string_view name = record.of("keycode").text;
  found.findings.add(
      {.kind = name.empty() ? kind("unknown-key") : kind("cut-header"),
       .line = record.first_line,
       .from = record.first_line,
       .to = record.last_line,
       .series = as_utf_8(name.substr(0, 200)),
       .words = name.empty() ? "lines behind the values are passed over" : "no values follow the header"});
}

// --- What the program's own reader makes of it

class CountedTroubles : public Troubles {
 public:
  void tell(const Trouble& /*trouble*/) override { ++count; }
  int count = 0;
};

using KnownRing = std::tuple<std::string, std::int64_t, double>;  // name, year, width in mm

std::vector<KnownRing> rings_of(const SeriesStore& w) {
  std::vector<KnownRing> all;
  for (int i = 1; i <= w.nc; ++i) {
    for (int k = 0; k < w.yr(i); ++k) {
      const auto at = static_cast<std::size_t>(k);
      if (w.presence(i)[at]) all.emplace_back(trimmed(w.nam(i).view()), w.fy(i) + k, w.widths(i)[at]);
    }
  }
  std::ranges::sort(all);
  return all;
}

std::vector<KnownRing> rings_of(const Imported& one) {
  std::vector<KnownRing> all;
  for (const ImportedSeries& series : one.series) {
    for (std::size_t k = 0; k < series.widths.size(); ++k) {
      if (series.presence[k])
        all.emplace_back(series.name, series.first + static_cast<std::int64_t>(k), series.widths[k]);
    }
  }
  std::ranges::sort(all);
  return all;
}

bool are_the_same(const std::vector<KnownRing>& some, const std::vector<KnownRing>& others) {
  return std::ranges::equal(some, others, [](const KnownRing& one, const KnownRing& other) {
    return std::get<0>(one) == std::get<0>(other) && std::get<1>(one) == std::get<1>(other) &&
           std::abs(std::get<2>(one) - std::get<2>(other)) < 1e-9;
  });
}

bool is_read_as_meant(std::string_view bytes, const Imported& meant) {
  MemoryFiles files;
  files.put("file", std::string(bytes));
  CountedTroubles troubles;
  if (find_rftyp(files, "file", troubles).layout != Layout::heidelberg) return false;
  const auto store = std::make_unique<SeriesStore>();
  read_heidel(*store, {files, "file", 0, troubles});
  return troubles.count == 0 && are_the_same(rings_of(*store), rings_of(meant));
}

}  // namespace

bool starts_heidelberg(std::span<const FileLine> lines) {
  const auto first = std::find_if_not(lines.begin(), lines.end(), is_blank);
  return first != lines.end() && is_header_line(first->text);
}

std::optional<Imported> import_heidelberg(std::string_view bytes, std::span<const FileLine> lines,
                                          bool is_utf_16, const ImportWishes& wishes) {
  FoundFile found(wishes);
  found.commas = true;
  if (is_utf_16)
    found.findings.add({.kind = kind("utf-16"),
                        .words = "saved as UTF-16; lines and columns are those of the same text in UTF-8"});
  HeidelbergRecords records(lines);
  HeidelbergRecord record;
  std::size_t count = 0;
  bool widths_alone = true;
  while (records.next(record)) {
    if (record.data_line == 0) {
      tell_header_without_data(record, found);
      continue;
    }
    const HeidelbergData* data = data_of(record.data);
    widths_alone = widths_alone && (!data || data->numbers == 1);
    RecordImport(record, found, ++count).take();
  }
  if (count == 0) return std::nullopt;
  if (lines.size() == most_lines_examined)
    found.findings.add({.kind = kind("too-large"),
                        .line = static_cast<std::int64_t>(lines.size()),
                        .words = "lines behind " + the_nth(most_lines_examined) + " are not looked at"});
  Imported one = found.finished(OtherLayout::heidelberg, "Heidelberg", "records that begin with \"HEADER:\"");
  if (widths_alone && is_read_as_meant(bytes, one)) return std::nullopt;
  return one;
}

}  // namespace vorn
