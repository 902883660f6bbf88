#include "chronology/spline.h"

#include <algorithm>
#include <array>
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

// Series that are solved side by side: in one alone each operation waits for the one before it.
constexpr std::size_t abreast = 4;

// The second differences of one series: of its n values, and so many places of 0 behind them.
struct Solution {
  std::span<const double> y;
  double* d = nullptr;

  std::size_t n() const { return y.size(); }
  Equation row_behind(std::span<const Equation> rows, std::size_t k) const {
    return k < n() ? rows[k] : Equation();
  }
};

// From the first equation towards the last: those from `from` on, before `to`.
template <std::size_t count>
void go_forward(std::span<const Equation> rows, const Solution* all, std::size_t from, std::size_t to) {
  if (from >= to) return;
  std::array<double, count> one, two;  // of the equations before
  for (std::size_t s = 0; s < count; ++s) {
    one[s] = all[s].d[from - 1];
    two[s] = all[s].d[from - 2];
  }
  for (std::size_t k = from; k < to; ++k) {
    const Equation row = rows[k];
    for (std::size_t s = 0; s < count; ++s) {
      const double* const y = all[s].y.data();
      const double difference = y[k - 2] - 2 * y[k - 1] + y[k];
      const double d = (difference - row.two_back * two[s] - row.one_back * one[s]) * row.diagonal;
      two[s] = one[s];
      one[s] = all[s].d[k] = d;
    }
  }
}

// Back from the last equation to the first: those before `from`, down to `to`. All of them have two behind
// them.
template <std::size_t count>
void go_back(std::span<const Equation> rows, const Solution* all, std::size_t from, std::size_t to) {
  if (from <= to) return;
  std::array<double, count> one, two;  // of the equations behind
  for (std::size_t s = 0; s < count; ++s) {
    one[s] = all[s].d[from];
    two[s] = all[s].d[from + 1];
  }
  for (std::size_t k = from; k-- > to;) {
    const double one_back = rows[k + 1].one_back, two_back = rows[k + 2].two_back,
                 diagonal = rows[k].diagonal;
    for (std::size_t s = 0; s < count; ++s) {
      const double d = (all[s].d[k] - one_back * one[s] - two_back * two[s]) * diagonal;
      two[s] = one[s];
      one[s] = all[s].d[k] = d;
    }
  }
}

// The last two equations of a series, which have not two behind them.
void turn_back(std::span<const Equation> rows, const Solution& it) {
  double* const d = it.d;
  const std::size_t n = it.n();
  for (std::size_t k = n; k-- > margin && k + margin >= n;) {
    d[k] = (d[k] - it.row_behind(rows, k + 1).one_back * d[k + 1] -
            it.row_behind(rows, k + 2).two_back * d[k + 2]) *
           rows[k].diagonal;
  }
}

// Solves the factored system for the second differences of each series. Where there are enough of them the
// equations that all have are gone through abreast; the rest of each by itself.
void solve(std::span<const Equation> rows, std::span<const Solution> all) {
  std::size_t shared = margin;  // the equations before this one are gone through abreast
  if (all.size() == abreast) {
    std::size_t shortest = all[0].n();
    for (const Solution& it : all) shortest = std::min(shortest, it.n());
    shared = std::max(shortest, 2 * margin) - margin;
    go_forward<abreast>(rows, all.data(), margin, shared);
  }
  for (const Solution& it : all) {
    go_forward<1>(rows, &it, shared, it.n());
    turn_back(rows, it);
    go_back<1>(rows, &it, std::max(it.n(), 2 * margin) - margin, shared);
  }
  if (all.size() == abreast) go_back<abreast>(rows, all.data(), shared, margin);
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
  const std::vector<double> curve = splines(std::span(&y, 1), factor);
  std::ranges::copy(curve, f.begin());
}

std::vector<double> splines(std::span<const std::span<const double>> y, SplineFactor& factor) {
  std::size_t values = 0, longest = 0;
  for (const auto& one : y) {
    values += one.size();
    longest = std::max(longest, one.size());
  }
  const auto rows = factor.equations(longest);
  std::vector<double> curves(values);
  double* f = curves.data();
  for (std::size_t first = 0; first < y.size(); first += abreast) {
    const auto now = y.subspan(first, std::min(abreast, y.size() - first));
    std::vector<double> differences(now.size() * (longest + margin));
    std::array<Solution, abreast> all;
    for (std::size_t s = 0; s < now.size(); ++s) all[s] = {now[s], &differences[s * (longest + margin)]};
    solve(rows, std::span(all).first(now.size()));
    for (std::size_t s = 0; s < now.size(); ++s) {
      const double* const d = all[s].d;
      for (std::size_t t = 0; t < now[s].size(); ++t) *f++ = now[s][t] - (d[t] - 2 * d[t + 1] + d[t + 2]);
    }
  }
  return curves;
}

}  // namespace vorn
