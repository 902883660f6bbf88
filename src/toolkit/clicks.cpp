#include "toolkit/clicks.h"

#include "plot/plot.h"
#include "toolkit/help.h"

namespace vorn {
namespace {

bool is_hit(const Button& button, int x, int y) {
  return button.on && button.x1 <= x && x <= button.x2 && button.y1 <= y && y <= button.y2;
}

ButtonNumber under_cursor(const Workspace& w, ButtonRange buttons) {
  for (const ButtonNumber n : buttons) {
    if (is_hit(w.b(n), w.msx, w.msy)) return n;
  }
  return ButtonNumber::none;
}

ButtonNumber noted(Workspace& w, ButtonNumber hit) {
  w.mous = plain(hit);
  return hit;
}

// Carefully Escape leaves the help: the menu draws its page anew.
bool leaves_help(const Workspace& w, const Event& event, const HelpShown& help) {
  return event.code == Event::escape && help.lines > 0 && w.careful.has(Mend::escape);
}

}  // namespace

ButtonNumber mouse_click(Workspace& w, ButtonRange buttons, ButtonNumber escape) {
  Event event;
  HelpShown help;
  do {
    if (event.code == Event::help) help = vorn_help(w, buttons, help);
    w.passing_over_messages = false;
    w.offered = buttons;
    event = w.plot.csrpos();
    w.offered = {};
    w.msx = event.x;
    w.msy = event.y;
    if (leaves_help(w, event, help)) return noted(w, ButtonNumber::none);
    if (event.code == Event::escape && escape != ButtonNumber::none) return noted(w, escape);
  } while (event.code != Event::click);
  return noted(w, under_cursor(w, buttons));
}

}  // namespace vorn
