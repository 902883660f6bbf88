// What each stage cannot be faster than, on the machine at hand.
//
// A floor counts only the work that the result itself asks for (so many multiply-adds, so many bytes to be
// read) at the full rate of the machine. Nothing reaches it; how far off a stage is can be compared.
#pragma once

#include "machine_rates.h"
#include "workspace/vorndata.h"

namespace vorn::bench {

// Seconds. All are of the collection that is loaded.
class Floors {
 public:
  Floors(const Workspace& workspace, const MachineRates& rates) : w(workspace), rates_(rates) {}

  double recognising() const;    // the files opened, and their first bytes read
  double reading() const;        // their bytes looked through for line ends
  double estimates() const;      // widths and flags, read from memory once
  double spline() const;         // 9 multiply-adds a ring: two sweeps of 3 and 2, differences, the curve
  double model() const;          // 5 a ring and order tried, and the model's order once more
  double logarithm() const;      // a `log` a ring
  double pairs() const;          // a multiply-add a pair and common year; ends of pairs that cannot be shared
  double with_rest() const;      // 3 a ring
  double segment_cells() const;  // 3 a segment of a series and year
  double lag_table() const;      // 3 a cell and year
  double best_match() const;     // a multiply-add a place and year
  double single_precision(double multiply_adds) const;  // so many
  double start() const;  // of a program that does nothing; recognising, reading and all that is derived

 private:
  double rings() const;
  double file_bytes() const;

  const Workspace& w;
  const MachineRates& rates_;
};

}  // namespace vorn::bench
