#include "statistics/segment_grid.h"

#include <algorithm>

namespace vorn {

// Deliberate: [cut-towards-zero] divisions do so throughout, for years before 0 and for counts below 0 too;
// the layout counts on it.
SegmentGrid::SegmentGrid(YearSpan used, std::int64_t length, std::int64_t step)
    : length_(length), step_(step) {
  if (step < 1) return;
  start_ = step * (used.first / step);
  // Deliberate: [grid-ends-early] the year before the last, so that a last year on a multiple of the step is
  // outside the grid.
  end_ = step * ((used.last - 1) / step + 1) - 1;
  // Deliberate: [column-for-less] cut towards zero, so that a segment that lacks less than a step still
  // gets a column.
  const std::int64_t segments = (end_ - start_ + 1 - length) / step + 1;
  blocks_ = static_cast<int>((segments - 1) / widest_block + 1);
}

SegmentBlock SegmentGrid::block(int k) const {
  SegmentBlock block;
  block.length = length_;
  block.step = step_;
  block.start = start_ + widest_block * step_ * k;
  block.end = std::min(block.start + (widest_block - 1) * step_ + length_ - 1, end_);
  block.segments = static_cast<int>((block.end - block.start + 1 - length_) / step_ + 1);
  return block;
}

std::optional<YearSpan> cell_years(const SegmentBlock& block, int j, YearSpan available) {
  const std::int64_t start = block.first_year(j), end = block.last_year(j);
  YearSpan cell = common({start, end}, available);
  // Deliberate: [more-than-a-step] more than a step between first and last year, whatever the length of a
  // segment.
  if (cell.last - cell.first <= block.step) return std::nullopt;
  if (start < cell.first) {
    cell.last = std::min(cell.first + block.length - 1, available.last);
  } else if (end > cell.last) {
    cell.first = std::max(cell.last - block.length + 1, available.first);
  }
  return cell;
}

}  // namespace vorn
