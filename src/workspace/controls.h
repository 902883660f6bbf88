// Buttons, message lines, and what the user did last.
#pragma once

#include <cstdint>

#include "records/status.h"
#include "workspace/names.h"
#include "workspace/numbers.h"

namespace vorn {

// A rectangle of the page, in page units.
struct Rectangle {
  int x1 = 0, y1 = 0;  // left, top
  int x2 = 0, y2 = 0;  // right, bottom
};

// One control of the program: a rectangle that it paints and hit-tests itself.
struct Button : Rectangle {
  Label label;
  bool on = false;   // shown and clickable
  bool lit = false;  // highlighted; of options, the one chosen
};

// What the user types into a button's own label.
enum class Typing : std::uint8_t { nothing, number, name };

struct Controls {
  Controls();

  NumberedTable<ButtonNumber, Button> b;
  NumberedTable<MessageNumber, Label> mtext;     // message lines
  NumberedTable<MessageNumber, Rectangle> madd;  // and where they stand
  Text<140> mess;                                // line buffer
  std::int32_t mous = 0;                         // button hit last, 0 for none
  std::int32_t msx = 0, msy = 0;                 // where the click was
  Status ios;                                    // of the last file operation
  bool fileok = false;                           // answer of the last test whether a file exists
  ButtonRange offered;              // the buttons that the wait at hand takes clicks on; none at other waits
  Typing typing = Typing::nothing;  // what the wait at hand takes, where it is no click
  std::int32_t passes_left = 0;     // clicks until the menu at hand ends by itself
  bool passing_over_messages = false;  // Escape was pressed at a message: those that follow are not shown
};

}  // namespace vorn
