// `stats --recipe`: the figures of each core as three programs have them, side by side.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "batch/table.h"
#include "batch/verbs.h"
#include "study/recipe.h"

namespace vorn {

// The verb that stands in the place of `stats`. Of each core a row for r, for each figure of its widths, for
// each segment and for each step; columns are in docs/command-line.md.
const Verb& recipe_verb();

std::vector<std::string_view> recipe_columns();
// The rows of one core.
std::vector<Row> recipe_rows(const std::string& file, const std::string& core, const CoreRecipe& recipe,
                             const Settings& settings);

// What all three have of one segment: the places in their lists, none where they have none of it.
struct SegmentBeside {
  YearSpan segment = {};
  std::array<const RecipeSegment*, all_recipes.size()> by = {};
};
// By year. A segment that begins in the same year is the same one.
std::vector<SegmentBeside> segments_side_by_side(const CoreRecipe& recipe);
// "A", "B", "AB", or nothing.
std::string flag_of(const RecipeSegment& segment);

}  // namespace vorn
