// How often a menu is shown before it ends by itself.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// The turns of a menu's loop: draw, wait, act. w.passes_left is kept for the menu at hand.
class Passes {
 public:
  Passes(Workspace& workspace, int limit) : w(workspace), left_(limit) {}

  // Whether there is another turn: as many as the limit says. Carefully there is always one, which is not
  // counted, and w.passes_left is 0.
  bool next() {
    const bool counted = !w.careful.has(Mend::pass_limits);
    w.passes_left = counted ? left_ : 0;
    if (!counted) return true;
    return left_-- > 0;
  }

 private:
  Workspace& w;
  int left_;
};

}  // namespace vorn
