// The table of the actions, as it is written, for those who act on it.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "desk/actions.h"
#include "toolkit/buttons.h"

namespace vorn {

struct Action {
  ActionRow row;
  // What it presses: the one of these that is shown. None where it is done otherwise.
  std::array<ButtonNumber, 4> buttons = {};
};

// What the ids of the mends begin with, their names or "all" behind it: "careful-blank-line".
inline constexpr std::string_view careful_ids = "careful-";

std::span<const Action> action_table();

// Nothing where no action has this id.
const Action* action_named(std::string_view id);

}  // namespace vorn
