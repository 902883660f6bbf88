#include "toolkit/clicks.h"

#include "plot/plot.h"
#include "toolkit/help.h"

namespace vorn {
namespace {

bool is_hit(const Button& button, int x, int y) {
  return button.on && button.x1 <= x && x <= button.x2 && button.y1 <= y && y <= button.y2;
}

}  // namespace

void mouse_click(Workspace& w, int first, int last, int escape) {
  Event event;
  do {
    if (event.code == Event::help) vorn_help(w);
    w.passing_over_messages = false;
    event = w.plot.csrpos();
    w.msx = event.x;
    w.msy = event.y;
    if (event.code == Event::escape && escape != 0) {
      w.mous = escape;
      return;
    }
  } while (event.code != Event::click);
  w.mous = 0;
  for (int n = first; n <= last && w.mous == 0; ++n) {
    if (is_hit(w.b(n), w.msx, w.msy)) w.mous = n;
  }
}

}  // namespace vorn
