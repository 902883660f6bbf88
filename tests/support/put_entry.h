// For tests: one series put into the store by hand.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workspace/vorndata.h"

namespace vorn {

// Makes entry i, which starts at ad(i), a series of these widths; its indices are the widths. "-" in `mask`
// marks the rings that are missing.
inline void put_entry(Workspace& w, int i, const std::string& name, int first_year,
                      const std::vector<double>& widths, std::string_view mask = {}) {
  w.nam(i) = name;
  w.fy(i) = first_year;
  w.yr(i) = static_cast<int>(widths.size());
  w.ly(i) = first_year + w.yr(i) - 1;
  w.ad(i + 1) = w.ad(i) + w.yr(i);
  for (int k = 0; k < w.yr(i); ++k) {
    const auto at = static_cast<std::size_t>(k);
    const int p = w.ad(i) + k;
    w.x(p) = w.tx(p) = w.ax(p) = widths[at];
    w.xok(p) = at >= mask.size() || mask[at] != '-';
  }
}

}  // namespace vorn
