#include "study/agreement.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "study/lagged_sums.h"

namespace vorn {
namespace {

constexpr double not_known = std::numeric_limits<double>::quiet_NaN();

// The logarithm of a ratio of two that must both be above 0.
double logarithm_of_ratio(double a, double b) {
  return a > 0 && b > 0 ? std::log(a / b) : not_known;
}

}  // namespace

std::vector<double> five_year_logarithms(std::span<const double> widths) {
  std::vector<double> values(widths.size(), not_known);
  for (std::size_t k = 2; k + 2 < widths.size(); ++k) {
    const double sum = widths[k - 2] + widths[k - 1] + widths[k] + widths[k + 1] + widths[k + 2];
    values[k] = logarithm_of_ratio(100 * widths[k], sum / 5);
  }
  return values;
}

std::vector<double> growth_ratios(std::span<const double> widths) {
  std::vector<double> values(widths.size(), not_known);
  for (std::size_t k = 1; k < widths.size(); ++k)
    values[k] = 100 * logarithm_of_ratio(widths[k], widths[k - 1]);
  return values;
}

double t_of(double r, double n) {
  return n < 3 ? not_known : r * std::sqrt(n - 2) / std::sqrt(1 - r * r);
}

double autocorrelation(const SeriesView& series) {
  const YearSpan years = series.years();
  const RunningSums sums(series, series, 1, years);
  return sums.all().n < 3 ? 0 : sums.all().r();
}

double effective_pairs(double n, double a, double b) {
  return std::min(n, n * (1 - a * b) / (1 + a * b));
}

double fisher_z(double r, double n) {
  return n > 3 ? std::atanh(r) * std::sqrt(n - 3) : 0;
}

double two_sided_probability(double z) {
  return std::erfc(std::abs(z) / std::sqrt(2.0));
}

double of_the_best(double p, double tries) {
  return p < 1 ? -std::expm1(tries * std::log1p(-p)) : 1;
}

}  // namespace vorn
