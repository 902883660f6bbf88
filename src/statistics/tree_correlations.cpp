#include "statistics/tree_correlations.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "plot/long_work.h"
#include "statistics/correlation.h"
#include "statistics/pair_correlations.h"
#include "workspace/constant_core.h"
#include "workspace/series_view.h"

namespace vorn {
namespace {

// Tree i by calendar year.
//
// The years are those of fy and ly, the values those that follow its start in the pool: where the two
// disagree, as for a record without dates, the values of the next entries are met. They lie in the pool,
// since no chronology is longer than the room behind it.
SeriesView tree(const SeriesStore& store, int i) {
  const YearSpan years{store.fy(i), store.ly(i)};
  return {years.first, store.ax.range(store.ad(i), static_cast<int>(years.count()))};
}

// The column of the current chronology, as far as it is one.
struct Column {
  int file;
  YearSpan years;

  int position(std::int64_t year) const { return static_cast<int>(year - years.first + 1); }
};

Column current_column(const FileTable& files) {
  const std::int64_t first = files.cfy(files.cf);
  return {files.cf, {first, first + std::clamp(files.cyr(files.cf), 0, max_years) - 1}};
}

// The common years of a tree and the chronology, ends of a depth of 1 or less trimmed; years of that kind
// between them stay.
YearSpan well_covered(const FileTable& files, const SeriesView& series, const Column& column) {
  YearSpan span = common(series.years(), column.years);
  const auto thin = [&](std::int64_t year) { return files.num(column.position(year), column.file) <= 1; };
  // Deliberate: [thin-years] those between the ends stay.
  while (span.first <= span.last && thin(span.first)) ++span.first;
  while (span.first <= span.last && thin(span.last)) --span.last;
  return span;
}

// cov of a tree with the chronology less this tree, formed in wk1.
double tree_to_rest(const FileTable& files, WorkVectors& work, const SeriesView& series,
                    const Column& column) {
  const int start = column.position(series.first), years = static_cast<int>(series.values.size());
  const auto rest = work.wk1.range(start, years);
  const auto depth = work.wk2.range(start, years), divisor = work.wk3.range(start, years);
  const auto chronology = files.crn.column(column.file, static_cast<int>(column.years.count()))
                              .subspan(static_cast<std::size_t>(start - 1));
  for (std::size_t k = 0; k < rest.size(); ++k) {
    // Deliberate: [full-depth] divided by the full depth, not by the depth less one. All of cbar's results
    // depend on it.
    rest[k] = (depth[k] * chronology[k] - series.values[k]) / divisor[k];
  }
  return cov(series.values, rest);
}

Fingerprint fingerprint_of(const std::vector<SeriesView>& trees) {
  Fingerprint all;
  for (const SeriesView& tree : trees) {
    all.add(static_cast<std::uint64_t>(tree.first));
    all.add(tree.values);
  }
  return all;
}

void correlate(const std::vector<SeriesView>& trees, Plot& plot, RbarKept& kept) {
  LongWork work(plot, "RBar");
  const PairSums sums =
      pair_correlations(trees, fewest_common_years, {[&work](double share) { work.at(share); }});
  for (std::size_t i = 0; i < trees.size(); ++i) {
    const int t = static_cast<int>(i) + 1;
    kept.pairs_of_tree(t) = sums.pairs_of[i];
    kept.mean_of_tree(t) = sums.pairs_of[i] > 1 ? sums.sum_of[i] / sums.pairs_of[i] : sums.sum_of[i];
  }
  kept.mean = sums.sum / sums.pairs;
}

}  // namespace

double rbar(Workspace& w, std::span<double> rtree) {
  std::vector<SeriesView> trees;
  for (int i = 1; i <= w.nc; ++i)
    trees.push_back(is_left_out(w, w.careful, i) ? SeriesView{w.fy(i), {}, {}} : tree(w, i));
  RbarKept& kept = w.rbar_kept;
  const Fingerprint now = fingerprint_of(trees);
  if (!kept.valid || kept.trees != now) {
    kept.valid = false;  // until all is done: the screen may be closed before
    correlate(trees, w.plot, kept);
    kept.trees = now;
    kept.valid = true;
  }
  std::fill(rtree.begin(), rtree.end(), 0.0);
  std::copy_n(kept.mean_of_tree.range(1, w.nc).begin(), trees.size(), rtree.begin());
  std::copy_n(kept.pairs_of_tree.range(1, w.nc).begin(), trees.size(), w.iwk1.range(1, w.nc).begin());
  return kept.mean;
}

double cbar(const SeriesStore& store, const FileTable& files, WorkVectors& work, std::span<double> rcrn,
            const Careful& careful) {
  std::fill(rcrn.begin(), rcrn.end(), 0.0);
  const Column column = current_column(files);
  for (int p = 1; p <= column.years.count(); ++p) {
    work.wk2(p) = files.num(p, column.file);
    work.wk3(p) = std::max(work.wk2(p), 1.0);
  }
  double total = 0.0, trees = 0.0;
  for (int i = 1; i <= store.nc; ++i) {
    const SeriesView series = tree(store, i);
    const YearSpan span = well_covered(files, series, column);
    if (span.count() < fewest_common_years || is_left_out(store, careful, i)) continue;
    const double r = tree_to_rest(files, work, series.over(span), column);
    rcrn[static_cast<std::size_t>(i - 1)] = r;
    total += r;
    ++trees;
  }
  return total / trees;
}

}  // namespace vorn
