// The correlations of a short series with a longer one at every place, all at once: where to look for a
// match.
#pragma once

#include <span>
#include <vector>

namespace vorn {

// How far an estimate may be from covmiss.
inline constexpr double sliding_error = 1e-9;

// Given:    a, ok_a   a series of n values and which of them count, n at least 1
//           b, ok_b   one of m values, m at least n
// Returned: m - n + 1 estimates: number t is within sliding_error of covmiss of a with the n values of b from
//           number t on, over the pairs of which both values count (in practice within 1e-12). Not a number
//           where only covmiss can tell: fewer than 3 pairs, hardly any variance, values that are not finite.
//
// Sums of products are taken eight values of a at a time for many places; sums and sums of squares of b are
// differences of running sums that are kept to twice the digits. Pairs that do not count take part as zeros.
std::vector<double> sliding_correlations(std::span<const double> a, std::span<const bool> ok_a,
                                         std::span<const double> b, std::span<const bool> ok_b);

}  // namespace vorn
