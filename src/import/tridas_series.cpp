#include "import/tridas_series.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "import/fields.h"
#include "import/source_text.h"
#include "import/tridas.h"
#include "import/width_unit.h"
#include "import/xml_text.h"

namespace vorn {
namespace {

// The values of one kind.
struct TridasValues {
  std::string words = {};
  TridasVariable variable = TridasVariable::ring;
  std::optional<double> unit = {};  // values a millimetre; nothing where none is said
  double times = 1;                 // of a value, to be of that unit
  std::string unit_words = {};
  std::vector<pugi::xml_node> all = {};
};

TridasVariable variable_of(const std::string& words) {
  const std::string letters = letters_of(words);
  if (letters.empty()) return TridasVariable::ring;
  const auto* const known = std::ranges::find(tridas_variables, letters, &TridasVariableWords::letters);
  return known == tridas_variables.end() ? TridasVariable::other : known->variable;
}

void find_unit(const pugi::xml_node& unit, TridasValues& values) {
  const std::string words = tridas_words(unit);
  values.unit_words = as_utf_8(words.substr(0, 60));
  const auto* const known = std::ranges::find(tridas_units, lower_case(words), &TridasUnit::word);
  if (known != tridas_units.end()) {
    values.unit = known->unit;
    values.times = known->times;
  } else if (unit) {
    values.unit = unit_said(words);
  }
}

// `behind` counts those that are more than are looked at.
std::vector<TridasValues> values_of(const pugi::xml_node& series, std::int64_t& behind) {
  constexpr std::size_t most = 50;
  std::vector<TridasValues> groups;
  for (pugi::xml_node one = child_named(series, "values"); one; one = next_named(one)) {
    if (groups.size() == most) {
      ++behind;
      continue;
    }
    TridasValues group;
    group.words = tridas_words(child_named(one, "variable"));
    group.variable = variable_of(group.words);
    find_unit(child_named(one, "unit"), group);
    for (pugi::xml_node value = child_named(one, "value"); value; value = next_named(value))
      group.all.push_back(value);
    groups.push_back(std::move(group));
  }
  return groups;
}

// --- Years

struct SaidYear {
  std::int64_t year = 0;
  bool is_relative = false, is_bc = false, is_bp = false;
  std::string unknown_suffix = {};
  std::string certainty = {};  // where it is not exact
};

std::optional<SaidYear> year_of(const pugi::xml_node& node) {
  const auto number = whole_number_in(text_within(node));
  if (!node || !number) return std::nullopt;
  const std::string suffix = letters_of(attribute_named(node, "suffix")),
                    certainty = letters_of(attribute_named(node, "certainty"));
  constexpr std::int64_t present = 1950;
  SaidYear said{.year = *number};
  if (certainty != "exact") said.certainty = certainty.substr(0, 60);
  said.is_relative = suffix == "relative";
  said.is_bc = suffix == "bc" || suffix == "bce";
  said.is_bp = suffix == "bp";
  // A year BC that has a sign as well is the same year.
  if (said.is_bc) said.year = 1 - std::abs(*number);
  if (said.is_bp) said.year = present - *number;
  constexpr std::array<std::string_view, 4> plain = {"", "ad", "ce", "astronomical"};
  const bool is_known =
      said.is_relative || said.is_bc || said.is_bp || std::ranges::find(plain, suffix) != plain.end();
  if (!is_known) said.unknown_suffix = suffix.substr(0, 60);
  return said;
}

// Of what kind a dating is, as its attribute says.
std::string tridas_dating(const pugi::xml_node& dating) {
  return std::string(attribute_named(dating, "type"));
}

// An element without the attribute may hold its value as text.
std::string value_text(const pugi::xml_node& value) {
  constexpr std::size_t longest = 100;
  for (const pugi::xml_attribute& one : value.attributes()) {
    if (local_name(one.name()) == "value")
      return std::string(std::string_view(one.value()).substr(0, longest));
  }
  return std::string(bare(text_within(value)).substr(0, longest));
}

class TridasSeriesImport {
 public:
  TridasSeriesImport(const TridasSource& source, const pugi::xml_node& series, std::string name)
      : source_(source),
        node_(series),
        name_(std::move(name)),
        line_(source.line_of(series)),
        groups_(values_of(series, groups_behind_)) {}
  void take();

