// The smoothing spline that takes the growth trend out of a ring-width series.
#pragma once

#include <span>

namespace vorn {

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

}  // namespace vorn
