// For tests: a workspace whose series store holds a few cores typed by the test.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "plot/plot.h"
#include "support/queue_screen.h"
#include "workspace/vorndata.h"

namespace vorn {

class SpecimenStore : public ::testing::Test {
 protected:
  SpecimenStore() {
    w.log = &log;
    w.nfil = w.cf = 1;
  }

  // Puts a core behind those that are there, as a reader does: a negative width is a missing ring.
  void add_core(int first_year, const std::vector<double>& widths) {
    const int i = ++w.nc;
    w.nd = w.nc;
    const int length = static_cast<int>(widths.size());
    w.fy(i) = first_year;
    w.ly(i) = first_year + length - 1;
    w.yr(i) = length;
    w.ad(i + 1) = w.ad(i) + length;
    for (int j = 0; j < length; ++j) {
      const double width = widths[static_cast<std::size_t>(j)];
      w.x(w.ad(i) + j) = w.tx(w.ad(i) + j) = w.ax(w.ad(i) + j) = width;
      w.xok(w.ad(i) + j) = width >= 0;
    }
  }

  // The values of core i, to be compared as a whole.
  template <class T>
  std::vector<T> values(const Pool<T>& pool, int i) const {
    const auto stretch = pool.range(w.ad(i), w.yr(i));
    return {stretch.begin(), stretch.end()};
  }

  PatientScreen screen;
  Plot plot{screen};
  Workspace w{plot};
  std::ostringstream log;
};

}  // namespace vorn
