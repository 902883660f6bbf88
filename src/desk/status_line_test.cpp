#include "desk/status_line.h"

#include <gtest/gtest.h>

#include "desk/specimens_for_tests.h"

namespace vorn {
namespace {

std::string waits_for(const Situation& now) {
  return status_line(standing_at(now), {}).waits_for;
}
std::string waits_for(Place place) {
  return waits_for(situation_at(place));
}

TEST(StatusLine, TellsWhatTheProgramWaitsForOnEveryPage) {
  EXPECT_EQ(waits_for(Place::start), "a button");
  EXPECT_EQ(waits_for(Place::crossdating), "a button");
  EXPECT_EQ(waits_for(Place::correlation), "a button");
  EXPECT_EQ(waits_for(Place::chronologies), "a chronology out of the list");
  EXPECT_EQ(waits_for(Place::pick_year), "a year to delete");
  EXPECT_EQ(waits_for(Place::keep_edit), "OK to keep the ring inserted, or NOT to take it back");
  EXPECT_EQ(waits_for(Place::chooser), "a pair of series, then Ok - Do it");
  EXPECT_EQ(waits_for(Place::editor), "a ring to measure anew, or a button");
  EXPECT_EQ(waits_for(Place::none), "a key: a message stands on the page");
}

TEST(StatusLine, TellsWhetherAYearIsInsertedOrDeleted) {
  Situation now = situation_at(Place::pick_year);
  now.inserts = true;
  EXPECT_EQ(waits_for(now), "a year to insert");
  now = situation_at(Place::editor);
  for (ShownButton& button : now.buttons) button.lit = button.number == button::editor_delete;
  EXPECT_EQ(waits_for(now), "a year to delete, or a button");
}

TEST(StatusLine, TellsWhatTheChoosersModeTakes) {
  Situation now = situation_at(Place::chooser);
  now.mode = button::move_core;
  EXPECT_EQ(waits_for(now), "the cores to move and where to, then Ok - Do it");
}

TEST(StatusLine, TellsWhatIsTyped) {
  Situation now = situation_at(Place::start);
  now.wait = Wait::number;
  EXPECT_EQ(waits_for(now), "a number and Return");
  now.wait = Wait::name;
  EXPECT_EQ(waits_for(now), "a name of 2 to 8 characters and Return");
}

TEST(StatusLine, BeforeTheFirstWaitItIsEmpty) {
  EXPECT_EQ(status_line(Standing(), PointAt{300, 500}).waits_for, "");
}

// 2500 units for 100 years: 25 a year.
TEST(YearAt, IsTheYearThatAClickPicks) {
  const Situation now = situation_at(Place::crossdating);
  EXPECT_EQ(year_at(now, {200, 500}), 1700);
  EXPECT_EQ(year_at(now, {224, 500}), 1700);
  EXPECT_EQ(year_at(now, {225, 500}), 1701);
  EXPECT_EQ(year_at(now, {2700, 500}), 1800);
}

TEST(YearAt, IsNoneBesideTheGraphAndOnOtherPages) {
  const Situation now = situation_at(Place::crossdating);
  for (const PointAt& beside : {PointAt{199, 500}, PointAt{2701, 500}, PointAt{300, 449}, PointAt{300, 1301}})
    EXPECT_FALSE(year_at(now, beside).has_value());
  EXPECT_FALSE(year_at(situation_at(Place::correlation), {300, 500}).has_value());
}

// As the menu does it: years + static_cast<int>((x - 200) / scx).
TEST(YearAt, IsAsTheMenuReckonsItForAnyWidth) {
  Situation now = situation_at(Place::pick_year);
  for (const int years : {21, 37, 300, 4'999, 12'000}) {
    now.years_shown = years;
    const double scx = 2500.0 / years;
    for (int x = 200; x <= 2700; x += 7)
      EXPECT_EQ(year_at(now, {x, 500}), 1700 + static_cast<int>((x - 200) / scx));
  }
}

// The middle of 1700 to 1799 is 1749.
TEST(StatusLine, TellsTheYearUnderTheMouseAndThatOfTheBar) {
  const StatusLine line = status_line(standing_at(Place::crossdating), PointAt{200 + 50 * 25, 500});
  EXPECT_EQ(line.year, "1750, bar 1749");
  EXPECT_EQ(line.values, "T001 1.00, MEAN 0.50");
}

TEST(StatusLine, WhereThePairHasTooFewYearsInCommonThereIsNoBar) {
  Situation now = situation_at(Place::crossdating);
  now.sample.last_year = 1720;
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).year, "1700");
  now.sample.last_year = 1721;  // 1701 to 1721, but the bar is 28 years behind them
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).year, "1700");
  now.first_year = 1670;
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).year, "1670, bar 1719");
}

