#include "batch/recipe_rows.h"

#include <algorithm>
#include <map>
#include <optional>

#include "study/recipe_words.h"

namespace vorn {
namespace {

using Cells = std::array<Cell, all_recipes.size()>;

Cell known(const std::optional<double>& value) {
  return value ? number(*value) : Cell();
}

// One line of them all; the columns behind `figure`.
struct Line {
  std::string figure;
  std::optional<YearSpan> years = {};
  Cells values = {}, flags = {};
  Cell p = {};
  std::string words = {};
};

Row row_of(const std::string& file, const std::string& core, const Line& line) {
  Row row{file, core, line.figure};
  row.push_back(line.years ? Cell(line.years->first) : Cell());
  row.push_back(line.years ? Cell(line.years->last) : Cell());
  for (std::size_t k = 0; k < all_recipes.size(); ++k) {
    row.push_back(line.values[k]);
    row.push_back(line.flags[k]);
  }
  row.push_back(line.p);
  row.push_back(line.words.empty() ? Cell() : Cell(line.words));
  return row;
}

template <class Of>
Cells each(const CoreRecipe& recipe, Of of) {
  Cells cells;
  for (const RecipeOf one : all_recipes) cells[static_cast<std::size_t>(one)] = of(recipe.by(one));
  return cells;
}

Line line_of_r(const CoreRecipe& recipe) {
  Line line{"r", {}, each(recipe, [](const RecipeFigures& figures) { return known(figures.r); })};
  line.p = known(recipe.by(RecipeOf::dplr).p);
  for (const std::string& sentence : agreement_in_words(recipe))
    line.words += (line.words.empty() ? "" : ". ") + sentence;
  return line;
}

void add_widths(const CoreRecipe& recipe, std::vector<Line>& lines) {
  const auto add = [&](const char* figure, double RecipeFigures::*member) {
    Line line{figure, {}, each(recipe, [member](const RecipeFigures& one) { return number(one.*member); })};
    if (recipe.missing > 0) line.words = std::string(title_of(RecipeStep::missing)) + " make the difference";
    lines.push_back(std::move(line));
  };
  lines.push_back(
      {"ar_order", {}, each(recipe, [](const RecipeFigures& one) { return Cell(std::int64_t{one.order}); })});
  add("ar1", &RecipeFigures::autocorrelation);
  add("mean_sensitivity", &RecipeFigures::sensitivity);
  add("weighted_sensitivity", &RecipeFigures::weighted_sensitivity);
  add("skew", &RecipeFigures::skew);
  add("gini", &RecipeFigures::gini);
}

void add_segments(const CoreRecipe& recipe, std::vector<Line>& lines) {
  for (const SegmentBeside& beside : segments_side_by_side(recipe)) {
    Line line{"segment", beside.segment};
    for (std::size_t k = 0; k < all_recipes.size(); ++k) {
      if (!beside.by[k]) continue;
      line.values[k] = number(beside.by[k]->r);
      const std::string flag = flag_of(*beside.by[k]);
      if (!flag.empty()) line.flags[k] = flag;
      if (beside.by[k]->p) line.p = known(beside.by[k]->p);
      const std::string why = difference_in_words(recipe, all_recipes[k], beside.segment.first);
      if (!why.empty()) line.words += (line.words.empty() ? "" : ". ") + why;
    }
    lines.push_back(std::move(line));
  }
}

// Why one of them has no segment.
void add_reasons(const CoreRecipe& recipe, std::vector<Line>& lines) {
  for (const RecipeOf one : all_recipes) {
    const std::string& why = recipe.by(one).why_no_segments;
    if (!why.empty())
      lines.push_back({.figure = "segment", .words = std::string(title_of(one)) + ": " + why});
  }
}

// By how much it changes r.
Cell moves_of(const CoreRecipe& recipe, RecipeOf of, RecipeStep step) {
  const auto& steps = recipe.steps_to(of);
  const auto found = std::ranges::find(steps, step, &StepEffect::step);
  return found == steps.end() ? Cell() : known(found->moves);
}

void add_steps(const CoreRecipe& recipe, const Settings& settings, std::vector<Line>& lines) {
  for (const RecipeStep step : all_steps) {
    Line line{std::string("step ") + std::string(id_of(step))};
    for (const RecipeOf one : all_recipes) {
      line.values[static_cast<std::size_t>(one)] = moves_of(recipe, one, step);
      line.words += std::string(line.words.empty() ? "" : ". ") + std::string(title_of(one)) + ": " +
                    words_of(one, step, settings);
    }
    lines.push_back(std::move(line));
  }
}

std::vector<std::size_t> wanted_of(const Workspace& w, const std::vector<std::string>& names) {
  std::vector<std::size_t> wanted;
  for (int i = 1; i <= w.nc; ++i) {
    const std::string name(without_blanks(w.nam(i).view()));
    if (names.empty() || std::ranges::find(names, name) != names.end())
      wanted.push_back(static_cast<std::size_t>(i) - 1);
  }
  return wanted;
}

void rows_of_file(Collection& collection, const VerbSwitches& switches,
                  const std::function<void(const Row&)>& add) {
  if (!collection.has_cores()) return;
  const Workspace& w = collection.state();
  const auto wanted = wanted_of(w, switches.cores);
  const auto all = recipes(collection.cores(), wanted, w, [](double) { return true; });
  for (const CoreRecipe& one : *all) {
    const std::string core(w.nam(static_cast<int>(one.core) + 1).trimmed());
    for (const Row& row : recipe_rows(collection.path(), core, one, w)) add(row);
  }
}

}  // namespace

const Verb& recipe_verb() {
  static const Verb verb{{"recipe", recipe_columns()},
                         "figures beside those of other programs",
                         rows_of_file,
                         [](const Row&, const VerbSwitches&) { return Severity::note; }};
  return verb;
}

std::vector<std::string_view> recipe_columns() {
  return {"file",    "series",       "figure", "from",      "to",     "vorn", "vorn_flag",
          "cofecha", "cofecha_flag", "dplr",   "dplr_flag", "dplr_p", "words"};
}

std::string flag_of(const RecipeSegment& segment) {
  return std::string(segment.low ? "A" : "") + (segment.lagging ? "B" : "");
}

std::vector<SegmentBeside> segments_side_by_side(const CoreRecipe& recipe) {
  std::map<std::int64_t, SegmentBeside> all;
  for (const RecipeOf one : all_recipes) {
    for (const RecipeSegment& segment : recipe.by(one).segments) {
      SegmentBeside& beside =
          all.try_emplace(segment.segment.first, SegmentBeside{segment.segment}).first->second;
      beside.by[static_cast<std::size_t>(one)] = &segment;
    }
  }
  std::vector<SegmentBeside> sorted;
  sorted.reserve(all.size());
  for (const auto& [year, beside] : all) sorted.push_back(beside);
  return sorted;
}

std::vector<Row> recipe_rows(const std::string& file, const std::string& core, const CoreRecipe& recipe,
                             const Settings& settings) {
  std::vector<Line> lines{line_of_r(recipe)};
  add_widths(recipe, lines);
  add_segments(recipe, lines);
  add_reasons(recipe, lines);
  add_steps(recipe, settings, lines);
  std::vector<Row> rows;
  rows.reserve(lines.size());
  for (const Line& line : lines) rows.push_back(row_of(file, core, line));
  return rows;
}

}  // namespace vorn
