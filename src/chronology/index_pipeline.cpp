#include "chronology/index_pipeline.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "base/parallel_for.h"
#include "chronology/compared_series.h"
#include "chronology/spline.h"
#include "chronology/standard_chronology.h"
#include "plot/long_work.h"

namespace vorn {
namespace {

// What one thread takes at a time, and what is told of.
constexpr int cores_a_piece = 64;

// Of these the curves are fitted together: their values fit into the nearest memory.
constexpr int cores_together = 8;

// Fewer rings are done before a thread has begun.
constexpr int rings_for_threads = 20'000;

// The bridge to the kernels. It copies, because a working entry may begin before the pool does, or end behind
// it: of a series of so many years from place `start` on, which of them lie in the pool.
struct InPool {
  std::size_t before, count;
  int first;  // place of the first of them

  InPool(const Table<double>& pool, int start, int years) {
    const std::int64_t from = std::max(start, 1);
    const std::int64_t to = std::min<std::int64_t>(std::int64_t{start} + years - 1, pool.size());
    count = static_cast<std::size_t>(std::max<std::int64_t>(to - from + 1, 0));
    before = count > 0 ? static_cast<std::size_t>(from - start) : 0;
    first = static_cast<int>(from);
  }
};

std::vector<double> values_of(const SeriesStore& w, const Pool<double>& pool, int i) {
  const InPool in(pool, w.ad(i), w.yr(i));
  std::vector<double> values(static_cast<std::size_t>(w.yr(i)));
  std::ranges::copy(pool.range(in.first, static_cast<int>(in.count)),
                    values.begin() + static_cast<std::ptrdiff_t>(in.before));
  return values;
}

// Puts the values into their places and keeps those that have one: the others are nothing at the next stage.
void put_values(const SeriesStore& w, Pool<double>& pool, int i, std::span<double> values) {
  const InPool in(pool, w.ad(i), w.yr(i));
  std::ranges::copy(values.subspan(in.before, in.count),
                    pool.range(in.first, static_cast<int>(in.count)).begin());
  std::ranges::fill(values.first(in.before), 0.0);
  std::ranges::fill(values.subspan(in.before + in.count), 0.0);
}

// The curves of all these entries at once, then each through the pool, stage by stage. What is derived comes
// of the widths alone, whichever places the entries share.
void derive(SeriesStore& w, const Settings& settings, WorkVectors& work, int first, int last,
            SplineFactor& factor) {
  const Treatment treatment = treatment_of(settings);
  std::vector<std::vector<double>> entries(static_cast<std::size_t>(last - first + 1));
  for (int i = first; i <= last; ++i) {
    if (w.yr(i) > 0) entries[static_cast<std::size_t>(i - first)] = values_of(w, w.x, i);
  }
  if (treatment.spline) detrend(std::vector<std::span<double>>(entries.begin(), entries.end()), factor);
  for (int i = first; i <= last; ++i) {
    if (w.yr(i) < 1) continue;
    std::vector<double>& values = entries[static_cast<std::size_t>(i - first)];
    put_values(w, w.tx, i, values);
    if (treatment.model)
      prewhiten(values, work.ar_coefficients.column(i, work.ar_coefficients.rows()), treatment.max_order);
    put_values(w, w.ax, i, values);
    if (!treatment.logarithm) continue;
    take_logarithms(values);
    put_values(w, w.ax, i, values);
  }
}

// Whether no place of the pool belongs to two cores, as tables would have it whose lengths and places
// contradict each other.
bool lie_apart(const SeriesStore& w) {
  std::int64_t end = std::numeric_limits<std::int64_t>::min();
  for (int i = 1; i <= w.nc; ++i) {
    if (w.yr(i) < 1) continue;
    if (w.ad(i) < end) return false;
    end = std::int64_t{w.ad(i)} + w.yr(i);
  }
  return true;
}

bool are_worth_threads(const SeriesStore& w) {
  std::int64_t rings = 0;
  for (int i = 1; i <= w.nc; ++i) rings += w.yr(i);
  return rings >= rings_for_threads;
}

}  // namespace

Treatment treatment_of(const Settings& settings) {
  return {settings.splineon, settings.aron, settings.jpr, settings.logon};
}

void data_man(SeriesStore& w, const Settings& settings, WorkVectors& work, int i) {
  SplineFactor factor(settings.ss);
  derive(w, settings, work, i, i, factor);
}

// A core is read and written between its own bounds alone, and its coefficients in a column of its own. What
// is made for many cores, the factor of the spline, each piece makes for itself: it has the same bits.
void data_man_cores(Workspace& w, std::size_t threads) {
  LongWork work(w.plot, "Indices");
  const auto derive_piece = [&w](std::size_t piece) {
    SplineFactor factor(w.ss);
    const int first = static_cast<int>(piece) * cores_a_piece + 1;
    const int last = std::min(first + cores_a_piece - 1, w.nc);
    for (Pool<double>* pool : {&w.tx, &w.ax}) pool->expect_use(w.ad(first), w.ad(last) + w.yr(last) - 1);
    for (int i = first; i <= last; i += cores_together)
      derive(w, w, w, i, std::min(i + cores_together - 1, last), factor);
  };
  const auto tell = [&](std::size_t pieces) {
    const int cores = static_cast<int>(pieces) * cores_a_piece;
    if (cores <= w.nc) work.at(static_cast<double>(cores) / w.nc);
  };
  const int pieces = (std::max(w.nc, 0) + cores_a_piece - 1) / cores_a_piece;
  if (!lie_apart(w))
    threads = 1;
  else if (threads == 0)
    threads = are_worth_threads(w) ? threads_here() : 1;
  parallel_for(static_cast<std::size_t>(pieces), threads, derive_piece, tell);
}

void data_man2(Workspace& w) {
  data_man_cores(w);
  std_crn(w);
}

}  // namespace vorn
