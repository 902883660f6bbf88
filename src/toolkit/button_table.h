// The tables of buttons and of message lines as they are when the program starts.
#pragma once

#include "workspace/controls.h"

namespace vorn {

// Fills b, mtext and madd with their initial contents. Called once, before the start menu; the menus
// change flags, labels and lines of their own and never bring the initial table back.
//
// Buttons 36-45, 53-59, 68, 74-93, 103, 116-119 and 138-140 stay all zero and are never shown; message lines
// without a rectangle here stay blank.
void set_up_graph(Controls& w);

}  // namespace vorn
