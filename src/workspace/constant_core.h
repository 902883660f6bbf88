// Cores that have nothing to be compared by.
#pragma once

#include <cmath>

#include "workspace/careful.h"
#include "workspace/series_store.h"

namespace vorn {

// Whether core i is one: it has two rings or more and all are as wide, or its indices are not all numbers.
inline bool is_constant(const SeriesStore& w, int i) {
  bool differs = false;
  int last = 0, present = 0;  // the place of the ring that was met last
  for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) {
    if (!std::isfinite(w.ax.at(p))) return true;
    if (!w.xok.at(p)) continue;
    differs = differs || (present > 0 && w.x.at(p) != w.x.at(last));
    last = p;
    ++present;
  }
  return present > 1 && !differs;
}

// Whether it is left out of the chronology and of the means over all cores: carefully.
inline bool is_left_out(const SeriesStore& w, const Careful& careful, int i) {
  return careful.has(Mend::constant_series) && is_constant(w, i);
}

}  // namespace vorn
