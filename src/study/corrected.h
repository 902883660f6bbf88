// A core as a correction would make it, for looking at it before anything is changed.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "study/ring_errors.h"
#include "study/studied_cores.h"

namespace vorn {

// Owns its values: those of the core, moved, with one ring more or less. Nothing is detrended anew, so that
// its correlation is the one that ring_errors gives for the candidate.
class CorrectedSeries {
 public:
  // Given: core  as ring_errors was given it
  //        kind, end, year  of the candidate: the year counts in the corrected dating
  // A ring put in has no value. A ring made of two has that of the merged one; none where it is not known.
  CorrectedSeries(const StudiedCore& core, Correction kind, KeptEnd end, std::int64_t year);

  // Holds as long as this does.
  SeriesView view() const { return {first_, values_, {present_.get(), values_.size()}}; }

 private:
  std::int64_t first_ = 0;
  std::vector<double> values_;
  std::unique_ptr<bool[]> present_;
};

}  // namespace vorn
