// Which series have years in common, found without a look at every pair.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "workspace/series_view.h"

namespace vorn {

class Overlaps {
 public:
  Overlaps(std::span<const SeriesView> series, std::int64_t fewest_years);

  // The numbers, ascending, of the series behind number i that have at least `fewest_years` years in common
  // with it. They are there until the next call.
  std::span<const std::size_t> behind(std::size_t i);

 private:
  struct Placed {
    std::int64_t first, last;
    std::size_t number;
  };

  void mark(const Placed& one);
  std::span<const std::size_t> marked();

  std::int64_t fewest_years_, most_years_ = 0;
  std::vector<Placed> placed_;        // by number
  std::vector<Placed> by_first_;      // by first year, those alone that have so many years
  std::vector<std::uint64_t> marks_;  // a bit a number
  std::vector<std::size_t> found_;
};

}  // namespace vorn
