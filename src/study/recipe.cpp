#include "study/recipe.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "statistics/tree_correlations.h"
#include "study/recipe_cores.h"
#include "study/recipe_segments.h"
#include "study/ring_statistics.h"

namespace vorn {
namespace {

constexpr double least_move = 1e-9;  // of a correlation: less is rounding

constexpr std::array steps_to_ready = {RecipeStep::missing, RecipeStep::trend, RecipeStep::model,
                                       RecipeStep::logarithm};
constexpr std::array others = {RecipeOf::cofecha, RecipeOf::dplr};
// How often all cores are made ready: for this program, and for each step to the other two.
constexpr double rounds = 1 + 2 * steps_to_ready.size();

std::size_t place_of(RecipeOf recipe) {
  return static_cast<std::size_t>(recipe);
}

// --- What a core is alone.

bool is_constant(const SeriesView& core) {
  std::vector<double> rings;
  for (std::int64_t year = core.first; year <= core.years().last; ++year) {
    if (core.has(year)) rings.push_back(core.at(year));
  }
  return is_of_one_width(rings);
}

RecipeFigures figures_alone(const SeriesView& core, RecipeOf recipe) {
  const std::vector<double> widths = widths_by(recipe, core);
  RecipeFigures figures;
  figures.sensitivity = mean_sensitivity(widths);
  figures.weighted_sensitivity = weighted_sensitivity(widths);
  figures.autocorrelation = first_autocorrelation(widths);
  figures.skew = skewness(widths);
  figures.gini = gini_coefficient(widths);
  return figures;
}

CoreRecipe begun(std::span<const SeriesView> widths, std::size_t core) {
  CoreRecipe all{core, static_cast<int>(widths[core].values.size())};
  all.missing = static_cast<int>(std::ranges::count(widths[core].present, false));
  for (const RecipeOf recipe : all_recipes)
    all.figures[place_of(recipe)] = figures_alone(widths[core], recipe);
  return all;
}

// --- Why there is no figure.

std::string why_none(std::span<const SeriesView> widths, const CoreRecipe& core, RecipeOf recipe, int years) {
  if (widths.size() < 2) return "one core only: there are no others to compare it with";
  if (core.rings == 0) return "no rings";
  if (is_constant(widths[core.core])) return "all its rings have one width: nothing varies";
  const bool ours = recipe == RecipeOf::program;
  const int least = ours ? fewest_common_years : static_cast<int>(fewest_recipe_pairs);
  if (years < least)
    return std::to_string(years) + " years in common with the others, fewer than " + std::to_string(least);
  return "its values or those of the others do not vary, or are not all numbers";
}

std::string why_no_segments(const RecipeFigures& figures, const CoreRecipe& core, std::int64_t length) {
  if (!figures.segments.empty()) return "";
  if (!figures.why.empty()) return figures.why;
  if (core.rings < length)
    return std::to_string(core.rings) + " rings, fewer than a segment of " + std::to_string(length) +
           " years";
  return "no segment of " + std::to_string(length) + " years in which the core and the others have values";
}

// --- What it is among the others.

std::optional<double> finite(std::optional<double> r) {
  return r && std::isfinite(*r) ? r : std::nullopt;
}

StepEffect effect(RecipeStep step, std::span<const StepEffect> before, std::optional<double> at_first,
                  std::optional<double> r) {
  const auto last = before.empty() ? at_first : before.back().r;
  return {step, r, last && r ? std::optional(*r - *last) : std::nullopt};
}

std::int64_t first_year(const RecipeSegment& segment) {
  return segment.segment.first;
}

// Of this program's segment.
std::optional<double> first_r(const CoreRecipe& core, const SegmentEffect& one) {
  return std::ranges::find(core.by(RecipeOf::program).segments, one.segment.first, first_year)->r;
}

void begin_segments(CoreRecipe& core) {
  for (const RecipeOf recipe : others) {
    for (const RecipeSegment& segment : core.by(RecipeOf::program).segments)
      core.segment_steps[place_of(recipe)].push_back({segment.segment, segment.years});
  }
}

class Work {
 public:
  Work(std::span<const SeriesView> widths, const Settings& settings, const std::function<bool(double)>& go_on)
      : widths_(widths), settings_(settings), go_on_(go_on), years_(years_of_all(widths)) {}

  std::optional<std::vector<CoreRecipe>> all(std::span<const std::size_t> wanted) {
    for (const std::size_t core : wanted) all_.push_back(begun(widths_, core));
    RecipeCores ours = made(Ways(RecipeOf::program));
    figure(ours, RecipeOf::program);
    for (CoreRecipe& core : all_) begin_segments(core);
    for (const RecipeOf recipe : others) begin(ours, recipe);
    for (const RecipeOf recipe : others) go_to(recipe);
    if (is_given_up_) return {};
    return std::move(all_);
  }

 private:
  RecipeCores made(const Ways& ways) {
    return {widths_, ways, settings_, [this] {
              ++ready_;
              is_given_up_ = is_given_up_ || !go_on_(ready_ / (rounds * static_cast<double>(widths_.size())));
              return !is_given_up_;
            }};
  }

  // What the cores are compared with comes first: this program's mean goes with its own values alone.
  void begin(RecipeCores& ours, RecipeOf recipe) {
    ours.compare_by(RecipeStep::master, recipe);
    note(ours, RecipeStep::master, recipe);
  }

