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

}  // namespace

ButtonNumber mouse_click(Workspace& w, ButtonRange buttons, ButtonNumber escape) {
  Event event;
  do {
    if (event.code == Event::help) vorn_help(w);
    w.passing_over_messages = false;
    w.offered = buttons;
    event = w.plot.csrpos();
    w.offered = {};
    w.msx = event.x;
    w.msy = event.y;
    if (event.code == Event::escape && escape != ButtonNumber::none) return noted(w, escape);
  } while (event.code != Event::click);
  return noted(w, under_cursor(w, buttons));
}

}  // namespace vorn
