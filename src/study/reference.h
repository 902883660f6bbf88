// What a core is compared with: the mean of the others, year by year.
#pragma once

#include <cstdint>
#include <span>

#include "workspace/owned_series.h"

namespace vorn {

// In so many of the other cores a year must have a ring for their mean to count.
inline constexpr int least_depth = 3;

// A few cores give a mean, too, but not one of three: how many of so many cores must have a ring.
constexpr int depth_for(std::size_t cores) {
  return cores > least_depth ? least_depth : 1;
}

// A mean of series, which it owns.
class Reference {
 public:
  // Of all `cores` but number `left_out`, counted from 0; a number that none has leaves out none.
  //
  // A year's value is the mean over the rings present in it whose values are finite. It counts where these
  // are at least `depth`. Source: R. L. Holmes (1983), Tree-Ring Bulletin 43, for leaving out the core that
  // is compared.
  Reference(std::span<const SeriesView> cores, std::size_t left_out, int depth = least_depth);

  // Holds as long as the reference does.
  SeriesView view() const { return mean_.view(); }

 private:
  OwnedSeries mean_;
};

}  // namespace vorn
