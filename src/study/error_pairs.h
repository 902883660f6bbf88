// Two errors in one core: which kinds, and which two years. Part of ring_errors.
#pragma once

#include <optional>

#include "study/lagged_sums.h"
#include "study/ring_errors.h"

namespace vorn {

// The best pair of errors, for a core of the years given; nothing where none leaves enough years before,
// between and behind. Its gain is its score: that of the core as dated is to be taken off.
std::optional<ErrorPair> best_pair(const LaggedSums& sums, YearSpan core);

}  // namespace vorn
