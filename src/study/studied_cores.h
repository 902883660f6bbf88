// Cores as the program compares them: what studies are given.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "chronology/compared_series.h"
#include "workspace/series_view.h"
#include "workspace/settings.h"

namespace vorn {

// A core as it is dated, and as the program compares it.
struct StudiedCore {
  SeriesView compared;  // detrended, prewhitened, as logarithms: whatever the settings make of it
  // What rings k and k + 1 would be compared as, were they one, for each k but the last (see merged_rings);
  // none where that is not known: then a merged ring is left out of the correlation.
  std::span<const double> merged = {};
};

// Some cores, treated alike.
class StudiedCores {
 public:
  // Given: widths    mm, with estimates at missing rings; who has a ring where is viewed, not copied
  //        settings  what is done to them
  StudiedCores(std::span<const SeriesView> widths, const Settings& settings);

  std::size_t size() const { return compared_.size(); }
  // Both hold as long as this does, and the widths' presence.
  StudiedCore core(std::size_t i) const { return {compared_[i], merged_[i]}; }
  std::span<const SeriesView> compared() const { return compared_; }

 private:
  std::vector<std::vector<double>> values_, merged_;
  std::vector<SeriesView> compared_;
};

}  // namespace vorn
