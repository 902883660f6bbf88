// The mean absolute difference of standardised series, with its five numbers told.
#pragma once

#include <span>

#include "statistics/correlation.h"
#include "statistics/telling.h"

namespace vorn {

// The kernel absmiss; where no position is missing, both means, both standard deviations and d are told, in a
// line of 120 characters by the format "(5F10.4)".
AbsoluteDifference absmiss(std::span<const double> a, std::span<const double> b, std::span<const bool> ok,
                           const Tell& tell);

}  // namespace vorn
