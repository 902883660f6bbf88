#include "study/likely_years.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

namespace vorn {

std::int64_t likeliest_year(std::span<const double> likelihoods, std::int64_t first) {
  const auto count = static_cast<std::int64_t>(likelihoods.size());
  std::int64_t best = 0;
  double most = -1;
  for (std::int64_t k = 0; k < count; ++k) {
    double near = 0;
    for (std::int64_t m = std::max<std::int64_t>(k - years_around, 0);
         m <= std::min(k + years_around, count - 1); ++m)
      near +=
          likelihoods[static_cast<std::size_t>(m)] * static_cast<double>(years_around + 1 - std::abs(m - k));
    if (near > most) {
      most = near;
      best = k;
    }
  }
  return first + best;
}

YearSpan likely_years(std::span<const double> likelihoods, std::int64_t first) {
  std::vector<std::size_t> order(likelihoods.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t i, std::size_t j) { return likelihoods[i] > likelihoods[j]; });
  const double all = std::accumulate(likelihoods.begin(), likelihoods.end(), 0.0);
  std::size_t from = order.front(), to = order.front();
  double held = 0;
  for (const std::size_t k : order) {
    from = std::min(from, k);
    to = std::max(to, k);
    held += likelihoods[k];
    if (held >= share_of_set * all) break;
  }
  return {first + static_cast<std::int64_t>(from), first + static_cast<std::int64_t>(to)};
}

}  // namespace vorn
