// What a user sees of the program: which buttons are on the page, and so which screen it is.
#pragma once

#include <vector>

#include "walk/invariants.h"
#include "workspace/vorndata.h"

namespace vorn {

// The numbers, in order, of the buttons that are on the page last drawn and can be hit there.
std::vector<ButtonNumber> shown_buttons(const Workspace& w);

// Notes in `state` which screen is shown, from the buttons that are on it.
void note_screen(WalkState& state, const std::vector<ButtonNumber>& shown);

}  // namespace vorn
