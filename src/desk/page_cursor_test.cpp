#include "desk/page_cursor.h"

#include <gtest/gtest.h>

#include <set>

#include "desk/specimens_for_tests.h"
#include "toolkit/lists.h"

namespace vorn {
namespace {

using Step = PageCursor::Step;

// What the menus make of a click, written out as they do it.
int chooser_entry(const Event& click) {
  const int column = static_cast<int>(7 * (click.x - 200) / 2500.0);
  const int row = static_cast<int>(((240 - click.y) * 30) / static_cast<double>(240 - 1640));
  return row + 30 * column + 1;
}
int editor_row(const Event& click) {
  return static_cast<int>(30 * (240 - click.y) / static_cast<double>(240 - 1640));
}

class Cursor : public ::testing::Test {
 protected:
  bool go(Step step) { return cursor_.go(step, now_); }
  ButtonNumber button() const {
    const auto click = cursor_.click(now_);
    const ShownButton* hit = click ? now_.at(click->x, click->y) : nullptr;
    return hit ? hit->number : ButtonNumber::none;
  }
  Event click() const { return cursor_.click(now_).value_or(Event{}); }
  int year() const {
    return now_.first_year + static_cast<int>((click().x - 200) / (2500.0 / now_.years_shown));
  }

  Situation now_ = situation_at(Place::start);
  PageCursor cursor_;
};

TEST_F(Cursor, IsHiddenAtFirst) {
  EXPECT_FALSE(cursor_.mark(now_).has_value());
  EXPECT_FALSE(cursor_.click(now_).has_value());
}

TEST_F(Cursor, GoesFromButtonToButtonInReadingOrder) {
  std::vector<ButtonNumber> order;
  for (int k = 0; k < 4; ++k) {
    EXPECT_TRUE(go(Step::next));
    order.push_back(button());
  }
  EXPECT_EQ(order,
            (std::vector{button::quit, button::current_chronology, button::crossdate, button::save_raw}));
  go(Step::previous);
  EXPECT_EQ(button(), button::crossdate);
}

TEST_F(Cursor, GoesRoundAndRoundAndHitsEveryButton) {
  for (const Place place : {Place::start, Place::chronologies, Place::crossdating, Place::keep_edit,
                            Place::correlation, Place::chooser, Place::editor}) {
    now_ = situation_at(place);
    cursor_.hide();
    std::set<ButtonNumber> hit;
    for (std::size_t k = 0; k < now_.buttons.size(); ++k) {
      go(Step::next);
      hit.insert(button());
    }
    EXPECT_EQ(hit.size(), now_.buttons.size());
    EXPECT_FALSE(hit.contains(ButtonNumber::none));
    const ButtonNumber last = button();
    go(Step::next);
    go(Step::previous);
    EXPECT_EQ(button(), last);
  }
}

TEST_F(Cursor, FromNowhereBackComesTheLastButton) {
  go(Step::previous);
  EXPECT_EQ(button(), button::crn_column);
}

TEST_F(Cursor, StaysHiddenOnAPageWithoutItsButton) {
  go(Step::next);
  now_ = situation_at(Place::crossdating);
  EXPECT_FALSE(cursor_.mark(now_).has_value());
  go(Step::next);
  EXPECT_EQ(button(), button::scroll_minus_50);
}

TEST_F(Cursor, CanBeHidden) {
  go(Step::next);
  cursor_.hide();
  EXPECT_FALSE(cursor_.mark(now_).has_value());
}

TEST_F(Cursor, LeavesTheArrowsFreeWhereThereIsNoList) {
  for (const Place place : {Place::start, Place::crossdating, Place::keep_edit, Place::correlation}) {
    now_ = situation_at(place);
    go(Step::next);
    for (const Step step : {Step::left, Step::right, Step::up, Step::down, Step::page_left, Step::page_right})
      EXPECT_FALSE(go(step));
  }
}

TEST_F(Cursor, LeavesAllKeysToAPromptAndToAMessage) {
  go(Step::next);
  for (const Wait wait : {Wait::number, Wait::name, Wait::message}) {
    now_.wait = wait;
    EXPECT_FALSE(go(Step::next));
    EXPECT_FALSE(cursor_.click(now_).has_value());
  }
}

// --- Lists.

TEST_F(Cursor, PicksInTheChooserTheNameThatIsDrawnThere) {
  now_ = situation_at(Place::chooser);
  now_.listed.assign(210, "T");
  ASSERT_TRUE(go(Step::down));
  for (int k = 0; k < 210; ++k) {
    const Event at = click();
    EXPECT_EQ(chooser_entry(at), k + 1);
    const int x = 200 + k / 30 * 357, y = 240 + k % 30 * 46;  // where the list draws it
    EXPECT_TRUE(x <= at.x && at.x < x + 357 && y <= at.y && at.y < y + 46) << k;
    go(Step::down);
  }
}

TEST_F(Cursor, PicksTheChronologyThatIsDrawnThere) {
  now_ = situation_at(Place::chronologies);
  now_.chronologies.assign(100, {"far.rwl", true});
  ASSERT_TRUE(go(Step::up));
  for (int k = 0; k < 90; ++k) {
    const Event at = click();
    EXPECT_EQ(entry_at(*now_.shown(button::chronology_list), at.x, at.y), k + 1);
    const int x = 200 + k / 30 * 833, y = 240 + k % 30 * 46;
    EXPECT_TRUE(x <= at.x && at.x < x + 833 && y <= at.y && at.y < y + 46) << k;
    go(Step::down);
  }
}

TEST_F(Cursor, GoesInAListByRowsAndColumnsAndStaysInIt) {
  now_ = situation_at(Place::chooser);
  now_.listed.assign(70, "T");
  const auto entry_after = [this](Step step) {
    EXPECT_TRUE(go(step));
    return chooser_entry(click());
  };
  EXPECT_EQ(entry_after(Step::right), 1);  // it comes to the list
  EXPECT_EQ(entry_after(Step::up), 1);
  EXPECT_EQ(entry_after(Step::left), 1);
  EXPECT_EQ(entry_after(Step::down), 2);
  EXPECT_EQ(entry_after(Step::right), 32);
  EXPECT_EQ(entry_after(Step::right), 62);
  EXPECT_EQ(entry_after(Step::right), 62);
  EXPECT_EQ(entry_after(Step::page_right), 70);
  EXPECT_EQ(entry_after(Step::down), 70);
  EXPECT_EQ(entry_after(Step::left), 40);
  EXPECT_EQ(entry_after(Step::page_left), 1);
}

TEST_F(Cursor, FromALongColumnComesToTheLastNameOfAShortOne) {
  now_ = situation_at(Place::chooser);
  now_.listed.assign(35, "T");
  for (int k = 0; k < 21; ++k) go(Step::down);
  go(Step::right);
  EXPECT_EQ(chooser_entry(click()), 35);
}

TEST_F(Cursor, ComesBackToTheNameWhereItWas) {
  now_ = situation_at(Place::chooser);
  now_.listed.assign(70, "T");
  for (int k = 0; k < 6; ++k) go(Step::down);
  go(Step::next);
  EXPECT_NE(button(), button::chooser_list);
  go(Step::previous);
  EXPECT_EQ(chooser_entry(click()), 6);
  now_.listed.resize(3);
  EXPECT_EQ(chooser_entry(click()), 3);
}

TEST_F(Cursor, AnEmptyListHasNoPlace) {
  now_ = situation_at(Place::chooser);
  now_.listed.clear();
  EXPECT_FALSE(go(Step::down));
}

TEST_F(Cursor, PicksTheRowsOfTheEditor) {
  now_ = situation_at(Place::editor);
  ASSERT_TRUE(go(Step::down));
  for (int k = 0; k < 30; ++k) {
    EXPECT_EQ(editor_row(click()), k);
    EXPECT_EQ((click().y - 240) / 46, k);  // as it is drawn
    go(Step::down);
  }
}

// --- Years.

// Of 1700 to 1799, as the bar.
TEST_F(Cursor, BeginsInTheMiddleOfTheYearsShown) {
  now_ = situation_at(Place::pick_year);
  ASSERT_TRUE(go(Step::right));
  EXPECT_EQ(button(), button::upper_plot);
  EXPECT_EQ(year(), 1749);
}

TEST_F(Cursor, GoesAlongTheCurveAndToTheOtherOne) {
  now_ = situation_at(Place::pick_year);
  go(Step::right);
  go(Step::right);
  EXPECT_EQ(year(), 1750);
  go(Step::page_left);
  EXPECT_EQ(year(), 1740);
  go(Step::down);
  EXPECT_EQ(button(), button::lower_plot);
  EXPECT_EQ(year(), 1740);
  go(Step::next);
  EXPECT_EQ(button(), button::upper_plot);
  EXPECT_EQ(year(), 1740);
}

TEST_F(Cursor, StaysWithinTheYearsShown) {
  now_ = situation_at(Place::pick_year);
  go(Step::right);
  for (int k = 0; k < 8; ++k) go(Step::page_right);
  EXPECT_EQ(year(), 1799);
  for (int k = 0; k < 20; ++k) go(Step::page_left);
  EXPECT_EQ(year(), 1700);
}

TEST_F(Cursor, ComesBackToItsYearWhileThatIsShown) {
  now_ = situation_at(Place::pick_year);
  go(Step::right);
  go(Step::page_right);
  now_ = situation_at(Place::crossdating);
  go(Step::next);
  now_ = situation_at(Place::pick_year);
  go(Step::left);
  EXPECT_EQ(year(), 1759);
  now_.first_year = 1500;
  EXPECT_FALSE(cursor_.mark(now_).has_value());
  go(Step::left);
  EXPECT_EQ(year(), 1549);
}

TEST_F(Cursor, StaysOnTheCurveThatIsThere) {
  now_ = situation_at(Place::pick_year);
  hide(now_, button::upper_plot);
  go(Step::right);
  go(Step::up);
  EXPECT_EQ(button(), button::lower_plot);
}

// 12,000 years on 2,500 units: a click picks every fifth year at best.
TEST_F(Cursor, PassesOverYearsThatNoClickPicks) {
  now_ = situation_at(Place::pick_year);
  now_.years_shown = 12'000;
  go(Step::right);
  for (int k = 0; k < 30; ++k) {
    const int before = year();
    go(Step::right);
    EXPECT_GT(year(), before);
    EXPECT_LE(year(), before + 5);
  }
}

TEST_F(Cursor, MarksWhatItPicks) {
  now_ = situation_at(Place::pick_year);
  go(Step::right);
  const Rectangle mark = *cursor_.mark(now_);
  EXPECT_EQ(mark.y1, 450);
  EXPECT_EQ(mark.y2, 591);
  EXPECT_TRUE(mark.x1 < click().x && click().x < mark.x2);
  EXPECT_LE(mark.x2 - mark.x1, 25);
}

}  // namespace
}  // namespace vorn
