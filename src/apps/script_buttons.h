// The buttons that scripts press, as the program at work has them.
#pragma once

#include <string_view>

#include "sessions/scripted_screen.h"

namespace vorn {

struct Workspace;

// The number of the button of this name, 0 where no button has it.
int script_button(std::string_view name);

// Where the buttons are and which are shown, in the state to which `w` then points: on, and among those that
// the program waits for a click on.
ButtonPlaces button_places(const Workspace* const& w);

}  // namespace vorn
