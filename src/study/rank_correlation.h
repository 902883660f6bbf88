// Spearman's correlation, of ranks, and how probable it is by chance.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace vorn {

// The rank of each value from 1 on; of values alike the mean of theirs. Each must be finite.
std::vector<double> ranks_of(std::span<const double> values);
bool has_ties(std::span<const double> values);

// Pearson's r of the ranks of two series of one length; 0 where one of them does not vary.
//
// Source: C. Spearman (1904), Am. J. Psychol. 15, 72-101.
double rank_correlation(std::span<const double> a, std::span<const double> b);

// How probable it is that n independent pairs reach this correlation of ranks or more by chance. Not a number
// for fewer than 10 pairs.
//
// Without ties, up to 1290 pairs: D. J. Best and D. E. Roberts (1975), algorithm AS 89, Appl. Stat. 24,
// 377-379, its Edgeworth series. Else by Student's t of n - 2 degrees of freedom.
double probability_of_ranks(double r, std::size_t n, bool ties);

// How probable a t of so many degrees of freedom (1 or more) is exceeded.
//
// Source: M. Abramowitz and I. A. Stegun (1964), Handbook of mathematical functions, 26.7.3 and 26.7.4.
double student_tail(double t, std::size_t degrees);

}  // namespace vorn
