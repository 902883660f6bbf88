#include "statistics/correlation.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "base/loud_failure.h"

namespace vorn {
namespace {

using Series = std::span<const double>;
using Mask = std::span<const bool>;

// Pearson's r over the `count` positions that `counts` picks, in their order.
template <class Counts>
double pearson(Series a, Series b, double count, Counts counts) {
  VORN_ASSERT(a.size() == b.size());
  double sum_a = 0.0, sum_b = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!counts(i)) continue;
    sum_a += a[i];
    sum_b += b[i];
  }
  const double mean_a = sum_a / count, mean_b = sum_b / count;
  double s_aa = 0.0, s_bb = 0.0, s_ab = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (!counts(i)) continue;
    const double from_a = a[i] - mean_a, from_b = b[i] - mean_b;
    s_aa += from_a * from_a;
    s_bb += from_b * from_b;
    s_ab += from_b * from_a;
  }
  const double d = std::sqrt(s_aa * s_bb);
  return d > 0.0 ? s_ab / d : 0.0;
}

bool all_of(Mask ok) {
  return std::find(ok.begin(), ok.end(), false) == ok.end();
}

double sum(Series values) {
  double total = 0.0;
  for (const double value : values) total += value;
  return total;
}

double standard_deviation(Series centred, double degrees) {
  double squares = 0.0;
  for (const double value : centred) squares += value * value;
  return std::sqrt(squares / degrees);
}

// The marked values of a series, followed by zeros up to its length.
std::vector<double> marked_first(Series values, Mask ok) {
  std::vector<double> work(values.size(), 0.0);
  std::size_t m = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (ok[i]) work[m++] = values[i];
  }
  return work;
}

// Standardises both work arrays, of which the first m places hold values, and compares them.
AbsoluteDifference compare(std::vector<double> a, std::vector<double> b, std::size_t m) {
  const auto count = static_cast<double>(m);
  AbsoluteDifference result;
  result.mean_a = sum(Series(a).first(m)) / count;
  result.mean_b = sum(Series(b).first(m)) / count;
  // Deliberate: [unused-places] all places are centred and summed, those without a value too; what they add
  // is part of d.
  for (double& value : a) value -= result.mean_a;
  for (double& value : b) value -= result.mean_b;
  result.s_a = standard_deviation(a, count - 1.0);
  result.s_b = standard_deviation(b, count - 1.0);
  double differences = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) differences += std::abs(a[i] / result.s_a - b[i] / result.s_b);
  result.d = differences / count;
  return result;
}

}  // namespace

double cov(Series a, Series b) {
  return pearson(a, b, static_cast<double>(a.size()), [](std::size_t) { return true; });
}

MaskedCorrelation covmiss(Series a, Series b, Mask ok) {
  // Deliberate: [complete-pairs] no least number of pairs where none is missing.
  if (all_of(ok)) return {cov(a, b), true};
  const auto m = std::count(ok.begin(), ok.end(), true);
  if (m < fewest_pairs) return {not_correlated, false};
  return {pearson(a, b, static_cast<double>(m), [ok](std::size_t i) { return ok[i]; }), true};
}

AbsoluteDifference absmiss(Series a, Series b, Mask ok) {
  if (all_of(ok)) return compare({a.begin(), a.end()}, {b.begin(), b.end()}, a.size());
  const auto m = std::count(ok.begin(), ok.end(), true);
  AbsoluteDifference result;
  if (m < fewest_differences) {
    result.d = no_difference;
    result.valid = false;
  } else {
    result = compare(marked_first(a, ok), marked_first(b, ok), static_cast<std::size_t>(m));
  }
  result.complete = false;
  return result;
}

}  // namespace vorn
