// The correlation kernels: every correlation of the program goes through them.
//
// They take series of equal length position by position, know no year and touch nothing else. Sums are taken
// in the order of the positions and are complete before anything is stored, so a caller may put a result into
// the array that it was computed from.
#pragma once

#include <span>

namespace vorn {

// Pearson's product-moment correlation of two series.
//
// Given:    a, b   series of the same length n, any n.
// Returned: r = sum((b - mean b)(a - mean a)) / d with d = sqrt(sum((a - mean a)^2) sum((b - mean b)^2));
//           0.0 where d is not positive: constant series, n of 0 or 1, values that are not numbers.
// Source:   K. Pearson (1896), Phil. Trans. R. Soc. A 187, 253-318.
double cov(std::span<const double> a, std::span<const double> b);

struct MaskedCorrelation {
  double r = 0.0;
  bool valid = true;
};

// Deliberate: [two-point-zero] what covmiss answers for too few pairs. No correlation reaches it, so the
// value alone tells.
inline constexpr double not_correlated = 2.0;
inline constexpr int fewest_pairs = 3;

// The correlation of the pairs that `ok` marks.
//
// Given:    a, b   series of the same length n;  ok   the mask, of that length.
// Returned: cov of the marked pairs, valid; with fewer than fewest_pairs marked not_correlated, not valid.
// Note:     with every position marked this is cov at any length, even of two values or none.
MaskedCorrelation covmiss(std::span<const double> a, std::span<const double> b, std::span<const bool> ok);

struct AbsoluteDifference {
  double d = 0.0;
  bool valid = true;
  bool complete = true;               // every position was marked; only then the four below are of use
  double mean_a = 0.0, mean_b = 0.0;  // means
  double s_a = 0.0, s_b = 0.0;        // standard deviations
};

inline constexpr double no_difference = -1.0;
inline constexpr int fewest_differences = 11;

// The mean absolute difference of two standardised series: each less its mean, in its standard deviations.
//
// Given:    as covmiss.
// Returned: d, valid; no_difference, not valid, where a position is not marked and fewer than
//           fewest_differences are.
// Note:     where a position is not marked, the m marked pairs are put together in work arrays of length n
//           filled with 0. Means are those of the m pairs, but the sums of squares and of differences run
//           over all n places: the unused ones count as values of 0. Deviations divide by m - 1 and d by m.
AbsoluteDifference absmiss(std::span<const double> a, std::span<const double> b, std::span<const bool> ok);

}  // namespace vorn
