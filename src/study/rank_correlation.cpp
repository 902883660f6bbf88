#include "study/rank_correlation.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

#include "statistics/correlation.h"

namespace vorn {
namespace {

constexpr std::size_t fewest_ranked = 10, most_exact = 1290;

double normal_tail(double x) {
  return std::erfc(x / std::numbers::sqrt2) / 2;
}

// What the sum of the squared differences of ranks adds to the normal distribution, the series of AS 89.
double edgeworth(double x, double b) {
  constexpr std::array<double, 13> c = {0,     .2274, .2531, .1745, .0758, .1033, .3932,
                                        .0879, .0151, .0072, .0831, .0131, 4.6e-4};
  const double y = x * x;
  const double inner = c[9] - c[10] * b + y * b * (c[11] - c[12] * y);
  const double outer = -c[4] + b * (c[5] + c[6] * b) - y * b * (c[7] + c[8] * b - y * inner);
  return x * b * (c[1] + b * (c[2] + c[3] * b) + y * outer) / std::exp(y / 2);
}

// That the sum of the squared differences is no more than that of r.
double exact_probability(double r, double n) {
  const double squares = std::round((n * n * n - n) * (1 - r) / 6) + 2;
  const double b = 1 / n, x = (6 * (squares - 1) * b / (n * n - 1) - 1) * std::sqrt(n - 1);
  return std::clamp(-edgeworth(x, b) + normal_tail(-x), 0.0, 1.0);
}

}  // namespace

std::vector<double> ranks_of(std::span<const double> values) {
  std::vector<std::size_t> order(values.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::sort(order, {}, [&](std::size_t k) { return values[k]; });
  std::vector<double> ranks(values.size());
  for (std::size_t from = 0; from < order.size();) {
    std::size_t to = from;
    while (to < order.size() && values[order[to]] == values[order[from]]) ++to;
    for (std::size_t k = from; k < to; ++k) ranks[order[k]] = static_cast<double>(from + 1 + to) / 2;
    from = to;
  }
  return ranks;
}

bool has_ties(std::span<const double> values) {
  std::vector<double> sorted(values.begin(), values.end());
  std::ranges::sort(sorted);
  return std::ranges::adjacent_find(sorted) != sorted.end();
}

double rank_correlation(std::span<const double> a, std::span<const double> b) {
  return cov(ranks_of(a), ranks_of(b));
}

double student_tail(double t, std::size_t degrees) {
  const auto f = static_cast<double>(degrees);
  const double angle = std::atan(t / std::sqrt(f)), cosine = std::cos(angle);
  const bool odd = degrees % 2 == 1;
  // The series runs over the even powers of the cosine, or the odd ones.
  double term = odd ? cosine : 1, sum = degrees == 1 ? 0 : term;
  for (std::size_t k = odd ? 3 : 2; k + 2 <= degrees; k += 2) {
    const auto step = static_cast<double>(k);
    term *= cosine * cosine * (step - 1) / step;
    sum += term;
  }
  const double within = odd ? (angle + std::sin(angle) * sum) * 2 / std::numbers::pi : std::sin(angle) * sum;
  return (1 - within) / 2;
}

double probability_of_ranks(double r, std::size_t n, bool ties) {
  if (n < fewest_ranked) return std::nan("");
  const auto pairs = static_cast<double>(n);
  if (!ties && n <= most_exact) return exact_probability(r, pairs);
  return student_tail(r / std::sqrt((1 - r * r) / (pairs - 2)), n - 2);
}

}  // namespace vorn
