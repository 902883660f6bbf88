// Waiting for the user to click on a button.
#pragma once

#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {

// Waits for a click and finds the button it hit among `buttons`, edges included. Only buttons that are on can
// be hit; where rectangles overlap the lowest number is hit. Keys are passed over, a request for help shows
// the help and the wait goes on.
//
// Returns: the button, none where no one was hit. It stays in w.mous as a number, 0 for none, and where the
// click was in w.msx, msy. The wait ends the passing over of messages (see messages.h).
//
// Where `escape` is the number of a button, the Escape key counts as a click on it, shown or not.
ButtonNumber mouse_click(Workspace& w, ButtonRange buttons, ButtonNumber escape = ButtonNumber::none);

}  // namespace vorn
