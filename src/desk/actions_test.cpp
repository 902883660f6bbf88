#include "desk/actions.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "desk/action_table.h"
#include "desk/page_cursor.h"
#include "desk/specimens_for_tests.h"
#include "toolkit/button_names.h"

namespace vorn {
namespace {

constexpr Place places[] = {Place::start,     Place::chronologies, Place::crossdating, Place::pick_year,
                            Place::keep_edit, Place::correlation,  Place::chooser,     Place::editor};

// The buttons that a deed presses, in order.
std::vector<ButtonNumber> pressed(const std::optional<Deed>& deed) {
  std::vector<ButtonNumber> buttons;
  if (!deed || !std::holds_alternative<Play>(*deed)) return buttons;
  for (const PlayStep& step : std::get<Play>(*deed).steps) {
    EXPECT_EQ(step.kind, PlayStep::Kind::press);
    buttons.push_back(step.button);
  }
  return buttons;
}

bool has_button(const Action& action, ButtonNumber n) {
  return std::ranges::find(action.buttons, n) != action.buttons.end();
}

// --- The table.

TEST(ActionTable, NoIdAndNoTextStandsTwice) {
  std::set<std::string_view> ids, texts;
  for (const ActionRow& row : action_rows()) {
    EXPECT_TRUE(ids.insert(row.id).second) << row.id;
    EXPECT_TRUE(texts.insert(row.text).second) << row.text;
  }
  EXPECT_GT(ids.size(), 60u);
}

TEST(ActionTable, EveryTextBeginsWithACapital) {
  for (const ActionRow& row : action_rows()) {
    EXPECT_GE(row.text.front(), 'A') << row.text;
    EXPECT_LE(row.text.front(), 'Z') << row.text;
  }
}

TEST(ActionTable, EveryMendCanBeSwitchedOnAndOff) {
  Situation now = situation_at(Place::start);
  for (const MendRow& mend : mends()) {
    const std::string id = "careful-" + std::string(mend.name);
    now.settings.careful = {};
    EXPECT_FALSE(state_of(id, standing_at(now)).is_chosen) << id;
    const auto on = deed_of(id, standing_at(now));
    ASSERT_TRUE(on && std::holds_alternative<CarefulSwitch>(*on)) << id;
    std::get<CarefulSwitch>(*on).apply(now.settings.careful);
    EXPECT_EQ(names_of(now.settings.careful), mend.name);
    EXPECT_TRUE(state_of(id, standing_at(now)).is_chosen) << id;
    EXPECT_FALSE(std::get<CarefulSwitch>(*deed_of(id, standing_at(now))).on) << id;
  }
  EXPECT_FALSE(state_of("careful-all", standing_at(now)).is_chosen);
  now.settings.careful = Careful::everything();
  EXPECT_TRUE(state_of("careful-all", standing_at(now)).is_chosen);
  now.wait = Wait::number;
  EXPECT_FALSE(deed_of("careful-all", standing_at(now)));
}

TEST(ActionTable, MenusFollowEachOther) {
  for (std::size_t k = 1; k < action_rows().size(); ++k) {
    EXPECT_LE(action_rows()[k - 1].menu, action_rows()[k].menu) << action_rows()[k].id;
  }
}

TEST(ActionTable, NoKeyDoesTwoThings) {
  std::map<std::string_view, std::string_view> users;
  for (const ActionRow& row : action_rows()) {
    for (const std::string_view key : {row.key, row.other_key}) {
      if (key.empty()) continue;
      EXPECT_TRUE(users.emplace(key, row.id).second) << key << ": " << users[key] << " and " << row.id;
    }
  }
  EXPECT_GT(users.size(), 30u);
}

// What is typed into names and numbers is the program's; so are Return, Backspace and Escape, and Tab is the
// cursor's. Two letters act at menus alone, where the program takes no letters.
TEST(ActionTable, NoKeyIsOneThatIsTyped) {
  const std::set<std::string_view> free = {"Left",   "Right", "Up",  "Down", "PgUp",
                                           "PgDown", "Ins",   "Del", "N",    "P"};
  for (const ActionRow& row : action_rows()) {
    for (const std::string_view key : {row.key, row.other_key}) {
      const std::string_view alone = key.substr(key.rfind('+') == key.npos ? 0 : key.rfind('+') + 1);
      const bool is_function_key = alone.size() > 1 && alone[0] == 'F' && alone[1] >= '1' && alone[1] <= '9';
      const bool is_held = key.find("Ctrl+") != key.npos || key.find("Alt+") != key.npos;
      EXPECT_TRUE(key.empty() || is_function_key || is_held || free.contains(alone)) << key;
    }
  }
}

TEST(ActionTable, TheKeysThatUsersKnowStay) {
  const std::map<std::string_view, std::string_view> known = {
      {"full_screen", "F11"}, {"save_page", "Ctrl+S"}, {"print_page", "Ctrl+P"}, {"copy_page", "Ctrl+C"},
      {"guide", "Ctrl+H"},    {"help_here", "F1"},     {"notices", "F6"}};
  for (const auto& [id, key] : known) {
    ASSERT_NE(action_named(id), nullptr) << id;
    EXPECT_EQ(action_named(id)->row.key, key);
    EXPECT_TRUE(action_named(id)->row.window_does_it) << id;
  }
}

// Whether the page cursor comes to it by Tab, on one of the pages that show it.
bool cursor_reaches(ButtonNumber n) {
  for (const Place place : places) {
    Situation now = situation_at(place);
    if (!now.shown(n)) continue;
    PageCursor cursor;
    for (std::size_t k = 0; k < now.buttons.size(); ++k) {
      cursor.go(PageCursor::Step::next, now);
      const auto click = cursor.click(now);
      if (click && now.at(click->x, click->y)->number == n) return true;
    }
  }
  return false;
}

// "Quit" of the picking of a year is in the table of buttons, but no page shows it.
TEST(ActionTable, EveryButtonCanBePressedWithoutAMouse) {
  for (const NamedButton& button : named_buttons()) {
    if (button.number == button::leave_pick) continue;
    const bool by_action = std::ranges::any_of(
        action_table(), [&](const Action& action) { return has_button(action, button.number); });
    EXPECT_TRUE(by_action || cursor_reaches(button.number)) << button.name;
  }
}

// --- How actions stand.

TEST(ActionState, AButtonsActionCanBeDoneExactlyWhereItIsShown) {
  int done = 0;
  for (const Place place : places) {
    const Standing standing = standing_at(place);
    for (const Action& action : action_table()) {
      if (action.buttons.front() == ButtonNumber::none || action.row.id == "quit") continue;
      const bool shown =
          standing.situation->wait == Wait::menu && std::ranges::any_of(action.buttons, [&](ButtonNumber n) {
            return n != ButtonNumber::none && standing.situation->shown(n);
          });
      const ActionState state = state_of(action.row.id, standing);
      EXPECT_EQ(state.can_be_done, shown) << action.row.id;
      EXPECT_EQ(state.why_not.empty(), shown) << action.row.id;
      EXPECT_EQ(deed_of(action.row.id, standing).has_value(), shown) << action.row.id;
      done += shown;
    }
  }
  EXPECT_GT(done, 60);
}

TEST(ActionState, TellsWhereAnActionIs) {
  const Standing start = standing_at(Place::start), crossdating = standing_at(Place::crossdating);
  EXPECT_EQ(state_of("save_raw", crossdating).why_not, "on the start menu");
  EXPECT_EQ(state_of("insert_ring", start).why_not, "on the cross-dating screen");
  EXPECT_EQ(state_of("save_sample", crossdating).why_not, "when there is a change to save");
  EXPECT_EQ(state_of("keep_change", start).why_not, "when a ring was inserted or deleted");
  EXPECT_EQ(state_of("back", start).why_not, "on the pages behind the start menu");
  EXPECT_EQ(state_of("crossdate", standing_at(Place::pick_year)).why_not, "when a year was picked");
  EXPECT_EQ(state_of("crossdate", standing_at(Place::chronologies)).why_not, "when a chronology was chosen");
  EXPECT_EQ(state_of("crossdate", standing_at(Place::none)).why_not, "when the message on the page was read");
  EXPECT_EQ(state_of("crossdate", Standing()).why_not, "when the program is ready");
}

TEST(ActionState, WhereNeitherOfThePairIsACoreNoRingIsInserted) {
  Situation now = situation_at(Place::crossdating);
  hide(now, button::insert_ring);
  EXPECT_EQ(state_of("insert_ring", standing_at(now)).why_not, "where one of the pair is a core");
}

TEST(ActionState, WhatIsOffTheTableCannotBeDone) {
  EXPECT_FALSE(state_of("no_such_action", standing_at(Place::start)).can_be_done);
  EXPECT_FALSE(deed_of("no_such_action", standing_at(Place::start)).has_value());
}

TEST(ActionState, TheSettingsAreChosenAsTheyAre) {
  Situation now = situation_at(Place::start);
  now.settings.aron = false;
  now.settings.raw_output = Layout::compact;
  const Standing standing = standing_at(now);
  EXPECT_TRUE(state_of("spline_on", standing).is_chosen);
  EXPECT_FALSE(state_of("ar_on", standing).is_chosen);
  EXPECT_TRUE(state_of("raw_compact", standing).is_chosen);
  EXPECT_FALSE(state_of("raw_tucson", standing).is_chosen);
  EXPECT_TRUE(state_of("crn_index", standing).is_chosen);
}

// Both of its buttons are lit from the start, when the table is shown.
TEST(ActionState, OnTheCorrelationScreenTheTableIsChosenWhenItsButtonIsLit) {
  Situation now = situation_at(Place::correlation);
  EXPECT_TRUE(state_of("correlation_table", standing_at(now)).is_chosen);
  EXPECT_FALSE(state_of("best_fit", standing_at(now)).is_chosen);
  for (ShownButton& button : now.buttons) button.lit = button.number != button::correlation_table;
  EXPECT_FALSE(state_of("correlation_table", standing_at(now)).is_chosen);
  EXPECT_TRUE(state_of("best_fit", standing_at(now)).is_chosen);
}

TEST(ActionState, TheViewIsChosenAsItIs) {
  Situation now = situation_at(Place::crossdating);
  EXPECT_TRUE(state_of("indices", standing_at(now)).is_chosen);
  EXPECT_TRUE(state_of("line_plot", standing_at(now)).is_chosen);
  now.curves_are_indices = false;
  for (ShownButton& button : now.buttons) {
    if (button.number == button::line_plot) button.label = "Skeleton";
  }
  EXPECT_FALSE(state_of("indices", standing_at(now)).is_chosen);
  EXPECT_FALSE(state_of("line_plot", standing_at(now)).is_chosen);
}

TEST(ActionState, TheChoosersModeIsChosen) {
  Situation now = situation_at(Place::chooser);
  now.mode = button::delete_core;
  EXPECT_TRUE(state_of("delete_core", standing_at(now)).is_chosen);
  EXPECT_FALSE(state_of("pick_cores", standing_at(now)).is_chosen);
}

TEST(ActionState, UndoAndRedoSayWhatTheyDo) {
  Standing standing = standing_at(Place::crossdating);
  EXPECT_FALSE(state_of("undo", standing).can_be_done);
  standing.to_undo = "Insert 1750 in T001";
  standing.to_redo = "Move T001 by 10 years";
  standing.can_undo = standing.can_redo = true;
  EXPECT_EQ(state_of("undo", standing).now, "Undo Insert 1750 in T001");
  EXPECT_EQ(state_of("redo", standing).now, "Redo Move T001 by 10 years");
  EXPECT_TRUE(std::holds_alternative<Undo>(*deed_of("undo", standing)));
  EXPECT_TRUE(std::holds_alternative<Redo>(*deed_of("redo", standing)));
}

TEST(ActionState, ANoteIsOnADecision) {
  Standing standing = standing_at(Place::crossdating);
  EXPECT_FALSE(state_of("note", standing).can_be_done);
  standing.decisions.resize(1);
  standing.taken = 1;
  EXPECT_TRUE(state_of("note", standing).can_be_done);
}

TEST(ActionState, CoresFollowEachOtherWhereTheProgramWaitsForAButton) {
  for (const char* id : {"next_core", "previous_core"}) {
    EXPECT_EQ(state_of(id, {}).why_not, "when the program is ready");
    for (const Place place :
         {Place::start, Place::crossdating, Place::correlation, Place::chooser, Place::editor}) {
      EXPECT_TRUE(state_of(id, standing_at(place)).can_be_done) << static_cast<int>(place);
    }
    EXPECT_EQ(state_of(id, standing_at(Place::chronologies)).why_not, "when a chronology was chosen");
    EXPECT_EQ(state_of(id, standing_at(Place::keep_edit)).why_not, "when the change was kept or taken back");
    EXPECT_EQ(state_of(id, standing_at(Place::pick_year)).why_not, "when a year was picked");
    Situation typing = situation_at(Place::chooser);
    typing.wait = Wait::name;
    EXPECT_EQ(state_of(id, standing_at(typing)).why_not, "when Return has ended what is typed");
    Standing asked = standing_at(Place::crossdating);
    asked.question = Question{};
    EXPECT_EQ(state_of(id, asked).why_not, "when the question is answered");
  }
}

TEST(ActionState, TheCorrectedFileIsUsedOnceItWasWritten) {
  Standing standing = standing_at(Place::start);
  EXPECT_EQ(state_of("use_corrected", standing).why_not, "when Save Raw has written it");
  standing.decisions.resize(1);
  standing.decisions[0].wrote = "linear.RWW";
  EXPECT_FALSE(state_of("use_corrected", standing).can_be_done);
  standing.decisions[0].wrote = "Stats.prn, near.RWW";
  EXPECT_TRUE(state_of("use_corrected", standing).can_be_done);
}

TEST(ActionState, WhileAQuestionStandsTheProgramTakesNothing) {
  Standing standing = standing_at(Place::start);
  standing.question = Question{};
  EXPECT_FALSE(state_of("save_raw", standing).can_be_done);
  EXPECT_FALSE(state_of("quit", standing).can_be_done);
  EXPECT_TRUE(state_of("save_page", standing).can_be_done);
}

// --- What actions do.

TEST(ActionDeed, PressesTheButtonThatIsShown) {
  EXPECT_EQ(pressed(deed_of("save_raw", standing_at(Place::start))), std::vector{button::save_raw});
  EXPECT_EQ(pressed(deed_of("insert_ring", standing_at(Place::crossdating))),
            std::vector{button::insert_ring});
  EXPECT_EQ(pressed(deed_of("insert_ring", standing_at(Place::editor))), std::vector{button::editor_insert});
  EXPECT_EQ(pressed(deed_of("keep_change", standing_at(Place::keep_edit))),
            std::vector{button::insertion_ok});
  EXPECT_EQ(pressed(deed_of("choose_cores", standing_at(Place::correlation))),
            std::vector{button::correlation_choose});
}

TEST(ActionDeed, BackLeavesEveryPageBehindTheStartMenu) {
  EXPECT_EQ(pressed(deed_of("back", standing_at(Place::crossdating))), std::vector{button::exit_crossdating});
  EXPECT_EQ(pressed(deed_of("back", standing_at(Place::correlation))), std::vector{button::correlation_exit});
  EXPECT_EQ(pressed(deed_of("back", standing_at(Place::chooser))), std::vector{button::chooser_exit});
  EXPECT_EQ(pressed(deed_of("back", standing_at(Place::editor))), std::vector{button::editor_exit});
}

TEST(ActionDeed, IsNamedWithoutTheDotsOfWhatIsAsked) {
  const auto deed = deed_of("display_width", standing_at(Place::crossdating));
  EXPECT_EQ(std::get<Play>(*deed).what, "Years Shown");
}

TEST(ActionDeed, QuitIsTheButtonOrTheClosingOfTheWindow) {
  EXPECT_EQ(pressed(deed_of("quit", standing_at(Place::start))), std::vector{button::quit});
  EXPECT_TRUE(std::holds_alternative<Close>(*deed_of("quit", standing_at(Place::crossdating))));
  EXPECT_TRUE(std::holds_alternative<Close>(*deed_of("quit", Standing())));
}

TEST(ActionDeed, TheEarlierSessionIsTakenUpByItsJournal) {
  Standing standing = standing_at(Place::start);
  EXPECT_FALSE(deed_of("take_up", standing).has_value());
  standing.to_take_up = ".vorn/session-1";
  EXPECT_EQ(std::get<TakeUp>(*deed_of("take_up", standing)).journal, ".vorn/session-1");
}

TEST(ActionDeed, WhatTheWindowDoesHasNone) {
  for (const ActionRow& row : action_rows()) {
    if (row.window_does_it) {
      EXPECT_FALSE(deed_of(row.id, standing_at(Place::crossdating)).has_value()) << row.id;
    }
  }
}

// --- The page of keys.

TEST(KeysPage, HasEveryKeyAndWhatItDoes) {
  const std::string page = keys_page();
  for (const ActionRow& row : action_rows()) {
    if (row.key.empty()) continue;
    EXPECT_NE(page.find(std::string(row.text) + "\n"), page.npos) << row.id;
    EXPECT_NE(page.find(row.key), page.npos) << row.key;
  }
  EXPECT_NE(page.find("\nCtrl+Y or Ctrl+Shift+Z      Redo\n"), page.npos) << page;
  EXPECT_NE(page.find("\nTab, Shift+Tab              To the next button"), page.npos) << page;
  EXPECT_NE(page.find("\nIn a panel\n"), page.npos) << page;
}

}  // namespace
}  // namespace vorn
