#include "batch/dating.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "formats/layouts.h"
#include "study/reference.h"

namespace vorn {

DatingReference::DatingReference(Collection& collection) : name_(collection.path()) {
  const Workspace& w = collection.state();
  if (collection.has_cores()) {
    const auto cores = collection.cores();
    take_mean(cores, StudiedCores(cores, w), cores.size());
  } else if (row_of(w.rftype(1)) && !holds_ring_widths(w.rftype(1))) {
    const int years = std::clamp(w.cyr(1), 0, max_years);
    const std::int64_t first = w.cfy(1);
    compared_ = OwnedSeries(first, years);
    for (int k = 1; k <= years; ++k) {
      compared_.put(first + k - 1, w.crn(k, 1), w.num(k, 1) > 0);
      growth_.push_back(w.crn(k, 1));
    }
  }
}

DatingReference::DatingReference(std::string name, std::span<const SeriesView> cores,
                                 const StudiedCores& studied, std::size_t left_out)
    : name_(std::move(name)) {
  take_mean(cores, studied, left_out);
}

void DatingReference::take_mean(std::span<const SeriesView> cores, const StudiedCores& studied,
                                std::size_t left_out) {
  const Reference compared(studied.compared(), left_out, depth_for(cores.size()));
  const Reference widths(cores, left_out, depth_for(cores.size()));
  const SeriesView growth = widths.view();
  compared_ = OwnedSeries(compared.view());
  const YearSpan years = compared_.view().years();
  for (std::int64_t year = years.first; year <= years.last; ++year) {
    growth_.push_back(growth.has(year) ? growth.at(year) : std::numeric_limits<double>::quiet_NaN());
  }
}

SeriesToDate DatingReference::series() const {
  return {compared_.view(), growth_};
}

Row date_row(const std::string& file, const std::string& core, const std::string& reference,
             const Dates& found) {
  // Nothing is left out in silence.
  if (found.ranked.empty())
    return {file,   core,   reference, Cell(), Cell(), Cell(std::int64_t{0}),
            Cell(), Cell(), Cell(),    Cell(), Cell(), Cell()};
  const DatedPosition& best = found.ranked.front();
  return {file,
          core,
          reference,
          Cell(best.first_year),
          Cell(best.shift),
          Cell(std::int64_t{best.overlap}),
          number(best.r),
          number(best.t_bp),
          number(best.t_h),
          number(best.glk),
          number(best.p),
          number(found.margin)};
}

void date_rows(Collection& collection, const DatingReferences& references,
               const std::function<void(const Row&)>& add) {
  if (!collection.has_cores()) return;
  const Workspace& w = collection.state();
  const auto cores = collection.cores();
  const StudiedCores studied(cores, w);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    DatingReferences used = references;
    if (used.empty()) {
      used.push_back(
          std::make_shared<const DatingReference>("rest of " + collection.path(), cores, studied, i));
    }
    std::vector<SeriesToDate> series;
    for (const auto& reference : used) series.push_back(reference->series());
    const auto found = dates({studied.core(i).compared, cores[i].values}, series);
    const std::string name(w.nam(static_cast<int>(i) + 1).trimmed());
    for (std::size_t k = 0; k < found.size(); ++k)
      add(date_row(collection.path(), name, used[k]->name(), found[k]));
  }
}

}  // namespace vorn
