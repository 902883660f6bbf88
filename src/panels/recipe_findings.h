// The figures of the core on the page beside those of other programs.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "panels/findings.h"
#include "study/recipe.h"

namespace vorn {

struct RecipeFindings {
  std::string file, core;
  Settings settings;
  CoreRecipe recipe;
};

// `cores` are those of the file; the pair's core stands in the place of the stored one. Null where no core is
// on the page, or `go_on` said no.
std::shared_ptr<const RecipeFindings> recipe_findings(const Situation& now,
                                                      const std::vector<SharedStudied>& cores,
                                                      const PairFindings* pair, const Studies::GoOn& go_on);

}  // namespace vorn
