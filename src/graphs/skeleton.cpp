#include "graphs/skeleton.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/loud_failure.h"

namespace vorn {
namespace {

constexpr int fewest_compared = 5;
constexpr double usual_narrowness = 0.5,
                 step = 0.15;  // standard deviations: without a bar; a unit of its length
constexpr int longest = 10;
constexpr double wide_from = 2;  // standard deviations

// How far value k lies from those around it, in their standard deviations.
std::optional<double> departure(std::span<const double> values, std::span<const bool> present,
                                std::size_t k) {
  constexpr std::size_t reach = skeleton_neighbours;
  const std::size_t first = k - std::min(k, reach), end = std::min(k + reach + 1, values.size());
  int n = 0;
  double sum = 0, squares = 0;
  for (std::size_t j = first; j < end; ++j) {
    if (present[j]) ++n, sum += values[j];
  }
  if (n < fewest_compared) return {};
  const double mean = sum / n;
  for (std::size_t j = first; j < end; ++j) {
    if (present[j]) squares += (values[j] - mean) * (values[j] - mean);
  }
  const double deviation = std::sqrt(squares / (n - 1)), z = (values[k] - mean) / deviation;
  // Of values that are all the same nothing but rounding may be left.
  if (!std::isfinite(z) || deviation < 1e-9 * std::abs(mean)) return {};
  return z;
}

SkeletonMark mark_at(double z) {
  if (z >= wide_from) return {SkeletonMark::Kind::wide};
  const double length = std::round((-z - usual_narrowness) / step);
  if (length < 1) return {};
  return {SkeletonMark::Kind::narrow, static_cast<int>(std::min<double>(length, longest))};
}

}  // namespace

std::vector<SkeletonMark> skeleton(std::span<const double> values, std::span<const bool> present) {
  VORN_ASSERT(values.size() == present.size());
  std::vector<SkeletonMark> marks(values.size());
  for (std::size_t k = 0; k < values.size(); ++k) {
    if (!present[k]) {
      marks[k] = {SkeletonMark::Kind::missing};
    } else if (const auto z = departure(values, present, k)) {
      marks[k] = mark_at(*z);
    }
  }
  return marks;
}

}  // namespace vorn
