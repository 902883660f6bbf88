// The whole program as it is used from around its page: by the actions of the menus, by the keyboard, and
// with the questions before work is lost.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "desk/actions.h"
#include "desk/methods.h"
#include "desk/page_cursor.h"
#include "desk/questions.h"
#include "desk/status_line.h"
#include "journal/session_bench.h"

namespace vorn {
namespace {

using Texts = std::vector<std::string>;
using Step = PageCursor::Step;

class AroundThePage : public SessionBench {
 protected:
  void act(const std::string& id) {
    screen.then([id](const Standing& standing) {
      const auto deed = deed_of(id, standing);
      EXPECT_TRUE(deed.has_value()) << id << ": " << state_of(id, standing).why_not;
      return deed;
    });
  }
  void go(Step step, int times = 1) {
    look([this, step, times](const Standing& standing) {
      for (int k = 0; k < times; ++k) EXPECT_TRUE(cursor_.go(step, *standing.situation));
    });
  }
  // Return, with the cursor on the page.
  void click_cursor() {
    screen.then([this](const Standing& standing) -> std::optional<Deed> {
      const auto click = cursor_.click(*standing.situation);
      EXPECT_TRUE(click.has_value());
      if (!click) return {};
      return *click;
    });
  }
  void answer(const std::string& text) {
    screen.then([text](const Standing& standing) -> std::optional<Deed> {
      EXPECT_TRUE(standing.question.has_value()) << text;
      if (!standing.question) return {};
      const auto& answers = standing.question->answers;
      const auto at = std::ranges::find(answers, text, &Question::Answer::text);
      EXPECT_NE(at, answers.end()) << text;
      return Choose{static_cast<std::size_t>(at - answers.begin())};
    });
  }
  void change_oak1() {
    act("crossdate");
    insert_ring_at(1930);
  }
  void expect_place(Place place) {
    look([place](const Standing& standing) { EXPECT_EQ(standing.situation->place, place); });
  }
  void expect_no_question() {
    look([](const Standing& standing) { EXPECT_FALSE(standing.question.has_value()); });
  }
  // Whether oak.RWW has a ring of 1960 of that core, which ended in 1959, and no mark of its end there.
  static bool has_ring_of_1960(const std::string& core) {
    const std::string file = ScratchFolder::read("oak.RWW");
    const auto at = file.find(core + "    1960");
    EXPECT_NE(at, file.npos) << file;
    return at != file.npos && file.substr(at + 12, 6) != " -9999";
  }

  Questions questions_;
  PageCursor cursor_;
};

TEST_F(AroundThePage, AWholeCorrectionNeedsNoMouse) {
  act("crossdate");
  act("scroll_minus_10");
  act("insert_ring");
  look([](const Standing& standing) {
    EXPECT_EQ(state_of("insert_ring", standing).why_not, "when a year was picked");
  });
  go(Step::right);
  click_cursor();
  expect_place(Place::keep_edit);
  act("keep_change");
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->sample.last_year, 1960);
    EXPECT_EQ(status_line(standing, {}).changes, "OAK1 not saved");
  });
  act("save_sample");
  act("back");
  act("save_raw");
  look([](const Standing& standing) {
    EXPECT_EQ(status_line(standing, {}).changes, "");
    EXPECT_TRUE(state_of("use_corrected", standing).can_be_done);
  });
  act("quit");
  EXPECT_EQ(run(&questions_), 0);
  EXPECT_TRUE(has_ring_of_1960("OAK1"));
  EXPECT_FALSE(has_ring_of_1960("OAK2"));
}

// OAK3 is picked for the place of OAK1; then the chronology larch, the last one in the list, for that of
// OAK2.
TEST_F(AroundThePage, APairIsChosenWithoutAMouse) {
  act("crossdate");
  act("choose_cores");
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->listed, (Texts{"OAK1", "OAK2", "OAK3", "OAK4", "oak", "larch"}));
  });
  go(Step::down);
  click_cursor();
  go(Step::down, 2);
  click_cursor();
  go(Step::up);
  click_cursor();
  go(Step::page_right);
  click_cursor();
  act("do_it");
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->sample.name, "OAK3");
    EXPECT_EQ(standing.situation->reference.entry, 6);
  });
  run(&questions_);
}

TEST_F(AroundThePage, TheYearThatWasPickedIsTold) {
  act("crossdate");
  act("insert_ring");
  look([](const Standing& standing) { EXPECT_EQ(status_line(standing, {}).waits_for, "a year to insert"); });
  play({{.kind = PlayStep::Kind::sample_year, .year = 1930}});
  look([](const Standing& standing) {
    EXPECT_TRUE(status_line(standing, PointAt{300, 500}).year.ends_with(", picked 1930"));
  });
  act("take_change_back");
  act("delete_ring");
  look([](const Standing& standing) { EXPECT_EQ(status_line(standing, {}).waits_for, "a year to delete"); });
  run(&questions_);
}

TEST_F(AroundThePage, TheMethodsTellASavedChangeOnce) {
  change_oak1();
  screen.then([](const Standing& standing) { return TakeNote{standing.taken - 1, "a ring is missing"}; });
  act("save_sample");
  act("back");
  look([](const Standing& standing) {
    EXPECT_TRUE(
        methods_text(standing, "1")
            .ends_with("\n1. Inserted 1930 in OAK1 (1900 to 1959 before, 1900 to 1960 after). Reason: "
                       "a ring is missing.\n"))
        << methods_text(standing, "1");
  });
  run(&questions_);
}

