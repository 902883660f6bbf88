// The steps of the three recipes in words, each with its source.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "study/recipe.h"

namespace vorn {

// "Vorn", "COFECHA-style", "dplR"
std::string_view title_of(RecipeOf recipe);
// "trend", as rows have it; "growth trend", as people read it.
std::string_view id_of(RecipeStep step);
std::string_view title_of(RecipeStep step);

// What is done in a step: "cubic smoothing spline of 32 years at 50 %, divided (Cook and Peters 1981)".
std::string words_of(RecipeOf recipe, RecipeStep step, const Settings& settings);

// Which step makes the difference between this program and the other recipe, in a sentence; what is in the
// way where that cannot be told.
std::string difference_in_words(const CoreRecipe& core, RecipeOf recipe);
// The same of the segment that begins in that year: "dplR: +0.094, most by growth trend, +0.102"; empty where
// one of them has no such segment, or they do not differ.
std::string difference_in_words(const CoreRecipe& core, RecipeOf recipe, std::int64_t first_year);
// Both of the others, or why there is nothing to compare: each sentence once.
std::vector<std::string> agreement_in_words(const CoreRecipe& core);

}  // namespace vorn
