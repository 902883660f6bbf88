// Waiting for the user to click on a button.
#pragma once

#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {

// Waits for a click and finds the button it hit among `buttons`, edges included. Only buttons that are on can
// be hit; where rectangles overlap the lowest number is hit. Keys are passed over, a request for help shows
// the help and the wait goes on. The wait ends the passing over of messages (see messages.h).
//
// Returns the button, none where no one was hit.
// Sets w.mous         its number, 0 for none
//      w.msx, w.msy   where the click was
//      w.offered      `buttons`, as long as it waits
//
// Where `escape` is a button, the Escape key counts as a click on it, shown or not. Carefully the key takes
// the help away first, where it is shown: no button is hit then, and the menu draws its page anew.
ButtonNumber mouse_click(Workspace& w, ButtonRange buttons, ButtonNumber escape = ButtonNumber::none);

}  // namespace vorn