  void go_to(RecipeOf recipe) {
    Ways ways(RecipeOf::program);
    ways.take(RecipeStep::master, recipe);
    for (const RecipeStep step : steps_to_ready) {
      ways.take(step, recipe);
      RecipeCores cores = made(ways);
      step == steps_to_ready.back() ? arrive(cores, recipe) : note(cores, step, recipe);
    }
  }

  // The last steps, core by core: what one is compared with is the same for all.
  void arrive(RecipeCores& cores, RecipeOf recipe) {
    for (CoreRecipe& core : all_) {
      if (is_given_up_) return;
      cores.compare_by(RecipeStep::coefficient, RecipeOf::program);
      note(cores, core, steps_to_ready.back(), recipe);
      cores.compare_by(RecipeStep::coefficient, recipe);
      note(cores, core, RecipeStep::coefficient, recipe);
      figure(cores, core, recipe);
      note_other_years(core, recipe);
    }
  }

  // What is left is that the other one's segment is of other years.
  static void note_other_years(CoreRecipe& core, RecipeOf recipe) {
    const auto& theirs = core.by(recipe).segments;
    for (SegmentEffect& one : core.segment_steps[place_of(recipe)]) {
      const auto same = std::ranges::find(theirs, one.segment.first, first_year);
      const auto r = same == theirs.end() ? std::nullopt : std::optional(same->r);
      one.steps.push_back(effect(RecipeStep::segments, one.steps, {}, r));
    }
  }

  void note(const RecipeCores& cores, RecipeStep step, RecipeOf recipe) {
    if (is_given_up_) return;
    for (CoreRecipe& core : all_) note(cores, core, step, recipe);
  }

  void note(const RecipeCores& cores, CoreRecipe& core, RecipeStep step, RecipeOf recipe) const {
    const bool can = widths_.size() > 1 && !is_constant(widths_[core.core]);
    auto& steps = core.steps[place_of(recipe)];
    const auto r = can ? finite(cores.correlation(core.core)) : std::nullopt;
    steps.push_back(effect(step, steps, core.by(RecipeOf::program).r, r));
    for (SegmentEffect& one : core.segment_steps[place_of(recipe)])
      one.steps.push_back(
          effect(step, one.steps, first_r(core, one), finite(cores.correlation_over(core.core, one.years))));
  }

  void figure(const RecipeCores& cores, RecipeOf recipe) {
    for (CoreRecipe& core : all_) {
      if (is_given_up_) return;
      figure(cores, core, recipe);
    }
  }

  void figure(const RecipeCores& cores, CoreRecipe& core, RecipeOf recipe) const {
    RecipeFigures& figures = core.figures[place_of(recipe)];
    const std::size_t k = core.core;
    const bool can = widths_.size() > 1 && !is_constant(widths_[k]);
    figures.order = cores.core(k).order;
    if (can) figures.r = finite(cores.correlation(k));
    if (figures.r) figures.p = cores.probability(k);
    if (!figures.r) figures.why = why_none(widths_, core, recipe, can ? cores.years_in_common(k) : 0);
    if (can) figures.segments = segments(cores, k, recipe);
    const std::int64_t length = recipe == RecipeOf::program ? settings_.seg : recipe_segment;
    figures.why_no_segments = why_no_segments(figures, core, length);
    const YearSpan first = dplr_first_segment(years_);
    if (recipe == RecipeOf::dplr && !figures.why_no_segments.empty() && first.last > years_.last)
      figures.why_no_segments = "the first segment would be " + std::to_string(first.first) + " to " +
                                std::to_string(first.last) + ", and the last ring of the file is of " +
                                std::to_string(years_.last);
  }

  std::vector<RecipeSegment> segments(const RecipeCores& cores, std::size_t k, RecipeOf recipe) const {
    if (recipe == RecipeOf::program) return program_segments(cores, k, settings_);
    return recipe == RecipeOf::cofecha ? holmes_segments(cores, k) : dplr_segments(cores, k, years_);
  }

  std::span<const SeriesView> widths_;
  const Settings& settings_;
  const std::function<bool(double)>& go_on_;
  YearSpan years_;
  std::vector<CoreRecipe> all_;
  double ready_ = 0;
  bool is_given_up_ = false;
};

}  // namespace

std::optional<MainStep> main_step(std::span<const StepEffect> steps) {
  std::optional<MainStep> main;
  for (const StepEffect& effect : steps) {
    const double least = main ? std::abs(main->moves) : least_move;
    if (effect.moves && std::abs(*effect.moves) > least) main = MainStep{effect.step, *effect.moves};
  }
  return main;
}

const SegmentEffect* CoreRecipe::segment_to(RecipeOf recipe, std::int64_t first) const {
  const auto& all = segment_steps[place_of(recipe)];
  const auto found =
      std::ranges::find(all, first, [](const SegmentEffect& one) { return one.segment.first; });
  return found == all.end() ? nullptr : &*found;
}

std::optional<std::vector<CoreRecipe>> recipes(std::span<const SeriesView> widths,
                                               std::span<const std::size_t> wanted, const Settings& settings,
                                               const std::function<bool(double share)>& go_on) {
  return Work(widths, settings, go_on).all(wanted);
}

}  // namespace vorn
