#include "chronology/spline.h"

#include <cmath>

#include "base/loud_failure.h"

namespace vorn {
namespace {

using Equation = SplineFactor::Equation;

// The system of n values has n - 2 equations, one for each second difference. Two empty places stand before
// the first, and so many differences of 0 behind the last, so that no equation is a special case. Equation k
// belongs to values k - 2 to k.
constexpr std::size_t margin = 2;

// The weight of smoothness against closeness: with it a wave of period ss keeps one half of its amplitude.
double stiffness(int ss) {
  const double c = std::cos(6.283185307179587 / ss);
  return 6 * ((c - 1) * (c - 1)) / (3 * (2 + c));
}

// Equation k behind those before it, by the square-root (Cholesky) method.
Equation factored(const std::vector<Equation>& before, double r) {
  const Equation &one = before[before.size() - 1], &two = before[before.size() - 2];
  Equation row;
  row.two_back = two.diagonal;
  row.one_back = one.diagonal * ((r - 4) - one.one_back * row.two_back);
  row.diagonal = 1 / std::sqrt((4 * r + 6) - row.two_back * row.two_back - row.one_back * row.one_back);
  return row;
}

// Solves the factored system for the second differences of y.
std::vector<double> solved(std::span<const Equation> rows, std::span<const double> y) {
  const std::size_t n = y.size();
  std::vector<double> d(n + margin);
  for (std::size_t k = margin; k < n; ++k) {
    const double difference = y[k - 2] - 2 * y[k - 1] + y[k];
    d[k] = (difference - rows[k].two_back * d[k - 2] - rows[k].one_back * d[k - 1]) * rows[k].diagonal;
  }
  const auto row_behind = [&](std::size_t k) { return k < n ? rows[k] : Equation(); };
  for (std::size_t k = n; k-- > margin;) {
    d[k] = (d[k] - row_behind(k + 1).one_back * d[k + 1] - row_behind(k + 2).two_back * d[k + 2]) *
           rows[k].diagonal;
  }
  return d;
}

}  // namespace

SplineFactor::SplineFactor(int ss) : stiffness_(stiffness(ss)), equations_(margin) {}

std::span<const Equation> SplineFactor::equations(std::size_t n) {
  while (equations_.size() < n) equations_.push_back(factored(equations_, stiffness_));
  return std::span(equations_).first(n < margin ? margin : n);
}

void spline(std::span<const double> y, int ss, std::span<double> f) {
  SplineFactor factor(ss);
  spline(y, factor, f);
}

void spline(std::span<const double> y, SplineFactor& factor, std::span<double> f) {
  VORN_ASSERT(f.size() == y.size());
  const std::vector<double> d = solved(factor.equations(y.size()), y);
  for (std::size_t t = 0; t < y.size(); ++t) f[t] = y[t] - (d[t] - 2 * d[t + 1] + d[t + 2]);
}

}  // namespace vorn
