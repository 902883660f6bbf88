// The recipes against base R: made-up cores (make_cores.R) and what recipe.R gives for them, step by step.
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

#include "study/recipe.h"
#include "study/recipe_cores.h"
#include "study/recipe_segments.h"
#include "support/places.h"
#include "workspace/owned_series.h"

namespace vorn {
namespace {

constexpr double close = 1e-9;

using Fields = std::vector<std::string>;

std::vector<Fields> rows_of(const char* name) {
  std::ifstream in(source_folder() / "tests" / "recipe" / name);
  std::vector<Fields> rows;
  std::string line;
  std::getline(in, line);
  while (std::getline(in, line)) {
    std::istringstream of(line + ",");
    Fields fields;
    for (std::string field; std::getline(of, field, ',');) fields.push_back(field);
    rows.push_back(fields);
  }
  return rows;
}

struct Figure {
  std::string name;
  int year = 0;
  double value = 0, p = 0;
};

class RecipeInR : public ::testing::Test {
 protected:
  RecipeInR() {
    for (const Fields& ring : rows_of("cores.csv")) {
      if (names_.empty() || names_.back() != ring[0]) {
        names_.push_back(ring[0]);
        widths_.emplace_back();
        firsts_.push_back(std::stoi(ring[1]));
      }
      widths_.back().push_back(std::stod(ring[2]));
    }
    for (std::size_t k = 0; k < names_.size(); ++k) cores_.push_back({firsts_[k], widths_[k]});
    for (const Fields& row : rows_of("figures.csv"))
      figures_[row[0]].push_back({row[1], row[2].empty() ? 0 : std::stoi(row[2]), std::stod(row[3]),
                                  row.size() < 5 || row[4].empty() ? -1 : std::stod(row[4])});
    all_ = *recipes(cores_, wanted(), settings_, [](double) { return true; });
  }

  std::vector<std::size_t> wanted() const {
    std::vector<std::size_t> all;
    for (std::size_t k = 0; k < cores_.size(); ++k) all.push_back(k);
    return all;
  }
  std::vector<Figure> in_r(std::size_t core, const std::string& name) const {
    std::vector<Figure> found;
    for (const Figure& figure : figures_.at(names_[core])) {
      if (figure.name == name) found.push_back(figure);
    }
    return found;
  }
  double one(std::size_t core, const std::string& name) const { return in_r(core, name).at(0).value; }

  void expect_segments(std::size_t core, RecipeOf recipe, const std::string& name) const {
    const auto& ours = all_[core].by(recipe).segments;
    const auto theirs = in_r(core, name);
    ASSERT_EQ(ours.size(), theirs.size()) << names_[core] << " " << name;
    for (std::size_t k = 0; k < ours.size(); ++k) {
      EXPECT_EQ(ours[k].segment.first, theirs[k].year) << names_[core] << " " << name;
      EXPECT_NEAR(ours[k].r, theirs[k].value, close) << names_[core] << " " << name << " " << theirs[k].year;
      if (ours[k].p) {
        EXPECT_NEAR(*ours[k].p, theirs[k].p, close) << names_[core] << " " << theirs[k].year;
      }
    }
  }

  // Each value of a step, year by year, of the cores of which R's are kept.
  void expect_series(const RecipeCores& made, const std::string& way) const {
    for (const std::size_t core : wanted()) {
      const std::vector<double>& master = made.master(core);
      for (const Figure& figure : in_r(core, way + "_ready"))
        EXPECT_NEAR(made.core(core).view().at(figure.year), figure.value, close)
            << names_[core] << figure.year;
      for (const Figure& figure : in_r(core, way + "_others"))
        EXPECT_NEAR(master[static_cast<std::size_t>(figure.year - firsts_[core])], figure.value, close)
            << names_[core] << figure.year;
    }
  }

  Settings settings_;
  std::vector<std::string> names_;
  std::vector<std::vector<double>> widths_;
  std::vector<int> firsts_;
  std::vector<SeriesView> cores_;
  std::map<std::string, std::vector<Figure>> figures_;
  std::vector<CoreRecipe> all_;
};

TEST_F(RecipeInR, WidthsHaveItsFigures) {
  for (const std::size_t core : wanted()) {
    const RecipeFigures& ours = all_[core].by(RecipeOf::dplr);
    EXPECT_NEAR(ours.sensitivity, one(core, "sensitivity"), close);
    EXPECT_NEAR(ours.weighted_sensitivity, one(core, "weighted_sensitivity"), close);
    EXPECT_NEAR(ours.gini, one(core, "gini"), close);
    EXPECT_NEAR(ours.skew, one(core, "skew"), close);
    EXPECT_NEAR(ours.autocorrelation, one(core, "ar1"), close);
  }
}

TEST_F(RecipeInR, EveryValueOfEveryStepIsItsOwn) {
  const auto go_on = [] { return true; };
  expect_series({cores_, Ways(RecipeOf::cofecha), settings_, go_on}, "holmes");
  expect_series({cores_, Ways(RecipeOf::dplr), settings_, go_on}, "dplr");
  EXPECT_GT(in_r(1, "dplr_ready").size() + in_r(3, "holmes_others").size(), 200u);
}

TEST_F(RecipeInR, OrdersAndCorrelationsAreItsOwn) {
  for (const std::size_t core : wanted()) {
    const CoreRecipe& ours = all_[core];
    EXPECT_EQ(ours.by(RecipeOf::cofecha).order, one(core, "holmes_order"));
    EXPECT_EQ(ours.by(RecipeOf::dplr).order, one(core, "dplr_order"));
    EXPECT_NEAR(ours.by(RecipeOf::cofecha).r.value(), one(core, "holmes_r"), close);
    EXPECT_NEAR(ours.by(RecipeOf::dplr).r.value(), one(core, "dplr_r"), close);
    EXPECT_NEAR(ours.by(RecipeOf::dplr).p.value(), in_r(core, "dplr_r").at(0).p, close);
    EXPECT_FALSE(ours.by(RecipeOf::cofecha).p);
  }
}

TEST_F(RecipeInR, SegmentsAreItsOwn) {
  int low = 0, all = 0, better_elsewhere = 0;
  for (const std::size_t core : wanted()) {
    expect_segments(core, RecipeOf::cofecha, "holmes_segment");
    expect_segments(core, RecipeOf::dplr, "dplr_segment");
    for (const RecipeSegment& segment : all_[core].by(RecipeOf::cofecha).segments) {
      const auto in_order =
          static_cast<std::size_t>(&segment - all_[core].by(RecipeOf::cofecha).segments.data());
      EXPECT_EQ(segment.lagging, in_r(core, "holmes_better_elsewhere").at(in_order).value == 1)
          << names_[core];
      better_elsewhere += segment.lagging;
    }
    for (const RecipeSegment& segment : all_[core].by(RecipeOf::dplr).segments) {
      low += segment.low;
      ++all;
    }
  }
  EXPECT_GT(low, 0);
  EXPECT_LT(low, all);
  EXPECT_GT(better_elsewhere, 0);
}

}  // namespace
}  // namespace vorn
