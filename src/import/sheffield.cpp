#include "import/sheffield.h"

#include <algorithm>
#include <string>
#include <utility>

#include "import/fields.h"
#include "import/found_series.h"
#include "import/source_text.h"

namespace vorn {
namespace {

constexpr std::int64_t added_to_years = 10'000, most_rings = 10'000;
constexpr std::size_t name_at = 0, rings_at = 1, dated_at = 2, start_at = 3, kind_at = 4, kept_from = 5;

char large(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// The letter that a line is; 0 where it is none.
char letter_of(std::string_view text) {
  text = bare(text);
  if (text.size() != 1) return '\0';
  const char c = large(text[0]);
  return c >= 'A' && c <= 'Z' ? c : '\0';
}

const SheffieldVariable* variable_of(char letter) {
  const auto* const found = std::ranges::find(sheffield_variables, letter, &SheffieldVariable::letter);
  return found == sheffield_variables.end() ? nullptr : found;
}

class SheffieldImport {
 public:
  SheffieldImport(std::span<const FileLine> lines, const ImportWishes& wishes)
      : lines_(lines), found_(wishes) {}
  bool is_one();
  Imported read(bool is_utf_16);

 private:
  std::string_view text(std::size_t k) const { return k < lines_.size() ? bare(lines_[k].text) : ""; }
  static std::int64_t line_of(std::size_t k) { return static_cast<std::int64_t>(k) + 1; }
  bool is_number(std::size_t k) const { return number_in(text(k), true).has_value(); }
  void tell(const FindingKind* of, std::size_t k, FindingValue value, std::string words);
  void find_values();
  std::size_t numbers_from(std::size_t k) const;
  bool holds_widths();
  std::int64_t first_year();
  void tell_mean();
  void tell_not_kept();
  void take_values();
  void tell_behind(std::size_t from);
  void tell_words_behind(std::size_t k);

  std::span<const FileLine> lines_;
  FoundFile found_;
  std::string name_;
  std::size_t values_ = 0;  // the first line of them, from 0
  std::int64_t rings_ = 0;
  bool are_taken_ = false;
};

void SheffieldImport::tell(const FindingKind* of, std::size_t k, FindingValue value, std::string words) {
  found_.findings.add({.kind = of,
                       .line = line_of(k),
                       .from = line_of(k),
                       .column = 1,
                       .series = name_,
                       .value = std::move(value),
                       .words = std::move(words)});
}

bool SheffieldImport::is_one() {
  const auto rings = whole_number_in(text(rings_at));
  const char dated = letter_of(text(dated_at));
  constexpr std::string_view kinds = "RWTCMU";
  const char what = letter_of(text(kind_at));
  if (!rings || *rings < 1 || *rings > most_rings || (dated != 'A' && dated != 'R')) return false;
  if (!whole_number_in(text(start_at)) || what == '\0' || kinds.find(what) == std::string_view::npos)
    return false;
  rings_ = *rings;
  find_values();
  return values_ > 0;
}

std::size_t SheffieldImport::numbers_from(std::size_t k) const {
  const std::size_t first = k;
  while (k < lines_.size() && is_number(k)) ++k;
  return k - first;
}

// Behind a letter that says what was measured, behind which numbers stand: in its usual line, or else in the
// first that is one.
void SheffieldImport::find_values() {
  constexpr std::size_t last_line_of_header = 40;
  const auto begins_values = [this](std::size_t k) {
    return variable_of(letter_of(text(k - 1))) != nullptr && is_number(k);
  };
  if (begins_values(sheffield_header.size())) {
    values_ = sheffield_header.size();
    return;
  }
  for (std::size_t k = kept_from + 1; k < std::min(lines_.size(), last_line_of_header); ++k) {
    if (!begins_values(k) || numbers_from(k) < static_cast<std::size_t>(std::min<std::int64_t>(rings_, 3)))
      continue;
    values_ = k;
    return;
  }
}

bool SheffieldImport::holds_widths() {
  const SheffieldVariable* variable = variable_of(letter_of(text(values_ - 1)));
  if (variable->letter == 'D') return true;
  const std::string what(variable->content);
  if (variable->are_widths)
    tell(kind("variable"), values_ - 1, what, "the values are " + what + ", and are taken as they stand");
  else
    tell(kind("no-widths"), values_ - 1, static_cast<std::int64_t>(numbers_from(values_)),
         "the values are " + what + ": they are no ring widths, and are not taken");
  return variable->are_widths;
}

std::int64_t SheffieldImport::first_year() {
  constexpr std::int64_t likely_mistaken = 1'000;
  const std::int64_t start = *whole_number_in(text(start_at));
  if (letter_of(text(dated_at)) == 'R') {
    tell(kind("undated"), dated_at, {}, "the series is not dated: its years are relative");
    return start > added_to_years / 2 ? start - added_to_years : start;
  }
  if (start >= likely_mistaken && start < added_to_years / 4)
    tell(kind("dates-disagree"), start_at, start - added_to_years,
         "the first year is written " + std::to_string(start) +
             ", and 10,000 is added to years here: it is " + std::to_string(start - added_to_years) +
             ", which may not be meant");
  return start - added_to_years;
}

void SheffieldImport::tell_mean() {
  const char what = letter_of(text(kind_at));
  if (what == 'R') return;
  tell(kind("mean-series"), kind_at, std::string(1, what),
       "is a mean, of " + as_utf_8(text(kept_from).substr(0, 40)) +
           " series as the file says: it is taken as a series");
}

void SheffieldImport::tell_not_kept() {
  std::string all;
  for (std::size_t k = kept_from; k + 1 < std::min(values_, sheffield_header.size()); ++k) {
    const std::string_view said = text(k);
    if (said.empty() || said == "?" || said == "????" || said == "0") continue;
    all += (all.empty() ? "" : ", ") + std::string(sheffield_header.at(k).kept_as) + " " +
           quoted(as_utf_8(said.substr(0, 60)));
  }
  if (!all.empty()) tell(kind("not-kept"), kept_from, {}, "what the file says of it is not kept: " + all);
  if (values_ != sheffield_header.size())
    tell(kind("header"), std::min(values_ - 1, sheffield_header.size()), std::int64_t{0},
         "the header has " + std::to_string(values_) + " lines, not " +
             std::to_string(sheffield_header.size()) +
             (values_ > sheffield_header.size() ? "; all before the values are passed over"
                                                : "; what each of them is may be mistaken"));
}

void SheffieldImport::take_values() {
  const std::int64_t there = static_cast<std::int64_t>(numbers_from(values_)), first = first_year();
  if (there < rings_)
    tell(kind("short-data"), rings_at, there,
         counted(there, "value stands", "values stand") + " there, and the header says " +
             std::to_string(rings_));
  for (std::int64_t k = 0; k < std::min(there, rings_); ++k) {
    const std::size_t at = values_ + static_cast<std::size_t>(k);
    const TableField field{text(at), line_of(at), 1, false};
    if (found_.can_hold(first + k, field, 1)) found_.take(0, first + k, field);
  }
}

void SheffieldImport::tell_words_behind(std::size_t k) {
  if (letter_of(text(k)) != '\0' || text(k).empty()) return;
  found_.tell_each({.kind = kind("text-behind-end"),
                    .line = line_of(k),
                    .from = line_of(k),
                    .to = line_of(k),
                    .column = 1,
                    .series = name_,
                    .words = quoted(as_utf_8(text(k).substr(0, 120))) + " stands behind the values"});
}

// Numbers of series and the like behind letters; more values than rings before them.
void SheffieldImport::tell_behind(std::size_t from) {
  const auto there = static_cast<std::int64_t>(numbers_from(values_));
  std::int64_t counts = 0;
  std::size_t first = 0;
  for (std::size_t k = from; k < lines_.size(); ++k) {
    if (is_number(k) && ++counts == 1) first = k;
    if (!is_number(k)) tell_words_behind(k);
  }
  if (there > rings_ && are_taken_)
    tell(kind("behind-length"), values_ + static_cast<std::size_t>(rings_), there - rings_,
         counted(there, "value stands", "values stand") + " there, and " + std::to_string(rings_) +
             " are taken, as the header says");
  const bool is_mean = letter_of(text(kind_at)) != 'R';
  if (counts > 0 && !is_mean)
    tell(kind("behind-end"), first, counts,
         counted(counts, "number stands", "numbers stand") +
             " behind the values, where a single series has none: not taken");
  if (counts > 0 && is_mean)
    tell(kind("counts"), first, counts,
         counted(counts, "number", "numbers") + " behind the values, as numbers of series, " +
             (counts == 1 ? "is" : "are") + " not taken");
}

Imported SheffieldImport::read(bool is_utf_16) {
  if (is_utf_16)
    found_.findings.add({.kind = kind("utf-16"),
                         .words = "saved as UTF-16; lines and columns are those of the same text in UTF-8"});
  found_.commas = true;
  name_ = as_utf_8(text(name_at).substr(0, 200));
  if (name_.empty()) {
    name_ = found_.wishes().file.empty() ? "S1" : std::string(found_.wishes().file);
    tell(kind("no-names"), name_at, {}, "the first line holds no name: the series is named " + name_);
  }
  const auto series = found_.add_series(name_, 1, 1);
  if (series) found_.series(*series).unit = 100;
  tell_mean();
  tell_not_kept();
  are_taken_ = holds_widths();
  if (are_taken_) take_values();
  tell_behind(values_ + numbers_from(values_));
  return found_.finished(OtherLayout::sheffield, "Sheffield",
                         "lines of the number of rings, A or R, the first year and a letter");
}

}  // namespace

std::optional<Imported> import_sheffield(std::span<const FileLine> lines, bool is_utf_16,
                                         const ImportWishes& wishes) {
  SheffieldImport one(lines, wishes);
  if (!one.is_one()) return std::nullopt;
  return one.read(is_utf_16);
}

}  // namespace vorn
