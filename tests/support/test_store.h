// For tests: a small store of trees and chronologies put in by hand, messages kept as text.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "plot/plot.h"
#include "records/disk_files.h"
#include "support/kept_troubles.h"
#include "support/put_entry.h"
#include "support/queue_screen.h"
#include "workspace/vorndata.h"

namespace vorn {

class TestStore {
 public:
  ReturnScreen screen;

  TestStore() : plot_(screen), w(plot_, disk_) {
    w.log = &messages;
    w.cf = 1;
  }

  // Adds a tree behind those that are there; "-" in `mask` marks missing rings. Widths and indices are the
  // same.
  int add_tree(const std::string& name, int first_year, const std::vector<double>& values,
               std::string_view mask = {}) {
    put_entry(w, ++w.nc, name, first_year, values, mask);
    return w.nd = w.nc;
  }

  // Sets the chronology of file f, and its name.
  void set_chronology(int f, const std::string& name, int first_year, const std::vector<double>& values,
                      const std::vector<int>& depths) {
    w.cnam(f) = name;
    w.cfy(f) = first_year;
    w.cyr(f) = static_cast<int>(values.size());
    w.cly(f) = first_year + w.cyr(f) - 1;
    for (int p = 1; p <= w.cyr(f); ++p) {
      w.crn(p, f) = values[static_cast<std::size_t>(p - 1)];
      w.num(p, f) = depths[static_cast<std::size_t>(p - 1)];
    }
    w.nfil = std::max(w.nfil, f);
  }

  // Puts sample and reference into the two working entries behind nd.
  void set_pair(int sample_first, const std::vector<double>& sample, int reference_first,
                const std::vector<double>& reference, std::string_view sample_mask = {},
                std::string_view reference_mask = {}) {
    put_entry(w, w.nd + 1, "SAMPLE", sample_first, sample, sample_mask);
    put_entry(w, w.nd + 2, "REFER", reference_first, reference, reference_mask);
  }

  // Keeps the texts that are told.
  auto tells() {
    return [this](std::string_view text) { messages << text << '\n'; };
  }

 private:
  Plot plot_;
  DiskFiles disk_;

 public:
  Workspace w;
  std::ostringstream messages;
  KeptTroubles troubles{messages};
};

// `value` n times.
inline std::vector<double> repeated(int n, double value) {
  return std::vector<double>(static_cast<std::size_t>(n), value);
}
inline std::vector<int> depths(int n, int depth) {
  return std::vector<int>(static_cast<std::size_t>(n), depth);
}

// Values that look like those of a tree and are the same on every machine: a congruential generator, 0 to 1.
inline std::vector<double> noise(int n, unsigned seed) {
  std::vector<double> values;
  for (int i = 0; i < n; ++i) {
    seed = seed * 1664525u + 1013904223u;
    values.push_back(static_cast<double>(seed >> 8) / 16777216.0);
  }
  return values;
}

}  // namespace vorn
