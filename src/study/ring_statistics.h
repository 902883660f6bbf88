// What ring widths tell of a core alone.
#pragma once

#include <span>

namespace vorn {

// Each takes the widths of a core in year order, mm, absent rings as 0, and answers not a number where there
// are too few of them or nothing to divide by.

// The mean of |b - a| / ((a + b) / 2) over neighbouring rings; two rings of 0 differ by nothing.
//
// Source: A. E. Douglass (1920), Ecology 1, 24-32; H. C. Fritts (1976), Tree rings and climate, 258; F.
// Biondi and F. Qeadan (2008), Ecology 89, 1056-1067, equation 1.
double mean_sensitivity(std::span<const double> widths);

// n / (n - 1) times the sum of |b - a| over the sum of the widths.
//
// Source: Biondi and Qeadan (2008), equation 2.
double weighted_sensitivity(std::span<const double> widths);

// Half the mean difference of all pairs of rings, those of a ring with itself among them, over the mean
// width.
//
// Source: C. Gini (1912), Variabilita e mutabilita; Biondi and Qeadan (2008).
double gini_coefficient(std::span<const double> widths);

// The sum of (w - mean)^3 over n s^3, s the standard deviation with n - 1.
double skewness(std::span<const double> widths);

// The sum of products of neighbours' deviations over that of the squares.
//
// Source: G. E. P. Box and G. M. Jenkins (1970), Time series analysis.
double first_autocorrelation(std::span<const double> widths);

// Whether all widths are one and the same; of none and of one ring, too.
bool is_of_one_width(std::span<const double> widths);

}  // namespace vorn
