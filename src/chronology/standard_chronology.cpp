#include "chronology/standard_chronology.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>

#include "plot/screen.h"
#include "records/edit_format.h"
#include "toolkit/messages.h"
#include "workspace/constant_core.h"

namespace vorn {
namespace {

// How the message gives the limit and the length; what stands after column 18 is cut off.
constexpr std::string_view limit_and_length = "(I6,\", age=\",I6,\" \")";
constexpr std::size_t limit_and_length_columns = 18;

// A column that nothing was written to is left alone: clearing it takes longer than filling it with a site.
void clear_column(Workspace& w) {
  if (!std::exchange(w.crn_written(w.cf), true)) return;
  std::ranges::fill(w.crn.column(w.cf, max_years), 0.0);
  std::ranges::fill(w.num.column(w.cf, max_years), 0);
}

// Years never given hold a mark far from all others, so that the difference need not fit 32 bits.
std::int32_t years_from_to(std::int32_t first, std::int32_t last) {
  using Limits = std::numeric_limits<std::int32_t>;
  const std::int64_t years = std::int64_t{last} - first + 1;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(years, Limits::min(), Limits::max()));
}

void set_span(Workspace& w) {
  std::int32_t first = w.fy(1), last = w.ly(1);
  // Deliberate: [empty-core-counts] a core without present rings counts, too.
  for (int i = 2; i <= w.nc; ++i) {
    first = std::min(first, w.fy(i));
    last = std::max(last, w.ly(i));
  }
  w.cfy(w.cf) = first;
  w.cly(w.cf) = last;
  w.cyr(w.cf) = years_from_to(first, last);
}

[[noreturn]] void refuse_length(Workspace& w) {
  std::string figures = edit(EditFormat(limit_and_length), max_years, w.cyr(w.cf));
  figures.resize(limit_and_length_columns, ' ');
  out_err(w, "Chronology too long, max=" + figures);
  throw ProgramEnd(EndReason::cannot_go_on);
}

// A ring of a core whose years and length contradict each other may lie behind the column; it is passed over.
void add_present_rings(Workspace& w, int i) {
  const int start = std::max(w.ad(i), 1);
  const std::int64_t first = std::int64_t{w.fy(i)} - w.cfy(w.cf) + (start - w.ad(i));
  const std::int64_t behind = std::int64_t{w.ad(i)} + w.yr(i);
  const std::int64_t years =
      std::min({behind - start, max_years - first, w.ax.size() + std::int64_t{1} - start});
  if (years < 1) return;
  const auto values = w.ax.range(start, static_cast<int>(years));
  const auto present = w.xok.range(start, static_cast<int>(years));
  const auto sums = w.crn.column(w.cf, max_years).subspan(static_cast<std::size_t>(first));
  const auto depths = w.num.column(w.cf, max_years).subspan(static_cast<std::size_t>(first));
  for (std::size_t k = 0; k < values.size(); ++k) {
    if (!present[k]) continue;
    sums[k] += values[k];
    depths[k] += 1;
  }
}

// The mean of all present analysis values; not a number when there are none.
double grand_mean(const Workspace& w) {
  double sum = 0;
  std::int64_t count = 0;
  for (int k = 1; k <= w.cyr(w.cf); ++k) {
    if (w.num(k, w.cf) <= 0) continue;
    sum += w.crn(k, w.cf);
    count += w.num(k, w.cf);
  }
  return sum / static_cast<double>(count);
}

// Deliberate: [cores-scaled] the cores alone are brought to a mean of one, not the column that they make.
// Correlations do not see the difference; the graph shows both scales.
void scale_cores(Workspace& w, double mean) {
  const int end = w.ad(w.nc) + w.yr(w.nc) - 1;
  for (int p = 1; p <= end; ++p) w.ax.put(p, w.ax.at(p) / mean);
}

void take_means(Workspace& w) {
  for (int k = 1; k <= w.cyr(w.cf); ++k) {
    const std::int32_t depth = w.num(k, w.cf);
    w.crn(k, w.cf) = depth < 1 ? 1.0 : w.crn(k, w.cf) / depth;
  }
}

}  // namespace

void std_crn(Workspace& w) {
  if (w.nc < 1) return;
  clear_column(w);
  set_span(w);
  if (w.cyr(w.cf) > max_years) refuse_length(w);
  for (int i = 1; i <= w.nc; ++i) {
    if (!is_left_out(w, w.careful, i)) add_present_rings(w, i);
  }
  scale_cores(w, grand_mean(w));
  take_means(w);
}

}  // namespace vorn
