// The autoregressive model of an index series: its estimation, the choice of its order, and its residuals.
//
// Ring-width indices carry over from year to year. The model says how much of a year can be foretold from the
// years before it; what remains, the prewhitened series, is what cross-dating compares.
#pragma once

#include <span>

namespace vorn {

// The model that memcof2 chose.
struct BurgModel {
  int order = 0;  // years that it looks back; 0 is no model at all
  // Share of the variance that the last order tried explains; 0 when the model was dropped.
  double explained = 0;
};

// Estimates models of order 1, 2, … by Burg's method and chooses one by the corrected Akaike criterion.
//
// Given:    series        n values, in year order; need not be centred
//           max_order     highest order to try, 1 or more
// Returned: coefficients  the first `order` places: the weights of one, two, … years before; room
//                         for max_order - 1. Further places are left alone
//
// Orders are tried until the criterion first rises. The order before that is the model, or none at all when
// its criterion lies above that of order 0. When every order was tried without a rise the model is that of
// order max_order - 1 as it stood before the last pass: the last order is computed and never used, and with
// max_order 1 there is never a model. Order 1 is never the one that stops.
//
// A constant series, or one hardly longer than the orders tried, has no model: its coefficients, of order
// max_order - 1, are not numbers.
//
// Source: Burg (1975), Maximum entropy spectral analysis, for the reflection coefficients; Levinson (1947)
// for the step from one order to the next; Sugiura (1978) and Hurvich and Tsai (1989) for the criterion.
BurgModel memcof2(std::span<const double> series, int max_order, std::span<double> coefficients);

// Replaces a series by its residuals under a model, its mean added back.
//
// Given:    series        n values, in year order
//           coefficients  the model: weights of one, two, … years before; none leave the series as it is
// Returned: series        what the model does not foretell, about the same mean
//
// The years that the model needs before the first one are foretold backwards from the start of the series, so
// that no year is lost. A series shorter than the model is taken to go on at its mean.
//
// Source: Box and Jenkins (1970), Time series analysis, for the back-casting.
void albino2(std::span<double> series, std::span<const double> coefficients);

// Prewhitens an index series: fits a model with memcof2, takes the residuals with albino2 and adds 1.
//
// Given:    index         n values, in year order
//           max_order     highest order to try, 1 or more
// Returned: prewhitened   n values, none below 0: what falls below, or is not a number, becomes 0;
//                         an index about 1 comes out about 2
//           coefficients  as memcof2 leaves them
// Result:   the order of the model
//
// Source: Cook (1985), A time series analysis approach to tree-ring standardization, for prewhitened indices.
int armod2(std::span<const double> index, std::span<double> prewhitened, std::span<double> coefficients,
           int max_order);

}  // namespace vorn
