#include "desk/questions.h"

#include <gtest/gtest.h>

#include "desk/specimens_for_tests.h"
#include "toolkit/lists.h"

namespace vorn {
namespace {

using Texts = std::vector<std::string>;

Situation with_change(Place place, bool can_be_saved = true) {
  Situation now = situation_at(place);
  now.sample.changed = true;
  now.sample.can_be_saved = can_be_saved;
  if (place == Place::crossdating && can_be_saved) show(now, button::save_sample);
  return now;
}

Situation with_unwritten(Place place) {
  Situation now = situation_at(place);
  now.unwritten = {"T001", "T002"};
  return now;
}

// A click on the k-th name of the list of chronologies.
Event click_on_name(const Situation& now, int k) {
  const ShownButton* list = now.shown(button::chronology_list);
  const Event click = {list->x1 + 10, list->y1 + 47 * (k - 1) + 20, Event::click};
  EXPECT_EQ(entry_at(*list, click.x, click.y), k);
  return click;
}

std::optional<Question> asked(Questions& questions, const Situation& now, ButtonNumber n) {
  EXPECT_NE(now.shown(n), nullptr);
  return questions.before(click_on(now, n), now);
}
std::optional<Question> asked(const Situation& now, ButtonNumber n) {
  Questions questions;
  return asked(questions, now, n);
}

// The user is asked, and goes on.
void give_up(Questions& questions, const Situation& now, ButtonNumber n) {
  EXPECT_TRUE(asked(questions, now, n).has_value());
  questions.given_up(now);
}

Texts answers(const Question& question) {
  Texts texts;
  for (const Question::Answer& answer : question.answers) texts.push_back(answer.text);
  return texts;
}

// "press BUTTON", "key CODE", "menu" or "start" for each step.
Texts steps(const Question::Answer& answer) {
  Texts texts;
  for (const PlayStep& step : answer.first) {
    if (step.kind == PlayStep::Kind::press) texts.push_back("press " + std::to_string(plain(step.button)));
    if (step.kind == PlayStep::Kind::key) texts.push_back("key " + std::to_string(step.code));
    if (step.kind == PlayStep::Kind::to_menu) texts.emplace_back("menu");
    if (step.kind == PlayStep::Kind::to_start_menu) texts.emplace_back("start");
    if (step.kind == PlayStep::Kind::careful)
      texts.push_back("careful " + std::string(mends()[static_cast<std::size_t>(step.number)].name));
  }
  return texts;
}

std::string press(ButtonNumber n) {
  return "press " + std::to_string(plain(n));
}

// --- Nothing at stake.

TEST(Questions, WhereNothingWouldBeLostNothingIsAsked) {
  for (const Place place : {Place::start, Place::chronologies, Place::crossdating, Place::pick_year,
                            Place::keep_edit, Place::correlation, Place::chooser, Place::editor}) {
    const Situation now = situation_at(place);
    Questions questions;
    EXPECT_FALSE(questions.before(Close{}, now).has_value());
    for (const ShownButton& button : now.buttons)
      EXPECT_FALSE(asked(questions, now, button.number).has_value());
  }
}

TEST(Questions, OnlyClicksLoseWork) {
  const Situation now = with_change(Place::crossdating);
  const Event exit = click_on(now, button::exit_crossdating);
  Questions questions;
  for (const int code : {Event::escape, Event::enter, Event::help, static_cast<int>('x')})
    EXPECT_FALSE(questions.before(Event{exit.x, exit.y, code}, now).has_value());
  EXPECT_FALSE(questions.before(Undo{}, now).has_value());
  EXPECT_TRUE(questions.before(exit, now).has_value());
}

TEST(Questions, WhatKeepsTheWorkingCopyIsNotAskedFor) {
  const Situation now = with_change(Place::crossdating);
  for (const ButtonNumber n : {button::save_sample, button::insert_ring, button::correlate,
                               button::scroll_plus_10, button::indices, button::sample_plus_1})
    EXPECT_FALSE(asked(now, n).has_value());
}

// --- Working copies.

TEST(Questions, LeavingTheCrossDatingScreenDropsTheWorkingCopies) {
  const auto question = asked(with_change(Place::crossdating), button::exit_crossdating);
  ASSERT_TRUE(question.has_value());
  EXPECT_EQ(question->text, "T001 was changed and the change is not saved.");
  EXPECT_EQ(question->more, "If you go on it is lost.");
  EXPECT_EQ(answers(*question), (Texts{"Save Change First", "Drop the Change", "Stay"}));
  EXPECT_TRUE(question->answers[0].does_it);
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::save_sample)}));
  EXPECT_TRUE(question->answers[1].does_it);
  EXPECT_FALSE(question->answers[2].does_it);
  EXPECT_TRUE(question->answers[1].first.empty() && question->answers[2].first.empty());
}

