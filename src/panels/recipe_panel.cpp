// Other Programs: the figures of the core on the page, as this program and two others have them.
#include <algorithm>
#include <cmath>

#include "batch/recipe_rows.h"
#include "panels/drawn_panels.h"
#include "panels/panel_words.h"
#include "panels/pen.h"
#include "panels/recipe_findings.h"
#include "study/recipe_words.h"

namespace vorn {
namespace {

constexpr int head = 124, row_height = 40;
constexpr double line_height = small * line_step;
constexpr double narrowest_column = 100, column_of_small = 140, widest_column = 250, least_gap = 10;
constexpr int narrow = 840;  // from here on down figures and their names are small

using Texts = std::array<std::string, all_recipes.size()>;

std::string three_decimals(double value) {
  return std::isfinite(value) ? fixed(value, 3) : "none";
}

std::string years_text(YearSpan years) {
  return std::to_string(years.first) + " to " + std::to_string(years.last);
}

class RecipePanel {
 public:
  RecipePanel(const PanelInputs& inputs, const PanelView& view, const RecipeFindings& found)
      : in_(inputs), view_(view), found_(found), core_(found.recipe), pen_(view), y_(head - view.scroll) {
    const double room = view.width - 2.0 * margin, share = room / (2 + all_recipes.size());
    column_ = std::clamp(share, std::min(narrowest_column, room / (1 + all_recipes.size())), widest_column);
    if (view.width <= narrow) {
      size_ = small;
      column_ = std::min(column_, column_of_small);
    }
  }

  Panel draw() {
    figures();
    section("Segments");
    segments();
    section("What each does, step by step");
    words("The figures say by how much r moves as a step is done their way, the mean of the others first");
    for (const RecipeStep step : all_steps) this->step(step);
    heading();
    return pen_.done(static_cast<int>(y_) + view_.scroll + margin);
  }

 private:
  bool is_seen(double height) const { return y_ + height > head && y_ < view_.height; }
  double end_of(std::size_t k) const {
    return view_.width - margin - column_ * static_cast<double>(all_recipes.size() - 1 - k);
  }
  double room_for_names() const { return end_of(0) - column_ - margin - 10; }

  void heading() {
    pen_.begin_head(head - 6);
    pen_.fitted(margin, 20, view_.width - 2.0 * margin, core_name() + " by three recipes" + in_older(in_),
                colour::ink, heading_size);
    const std::string rings = std::to_string(core_.rings) + " rings" +
                              (core_.missing > 0 ? ", " + std::to_string(core_.missing) + " missing" : "");
    pen_.fitted(margin, head - 40, room_for_names(), rings, colour::muted, small);
    for (std::size_t k = 0; k < all_recipes.size(); ++k) {
      pen_.right(end_of(k), head - 40, fitting_title(all_recipes[k]), colour::muted, small);
    }
    pen_.line(0, head - 6, view_.width, head - 6, colour::hairline);
  }

  // "COFECHA-style", shorter where the column is narrow.
  std::string_view fitting_title(RecipeOf recipe) const {
    const std::string_view whole = title_of(recipe), first = whole.substr(0, whole.find('-'));
    if (width_of(whole, small) + least_gap < column_) return whole;
    return width_of(first, small) + least_gap < column_ || recipe != RecipeOf::cofecha ? first : "Holmes";
  }
  std::string core_name() const { return found_.core.empty() ? "The core" : found_.core; }

  // A name and what each of the three has.
  void row(const std::string& name, const Texts& texts, const Texts& tips = {}) {
    if (is_seen(row_height)) {
      pen_.fitted(margin, y_ + 9, room_for_names(), name, colour::ink, size_);
      for (std::size_t k = 0; k < texts.size(); ++k) {
        pen_.right(end_of(k), y_ + 9, texts[k], texts[k] == "none" ? colour::muted : colour::ink, size_);
        if (!tips[k].empty()) tip(k, tips[k]);
      }
      pen_.line(margin, y_ + row_height, view_.width - margin, y_ + row_height, colour::hairline);
    }
    y_ += row_height;
  }

  void tip(std::size_t k, const std::string& words) {
    const int y = static_cast<int>(y_);
    pen_.spot({{static_cast<int>(end_of(k) - column_) + 10, y, static_cast<int>(end_of(k)), y + row_height},
               words,
               {},
               {}});
  }

  void words(const std::string& text, Colour colour = colour::muted) {
    for (const std::string& line : wrapped(text, view_.width - 2.0 * margin, small)) {
      if (is_seen(line_height)) pen_.text(margin, y_, line, colour, small);
      y_ += line_height;
    }
  }

  void section(const std::string& title) {
    y_ += 24;
    if (is_seen(row_height))
      pen_.fitted(margin, y_, view_.width - 2.0 * margin, title, colour::ink, heading_size);
    y_ += 44;
  }

