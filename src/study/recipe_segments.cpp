#include "study/recipe_segments.h"

#include <algorithm>
#include <cmath>

#include "statistics/correlation.h"
#include "statistics/segment_grid.h"
#include "study/rank_correlation.h"
#include "study/site.h"

namespace vorn {
namespace {

using Values = std::span<const double>;

// Calls with each segment of the grid and the years of it that are had.
template <class Use>
void each_cell(YearSpan used, YearSpan available, std::int64_t length, std::int64_t step, Use use) {
  if (used.count() < 1) return;
  const SegmentGrid grid(used, length, step);
  for (int k = 0; k < grid.blocks(); ++k) {
    const SegmentBlock block = grid.block(k);
    if (common({block.start, block.end}, available).count() - 1 <= step) continue;
    for (int j = 1; j <= block.segments; ++j) {
      if (const auto years = cell_years(block, j, available))
        use(YearSpan{block.first_year(j), block.last_year(j)}, *years);
    }
  }
}

Values part_of(const SeriesView& series, YearSpan years) {
  return series.over(years).values;
}

// The years in which all are numbers, beginning with the first one that is.
YearSpan known_years(Values values, std::int64_t first) {
  YearSpan years{first, first + static_cast<std::int64_t>(values.size()) - 1};
  const auto known = [&](std::int64_t year) {
    return std::isfinite(values[static_cast<std::size_t>(year - first)]);
  };
  while (years.count() > 0 && !known(years.first)) ++years.first;
  while (years.count() > 0 && !known(years.last)) --years.last;
  return years;
}

// Whether the segment, 1 to 10 years earlier or later, agrees better with all of as many years of the others
// than as it is dated.
bool is_better_elsewhere(const RecipeCores& cores, std::size_t core, YearSpan years, double dated) {
  constexpr std::int64_t farthest = farthest_segment_lag;
  const Values segment = part_of(cores.core(core).view(), years);
  const std::vector<double> others =
      cores.mean_of_others(core, {years.first - farthest, years.last + farthest});
  for (std::size_t start = 0; start + segment.size() <= others.size(); ++start) {
    if (start == static_cast<std::size_t>(farthest)) continue;
    const Pairs pairs = pairs_of(segment, Values(others).subspan(start, segment.size()));
    if (pairs.a.size() >= segment.size() && cov(pairs.a, pairs.b) > dated) return true;
  }
  return false;
}

std::int64_t multiple_from(std::int64_t year, std::int64_t step) {
  const std::int64_t rest = year % step;
  return rest == 0 ? year : year - rest + (rest > 0 ? step : 0);
}

}  // namespace

std::vector<RecipeSegment> program_segments(const RecipeCores& cores, std::size_t core,
                                            const Settings& settings) {
  const SeriesView own = cores.with_rings(core);
  const YearSpan used = cores.chronology().well_covered();
  std::vector<RecipeSegment> all;
  each_cell(used, common(own.years(), used), settings.seg, settings.olap,
            [&](YearSpan segment, YearSpan years) {
              const SeriesView part = own.over(years);
              const std::vector<double> rest = cores.chronology().without(own, years);
              const auto rings = part.present.empty() ? static_cast<std::ptrdiff_t>(part.values.size())
                                                      : std::ranges::count(part.present, true);
              const auto [r, valid] = part.present.empty() ? MaskedCorrelation{cov(part.values, rest), true}
                                                           : covmiss(part.values, rest, part.present);
              if (!valid) return;
              const bool low = r < least_correlation(static_cast<int>(rings));
              all.push_back({segment, years, r, {}, low, false});
            });
  return all;
}

std::vector<RecipeSegment> holmes_segments(const RecipeCores& cores, std::size_t core) {
  const SeriesView own = cores.core(core).view();
  const std::vector<double>& master = cores.master(core);
  const YearSpan both = common(known_years(own.values, own.first), known_years(master, own.first));
  std::vector<RecipeSegment> all;
  // So that a segment that is cut at either end is one, too.
  const YearSpan used{multiple_from(both.first - recipe_step, recipe_step), both.last + recipe_step};
  if (both.count() < recipe_segment) return all;
  each_cell(used, both, recipe_segment, recipe_step, [&](YearSpan segment, YearSpan years) {
    const Pairs pairs = pairs_of(part_of(own, years), part_of({own.first, master}, years));
    if (pairs.a.size() < fewest_recipe_pairs) return;
    const double r = cov(pairs.a, pairs.b);
    all.push_back({segment, years, r, {}, r < holmes_critical, is_better_elsewhere(cores, core, years, r)});
  });
  return all;
}

YearSpan dplr_first_segment(YearSpan years) {
  const std::int64_t first = multiple_from(years.first, dplr_floor);
  return {first, first + recipe_segment - 1};
}

std::vector<RecipeSegment> dplr_segments(const RecipeCores& cores, std::size_t core, YearSpan years) {
  const SeriesView own = cores.core(core).view();
  const std::vector<double>& master = cores.master(core);
  std::vector<RecipeSegment> all;
  for (YearSpan segment = dplr_first_segment(years); segment.last <= years.last;
       segment = {segment.first + recipe_step, segment.last + recipe_step}) {
    if (common(segment, own.years()) != segment) continue;
    const Pairs pairs = pairs_of(part_of(own, segment), part_of({own.first, master}, segment));
    if (pairs.a.size() < static_cast<std::size_t>(recipe_segment)) continue;
    const double r = rank_correlation(pairs.a, pairs.b);
    const double p = probability_of_ranks(r, pairs.a.size(), has_ties(pairs.a) || has_ties(pairs.b));
    all.push_back({segment, segment, r, p, p >= dplr_critical, false});
  }
  return all;
}

}  // namespace vorn
