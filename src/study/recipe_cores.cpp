#include "study/recipe_cores.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "statistics/correlation.h"
#include "study/biweight_mean.h"
#include "study/rank_correlation.h"

namespace vorn {
namespace {

YearSpan span_of(std::span<const ReadyCore> cores) {
  std::vector<SeriesView> views;
  for (const ReadyCore& core : cores) views.push_back(core.view());
  return years_of_all(views);
}

std::vector<ReadyCore> all_ready(std::span<const SeriesView> widths, const Ways& ways,
                                 const Settings& settings, const std::function<bool()>& go_on) {
  std::vector<ReadyCore> all;
  for (const SeriesView& core : widths) {
    all.push_back(made_ready(core, ways, settings));
    if (!go_on()) return std::vector<ReadyCore>(widths.size());
  }
  return all;
}

// Rings that are present count, and where missing ones count as 0, these too.
SeriesView counted(const ReadyCore& core, const SeriesView& widths, const Ways& ways) {
  SeriesView view = core.view();
  if (ways.of(RecipeStep::missing) == RecipeOf::program && view.values.size() == widths.present.size())
    view.present = widths.present;
  return view;
}

ChronologyParts parts_of(std::span<const ReadyCore> cores, std::span<const SeriesView> widths,
                         const Ways& ways) {
  std::vector<SeriesView> views;
  for (std::size_t i = 0; i < cores.size(); ++i) views.push_back(counted(cores[i], widths[i], ways));
  return ChronologyParts(views);
}

}  // namespace

YearValues::YearValues(std::span<const ReadyCore> cores)
    : years_(span_of(cores)), values_(static_cast<std::size_t>(std::max<std::int64_t>(years_.count(), 0))) {
  for (const ReadyCore& core : cores) {
    const auto start = static_cast<std::size_t>(core.first - years_.first);
    for (std::size_t k = 0; k < core.values.size(); ++k) {
      if (std::isfinite(core.values[k])) values_[start + k].push_back(core.values[k]);
    }
  }
  for (auto& year : values_) std::ranges::sort(year);
}

double YearValues::biweight(std::int64_t year, double left_out) const {
  std::vector<double> others = values_[static_cast<std::size_t>(year - years_.first)];
  const auto own = std::isfinite(left_out) ? std::ranges::lower_bound(others, left_out) : others.end();
  if (own != others.end()) others.erase(own);
  return biweight_mean(others);
}

RecipeCores::RecipeCores(std::span<const SeriesView> widths, const Ways& ways, const Settings& settings,
                         const std::function<bool()>& go_on)
    : widths_(widths),
      ways_(ways),
      cores_(all_ready(widths, ways, settings, go_on)),
      chronology_(parts_of(cores_, widths, ways)) {
  compare_by(RecipeStep::master, ways.of(RecipeStep::master));
}

void RecipeCores::compare_by(RecipeStep step, RecipeOf recipe) {
  ways_.take(step, recipe);
  if (step == RecipeStep::master) of_kept_.reset();
  if (ways_.of(RecipeStep::master) == RecipeOf::dplr && !by_year_) by_year_.emplace(cores_);
}

SeriesView RecipeCores::with_rings(std::size_t i) const {
  return counted(cores_[i], widths_[i], ways_);
}

std::vector<double> RecipeCores::mean_of_others(std::size_t i, YearSpan years) const {
  ChronologyParts others = chronology_;
  others.take(with_rings(i));
  const YearSpan had = common(years, span_of(cores_));
  const std::vector<double> means = others.means(had);
  std::vector<double> all(static_cast<std::size_t>(std::max<std::int64_t>(years.count(), 0)), std::nan(""));
  const auto before = static_cast<std::ptrdiff_t>(means.empty() ? 0 : had.first - years.first);
  std::copy(means.begin(), means.end(), all.begin() + before);
  return all;
}

std::vector<double> RecipeCores::biweight_of_others(std::size_t i) const {
  std::vector<double> master;
  const YearSpan years = cores_[i].years();
  for (std::int64_t year = years.first; year <= years.last; ++year)
    master.push_back(by_year_->biweight(year, cores_[i].view().at(year)));
  return master;
}

const std::vector<double>& RecipeCores::master(std::size_t i) const {
  if (of_kept_ != i) {
    kept_ = by_year_ ? biweight_of_others(i) : mean_of_others(i, cores_[i].years());
    of_kept_ = i;
  }
  return kept_;
}

int RecipeCores::years_in_common(std::size_t i) const {
  return static_cast<int>(pairs_of(cores_[i].values, mean_of_others(i, cores_[i].years())).a.size());
}

std::optional<double> RecipeCores::correlation_of(const Pairs& pairs) const {
  if (pairs.a.size() < fewest_recipe_pairs) return {};
  return is_by_ranks() ? rank_correlation(pairs.a, pairs.b) : cov(pairs.a, pairs.b);
}

std::optional<double> RecipeCores::correlation_over(std::size_t i, YearSpan years) const {
  const SeriesView own = with_rings(i);
  const std::vector<double>& others = master(i);
  years = common(years, own.years());
  std::vector<double> a, b;
  for (std::int64_t year = years.first; year <= years.last; ++year) {
    if (!own.has(year)) continue;
    a.push_back(own.at(year));
    b.push_back(others[static_cast<std::size_t>(year - own.first)]);
  }
  return correlation_of(pairs_of(a, b));
}

std::optional<double> RecipeCores::correlation(std::size_t i) const {
  if (cores_[i].values.empty()) return {};
  if (ways_.of(RecipeStep::master) == RecipeOf::program) return chronology_.correlation(with_rings(i));
  return correlation_of(pairs_of(cores_[i].values, master(i)));
}

std::optional<double> RecipeCores::probability(std::size_t i) const {
  if (!is_by_ranks()) return {};
  const Pairs pairs = pairs_of(cores_[i].values, master(i));
  const double p = probability_of_ranks(rank_correlation(pairs.a, pairs.b), pairs.a.size(),
                                        has_ties(pairs.a) || has_ties(pairs.b));
  return std::isfinite(p) ? std::optional(p) : std::nullopt;
}

Pairs pairs_of(std::span<const double> a, std::span<const double> b) {
  Pairs pairs;
  for (std::size_t k = 0; k < a.size() && k < b.size(); ++k) {
    if (!std::isfinite(a[k]) || !std::isfinite(b[k])) continue;
    pairs.a.push_back(a[k]);
    pairs.b.push_back(b[k]);
  }
  return pairs;
}

}  // namespace vorn
