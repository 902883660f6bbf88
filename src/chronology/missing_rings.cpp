#include "chronology/missing_rings.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "workspace/capacity.h"

namespace vorn {
namespace {

bool are_all(std::span<const bool> present) {
  return std::find(present.begin(), present.end(), false) == present.end();
}

// The mean width at each place of a row: a row of calendar years, or of ring numbers. Places count from 0;
// what lies behind the last is passed over and reads as 0, as do places without a ring.
class MeanWidths {
 public:
  explicit MeanWidths(std::int64_t places)
      : mean_(static_cast<std::size_t>(places)), count_(static_cast<std::size_t>(places)) {}

  // The first of the widths, of those that are present, is that of `place`.
  void add(std::int64_t place, std::span<const double> widths, std::span<const bool> present) {
    const std::size_t from = index(place), count = std::min(widths.size(), mean_.size() - from);
    double* const mean = mean_.data() + from;
    std::int32_t* const counted = count_.data() + from;
    if (are_all(present)) {
      for (std::size_t k = 0; k < count; ++k) mean[k] += widths[k];
      for (std::size_t k = 0; k < count; ++k) ++counted[k];
      return;
    }
    for (std::size_t k = 0; k < count; ++k) {
      mean[k] += present[k] ? widths[k] : 0.0;
      counted[k] += present[k] ? 1 : 0;
    }
  }
  // To be called once, when all is added.
  void divide() {
    for (std::size_t k = 0; k < mean_.size(); ++k) {
      if (count_[k] > 0) mean_[k] = mean_[k] / count_[k];
    }
  }
  double at(std::int64_t place) const {
    const std::size_t k = index(place);
    return k < mean_.size() ? mean_[k] : 0;
  }

 private:
  std::size_t index(std::int64_t place) const {
    return std::min(static_cast<std::size_t>(place), mean_.size());
  }

  std::vector<double> mean_;  // sums until divide
  std::vector<std::int32_t> count_;
};

// How a group of entries grows.
struct Growth {
  std::int64_t first_year;
  MeanWidths by_year;         // place 0 is first_year
  MeanWidths by_ring_number;  // place 0 is each series' first ring

  // The place in by_year of entry i's first ring.
  std::int64_t start(const SeriesStore& w, int i) const { return w.fy(i) - first_year; }
};

// First and last year of entries i1 to i2, the longest, and how many years after the first year the last ring
// lies, of lengths that contradict the years as well.
struct Extent {
  std::int64_t first_year, last_year, longest, reach;
};

Extent extent_of(const SeriesStore& w, int i1, int i2) {
  Extent extent = {w.fy(i1), w.ly(i1), 0, 0};
  for (int i = i1; i <= i2; ++i) {
    extent.first_year = std::min<std::int64_t>(extent.first_year, w.fy(i));
    extent.last_year = std::max<std::int64_t>(extent.last_year, w.ly(i));
    extent.longest = std::max<std::int64_t>(extent.longest, w.yr(i));
  }
  for (int i = i1; i <= i2; ++i) extent.reach = std::max(extent.reach, w.fy(i) - extent.first_year + w.yr(i));
  return extent;
}

Growth growth_of(const SeriesStore& w, int i1, int i2, const Extent& extent) {
  const std::int64_t years = std::min<std::int64_t>(extent.reach, max_years);
  Growth growth = {extent.first_year, MeanWidths(years), MeanWidths(extent.longest)};
  for (int i = i1; i <= i2; ++i) {
    growth.by_year.add(growth.start(w, i), w.widths(i), w.presence(i));
    growth.by_ring_number.add(0, w.widths(i), w.presence(i));
  }
  growth.by_year.divide();
  growth.by_ring_number.divide();
  return growth;
}

// How wide entry i grows against the group's growth curve; not a number for a series without a present ring.
double level_of(const SeriesStore& w, int i, const Growth& growth) {
  double sum = 0, curve = 0;
  const auto widths = w.widths(i);
  const auto present = w.presence(i);
  for (std::size_t k = 0; k < widths.size(); ++k) {
    if (!present[k]) continue;
    sum += widths[k];
    curve += growth.by_ring_number.at(static_cast<std::int64_t>(k));
  }
  return sum / curve;
}

void estimate(SeriesStore& w, int i, const Growth& growth) {
  const auto present = w.presence(i);
  if (are_all(present)) return;
  const double level = level_of(w, i, growth);
  const auto widths = w.widths(i);
  const std::int64_t start = growth.start(w, i);
  for (std::size_t k = 0; k < widths.size(); ++k) {
    if (!present[k]) widths[k] = growth.by_year.at(start + static_cast<std::int64_t>(k)) * level;
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