 private:
  void tell(const FindingKind* of, FindingValue value, std::string words);
  const TridasValues* first_of(TridasVariable variable) const;
  std::vector<const TridasValues*> chosen();
  std::vector<const TridasValues*> part(TridasVariable variable, std::string_view words);
  std::int64_t first_year(std::int64_t rings);
  void tell_years(const SaidYear& year);
  void take_values(const TridasValues& values, std::int64_t first);
  void take_sum(const TridasValues& early, const TridasValues& late, std::int64_t first);
  bool is_missing(const pugi::xml_node& value, std::int64_t year);
  void take_text(std::string text, std::int64_t year, std::int64_t line);
  void tell_unit(const std::string& words);
  void tell_others(const std::vector<const TridasValues*>& taken);
  void tell_counts(const TridasValues& values);
  void tell_remarks();
  void tell_not_kept();

  const TridasSource& source_;
  pugi::xml_node node_;
  std::string name_;
  std::int64_t line_;
  std::int64_t groups_behind_ = 0;
  std::vector<TridasValues> groups_;
  std::size_t series_ = 0;
  std::vector<std::pair<std::string, std::vector<std::int64_t>>> remarks_;  // with their years
};

void TridasSeriesImport::tell(const FindingKind* of, FindingValue value, std::string words) {
  source_.found.findings.add({.kind = of,
                              .line = line_,
                              .from = line_,
                              .series = name_,
                              .value = std::move(value),
                              .words = std::move(words)});
}

const TridasValues* TridasSeriesImport::first_of(TridasVariable variable) const {
  const auto found = std::ranges::find(groups_, variable, &TridasValues::variable);
  return found == groups_.end() ? nullptr : &*found;
}

std::vector<const TridasValues*> TridasSeriesImport::part(TridasVariable variable, std::string_view words) {
  const TridasValues* values = first_of(variable);
  if (!values) return {};
  tell(kind("variable"), std::string(words),
       "its " + std::string(words) + " widths are taken, not its rings");
  return {values};
}

// Those that are taken: one of whole rings or of a part, or both parts.
std::vector<const TridasValues*> TridasSeriesImport::chosen() {
  if (source_.variable == RingVariable::earlywood) return part(TridasVariable::earlywood, "earlywood");
  if (source_.variable == RingVariable::latewood) return part(TridasVariable::latewood, "latewood");
  if (const TridasValues* rings = first_of(TridasVariable::ring)) return {rings};
  const TridasValues *early = first_of(TridasVariable::earlywood), *late = first_of(TridasVariable::latewood);
  if (!early) return part(TridasVariable::latewood, "latewood");
  if (!late) return part(TridasVariable::earlywood, "earlywood");
  tell(kind("variable"), std::string("sum"), "it has earlywood and latewood widths: their sums are taken");
  return {early, late};
}

void TridasSeriesImport::tell_years(const SaidYear& year) {
  if (year.is_relative)
    tell(kind("undated"), year.year, "its first year is relative: the series is not dated");
  if (year.is_bc)
    tell(kind("years-bc"), year.year, "its years BC are counted with a year 0 before the year 1");
  if (year.is_bp) tell(kind("years-bp"), year.year, "its years are counted back from 1950");
  if (!year.unknown_suffix.empty())
    tell(kind("dates-disagree"), year.year,
         "its year has the suffix " + quoted(as_utf_8(year.unknown_suffix)) +
             ", which is not known: it is taken for one AD");
  const std::string dating =
      lower_case(tridas_dating(child_named(child_named(node_, "interpretation"), "dating")).substr(0, 60));
  if (!year.is_relative && !dating.empty() && dating != "absolute")
    tell(kind("undated"), year.year,
         "its dating is " + quoted(as_utf_8(dating)) + ": the years may not be those of the calendar");
  if (!year.certainty.empty())
    tell(kind("undated"), year.year,
         "its year is said to be " + quoted(as_utf_8(year.certainty)) + ", and taken as it stands");
}

std::int64_t TridasSeriesImport::first_year(std::int64_t rings) {
  const pugi::xml_node said = child_named(node_, "interpretation");
  const auto first = year_of(child_named(said, "firstYear")), last = year_of(child_named(said, "lastYear"));
  if (!first && !last) {
    tell(kind("undated"), {}, "no year is said of it: its years are counted from 1 on");
    return 1;
  }
  if (!first) {
    tell_years(*last);
    return last->year - rings + 1;
  }
  tell_years(*first);
  if (last && last->year - first->year + 1 != rings)
    tell(kind("dates-disagree"), rings,
         "it has " + counted(rings, "ring", "rings") + ", and its years are " + std::to_string(first->year) +
             " to " + std::to_string(last->year) + ": they are counted from the first");
  return first->year;
}

// --- Values

// Remarks of a ring; whether one says that there is none.
bool TridasSeriesImport::is_missing(const pugi::xml_node& value, std::int64_t year) {
  constexpr std::size_t most = 50;
  bool missing = false;
  for (pugi::xml_node one = child_named(value, "remark"); one; one = next_named(one)) {
    const std::string words = lower_case(tridas_words(one)).substr(0, 80);
    missing = missing || words == "missing ring";
    auto known = std::ranges::find_if(remarks_, [&](const auto& remark) { return remark.first == words; });
    if (known == remarks_.end() && remarks_.size() < most) known = remarks_.insert(known, {words, {}});
    if (known != remarks_.end()) known->second.push_back(year);
  }
  return missing;
}

void TridasSeriesImport::take_text(std::string text, std::int64_t year, std::int64_t line) {
  source_.texts.push_back(std::move(text));
  const TableField field{source_.texts.back(), line, 1, false};
  if (source_.found.can_hold(year, field, 1)) source_.found.take(series_, year, field);
}

void TridasSeriesImport::take_values(const TridasValues& values, std::int64_t first) {
  constexpr int decimals = 6;
  source_.found.series(series_).unit = values.unit;
  if (values.times != 1) tell_unit(values.unit_words);
  for (std::size_t k = 0; k < values.all.size(); ++k) {
    const std::int64_t year = first + static_cast<std::int64_t>(k);
    std::string text = value_text(values.all[k]);
    const auto number = number_in(text, true);
    const bool missing = is_missing(values.all[k], year);
    if (missing && (!number || number->value <= 0))
      text = "NA";
    else if (number && values.times != 1)
      text = decimal(number->value * values.times, decimals);
    take_text(std::move(text), year, source_.line_of(values.all[k]));
  }
}

// In the unit of `of`; as it stands where that has none.
std::optional<double> millimetres(const TridasValues& values, const TridasValues& of, std::size_t k) {
  const auto number = number_in(value_text(values.all[k]), true);
  if (!number || number->value < 0) return std::nullopt;
  return number->value * of.times / of.unit.value_or(1);
}

// As short as it can be written: where units are guessed a point is a sign of millimetres.
std::string short_decimal(double value) {
  constexpr int decimals = 6;
  std::string text = decimal(value, decimals);
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

// Of a ring of which a part is no number nothing is taken.
void TridasSeriesImport::take_sum(const TridasValues& early, const TridasValues& late, std::int64_t first) {
  if (early.unit || late.unit) {
    source_.found.series(series_).unit = 1;
    tell_unit(early.unit_words == late.unit_words ? early.unit_words
                                                  : early.unit_words + " and " + late.unit_words);
  }
  const bool has_both = early.unit && late.unit;
  if ((early.unit || late.unit) && !has_both)
    tell(kind("unit-guessed"), {},
         "only one of its earlywood and latewood widths has a unit: the other is taken for the same");
  const TridasValues &of_early = early.unit ? early : late, &of_late = late.unit ? late : early;
  const std::size_t both = std::min(early.all.size(), late.all.size());
  if (early.all.size() != late.all.size())
    tell(kind("short-data"), static_cast<std::int64_t>(both),
         "it has " + std::to_string(early.all.size()) + " earlywood widths and " +
             std::to_string(late.all.size()) + " latewood widths: the first " + std::to_string(both) +
             " are added");
  for (std::size_t k = 0; k < both; ++k) {
    const auto one = millimetres(early, of_early, k), other = millimetres(late, of_late, k);
    const std::int64_t year = first + static_cast<std::int64_t>(k);
    const bool missing = is_missing(early.all[k], year) || is_missing(late.all[k], year);
    std::string text = one && other ? short_decimal(*one + *other) : std::string("NA");
    for (const pugi::xml_node& value : {late.all[k], early.all[k]}) {
      // What is no width is told as such.
      std::string said = value_text(value);
      const auto number = number_in(said, true);
      if (!says_missing(said) && (!number || number->value < 0)) text = std::move(said);
    }
    if (missing && one.value_or(0) + other.value_or(0) <= 0) text = "NA";
    take_text(std::move(text), year, source_.line_of(early.all[k]));
  }
}

// --- What is told

// Where widths are computed of what the file has, and so are in another unit than it says.
void TridasSeriesImport::tell_unit(const std::string& words) {
  tell(kind("unit-said"), words, "the file says that widths are in " + words);
  source_.found.series(series_).unit_is_guess = true;
}

void TridasSeriesImport::tell_counts(const TridasValues& values) {
  const auto counts = std::ranges::count_if(
      values.all, [](const pugi::xml_node& value) { return !attribute_named(value, "count").empty(); });
  if (counts > 0)
    tell(kind("counts"), static_cast<std::int64_t>(counts),
         counted(counts, "value has", "values have") + " a number of samples, which is not taken");
}

void TridasSeriesImport::tell_others(const std::vector<const TridasValues*>& taken) {
  for (const TridasValues& group : groups_) {
    if (std::ranges::find(taken, &group) != taken.end()) continue;
    const auto values = static_cast<std::int64_t>(group.all.size());
    const bool is_double = !taken.empty() && taken.front()->variable == group.variable;
    const FindingKind* of = taken.empty() ? kind("no-widths")
                            : is_double   ? kind("variable")
                                          : kind("other-column");
    tell(of, values,
         counted(values, "value", "values") + " of " +
             quoted(as_utf_8(group.words.empty() ? "ring width" : group.words.substr(0, 80))) +
             (values == 1 ? " is not taken" : " are not taken"));
  }
}

void TridasSeriesImport::tell_remarks() {
  for (auto& [words, years] : remarks_) {
    const auto count = static_cast<std::int64_t>(years.size());
    tell(kind("remark"), count,
         "said of its rings: " + quoted(as_utf_8(words)) + ", " + spans_words(std::move(years)));
  }
}

void TridasSeriesImport::tell_not_kept() {
  constexpr std::array<std::string_view, 12> names = {"nrOfSapwoodRings",
                                                      "lastRingUnderBark",
                                                      "bark",
                                                      "pith",
                                                      "heartwood",
                                                      "sapwood",
                                                      "deathYear",
                                                      "sproutYear",
                                                      "pithYear",
                                                      "provenance",
                                                      "nrOfUnmeasuredInnerRings",
                                                      "nrOfUnmeasuredOuterRings"};
  std::string all;
  const auto look = [&](const pugi::xml_node& in) {
    for (const std::string_view name : names) {
      const pugi::xml_node one = child_named(in, name);
      if (!one || all.size() > 300) continue;
      std::string said = std::string(bare(text_within(one))).substr(0, 60);
      if (said.empty()) said = attribute_named(one, "presence");
      all +=
          (all.empty() ? "" : ", ") + std::string(name) + (said.empty() ? "" : " " + quoted(as_utf_8(said)));
    }
  };
  for (const pugi::xml_node& holder : {node_, node_.parent()}) {
    const pugi::xml_node wood = early_child_named(holder, "woodCompleteness");
    for (const pugi::xml_node& in : {wood, child_named(wood, "sapwood"), child_named(wood, "bark")}) look(in);
  }
  look(child_named(node_, "interpretation"));
  if (!all.empty()) tell(kind("not-kept"), {}, "what the file says of it is not kept: " + all);
}

void TridasSeriesImport::take() {
  const auto series = source_.found.add_series(name_, line_, 1);
  if (!series) return;
  series_ = *series;
  if (local_name(node_.name()) == "derivedSeries")
    tell(kind("mean-series"), {}, "is made of other series: it is taken as one");
  const auto values = chosen();
  tell_others(values);
  tell_not_kept();
  if (groups_behind_ > 0)
    tell(kind("too-large"), groups_behind_,
         counted(groups_behind_, "kind", "kinds") + " of values behind the 50th are not looked at");
  if (values.empty() || values.front()->all.empty()) return;
  const std::int64_t first = first_year(std::ssize(values.front()->all));
  if (values.size() == 1)
    take_values(*values.front(), first);
  else
    take_sum(*values[0], *values[1], first);
  for (const TridasValues* one : values) tell_counts(*one);
  tell_remarks();
}

}  // namespace

std::string tridas_words(const pugi::xml_node& node) {
  for (const std::string_view name : {"normalTridas", "normal"}) {
    if (const std::string_view words = attribute_named(node, name); !words.empty()) return std::string(words);
  }
  return std::string(bare(text_within(node)));
}

void take_tridas_series(const TridasSource& source, const pugi::xml_node& series, const std::string& name) {
  TridasSeriesImport(source, series, name).take();
}

}  // namespace vorn
