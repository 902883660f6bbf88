#include "statistics/tree_correlations.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "plot/long_work.h"
#include "statistics/correlation.h"
#include "statistics/pair_correlations.h"

namespace vorn {
namespace {

// A tree by calendar year.
//
// The years are those of fy and ly, the values those that follow its start in the pool: where the two
// disagree, as for a record without dates, the values of the next entries are met. They lie in the pool,
// since no chronology is longer than the room behind it.
struct DatedSeries {
  std::int64_t first, last;
  std::int64_t start;  // place of the first year

  std::span<const double> years(const Workspace& w, std::int64_t from, std::int64_t to) const {
    return w.ax.range(static_cast<int>(start + from - first), static_cast<int>(to - from + 1));
  }
};

DatedSeries tree(const Workspace& w, int i) {
  return {w.fy(i), w.ly(i), w.ad(i)};
}

// The column of the current chronology, as far as it is one.
struct Column {
  int file;
  int years;
  std::int64_t first, last;

  int position(std::int64_t year) const { return static_cast<int>(year - first + 1); }
};

Column current_column(const Workspace& w) {
  const int years = std::clamp(w.cyr(w.cf), 0, max_years);
  const std::int64_t first = w.cfy(w.cf);
  return {w.cf, years, first, first + years - 1};
}

// The common years of a tree and the chronology, ends of a depth of 1 or less trimmed; years of that kind
// between them stay. Fewer than none when nothing is left.
struct Span {
  std::int64_t first, last;
  std::int64_t years() const { return last - first + 1; }
};

Span well_covered(const Workspace& w, const DatedSeries& series, const Column& column) {
  Span span{std::max(series.first, column.first), std::min(series.last, column.last)};
  const auto thin = [&](std::int64_t year) { return w.num(column.position(year), column.file) <= 1; };
  // Deliberate: [thin-years] those between the ends stay.
  while (span.first <= span.last && thin(span.first)) ++span.first;
  while (span.first <= span.last && thin(span.last)) --span.last;
  return span;
}

// cov of a tree with the chronology less this tree, formed in wk1.
double tree_to_rest(Workspace& w, const DatedSeries& series, const Column& column, const Span& span) {
  const auto values = series.years(w, span.first, span.last);
  const int start = column.position(span.first);
  const auto rest = w.wk1.range(start, static_cast<int>(values.size()));
  for (std::size_t k = 0; k < values.size(); ++k) {
    const int p = start + static_cast<int>(k);
    // Deliberate: [full-depth] divided by the full depth, not by the depth less one. All of cbar's results
    // depend on it.
    rest[k] = (w.wk2(p) * w.crn(p, column.file) - values[k]) / w.wk3(p);
  }
  return cov(values, rest);
}

}  // namespace

double rbar(Workspace& w, std::span<double> rtree) {
  std::fill(rtree.begin(), rtree.end(), 0.0);
  std::vector<DatedValues> trees;
  for (int i = 1; i <= w.nc; ++i) {
    const DatedSeries series = tree(w, i);
    trees.push_back({series.first, series.years(w, series.first, std::max(series.last, series.first - 1))});
  }
  LongWork work(w.plot, "RBar");
  const PairSums sums =
      pair_correlations(trees, fewest_common_years, [&work](double share) { work.at(share); });
  for (std::size_t i = 0; i < trees.size(); ++i) {
    w.iwk1(static_cast<int>(i) + 1) = sums.pairs_of[i];
    rtree[i] = sums.pairs_of[i] > 1 ? sums.sum_of[i] / sums.pairs_of[i] : sums.sum_of[i];
  }
  return sums.sum / sums.pairs;
}

double cbar(Workspace& w, std::span<double> rcrn) {
  std::fill(rcrn.begin(), rcrn.end(), 0.0);
  const Column column = current_column(w);
  for (int p = 1; p <= column.years; ++p) {
    w.wk2(p) = w.num(p, column.file);
    w.wk3(p) = std::max(w.wk2(p), 1.0);
  }
  double total = 0.0, trees = 0.0;
  for (int i = 1; i <= w.nc; ++i) {
    const DatedSeries series = tree(w, i);
    const Span span = well_covered(w, series, column);
    if (span.years() < fewest_common_years) continue;
    const double r = tree_to_rest(w, series, column, span);
    rcrn[static_cast<std::size_t>(i - 1)] = r;
    total += r;
    ++trees;
  }
  return total / trees;
}

}  // namespace vorn
