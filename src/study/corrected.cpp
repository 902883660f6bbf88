#include "study/corrected.h"

#include <algorithm>

namespace vorn {

CorrectedSeries::CorrectedSeries(const StudiedCore& core, Correction kind, KeptEnd end, std::int64_t year) {
  const SeriesView& dated = core.compared;
  const Lags lags = lags_of(kind, end);
  // The ends of what is read, in the corrected dating. An error at an end leaves nothing behind it.
  first_ = std::min(dated.years().first - lags.before, year);
  const std::int64_t last = std::max(dated.years().last - lags.behind, year);
  const auto count = static_cast<std::size_t>(std::max<std::int64_t>(last - first_ + 1, 0));
  values_.assign(count, 0.0);
  present_ = std::make_unique<bool[]>(count);
  const auto put = [&](std::int64_t at, double value) {
    values_[static_cast<std::size_t>(at - first_)] = value;
    present_[static_cast<std::size_t>(at - first_)] = true;
  };
  for (std::int64_t at = first_; at <= last; ++at) {
    const std::int64_t read = at + (at < year ? lags.before : lags.behind);
    if (at != year && dated.has(read)) put(at, dated.at(read));
  }
  const std::int64_t merged = year + lags.before - dated.first;
  const bool known = kind == Correction::merge && merged >= 0 &&
                     merged < static_cast<std::int64_t>(core.merged.size()) &&
                     dated.has(year + lags.before) && dated.has(year + lags.before + 1);
  if (known) put(year, core.merged[static_cast<std::size_t>(merged)]);
}

}  // namespace vorn
