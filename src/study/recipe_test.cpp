#include "study/recipe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <random>

#include "study/recipe_words.h"

namespace vorn {
namespace {

using Widths = std::vector<double>;

// Cores of one site: what they have in common and what is their own, by a fixed seed.
class Recipes : public ::testing::Test {
 protected:
  Recipes() : random_(1) {
    for (double& value : common_) value = noise();
  }

  double noise() { return std::normal_distribution<double>(0, 0.25)(random_); }

  void add_core(int first, std::size_t rings) {
    Widths widths;
    for (std::size_t k = 0; k < rings; ++k)
      widths.push_back(std::exp(common_[static_cast<std::size_t>(first - 1700) + k] + noise()) * 1.2);
    add(first, widths);
  }
  void add(int first, const Widths& widths) {
    widths_.push_back(std::make_unique<Widths>(widths));
    present_.push_back(std::make_unique<bool[]>(widths.size()));
    std::fill_n(present_.back().get(), widths.size(), true);
    cores_.push_back({first, *widths_.back(), {present_.back().get(), widths.size()}});
  }
  CoreRecipe of(std::size_t core) const {
    return recipes(cores_, {&core, 1}, settings_, [](double) { return true; })->front();
  }

  Settings settings_;
  std::mt19937 random_;
  Widths common_ = Widths(400);
  std::vector<std::unique_ptr<Widths>> widths_;
  std::vector<std::unique_ptr<bool[]>> present_;
  std::vector<SeriesView> cores_;
};

TEST_F(Recipes, OfOneCoreOnlySayThatThereAreNoOthers) {
  add_core(1700, 200);
  const CoreRecipe one = of(0);
  for (const RecipeOf recipe : all_recipes) {
    EXPECT_FALSE(one.by(recipe).r);
    EXPECT_EQ(one.by(recipe).why, "one core only: there are no others to compare it with");
    EXPECT_TRUE(one.by(recipe).segments.empty());
    EXPECT_GT(one.by(recipe).sensitivity, 0);
  }
}

TEST_F(Recipes, OfACoreOfOneWidthSayThatNothingVaries) {
  for (int k = 0; k < 4; ++k) add_core(1700, 150);
  add(1710, Widths(120, 1.1));
  const CoreRecipe constant = of(4);
  for (const RecipeOf recipe : all_recipes) {
    EXPECT_FALSE(constant.by(recipe).r);
    EXPECT_EQ(constant.by(recipe).why, "all its rings have one width: nothing varies");
  }
  EXPECT_TRUE(std::isnan(constant.by(RecipeOf::dplr).autocorrelation));
  for (const RecipeOf recipe : all_recipes) EXPECT_TRUE(of(0).by(recipe).r);
}

TEST_F(Recipes, OfAShortCoreSayWhyThereAreNoSegments) {
  for (int k = 0; k < 4; ++k) add_core(1700, 150);
  add_core(1720, 45);
  const CoreRecipe brief = of(4);
  EXPECT_EQ(brief.by(RecipeOf::dplr).why_no_segments, "45 rings, fewer than a segment of 50 years");
  EXPECT_EQ(brief.by(RecipeOf::cofecha).why_no_segments, "45 rings, fewer than a segment of 50 years");
  EXPECT_TRUE(brief.by(RecipeOf::program).r);
}

TEST_F(Recipes, OfACoreBesideTheOthersSayHowFewYearsTheyShare) {
  for (int k = 0; k < 3; ++k) add_core(1700, 100);
  add_core(1795, 80);
  const CoreRecipe late = of(3);
  EXPECT_EQ(late.by(RecipeOf::program).why, "5 years in common with the others, fewer than 40");
  EXPECT_NE(late.by(RecipeOf::dplr).why.find("fewer than 10"), std::string::npos);
  EXPECT_EQ(difference_in_words(late, RecipeOf::dplr),
            "No r of this program: 5 years in common with the others, fewer than 40");
  // Each reason once.
  EXPECT_EQ(
      agreement_in_words(late),
      (std::vector<std::string>{"No r of this program: 5 years in common with the others, fewer than 40",
                                "No r of COFECHA-style: " + late.by(RecipeOf::cofecha).why,
                                "No r of dplR: " + late.by(RecipeOf::dplr).why}));
}

TEST_F(Recipes, OfAFileThatEndsTooEarlySayWhereDplrsSegmentsBegin) {
  for (int k = 0; k < 4; ++k) add_core(1735, 60);
  EXPECT_EQ(of(0).by(RecipeOf::dplr).why_no_segments,
            "the first segment would be 1800 to 1849, and the last ring of the file is of 1794");
  EXPECT_EQ(of(0).by(RecipeOf::cofecha).why_no_segments, "");
}

// The others go on before its first ring and behind its last one: there, too, a segment may agree better.
TEST_F(Recipes, MoveSegmentsBeyondTheEndsOfTheCore) {
  for (int k = 0; k < 4; ++k) add_core(1700, 200);
  Widths early = *widths_[0];
  early.erase(early.begin(), early.begin() + 5);
  early.resize(130);
  add(1700, early);  // dated five years too early
  add_core(1700, 130);
  const CoreRecipe misdated = of(4), dated = of(5);
  const auto& segments = misdated.by(RecipeOf::cofecha).segments;
  ASSERT_FALSE(segments.empty());
  EXPECT_EQ(segments.back().years.last, 1829);
  for (const RecipeSegment& segment : segments) EXPECT_TRUE(segment.lagging) << segment.segment.first;
  for (const RecipeSegment& segment : dated.by(RecipeOf::cofecha).segments)
    EXPECT_FALSE(segment.lagging) << segment.segment.first;
}

TEST_F(Recipes, GoFromThisProgramToTheOtherStepByStep) {
  for (int k = 0; k < 6; ++k) add_core(1700, 180);
  const CoreRecipe one = of(2);
  for (const RecipeOf recipe : {RecipeOf::cofecha, RecipeOf::dplr}) {
    double r = one.by(RecipeOf::program).r.value(), largest = 0;
    for (const StepEffect& effect : one.steps_to(recipe)) {
      r += effect.moves.value();
      largest = std::max(largest, std::abs(*effect.moves));
    }
    EXPECT_NEAR(r, one.by(recipe).r.value(), 1e-12);
    EXPECT_EQ(std::abs(main_step(one.steps_to(recipe)).value().moves), largest);
    EXPECT_EQ(one.steps_to(recipe).size(), all_steps.size() - 1);
  }
}

TEST_F(Recipes, GoThatWayInEachSegmentToo) {
  for (int k = 0; k < 6; ++k) add_core(1700 + 7 * k, 180);
  const CoreRecipe one = of(2);
  int compared = 0;
  for (const RecipeOf recipe : {RecipeOf::cofecha, RecipeOf::dplr}) {
    for (const RecipeSegment& ours : one.by(RecipeOf::program).segments) {
      const SegmentEffect* effect = one.segment_to(recipe, ours.segment.first);
      ASSERT_NE(effect, nullptr);
      const auto& all = one.by(recipe).segments;
      const auto theirs =
          std::ranges::find_if(all, [&](const auto& other) { return other.segment == ours.segment; });
      if (theirs == all.end()) {
        EXPECT_EQ(difference_in_words(one, recipe, ours.segment.first), "");
        continue;
      }
      double r = ours.r;
      for (const StepEffect& step : effect->steps) r += step.moves.value();
      EXPECT_NEAR(r, theirs->r, 1e-12);
      EXPECT_NE(difference_in_words(one, recipe, ours.segment.first).find("most by"), std::string::npos);
      ++compared;
    }
  }
  EXPECT_GT(compared, 6);
}

// With this program's way the same as Holmes's but for the coefficient nothing else can move r.
TEST_F(Recipes, NameTheStepThatIsDoneOtherwise) {
  for (int k = 0; k < 6; ++k) add_core(1700, 180);
  settings_.splineon = false;
  const CoreRecipe one = of(0);
  const auto moves = [&](RecipeStep step) {
    const auto& steps = one.steps_to(RecipeOf::cofecha);
    return std::ranges::find(steps, step, &StepEffect::step)->moves.value();
  };
  EXPECT_EQ(moves(RecipeStep::missing), 0);
  EXPECT_EQ(moves(RecipeStep::coefficient), 0);
  EXPECT_EQ(moves(RecipeStep::logarithm), 0);
  EXPECT_NE(moves(RecipeStep::trend), 0);
  EXPECT_EQ(words_of(RecipeOf::program, RecipeStep::trend, settings_), "none: the spline is off");
}

TEST_F(Recipes, CountAMissingRingAsARingOfNoneElsewhere) {
  for (int k = 0; k < 5; ++k) add_core(1700, 150);
  present_[1][70] = false;
  const CoreRecipe one = of(1);
  EXPECT_EQ(one.missing, 1);
  EXPECT_GT(one.by(RecipeOf::dplr).sensitivity, one.by(RecipeOf::program).sensitivity);
  EXPECT_NE(one.steps_to(RecipeOf::dplr)[1].moves.value(), 0);
  EXPECT_EQ(one.steps_to(RecipeOf::dplr)[1].step, RecipeStep::missing);
}

TEST_F(Recipes, AreGivenUpWhenNobodyWaits) {
  for (int k = 0; k < 5; ++k) add_core(1700, 150);
  const std::size_t core = 0;
  int asked = 0;
  EXPECT_FALSE(recipes(cores_, {&core, 1}, settings_, [&](double) { return ++asked < 3; }));
  EXPECT_EQ(asked, 3);
}

TEST_F(Recipes, StandWidthsOfAnyKind) {
  for (int k = 0; k < 3; ++k) add_core(1700, 100);
  add(1700, {});
  add(1700, {1.0});
  add(1700, Widths(60, 0.0));
  add(1750, Widths{1e300, 1e-300, 0, 5, 1e300, 2, 3, 1e300, 0, 0, 0, 1, 1, 1, 4});
  for (std::size_t core = 0; core < cores_.size(); ++core) {
    const CoreRecipe one = of(core);
    for (const RecipeOf recipe : all_recipes) {
      const auto r = one.by(recipe).r;
      EXPECT_TRUE(!r || (std::abs(*r) <= 1 + 1e-9)) << core;
      EXPECT_EQ(r.has_value(), one.by(recipe).why.empty()) << core;
    }
  }
}

}  // namespace
}  // namespace vorn
