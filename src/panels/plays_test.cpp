#include "panels/plays.h"

#include <gtest/gtest.h>

#include "desk/specimens_for_tests.h"

namespace vorn {
namespace {

Settings plain_settings() {
  Settings settings;
  settings.splineon = settings.aron = settings.logon = false;
  return settings;
}

// Rings of 1.0 mm from 1900 to 1939, but of 1930, which is narrow.
SharedStudied studied() {
  std::vector<double> widths(40, 1.0);
  widths[30] = 0.2;
  return std::make_shared<const StudiedSeries>(core("T001", 1900, widths), plain_settings());
}

ErrorCandidate candidate(Correction kind, KeptEnd end, std::int64_t year) {
  ErrorCandidate found;
  found.kind = kind;
  found.end = end;
  found.year = year;
  return found;
}

TEST(Mending, OfAMissingRingIsAtItsYearWhereThePithStays) {
  const Mending found = mending_of(candidate(Correction::insert, KeptEnd::inner, 1920), *studied(), false);
  EXPECT_EQ(found.year, 1920);
  EXPECT_EQ(found.shift, 0);
}

// The inner part is dated one year too late: the ring comes in behind what is dated 1920, and all moves back.
TEST(Mending, OfAMissingRingMovesTheCoreBackWhereTheBarkStays) {
  const Mending found = mending_of(candidate(Correction::insert, KeptEnd::outer, 1920), *studied(), false);
  EXPECT_EQ(found.year, 1921);
  EXPECT_EQ(found.shift, -1);
}

TEST(Mending, HoldsTheBarkWhenItIsTold) {
  EXPECT_EQ(mending_of(candidate(Correction::insert, KeptEnd::inner, 1920), *studied(), true).shift, -1);
  EXPECT_EQ(mending_of(candidate(Correction::merge, KeptEnd::inner, 1920), *studied(), true).shift, 1);
}

// Dated 1930 and 1931 where the pith stays, 1929 and 1930 where the bark does: the narrow one goes.
TEST(Mending, OfTwoRingsThatAreOneDeletesTheNarrower) {
  const auto year_of = [](KeptEnd end, std::int64_t year) {
    return mending_of(candidate(Correction::merge, end, year), *studied(), false).year;
  };
  EXPECT_EQ(year_of(KeptEnd::inner, 1930), 1930);
  EXPECT_EQ(year_of(KeptEnd::inner, 1929), 1930);
  EXPECT_EQ(year_of(KeptEnd::outer, 1930), 1930);
  EXPECT_EQ(year_of(KeptEnd::outer, 1931), 1930);
  EXPECT_EQ(mending_of(candidate(Correction::merge, KeptEnd::outer, 1930), *studied(), false).shift, 1);
}

// --- What is played.

std::vector<std::string> steps_of(const std::optional<Play>& play) {
  std::vector<std::string> texts;
  for (const PlayStep& step : play ? play->steps : std::vector<PlayStep>()) {
    switch (step.kind) {
      case PlayStep::Kind::press:
        texts.push_back("press " + std::to_string(plain(step.button)));
        break;
      case PlayStep::Kind::series:
        texts.push_back("series " + std::to_string(step.number));
        break;
      case PlayStep::Kind::sample_year:
        texts.push_back("year " + std::to_string(step.year));
        break;
      case PlayStep::Kind::kept_edit:
        texts.emplace_back("kept");
        break;
      default:
        texts.emplace_back("other");
    }
  }
  return texts;
}

std::string pressed(ButtonNumber n) {
  return "press " + std::to_string(plain(n));
}

Situation with_references(Place place) {
  Situation now = situation_at(place);
  for (const char* name : {"near.rwl", "far.rwl"})
    now.references.push_back(std::make_shared<const ListedChronology>(ListedChronology{name, {}}));
  now.own_reference = 0;
  now.cores_file = now.file;
  return now;
}

TEST(PutOnPage, ChoosesTheCoreAndItsChronologyFromWhereverTheUserIs) {
  const std::vector<std::string> choice = {pressed(button::top_of_pair), pressed(button::bottom_of_pair),
                                           "series 2", "series 3", pressed(button::chooser_do_it)};
  const auto from = [&](Place place, std::vector<std::string> way) {
    way.insert(way.end(), choice.begin(), choice.end());
    EXPECT_EQ(steps_of(put_on_page(2, standing_at(with_references(place)))), way) << static_cast<int>(place);
  };
  from(Place::start, {pressed(button::crossdate), pressed(button::choose_cores)});
  from(Place::crossdating, {pressed(button::choose_cores)});
  from(Place::correlation, {pressed(button::correlation_choose)});
  from(Place::chooser, {pressed(button::pick_cores)});
  from(Place::editor, {pressed(button::editor_exit), pressed(button::pick_cores)});
  // While the program asks for something it is not.
  EXPECT_FALSE(put_on_page(2, standing_at(with_references(Place::keep_edit))));
  EXPECT_FALSE(put_on_page(2, standing_at(with_references(Place::pick_year))));
  EXPECT_FALSE(put_on_page(2, standing_at(with_references(Place::chronologies))));
  EXPECT_FALSE(put_on_page(3, standing_at(with_references(Place::start))));
  EXPECT_FALSE(put_on_page(0, standing_at(with_references(Place::start))));
  Standing asks = standing_at(with_references(Place::start));
  asks.question = Question();
  EXPECT_FALSE(put_on_page(2, asks));
}

class Mended : public ::testing::Test {
 protected:
  Mended() {
    now = with_references(Place::crossdating);
    now.sample.series = core("T001", 1900, std::vector<double>(40, 1.0));
    now.first_year = 1880;
    pair.core = std::make_shared<const StudiedSeries>(now.sample.series, plain_settings());
    pair.entry = 1;
  }
  std::vector<std::string> steps(const Mending& mending) {
    return steps_of(mend(mending, pair, standing_at(now)));
  }
  Situation now;
  PairFindings pair;
};

TEST_F(Mended, PressesTheButtonAndTheYear) {
  EXPECT_EQ(steps({Correction::insert, 1920, 0}),
            (std::vector<std::string>{pressed(button::insert_ring), "year 1920"}));
  EXPECT_EQ(steps({Correction::merge, 1920, 0}),
            (std::vector<std::string>{pressed(button::delete_ring), "year 1920"}));
}

TEST_F(Mended, MovesTheCoreWhenTheChangeStays) {
  EXPECT_EQ(steps({Correction::insert, 1920, -1}),
            (std::vector<std::string>{pressed(button::insert_ring), "year 1920", "kept",
                                      pressed(button::sample_minus_1)}));
  EXPECT_EQ(steps({Correction::merge, 1920, 1}),
            (std::vector<std::string>{pressed(button::delete_ring), "year 1920", "kept",
                                      pressed(button::sample_plus_1)}));
}

TEST_F(Mended, BringsTheYearIntoSightFirst) {
  now.first_year = 1700;
  now.sample.last_year = 1939;
  const auto all = steps({Correction::insert, 1920, 0});
  ASSERT_GT(all.size(), 2u);
  EXPECT_EQ(all.front(), pressed(button::scroll_plus_50));
  EXPECT_EQ(all.back(), "year 1920");
}

TEST_F(Mended, IsNotOfAnotherPairThanThatOnThePage) {
  now.sample.series = core("T001", 1901, std::vector<double>(40, 1.0));
  EXPECT_TRUE(steps({Correction::insert, 1920, 0}).empty());
  now = with_references(Place::correlation);
  EXPECT_TRUE(steps({Correction::insert, 1920, 0}).empty());
}

}  // namespace
}  // namespace vorn
