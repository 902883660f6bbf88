#include "study/recipe_ways.h"

#include <algorithm>
#include <cmath>

#include "chronology/burg_model.h"
#include "chronology/compared_series.h"
#include "study/ring_statistics.h"
#include "study/yule_walker.h"

namespace vorn {
namespace {

constexpr int holmes_spline = 32;  // years

void divide_by_spline(std::vector<double>& widths) {
  std::vector<double> curve(widths.size());
  spline(widths, holmes_spline, curve);
  for (std::size_t k = 0; k < widths.size(); ++k) widths[k] /= std::max(curve[k], lowest_holmes_curve);
}

void divide_by_mean(std::vector<double>& widths) {
  double sum = 0;
  for (const double width : widths) sum += width;
  for (double& width : widths) width /= sum / static_cast<double>(widths.size());
}

void take_trend(std::vector<double>& widths, RecipeOf way, const Settings& settings) {
  if (way == RecipeOf::cofecha) return divide_by_spline(widths);
  if (way == RecipeOf::dplr) return divide_by_mean(widths);
  SplineFactor factor(settings.ss);
  if (settings.splineon) detrend(widths, factor);
}

// Answers the order of the model.
int take_program_model(std::vector<double>& index, const Settings& settings) {
  if (!settings.aron) return 0;
  std::vector<double> coefficients(static_cast<std::size_t>(settings.jpr));
  const std::vector<double> series = index;
  return armod2(series, index, coefficients, settings.jpr);
}

int take_model(std::vector<double>& index, RecipeOf way, const Settings& settings) {
  if (way == RecipeOf::program) return take_program_model(index, settings);
  const auto model = yule_walker(index);
  if (!model) {
    std::ranges::fill(index, std::nan(""));
    return 0;
  }
  index = residuals_of(index, *model);
  return static_cast<int>(model->coefficients.size());
}

// What falls below 0 counts as 0; a sixth of the mean keeps it finite.
void take_logarithms_of_known(std::vector<double>& values) {
  double sum = 0, known = 0;
  for (double& value : values) {
    if (std::isnan(value)) continue;
    value = std::max(value, 0.0);
    sum += value;
    ++known;
  }
  for (double& value : values) value = std::log(value + sum / (6 * known));
}

}  // namespace

std::vector<double> widths_by(RecipeOf recipe, const SeriesView& core) {
  std::vector<double> widths(core.values.begin(), core.values.end());
  if (recipe == RecipeOf::program) return widths;
  for (std::size_t k = 0; k < widths.size(); ++k) {
    if (!core.has(core.first + static_cast<std::int64_t>(k))) widths[k] = 0;
  }
  return widths;
}

ReadyCore made_ready(const SeriesView& core, const Ways& ways, const Settings& settings) {
  ReadyCore ready{core.first, widths_by(ways.of(RecipeStep::missing), core), 0};
  if (ready.values.empty()) return ready;
  const bool is_foreign = ways.of(RecipeStep::model) != RecipeOf::program;
  if (is_foreign && is_of_one_width(ready.values)) return {core.first, {}, 0};
  take_trend(ready.values, ways.of(RecipeStep::trend), settings);
  ready.order = take_model(ready.values, ways.of(RecipeStep::model), settings);
  const RecipeOf way = ways.of(RecipeStep::logarithm);
  if (way == RecipeOf::cofecha || (way == RecipeOf::program && settings.logon))
    take_logarithms_of_known(ready.values);
  return ready;
}

}  // namespace vorn
