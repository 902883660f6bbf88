// The mean absolute difference of standardised series, as the screen has it: with its five numbers shown.
#pragma once

#include <span>

#include "statistics/correlation.h"
#include "workspace/vorndata.h"

namespace vorn {

// The kernel absmiss; where no position is missing, both means, both standard deviations and d are shown
// through out_err, in a line of 120 characters by the format "(5F10.4)".
AbsoluteDifference absmiss(Workspace& w, std::span<const double> a, std::span<const double> b,
                           std::span<const bool> ok);

}  // namespace vorn
