#include "study/corrected.h"

#include <algorithm>

namespace vorn {

OwnedSeries corrected_series(const StudiedCore& core, Correction kind, KeptEnd end, std::int64_t year) {
  const SeriesView& dated = core.compared;
  const Lags lags = lags_of(kind, end);
  // The ends of what is read, in the corrected dating. An error at an end leaves nothing behind it.
  const std::int64_t first = std::min(dated.years().first - lags.before, year);
  const std::int64_t last = std::max(dated.years().last - lags.behind, year);
  OwnedSeries corrected(first, last - first + 1);
  for (std::int64_t at = first; at <= last; ++at) {
    const std::int64_t read = at + (at < year ? lags.before : lags.behind);
    if (at != year && dated.has(read)) corrected.put(at, dated.at(read));
  }
  const std::int64_t merged = year + lags.before - dated.first;
  const bool known = kind == Correction::merge && merged >= 0 &&
                     merged < static_cast<std::int64_t>(core.merged.size()) &&
                     dated.has(year + lags.before) && dated.has(year + lags.before + 1);
  if (known) corrected.put(year, core.merged[static_cast<std::size_t>(merged)]);
  return corrected;
}

}  // namespace vorn
