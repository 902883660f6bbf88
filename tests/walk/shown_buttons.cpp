#include "walk/shown_buttons.h"

#include <algorithm>
#include <initializer_list>
#include <set>
#include <utility>

#include "plot/plot.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Buttons without a face, and the button by which their screen is known.
constexpr std::pair<ButtonNumber, ButtonNumber> zones[] = {{button::chooser_list, button::chooser_exit},
                                                           {button::editor_table, button::editor_exit}};

bool starts_at(const Mark& mark, const Rectangle& place) {
  return mark.points.size() == 4 && mark.points[0].x == place.x1 && mark.points[0].y == place.y1 &&
         mark.points[2].x == place.x2 && mark.points[2].y == place.y2;
}

}  // namespace

// A button is shown when its face is on the page; the zones without one, when their screen is.
std::vector<ButtonNumber> shown_buttons(const Workspace& w) {
  std::set<ButtonNumber> found;
  for (const Mark& mark : w.plot.page().marks()) {
    if (mark.kind != Mark::Kind::outline) continue;
    for (const ButtonNumber n : button::all) {
      if (w.b(n).on && starts_at(mark, w.b(n))) found.insert(n);
    }
  }
  for (const auto& [zone, mate] : zones) {
    if (w.b(zone).on && found.contains(mate)) found.insert(zone);
  }
  const bool menus_left = found.empty() || *found.begin() > button::crossdating.last;
  if (w.b(button::chronology_list).on && found.contains(button::quit)) found.insert(button::chronology_list);
  if (menus_left && found.empty()) {  // a year is to be picked: no face is shown
    for (const ButtonNumber n : {button::upper_plot, button::lower_plot}) {
      if (w.b(n).on) found.insert(n);
    }
  }
  return {found.begin(), found.end()};
}

void note_screen(WalkState& state, const std::vector<ButtonNumber>& shown) {
  const auto any_of = [&shown](std::initializer_list<ButtonNumber> numbers) {
    return std::find_first_of(shown.begin(), shown.end(), numbers.begin(), numbers.end()) != shown.end();
  };
  state.chooser_shown = any_of({button::chooser_exit});
  state.pair_set = any_of({button::exit_crossdating, button::correlation_exit, button::insertion_ok,
                           button::deletion_ok, button::upper_plot, button::lower_plot});
}

}  // namespace vorn
