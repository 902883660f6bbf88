// The autoregressive model as R's `ar` estimates it by default: beside the program's own (burg_model.h), for
// whoever compares figures.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace vorn {

struct YuleWalkerModel {
  double mean = 0;                   // of the series
  std::vector<double> coefficients;  // the weights of one, two, … years before; none for no model
};

// The highest order that is tried for n values: 10 log10 n, less than n.
int highest_order(std::size_t n);

// Given:    series  n values in year order
// Returned: the model of the lowest Akaike criterion, of order 0 to highest_order(n), the lower one of two
//           alike; nothing where no value differs from another, or one is not finite.
// Source:   G. U. Yule (1927), Phil. Trans. R. Soc. A 226, 267-298, and G. Walker (1931), Proc. R. Soc. A
//           131, 518-532, for the equations; N. Levinson (1947), J. Math. Phys. 25, 261-278, for the way from
//           one order to the next; H. Akaike (1974), IEEE Trans. Autom. Control 19, 716-723.
std::optional<YuleWalkerModel> yule_walker(std::span<const double> series);

// What the model does not foretell, about the mean of the series. The first values, as many as the order, are
// not numbers: nothing foretells them.
std::vector<double> residuals_of(std::span<const double> series, const YuleWalkerModel& model);

}  // namespace vorn
