// Waiting for the user to click on a button.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Waits for a click and finds the button it hit among buttons first to last, edges included. Only buttons
// that are on can be hit; where rectangles overlap the lowest number is hit. Keys are passed over, a request
// for help shows the help and the wait goes on.
//
// Returned: w.mous      the number of the button, 0 for none; always 0 when first > last
//           w.msx, msy  where the click was
// The wait ends the passing over of messages (see messages.h).
//
// Where `escape` is the number of a button, the Escape key counts as a click on it, shown or not.
void mouse_click(Workspace& w, int first, int last, int escape = 0);

}  // namespace vorn
