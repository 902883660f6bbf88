// From ring widths to indices: detrending, prewhitening and the logarithm.
#pragma once

#include <cstddef>

#include "chronology/compared_series.h"
#include "workspace/vorndata.h"

namespace vorn {

// What the switches and the model's order of the settings say.
Treatment treatment_of(const Settings& settings);

// Computes `tx` and `ax` of entry i anew from its widths `x`, by the switches as they stand:
//   splineon  tx = x / spline curve of period ss, the curve nowhere below 0.1; otherwise tx = x
//   aron      ax = tx prewhitened by a model of order below jpr (see armod2); otherwise ax = tx
//   logon     ax = ln(ax + one sixth of its mean)
// A missing ring takes part with its estimated width. Serves the two working entries as well as the cores; an
// entry of no years is left alone. Bad values propagate, nothing is reported.
void data_man(SeriesStore& w, const Settings& settings, WorkVectors& work, int i);

// data_man of all cores, 1 to nc, on so many threads; 0: as many as are worth it here. The indices have the
// same bits for any number.
void data_man_cores(Workspace& w, std::size_t threads = 0);

// Computes the indices of all cores and then the standard chronology of the current file (std_crn).
void data_man2(Workspace& w);

}  // namespace vorn
