// Copies of the cores as they stand at a wait, for those who look at them while the program works on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/series_store.h"

namespace vorn {

// One series: year k, counted from 0, is first_year + k.
struct SeriesCopy {
  std::string name;
  int first_year = 0;
  std::vector<double> widths;          // mm
  std::vector<std::uint8_t> presence;  // 1 where the ring was present, 0 at a missing ring; as many as widths

  int last_year() const { return first_year + static_cast<int>(widths.size()) - 1; }
  bool operator==(const SeriesCopy&) const = default;
};

// Never changed once it is made, so that copies can be shared between threads.
using SharedSeries = std::shared_ptr<const SeriesCopy>;

// Entry i of the store, one of its cores or of the two working copies.
SeriesCopy copy_of(const SeriesStore& w, int i);

// The cores of the store in their order. A core that is, to the last bit, one of `before` is shared with it,
// so that what was not changed costs no memory and is known by its address.
std::vector<SharedSeries> copies_of_cores(const SeriesStore& w, const std::vector<SharedSeries>& before);

// What became of one core.
struct CoreChange {
  enum class Kind : std::uint8_t {
    made,    // it was not there before
    gone,    // it is no longer there
    dated,   // the same rings in other years
    rings,   // rings were inserted or deleted
    widths,  // as many rings, but other widths
  };
  Kind kind = Kind::widths;
  SharedSeries before, after;  // one is empty where the core was made or is gone
};

// What changed from `before` to `after`, in the order of the cores. Cores are the same where their copies are
// shared, else by their names, in order.
std::vector<CoreChange> changes_between(const std::vector<SharedSeries>& before,
                                        const std::vector<SharedSeries>& after);

// The years, counted in `longer`, of the rings that it has and `shorter` has not, where it can be had by
// inserting rings alone and all others are the same; empty where it cannot.
std::vector<int> inserted_years(const SeriesCopy& shorter, const SeriesCopy& longer);

}  // namespace vorn
