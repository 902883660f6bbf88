#include "study/pointer_years.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr std::int64_t half_window = pointer_window / 2;
constexpr int most_absent = 3;

// By how many standard deviations of its window the ring of that year differs from the window's mean; not a
// number where it cannot be judged.
double deviation(const SeriesView& core, std::int64_t year) {
  double sum = 0, squares = 0;
  int rings = 0;
  for (std::int64_t at = year - half_window; at <= year + half_window; ++at) {
    if (!core.has(at)) continue;
    sum += core.at(at);
    ++rings;
  }
  const double mean = sum / std::max(rings, 1);
  for (std::int64_t at = year - half_window; at <= year + half_window; ++at) {
    if (core.has(at)) squares += (core.at(at) - mean) * (core.at(at) - mean);
  }
  if (rings < pointer_window - most_absent) return std::nan("");
  const double spread = std::sqrt(squares / (rings - 1));
  if (!(spread > 0)) return std::nan("");
  return core.has(year) ? (core.at(year) - mean) / spread : -pointer_deviation;
}

void judge(const SeriesView& core, std::vector<PointerYear>& years) {
  const YearSpan span = core.years();
  for (std::int64_t year = span.first + half_window; year <= span.last - half_window; ++year) {
    const double by = deviation(core, year);
    if (std::isnan(by)) continue;
    PointerYear& found = years[static_cast<std::size_t>(year - years.front().year)];
    ++found.cores;
    found.narrow += by <= -pointer_deviation;
    found.wide += by >= pointer_deviation;
  }
}

}  // namespace

std::vector<PointerYear> pointer_years(std::span<const SeriesView> widths) {
  std::vector<PointerYear> years;
  YearSpan all;
  for (const SeriesView& core : widths) {
    const YearSpan span = core.years();
    if (span.count() < 1) continue;
    all = all.count() < 1 ? span : YearSpan{std::min(all.first, span.first), std::max(all.last, span.last)};
  }
  for (std::int64_t year = all.first; year <= all.last; ++year) years.push_back({.year = year});
  for (const SeriesView& core : widths) judge(core, years);
  return years;
}

}  // namespace vorn
