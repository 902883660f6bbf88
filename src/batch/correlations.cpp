#include "batch/correlations.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "editing/working_pair.h"
#include "formats/layouts.h"
#include "statistics/chronology_entries.h"
#include "statistics/correlation.h"
#include "statistics/correlation_report.h"
#include "statistics/lag_table.h"
#include "statistics/pool_window.h"
#include "study/site.h"

namespace vorn {
namespace {

using Add = std::function<void(const Row&)>;

constexpr std::int32_t no_year = -9999;  // of a segment that is none

Row correlation_row(const std::string& file, const SeriesStore& w, int entry, YearSpan segment, int lag,
                    Cell r, std::string flag) {
  return {file,
          std::string(w.nam(entry).trimmed()),
          Cell(segment.first),
          Cell(segment.last),
          Cell(std::int64_t{lag}),
          std::move(r),
          flag.empty() ? Cell() : Cell(std::move(flag))};
}

// --- The report.

int rings_present(const SeriesStore& w, int i, YearSpan years) {
  const auto present = w.presence(i).subspan(static_cast<std::size_t>(years.first - w.fy(i)),
                                             static_cast<std::size_t>(years.count()));
  return static_cast<int>(std::ranges::count(present, true));
}

Row report_row(const std::string& file, const Workspace& w, int i, const SegmentBlock& block, int j,
               YearSpan used) {
  const double r = w.corr_tables.correlation(i, j);
  const auto years = cell_years(block, j, common({w.fy(i), w.ly(i)}, used));
  const bool is_low = years && r < least_correlation(rings_present(w, i, *years));
  return correlation_row(file, w, i, {block.first_year(j), block.last_year(j)}, 0, number(r),
                         is_low ? "A" : "");
}

// --- The lag table.

struct LagCell {
  int lag;
  std::optional<double> r;
};

// Segment k of the table that was made last: the lags within the sample's years.
std::vector<LagCell> cells_of(const Workspace& w, int k, int farthest) {
  const int sample = w.nd + 1;
  const int lowest = std::max(w.fy(sample) - w.cyrs(1, k), -farthest);
  const int highest = std::min(w.ly(sample) - w.cyrs(2, k), farthest);
  std::vector<LagCell> cells;
  for (int lag = lowest; lag <= highest; ++lag) {
    const double r = w.ctab(lag + max_lag + 1, k);
    cells.push_back({lag, r == not_correlated ? std::optional<double>() : r});
  }
  return cells;
}

// How many years of the segment both slots have a ring in.
int pairs_present(const SeriesStore& w, YearSpan segment) {
  const int length = static_cast<int>(segment.count());
  const auto window = [&](int slot) {
    return PoolWindow(w, w.ad(slot) + segment.first - w.fy(slot), length);
  };
  const PoolWindow sample = window(w.nd + 1), reference = window(w.nd + 2);
  int pairs = 0;
  for (int k = 0; k < length; ++k) {
    const auto place = static_cast<std::size_t>(k);
    pairs += sample.present(0, length)[place] && reference.present(0, length)[place];
  }
  return pairs;
}

std::string flag_of(const std::vector<LagCell>& cells, int pairs) {
  const auto dated = std::ranges::find(cells, 0, &LagCell::lag);
  if (dated == cells.end() || !dated->r) return "";
  const bool other_is_higher =
      std::ranges::any_of(cells, [&](const LagCell& cell) { return cell.r && *cell.r > *dated->r; });
  return std::string(*dated->r < least_correlation(pairs) ? "A" : "") + (other_is_higher ? "B" : "");
}

void segment_rows(const std::string& file, const Workspace& w, int core, int k, int farthest,
                  const Add& add) {
  const YearSpan segment{w.cyrs(1, k), w.cyrs(2, k)};
  const auto cells = cells_of(w, k, farthest);
  const std::string flag = flag_of(cells, pairs_present(w, segment));
  for (const LagCell& cell : cells) {
    add(correlation_row(file, w, core, segment, cell.lag, cell.r ? number(*cell.r) : Cell(),
                        cell.lag == 0 ? flag : ""));
  }
}

// How many segments the table has that was made last.
int segments_of(const LagTable& table) {
  int k = 0;
  while (k < max_segments && (table.cyrs(1, k + 1) != no_year || table.cyrs(2, k + 1) != no_year)) ++k;
  return k;
}

void core_rows(const std::string& file, Workspace& w, int core, int farthest, const Add& add) {
  const std::int32_t first = std::max(w.fy(w.nd + 1), w.fy(w.nd + 2));
  std::int32_t start = first;
  for (int segments = max_segments; segments == max_segments;) {
    cor_tab(w, w, w, start);
    segments = segments_of(w);
    for (int k = 1; k <= segments; ++k) {
      if (w.cyrs(1, k) >= first) segment_rows(file, w, core, k, farthest, add);
    }
    if (segments > 0) start = w.cyrs(1, segments) + w.seg - w.olap;
  }
}

}  // namespace

OtherChronology::OtherChronology(const Collection& collection) {
  const FileTable& files = collection.state();
  name_ = files.cnam(1);
  layout_ = files.rftype(1);
  const bool any = holds_ring_widths(layout_) ? collection.has_cores() : row_of(layout_) != nullptr;
  if (!any) return;
  first_ = files.cfy(1);
  last_ = files.cly(1);
  for (int k = 1; k <= std::clamp(files.cyr(1), 0, max_years); ++k) {
    values_.push_back(files.crn(k, 1));
    depths_.push_back(files.num(k, 1));
  }
}

void OtherChronology::put_beside(Workspace& w) const {
  constexpr int second = 2;
  w.nfil = second;
  w.cnam(second) = name_;
  w.rftype(second) = layout_;
  w.rawok(second) = true;
  w.cfy(second) = first_;
  w.cly(second) = last_;
  w.cyr(second) = static_cast<std::int32_t>(values_.size());
  w.crn_written(second) = true;
  for (int k = 1; k <= w.cyr(second); ++k) {
    w.crn(k, second) = values_[static_cast<std::size_t>(k) - 1];
    w.num(k, second) = depths_[static_cast<std::size_t>(k) - 1];
  }
  place_chronologies(w, w);
}

void report_rows(Collection& collection, const Add& add) {
  if (!collection.has_cores()) return;
  Workspace& w = collection.state();
  std::vector<std::vector<Row>> of_core(static_cast<std::size_t>(w.nc));
  cor_blocks(w, [&](const SegmentBlock& block, YearSpan used) {
    for (int i = 1; i <= w.nc; ++i) {
      for (int j = 1; j <= block.segments; ++j) {
        if (w.corr_tables.valid(i, j))
          of_core[static_cast<std::size_t>(i) - 1].push_back(
              report_row(collection.path(), w, i, block, j, used));
      }
    }
  });
  for (const auto& rows : of_core) std::ranges::for_each(rows, add);
}

void lag_rows(Collection& collection, const OtherChronology* other, int farthest, const Add& add) {
  if (!collection.has_cores()) return;
  Workspace& w = collection.state();
  if (other) other->put_beside(w);
  w.tr2 = w.nc + (other ? 2 : 1);
  for (int core = 1; core <= w.nc; ++core) {
    w.tr1 = core;
    remove_tree(w, w, w, w.careful);
    core_rows(collection.path(), w, core, farthest, add);
  }
}

}  // namespace vorn
