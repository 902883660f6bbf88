#include "situation/situation.h"

#include <algorithm>

namespace vorn {

const ShownButton* Situation::shown(ButtonNumber n) const {
  const auto found = std::ranges::find(buttons, n, &ShownButton::number);
  return found == buttons.end() ? nullptr : &*found;
}

const ShownButton* Situation::at(int x, int y) const {
  const auto found = std::ranges::find_if(buttons, [x, y](const ShownButton& button) {
    return button.x1 <= x && x <= button.x2 && button.y1 <= y && y <= button.y2;
  });
  return found == buttons.end() ? nullptr : &*found;
}

}  // namespace vorn
