#include "study/biweight_mean.h"

#include <algorithm>
#include <cmath>

namespace vorn {
namespace {

constexpr double distances = 9, least_unit = 1e-6;

// The distances to the median, which grow to both sides of it.
class Distances {
 public:
  Distances(std::span<const double> sorted, double median)
      : sorted_(sorted),
        median_(median),
        middle_(static_cast<std::size_t>(std::ranges::lower_bound(sorted, median) - sorted.begin())) {}

  double median() const {
    const std::size_t half = sorted_.size() / 2;
    return sorted_.size() % 2 == 1 ? of_rank(half) : (of_rank(half - 1) + of_rank(half)) / 2;
  }

 private:
  double below(std::size_t k) const { return median_ - sorted_[middle_ - 1 - k]; }
  double above(std::size_t k) const { return sorted_[middle_ + k] - median_; }

  // The one that so many are before, from the least on: of the first `rank` + 1 so many lie below the median.
  double of_rank(std::size_t rank) const {
    const std::size_t count = rank + 1, all_above = sorted_.size() - middle_;
    std::size_t least = count > all_above ? count - all_above : 0, most = std::min(count, middle_);
    while (least < most) {
      const std::size_t taken = (least + most) / 2;
      below(taken) < above(count - taken - 1) ? least = taken + 1 : most = taken;
    }
    const double last_below = least > 0 ? below(least - 1) : 0;
    return count > least ? std::max(last_below, above(count - least - 1)) : last_below;
  }

  std::span<const double> sorted_;
  double median_;
  std::size_t middle_;
};

}  // namespace

double median_of_sorted(std::span<const double> sorted) {
  if (sorted.empty()) return std::nan("");
  const std::size_t half = sorted.size() / 2;
  return sorted.size() % 2 == 1 ? sorted[half] : (sorted[half - 1] + sorted[half]) / 2;
}

double biweight_mean(std::span<const double> sorted) {
  if (sorted.empty()) return std::nan("");
  const double median = median_of_sorted(sorted);
  const double unit = distances * Distances(sorted, median).median() + least_unit;
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
