// The figures of a core as this program, quality control after Holmes (1983) and dplR have them, side by
// side, and the step that makes the difference.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "study/recipe_ways.h"
#include "workspace/series_view.h"
#include "workspace/settings.h"
#include "workspace/years.h"

namespace vorn {

// One segment by one of them.
struct RecipeSegment {
  YearSpan segment = {};    // by its name
  YearSpan years = {};      // of which it is: moved inwards at an end of the core
  double r = 0;             // with the others
  std::optional<double> p;  // that chance gives such an r or a higher one, where that decides
  bool low = false;         // flag A: r is too low, or p too high
  bool lagging = false;     // flag B: moved by 1 to 10 years either way along the others it agrees better
};

struct RecipeFigures {
  // With the others, nothing where it is not had: then `why` says why.
  std::optional<double> r = {};
  std::optional<double> p = {};  // that chance gives such an r or a higher one, where the recipe says so
  std::string why = {};
  int order = 0;  // of the autoregressive model
  double sensitivity = 0, weighted_sensitivity = 0, autocorrelation = 0, skew = 0, gini = 0;  // of the widths
  std::vector<RecipeSegment> segments = {};
  std::string why_no_segments = {};
};

// What becomes of the correlation of this program as the steps are done the other way one by one, in the
// order of the list: what the cores are compared with first, since this program's mean goes with its own
// values alone.
struct StepEffect {
  RecipeStep step = RecipeStep::missing;
  std::optional<double> r = {};      // with this step and all before it done the other way
  std::optional<double> moves = {};  // by how much this step alone changes it
};

// The same of one segment of this program, over its years; the last step is that the other one has other
// years.
struct SegmentEffect {
  YearSpan segment = {}, years = {};
  std::vector<StepEffect> steps = {};
};

struct CoreRecipe {
  std::size_t core = 0;
  int rings = 0, missing = 0;
  std::array<RecipeFigures, all_recipes.size()> figures = {};
  // By recipe; none of this program's own.
  std::array<std::vector<StepEffect>, all_recipes.size()> steps = {};
  std::array<std::vector<SegmentEffect>, all_recipes.size()> segment_steps = {};

  const RecipeFigures& by(RecipeOf recipe) const { return figures[static_cast<std::size_t>(recipe)]; }
  const std::vector<StepEffect>& steps_to(RecipeOf recipe) const {
    return steps[static_cast<std::size_t>(recipe)];
  }
  // Of the segment that begins in that year by its name; null where this program has none.
  const SegmentEffect* segment_to(RecipeOf recipe, std::int64_t first) const;
};

// The step that moves a correlation most on the way from this program to the other one, and by how much;
// nothing where none moves it.
struct MainStep {
  RecipeStep step = RecipeStep::missing;
  double moves = 0;
};
std::optional<MainStep> main_step(std::span<const StepEffect> steps);

// Given:    widths    mm, with estimates at missing rings
//           wanted    cores by their number, from 0
//           settings  this program's way
//           go_on     is asked now and then with the share that is done; nothing is given once it says no
// Returned: of each wanted core its figures. Where a figure cannot be had `why` says why, in plain words.
//
// Holmes: 32-year spline, division, autoregressive residuals, logarithms, mean of the others, Pearson;
// segments of 50 years on multiples of 25, flagged below 0.3281. dplR: division by the mean, autoregressive
// residuals, biweight mean of the others, Spearman; segments of 50 years by 25 from the first multiple of 100
// on, of which every year is had, flagged where p is 0.05 or more. Source:   R. L. Holmes (1983), Tree-Ring
// Bulletin 43, 69-78; A. G. Bunn (2008), Dendrochronologia 26, 115-124,
//           and (2010), Dendrochronologia 28, 251-258.
// Cost:     the cores are made ready eight times; each wanted one takes, beside that, a sort of the others'
//           values in its years.
std::optional<std::vector<CoreRecipe>> recipes(std::span<const SeriesView> widths,
                                               std::span<const std::size_t> wanted, const Settings& settings,
                                               const std::function<bool(double share)>& go_on);

// Of all critical values that of 50 years by which Holmes flags: one case of 100, one-sided.
inline constexpr double holmes_critical = 0.3281;
inline constexpr double dplr_critical = 0.05;
inline constexpr std::int64_t recipe_segment = 50, recipe_step = 25, dplr_floor = 100;

}  // namespace vorn
