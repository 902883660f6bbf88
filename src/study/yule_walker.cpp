#include "study/yule_walker.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

// Of lags 0 to `most`, each divided by n.
std::vector<double> covariances(std::span<const double> series, double mean, int most) {
  std::vector<double> all;
  for (std::size_t lag = 0; lag <= static_cast<std::size_t>(most); ++lag) {
    double sum = 0;
    for (std::size_t k = lag; k < series.size(); ++k) sum += (series[k] - mean) * (series[k - lag] - mean);
    all.push_back(sum / static_cast<double>(series.size()));
  }
  return all;
}

// The weights of one order more; answers the share of the variance that stays.
double step_up(std::vector<double>& weights, const std::vector<double>& covariance, double variance) {
  const std::size_t order = weights.size() + 1;
  double rest = covariance[order];
  for (std::size_t k = 0; k < weights.size(); ++k) rest -= weights[k] * covariance[order - 1 - k];
  const double reflected = rest / variance;
  const std::vector<double> before = weights;
  for (std::size_t k = 0; k < before.size(); ++k) weights[k] -= reflected * before[before.size() - 1 - k];
  weights.push_back(reflected);
  return 1 - reflected * reflected;
}

bool varies(std::span<const double> series) {
  if (series.empty() || !std::ranges::all_of(series, [](double value) { return std::isfinite(value); }))
    return false;
  return std::ranges::any_of(series, [&](double value) { return value != series.front(); });
}

double mean_of(std::span<const double> series) {
  double sum = 0;
  for (const double value : series) sum += value;
  return sum / static_cast<double>(series.size());
}

}  // namespace

int highest_order(std::size_t n) {
  if (n < 2) return 0;
  const int most = static_cast<int>(std::floor(10 * std::log10(static_cast<double>(n))));
  return static_cast<int>(std::min(n - 1, static_cast<std::size_t>(most)));
}

std::optional<YuleWalkerModel> yule_walker(std::span<const double> series) {
  if (!varies(series)) return {};
  YuleWalkerModel best{mean_of(series), {}};
  const auto n = static_cast<double>(series.size());
  const std::vector<double> covariance = covariances(series, best.mean, highest_order(series.size()));
  double variance = covariance.front();
  if (!(variance > 0) || !std::isfinite(variance)) return {};
  double least = n * std::log(variance);
  std::vector<double> weights;
  while (weights.size() + 1 < covariance.size()) {
    variance *= step_up(weights, covariance, variance);
    if (!(variance > 0)) break;
    const double criterion = n * std::log(variance) + 2.0 * static_cast<double>(weights.size());
    if (criterion >= least) continue;
    least = criterion;
    best.coefficients = weights;
  }
  return best;
}

std::vector<double> residuals_of(std::span<const double> series, const YuleWalkerModel& model) {
  const std::size_t order = model.coefficients.size();
  std::vector<double> rest(series.size(), std::nan(""));
  for (std::size_t k = order; k < series.size(); ++k) {
    rest[k] = series[k];
    for (std::size_t j = 0; j < order; ++j)
      rest[k] -= model.coefficients[j] * (series[k - 1 - j] - model.mean);
  }
  return rest;
}

}  // namespace vorn
