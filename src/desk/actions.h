// The actions of the menus: what each is called, its key, whether it can be done now, and the deed it is.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sessions/deeds.h"
#include "sessions/standing.h"

namespace vorn {

enum class Menu : std::uint8_t { file, edit, view, cores, careful, help };

// One row of the table of actions. Those that the window does by itself (saving a picture, the guide) have no
// deed: they are in the table so that the page of keys and the menus are complete.
struct ActionRow {
  std::string_view id;  // "save_raw"
  Menu menu = Menu::file;
  std::string_view text;      // "Save Raw"; with "…" where more is asked before it is done
  std::string_view key = {};  // as key sequences are written: "Ctrl+Shift+S"; empty for none
  bool window_does_it = false;
  bool starts_group = false;        // a line is drawn above it
  bool switches = false;            // it is on or off, or one of several: see ActionState::is_chosen
  std::string_view other_key = {};  // does the same
};
std::span<const ActionRow> action_rows();

// How it stands.
struct ActionState {
  bool can_be_done = false;
  bool is_chosen = false;  // of those that switch something
  std::string now = {};  // the text, where it says more now: "Undo Insert 1750 in T001"; empty for the usual
  std::string why_not = {};  // for the tip, where it cannot be done: "on the start menu"
};
ActionState state_of(std::string_view id, const Standing& standing);

// What it is done by; nothing where it cannot be done, or the window does it.
std::optional<Deed> deed_of(std::string_view id, const Standing& standing);

// Moves of the sample as they are typed or dragged: by so many years, or so that it begins in a year. Played
// on the scroll buttons of the cross-dating screen. Nothing elsewhere, and for a move by 0.
std::optional<Deed> move_sample_by(std::int64_t years, const Standing& standing);
std::optional<Deed> begin_sample_in(std::int64_t year, const Standing& standing);
// Changes the first year shown by so many, as far as the program lets.
std::optional<Deed> scroll_years_by(std::int64_t years, const Standing& standing);

// All keys and what they do, a line each: those of the actions, menu by menu, then those of the page.
std::string keys_page();

}  // namespace vorn
