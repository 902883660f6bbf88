// One series at every position of many others, as quickly as the machine can: for whoever looks through an
// archive and then computes what matters anew.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace vorn {

// sums[k]: of sample[i] times reference[k + i], over all i. The reference is read up to
// sums.size() + sample.size() + sliding_slack values, of which those behind the last that counts may be
// anything.
inline constexpr std::size_t sliding_slack = 512;
void sliding_sums(std::span<const float> sample, const float* reference, std::span<float> sums);

// The best of all positions of one reference.
struct BestMatch {
  float z = 0;                // of the best; -infinity where there is no position
  std::size_t position = 0;   // 0: the sample's last `least` years meet the reference's first
  std::size_t positions = 0;  // with enough years in common
};

// A sample that is slid along references. Values that are not numbers are years without a ring.
class SlidingMatch {
 public:
  // Given: sample, a  its values year by year, and its first-order autocorrelation
  //        least      years in common that a position needs, more than 3
  SlidingMatch(std::span<const double> sample, double a, std::size_t least);

  // Given:    reference, b  standardised (see standardised), and its autocorrelation
  // Returned: the correlation at the best position in standard deviations of chance: atanh(r) sqrt(n' - 3),
  // n' the
  //           years in common less what the autocorrelations take (Bayley and Hammersley, 1946). In single
  //           precision, to within 0.001 for z under 30: whoever needs more computes it anew.
  // Cost:     years of the sample times positions, eight or sixteen at a time; six times that where a ring
  // lacks.
  BestMatch best_on(std::span<const float> reference, double b);

  // Of the last reference: z at each position; -infinity with too few years in common.
  std::span<const float> z() const { return std::span(z_).first(positions_); }

 private:
  using Floats = std::vector<float>;

  void lay_out(std::size_t years);
  void sum_sample();
  std::size_t put_in(std::span<const float> reference);
  void sum_whole();
  void sum_with_gaps();
  float plain_z(std::size_t position) const;

  std::size_t least_, margin_;  // margin_: positions before the first that has all of the sample's years
  double a_, effective_ = 1;    // effective_: of the years in common, as independent ones
  bool has_gaps_ = false, follows_gaps_ = false;     // the sample; the reference before, or the sample
  std::size_t years_ = 0, positions_ = 0;            // of the reference
  Floats sample_, squares_, present_;                // 0 where there is no ring
  Floats padded_, padded_squares_, padded_present_;  // the reference between years without a ring
  Floats sums_, square_sums_;                        // of all years before each
  Floats n_, x_, xx_, y_, yy_, xy_, z_;              // of the years in common, by position
};

// The values with mean 0 and standard deviation 1, in single precision; those that do not vary are 0. Not a
// number stays not a number.
std::vector<float> standardised(std::span<const double> values);

}  // namespace vorn
