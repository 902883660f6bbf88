// The verb `corr`: the figures of the correlation report, or of the lag table, for every core of a file.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/collection.h"
#include "batch/table.h"
#include "workspace/capacity.h"

namespace vorn {

// The chronology of another file, to be put beside those of a collection.
class OtherChronology {
 public:
  explicit OtherChronology(const Collection& collection);

  bool empty() const { return values_.empty(); }
  // Makes it the second file of the list, as entry nc + 2.
  void put_beside(Workspace& w) const;

 private:
  FileName name_;
  Layout layout_;
  std::int32_t first_ = 0, last_ = 0;
  std::vector<double> values_;
  std::vector<std::int32_t> depths_;
};

// The figures of Corr.prn: each core against the chronology without it, one row for each segment that has a
// figure there. `from` and `to` are the segment's years, as its heading has them; the flag is "A" where the
// correlation is below what chance passes in one case of 100 (see least_correlation).
void report_rows(Collection& collection, const std::function<void(const Row&)>& add);

// The figures of the lag table that the correlation screen has of each core and a chronology: that of its own
// file without it, or `other`. One row for each segment and each lag of up to `farthest` years that lies
// within the core; the correlation is absent where the table has fewer than three pairs. The screen ends at
// 34 segments; here they go on as they do there from a later start year. A segment that begins before one of
// the two, which the screen has where they have less than a segment in common, has no row: its values would
// be those of other series. The row of lag 0 is flagged, "A" as
// above, "B" where another lag of the segment is higher, "AB" for both.
void lag_rows(Collection& collection, const OtherChronology* other, int farthest,
              const std::function<void(const Row&)>& add);

}  // namespace vorn