TEST(Questions, BothCopiesAreSaved) {
  Situation now = with_change(Place::crossdating);
  now.reference.changed = now.reference.can_be_saved = true;
  show(now, button::save_reference);
  const auto question = asked(now, button::exit_crossdating);
  EXPECT_EQ(question->text, "T001 and MEAN were changed and the changes are not saved.");
  EXPECT_EQ(question->more, "If you go on they are lost.");
  EXPECT_EQ(answers(*question), (Texts{"Save Change First", "Drop the Changes", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::save_sample), press(button::save_reference)}));
}

// An edit of the last core of a file is not offered for saving.
TEST(Questions, WhatCannotBeSavedCanOnlyBeDropped) {
  const auto question = asked(with_change(Place::crossdating, false), button::exit_crossdating);
  EXPECT_EQ(answers(*question), (Texts{"Drop the Change", "Stay"}));
}

TEST(Questions, EveryWayIntoAndOutOfTheChooserDropsTheWorkingCopies) {
  EXPECT_TRUE(asked(with_change(Place::crossdating), button::choose_cores).has_value());
  EXPECT_TRUE(asked(with_change(Place::correlation), button::correlation_choose).has_value());
  EXPECT_TRUE(asked(with_change(Place::chooser), button::chooser_exit).has_value());
  EXPECT_TRUE(asked(with_change(Place::chooser), button::chooser_do_it).has_value());
  EXPECT_FALSE(asked(with_change(Place::correlation), button::correlation_exit).has_value());
  EXPECT_EQ(answers(*asked(with_change(Place::chooser), button::chooser_exit)),
            (Texts{"Drop the Change", "Stay"}));
}

// Behind the saving the cross-dating screen is shown, on which the click would hit something else.
TEST(Questions, FromTheCorrelationScreenTheSavingGoesOnToTheChooserByItself) {
  const auto question = asked(with_change(Place::correlation), button::correlation_choose);
  EXPECT_EQ(answers(*question), (Texts{"Save Change First", "Drop the Change", "Stay"}));
  EXPECT_FALSE(question->answers[0].does_it);
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::correlation_exit), press(button::save_sample),
                                                press(button::choose_cores)}));
}

TEST(Questions, FromTheCorrelationScreenWhatIsLostAllTheSameIsNamed) {
  Situation now = with_change(Place::correlation);
  now.reference.changed = true;
  const auto question = asked(now, button::correlation_choose);
  EXPECT_EQ(answers(*question), (Texts{"Save Change, Drop the Change of MEAN", "Drop the Changes", "Stay"}));
}

// A core that is saved and not written would be asked for again.
TEST(Questions, ClosingSavesAnEditThatWasNotConfirmedAndWritesIt) {
  const Situation now = with_change(Place::keep_edit);
  Questions questions;
  const auto question = questions.before(Close{}, now);
  EXPECT_EQ(question->text, "T001 was changed and the change is not saved.");
  EXPECT_EQ(answers(*question), (Texts{"Save Raw First", "Drop the Change", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::insertion_ok), press(button::save_sample),
                                                "start", press(button::save_raw)}));
}

