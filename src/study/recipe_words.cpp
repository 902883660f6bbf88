#include "study/recipe_words.h"

#include <cmath>
#include <cstdio>

namespace vorn {
namespace {

std::string decimals(double value, const char* form) {
  constexpr std::size_t room = 32;
  char text[room];
  std::snprintf(text, room, form, value);
  return text;
}

std::string program_trend(const Settings& settings) {
  if (!settings.splineon) return "none: the spline is off";
  return "cubic smoothing spline of " + std::to_string(settings.ss) +
         " years at 50 %, divided; the curve counts as 0.1 mm where it is lower (Cook and Peters 1981)";
}

std::string program_model(const Settings& settings) {
  if (!settings.aron) return "none: the model is off";
  return "residuals of an autoregressive model of order below " + std::to_string(settings.jpr) +
         ", by Burg's method and the corrected Akaike criterion, years before the first foretold backwards "
         "(Cook 1985; Hurvich and Tsai 1989)";
}

constexpr const char* yule_walker_words =
    "residuals of an autoregressive model, by the Yule-Walker equations and Akaike's criterion; the first "
    "years, as many as its order, have no value";

std::string program_words(RecipeStep step, const Settings& settings) {
  switch (step) {
    case RecipeStep::missing:
      return "a missing ring counts with its estimate, but not in the mean of the others";
    case RecipeStep::trend:
      return program_trend(settings);
    case RecipeStep::model:
      return program_model(settings);
    case RecipeStep::logarithm:
      return settings.logon
                 ? "logarithm of the value plus a sixth of the mean (Holmes 1983, for the logarithm)"
                 : "none: it is off";
    case RecipeStep::master:
      return "mean of all cores, the core taken out: (depth x mean - core) / depth, 40 years and more, from "
             "the "
             "first to the last with two cores (Fritts 1976; Holmes 1983)";
    case RecipeStep::coefficient:
      return "Pearson's r (Pearson 1896)";
    case RecipeStep::segments:
      return std::to_string(settings.seg) + " years, one every " + std::to_string(settings.olap) +
             ", moved inwards at an end; A below what chance passes in one case of 100 for so many rings "
             "(Holmes 1983)";
  }
  return "";
}

std::string cofecha_words(RecipeStep step) {
  switch (step) {
    case RecipeStep::missing:
      return "a missing ring is a ring of 0";
    case RecipeStep::trend:
      return "cubic smoothing spline of 32 years at 50 %, divided (Cook and Peters 1981; Holmes 1983)";
    case RecipeStep::model:
      return std::string(yule_walker_words) + " (Holmes 1983; Cook and Kairiukstis 1990)";
    case RecipeStep::logarithm:
      return "logarithm of the value plus a sixth of the mean (Holmes 1983, for the logarithm)";
    case RecipeStep::master:
      return "mean of the other cores (Holmes 1983)";
    case RecipeStep::coefficient:
      return "Pearson's r (Pearson 1896; Holmes 1983)";
    case RecipeStep::segments:
      return "50 years, one every 25, moved inwards at an end; A below 0.3281, B where the segment, moved "
             "along the others by 1 to 10 years either way, agrees better (Holmes 1983)";
  }
  return "";
}

std::string dplr_words(RecipeStep step) {
  switch (step) {
    case RecipeStep::missing:
      return "a missing ring is a ring of 0";
    case RecipeStep::trend:
      return "divided by the mean width: no curve (Bunn 2010, n = NULL)";
    case RecipeStep::model:
      return std::string(yule_walker_words) + " (Bunn 2010, prewhiten = TRUE)";
    case RecipeStep::logarithm:
      return "none";
    case RecipeStep::master:
      return "Tukey's biweight robust mean of the other cores (Mosteller and Tukey 1977; Cook and "
             "Kairiukstis "
             "1990; Bunn 2008)";
    case RecipeStep::coefficient:
      return "Spearman's correlation of ranks (Spearman 1904; Bunn 2010)";
    case RecipeStep::segments:
      return "50 years, one every 25, from the first multiple of 100 on, none that is not had whole; A where "
             "p, "
             "one-sided, is 0.05 or more (Bunn 2010; Best and Roberts 1975)";
  }
  return "";
}

}  // namespace

std::string_view title_of(RecipeOf recipe) {
  constexpr std::array<std::string_view, all_recipes.size()> titles = {"Vorn", "COFECHA-style", "dplR"};
  return titles[static_cast<std::size_t>(recipe)];
}

std::string_view id_of(RecipeStep step) {
  constexpr std::array<std::string_view, all_steps.size()> ids = {
      "missing", "trend", "model", "logarithm", "master", "coefficient", "segments"};
  return ids[static_cast<std::size_t>(step)];
}

std::string_view title_of(RecipeStep step) {
  constexpr std::array<std::string_view, all_steps.size()> titles = {
      "missing rings", "growth trend", "autoregressive model", "logarithm", "mean of the others",
      "correlation",   "segments"};
  return titles[static_cast<std::size_t>(step)];
}

std::string words_of(RecipeOf recipe, RecipeStep step, const Settings& settings) {
  if (recipe == RecipeOf::program) return program_words(step, settings);
  return recipe == RecipeOf::cofecha ? cofecha_words(step) : dplr_words(step);
}

std::string difference_in_words(const CoreRecipe& core, RecipeOf recipe) {
  const auto ours = core.by(RecipeOf::program).r, theirs = core.by(recipe).r;
  const std::string name(title_of(recipe));
  if (!ours) return "No r of this program: " + core.by(RecipeOf::program).why;
  if (!theirs) return "No r of " + name + ": " + core.by(recipe).why;
  const std::string all = name + ": r " + decimals(*theirs, "%.3f") + ", " +
                          decimals(*theirs - *ours, "%+.3f") + " against this program";
  const auto main = main_step(core.steps_to(recipe));
  if (!main) return all + "; no step makes a difference";
  return all + "; the step that makes most of it: " + std::string(title_of(main->step)) + ", " +
         decimals(main->moves, "%+.3f");
}

std::vector<std::string> agreement_in_words(const CoreRecipe& core) {
  const RecipeFigures& ours = core.by(RecipeOf::program);
  if (ours.r)
    return {difference_in_words(core, RecipeOf::cofecha), difference_in_words(core, RecipeOf::dplr)};
  std::vector<std::string> all = {"No r of this program: " + ours.why};
  for (const RecipeOf other : {RecipeOf::cofecha, RecipeOf::dplr}) {
    const std::string& why = core.by(other).why;
    if (!core.by(other).r && why != ours.why)
      all.push_back("No r of " + std::string(title_of(other)) + ": " + why);
  }
  return all;
}

std::string difference_in_words(const CoreRecipe& core, RecipeOf recipe, std::int64_t first_year) {
  const SegmentEffect* segment = core.segment_to(recipe, first_year);
  if (!segment || segment->steps.empty() || !segment->steps.back().r) return "";
  const auto main = main_step(segment->steps);
  if (!main) return "";
  double all = 0;
  for (const StepEffect& effect : segment->steps) {
    if (!effect.moves) return "";
    all += *effect.moves;
  }
  return std::string(title_of(recipe)) + ": " + decimals(all, "%+.3f") + ", most by " +
         std::string(title_of(main->step)) + ", " + decimals(main->moves, "%+.3f");
}

}  // namespace vorn
