// Where the segments of the correlation report lie.
#pragma once

#include <cstdint>
#include <optional>

#include "workspace/years.h"

namespace vorn {

// One block of the report: `segments` segments of `length` years, one every `step` years from `start` on.
//
// segments is at most 24; 0 or less means that no whole segment fits, and says how narrow the block's lines
// are.
struct SegmentBlock {
  std::int64_t start = 0, end = 0;  // the years the block covers
  int segments = 0;
  std::int64_t length = 0, step = 1;

  std::int64_t first_year(int j) const { return start + (j - 1) * step; }  // of segment j, from 1
  std::int64_t last_year(int j) const { return first_year(j) + length - 1; }
};

// The grid of the report over the years used, y1 to y2, aligned to multiples of the step.
//
// It starts at the multiple of `step` at or, for years before 0, after y1, and ends one year before the
// multiple that follows y2 - 1: a last year that is a multiple itself lies behind it.
class SegmentGrid {
 public:
  static constexpr int widest_block = 24;

  // length and step are in years and positive; with any other step there are no blocks.
  SegmentGrid(YearSpan used, std::int64_t length, std::int64_t step);

  // How many blocks there are: one also where not even one segment fits, unless 23 or more are wanting.
  int blocks() const { return blocks_; }
  SegmentBlock block(int k) const;  // k from 0 to blocks() - 1

 private:
  std::int64_t start_ = 0, end_ = -1, length_, step_;
  int blocks_ = 0;
};

// The years over which segment j of a block is correlated for a series that has values in `available`.
//
// A segment cut by the ends of the series is moved inwards to keep its full length as far as the series
// reaches. Nothing where the cut segment's last year is not more than one step after its first.
std::optional<YearSpan> cell_years(const SegmentBlock& block, int j, YearSpan available);

}  // namespace vorn
