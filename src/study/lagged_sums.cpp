#include "study/lagged_sums.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

// What a difference of sums must keep of them to count as a variance.
constexpr double least_share = 1e-9;
constexpr double hardly_anything = 1e-12;

bool usable(const SeriesView& series, std::int64_t year) {
  return series.has(year) && std::isfinite(series.at(year));
}

}  // namespace

void Sums::add(double x, double y) {
  ++n;
  a += x;
  b += y;
  aa += x * x;
  bb += y * y;
  ab += x * y;
}

double Sums::r() const {
  const double varies_a = aa - a * a / n, varies_b = bb - b * b / n;
  if (!(varies_a > least_share * aa) || !(varies_b > least_share * bb)) return 0;
  return std::clamp((ab - a * b / n) / std::sqrt(varies_a * varies_b), -1.0, 1.0);
}

// Without a root, as it is asked for many times.
double Sums::unexplained() const {
  const double varies_a = aa - a * a / n, varies_b = bb - b * b / n, together = ab - a * b / n;
  if (!(together > 0) || !(varies_a > least_share * aa) || !(varies_b > least_share * bb)) return 1;
  return std::max(1 - together * together / (varies_a * varies_b), hardly_anything);
}

double Sums::score() const {
  return -n / 2 * std::log(unexplained());
}

RunningSums::RunningSums(const SeriesView& core, const SeriesView& reference, int lag, YearSpan span)
    : first_(span.first), sums_(1) {
  for (std::int64_t year = span.first; year <= span.last; ++year) {
    Sums next = sums_.back();
    if (usable(core, year + lag) && usable(reference, year))
      next.add(core.at(year + lag), reference.at(year));
    sums_.push_back(next);
  }
}

LaggedSums::LaggedSums(const StudiedCore& core, const SeriesView& reference)
    : core_(core), reference_(reference) {
  const YearSpan years = core.compared.years();
  for (int lag = -farthest_lag; lag <= farthest_lag; ++lag) {
    sums_.emplace_back(core.compared, reference, lag,
                       YearSpan{years.first - farthest_lag, years.last + farthest_lag});
  }
}

void LaggedSums::add_merged(Sums& sums, int lag, std::int64_t year) const {
  const std::int64_t inner = year + lag;
  if (!core_.compared.has(inner) || !core_.compared.has(inner + 1) || !usable(reference_, year)) return;
  const auto k = static_cast<std::size_t>(inner - core_.compared.first);
  if (k < core_.merged.size() && std::isfinite(core_.merged[k]))
    sums.add(core_.merged[k], reference_.at(year));
}

}  // namespace vorn
