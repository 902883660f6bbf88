#include "statistics/lag_table.h"

#include <algorithm>
#include <vector>

#include "statistics/absolute_difference.h"
#include "statistics/correlation.h"
#include "statistics/pool_window.h"

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

// Column k of the table: the reference's years from `start` on, against the sample at every lag within its
// years.
template <class Measure>
void fill_segment(Workspace& w, int k, std::int64_t start, Measure measure) {
  const int sample = w.nd + 1, reference = w.nd + 2;
  const std::int64_t end = start + w.seg - 1;
  w.cyrs(1, k) = static_cast<std::int32_t>(start);
  w.cyrs(2, k) = static_cast<std::int32_t>(end);
  const int lowest = static_cast<int>(std::clamp<std::int64_t>(w.fy(sample) - start, -max_lag, max_lag + 1));
  const int highest = static_cast<int>(std::clamp<std::int64_t>(w.ly(sample) - end, -max_lag - 1, max_lag));
  if (lowest > highest) return;

  const PoolWindow fixed(w, w.ad(reference) + start - w.fy(reference), w.seg);
  const PoolWindow shifted(w, w.ad(sample) + start + lowest - w.fy(sample), w.seg + highest - lowest);
  Table<bool> both(w.seg);
  for (int lag = lowest; lag <= highest; ++lag) {
    const auto mask = both.range(1, w.seg);
    mark_present(fixed.present(0, w.seg), shifted.present(lag - lowest, w.seg), mask);
    w.ctab(lag + max_lag + 1, k) =
        measure(fixed.values(0, w.seg), shifted.values(lag - lowest, w.seg), std::span<const bool>(mask));
  }
}

template <class Measure>
void fill_table(Workspace& w, std::int32_t ystart, Measure measure) {
  const int sample = w.nd + 1, reference = w.nd + 2;
  w.cyrs.fill(no_year);
  w.ctab.fill(0.0);
  const std::int64_t first = std::max({w.fy(sample), w.fy(reference), ystart});
  const std::int64_t last = std::int64_t{std::min(w.ly(sample), w.ly(reference))} - w.seg + 1;
  int k = 0;
  for (const std::int64_t start : segment_starts(first, last, std::int64_t{w.seg} - w.olap)) {
    fill_segment(w, ++k, start, measure);
  }
}

}  // namespace

void cor_tab(Workspace& w, std::int32_t ystart) {
  // Deliberate: [wins-its-row] whether a cell is valid is not kept; one with too few pairs holds 2.0.
  fill_table(w, ystart, [](auto a, auto b, auto ok) { return covmiss(a, b, ok).r; });
}

void cor_abs(Workspace& w, std::int32_t ystart, const Tell& tell) {
  fill_table(w, ystart, [&tell](auto a, auto b, auto ok) { return absmiss(a, b, ok, tell).d; });
}

}  // namespace vorn
