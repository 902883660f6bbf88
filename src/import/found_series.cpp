#include "import/found_series.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "import/fields.h"
#include "import/source_text.h"
#include "import/tucson_copy.h"
#include "import/width_unit.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

std::string in_quotes(std::string_view text) {
  return quoted(as_utf_8(text.substr(0, 120)));
}

FileFinding at_field(const FindingKind* of, const TableField& field) {
  return {.kind = of, .line = field.line, .from = field.line, .to = field.line, .column = field.column};
}

}  // namespace

bool MissingMarks::are_said_by(std::string_view text) const {
  if (std::ranges::find(words, lower_case(text.substr(0, 40))) != words.end()) return true;
  if (numbers.empty()) return false;
  const auto number = number_in(text, false);
  return number && std::ranges::find(numbers, number->value) != numbers.end();
}

std::optional<std::size_t> FoundFile::add_series(std::string_view name, std::int64_t line, int column) {
  constexpr std::size_t longest_name = 200;
  if (series_.size() == static_cast<std::size_t>(max_series)) {
    if (!std::exchange(told_series_, true))
      findings.add({.kind = kind("series-limit"),
                    .line = line,
                    .from = line,
                    .column = column,
                    .words = "series behind " + the_nth(max_series) + " are not taken"});
    return std::nullopt;
  }
  std::string whole = as_utf_8(bare(name).substr(0, longest_name));
  std::ranges::replace_if(
      whole, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  series_.push_back({.name = std::string(bare(whole)), .line = line, .column = column});
  return series_.size() - 1;
}

void FoundFile::tell_each(FileFinding finding) {
  if (told_each_ == most_told_each) {
    ++untold_each_;
    return;
  }
  ++told_each_;
  findings.add(std::move(finding));
}

void FoundFile::take(std::size_t series, std::int64_t year, const TableField& field) {
  has_year_0_ = has_year_0_ || year == 0;
  if (says_missing(field.text) || marks.are_said_by(field.text)) {
    if (field.text.empty()) return;
    WordsSeen& seen = missing_words_[std::string(field.text)];
    if (++seen.count == 1) seen.line = field.line;
    return;
  }
  const auto number = number_in(field.text, commas || field.quoted);
  if (number) return take_number(series, {year, number->value, field.line, field.column}, *number);
  FileFinding one = at_field(kind("no-number"), field);
  one.series = series_[series].name;
  one.value = year;
  one.words = in_quotes(field.text) + " is no number: " + std::to_string(year) + " has no ring";
  tell_each(std::move(one));
}

void FoundFile::take_number(std::size_t series, const FoundRing& ring, const FieldNumber& number) {
  FoundSeries& to = series_[series];
  if (rings_ == static_cast<std::size_t>(max_pool)) {
    if (!std::exchange(told_room_, true))
      findings.add({.kind = kind("no-room"),
                    .line = ring.line,
                    .from = ring.line,
                    .column = ring.column,
                    .series = to.name,
                    .words = "more rings than there is room for: those from here on are not taken"});
    return;
  }
  ++rings_;
  if (number.comma && comma_line_ == 0) comma_line_ = ring.line;
  if (number.decimals > 0 && !number.comma && point_line_ == 0) point_line_ = ring.line;
  to.has_points = to.has_points || number.decimals > 0;
  look_at_thousands(ring, number);
  (number.value < 0 ? to.negative : to.rings).push_back(ring);
}

void FoundFile::look_at_thousands(const FoundRing& ring, const FieldNumber& number) {
  constexpr double least = 100, thousand = 1000;
  const double value = std::abs(ring.value);
  if (number.decimals == 0) {
    thousands_.hundreds += value >= least && value < thousand;
    thousands_.thousands += value >= thousand;
    return;
  }
  const bool is_parted = number.decimals == 3 && value >= 1 && value < thousand;
  if (is_parted && thousands_.parted == 0) {
    thousands_.line = ring.line;
    thousands_.first = ring.value;
  }
  (is_parted ? thousands_.parted : thousands_.other)++;
}

// Where every number from 1000 on would be written so, and those below it without a point.
void FoundFile::doubt_thousands() {
  const ThousandsSeen& seen = thousands_;
  if (seen.parted == 0 || seen.hundreds == 0 || seen.other > 0 || seen.thousands > 0) return;
  findings.add({.kind = kind("unit-unlikely"),
                .line = seen.line,
                .value = seen.first,
                .words = counted(seen.parted, "number has", "numbers have") +
                         " three digits behind the point, the first of them " + decimal(seen.first, 3) +
                         ", and all from 100 to 999 have none: it may part thousands"});
}

void FoundFile::tell_missing_words() {
  std::vector<std::string> words;
  WordsSeen all;
  for (const auto& [word, seen] : missing_words_) {
    words.push_back(in_quotes(word));
    all.line = all.count == 0 ? seen.line : std::min(all.line, seen.line);
    all.count += seen.count;
  }
  if (words.empty()) return;
  constexpr std::size_t most_named = 5;
  std::string named = words.front();
  for (std::size_t k = 1; k < std::min(words.size(), most_named); ++k) named += ", " + words[k];
  findings.add({.kind = kind("missing-marks"),
                .line = all.line,
                .value = all.count,
                .words = counted(all.count, "field says", "fields say") + " that there is no width, by " +
                         named + (words.size() > most_named ? " and others" : "")});
}

// Years before and behind it, and nothing at all of year 0.
void FoundFile::doubt_year_0() {
  const auto crosses_it = [](const FoundSeries& series) {
    const auto has = [&series](std::int64_t year) {
      const auto at = std::ranges::lower_bound(series.rings, year, {}, &FoundRing::year);
      return at != series.rings.end() && at->year == year;
    };
    return has(-1) && has(1);
  };
  const auto first = std::ranges::find_if(series_, crosses_it);
  if (has_year_0_ || first == series_.end()) return;
  findings.add({.kind = kind("no-year-0"),
                .line = first->line,
                .series = first->name,
                .words = "has rings of the years -1 and 1, and year 0 stands nowhere: it is taken for a year "
                         "without a ring, and may be none where years are counted without it"});
}

bool FoundFile::can_hold(std::int64_t year, const TableField& at, std::int64_t numbers) {
  if (year >= earliest_year && year <= latest_year) return true;
  FileFinding one = at_field(kind("year-outside"), at);
  one.value = numbers;
  one.words = std::to_string(year) + " is no year between " + std::to_string(earliest_year) + " and " +
              std::to_string(latest_year) + ": " + counted(numbers, "number is", "numbers are") +
              " not taken";
  tell_each(std::move(one));
  return false;
}

std::int64_t FoundFile::numbers_among(std::span<const TableField> fields) const {
  return std::ranges::count_if(fields, [this](const TableField& field) {
    return number_in(field.text, commas || field.quoted).has_value();
  });
}

void FoundFile::tell_decimals() {
  if (comma_line_ == 0) return;
  findings.add({.kind = kind("decimal-comma"),
                .line = comma_line_,
                .from = comma_line_,
                .words = "a comma stands for the decimal point"});
  if (point_line_ == 0) return;
  findings.add({.kind = kind("two-points"),
                .line = std::max(comma_line_, point_line_),
                .words = "numbers have a point on line " + std::to_string(point_line_) +
                         " and a comma on line " + std::to_string(comma_line_) +
                         "; both are taken for the decimal point"});
}

// --- Years

void FoundFile::look_at_order(const FoundSeries& series) {
  std::int64_t up = 0, down = 0;
  for (std::size_t k = 1; k < series.rings.size(); ++k) {
    up += series.rings[k].year > series.rings[k - 1].year;
    down += series.rings[k].year < series.rings[k - 1].year;
  }
  if (down == 0) return;
  if (up == 0) {
    if (!std::exchange(told_descent_, true))
      findings.add({.kind = kind("years-descend"),
                    .line = series.rings.front().line,
                    .words = "the latest year comes first; rings are taken by their years"});
    return;
  }
  const bool mostly_up = up >= down;
  for (std::size_t k = 1; k < series.rings.size(); ++k) {
    const FoundRing &one = series.rings[k], &before = series.rings[k - 1];
    const bool odd = mostly_up ? one.year < before.year : one.year > before.year;
    if (!odd || !told_order_.insert(one.line).second) continue;
    tell_each({.kind = kind("years-out-of-order"),
               .line = one.line,
               .from = one.line,
               .to = one.line,
               .series = series.name,
               .value = one.year,
               .words = std::to_string(one.year) + " stands behind " + std::to_string(before.year) +
                        "; rings are taken by their years"});
  }
}

// Of a year that stands there twice the first ring counts.
void FoundFile::drop_repeated(FoundSeries& series) {
  std::size_t kept = 0;
  for (std::size_t k = 0; k < series.rings.size(); ++k) {
    const FoundRing& one = series.rings[k];
    if (kept == 0 || series.rings[kept - 1].year != one.year) {
      series.rings[kept++] = one;
      continue;
    }
    const FoundRing& before = series.rings[kept - 1];
    const bool same = before.value == one.value;
    tell_each(
        {.kind = same ? kind("year-twice", Effect::doubtful) : kind("year-twice", Effect::lost),
         .line = one.line,
         .from = one.line,
         .to = one.line,
         .column = one.column,
         .series = series.name,
         .value = one.year,
         .words = std::to_string(one.year) + " stands on line " + std::to_string(before.line) + " too, " +
                  (same ? "with the same width" : "with another width, which is the one that is taken")});
  }
  series.rings.resize(kept);
}

void FoundFile::put_in_order(FoundSeries& series) {
  look_at_order(series);
  std::ranges::stable_sort(series.rings, {}, &FoundRing::year);
  drop_repeated(series);
}

void FoundFile::tell_negative(const FoundSeries& series) {
  if (series.negative.empty()) return;
  std::vector<std::int64_t> years;
  for (const FoundRing& one : series.negative) years.push_back(one.year);
  const auto [first, last] = std::ranges::minmax(series.negative, {}, &FoundRing::line);
  findings.add({.kind = kind("negative"),
                .line = first.line,
                .from = first.line,
                .to = last.line,
                .column = first.column,
                .series = series.name,
                .value = static_cast<std::int64_t>(years.size()),
                .words = "negative widths, taken for missing rings: " + spans_words(years)});
}

// --- Units

namespace {

// In millimetres.
double mean_of(const FoundSeries& series) {
  double sum = 0;
  for (const FoundRing& ring : series.rings) sum += ring.value;
  return sum / static_cast<double>(series.rings.size()) / *series.unit;
}

// Which a few values that stand for something else do not move.
double median_of(std::vector<double>& values) {
  if (values.empty()) return 0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// A ring whose point seems to part thousands, "1.500" among "820" and "950".
const FoundRing* thousands_among(std::span<const FoundSeries> all, double middle) {
  constexpr double least_middle = 100, most = 20;
  if (middle < least_middle) return nullptr;
  for (const FoundSeries& series : all) {
    if (series.unit || !series.has_points) continue;
    for (const FoundRing& ring : series.rings) {
      const double in_full = ring.value * 1000;
      const bool is_small = ring.value > 0 && ring.value < middle / most;
      if (is_small && in_full > middle / most && in_full < middle * most) return &ring;
    }
  }
  return nullptr;
}

}  // namespace

// Those that do not say theirs are guessed together.
void FoundFile::find_units() {
  ValuesSeen seen;
  std::vector<double> widths;
  const FoundSeries* first = nullptr;
  for (const FoundSeries& series : series_) {
    if (series.unit || series.rings.empty()) continue;
    if (!first) first = &series;
    seen.has_points = seen.has_points || series.has_points;
    for (const FoundRing& ring : series.rings) {
      if (ring.value != 0) widths.push_back(ring.value);
      seen.has_decimals = seen.has_decimals || ring.value != std::floor(ring.value);
    }
  }
  tell_units();
  if (!first) return;
  seen.middle = median_of(widths);
  if (const FoundRing* ring = thousands_among(series_, seen.middle)) {
    findings.add({.kind = kind("unit-unlikely"),
                  .line = ring->line,
                  .column = ring->column,
                  .value = ring->value,
                  .words = "a width of " + decimal(ring->value, 3) + " beside others of about " +
                           decimal(seen.middle, 1) + ": its point may part thousands"});
  }
  const double unit = wishes_.unit.value_or(unit_guessed(seen));
  for (FoundSeries& series : series_) {
    if (!series.unit) series.unit = unit;
  }
  if (wishes_.unit) {
    findings.add(
        {.kind = kind("unit-chosen"),
         .line = first->line,
         .value = unit,
         .words = "no unit is said: taken for " + std::string(unit_words(unit)) + ", as it was chosen"});
    return;
  }
  findings.add({.kind = kind("unit-guessed"),
                .line = first->line,
                .value = unit,
                .words = "no unit is said: taken for " + std::string(unit_words(unit)) + ", by a median of " +
                         decimal(seen.middle, 2) +
                         (seen.has_points ? " and decimal points" : " and whole numbers")});
}

void FoundFile::tell_units() {
  std::set<double> told;
  for (const FoundSeries& series : series_) {
    if (!series.unit || series.unit_is_guess || series.rings.empty()) continue;
    if (told.insert(*series.unit).second)
      findings.add({.kind = kind("unit-said"),
                    .line = series.line,
                    .value = *series.unit,
                    .words = "the file says that widths are in " + std::string(unit_words(*series.unit))});
  }
}

// Whoever said them, or guessed.
void FoundFile::doubt_units() {
  for (const FoundSeries& series : series_) {
    if (!series.unit || series.rings.empty()) continue;
    const double mean = mean_of(series);
    if (mean > most_mean_of_mm || (mean > 0 && mean < least_mean_in_mm))
      findings.add({.kind = kind("unit-unlikely"),
                    .line = series.line,
                    .series = series.name,
                    .value = mean,
                    .words = "the mean ring would be " + decimal(mean, 4) + " mm wide, which is not likely"});
  }
}

// --- The series

// What is given of a series: its stretches, in millimetres.
void FoundFile::cut(const FoundSeries& series, std::vector<ImportedSeries>& all) {
  for (std::size_t k = 0; k < series.rings.size(); ++k) {
    const FoundRing& ring = series.rings[k];
    const auto next = [&] { return all.back().first + static_cast<std::int64_t>(all.back().widths.size()); };
    const bool starts = k == 0 || ring.year - next() > longest_gap ||
                        static_cast<std::size_t>(ring.year - all.back().first) >= most_years_of_a_series;
    if (starts)
      all.push_back({.name = series.name,
                     .line = k == 0 ? series.line : ring.line,
                     .column = k == 0 ? series.column : ring.column,
                     .first = ring.year});
    ImportedSeries& to = all.back();
    const auto years = static_cast<std::size_t>(ring.year - to.first);
    to.widths.resize(years);
    to.presence.resize(years);
    to.widths.push_back(ring.value / *series.unit);
    to.presence.push_back(1);
  }
}

void FoundFile::tell_values(const std::vector<ImportedSeries>& all) {
  std::vector<CoreAsWritten> cores;
  for (const ImportedSeries& series : all) {
    CoreAsWritten core{series.name, series.line, series.line};
    std::vector<std::int64_t> missing;
    for (std::size_t k = 0; k < series.widths.size(); ++k) {
      const std::int64_t year = series.first + static_cast<std::int64_t>(k);
      if (!series.presence[k]) {
        missing.push_back(year);
        continue;
      }
      core.years.push_back(year);
      core.values.push_back(series.widths[k]);
    }
    const auto rings = static_cast<std::int64_t>(core.years.size());
    findings.add({.kind = kind("series"),
                  .line = series.line,
                  .column = series.column,
                  .series = series.name,
                  .value = rings,
                  .words = counted(rings, "ring", "rings") + " of " + std::to_string(core.years.front()) +
                           " to " + std::to_string(core.years.back())});
    if (!missing.empty())
      findings.add({.kind = kind("inner-gap"),
                    .line = series.line,
                    .column = series.column,
                    .series = series.name,
                    .value = static_cast<std::int64_t>(missing.size()),
                    .words = "years within it without a ring, which the copy marks as missing: " +
                             spans_words(missing)});
    add_value_findings(core, wishes_.this_year, findings);
    core.values.clear();
    core.values.shrink_to_fit();
    cores.push_back(std::move(core));
  }
  std::ranges::stable_sort(cores, {}, &CoreAsWritten::line);  // the copy may have another order
  add_name_findings(cores, findings);
}

Imported FoundFile::finished(OtherLayout layout, std::string layout_name, std::string why,
                             const std::function<void(const Imported&)>& look) {
  Imported result{layout, std::move(layout_name), std::move(why), {}, {}, {}};
  findings.add({.kind = kind("layout", Effect::none), .words = result.layout_name + ": " + result.why});
  tell_decimals();
  tell_missing_words();
  for (FoundSeries& series : series_) put_in_order(series);
  doubt_year_0();
  find_units();
  doubt_units();
  doubt_thousands();
  for (const FoundSeries& series : series_) {
    tell_negative(series);
    if (series.rings.empty())
      findings.add({.kind = kind("no-rings"),
                    .line = series.line,
                    .column = series.column,
                    .series = series.name,
                    .words = "holds no ring, and is left out"});
    cut(series, result.series);
  }
  result.tucson = tucson_copy(result.series, findings);
  tell_values(result.series);
  if (look) look(result);
  if (untold_each_ > 0)
    findings.add({.kind = kind("more"),
                  .value = static_cast<std::int64_t>(untold_each_),
                  .words = "further fields and rings of which something would have to be told"});
  result.findings = findings.taken();
  return result;
}

}  // namespace vorn