TEST(Questions, AChronologyIsSavedAndNotWritten) {
  Situation now = situation_at(Place::crossdating);
  now.reference.changed = now.reference.can_be_saved = true;
  Questions questions;
  const auto question = questions.before(Close{}, now);
  EXPECT_EQ(answers(*question), (Texts{"Save Change First", "Drop the Change", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::save_reference)}));
}

TEST(Questions, WhereAYearIsPickedItIsSavedBehindThat) {
  Situation now = with_change(Place::pick_year);
  now.sample.is_core = false;
  Questions questions;
  const auto question = questions.before(Close{}, now);
  EXPECT_EQ(answers(*question), (Texts{"Save Change First", "Drop the Change", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{"menu", press(button::save_sample)}));
}

TEST(Questions, ClosingAtAMessageOrAPromptEndsThatFirst) {
  Situation now = with_change(Place::crossdating);
  now.buttons.clear();
  for (const auto& [wait, code] :
       {std::pair(Wait::message, Event::escape), std::pair(Wait::number, Event::escape),
        std::pair(Wait::name, Event::enter)}) {
    now.wait = wait;
    Questions questions;
    const auto question = questions.before(Close{}, now);
    EXPECT_EQ(steps(question->answers[0]), (Texts{"key " + std::to_string(code), press(button::save_sample),
                                                  "start", press(button::save_raw)}));
  }
}

TEST(Questions, OnTheStartMenuThereAreNoWorkingCopies) {
  EXPECT_FALSE(asked(with_change(Place::start), button::quit).has_value());
}

// --- Cores that were not written.

TEST(Questions, QuitLosesCoresNotWritten) {
  const auto question = asked(with_unwritten(Place::start), button::quit);
  ASSERT_TRUE(question.has_value());
  EXPECT_EQ(question->text, "T001 and T002 changed and are not written.");
  EXPECT_EQ(question->more, "If you go on what is not written is lost.");
  EXPECT_EQ(answers(*question), (Texts{"Save Raw First", "Go on Without", "Stay"}));
  EXPECT_TRUE(question->answers[0].does_it);
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::save_raw)}));
}

TEST(Questions, SoDoesReadTrw) {
  EXPECT_EQ(answers(*asked(with_unwritten(Place::start), button::read_two_column)),
            (Texts{"Save Raw First", "Go on Without", "Stay"}));
}

TEST(Questions, LeavingTheCrossDatingScreenKeepsCoresNotWritten) {
  EXPECT_FALSE(asked(with_unwritten(Place::crossdating), button::exit_crossdating).has_value());
  EXPECT_FALSE(asked(with_unwritten(Place::start), button::current_chronology).has_value());
}

// The list must be opened again for the click.
TEST(Questions, AChronologyWithCoresTakesTheirPlace) {
  const Situation now = with_unwritten(Place::chronologies);
  Questions questions;
  const auto question = questions.before(click_on_name(now, 2), now);
  ASSERT_TRUE(question.has_value());
  EXPECT_TRUE(question->answers[0].does_it);
  EXPECT_EQ(steps(question->answers[0]),
            (Texts{"start", press(button::save_raw), press(button::current_chronology)}));
}

TEST(Questions, AChronologyWithoutCoresAndAnEmptyPlaceDoNot) {
  const Situation now = with_unwritten(Place::chronologies);
  Questions questions;
  EXPECT_FALSE(questions.before(click_on_name(now, 3), now).has_value());
  EXPECT_FALSE(questions.before(click_on_name(now, 4), now).has_value());
}

