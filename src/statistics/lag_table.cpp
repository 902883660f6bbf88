#include "statistics/lag_table.h"

#include <algorithm>
#include <vector>

#include "statistics/absolute_difference.h"
#include "statistics/correlation.h"
#include "statistics/pool_window.h"
#include "workspace/capacity.h"
#include "workspace/years.h"

namespace vorn {
namespace {

constexpr std::int32_t no_year = -9999;

// First years of the segments, from `first` on in steps of `step` and never after `last`.
// Deliberate: [last-start] one more follows where the regular start is less than a step too late, and `last`
// then holds for it, for the first segment too.
// Deliberate: [negative-step] it runs backwards as far as the table has room.
std::vector<std::int64_t> segment_starts(std::int64_t first, std::int64_t last, std::int64_t step) {
  std::vector<std::int64_t> starts;
  // Deliberate: [step-0] no segments.
  if (step == 0) return starts;
  const std::int64_t bound = std::min(first + (max_segments - 1) * step, last + step - 1);
  for (std::int64_t start = first; step > 0 ? start <= bound : start >= bound; start += step) {
    if (static_cast<int>(starts.size()) == max_segments) break;
    starts.push_back(std::min(start, last));
  }
  return starts;
}

// Leaves of `mask`, for the years of a segment, those within `years`.
void keep_within(YearSpan segment, YearSpan years, std::span<bool> mask) {
  for (std::size_t k = 0; k < mask.size(); ++k) {
    const std::int64_t year = segment.first + static_cast<std::int64_t>(k);
    mask[k] = mask[k] && year >= years.first && year <= years.last;
  }
}

// Column k of the table: the reference's years from `start` on, against the sample at every lag within its
// years.
template <class Measure>
void fill_segment(const SeriesStore& store, LagTable& table, int k, YearSpan segment, bool own_years_alone,
                  Measure measure) {
  const int sample = store.nd + 1, reference = store.nd + 2;
  const int length = static_cast<int>(segment.count());
  table.cyrs(1, k) = static_cast<std::int32_t>(segment.first);
  table.cyrs(2, k) = static_cast<std::int32_t>(segment.last);
  // No segment ends behind the sample, so that the highest lag is never below 0.
  const auto lowest =
      static_cast<int>(std::clamp<std::int64_t>(store.fy(sample) - segment.first, -max_lag, max_lag + 1));
  const auto highest = static_cast<int>(std::min<std::int64_t>(store.ly(sample) - segment.last, max_lag));

  const PoolWindow fixed(store, store.ad(reference) + segment.first - store.fy(reference), length);
  const PoolWindow shifted(store, store.ad(sample) + segment.first + lowest - store.fy(sample),
                           length + highest - lowest);
  Table<bool> both(length);
  for (int lag = lowest; lag <= highest; ++lag) {
    const auto mask = both.range(1, length);
    mark_present(fixed.present(0, length), shifted.present(lag - lowest, length), mask);
    if (own_years_alone) {
      keep_within(segment, {store.fy(reference), store.ly(reference)}, mask);
      keep_within(segment, {store.fy(sample) - lag, store.ly(sample) - lag}, mask);
    }
    table.ctab(lag + max_lag + 1, k) =
        measure(fixed.values(0, length), shifted.values(lag - lowest, length), std::span<const bool>(mask));
  }
}

template <class Measure>
void fill_table(const SeriesStore& store, const Settings& settings, LagTable& table, std::int32_t ystart,
                Measure measure) {
  const int sample = store.nd + 1, reference = store.nd + 2;
  table.cyrs.fill(no_year);
  table.ctab.fill(0.0);
  const YearSpan both =
      common({store.fy(sample), store.ly(sample)}, {store.fy(reference), store.ly(reference)});
  const bool own_years_alone = settings.careful.has(Mend::short_samples);
  const std::int64_t length =
      own_years_alone ? std::min<std::int64_t>(settings.seg, both.count()) : settings.seg;
  if (own_years_alone && length < 1) return;
  const std::int64_t first = std::max<std::int64_t>(both.first, ystart), last = both.last - length + 1;
  int k = 0;
  for (const std::int64_t start : segment_starts(first, last, std::int64_t{settings.seg} - settings.olap)) {
    fill_segment(store, table, ++k, {start, start + length - 1}, own_years_alone, measure);
  }
}

}  // namespace

void cor_tab(const SeriesStore& store, const Settings& settings, LagTable& table, std::int32_t ystart) {
  // Deliberate: [wins-its-row] whether a cell is valid is not kept; one with too few pairs holds 2.0.
  fill_table(store, settings, table, ystart, [](auto a, auto b, auto ok) { return covmiss(a, b, ok).r; });
}

void cor_abs(const SeriesStore& store, const Settings& settings, LagTable& table, std::int32_t ystart,
             const Tell& tell) {
  fill_table(store, settings, table, ystart,
             [&tell](auto a, auto b, auto ok) { return absmiss(a, b, ok, tell).d; });
}

}  // namespace vorn
