#include "statistics/best_match.h"

#include <algorithm>

#include "plot/long_work.h"
#include "statistics/correlation.h"
#include "statistics/pool_window.h"
#include "statistics/sliding_correlations.h"
#include "workspace/owned_series.h"
#include "workspace/series_view.h"

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
class DatedEntry {
 public:
  DatedEntry(const SeriesStore& store, int i)
      : first_(store.fy(i)), window_(store, store.ad(i), store.yr(i)) {
    const YearSpan valued{first_, first_ + store.yr(i) - 1};
    count_ = static_cast<int>(std::max<std::int64_t>(common({first_, store.ly(i)}, valued).count(), 0));
  }
  SeriesView view() const { return {first_, window_.values(0, count_), window_.present(0, count_)}; }

 private:
  std::int64_t first_;
  int count_;
  PoolWindow window_;
};

// Ranks every place of the reference for a stretch of the sample.
//
// Estimates for all places at once tell which of them cannot come among the best; the others are correlated
// by covmiss, whose values alone are ranked.
MatchedStretch match(const SeriesView& sample, const SeriesView& reference) {
  MatchedStretch stretch;
  stretch.first = static_cast<std::int32_t>(sample.first);
  stretch.last = static_cast<std::int32_t>(sample.years().last);
  if (reference.values.size() < sample.values.size()) return stretch;
  const auto estimates =
      sliding_correlations(sample.values, sample.present, reference.values, reference.present);
  Table<bool> both(static_cast<int>(sample.values.size()));
  const auto mask = both.range(1, both.size());
  YearSpan place{reference.first, reference.first + sample.years().count() - 1};
  for (const double estimate : estimates) {
    if (!(estimate + sliding_error <= stretch.matches.back().r)) {
      const SeriesView there = reference.over(place);
      mark_present(sample.present, there.present, mask);
      const auto [r, valid] = covmiss(sample.values, there.values, mask);
      if (valid) insert(stretch.matches, {r, static_cast<std::int32_t>(sample.first - place.first)});
    }
    ++place.first, ++place.last;
  }
  return stretch;
}

// Stretches of `length` years from `first` on.
// Deliberate: [shared-year] each begins with the last year of the one before; their number disregards that.
std::vector<YearSpan> stretches_of(YearSpan sample, std::int64_t length) {
  std::vector<YearSpan> all;
  for (std::int64_t k = 0; k < sample.count() / length; ++k) {
    const std::int64_t first = sample.first + k * (length - 1);
    all.push_back({first, first + length - 1});
  }
  return all;
}

// As few stretches as hold all years of the sample, one of all where it is shorter, at even distances.
std::vector<YearSpan> stretches_of_all(YearSpan sample, std::int64_t length) {
  const std::int64_t years = sample.count();
  if (years < fewest_pairs) return {};
  length = std::min(length, years);
  const std::int64_t count = (years + length - 1) / length;
  std::vector<YearSpan> all;
  for (std::int64_t k = 0; k < count; ++k) {
    const std::int64_t first = sample.first + (count > 1 ? k * (years - length) / (count - 1) : 0);
    all.push_back({first, first + length - 1});
  }
  return all;
}

// The reference with years without a ring around it, into which a quarter of a stretch may reach: what ends
// later than the reference does has its place there all the same. Of fewer years in common chance makes too
// much.
OwnedSeries with_room_around(const SeriesView& reference, std::int64_t length) {
  constexpr std::int64_t part_outside = 4;
  const std::int64_t room = length / part_outside;
  OwnedSeries wider(reference.first - room, reference.years().count() + 2 * room);
  for (std::int64_t year = reference.first; year <= reference.years().last; ++year)
    wider.put(year, reference.at(year), reference.has(year));
  return wider;
}

}  // namespace

std::vector<MatchedStretch> best_matches(const Workspace& w) {
  const DatedEntry sample_entry(w, w.nd + 1), reference_entry(w, w.nd + 2);
  const SeriesView sample = sample_entry.view();
  const int length = std::max({w.seg, w.yr(w.nd + 1) / 8, 1});
  const bool all_years = w.careful.has(Mend::short_samples);
  const auto places =
      all_years ? stretches_of_all(sample.years(), length) : stretches_of(sample.years(), length);
  std::vector<MatchedStretch> stretches;
  if (places.empty()) return stretches;
  const OwnedSeries wider =
      all_years ? with_room_around(reference_entry.view(), places.front().count()) : OwnedSeries();
  const SeriesView reference = all_years ? wider.view() : reference_entry.view();
  LongWork work(w.plot, "Best match");
  for (const YearSpan& place : places) {
    work.at(static_cast<double>(stretches.size()) / static_cast<double>(places.size()));
    stretches.push_back(match(sample.over(place), reference));
  }
  return stretches;
}

}  // namespace vorn