TEST_F(AroundThePage, TheSampleMovesByTheYearsThatAreTyped) {
  act("crossdate");
  const auto move = [this](auto years) {
    screen.then([years](const Standing& standing) { return move_sample_by(years, standing); });
  };
  move(89);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->sample.first_year, 1989); });
  move(-1629);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->sample.first_year, 360); });
  screen.then([](const Standing& standing) { return begin_sample_in(1895, standing); });
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->sample.first_year, 1895); });
  run(&questions_);
}

// Nothing may begin more than 11,999 years behind the earliest year, 1880 of LARCH1.
TEST_F(AroundThePage, TheProgramCutsNoMoveShortThatIsNotRefused) {
  act("crossdate");
  screen.then([](const Standing& standing) { return begin_sample_in(13879, standing); });
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->sample.first_year, 13879);
    EXPECT_FALSE(begin_sample_in(13900, standing).has_value());
  });
  run(&questions_);
}

TEST_F(AroundThePage, TheYearsShownScroll) {
  act("crossdate");
  act("display_width");
  type("30\r");
  act("scroll_plus_50");
  int before = 0;
  look([&before](const Standing& standing) { before = standing.situation->first_year; });
  screen.then([](const Standing& standing) { return scroll_years_by(-9, standing); });
  look([&before](const Standing& standing) { EXPECT_EQ(standing.situation->first_year, before - 9); });
  screen.then([](const Standing& standing) { return scroll_years_by(5, standing); });
  look([&before](const Standing& standing) { EXPECT_EQ(standing.situation->first_year, before - 4); });
  run(&questions_);
}

TEST_F(AroundThePage, AChangeIsSavedBeforeTheScreenIsLeft) {
  change_oak1();
  act("back");
  answer("Save Change First");
  expect_place(Place::start);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->unwritten, Texts{"OAK1"}); });
  run(&questions_);
}

TEST_F(AroundThePage, WhoStaysHasDoneNothing) {
  change_oak1();
  act("back");
  answer("Stay");
  expect_place(Place::crossdating);
  look([](const Standing& standing) { EXPECT_TRUE(standing.situation->sample.changed); });
  run(&questions_);
}

TEST_F(AroundThePage, WhatIsDroppedOnTheWayIntoTheChooserIsNotAskedForOnTheWayOut) {
  change_oak1();
  act("choose_cores");
  answer("Drop the Change");
  expect_place(Place::chooser);
  act("back");
  expect_no_question();
  expect_place(Place::crossdating);
  look([](const Standing& standing) { EXPECT_FALSE(standing.situation->sample.changed); });
  run(&questions_);
}

TEST_F(AroundThePage, FromTheCorrelationScreenTheSavingEndsInTheChooser) {
  change_oak1();
  act("correlate");
  act("choose_cores");
  answer("Save Change First");
  expect_place(Place::chooser);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->unwritten, Texts{"OAK1"}); });
  run(&questions_);
}

TEST_F(AroundThePage, ClosingFromTheCorrelationScreenSavesAndWrites) {
  change_oak1();
  act("correlate");
  act("quit");
  answer("Save Raw First");
  EXPECT_EQ(run(&questions_), 0);
  EXPECT_TRUE(has_ring_of_1960("OAK1"));
}

TEST_F(AroundThePage, AnotherChronologyIsChosenBehindTheWriting) {
  change_oak1();
  act("save_sample");
  act("back");
  act("current_chronology");
  go(Step::down, 2);
  click_cursor();
  answer("Save Raw First");
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->file, "larch.rwl");
    EXPECT_EQ(standing.situation->place, Place::start);
  });
  run(&questions_);
  EXPECT_TRUE(has_ring_of_1960("OAK1"));
}

TEST_F(AroundThePage, AFileOfAnotherIsReplacedOnlyWhenThatIsWanted) {
  folder.write("oak.RWW", "of another\n");
  change_oak1();
  act("save_sample");
  act("back");
  act("quit");
  answer("Save Raw First");
  look([](const Standing& standing) {
    ASSERT_TRUE(standing.question.has_value());
    EXPECT_EQ(standing.question->text, "oak.RWW is there already, and was not written in this session.");
  });
  answer("Stay");
  expect_place(Place::start);
  look([](const Standing&) { EXPECT_EQ(ScratchFolder::read("oak.RWW"), "of another\n"); });
  act("quit");
  answer("Save Raw First");
  answer("Replace It");
  EXPECT_EQ(run(&questions_), 0);
  EXPECT_TRUE(has_ring_of_1960("OAK1"));
}

TEST_F(AroundThePage, MovingCoresIsConfirmed) {
  act("crossdate");
  act("choose_cores");
  act("move_core");
  act("do_it");
  look([](const Standing& standing) {
    ASSERT_TRUE(standing.question.has_value());
    EXPECT_EQ(
        standing.question->text,
        "Move Core appends OAK1 and OAK2 to larch.rwl at once and takes them out of the cores at work.");
  });
  answer("Move Them");
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->cores.size(), 2u); });
  run(&questions_);
  EXPECT_NE(ScratchFolder::read("larch.rwl").find("\nOAK2    1900"), std::string::npos);
}

TEST_F(AroundThePage, ReadTrwWithoutItsListDoesNotEndTheProgramUnasked) {
  act("read_two_column");
  answer("Stay");
  expect_place(Place::start);
  act("read_two_column");
  answer("End the Program");
  key(Event::enter);
  EXPECT_EQ(run(&questions_), 4);
}

}  // namespace
}  // namespace vorn
