// A mean that outliers do not move.
#pragma once

#include <span>

namespace vorn {

// Tukey's biweight robust mean, one step: each value counts by (1 - u^2)^2, u its distance to the median in
// units of nine times the median of the distances (plus 10^-6, so that there is a unit); those of |u| above 1
// count nothing.
//
// Given:    sorted  finite values from the least to the greatest
// Returned: not a number of none.
// Source:   F. Mosteller and J. W. Tukey (1977), Data analysis and regression; E. R. Cook and L. A.
// Kairiukstis
//           (1990), Methods of dendrochronology, 125-126, for chronologies.
double biweight_mean(std::span<const double> sorted);

// The median of sorted values; not a number of none.
double median_of_sorted(std::span<const double> sorted);

}  // namespace vorn
