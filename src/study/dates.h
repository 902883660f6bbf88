// Which date: a sample at every position of references, and how sure the best of them is.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

// So many years a sample must have in common with a reference for a position to be tried.
inline constexpr int least_years_in_common = 20;
// With fewer years in common a date means little, whatever its figures.
inline constexpr int few_years_in_common = 40;
// A date stands out where its probability is lower and its margin higher than these.
inline constexpr double probability_of_a_date = 0.05, margin_of_a_date = 1.0;

// A sample or a reference. Both views are of the same years; the presence that counts is that of `compared`.
struct SeriesToDate {
  SeriesView compared;               // as the program compares it: for r
  std::span<const double> growth{};  // ring widths, or an index above 0: for the other measures
};

// The sample at one position of a reference. A measure that too few years tell is not a number.
struct DatedPosition {
  std::int64_t first_year = 0;  // that the sample then begins in
  std::int64_t shift = 0;       // by how many years that is later than it is dated now
  int overlap = 0;              // years in common in which both have a ring
  double r = 0;                 // of the compared values
  double t_bp = 0;              // t of Baillie and Pilcher: of logarithms against five-year means
  double t_h = 0;               // t of Hollstein: of logarithms of successive ratios
  double glk = 0;               // Gleichlaeufigkeit, 0 to 1
  double z = 0;                 // r in standard deviations of chance, by the effective number of pairs
  double p = 1;  // probability of such an r at the best of all positions of all references, by chance
};

// What one reference tells.
struct Dates {
  std::vector<DatedPosition> ranked;  // every position tried, the best first: by z
  double margin = 0;  // z of the best less that of the best more than 2 years away, infinite without one
  bool stands_out = false;  // the best is hardly chance, and no other is nearly as good
};

// Given:    sample, references   compared alike. Values that are not finite, and widths of 0, do not count
// Returned: by reference, in their order. Without a position of least_years_in_common there are none ranked.
//
// r is judged with the effective number of pairs after the first-order autocorrelation of both whole series
// (effective_pairs), two-sided by Fisher's z, and corrected for all positions of all references tried
// (of_the_best). Neighbouring positions are not independent, so that p is rather too high than too low.
// Negative correlations have their p, and rank last.
//
// Gleichlaeufigkeit: of the intervals between years in common, the share in which both rise or both fall;
// those in which one does not change count a half, those in which neither does count nothing.
//
// Cost: in proportion to positions times years in common.
// Source: see agreement.h; D. Eckstein and J. Bauch (1969), Forstwiss. Centralbl. 88, 230-250.
// `further_positions`: of references that were tried elsewhere; they count as tries, too.
std::vector<Dates> dates(const SeriesToDate& sample, std::span<const SeriesToDate> references,
                         double further_positions = 0);

}  // namespace vorn
