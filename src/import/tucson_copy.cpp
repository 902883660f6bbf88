#include "import/tucson_copy.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>

#include "formats/tucson_raw_layout.h"
#include "formats/tucson_stretch.h"
#include "import/fields.h"
#include "import/series_names.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

constexpr double largest_value = 999'999;  // of six columns
constexpr double a_rounding = 1e-6;        // of a value; less is due to how numbers are stored
constexpr std::size_t longest_name = 8, longest_name_of_early_years = 7;

bool is_whole(double value) {
  return std::abs(value - std::round(value)) <= a_rounding;
}

void choose_unit(std::vector<ImportedSeries>& all) {
  const bool hundredths = std::ranges::all_of(all, [](const ImportedSeries& series) {
    return std::ranges::all_of(series.widths, [](double width) { return is_whole(width * 100); });
  });
  for (ImportedSeries& series : all) series.unit = hundredths ? 100 : 1000;
}

// --- Rings

void tell_too_wide(ImportedSeries& series, std::size_t k, FindingList& found) {
  const std::int64_t year = series.first + static_cast<std::int64_t>(k);
  found.add({.kind = kind("too-wide"),
             .line = series.line,
             .column = series.column,
             .series = series.name,
             .value = year,
             .words = "the ring of " + std::to_string(year) + " is too wide for the columns of the copy (" +
                      decimal(series.widths[k], 3) + " mm), and is taken for a missing one"});
  series.widths[k] = 0;
  series.presence[k] = 0;
}

// Without years at its ends that have no ring.
void trim(ImportedSeries& series) {
  const auto first = std::ranges::find(series.presence, 1) - series.presence.begin();
  series.presence.erase(series.presence.begin(), series.presence.begin() + first);
  series.widths.erase(series.widths.begin(), series.widths.begin() + first);
  series.first += first;
  while (!series.presence.empty() && !series.presence.back()) {
    series.presence.pop_back();
    series.widths.pop_back();
  }
}

void drop_too_wide(std::vector<ImportedSeries>& all, FindingList& found) {
  for (ImportedSeries& series : all) {
    bool any = false;
    for (std::size_t k = 0; k < series.widths.size(); ++k) {
      if (!series.presence[k] || std::round(series.widths[k] * series.unit) <= largest_value) continue;
      tell_too_wide(series, k, found);
      any = true;
    }
    if (any) trim(series);
  }
  std::erase_if(all, [](const ImportedSeries& series) { return series.widths.empty(); });
}

void tell_rounded(const std::vector<ImportedSeries>& all, FindingList& found) {
  std::int64_t rounded = 0;
  const ImportedSeries* first = nullptr;
  for (const ImportedSeries& series : all) {
    for (const double width : series.widths) {
      if (is_whole(width * series.unit)) continue;
      ++rounded;
      if (!first) first = &series;
    }
  }
  if (first)
    found.add({.kind = kind("rounded"),
               .line = first->line,
               .series = first->name,
               .value = rounded,
               .words = counted(rounded, "width has", "widths have") +
                        " more decimals than the copy, which has thousandths of a millimetre"});
}

// --- Names

void choose_names(std::vector<ImportedSeries>& all, FindingList& found) {
  // In years before -999 the last column of the name holds their sign.
  const bool early = std::ranges::any_of(all, [](const ImportedSeries& one) { return one.first < -999; });
  std::vector<std::string> names;
  names.reserve(all.size());
  for (const ImportedSeries& series : all) names.push_back(series.name);
  names = names_for_columns(names, early ? longest_name_of_early_years : longest_name);
  for (std::size_t k = 0; k < all.size(); ++k) {
    all[k].taken_as = names[k];
    if (all[k].taken_as == all[k].name) continue;
    found.add({.kind = kind("taken-as"),
               .line = all[k].line,
               .column = all[k].column,
               .series = all[k].name,
               .value = all[k].taken_as,
               .words = "is " + all[k].taken_as + " in the copy"});
  }
}

// --- The whole

std::size_t first_room(const ImportedSeries& series) {
  return static_cast<std::size_t>(first_decade_end(static_cast<std::int32_t>(series.first)));
}

// Whether the end mark stands on the first line or behind it, so that the line is full.
bool fills_first_line(const ImportedSeries& series) {
  return series.widths.size() + 1 >= first_room(series);
}

void put_first(std::vector<ImportedSeries>& all, FindingList& found) {
  const auto full = std::ranges::find_if(all, fills_first_line);
  if (full == all.begin() || full == all.end()) return;
  std::rotate(all.begin(), full, full + 1);
  found.add({.kind = kind("copy-form"),
             .line = all.front().line,
             .column = all.front().column,
             .series = all.front().name,
             .words = "stands first in the copy: the layout is known by a first line that is full"});
}

std::vector<std::string> lines_of_series(const ImportedSeries& series) {
  Stretch stretch{series.taken_as, series.first, {}, series.unit};
  for (std::size_t k = 0; k < series.widths.size(); ++k)
    stretch.values.push_back(series.presence[k]
                                 ? static_cast<std::int32_t>(std::llround(series.widths[k] * series.unit))
                                 : tucson_raw::missing_ring);
  return tucson_lines(stretch);
}

// Fills a line, on which the mark stands, up with zeros, which are not read.
void fill_up(std::string& line, const ImportedSeries& series, FindingList& found) {
  for (std::size_t k = series.widths.size() + 1; k < first_room(series); ++k) line += "     0";
  found.add(
      {.kind = kind("copy-form"),
       .line = series.line,
       .column = series.column,
       .series = series.name,
       .words = "its first line in the copy is filled up with zeros behind the end mark, which are not read: "
                "the layout is known by a full line"});
}

std::string text_of(const std::vector<ImportedSeries>& all, FindingList& found) {
  std::string text;
  for (const ImportedSeries& series : all) {
    std::vector<std::string> lines = lines_of_series(series);
    if (&series == &all.front() && !fills_first_line(series)) fill_up(lines.front(), series, found);
    for (const std::string& line : lines) text += line + "\n";
  }
  return text;
}

// Why the program could not load the copy.
std::optional<std::string> too_much(const std::vector<ImportedSeries>& all) {
  std::size_t years = 0;
  std::int64_t first = all.front().first, last = first;
  for (const ImportedSeries& series : all) {
    years += series.widths.size();
    first = std::min(first, series.first);
    last = std::max(last, series.first + static_cast<std::int64_t>(series.widths.size()) - 1);
  }
  if (all.size() > static_cast<std::size_t>(max_series)) return "there are more series than a file may hold";
  if (years > static_cast<std::size_t>(max_pool)) return "there are more rings than there is room for";
  if (last - first + 1 > max_years)
    return "its years, " + std::to_string(first) + " to " + std::to_string(last) +
           ", are more than a chronology may have";
  return std::nullopt;
}

std::string none(const std::string& why, FindingList& found) {
  found.add({.kind = kind("no-copy"), .words = "there is no copy: " + why});
  return {};
}

}  // namespace

std::string tucson_copy(std::vector<ImportedSeries>& series, FindingList& found) {
  choose_unit(series);
  drop_too_wide(series, found);
  if (series.empty()) return none("no ring width is found", found);
  put_first(series, found);
  choose_names(series, found);
  tell_rounded(series, found);
  if (const auto why = too_much(series)) return none(*why, found);
  return text_of(series, found);
}

}  // namespace vorn
