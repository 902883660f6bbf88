// Widths and names as they stand in a file, whatever its layout.
#include <algorithm>
#include <map>

#include "study/file_findings_parts.h"

namespace vorn {
namespace {

FileFinding about(const CoreAsWritten& core, const FindingKind* of) {
  return {.kind = of,
          .line = core.line,
          .from = core.line,
          .to = core.last_line,
          .series = std::string(core.name)};
}

std::vector<std::int64_t> years_where(const CoreAsWritten& core, bool (*is_so)(double)) {
  std::vector<std::int64_t> years;
  for (std::size_t k = 0; k < core.values.size(); ++k) {
    if (is_so(core.values[k])) years.push_back(core.years[k]);
  }
  return years;
}

void add_zeros(const CoreAsWritten& core, FindingList& found) {
  const auto years = years_where(core, [](double value) { return value == 0; });
  if (years.empty()) return;
  FileFinding one = about(core, kind("zeros"));
  one.value = static_cast<std::int64_t>(years.size());
  one.words = "rings of width 0, taken as they are: " + spans_words(years);
  found.add(one);
  if (core.values.front() != 0 && core.values.back() != 0) return;
  one.kind = kind("zeros-at-the-end");
  one.value = core.values.back() == 0 ? core.years.back() : core.years.front();
  one.words = std::string(core.values.back() == 0 ? "ends" : "begins") +
              " in a width of 0: a filler more likely than a ring";
  found.add(one);
}

void add_negative(const CoreAsWritten& core, FindingList& found) {
  const auto years = years_where(core, [](double value) { return value < 0; });
  if (years.empty()) return;
  FileFinding one = about(core, kind("negative"));
  one.value = static_cast<std::int64_t>(years.size());
  one.words = "negative widths, taken for missing rings and estimated: " + spans_words(years);
  found.add(one);
}

YearSpan years_of(const CoreAsWritten& core) {
  if (core.years.empty()) return {};
  const auto [first, last] = std::ranges::minmax(core.years);
  return {first, last};
}

void add_odd_years(const CoreAsWritten& core, int this_year, FindingList& found) {
  if (core.years.empty()) return;
  const auto [first, last] = years_of(core);
  if (first < 0) {
    FileFinding one = about(core, kind("years-before-0"));
    one.value = first;
    one.words = "begins before year 0, which is counted as a year";
    found.add(one);
  }
  if (this_year > 0 && last > this_year) {
    FileFinding one = about(core, kind("years-to-come"));
    one.value = last;
    one.words = "ends in " + std::to_string(last) + ", which is still to come";
    found.add(one);
  }
}

std::string years_words(const YearSpan& years) {
  return std::to_string(years.first) + " to " + std::to_string(years.last);
}

// The second of two cores of one name.
void add_second(const CoreAsWritten& core, const CoreAsWritten& before, FindingList& found) {
  const YearSpan years = years_of(core), of_other = years_of(before);
  FileFinding one = about(core, kind("name-twice"));
  one.words = "two series of one name: " + years_words(of_other) + " from line " +
              std::to_string(before.line) + " on, and here " + years_words(years);
  if (common(years, of_other).count() >= 1) {
    one.kind = kind("name-twice-same-years");
  } else if (years.first > of_other.last + 1) {
    one.kind = kind("gap");
    one.value = years.first - of_other.last - 1;
    one.words += "; the years between are a gap, not absent rings, and each part is a series of its own";
  }
  found.add(one);
}

}  // namespace

void add_value_findings(const CoreAsWritten& core, int this_year, FindingList& found) {
  add_zeros(core, found);
  add_negative(core, found);
  add_odd_years(core, this_year, found);
}

void add_name_findings(std::span<const CoreAsWritten> cores, FindingList& found) {
  std::map<std::string_view, std::size_t> before;
  for (std::size_t k = 0; k < cores.size(); ++k) {
    const auto [place, is_new] = before.try_emplace(cores[k].name, k);
    if (is_new) continue;
    add_second(cores[k], cores[place->second], found);
    place->second = k;
  }
}

}  // namespace vorn
