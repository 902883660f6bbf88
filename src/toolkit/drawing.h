// Buttons, message lines and the controls of the cross-dating screen as marks on the page.
#pragma once

#include <optional>
#include <string_view>

#include "plot/colour.h"
#include "workspace/vorndata.h"

namespace vorn {

// Draws button n if it is on: its face, a border and its text, leaving the colour at ink. Draws nothing, not
// even the border, when it is off.
//
// Given: text    shown instead of the button's label unless it is blank
//        colour  of the face; none: by state, yellow when the button is lit and grey when it is not
void but_draw(const Workspace& w, ButtonNumber n, std::string_view text = {},
              std::optional<Colour> colour = {});

// Draws message line i, 15 units below the upper edge of its rectangle.
void mwrite(const Workspace& w, MessageNumber i);

// Draws, at the right of the cross-dating screen's controls, `text` and the names of the two series compared
// in the colours of their curves.
void graph_mes(const Workspace& w, std::string_view text);

// Empties the page and draws the controls of the cross-dating screen as they are switched on, with their
// captions and the names of the two working entries. The click zones over the plots are not drawn.
void setupbuttons(const Workspace& w);

}  // namespace vorn
