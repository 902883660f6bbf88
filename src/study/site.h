// Which core of a site first: how each agrees with the rest, segment by segment, and what is best done about
// it.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "study/dates.h"
#include "study/ring_errors.h"
#include "study/studied_cores.h"
#include "workspace/settings.h"
#include "workspace/years.h"

namespace vorn {

// By so many years to either side a segment is moved.
inline constexpr int farthest_segment_lag = 10;
// A correction that leaves a core with a lower correlation than this is not believed.
inline constexpr double least_r_of_a_correction = 0.4;

// What segments lose is worth a look from so much on: what was lost is twenty times less likely than what is
// usual.
inline constexpr double need_to_look_at = 3.0;

// The correlation that n pairs of independent values exceed in one case of 100 by chance: 0.328 for 50. 1 for
// fewer than 3. To three digits from 10 pairs on.
//
// Source: Student's distribution, its quantile after M. Abramowitz and I. A. Stegun (1964), Handbook of
// mathematical functions, 26.7.5.
double least_correlation(int n);

// A core in one segment of years.
struct SiteCell {
  YearSpan years = {};  // the segment, moved inwards at the core's ends (see cell_years)
  int n = 0;            // of them in which both have a ring
  double r = 0;         // as it is dated
  int best_lag = 0;     // that correlates best: the core is read by so many years later
  double best_r = 0;
  bool low = false;      // flag A: r is below least_correlation(n)
  bool lagging = false;  // flag B: another lag, -10 to +10, is better
};

enum class Remedy {
  none,        // nothing needs to be done
  cannot_say,  // it has too little in common with others, or nothing that can be compared
  move,        // the core as a whole belongs elsewhere
  one_error,   // a ring is missing, or counted twice
  two_errors,
  look,     // some segments agree no better than chance would, and nothing explains it
  foreign,  // most segments agree no better, and nothing explains it: another site, or another time
};

// What is known of one core.
struct SiteCore {
  double r = 0;                                // with the rest
  int years = 0;                               // in common with the rest
  bool is_comparable = true;                   // false: all its rings are as wide, or missing
  std::vector<std::optional<SiteCell>> cells;  // by segment of the survey
  int low = 0, lagging = 0;                    // how many cells carry the flags
  RingErrors errors;
  std::optional<DatedPosition> elsewhere;  // a date that stands out, other than its own
  Remedy remedy = Remedy::none;
  // How much is to be gained, in units of score (see ring_errors): by the errors, where they are worth a
  // look; by the move; and what flagged segments lose against the core's median.
  double need = 0;
};

struct SiteSurvey {
  std::vector<YearSpan> segments;
  std::vector<SiteCore> cores;     // in their order
  std::vector<std::size_t> order;  // which core first: by need
};

// Given:    cores     compared alike
//           settings  seg and olap: segments are seg years long and begin on multiples of seg - olap years,
//           as
//                     those of the lag table; none where that is no step
// Returned: see above. Each core is compared with the mean of the others (reference.h).
// Cost:     in proportion to cores times positions of a core times years: dates everywhere are looked for.
SiteSurvey survey(const StudiedCores& cores, const Settings& settings);
// The same. `go_on` is asked after each core, with how many are done; nothing is given once it says no.
std::optional<SiteSurvey> survey(std::span<const StudiedCore> cores, const Settings& settings,
                                 const std::function<bool(std::size_t done)>& go_on);

// Whether errors that are worth a look gain at least as much as the core does when it is moved as a whole: a
// date elsewhere may only be what is left when a ring is missing or counted twice.
bool errors_explain_more(const RingErrors& errors, const DatedPosition& elsewhere);

// One row of a table of lags: a core in one segment of years, read by -lags to +lags years later.
struct LagRow {
  YearSpan years = {};                        // the segment, moved inwards at the core's ends
  std::vector<std::optional<double>> r = {};  // by lag, the earliest first; nothing where too few years meet
  // The place in `r` of the best lag; that of lag 0 where none is better.
  std::size_t best() const;
};
// The rows of the segments in which the core has enough years in common with the others, as the survey has
// them.
std::vector<LagRow> lag_rows(const SeriesView& core, const SeriesView& others, const Settings& settings,
                             int lags = farthest_segment_lag);

// What to do first about a core, in one line; empty where nothing is.
std::string todo(const SiteCore& core, const SeriesView& dated);

}  // namespace vorn
