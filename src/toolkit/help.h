// The help screen: a framed text out of the file "Help.prn".
#pragma once

#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {

// What of the help stands on the page: the lines that its box has room for, 0 where there is none.
struct HelpShown {
  int lines = 0;
};

// Shows the help for what lies under the cursor (w.msx, w.msy): button 94 to 115 that is on, else message
// line 20 to 37, left in w.mous. The box stays until the menu redraws its page.
//
// Help.prn: two lines that are skipped, then at most 500 records "(I2,3I4,A80)": a kind, a button number, a
// message number, the number of text lines that follow as "(A80)", and a title. Shown is the first record
// that has the number looked for, or whose kind is 0, the end marker.
//
// No rectangle is ever found under the cursor: the test for it runs the wrong way up (help.cpp). So a
// message with number 0 is looked for, and the first record that has message number 0, or the end marker, is
// what users see.
//
// Failures to open and to read a record are told as "Open" and "Read"; the box is drawn all the same. Behind
// the end of the file one "Read" is told, and the title of the last record is what is left to draw.
//
// Carefully what lies under the cursor is found, among the buttons `shown` and, on the start menu, the
// message lines; and the text is broken to the width of the box, which is as high as it, at least as high as
// the one shown `before` on the same page.
HelpShown vorn_help(Workspace& w, ButtonRange shown = button::start, HelpShown before = {});

}  // namespace vorn
