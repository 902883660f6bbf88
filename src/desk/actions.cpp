#include "desk/actions.h"

#include <algorithm>

#include "desk/action_table.h"

namespace vorn {
namespace {

const ShownButton* shown_of(const Action& action, const Situation& situation) {
  if (situation.wait != Wait::menu) return nullptr;
  for (const ButtonNumber n : action.buttons) {
    if (n == ButtonNumber::none) break;
    if (const ShownButton* button = situation.shown(n)) return button;
  }
  return nullptr;
}

// --- Why it cannot be done.

Place place_of(ButtonNumber n) {
  if (button::start.contains(n)) return Place::start;
  if (button::correlation.contains(n)) return Place::correlation;
  if (button::chooser.contains(n)) return Place::chooser;
  if (button::editor.contains(n)) return Place::editor;
  return Place::crossdating;
}

std::string_view where(Place place) {
  switch (place) {
    case Place::start:
      return "on the start menu";
    case Place::correlation:
      return "on the correlation screen";
    case Place::chooser:
      return "in the chooser";
    case Place::editor:
      return "in the raw-data editor";
    default:
      return "on the cross-dating screen";
  }
}

// Of a button that its own page does not show now; empty where its page always does.
std::string_view when(ButtonNumber n) {
  switch (n) {
    case button::insert_ring:
    case button::delete_ring:
      return "where one of the pair is a core";
    case button::insertion_ok:
    case button::insertion_not:
      return "when a ring was inserted or deleted";
    case button::save_sample:
    case button::save_reference:
      return "when there is a change to save";
    case button::mean_name:
      return "in the mode Mean Core";
    default:
      return "";
  }
}

std::string_view what_comes_first(const Situation& now) {
  switch (now.wait) {
    case Wait::message:
      return "when the message on the page was read";
    case Wait::number:
    case Wait::name:
      return "when Return has ended what is typed";
    case Wait::year:
      return "when a year was picked";
    case Wait::menu:
      break;
  }
  if (now.place == Place::chronologies) return "when a chronology was chosen";
  if (now.place == Place::keep_edit) return "when the change was kept or taken back";
  return "";
}

std::string why_not(const Action& action, const Situation& now) {
  if (const auto first = what_comes_first(now); !first.empty()) return std::string(first);
  if (action.row.id == "back") return "on the pages behind the start menu";
  const ButtonNumber n = action.buttons.front();
  const std::string_view reason = when(n);
  const bool is_here = now.place == place_of(n);
  return std::string(reason.empty() || (!is_here && n != button::insertion_ok && n != button::insertion_not)
                         ? where(place_of(n))
                         : reason);
}

// --- Which of those that switch something are on.

bool is_chosen(ButtonNumber n, const Situation& now) {
  const auto is_lit = [&now](ButtonNumber of) {
    const ShownButton* button = now.shown(of);
    return button && button->lit;
  };
  switch (n) {
    case button::spline_on:
      return now.settings.splineon;
    case button::ar_on:
      return now.settings.aron;
    case button::log_on:
      return now.settings.logon;
    case button::raw_tucson:
      return now.settings.raw_output == Layout::tucson_raw;
    case button::raw_heidelberg:
      return now.settings.raw_output == Layout::heidelberg;
    case button::raw_compact:
      return now.settings.raw_output == Layout::compact;
    case button::crn_index:
      return now.settings.crn_output == ChronologyOutput::index;
    case button::crn_column:
      return now.settings.crn_output == ChronologyOutput::column;
    case button::indices:
      return now.curves_are_indices;
    case button::line_plot: {
      const ShownButton* button = now.shown(n);
      return button && button->label == "Line Plot";
    }
    case button::correlation_table:
      return is_lit(n);
    case button::best_fit:  // lit from the start, whatever is shown: what counts is the other one
      return now.shown(n) && !is_lit(button::correlation_table);
    default:
      return button::chooser_modes.contains(n) && now.mode == n;
  }
}

// --- Those that press no button.

// Of an id in the menu Careful: what it switches to.
CarefulSwitch switch_of(std::string_view id, const Careful& now) {
  const MendRow* const row = mend_named(id.substr(careful_ids.size()));
  if (!row) return {.on = now != Careful::everything()};
  return {.mend = row->mend, .on = !now.has(row->mend)};
}

ActionState done_if(bool can_be_done, std::string_view why_not) {
  return {.can_be_done = can_be_done, .why_not = can_be_done ? "" : std::string(why_not)};
}

ActionState state_of_undo(const Standing& standing) {
  ActionState state = done_if(standing.can_undo, "nothing was done that can be taken back");
  if (standing.can_undo && !standing.to_undo.empty()) state.now = "Undo " + standing.to_undo;
  return state;
}

ActionState state_of_redo(const Standing& standing) {
  ActionState state = done_if(standing.can_redo, "nothing was taken back");
  if (standing.can_redo && !standing.to_redo.empty()) state.now = "Redo " + standing.to_redo;
  return state;
}

// A decision may have written several files, told one behind the other.
bool was_written(const Standing& standing) {
  const std::string output = standing.situation ? standing.situation->raw_output : "";
  return !output.empty() && std::ranges::any_of(standing.decisions, [&output](const Decision& decision) {
    return (", " + decision.wrote + ", ").find(", " + output + ", ") != std::string::npos;
  });
}

// Cores are put on the page by clicks on it, from where a way leads to the chooser.
ActionState state_of_a_step(const Standing& standing) {
  if (standing.question) return done_if(false, "when the question is answered");
  if (!standing.situation) return done_if(false, "when the program is ready");
  const std::string_view first = what_comes_first(*standing.situation);
  return done_if(first.empty(), first);
}

ActionState state_of_window_action(std::string_view id, const Standing& standing) {
  if (id == "move_sample" || id == "begin_sample") return state_of("sample_plus_1", standing);
  if (id == "next_core" || id == "previous_core") return state_of_a_step(standing);
  if (id == "note") return done_if(standing.taken > 0, "when something was decided");
  if (id == "save_corrected" || id == "what_changed") {
    const bool has_cores = standing.situation && !standing.situation->cores.empty();
    return done_if(has_cores, "when cores are loaded");
  }
  if (id == "use_corrected") return done_if(was_written(standing), "when Save Raw has written it");
  return {.can_be_done = true};
}

ActionState state_of_mend(std::string_view id, const Situation& now) {
  ActionState state = done_if(now.wait == Wait::menu || now.wait == Wait::year, what_comes_first(now));
  state.is_chosen = !switch_of(id, now.settings.careful).on;
  return state;
}

std::string what_it_does(const ActionRow& row) {
  constexpr std::string_view asks = "…";
  return std::string(row.text.ends_with(asks) ? row.text.substr(0, row.text.size() - asks.size()) : row.text);
}

}  // namespace

ActionState state_of(std::string_view id, const Standing& standing) {
  const Action* action = action_named(id);
  if (!action) return {};
  if (standing.question && !action->row.window_does_it)
    return done_if(false, "when the question is answered");
  if (action->row.window_does_it) return state_of_window_action(id, standing);
  if (id == "quit") return {.can_be_done = true};
  if (id == "undo") return state_of_undo(standing);
  if (id == "redo") return state_of_redo(standing);
  if (id == "take_up")
    return done_if(!standing.to_take_up.empty(), "when an earlier session left work behind");
  if (!standing.situation) return done_if(false, "when the program is ready");
  const Situation& now = *standing.situation;
  if (action->row.menu == Menu::careful) return state_of_mend(id, now);
  ActionState state = done_if(shown_of(*action, now) != nullptr, why_not(*action, now));
  state.is_chosen = action->row.switches && is_chosen(action->buttons.front(), now);
  return state;
}

std::optional<Deed> deed_of(std::string_view id, const Standing& standing) {
  const Action* action = action_named(id);
  if (!action || action->row.window_does_it || !state_of(id, standing).can_be_done) return {};
  if (id == "undo") return Undo{};
  if (id == "redo") return Redo{};
  if (id == "take_up") return TakeUp{standing.to_take_up};
  if (action->row.menu == Menu::careful) return switch_of(id, standing.situation->settings.careful);
  const ShownButton* button = standing.situation ? shown_of(*action, *standing.situation) : nullptr;
  if (!button) return Close{};  // "quit", where its button is not shown
  return Play{{{.kind = PlayStep::Kind::press, .button = button->number}}, what_it_does(action->row)};
}

}  // namespace vorn
