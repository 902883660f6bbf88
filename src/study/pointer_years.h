// Years in which most cores agree that they were narrow, or wide.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

inline constexpr int pointer_window = 13;          // years, the one looked at in their middle
inline constexpr double pointer_deviation = 0.75;  // from so many standard deviations on a ring stands out
inline constexpr int least_pointer_cores = 3;
inline constexpr double share_of_pointer = 0.75;  // of the cores that must agree

struct PointerYear {
  std::int64_t year = 0;
  int cores = 0;   // whose ring of that year can be judged
  int narrow = 0;  // how many of them are narrow, how many wide
  int wide = 0;

  double share_narrow() const { return cores > 0 ? static_cast<double>(narrow) / cores : 0; }
  double share_wide() const { return cores > 0 ? static_cast<double>(wide) / cores : 0; }
  bool is_narrow() const { return cores >= least_pointer_cores && share_narrow() >= share_of_pointer; }
  bool is_wide() const { return cores >= least_pointer_cores && share_wide() >= share_of_pointer; }
};

// Given:    widths  mm; a ring that is absent (see SeriesView::has) counts as narrow, as on a skeleton plot
// Returned: every year from the first of any core to the last; none without cores.
// Method:   a ring is narrow or wide where its width lies so many standard deviations off the mean of the
//           window around it. Not judged are rings nearer to an end of their core than half a window, those
//           in whose window more than three are absent, and those whose window has one width alone.
// Source:   J. P. Cropper (1979), Tree-Ring Bulletin 39, 47-59, for the window of 13 years; F. H.
//           Schweingruber et al. (1990), Dendrochronologia 8, 9-38, for the share of the cores.
std::vector<PointerYear> pointer_years(std::span<const SeriesView> widths);

}  // namespace vorn
