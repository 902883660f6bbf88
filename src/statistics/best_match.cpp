#include "statistics/best_match.h"

#include <algorithm>

#include "plot/long_work.h"
#include "statistics/correlation.h"
#include "statistics/pool_window.h"
#include "statistics/sliding_correlations.h"

namespace vorn {
namespace {

// Puts a candidate into its rank. Only a higher correlation displaces: of equal ones the first found stays
// ahead.
void insert(std::array<Match, 6>& matches, const Match& candidate) {
  if (!(candidate.r > matches.back().r)) return;
  auto rank = matches.end() - 1;
  for (; rank != matches.begin() && candidate.r > (rank - 1)->r; --rank) *rank = *(rank - 1);
  *rank = candidate;
}

// The whole of an entry, with its years. Its dates hold: a record that came without them has none to search,
// and years for which it has no values do not count.
struct DatedWindow {
  DatedWindow(const Workspace& w, int i)
      : first(w.fy(i)),
        last(std::min<std::int64_t>(w.ly(i), first + w.yr(i) - 1)),
        window(w, w.ad(i), w.yr(i)) {}
  std::int64_t first, last;
  PoolWindow window;
};

// Ranks every place of the reference for the `count` years of the sample from `first` on.
//
// Estimates for all places at once tell which of them cannot come among the best; the others are correlated
// by covmiss, whose values alone are ranked.
MatchedStretch match(const DatedWindow& sample, const DatedWindow& reference, std::int64_t first, int count) {
  MatchedStretch stretch;
  stretch.first = static_cast<std::int32_t>(first);
  stretch.last = static_cast<std::int32_t>(first + count - 1);
  const int years = static_cast<int>(reference.last - reference.first + 1);
  if (years < count) return stretch;
  const int at = static_cast<int>(first - sample.first);
  const auto values = sample.window.values(at, count);
  const auto present = sample.window.present(at, count);
  const auto estimates = sliding_correlations(values, present, reference.window.values(0, years),
                                              reference.window.present(0, years));
  Table<bool> both(count);
  const auto mask = both.range(1, count);
  for (int place = 0; place <= years - count; ++place) {
    if (estimates[static_cast<std::size_t>(place)] + sliding_error <= stretch.matches.back().r) continue;
    mark_present(present, reference.window.present(place, count), mask);
    const auto [r, valid] = covmiss(values, reference.window.values(place, count), mask);
    if (valid) insert(stretch.matches, {r, static_cast<std::int32_t>(first - (reference.first + place))});
  }
  return stretch;
}

}  // namespace

std::vector<MatchedStretch> best_matches(const Workspace& w) {
  const DatedWindow sample(w, w.nd + 1), reference(w, w.nd + 2);
  const int length = std::max({w.seg, w.yr(w.nd + 1) / 8, 1});
  const std::int64_t last_start = sample.last - length + 1;
  std::vector<MatchedStretch> stretches;
  if (last_start < sample.first) return stretches;
  const std::int64_t count = (last_start - sample.first) / length + 1;
  LongWork work(w.plot, "Best match");
  for (std::int64_t k = 0; k < count; ++k) {
    work.at(static_cast<double>(k) / static_cast<double>(count));
    // Deliberate: [shared-year] each stretch begins with the last year of the one before; their number
    // disregards that.
    stretches.push_back(match(sample, reference, sample.first + k * (length - 1), length));
  }
  return stretches;
}

}  // namespace vorn
