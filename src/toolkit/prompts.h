// Typed input: a prompt is typed into a button's own label.
#pragma once

#include <cstdint>

#include "workspace/vorndata.h"

namespace vorn {

// Lets the user type a text of at most 12 characters into the label of button n, ended by Return or by the
// twelfth character. An entry of fewer than two characters brings the old label back: a name of one character
// is refused. There are no editing keys; Backspace and the like are stored as characters.
//
// Carefully Backspace takes the last character away, Escape brings the old label back, and other control
// codes, clicks and requests for help are passed over.
void get_str(Workspace& w, ButtonNumber n);

// How the entry of a number ended.
enum class Entry : std::uint8_t {
  taken,      // by Return behind a digit
  empty,      // by Return alone, which means 0
  abandoned,  // by a key that is no digit
  left,       // carefully: so that nothing at all is to be changed by it
};

// Lets the user type a number into button n, which is lit and stays so: at most five digits, with "-" before
// them or without. v takes the number only when the entry is ended by Return (which alone means 0); any other
// key that is no digit, and a sixth digit, abandon the entry and leave v as it was. The caller judges the
// range and writes the label anew.
//
// Carefully Backspace takes the last character away; Return alone and an entry that is abandoned leave
// everything as it was.
Entry get_int(Workspace& w, ButtonNumber n, std::int32_t& v);

}  // namespace vorn
