#include "chronology/spline.h"

#include <cassert>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vorn {
namespace {

// One equation of the five-diagonal system, factored: how it hangs on the two equations before it
// (`two_back`, `one_back`), and the reciprocal of its diagonal.
struct Equation {
  double two_back = 0;
  double one_back = 0;
  double diagonal = 0;
};

// The system of n values has n - 2 equations, one for each second difference. Two empty places stand before
// the first and two behind the last, so that no equation is a special case. Equation k belongs to values k -
// 2 to k.
constexpr std::size_t margin = 2;

// The weight of smoothness against closeness: with it a wave of period ss keeps one half of its amplitude.
double stiffness(int ss) {
  const double c = std::cos(6.283185307179587 / ss);
  return 6 * ((c - 1) * (c - 1)) / (3 * (2 + c));
}

// The square-root (Cholesky) factor of the system. It depends on the number of values and on ss alone.
std::vector<Equation> factored(std::size_t n, int ss) {
  const double r = stiffness(ss);
  std::vector<Equation> rows(n + margin);
  for (std::size_t k = margin; k < n; ++k) {
    Equation& row = rows[k];
    row.two_back = rows[k - 2].diagonal;
    row.one_back = rows[k - 1].diagonal * ((r - 4) - rows[k - 1].one_back * row.two_back);
    row.diagonal = 1 / std::sqrt((4 * r + 6) - row.two_back * row.two_back - row.one_back * row.one_back);
  }
  return rows;
}

// Solves the factored system for the second differences of y; empty places as in the factor.
std::vector<double> solved(const std::vector<Equation>& rows, std::span<const double> y) {
  const std::size_t n = y.size();
  std::vector<double> d(n + margin);
  for (std::size_t k = margin; k < n; ++k) {
    const double difference = y[k - 2] - 2 * y[k - 1] + y[k];
    d[k] = (difference - rows[k].two_back * d[k - 2] - rows[k].one_back * d[k - 1]) * rows[k].diagonal;
  }
  for (std::size_t k = n; k-- > margin;) {
    d[k] = (d[k] - rows[k + 1].one_back * d[k + 1] - rows[k + 2].two_back * d[k + 2]) * rows[k].diagonal;
  }
  return d;
}

}  // namespace

void spline(std::span<const double> y, int ss, std::span<double> f) {
  assert(f.size() == y.size());
  const std::vector<double> d = solved(factored(y.size(), ss), y);
  for (std::size_t t = 0; t < y.size(); ++t) f[t] = y[t] - (d[t] - 2 * d[t + 1] + d[t + 2]);
}

}  // namespace vorn
