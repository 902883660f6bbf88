// The six best dates for successive stretches of the sample.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "workspace/vorndata.h"

namespace vorn {

struct Match {
  double r = -1.0;
  std::int32_t offset = 0;  // years that the sample is dated too late, if this is the match
};

// A stretch of the sample with its best matches in the reference, best first. A rank not filled is Match{}.
struct MatchedStretch {
  std::int32_t first = 0, last = 0;
  std::array<Match, 6> matches;
};

// Correlates every stretch of the sample (entry nd + 1) with every place of the reference (entry nd + 2).
//
// Stretches are max(seg, yr / 8) years long; each begins with the last year of the one before. None where the
// sample is shorter. Carefully they lie at even distances, from its first year to its last one, a shorter
// sample is one of them, and a place may have a quarter of its years before or behind the reference. Among
// equal correlations the earlier place in the reference ranks first.
std::vector<MatchedStretch> best_matches(const Workspace& w);

}  // namespace vorn
