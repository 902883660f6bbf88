#include "batch/dating.h"

#include <algorithm>
#include <limits>

#include "formats/layouts.h"
#include "study/studied_cores.h"

namespace vorn {
namespace {

std::vector<SeriesView> cores_of(const SeriesStore& w) {
  std::vector<SeriesView> cores;
  for (int i = 1; i <= w.nc; ++i) cores.push_back({w.fy(i), w.widths(i), w.presence(i)});
  return cores;
}

// A few cores give a mean, too, but not one of three.
int depth_for(std::size_t cores) {
  return cores > least_depth ? least_depth : 1;
}

}  // namespace

DatingReference::DatingReference(Collection& collection, std::size_t left_out) : name_(collection.path()) {
  const Workspace& w = collection.state();
  if (collection.has_cores()) {
    const auto cores = cores_of(w);
    const StudiedCores studied(cores, w);
    const Reference compared(studied.compared(), left_out, depth_for(cores.size()));
    const Reference widths(cores, left_out, depth_for(cores.size()));
    const SeriesView values = compared.view(), growth = widths.view();
    first_ = values.first;
    compared_.assign(values.values.begin(), values.values.end());
    present_ = std::make_unique<bool[]>(compared_.size());
    std::ranges::copy(values.present, present_.get());
    for (std::size_t k = 0; k < compared_.size(); ++k) {
      const std::int64_t at = first_ + static_cast<std::int64_t>(k) - growth.first;
      const bool known = at >= 0 && at < static_cast<std::int64_t>(growth.values.size());
      growth_.push_back(known ? growth.values[static_cast<std::size_t>(at)]
                              : std::numeric_limits<double>::quiet_NaN());
    }
    if (left_out < cores.size()) name_ = "rest of " + name_;
  } else if (row_of(w.rftype(1)) && !holds_ring_widths(w.rftype(1))) {
    const int years = std::clamp(w.cyr(1), 0, max_years);
    first_ = w.cfy(1);
    present_ = std::make_unique<bool[]>(static_cast<std::size_t>(years));
    for (int k = 1; k <= years; ++k) {
      compared_.push_back(w.crn(k, 1));
      growth_.push_back(w.crn(k, 1));
      present_[static_cast<std::size_t>(k) - 1] = w.num(k, 1) > 0;
    }
  }
}

SeriesToDate DatingReference::series() const {
  return {{first_, compared_, {present_.get(), compared_.size()}}, growth_};
}

void date_rows(Collection& collection, const DatingReferences& references,
               const std::function<void(const Row&)>& add) {
  if (!collection.has_cores()) return;
  const Workspace& w = collection.state();
  const auto cores = cores_of(w);
  const StudiedCores studied(cores, w);
  for (std::size_t i = 0; i < cores.size(); ++i) {
    DatingReferences used = references;
    if (used.empty()) used.push_back(std::make_shared<const DatingReference>(collection, i));
    std::vector<SeriesToDate> series;
    for (const auto& reference : used) series.push_back(reference->series());
    const auto found = dates({studied.core(i).compared, cores[i].values}, series);
    for (std::size_t k = 0; k < found.size(); ++k) {
      const std::string name(w.nam(static_cast<int>(i) + 1).trimmed());
      if (found[k].ranked.empty()) {
        // Nothing is left out in silence.
        add({collection.path(), name, used[k]->name(), Cell(), Cell(), Cell(std::int64_t{0}), Cell(), Cell(),
             Cell(), Cell(), Cell(), Cell()});
        continue;
      }
      const DatedPosition& best = found[k].ranked.front();
      add({collection.path(), name, used[k]->name(), Cell(best.first_year), Cell(best.shift),
           Cell(std::int64_t{best.overlap}), number(best.r), number(best.t_bp), number(best.t_h),
           number(best.glk), number(best.p), number(found[k].margin)});
    }
  }
}

}  // namespace vorn
