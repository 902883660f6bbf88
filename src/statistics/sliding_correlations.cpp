#include "statistics/sliding_correlations.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>

#include "base/loud_failure.h"
#include "statistics/correlation.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

// An estimate is given when the variance of both series keeps this share of what was summed: then a series of
// 12,000 values, the longest there is, loses fewer digits than sliding_error allows.
constexpr double least_share = 1e-2;

// A series less its mean, 0 where a value does not count.
struct Centred {
  Centred(std::span<const double> values, std::span<const bool> ok)
      : value(values.size()), square(values.size()), counts(values.size()) {
    double sum = 0, count = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!ok[i]) continue;
      sum += values[i];
      ++count;
    }
    const double mean = count > 0 ? sum / count : 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
      counts[i] = ok[i] ? 1 : 0;
      value[i] = ok[i] ? values[i] - mean : 0;
      square[i] = value[i] * value[i];
      if (!ok[i]) absent.push_back(i);
    }
  }

  Values value, square, counts;
  std::vector<std::size_t> absent;
};

// result[t] = sum over k of a[k] b[t + k].
Values products(const Values& a, const Values& b) {
  constexpr std::size_t places_at_once = 512, values_at_once = 8;
  const std::size_t places = b.size() - a.size() + 1;
  Values padded = a, longer = b;
  padded.resize((a.size() + values_at_once - 1) / values_at_once * values_at_once, 0.0);
  longer.resize(b.size() + values_at_once, 0.0);
  Values result(places, 0.0);
  for (std::size_t from = 0; from < places; from += places_at_once) {
    const std::size_t count = std::min(places_at_once, places - from);
    double* const __restrict to = result.data() + from;
    for (std::size_t k = 0; k < padded.size(); k += values_at_once) {
      std::array<double, values_at_once> factor;
      std::copy_n(padded.begin() + static_cast<std::ptrdiff_t>(k), values_at_once, factor.begin());
      const double* const other = longer.data() + from + k;
      for (std::size_t t = 0; t < count; ++t) {
        to[t] += ((factor[0] * other[t] + factor[1] * other[t + 1]) +
                  (factor[2] * other[t + 2] + factor[3] * other[t + 3])) +
                 ((factor[4] * other[t + 4] + factor[5] * other[t + 5]) +
                  (factor[6] * other[t + 6] + factor[7] * other[t + 7]));
      }
    }
  }
  return result;
}

// The sums of every n values in a row, from running sums of which the rounding is kept beside them.
Values window_sums(const Values& values, std::size_t n) {
  Values sum(values.size() + 1, 0.0), lost(values.size() + 1, 0.0);
  for (std::size_t i = 0; i < values.size(); ++i) {
    sum[i + 1] = sum[i] + values[i];
    const double added = sum[i + 1] - sum[i];
    lost[i + 1] = lost[i] + ((sum[i] - (sum[i + 1] - added)) + (values[i] - added));
  }
  Values result(values.size() - n + 1);
  for (std::size_t t = 0; t < result.size(); ++t) result[t] = (sum[t + n] - sum[t]) + (lost[t + n] - lost[t]);
  return result;
}

// Takes out of sums over all of b's values at a place those that meet a value of a that does not count.
void leave_out(Values& sums, const Values& of_b, const std::vector<std::size_t>& absent_in_a) {
  for (const std::size_t k : absent_in_a) {
    for (std::size_t t = 0; t < sums.size(); ++t) sums[t] -= of_b[t + k];
  }
}

// The sum of a's values at each place, less those that meet a value of b that does not count.
Values sums_less_absent(const Values& of_a, std::size_t places, const std::vector<std::size_t>& absent_in_b) {
  Values sums(places, std::accumulate(of_a.begin(), of_a.end(), 0.0));
  for (const std::size_t p : absent_in_b) {
    const std::size_t first = p + 1 > of_a.size() ? p + 1 - of_a.size() : 0;
    for (std::size_t t = first; t <= std::min(p, places - 1); ++t) sums[t] -= of_a[p - t];
  }
  return sums;
}

}  // namespace

std::vector<double> sliding_correlations(std::span<const double> a, std::span<const bool> ok_a,
                                         std::span<const double> b, std::span<const bool> ok_b) {
  VORN_ASSERT(a.size() == ok_a.size() && b.size() == ok_b.size() && !a.empty() && a.size() <= b.size());
  const Centred short_one(a, ok_a), long_one(b, ok_b);
  const std::size_t n = a.size(), places = b.size() - n + 1;

  const Values dots = products(short_one.value, long_one.value);
  const Values sums_a = sums_less_absent(short_one.value, places, long_one.absent);
  const Values squares_a = sums_less_absent(short_one.square, places, long_one.absent);
  const double all_squares_a = std::accumulate(short_one.square.begin(), short_one.square.end(), 0.0);
  const Values all_squares_b = window_sums(long_one.square, n);
  Values sums_b = window_sums(long_one.value, n), squares_b = all_squares_b;
  Values pairs = window_sums(long_one.counts, n);
  leave_out(sums_b, long_one.value, short_one.absent);
  leave_out(squares_b, long_one.square, short_one.absent);
  leave_out(pairs, long_one.counts, short_one.absent);

  std::vector<double> estimates(places, std::numeric_limits<double>::quiet_NaN());
  for (std::size_t t = 0; t < places; ++t) {
    const double variance_a = squares_a[t] - sums_a[t] * sums_a[t] / pairs[t];
    const double variance_b = squares_b[t] - sums_b[t] * sums_b[t] / pairs[t];
    const bool sure = pairs[t] >= fewest_pairs && variance_a > least_share * all_squares_a &&
                      variance_b > least_share * all_squares_b[t];
    if (sure)
      estimates[t] = (dots[t] - sums_a[t] * sums_b[t] / pairs[t]) / std::sqrt(variance_a * variance_b);
  }
  return estimates;
}

}  // namespace vorn
