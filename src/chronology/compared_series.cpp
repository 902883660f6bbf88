#include "chronology/compared_series.h"

#include <cmath>
#include <cstddef>

#include "chronology/burg_model.h"

namespace vorn {
namespace {

constexpr double lowest_curve = 0.1;  // a spline below this would blow the ratio up

// Also where the curve is not a number. Deliberate: [raised-curve] of the curve alone, no index ever is.
double at_least_lowest(double curve) {
  return curve >= lowest_curve ? curve : lowest_curve;
}

}  // namespace

// Deliberate: [estimates-detrended] whether a ring is missing is not asked; its estimate counts like any
// width.
void detrend(std::span<double> widths, SplineFactor& factor) {
  detrend(std::span(&widths, 1), factor);
}

void detrend(std::span<const std::span<double>> widths, SplineFactor& factor) {
  const std::vector<double> curves =
      splines(std::vector<std::span<const double>>(widths.begin(), widths.end()), factor);
  const double* curve = curves.data();
  for (const auto series : widths) {
    for (double& width : series) width = width / at_least_lowest(*curve++);
  }
}

void prewhiten(std::span<double> index, std::span<double> coefficients, int max_order) {
  const std::vector<double> series(index.begin(), index.end());
  armod2(series, index, coefficients, max_order);
}

// The offset keeps years that prewhitening left at zero finite. Deliberate: [one-sixth] of the mean, whatever
// the series.
double take_logarithms(std::span<double> values) {
  double sum = 0;
  for (const double value : values) sum += value;
  const double offset = sum / (6.0 * static_cast<double>(values.size()));
  for (double& value : values) value = std::log(value + offset);
  return offset;
}

ComparedSeries compared_series(std::span<const double> widths, const Treatment& treatment,
                               SplineFactor& factor) {
  ComparedSeries series;
  if (widths.empty()) return series;
  series.index.assign(widths.begin(), widths.end());
  if (treatment.spline) detrend(series.index, factor);
  series.prewhitened = series.index;
  std::vector<double> coefficients(static_cast<std::size_t>(treatment.max_order));
  if (treatment.model) prewhiten(series.prewhitened, coefficients, treatment.max_order);
  series.compared = series.prewhitened;
  if (treatment.logarithm) series.offset = take_logarithms(series.compared);
  return series;
}

std::vector<double> merged_rings(const ComparedSeries& series, const Treatment& treatment) {
  std::vector<double> merged;
  for (std::size_t k = 0; k + 1 < series.index.size(); ++k) {
    const double value = series.prewhitened[k] + series.index[k + 1];
    merged.push_back(treatment.logarithm ? std::log(value + series.offset) : value);
  }
  return merged;
}

}  // namespace vorn
