#include "study/ring_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace vorn {
namespace {

constexpr double unknown = std::numeric_limits<double>::quiet_NaN();

double sum_of(std::span<const double> values) {
  double sum = 0;
  for (const double value : values) sum += value;
  return sum;
}

double mean_of(std::span<const double> values) {
  return sum_of(values) / static_cast<double>(values.size());
}

// The sum of what `of` makes of each ring and the one before.
template <class Of>
double sum_of_neighbours(std::span<const double> widths, Of of) {
  double sum = 0;
  for (std::size_t k = 1; k < widths.size(); ++k) sum += of(widths[k - 1], widths[k]);
  return sum;
}

}  // namespace

double mean_sensitivity(std::span<const double> widths) {
  if (widths.size() < 2) return unknown;
  const double sum = sum_of_neighbours(
      widths, [](double a, double b) { return a + b > 0 ? 2 * std::abs(b - a) / (a + b) : 0.0; });
  return sum / static_cast<double>(widths.size() - 1);
}

double weighted_sensitivity(std::span<const double> widths) {
  const double all = sum_of(widths);
  if (widths.size() < 2 || !(all > 0)) return unknown;
  const auto n = static_cast<double>(widths.size());
  return sum_of_neighbours(widths, [](double a, double b) { return std::abs(b - a); }) / all * n / (n - 1);
}

double gini_coefficient(std::span<const double> widths) {
  const double all = sum_of(widths);
  if (widths.empty() || !(all > 0)) return unknown;
  std::vector<double> sorted(widths.begin(), widths.end());
  std::ranges::sort(sorted);
  const auto n = static_cast<double>(widths.size());
  double sum = 0;
  for (std::size_t k = 1; k < sorted.size(); ++k) {
    const auto below = static_cast<double>(k);
    sum += below * (n - below) * (sorted[k] - sorted[k - 1]);
  }
  return sum / (n * all);
}

double skewness(std::span<const double> widths) {
  if (is_of_one_width(widths)) return unknown;
  const double mean = mean_of(widths);
  double squares = 0, cubes = 0;
  for (const double width : widths) {
    squares += (width - mean) * (width - mean);
    cubes += (width - mean) * (width - mean) * (width - mean);
  }
  const auto n = static_cast<double>(widths.size());
  return cubes / (n * std::pow(squares / (n - 1), 1.5));
}

double first_autocorrelation(std::span<const double> widths) {
  if (is_of_one_width(widths)) return unknown;
  const double mean = mean_of(widths);
  double squares = 0;
  for (const double width : widths) squares += (width - mean) * (width - mean);
  return sum_of_neighbours(widths, [mean](double a, double b) { return (a - mean) * (b - mean); }) / squares;
}

bool is_of_one_width(std::span<const double> widths) {
  return std::ranges::all_of(widths, [&](double width) { return width == widths.front(); });
}

}  // namespace vorn
