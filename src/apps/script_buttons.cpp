#include "apps/script_buttons.h"

#include "toolkit/button_names.h"
#include "workspace/vorndata.h"

namespace vorn {

int script_button(std::string_view name) {
  return plain(button_named(name));
}

ButtonPlaces button_places(const Workspace* const& w) {
  return {.middle =
              [&w](int number) {
                const Rectangle& place = w->b(ButtonNumber{number});
                return PageSpot{(place.x1 + place.x2) / 2, (place.y1 + place.y2) / 2};
              },
          .shown =
              [&w](int number) {
                const ButtonNumber n{number};
                return w->offered.contains(n) && w->b(n).on;
              }};
}

}  // namespace vorn
