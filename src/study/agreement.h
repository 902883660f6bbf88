// How well two series agree, and by how much that may be chance: the measures that dates are told by.
#pragma once

#include <span>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

// Each width in percent of the mean of itself and the two years to either side, as a logarithm. n values; not
// a number for the two years at either end, and where a width or a mean is not above 0.
//
// Source: M. G. L. Baillie and J. R. Pilcher (1973), Tree-Ring Bulletin 33, 7-14.
std::vector<double> five_year_logarithms(std::span<const double> widths);

// The logarithm of each width's ratio to the one before, times 100. n values; not a number for the first, and
// where one of the two is not above 0.
//
// Source: E. Hollstein (1980), Mitteleuropäische Eichenchronologie, Mainz.
std::vector<double> growth_ratios(std::span<const double> widths);

// Student's t of a correlation of n pairs: r sqrt(n - 2) / sqrt(1 - r^2); infinite where r is 1 or -1, not a
// number for fewer than 3 pairs.
double t_of(double r, double n);

// The correlation of a series with itself a year later, over the years that have a ring and the year behind
// them too; 0 where there are fewer than 3.
double autocorrelation(const SeriesView& series);

// As how many independent pairs n pairs of two series with these autocorrelations count:
// n (1 - ab) / (1 + ab), at most n.
//
// Source: G. V. Bayley and J. M. Hammersley (1946), J. R. Stat. Soc. Suppl. 8, 184-197, for first-order
// autocorrelation; D. R. Dawdy and N. C. Matalas (1964), in V. T. Chow, Handbook of applied hydrology.
double effective_pairs(double n, double a, double b);

// A correlation of n independent pairs in standard deviations from none: atanh(r) sqrt(n - 3); 0 for 3 pairs
// and fewer, infinite where r is 1 or -1.
//
// Source: R. A. Fisher (1921), Metron 1, 3-32.
double fisher_z(double r, double n);

// How probable a deviation of z standard deviations or more, to either side, is by chance.
double two_sided_probability(double z);

// How probable it is that the best of so many independent tries reaches, by chance, what one reaches with
// probability p: 1 - (1 - p)^tries.
//
// Source: Z. Sidak (1967), J. Am. Stat. Assoc. 62, 626-633.
double of_the_best(double p, double tries);

}  // namespace vorn
