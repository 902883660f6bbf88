// For tests: a workspace whose series store holds a few cores typed by the test.
#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "plot/plot.h"
#include "records/disk_files.h"
#include "support/put_entry.h"
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
    std::string mask;
    for (const double width : widths) mask += width >= 0 ? '+' : '-';
    w.nd = ++w.nc;
    put_entry(w, w.nc, "", first_year, widths, mask);
  }

  // The values of core i, to be compared as a whole.
  template <class T>
  std::vector<T> values(const Pool<T>& pool, int i) const {
    const auto stretch = pool.range(w.ad(i), w.yr(i));
    return {stretch.begin(), stretch.end()};
  }

  PatientScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  Workspace w{plot, disk};
  std::ostringstream log;
};

}  // namespace vorn
