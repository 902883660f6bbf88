#include "chronology/missing_rings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "workspace/capacity.h"

namespace vorn {
namespace {

// The mean width at each place of a row: a row of calendar years, or of ring numbers. Places count from 1;
// what lies outside is passed over and reads as 0, as do places without a ring.
class MeanWidths {
 public:
  explicit MeanWidths(std::int64_t places)
      : mean_(static_cast<std::size_t>(places)), count_(static_cast<std::size_t>(places)) {}

  void add(std::int64_t place, double width) {
    if (!holds(place)) return;
    mean_[static_cast<std::size_t>(place - 1)] += width;
    ++count_[static_cast<std::size_t>(place - 1)];
  }
  // To be called once, when all is added.
  void divide() {
    for (std::size_t k = 0; k < mean_.size(); ++k) {
      if (count_[k] > 0) mean_[k] = mean_[k] / count_[k];
    }
  }
  double at(std::int64_t place) const {
    return holds(place) ? mean_[static_cast<std::size_t>(place - 1)] : 0;
  }

 private:
  bool holds(std::int64_t place) const {
    return place >= 1 && place <= static_cast<std::int64_t>(mean_.size());
  }

  std::vector<double> mean_;  // sums until divide
  std::vector<std::int32_t> count_;
};

// How a group of entries grows.
struct Growth {
  std::int64_t first_year;
  MeanWidths by_year;         // place 1 is first_year
  MeanWidths by_ring_number;  // place 1 is each series' first ring

  // The place in by_year before that of entry i's first ring.
  std::int64_t before(const SeriesStore& w, int i) const { return w.fy(i) - first_year; }
};

// First and last year of entries i1 to i2, and the length of the longest.
struct Extent {
  std::int64_t first_year, last_year;
  std::int32_t longest;
};

Extent extent_of(const SeriesStore& w, int i1, int i2) {
  Extent extent = {w.fy(i1), w.ly(i1), w.yr(i1)};
  for (int i = i1 + 1; i <= i2; ++i) {
    extent.first_year = std::min<std::int64_t>(extent.first_year, w.fy(i));
    extent.last_year = std::max<std::int64_t>(extent.last_year, w.ly(i));
    extent.longest = std::max(extent.longest, w.yr(i));
  }
  return extent;
}

Growth growth_of(const SeriesStore& w, int i1, int i2, const Extent& extent) {
  Growth growth = {extent.first_year, MeanWidths(max_years), MeanWidths(std::max(extent.longest, 0))};
  for (int i = i1; i <= i2; ++i) {
    const int years = w.yr(i), start = w.ad(i);
    const std::int64_t before = growth.before(w, i);
    for (int j = 1; j <= years; ++j) {
      const int p = start + j - 1;
      if (!w.xok.at(p)) continue;
      growth.by_year.add(before + j, w.x.at(p));
      growth.by_ring_number.add(j, w.x.at(p));
    }
  }
  growth.by_year.divide();
  growth.by_ring_number.divide();
  return growth;
}

// How wide entry i grows against the group's growth curve; not a number for a series without a present ring.
double level_of(const SeriesStore& w, int i, const Growth& growth) {
  double widths = 0, curve = 0;
  const int years = w.yr(i), start = w.ad(i);
  for (int j = 1; j <= years; ++j) {
    const int p = start + j - 1;
    if (!w.xok.at(p)) continue;
    widths += w.x.at(p);
    curve += growth.by_ring_number.at(j);
  }
  return widths / curve;
}

void estimate(SeriesStore& w, int i, const Growth& growth) {
  const double level = level_of(w, i, growth);
  const int years = w.yr(i), start = w.ad(i);
  const std::int64_t before = growth.before(w, i);
  for (int j = 1; j <= years; ++j) {
    const int p = start + j - 1;
    if (!w.xok.at(p)) w.x.put(p, growth.by_year.at(before + j) * level);
  }
}

}  // namespace

void mdet_miss(SeriesStore& w, int i1, int i2) {
  if (i1 > i2) return;
  const Extent extent = extent_of(w, i1, i2);
  // Deliberate: [long-group] nothing is estimated.
  if (extent.last_year - extent.first_year + 1 > max_years) return;
  const Growth growth = growth_of(w, i1, i2, extent);
  for (int i = i1; i <= i2; ++i) estimate(w, i, growth);
}

}  // namespace vorn
