// The smoothing spline that takes the growth trend out of a ring-width series.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace vorn {

// What of the spline depends on its period alone: its equations, factored. Those of a shorter series are the
// first of a longer one's, to the last bit, so that one factor serves all series that are detrended alike.
class SplineFactor {
 public:
  // One equation of the five-diagonal system, factored: how it hangs on the two equations before it, and the
  // reciprocal of its diagonal.
  struct Equation {
    double two_back = 0;
    double one_back = 0;
    double diagonal = 0;
  };

  // For the period `ss` of half response, years.
  explicit SplineFactor(int ss);

  // The equations of a series of n values. What is returned holds until the next call.
  std::span<const Equation> equations(std::size_t n);

 private:
  double stiffness_;
  std::vector<Equation> equations_;  // of the longest series so far
};

// Fits the cubic smoothing spline of the field: of a wave with a period of `ss` years the curve follows one
// half of the amplitude, of slower changes more, of faster ones less.
//
// Given:    y   n values, one a year, in year order
//           ss  period of half response, years; users may set 3 to 999
// Returned: f   the curve at the same n years, any unit that y has; may be y itself
//
// Fewer than three values leave the spline nothing to smooth: the curve is the data. A value that is not a
// number makes the whole curve so.
//
// Source: Reinsch (1967), Smoothing by spline functions, Numerische Mathematik 10; Cook and Peters (1981),
// The smoothing spline, Tree-Ring Bulletin 41, for the stiffness that belongs to a period.
void spline(std::span<const double> y, int ss, std::span<double> f);

// The same with the factor of the period, for many series.
void spline(std::span<const double> y, SplineFactor& factor, std::span<double> f);

// The curves of many series, one behind the other: each the same to the last bit. Four of about the same
// length take less than half the time of each alone.
std::vector<double> splines(std::span<const std::span<const double>> y, SplineFactor& factor);

}  // namespace vorn
