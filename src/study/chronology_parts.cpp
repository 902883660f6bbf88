#include "study/chronology_parts.h"

#include <algorithm>
#include <cmath>

#include "statistics/correlation.h"
#include "statistics/tree_correlations.h"

namespace vorn {

YearSpan years_of_all(std::span<const SeriesView> cores) {
  YearSpan all;
  for (const SeriesView& core : cores) {
    const YearSpan years = core.years();
    if (years.count() < 1) continue;
    all =
        all.count() < 1 ? years : YearSpan{std::min(all.first, years.first), std::max(all.last, years.last)};
  }
  return all;
}

ChronologyParts::ChronologyParts(YearSpan years)
    : years_(years),
      sums_(static_cast<std::size_t>(std::max<std::int64_t>(years.count(), 0)), 0.0),
      depths_(sums_.size(), 0.0) {}

ChronologyParts::ChronologyParts(std::span<const SeriesView> cores) : ChronologyParts(years_of_all(cores)) {
  for (const SeriesView& core : cores) add(core);
}

void ChronologyParts::put(const SeriesView& core, int sign) {
  for (std::int64_t year = core.first; year <= core.years().last; ++year) {
    if (!core.has(year) || !std::isfinite(core.at(year))) continue;
    sums_[place(year)] += sign * core.at(year);
    depths_[place(year)] += sign;
    sum_ += sign * core.at(year);
    values_ += sign;
  }
}

YearSpan ChronologyParts::well_covered(YearSpan span) const {
  span = common(span, years_);
  while (span.first <= span.last && depths_[place(span.first)] <= 1) ++span.first;
  while (span.first <= span.last && depths_[place(span.last)] <= 1) --span.last;
  return span;
}

std::optional<double> ChronologyParts::correlation(const SeriesView& core) const {
  YearSpan span = core.years();
  while (span.first <= span.last && !std::isfinite(core.at(span.first))) ++span.first;
  span = well_covered(span);
  if (span.count() < fewest_common_years) return {};
  std::vector<double> own, rest;
  for (std::int64_t year = span.first; year <= span.last; ++year) {
    own.push_back(core.at(year) / scale());
    rest.push_back((sums_[place(year)] - own.back()) / std::max(depths_[place(year)], 1.0));
  }
  return cov(own, rest);
}

std::vector<double> ChronologyParts::means(YearSpan years) const {
  std::vector<double> all;
  for (std::int64_t year = years.first; year <= years.last; ++year)
    all.push_back(depths_[place(year)] > 0 ? sums_[place(year)] / depths_[place(year)] : std::nan(""));
  return all;
}

std::vector<double> ChronologyParts::without(const SeriesView& core, YearSpan years) const {
  std::vector<double> rest;
  for (std::int64_t year = years.first; year <= years.last; ++year)
    rest.push_back((sums_[place(year)] - core.at(year) / scale()) / std::max(depths_[place(year)] - 1, 1.0));
  return rest;
}

}  // namespace vorn
