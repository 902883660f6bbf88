// Situations as the program makes them, with the buttons of its table, for the tests of this room.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "plot/plot.h"
#include "records/memory_files.h"
#include "sessions/standing.h"
#include "situation/situation.h"
#include "toolkit/button_table.h"
#include "workspace/vorndata.h"

namespace vorn {

// The button as the table has it.
inline ShownButton button_in_table(ButtonNumber n) {
  class NoScreen : public Screen {
   public:
    void show(const Page&) override {}
    Event next_event() override { throw ProgramEnd(EndReason::closed); }
  };
  struct Table {
    Table() { set_up_graph(w); }
    NoScreen screen;
    Plot plot{screen};
    MemoryFiles files;
    Workspace w{plot, files};
  };
  static const Table table;
  const Button& button = table.w.b(n);
  const std::string_view label = button.label.trimmed();
  return {{button.x1, button.y1, button.x2, button.y2},
          n,
          std::string(label.substr(std::min(label.find_first_not_of(' '), label.size()))),
          button.lit};
}

inline void show(Situation& now, ButtonNumber n) {
  now.buttons.push_back(button_in_table(n));
  std::ranges::sort(now.buttons, {}, &ShownButton::number);
}
inline void show(Situation& now, ButtonRange range) {
  for (const ButtonNumber n : range) {
    if (button_in_table(n).x2 > 0) show(now, n);
  }
}
inline void hide(Situation& now, ButtonNumber n) {
  std::erase_if(now.buttons, [n](const ShownButton& button) { return button.number == n; });
}

inline SharedSeries core(const std::string& name, int first_year, std::vector<double> widths) {
  SeriesCopy copy{name, first_year, std::move(widths), {}};
  copy.presence.assign(copy.widths.size(), 1);
  return std::make_shared<const SeriesCopy>(copy);
}

inline std::shared_ptr<const Curve> curve(int first_year, std::vector<double> values) {
  Curve made{first_year, std::move(values), {}};
  made.presence.assign(made.values.size(), 1);
  return std::make_shared<const Curve>(made);
}

inline void show_buttons_of(Situation& now, Place place) {
  switch (place) {
    case Place::start:
      show(now, button::start);
      return hide(now, button::chronology_list);
    case Place::chronologies:
      show(now, button::quit);
      return show(now, button::chronology_list);
    case Place::crossdating:
      show(now, ButtonRange{button::scroll_minus_50, button::delete_ring});
      return show(now, ButtonRange{button::choose_cores, button::indices});
    case Place::pick_year:
      show(now, button::upper_plot);
      return show(now, button::lower_plot);
    case Place::keep_edit:
      show(now, button::insertion_ok);
      return show(now, button::insertion_not);
    case Place::correlation:
      return show(now, button::correlation);
    case Place::chooser:
      show(now, button::chooser);
      return hide(now, button::mean_name);
    case Place::editor:
      return show(now, button::editor);
    case Place::none:
      return;
  }
}

// The page as it is shown first, with the pair T001, 1701 to 1850, and MEAN, 1651 to 1900; the graph shows
// 1700 to 1799.
inline Situation situation_at(Place place) {
  Situation now;
  now.wait = place == Place::none ? Wait::message : place == Place::pick_year ? Wait::year : Wait::menu;
  now.place = place;
  show_buttons_of(now, place);
  now.file = "near.rwl";
  now.cores = {core("T001", 1701, std::vector<double>(150, 1.0)),
               core("T002", 1720, std::vector<double>(100, 1.5))};
  now.first_year = 1700;
  now.sample = {1, "T001", true, 1701, 1850, false, false, curve(1701, std::vector<double>(150, 1.0))};
  now.reference = {3, "MEAN", false, 1651, 1900, false, false, curve(1651, std::vector<double>(250, 0.5))};
  now.passes_left = 1'000;
  now.chronologies = {{"near.rwl", true}, {"far.rwl", true}, {"index.crn", false}};
  now.raw_output = "near.RWW";
  if (place == Place::chooser) {
    now.mode = button::pick_cores;
    now.listed = {"T001", "T002", "near", "far", "index"};
  }
  return now;
}

inline Standing standing_at(Situation now) {
  Standing standing;
  standing.situation = std::make_shared<const Situation>(std::move(now));
  return standing;
}
inline Standing standing_at(Place place) {
  return standing_at(situation_at(place));
}

inline Event click_on(const Situation& now, ButtonNumber n) {
  const ShownButton* button = now.shown(n);
  if (!button) return {0, 0, Event::click};
  return {(button->x1 + button->x2) / 2, (button->y1 + button->y2) / 2, Event::click};
}

}  // namespace vorn