  template <class Of>
  Texts each(Of of) const {
    Texts texts;
    for (std::size_t k = 0; k < all_recipes.size(); ++k) texts[k] = of(core_.by(all_recipes[k]));
    return texts;
  }

  void figure(const std::string& name, double RecipeFigures::*member) {
    row(name, each([member](const RecipeFigures& one) { return three_decimals(one.*member); }));
  }

  void figures() {
    row("r with the others",
        each([](const RecipeFigures& one) { return one.r ? three_decimals(*one.r) : "none"; }),
        each([](const RecipeFigures& one) { return one.p ? "p " + three_decimals(*one.p) : one.why; }));
    row("order of the model", each([](const RecipeFigures& one) { return std::to_string(one.order); }));
    figure("AR(1)", &RecipeFigures::autocorrelation);
    figure("mean sensitivity", &RecipeFigures::sensitivity);
    figure("skew", &RecipeFigures::skew);
    figure("Gini coefficient", &RecipeFigures::gini);
    y_ += 12;
    for (const std::string& sentence : agreement_in_words(core_)) words(sentence, colour::ink);
  }

  static std::string segment_text(const RecipeSegment* segment) {
    if (!segment) return "";
    const std::string flag = flag_of(*segment);
    return short_r(segment->r) + (flag.empty() ? "" : " " + flag);
  }

  std::string segment_tip(RecipeOf recipe, const RecipeSegment* segment) const {
    if (!segment) return "";
    const std::string why = difference_in_words(core_, recipe, segment->segment.first);
    return std::string(title_of(recipe)) + ", " + years_text(segment->years) + ": r " +
           three_decimals(segment->r) + (segment->p ? ", p " + three_decimals(*segment->p) : "") +
           (why.empty() ? "" : ". " + why);
  }

  void segments() {
    for (const SegmentBeside& beside : segments_side_by_side(core_)) {
      Texts texts, tips;
      for (std::size_t k = 0; k < all_recipes.size(); ++k) {
        texts[k] = segment_text(beside.by[k]);
        tips[k] = segment_tip(all_recipes[k], beside.by[k]);
        if (beside.by[k] && beside.by[k]->low) mark(k, colour::pale_red);
      }
      row(years_text(beside.segment), texts, tips);
    }
    for (const RecipeOf one : all_recipes) {
      const std::string& why = core_.by(one).why_no_segments;
      if (!why.empty()) words(std::string(title_of(one)) + ": " + why);
    }
  }

  void mark(std::size_t k, Colour colour) {
    if (!is_seen(row_height)) return;
    const int y = static_cast<int>(y_);
    pen_.area({static_cast<int>(end_of(k) - column_) + 14, y + 3, static_cast<int>(end_of(k)) + 6,
               y + row_height - 2},
              colour);
  }

  // By how much r moves; the step that moves it most is marked.
  std::string moves_text(std::size_t k, RecipeStep step) {
    const auto& steps = core_.steps_to(all_recipes[k]);
    const auto found = std::ranges::find(steps, step, &StepEffect::step);
    if (found == steps.end() || !found->moves) return "";
    const auto main = main_step(core_.steps_to(all_recipes[k]));
    if (main && main->step == step) mark(k, colour::pale_amber);
    const double moves = *found->moves;
    return std::abs(moves) < 0.0005 ? "0" : (moves > 0 ? "+" : "") + fixed(moves, 3);
  }

  void step(RecipeStep step) {
    Texts texts;
    for (std::size_t k = 0; k < all_recipes.size(); ++k) texts[k] = moves_text(k, step);
    row(std::string(title_of(step)), texts);
    y_ += 6;
    for (const RecipeOf one : all_recipes)
      words(std::string(title_of(one)) + ": " + words_of(one, step, found_.settings));
    y_ += 12;
  }

  const PanelInputs& in_;
  PanelView view_;
  const RecipeFindings& found_;
  const CoreRecipe& core_;
  Pen pen_;
  double y_;
  double column_;
  double size_ = body;  // of figures and their names
};

}  // namespace

PanelTable recipe_table(const PanelInputs& inputs) {
  PanelTable table{recipe_columns(), {}};
  if (!inputs.findings || !inputs.findings->recipe) return table;
  const RecipeFindings& found = *inputs.findings->recipe;
  table.rows = recipe_rows(found.file, found.core, found.recipe, found.settings);
  return table;
}

Panel draw_recipe(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.findings || !inputs.findings->recipe)
    return words_alone(view, "Other programs", waiting_words(inputs, "No core is on the cross-dating page."));
  return RecipePanel(inputs, view, *inputs.findings->recipe).draw();
}

}  // namespace vorn
