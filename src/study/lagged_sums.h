// Prefix sums of a core and a reference, the core read at several lags: what makes the correlation of every
// corrected core a matter of a few additions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "study/studied_cores.h"
#include "workspace/series_view.h"

namespace vorn {

// What a correlation needs to know of some pairs of values.
struct Sums {
  double n = 0, a = 0, b = 0, aa = 0, bb = 0, ab = 0;

  void add(double x, double y);
  Sums operator+(const Sums& o) const { return {n + o.n, a + o.a, b + o.b, aa + o.aa, bb + o.bb, ab + o.ab}; }
  Sums operator-(const Sums& o) const { return {n - o.n, a - o.a, b - o.b, aa - o.aa, bb - o.bb, ab - o.ab}; }

  // The correlation; 0 where one side does not vary, to within the digits that differences of sums keep.
  double r() const;
  // 1 - r^2 where r is positive, otherwise 1; never less than 1e-12.
  double unexplained() const;
  // -n/2 ln(unexplained).
  double score() const;
};

// The sums up to each year, for the core read at one lag. Values that are not finite do not count.
class RunningSums {
 public:
  // Year y of the reference meets year y + lag of the core, for all years of `span`.
  RunningSums(const SeriesView& core, const SeriesView& reference, int lag, YearSpan span);

  // Of the years before `year`, from the first of the span to the one behind its last.
  const Sums& before(std::int64_t year) const { return sums_[static_cast<std::size_t>(year - first_)]; }
  Sums behind(std::int64_t year) const { return sums_.back() - before(year + 1); }
  const Sums& all() const { return sums_.back(); }

 private:
  std::int64_t first_;
  std::vector<Sums> sums_;  // [k]: of the years before first_ + k
};

// By how many years a part of a core can be moved: by two errors.
inline constexpr int farthest_lag = 2;

// The sums for every lag, -farthest_lag to farthest_lag, over all years that the core can come to lie in.
class LaggedSums {
 public:
  LaggedSums(const StudiedCore& core, const SeriesView& reference);

  const RunningSums& at(int lag) const {
    const int place = lag + farthest_lag;
    return sums_[static_cast<std::size_t>(place)];
  }
  // Adds the ring of `year` that two make together, of which the inner one is read at `lag`.
  void add_merged(Sums& sums, int lag, std::int64_t year) const;

 private:
  StudiedCore core_;
  SeriesView reference_;
  std::vector<RunningSums> sums_;
};

}  // namespace vorn