TEST(StatusLine, TellsTheYearThatWasPicked) {
  Situation now = situation_at(Place::keep_edit);
  now.picked_year = 1760;
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).year, "1700, bar 1749, picked 1760");
}

TEST(StatusLine, TellsMissingRingsAndLeavesOutWhatHasNoSuchYear) {
  Situation now = situation_at(Place::crossdating);
  Curve gap = *now.reference.curve;
  gap.presence[50] = 0;
  now.reference.curve = std::make_shared<const Curve>(gap);
  EXPECT_EQ(status_line(standing_at(now), PointAt{250, 500}).values, "T001 1.00, MEAN 0.50");
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).values, "MEAN 0.50");
  now.first_year = 1701;
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).values, "T001 1.00, MEAN missing");
  now.first_year = 2000;
  EXPECT_EQ(status_line(standing_at(now), PointAt{200, 500}).values, "");
}

// Who works by keys alone reads there where the bar stands.
TEST(StatusLine, WithoutAMouseOnTheGraphItTellsTheYearOfTheBar) {
  EXPECT_EQ(status_line(standing_at(Place::crossdating), {}).year, "bar 1749");
  EXPECT_EQ(status_line(standing_at(Place::crossdating), PointAt{10, 10}).values, "T001 1.00, MEAN 0.50");
  Situation now = situation_at(Place::keep_edit);
  now.picked_year = 1760;
  EXPECT_EQ(status_line(standing_at(now), {}).year, "bar 1749, picked 1760");
}

TEST(StatusLine, WithoutMouseBarAndGraphThereIsNoYear) {
  Situation now = situation_at(Place::crossdating);
  now.sample.last_year = 1720;
  EXPECT_EQ(status_line(standing_at(now), {}).year, "");
  EXPECT_EQ(status_line(standing_at(now), {}).values, "");
  EXPECT_EQ(status_line(standing_at(Place::correlation), PointAt{300, 500}).year, "");
}

TEST(StatusLine, TellsWhatIsNeitherSavedNorWritten) {
  Situation now = situation_at(Place::crossdating);
  EXPECT_EQ(status_line(standing_at(now), {}).changes, "");
  now.unwritten = {"T001", "T002", "T003"};
  EXPECT_EQ(status_line(standing_at(now), {}).changes, "3 cores not written: T001, T002 and T003");
  now.sample.changed = true;
  EXPECT_EQ(status_line(standing_at(now), {}).changes,
            "T001 not saved; 3 cores not written: T001, T002 and T003");
  now.unwritten.clear();
  EXPECT_EQ(status_line(standing_at(now), {}).changes, "T001 not saved");
}

TEST(StatusLine, WarnsAheadOfAPassLimit) {
  Situation now = situation_at(Place::chooser);
  now.passes_left = 101;
  EXPECT_EQ(status_line(standing_at(now), {}).warning, "");
  now.passes_left = 100;
  EXPECT_EQ(status_line(standing_at(now), {}).warning, "after 100 clicks more the chooser ends by itself");
  now = situation_at(Place::start);
  now.passes_left = 1;
  EXPECT_EQ(status_line(standing_at(now), {}).warning, "after 1 click more the program ends by itself");
}

TEST(StatusLine, TellsWhatWasWrittenLast) {
  Standing standing = standing_at(Place::start);
  standing.written = "wrote Stats.prn, 25 cores";
  EXPECT_EQ(status_line(standing, {}).written, "wrote Stats.prn, 25 cores");
}

TEST(StatusLine, AQuestionIsAnsweredFirst) {
  Standing standing = standing_at(Place::start);
  standing.question = Question{};
  EXPECT_EQ(status_line(standing, {}).waits_for, "an answer to the question");
}

TEST(StatusLine, SaysThatTheLastCoreCannotBeSaved) {
  Situation now = situation_at(Place::crossdating);
  now.sample.is_core = now.sample.changed = true;
  now.sample.can_be_saved = false;
  now.sample.entry = static_cast<int>(now.cores.size());
  EXPECT_EQ(status_line(standing_at(now), {}).warning,
            "the last core cannot be saved as things are: see the menu Careful");
  now.sample.can_be_saved = true;
  EXPECT_EQ(status_line(standing_at(now), {}).warning, "");
}

TEST(StatusLine, SaysWhatIsDoneCarefully) {
  Situation now = situation_at(Place::start);
  const auto said = [&now] { return status_line(standing_at(now), {}).careful; };
  EXPECT_EQ(said(), "");
  now.settings.careful.set(Mend::help, true);
  EXPECT_EQ(said(), "careful in 1 of " + std::to_string(mends().size()) + " places");
  now.settings.careful = Careful::everything();
  EXPECT_EQ(said(), "careful");
}

}  // namespace
}  // namespace vorn
