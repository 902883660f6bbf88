// In the place of the panels Other Programs and Moving Cores where the program runs in a browser: what they
// compute would make what is sent there a tenth larger.
#include "panels/drawn_panels.h"
#include "panels/moving_findings.h"
#include "panels/panel_words.h"
#include "panels/recipe_findings.h"

namespace vorn {

struct MovingStudy::Own {};
struct MovingStudy::Joined {};

std::shared_ptr<const RecipeFindings> recipe_findings(const Situation&, const std::vector<SharedStudied>&,
                                                      const PairFindings*, const Studies::GoOn&) {
  return nullptr;
}

std::shared_ptr<const MovingFindings> MovingStudy::study(const Situation&, const std::vector<SharedStudied>&,
                                                         const PairFindings*) {
  own_.reset();
  return nullptr;
}

PanelTable recipe_table(const PanelInputs&) {
  return {};
}

PanelTable moving_table(const PanelInputs&) {
  return {};
}

Panel draw_recipe(const PanelInputs&, const PanelView& view) {
  return words_alone(
      view, "Other programs",
      "Not in the browser: the desktop program and \"vorn stats --recipe\" have these figures.");
}

Panel draw_moving(const PanelInputs&, const PanelView& view) {
  return words_alone(view, "Moving cores",
                     "Not in the browser: the desktop program and \"vorn stats --move\" have these figures.");
}

}  // namespace vorn
