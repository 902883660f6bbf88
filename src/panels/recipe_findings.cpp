#include "panels/recipe_findings.h"

#include <cmath>

namespace vorn {

std::shared_ptr<const RecipeFindings> recipe_findings(const Situation& now,
                                                      const std::vector<SharedStudied>& cores,
                                                      const PairFindings* pair, const Studies::GoOn& go_on) {
  if (!pair) return nullptr;
  const std::size_t place = static_cast<std::size_t>(pair->entry) - 1;
  std::vector<SeriesView> widths;
  widths.reserve(cores.size());
  for (const SharedStudied& core : cores) widths.push_back(core->widths());
  widths[place] = pair->core->widths();
  const auto found = recipes(widths, {&place, 1}, now.settings, [&](double share) {
    return go_on("figures beside other programs, " + std::to_string(std::lround(100 * share)) + " %");
  });
  if (!found) return nullptr;
  return std::make_shared<const RecipeFindings>(
      RecipeFindings{now.cores_file, pair->core->series().name, now.settings, found->front()});
}

}  // namespace vorn
