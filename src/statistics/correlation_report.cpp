#include "statistics/correlation_report.h"

#include <algorithm>
#include <cstdint>

#include "plot/long_work.h"
#include "statistics/correlation.h"
#include "statistics/correlation_lines.h"
#include "statistics/report_file.h"
#include "workspace/constant_core.h"

namespace vorn {
namespace {

constexpr int entries_between_reports = 64;
constexpr std::string_view report_name = "Corr.prn";
constexpr std::string_view title = "(\" Correlation tables from\",I5,\" to\",I5,\" for \",A60)";

int chronology_years(const Workspace& w) {
  return std::clamp(w.cyr(w.cf), 0, max_years);
}

// Finds the years of a depth above 1 at both ends, and raises every depth to 2.
YearSpan use_well_covered_years(Workspace& w) {
  const int years = chronology_years(w);
  int first = 1, last = years;
  while (first <= years && w.num(first, w.cf) <= 1) ++first;
  while (last >= first && w.num(last, w.cf) <= 1) --last;
  // Deliberate: [raised-depths] in the store itself; the raised depths stay until the column is built again.
  w.crn_written(w.cf) = true;
  for (int p = 1; p <= years; ++p) w.num(p, w.cf) = std::max(w.num(p, w.cf), 2);
  const std::int64_t before = std::int64_t{w.cfy(w.cf)} - 1;
  return {before + first, before + last};
}

void prepare_sums(Workspace& w) {
  CorrelationReportTables& tables = w.corr_tables;
  for (int p = 1; p <= chronology_years(w); ++p) {
    const double depth = w.num(p, w.cf);
    tables.chronology_sum(p) = depth * w.crn(p, w.cf);
    tables.depth_less_one(p) = std::max(depth - 1.0, 1.0);
  }
  tables.mean_sum.fill(0.0);
  tables.mean_count.fill(0.0);
}

// For a tree: the chronology without it, in the tree's years.
void compare_with_rest(Workspace& w, int i) {
  CorrelationReportTables& tables = w.corr_tables;
  const std::int64_t before = std::int64_t{w.fy(i)} - w.cfy(w.cf);
  for (int k = 1; k <= w.yr(i); ++k) {
    const std::int64_t place = before + k;
    if (place < 1 || place > max_years) continue;
    const int p = static_cast<int>(place);
    tables.comparison(p) = (tables.chronology_sum(p) - w.ax.at(w.ad(i) + k - 1)) / tables.depth_less_one(p);
  }
}

// For a core that is no part of the chronology: the chronology as it stands, in its own years.
void compare_with_all(Workspace& w, int i) {
  const std::int64_t first = std::int64_t{w.fy(i)} - w.cfy(w.cf) + 1;
  for (std::int64_t p = std::max<std::int64_t>(first, 1);
       p < std::min<std::int64_t>(first + w.yr(i), max_years + 1); ++p)
    w.corr_tables.comparison(static_cast<int>(p)) = w.crn(static_cast<int>(p), w.cf);
}

// For the chronology of another file: the current one as it stands.
// Deliberate: [left-behind] as many values as the other one has, not as the current one has; behind them
// stays what the entry before left, in this report or the one before. Carefully it is refreshed as a whole.
void compare_with_chronology(Workspace& w, int i) {
  const int years = w.careful.has(Mend::constant_series) ? chronology_years(w) : w.yr(i);
  for (int p = 1; p <= std::min(years, max_years); ++p) w.corr_tables.comparison(p) = w.crn(p, w.cf);
}

// What `counts` is part of the means over all trees.
void correlate_cell(Workspace& w, int i, int j, YearSpan years, bool counts) {
  CorrelationReportTables& tables = w.corr_tables;
  const int count = static_cast<int>(years.count());
  const int from = static_cast<int>(w.ad(i) + years.first - w.fy(i));
  const int p = static_cast<int>(years.first - w.cfy(w.cf) + 1);
  const auto [r, valid] =
      covmiss(w.ax.range(from, count), tables.comparison.range(p, count), w.xok.range(from, count));
  tables.valid(i, j) = valid;
  if (!valid) return;
  tables.correlation(i, j) = r;
  tables.mean_sum(i) += r;
  tables.mean_count(i) += 1.0;
  if (!counts) return;
  tables.segment_sum(j) += r;
  tables.segment_count(j) += 1.0;
}

void correlate_series(Workspace& w, const SegmentBlock& block, YearSpan used, int i) {
  const YearSpan available = common({w.fy(i), w.ly(i)}, used);
  if (common({block.start, block.end}, available).count() - 1 <= block.step) return;
  if (i == w.nc + w.cf) return;
  const bool is_tree = i <= w.nc, counts = is_tree && !is_left_out(w, w.careful, i);
  if (counts) {
    compare_with_rest(w, i);
  } else if (is_tree) {
    compare_with_all(w, i);
  } else {
    compare_with_chronology(w, i);
  }
  for (int j = 1; j <= block.segments; ++j) {
    if (const auto years = cell_years(block, j, available)) correlate_cell(w, i, j, *years, counts);
  }
}

void correlate_block(Workspace& w, const SegmentBlock& block, YearSpan used) {
  CorrelationReportTables& tables = w.corr_tables;
  tables.segment_sum.fill(0.0);
  tables.segment_count.fill(0.0);
  tables.valid.fill(false);
  LongWork work(w.plot, report_name);
  for (int i = 1; i <= w.nd; ++i) {
    correlate_series(w, block, used, i);
    if (i % entries_between_reports == 0) work.at(static_cast<double>(i) / w.nd);
  }
}

}  // namespace

void cor_blocks(Workspace& w, const UseBlock& use) {
  LongWork work(w.plot, report_name);
  const YearSpan used = use_well_covered_years(w);
  prepare_sums(w);
  const SegmentGrid grid(used, w.seg, w.olap);
  for (int k = 0; k < grid.blocks(); ++k) {
    const SegmentBlock block = grid.block(k);
    work.part(static_cast<double>(k) / grid.blocks(), (k + 1.0) / grid.blocks());
    correlate_block(w, block, used);
    use(block, used);
  }
}

void cor_report(Workspace& w, Troubles& troubles) {
  LongWork work(w.plot, report_name);
  ReportFile file;
  told(troubles, report_name, file.create(w.files, report_name), "Open ");
  const Status written = file.write(EditFormat(title), w.cfy(w.cf), w.cly(w.cf), w.cnam(w.cf).view());
  told(troubles, report_name, written, "WRITE");
  cor_blocks(w, [&](const SegmentBlock& block, YearSpan) { write_block(w, w, w.mess, block, file); });
  w.ios = told(troubles, report_name, file.close(), "Close");
}

}  // namespace vorn