TEST(Questions, ClosingFromAnyPageFindsTheWayToSaveRaw) {
  for (const Place place : {Place::chooser, Place::editor, Place::correlation}) {
    Questions questions;
    const auto question = questions.before(Close{}, with_unwritten(place));
    EXPECT_EQ(steps(question->answers[0]), (Texts{"start", press(button::save_raw)}));
  }
  Questions questions;
  const auto question = questions.before(Close{}, with_unwritten(Place::pick_year));
  EXPECT_EQ(steps(question->answers[0]), (Texts{"menu", "start", press(button::save_raw)}));
}

TEST(Questions, ForBothThereIsOneQuestion) {
  Situation now = with_change(Place::correlation);
  now.unwritten = {"T002"};
  Questions questions;
  const auto question = questions.before(Close{}, now);
  EXPECT_EQ(question->text,
            "T001 was changed and the change is not saved, and T002 changed and is not written.");
  EXPECT_EQ(answers(*question), (Texts{"Save Raw First", "Go on Without", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{press(button::correlation_exit), press(button::save_sample),
                                                "start", press(button::save_raw)}));
}

TEST(Questions, SavingRawTellsWhichCopyItDrops) {
  Situation now = with_change(Place::chooser);
  now.unwritten = {"T002"};
  Questions questions;
  const auto question = questions.before(Close{}, now);
  EXPECT_EQ(answers(*question), (Texts{"Save Raw, Drop the Change of T001", "Go on Without", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{"start", press(button::save_raw)}));
}

// --- Asked once.

TEST(Questions, WhatWasGivenUpIsNotAskedForAgain) {
  Questions questions;
  const Situation crossdating = with_change(Place::crossdating), chooser = with_change(Place::chooser);
  ASSERT_TRUE(asked(questions, crossdating, button::choose_cores).has_value());
  questions.given_up(crossdating);
  EXPECT_FALSE(asked(questions, chooser, button::chooser_exit).has_value());
  EXPECT_FALSE(questions.before(Close{}, chooser).has_value());
}

// Exit Menu drops the copy alone.
TEST(Questions, OnlyWhatTheQuestionNamedIsGivenUp) {
  Questions questions;
  Situation now = with_change(Place::crossdating);
  now.unwritten = {"T002"};
  give_up(questions, now, button::exit_crossdating);
  EXPECT_FALSE(asked(questions, now, button::exit_crossdating).has_value());
  const auto closing = questions.before(Close{}, now);
  ASSERT_TRUE(closing.has_value());
  EXPECT_EQ(closing->text, "T002 changed and is not written.");
}

// Where the writing fails the cores stay unwritten.
TEST(Questions, WhoReplacesAFileGivesUpNoCores) {
  Questions questions;
  Situation now = with_unwritten(Place::start);
  now.replaces_other_file = true;
  give_up(questions, now, button::save_raw);
  EXPECT_TRUE(asked(questions, now, button::quit).has_value());
}

TEST(Questions, WhatOnlyStoodThereIsAskedForAgain) {
  Questions questions;
  const Situation now = with_change(Place::crossdating);
  EXPECT_TRUE(asked(questions, now, button::exit_crossdating).has_value());
  EXPECT_TRUE(asked(questions, now, button::exit_crossdating).has_value());
}

TEST(Questions, ACopyThatWasChangedFurtherIsAskedForAnew) {
  Questions questions;
  Situation now = with_change(Place::crossdating);
  give_up(questions, now, button::exit_crossdating);
  now.sample.curve = curve(1701, std::vector<double>(150, 1.25));
  EXPECT_TRUE(asked(questions, now, button::exit_crossdating).has_value());
}

TEST(Questions, TheSameChangeMadeAnewIsAskedForAnew) {
  Questions questions;
  const Situation changed = with_change(Place::crossdating), unchanged = situation_at(Place::crossdating);
  give_up(questions, changed, button::exit_crossdating);
  EXPECT_FALSE(asked(questions, unchanged, button::sample_plus_1).has_value());
  EXPECT_TRUE(asked(questions, changed, button::exit_crossdating).has_value());
}

TEST(Questions, CoresGivenUpAreAskedForAnewWhenOneOfThemChanges) {
  Questions questions;
  Situation now = with_unwritten(Place::start);
  give_up(questions, now, button::quit);
  EXPECT_FALSE(asked(questions, now, button::quit).has_value());
  now.cores[1] = core("T002", 1720, std::vector<double>(100, 1.75));
  EXPECT_TRUE(asked(questions, now, button::quit).has_value());
}

TEST(Questions, CoresGivenUpAreAskedForAnewWhenAnotherChanges) {
  Questions questions;
  Situation now = with_unwritten(Place::start);
  give_up(questions, now, button::quit);
  now.unwritten = {"T001", "T002", "T003"};
  EXPECT_TRUE(asked(questions, now, button::quit).has_value());
}

TEST(Questions, TheSameContentsInANewCopyAreTheSame) {
  Questions questions;
  Situation now = with_unwritten(Place::start);
  give_up(questions, now, button::quit);
  now.cores[1] = core("T002", 1720, std::vector<double>(100, 1.5));
  EXPECT_FALSE(asked(questions, now, button::quit).has_value());
}

// --- What is confirmed.

TEST(Questions, SaveRawAsksBeforeItReplacesTheFileOfAnother) {
  Situation now = situation_at(Place::start);
  now.replaces_other_file = true;
  const auto question = asked(now, button::save_raw);
  ASSERT_TRUE(question.has_value());
  EXPECT_EQ(question->text, "near.RWW is there already, and was not written in this session.");
  EXPECT_EQ(answers(*question), (Texts{"Replace It", "Stay"}));
}

Situation chooser_in(ButtonNumber mode, Texts marked) {
  Situation now = situation_at(Place::chooser);
  now.mode = mode;
  now.marked = std::move(marked);
  return now;
}

TEST(Questions, DeleteCoreNamesTheCores) {
  const auto question = asked(chooser_in(button::delete_core, {"T001", "T002"}), button::chooser_do_it);
  EXPECT_EQ(question->text, "Delete Core takes T001 and T002 out of the cores at work.");
  EXPECT_EQ(answers(*question), (Texts{"Delete Them", "Stay"}));
}

TEST(Questions, DeleteCoreNamesNoMoreThanTenCores) {
  const auto question = asked(chooser_in(button::delete_core, Texts(12, "T")), button::chooser_do_it);
  EXPECT_EQ(question->text,
            "Delete Core takes T, T, T, T, T, T, T, T, T, T and 2 more out of the cores at work.");
}

TEST(Questions, MoveCoreNamesTheCoresAndTheFile) {
  Situation now = chooser_in(button::move_core, {"T001"});
  now.destination = "far.rwl";
  const auto question = asked(now, button::chooser_do_it);
  EXPECT_EQ(question->text,
            "Move Core appends T001 to far.rwl at once and takes it out of the cores at work.");
  EXPECT_EQ(question->more, "This cannot be taken back.");
  EXPECT_EQ(answers(*question), (Texts{"Move It", "Stay"}));
}

TEST(Questions, WithoutACoreOrAFileNothingIsMovedAndNothingAsked) {
  EXPECT_FALSE(asked(chooser_in(button::move_core, {"T001"}), button::chooser_do_it).has_value());
  EXPECT_FALSE(asked(chooser_in(button::delete_core, {}), button::chooser_do_it).has_value());
  EXPECT_FALSE(asked(chooser_in(button::mean_core, {"T001", "T002"}), button::chooser_do_it).has_value());
  EXPECT_FALSE(asked(chooser_in(button::pick_cores, {"T001", "T002"}), button::chooser_do_it).has_value());
}

TEST(Questions, WhatWasConfirmedIsDoneAndAskedTheNextTime) {
  Questions questions;
  const Situation now = chooser_in(button::delete_core, {"T001"});
  ASSERT_TRUE(asked(questions, now, button::chooser_do_it).has_value());
  questions.given_up(now);
  EXPECT_FALSE(asked(questions, now, button::chooser_do_it).has_value());
  EXPECT_TRUE(asked(questions, now, button::chooser_do_it).has_value());
}

TEST(Questions, DeletingDropsAChangedCopyTooAndOneQuestionSaysBoth) {
  Situation now = with_change(Place::chooser);
  now.mode = button::delete_core;
  now.marked = {"T002"};
  const auto question = asked(now, button::chooser_do_it);
  EXPECT_EQ(question->text,
            "T001 was changed and the change is not saved. If you go on it is lost. Delete Core takes T002 "
            "out of the cores at work.");
  EXPECT_EQ(answers(*question), (Texts{"Delete It", "Stay"}));
}

TEST(Questions, ReadTrwWithoutItsListSaysThatTheProgramWouldEnd) {
  Situation now = situation_at(Place::start);
  now.two_column_list_missing = true;
  const auto question = asked(now, button::read_two_column);
  EXPECT_EQ(question->text, "TRW.fil is missing.");
  EXPECT_EQ(question->more, "Read TRW has nothing to read without it, and the program would end.");
  EXPECT_EQ(answers(*question), (Texts{"Be Careful and Go on", "End the Program", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), Texts{"careful read-trw"});
  now.settings.careful.set(Mend::read_trw, true);
  EXPECT_FALSE(asked(now, button::read_two_column));
}

TEST(Questions, WithCoresNotWrittenThatIsSaidToo) {
  Situation now = with_unwritten(Place::start);
  now.two_column_list_missing = true;
  const auto question = asked(now, button::read_two_column);
  EXPECT_EQ(question->text,
            "T001 and T002 changed and are not written. If you go on what is not written is lost. TRW.fil is "
            "missing.");
  EXPECT_EQ(answers(*question), (Texts{"Save Raw First", "End the Program", "Stay"}));
}

// --- Being careful.

Situation with_change_of_the_last_core() {
  Situation now = with_change(Place::crossdating, false);
  now.sample.is_core = true;
  now.sample.entry = static_cast<int>(now.cores.size());
  return now;
}

TEST(Questions, OfTheLastCoreOffersToBeCareful) {
  const auto question = asked(with_change_of_the_last_core(), button::exit_crossdating);
  ASSERT_TRUE(question);
  EXPECT_EQ(question->text,
            "T001 was changed and the change is not saved. The last core cannot be saved as things are: be "
            "careful?");
  EXPECT_EQ(answers(*question), (Texts{"Be Careful and Save Change First", "Drop the Change", "Stay"}));
  EXPECT_EQ(steps(question->answers[0]), (Texts{"careful last-core", press(button::sample_plus_1),
                                                press(button::sample_minus_1), press(button::save_sample)}));
  EXPECT_TRUE(question->answers[0].does_it);
}

TEST(Questions, ToBeCarefulIsNotOfferedWhereItIsOrCannotHelp) {
  Situation now = with_change_of_the_last_core();
  now.settings.careful.set(Mend::last_core, true);
  EXPECT_EQ(answers(*asked(now, button::exit_crossdating)), (Texts{"Drop the Change", "Stay"}));
  now = with_change_of_the_last_core();
  now.sample.entry = 1;
  EXPECT_EQ(answers(*asked(now, button::exit_crossdating)), (Texts{"Drop the Change", "Stay"}));
  // Where a slide could be stopped at the limit of the years it would not come back to where it was.
  now = with_change_of_the_last_core();
  now.reference.first_year = now.sample.last_year - max_years + 5;
  EXPECT_EQ(answers(*asked(now, button::exit_crossdating)), (Texts{"Drop the Change", "Stay"}));
}

}  // namespace
}  // namespace vorn
