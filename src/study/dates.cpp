#include "study/dates.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <limits>

#include "study/agreement.h"
#include "study/lagged_sums.h"

namespace vorn {
namespace {

constexpr std::int64_t same_date = 2;  // years that belong to one date
constexpr double not_known = std::numeric_limits<double>::quiet_NaN();

// What a series is compared by, year by year; not a number where it does not count.
struct Measured {
  std::int64_t first = 0;
  std::vector<double> compared, five_year, ratios, changes;  // changes: 1 up, -1 down, 0 neither
  double autocorrelation = 0;

  std::int64_t count() const { return static_cast<std::int64_t>(compared.size()); }
};

// The way from one year to the next counts where both have a ring.
std::vector<double> changes_of(std::span<const double> growth, const SeriesView& rings) {
  std::vector<double> changes(growth.size(), not_known);
  for (std::size_t k = 1; k < growth.size(); ++k) {
    const std::int64_t year = rings.first + static_cast<std::int64_t>(k);
    const double change = growth[k] - growth[k - 1];
    if (rings.has(year) && rings.has(year - 1) && std::isfinite(change))
      changes[k] = change > 0 ? 1 : change < 0 ? -1 : 0;
  }
  return changes;
}

Measured measured(const SeriesToDate& series) {
  const SeriesView& rings = series.compared;
  Measured all;
  all.first = rings.first;
  all.compared.assign(rings.values.begin(), rings.values.end());
  all.five_year = five_year_logarithms(series.growth);
  all.ratios = growth_ratios(series.growth);
  all.changes = changes_of(series.growth, rings);
  all.autocorrelation = autocorrelation(rings);
  for (std::vector<double>* values : {&all.five_year, &all.ratios, &all.changes})
    values->resize(all.compared.size(), not_known);
  for (std::size_t k = 0; k < all.compared.size(); ++k) {
    const std::int64_t year = rings.first + static_cast<std::int64_t>(k);
    if (!rings.has(year)) all.compared[k] = all.five_year[k] = not_known;
    if (!rings.has(year) || !rings.has(year - 1)) all.ratios[k] = not_known;
  }
  return all;
}

void add_finite(Sums& sums, double a, double b) {
  if (std::isfinite(a) && std::isfinite(b)) sums.add(a, b);
}

double t_of_pairs(const Sums& sums) {
  return sums.n < 3 ? not_known : t_of(sums.r(), sums.n);
}

// The sample with its first ring in `first_year`; p is that of this position alone.
DatedPosition at_position(const Measured& sample, const Measured& reference, std::int64_t first_year) {
  const std::int64_t from = std::max(first_year, reference.first);
  const std::int64_t to = std::min(first_year + sample.count(), reference.first + reference.count());
  Sums compared, five_year, ratios;
  double alike = 0;
  int changes = 0;
  for (std::int64_t year = from; year < to; ++year) {
    const auto k = static_cast<std::size_t>(year - first_year);
    const auto m = static_cast<std::size_t>(year - reference.first);
    add_finite(compared, sample.compared[k], reference.compared[m]);
    add_finite(five_year, sample.five_year[k], reference.five_year[m]);
    add_finite(ratios, sample.ratios[k], reference.ratios[m]);
    if (year == from || !std::isfinite(sample.changes[k]) || !std::isfinite(reference.changes[m])) continue;
    alike += std::abs(sample.changes[k] + reference.changes[m]) / 2;
    ++changes;
  }
  DatedPosition at;
  at.first_year = first_year;
  at.shift = first_year - sample.first;
  at.overlap = static_cast<int>(compared.n);
  at.r = compared.n > 0 ? compared.r() : not_known;
  at.t_bp = t_of_pairs(five_year);
  at.t_h = t_of_pairs(ratios);
  at.glk = changes > 0 ? alike / changes : not_known;
  at.z = fisher_z(at.r, effective_pairs(compared.n, sample.autocorrelation, reference.autocorrelation));
  at.p = two_sided_probability(at.z);
  return at;
}

Dates all_positions(const Measured& sample, const Measured& reference) {
  Dates found;
  const std::int64_t earliest = reference.first - sample.count() + least_years_in_common;
  const std::int64_t latest = reference.first + reference.count() - least_years_in_common;
  for (std::int64_t year = earliest; year <= latest; ++year) {
    const DatedPosition at = at_position(sample, reference, year);
    if (at.overlap >= least_years_in_common) found.ranked.push_back(at);
  }
  std::stable_sort(found.ranked.begin(), found.ranked.end(),
                   [](const DatedPosition& a, const DatedPosition& b) { return a.z > b.z; });
  return found;
}

void judge(Dates& found, double tries) {
  for (DatedPosition& at : found.ranked) at.p = of_the_best(at.p, tries);
  if (found.ranked.empty()) return;
  const DatedPosition& best = found.ranked.front();
  const auto other = std::find_if(found.ranked.begin(), found.ranked.end(), [&](const DatedPosition& at) {
    return std::abs(at.first_year - best.first_year) > same_date;
  });
  if (other == found.ranked.end()) {
    found.margin = std::numeric_limits<double>::infinity();
  } else if (best.z > other->z) {
    found.margin = best.z - other->z;
  }
  found.stands_out = best.r > 0 && best.p < probability_of_a_date && found.margin > margin_of_a_date;
}

}  // namespace

std::vector<Dates> dates(const SeriesToDate& sample, std::span<const SeriesToDate> references,
                         double further_positions) {
  const Measured measured_sample = measured(sample);
  std::vector<Dates> all;
  double tries = further_positions;
  for (const SeriesToDate& reference : references) {
    all.push_back(all_positions(measured_sample, measured(reference)));
    tries += static_cast<double>(all.back().ranked.size());
  }
  for (Dates& found : all) judge(found, tries);
  return all;
}

}  // namespace vorn
