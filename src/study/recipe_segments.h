// The segments of a core by each of three programs.
#pragma once

#include <cstddef>
#include <vector>

#include "study/recipe.h"
#include "study/recipe_cores.h"

namespace vorn {

// Of this program as in its report, by the settings: r with the chronology less the core.
std::vector<RecipeSegment> program_segments(const RecipeCores& cores, std::size_t core,
                                            const Settings& settings);
std::vector<RecipeSegment> holmes_segments(const RecipeCores& cores, std::size_t core);
// `years` are those of all cores as they were measured: where its first segment lies, whether or not it is
// had.
YearSpan dplr_first_segment(YearSpan years);
std::vector<RecipeSegment> dplr_segments(const RecipeCores& cores, std::size_t core, YearSpan years);

}  // namespace vorn
