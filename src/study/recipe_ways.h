// How three programs make of ring widths what they compare: the steps, and the way of each.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "workspace/series_view.h"
#include "workspace/settings.h"

namespace vorn {

// This program by its settings, quality control after Holmes (1983), and dplR by its defaults.
enum class RecipeOf : std::uint8_t { program, cofecha, dplr };
inline constexpr std::array all_recipes = {RecipeOf::program, RecipeOf::cofecha, RecipeOf::dplr};

// In the order in which they are done. The last one makes no difference to a correlation as a whole.
enum class RecipeStep : std::uint8_t { missing, trend, model, logarithm, master, coefficient, segments };
inline constexpr std::array all_steps = {RecipeStep::missing,   RecipeStep::trend,  RecipeStep::model,
                                         RecipeStep::logarithm, RecipeStep::master, RecipeStep::coefficient,
                                         RecipeStep::segments};

// Whose way each step is done.
class Ways {
 public:
  explicit Ways(RecipeOf all) { ways_.fill(all); }
  RecipeOf of(RecipeStep step) const { return ways_[static_cast<std::size_t>(step)]; }
  void take(RecipeStep step, RecipeOf from) { ways_[static_cast<std::size_t>(step)] = from; }

 private:
  std::array<RecipeOf, all_steps.size()> ways_ = {};
};

// A core made ready to be compared. Values that nothing foretells are not numbers.
struct ReadyCore {
  std::int64_t first = 0;
  std::vector<double> values = {};
  int order = 0;  // of the autoregressive model; 0 for none, and for one that is not known

  SeriesView view() const { return {first, values}; }
  YearSpan years() const { return view().years(); }
};

// The widths, mm, absent rings as 0 where a core is not compared as this program does. Missing rings have
// estimates in `core`.
std::vector<double> widths_by(RecipeOf recipe, const SeriesView& core);

// The first four steps of a core; no values of one that is constant where its way cannot be gone.
ReadyCore made_ready(const SeriesView& core, const Ways& ways, const Settings& settings);

// A year's widths and curve are never less than so much, mm, where the curve divides by Holmes: the unit of
// files.
inline constexpr double lowest_holmes_curve = 0.001;

}  // namespace vorn
