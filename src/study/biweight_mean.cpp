#include "study/biweight_mean.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vorn {
namespace {

constexpr double distances = 9, least_unit = 1e-6;

// Distances to the median grow to both sides of it.
std::vector<double> sorted_distances(std::span<const double> sorted, double median) {
  std::vector<double> all;
  all.reserve(sorted.size());
  for (const double value : sorted) all.push_back(std::abs(value - median));
  const auto least = static_cast<std::ptrdiff_t>(std::ranges::lower_bound(sorted, median) - sorted.begin());
  std::reverse(all.begin(), all.begin() + least);
  std::inplace_merge(all.begin(), all.begin() + least, all.end());
  return all;
}

}  // namespace

double median_of_sorted(std::span<const double> sorted) {
  if (sorted.empty()) return std::nan("");
  const std::size_t half = sorted.size() / 2;
  return sorted.size() % 2 == 1 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2;
}

double biweight_mean(std::span<const double> sorted) {
  const double median = median_of_sorted(sorted);
  const double unit = distances * median_of_sorted(sorted_distances(sorted, median)) + least_unit;
  double sum = 0, weights = 0;
  for (const double value : sorted) {
    const double u = (value - median) / unit;
    if (std::abs(u) > 1) continue;
    const double weight = (1 - u * u) * (1 - u * u);
    sum += weight * value;
    weights += weight;
  }
  return sum / weights;
}

}  // namespace vorn
