// Other Programs and Moving Cores beside the page, where there is little room.
#include <gtest/gtest.h>

#include <cmath>

#include "panels/drawn_panels.h"
#include "panels/moving_findings.h"
#include "panels/pen.h"
#include "panels/recipe_findings.h"

namespace vorn {
namespace {

constexpr int narrowest = 520, widest = 2000;

struct Extent {
  double from, to;
};
Extent extent(const Mark& mark) {
  const double x = mark.points.front().x, width = width_of(mark.writing, mark.height);
  if (mark.kind == Mark::Kind::label && mark.align == Align::right) return {x - width, x};
  return {x, x + width};
}

// Writing of one line does not stand on writing, nor outside the panel.
void expect_room(const Panel& panel, int width) {
  std::vector<const Mark*> all;
  for (const Mark& mark : panel.page.marks()) {
    if (mark.kind == Mark::Kind::text || mark.kind == Mark::Kind::label) all.push_back(&mark);
  }
  ASSERT_GT(all.size(), 5u);
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Extent one = extent(*all[i]);
    EXPECT_GE(one.from, 0) << width << ": " << all[i]->writing;
    EXPECT_LE(one.to, width) << width << ": " << all[i]->writing;
    for (std::size_t j = i + 1; j < all.size(); ++j) {
      if (std::abs(all[i]->points.front().y - all[j]->points.front().y) > 4) continue;
      const Extent other = extent(*all[j]);
      EXPECT_FALSE(one.from < other.to && other.from < one.to)
          << width << ": " << all[i]->writing << " and " << all[j]->writing;
    }
  }
}

TEST(NarrowPanels, OtherProgramsSetNoFigureOnAnother) {
  RecipeFindings found{"site.rwl", "CORE01", {}, {0, 454}};
  for (RecipeFigures& figures : found.recipe.figures) {
    figures = {.r = -0.585, .order = 26, .sensitivity = 0.344, .weighted_sensitivity = 0.3};
    figures.segments = {{{1800, 1849}, {1800, 1849}, -0.31, {}, true, true}};
  }
  for (auto& steps : found.recipe.steps)
    steps = {{RecipeStep::model, 0.5, -0.026}, {RecipeStep::trend, 0.4, -0.1}};
  auto findings = std::make_shared<Findings>();
  findings->recipe = std::make_shared<const RecipeFindings>(found);
  PanelInputs inputs;
  inputs.findings = findings;
  for (int width = narrowest; width < widest; width += 40)
    expect_room(draw_recipe(inputs, {.width = width, .height = 4000}), width);
}

TEST(NarrowPanels, MovingCoresSetNoFigureOnAnother) {
  const MovedFile left{"a-long-name-of-a-site.rwl", {134, -0.644, 0.494, 0.971}, {133, -0.646, 0.498, 0.97}};
  const MovingFindings found{{"CORE01"}, left, left};
  auto findings = std::make_shared<Findings>();
  findings->moving = std::make_shared<const MovingFindings>(found);
  PanelInputs inputs;
  inputs.findings = findings;
  for (int width = narrowest; width < widest; width += 40)
    expect_room(draw_moving(inputs, {.width = width, .height = 1000}), width);
}

}  // namespace
}  // namespace vorn
