#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <numeric>
#include <vector>

#include "desk/actions.h"
#include "desk/specimens_for_tests.h"
#include "toolkit/scrolling.h"

namespace vorn {
namespace {

// The years of each press of a move, one after the other.
std::vector<int> presses(const std::optional<Deed>& deed, ButtonRange row) {
  std::vector<int> years;
  if (!deed) return years;
  for (const PlayStep& step : std::get<Play>(*deed).steps) years.push_back(scroll_years(row, step.button));
  return years;
}
std::vector<int> sample_presses(const std::optional<Deed>& deed) {
  return presses(deed, button::sample_row);
}
int sum(const std::vector<int>& years) {
  return std::accumulate(years.begin(), years.end(), 0);
}

using Years = std::vector<int>;

TEST(Slides, AMoveIsTheSumOfItsPresses) {
  const Standing standing = standing_at(Place::crossdating);
  for (int years = -260; years <= 260; ++years) {
    EXPECT_EQ(sum(sample_presses(move_sample_by(years, standing))), years);
  }
}

TEST(Slides, AMoveBy1629YearsIsThirtyTwoFiftiesThreeTensAndOneBack) {
  const Years years = sample_presses(move_sample_by(1629, standing_at(Place::crossdating)));
  EXPECT_EQ(sum(years), 1629);
  EXPECT_EQ(std::ranges::count(years, 50), 32);
  EXPECT_EQ(std::ranges::count(years, 10), 3);
  EXPECT_EQ(std::ranges::count(years, -1), 1);
}

TEST(Slides, GoingBackSavesPresses) {
  const Standing standing = standing_at(Place::crossdating);
  EXPECT_EQ(sample_presses(move_sample_by(49, standing)), (Years{50, -1}));
  EXPECT_EQ(sample_presses(move_sample_by(-49, standing)), (Years{-50, 1}));
  EXPECT_EQ(sample_presses(move_sample_by(89, standing)), (Years{50, -10, -1, 50}));
  EXPECT_EQ(sample_presses(move_sample_by(5, standing)), (Years{1, 1, 1, 1, 1}));
}

// Every number of presses of every size, for the small numbers, tried.
TEST(Slides, NoMoveTakesMorePressesThanItMust) {
  std::map<int, int> fewest;
  for (int fifties = -4; fifties <= 4; ++fifties)
    for (int tens = -9; tens <= 9; ++tens)
      for (int ones = -19; ones <= 19; ++ones) {
        const int years = 50 * fifties + 10 * tens + ones;
        const int count = std::abs(fifties) + std::abs(tens) + std::abs(ones);
        const auto at = fewest.emplace(years, count).first;
        at->second = std::min(at->second, count);
      }
  const Standing standing = standing_at(Place::crossdating);
  for (int years = 1; years <= 120; ++years) {
    EXPECT_EQ(static_cast<int>(sample_presses(move_sample_by(years, standing)).size()), fewest[years])
        << years;
  }
}

TEST(Slides, AMoveToAYearCountsFromTheWorkingCopy) {
  Situation now = situation_at(Place::crossdating);
  now.sample.first_year = 23;
  now.sample.last_year = 172;
  const auto deed = begin_sample_in(1652, standing_at(now));
  EXPECT_EQ(sum(sample_presses(deed)), 1629);
  EXPECT_EQ(std::get<Play>(*deed).what, "Begin the sample in 1652");
  EXPECT_FALSE(begin_sample_in(23, standing_at(now)).has_value());
}

TEST(Slides, TheWordForAMoveNamesTheYears) {
  const Standing standing = standing_at(Place::crossdating);
  EXPECT_EQ(std::get<Play>(*move_sample_by(1629, standing)).what, "Move the sample by 1629 years");
  EXPECT_EQ(std::get<Play>(*move_sample_by(-1, standing)).what, "Move the sample by -1 year");
}

TEST(Slides, ThereIsNoMoveByNothingAndNoneElsewhere) {
  EXPECT_FALSE(move_sample_by(0, standing_at(Place::crossdating)).has_value());
  for (const Place place : {Place::start, Place::pick_year, Place::keep_edit, Place::correlation}) {
    EXPECT_FALSE(move_sample_by(10, standing_at(place)).has_value());
    EXPECT_FALSE(begin_sample_in(1800, standing_at(place)).has_value());
    EXPECT_FALSE(scroll_years_by(10, standing_at(place)).has_value());
  }
  EXPECT_FALSE(move_sample_by(10, Standing()).has_value());
}

// The reference begins in 1651, so that nothing may begin after 1651 + 11999; it ends in 1900, so that
// nothing may begin before 1900 - 11999.
TEST(Slides, AMoveThatTheProgramWouldCutShortIsRefused) {
  const Standing standing = standing_at(Place::crossdating);
  EXPECT_EQ(sum(sample_presses(begin_sample_in(13650, standing))), 13650 - 1701);
  EXPECT_FALSE(begin_sample_in(13651, standing).has_value());
  EXPECT_EQ(sum(sample_presses(begin_sample_in(-10099, standing))), -10099 - 1701);
  EXPECT_FALSE(begin_sample_in(-10100, standing).has_value());
  for (const std::int64_t far : {std::int64_t{12'001}, INT64_MAX, INT64_MIN}) {
    EXPECT_FALSE(move_sample_by(far, standing).has_value());
    EXPECT_FALSE(begin_sample_in(far == 12'001 ? 20'000 : far, standing).has_value());
  }
}

// One year short of the end a press of 50 would be cut.
TEST(Slides, NearTheLimitAMoveGoesOneWayAlone) {
  Situation now = situation_at(Place::crossdating);
  now.sample.first_year = 13650 - 49;
  now.sample.last_year = now.sample.first_year + 149;
  now.cores.clear();
  EXPECT_EQ(sample_presses(move_sample_by(49, standing_at(now))),
            (Years{10, 10, 10, 10, 1, 1, 1, 1, 1, 1, 1, 1, 1}));
}

TEST(Slides, ScrollingOnIsOnTheRight) {
  const Standing standing = standing_at(Place::crossdating);
  const auto presses_of = [&](int years) {
    return presses(scroll_years_by(years, standing), button::scroll_row);
  };
  EXPECT_EQ(presses_of(50), Years{50});
  EXPECT_EQ(presses_of(-20), (Years{-10, -10}));
  EXPECT_EQ(presses_of(49), (Years{50, -1}));
}

// MEAN begins in 1651: 50 years back from 1700 end in 1650, a year farther than the program goes by the way.
TEST(Slides, ScrollingToAnEndGoesOneWayAlone) {
  Situation now = situation_at(Place::crossdating);
  now.first_year = 1690;
  EXPECT_EQ(presses(scroll_years_by(-49, standing_at(now)), button::scroll_row),
            (Years{-10, -10, -10, -10, -1, -1, -1, -1, -1, -1, -1, -1, -1}));
}

}  // namespace
}  // namespace vorn
