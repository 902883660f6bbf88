// From ring widths to what is compared: detrending, prewhitening and the logarithm.
#pragma once

#include <span>
#include <vector>

#include "chronology/spline.h"

namespace vorn {

// What is done to widths before they are compared.
struct Treatment {
  bool spline = true;  // divide by the spline's curve
  bool model = true;   // prewhiten
  int max_order = 11;  // highest order of the model to try, 1 or more (see armod2)
  bool logarithm = true;
};

// --- The stages, each of n values in year order. Bad values propagate, nothing is reported.

// Divides widths by the spline's curve, which counts as 0.1 where it is lower. At a missing ring an estimate
// takes part. `factor` is that of the spline's period.
void detrend(std::span<double> widths, SplineFactor& factor);

// The same for several series, to the last bit, and faster.
void detrend(std::span<const std::span<double>> widths, SplineFactor& factor);

// Prewhitens an index by a model of order below max_order (see armod2, for the coefficients too).
void prewhiten(std::span<double> index, std::span<double> coefficients, int max_order);

// Takes logarithms of values plus an offset: one sixth of their mean, which is returned.
double take_logarithms(std::span<double> values);

// --- All of them.

// A series at each of its stages, all of one length.
struct ComparedSeries {
  std::vector<double> index;        // width / curve, or the width itself
  std::vector<double> prewhitened;  // or the index itself
  double offset = 0;                // what the logarithm adds; 0 without the logarithm
  std::vector<double> compared;     // ln(prewhitened + offset), or prewhitened
};

// The stages that the treatment asks for, of no values as well. What data_man makes of an entry.
ComparedSeries compared_series(std::span<const double> widths, const Treatment& treatment,
                               SplineFactor& factor);

// What rings k and k + 1 would be compared as, were they one ring, for each k but the last.
//
// Given:    series, treatment  what compared_series made, and by what
// Returned: n - 1 values: with the logarithm ln(prewhitened(k) + index(k + 1) + offset). The model foretells
//           the merged ring from the years before it as it does ring k; so what it does not foretell is that
//           of ring k and all of ring k + 1. None for fewer than two rings.
// Note:     the curve, the model and the offset stay as they are: one ring of many hardly moves them.
std::vector<double> merged_rings(const ComparedSeries& series, const Treatment& treatment);

}  // namespace vorn
