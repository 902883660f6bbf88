// The chronology of a file as a sum of its cores, so that one can be taken out and put in again, with the
// correlations that the program has of each core and the chronology without it.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "workspace/series_view.h"
#include "workspace/years.h"

namespace vorn {

// The years from the first of any of them to the last; none without any.
YearSpan years_of_all(std::span<const SeriesView> cores);

class ChronologyParts {
 public:
  // Of no core yet; all that come lie within these years.
  explicit ChronologyParts(YearSpan years);
  explicit ChronologyParts(std::span<const SeriesView> cores);

  // A core as it is compared; what is no number, and an estimate at a missing ring, is no part of the mean.
  void add(const SeriesView& core) { put(core, +1); }
  void take(const SeriesView& core) { put(core, -1); }

  // Pearson's r of a core that is part of it and the chronology without this core; nothing where they have
  // fewer than 40 years in common: from the first to the last with two cores.
  //
  // As cbar has it (statistics/tree_correlations.h): a core's values are divided by the mean of all, the
  // chronology's are not, and the depth that divides counts the core, too.
  std::optional<double> correlation(const SeriesView& core) const;
  // What the chronology is without the core, in the years given, as the correlation report has it: divided by
  // the depth less one.
  std::vector<double> without(const SeriesView& core, YearSpan years) const;
  // The mean of what it has now, in the years given; not a number in years without any core.
  std::vector<double> means(YearSpan years) const;
  // From the first to the last year with two cores.
  YearSpan well_covered() const { return well_covered(years_); }

 private:
  void put(const SeriesView& core, int sign);
  YearSpan well_covered(YearSpan span) const;
  std::size_t place(std::int64_t year) const { return static_cast<std::size_t>(year - years_.first); }
  double scale() const { return values_ > 0 ? sum_ / values_ : 1; }

  YearSpan years_;
  std::vector<double> sums_, depths_;  // by year
  double sum_ = 0, values_ = 0;        // of all years
};

}  // namespace vorn
