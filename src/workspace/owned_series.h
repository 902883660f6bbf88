// A series of values by year that owns them, for what is made on the way from one kernel to the next.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

class OwnedSeries {
 public:
  OwnedSeries() = default;
  // So many years from `first` on, none of which has a value yet; fewer than none are none.
  OwnedSeries(std::int64_t first, std::int64_t count)
      : first_(first),
        values_(static_cast<std::size_t>(std::max<std::int64_t>(count, 0)), 0.0),
        present_(std::make_unique<bool[]>(values_.size())) {}
  explicit OwnedSeries(const SeriesView& copied) : OwnedSeries(copied.first, copied.years().count()) {
    for (std::size_t k = 0; k < values_.size(); ++k) {
      values_[k] = copied.values[k];
      present_[k] = copied.has(first_ + static_cast<std::int64_t>(k));
    }
  }

  // Gives a year of it a value, present or estimated.
  void put(std::int64_t year, double value, bool present = true) {
    const auto k = static_cast<std::size_t>(year - first_);
    values_[k] = value;
    present_[k] = present;
  }
  // Holds as long as this does, moved or not.
  SeriesView view() const { return {first_, values_, {present_.get(), values_.size()}}; }

 private:
  std::int64_t first_ = 0;
  std::vector<double> values_;
  std::unique_ptr<bool[]> present_;
};

}  // namespace vorn
