#include "study/studied_cores.h"

#include <utility>

#include "chronology/index_pipeline.h"

namespace vorn {

StudiedCores::StudiedCores(std::span<const SeriesView> widths, const Settings& settings) {
  const Treatment treatment = treatment_of(settings);
  SplineFactor factor(settings.ss);
  for (const SeriesView& core : widths) {
    ComparedSeries series = compared_series(core.values, treatment, factor);
    merged_.push_back(merged_rings(series, treatment));
    values_.push_back(std::move(series.compared));
    compared_.push_back({core.first, values_.back(), core.present});
  }
}

}  // namespace vorn
