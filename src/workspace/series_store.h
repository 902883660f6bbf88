// The series store: cores, chronologies and the working pair, packed end to end in one pool of ring values.
//
// Tables count from 1: the width of year y in entry i is x(ad(i) + y - fy(i)).
#pragma once

#include <cstdint>
#include <span>

#include "workspace/careful.h"
#include "workspace/names.h"
#include "workspace/pool.h"
#include "workspace/table.h"

namespace vorn {

// Entries 1 to nc are the cores of the current file, nc + 1 to nc + nfil the chronologies of the files, nd +
// 1 and nd + 2 the working copies of sample and reference.
struct SeriesStore {
  SeriesStore();

  Table<Name> nam;            // series name; "-" as its eighth character: years before year 0
  Table<std::int32_t> fy;     // first calendar year
  Table<std::int32_t> ly;     // last calendar year, fy + yr - 1
  Table<std::int32_t> yr;     // length in years
  Table<std::int32_t> ad;     // where the entry starts in the pool; ad(i + 1) = ad(i) + yr(i)
  Pool<double> x;             // pool of ring widths, mm; at a missing ring an estimate once loading is done
  Pool<bool> xok;             // pool: the ring was present in the file; false marks a missing ring for good
  Pool<double> tx;            // pool: detrended index, width / spline (or the width itself)
  Pool<double> ax;            // pool: what is correlated and drawn: tx prewhitened and transformed
  std::int32_t nc = 0;        // cores of the current file
  std::int32_t nd = 0;        // all entries
  std::int32_t loads = 0;     // how often cores were loaded, which tells one loading from the next
  std::int32_t cores_of = 0;  // whose cores they are, by its number in the file table; 0 before any

  Careful read_as;  // how the files were read that they come from: the mends of reading alone

  // A switch, ss, jpr, a stored ring or a core was changed since the chronology entries were last set: what
  // is derived is made anew before a working pair is set.
  bool derived_stale = false;

  // The values of entry i in year order, for kernels that count from 0.
  std::span<double> widths(int i) { return x.range(ad(i), yr(i)); }
  std::span<const double> widths(int i) const { return x.range(ad(i), yr(i)); }
  std::span<bool> presence(int i) { return xok.range(ad(i), yr(i)); }
  std::span<const bool> presence(int i) const { return xok.range(ad(i), yr(i)); }
  std::span<double> index(int i) { return tx.range(ad(i), yr(i)); }
  std::span<const double> index(int i) const { return tx.range(ad(i), yr(i)); }
};

}  // namespace vorn
