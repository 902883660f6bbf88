// A panel: a page beside the page, drawn from values, with spots to click on.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plot/page.h"
#include "sessions/deeds.h"
#include "workspace/controls.h"

namespace vorn {

enum class PanelName : std::uint8_t { site, rings, dates, around, pointers, files, recipe, moving };
inline constexpr std::array all_panels = {PanelName::site,   PanelName::rings,    PanelName::dates,
                                          PanelName::around, PanelName::pointers, PanelName::files,
                                          PanelName::recipe, PanelName::moving};

// "site", as scripts and settings name it; "Site", as people read it.
std::string_view id_of(PanelName panel);
std::string_view title_of(PanelName panel);
std::optional<PanelName> panel_named(std::string_view id);

// How much of a panel is looked at, in panel units: two to a pixel of a plain screen.
struct PanelView {
  int width = 1480, height = 1200;
  int scroll = 0;  // units of its content above the upper edge
  // Where the panel stands right above or below the page: the places at which the graph's first year begins
  // and its last one ends there, so that years stand under years.
  struct Axis {
    double left = 0, right = 0;
  };
  std::optional<Axis> axis = {};
};
// In which scripts write it.
PanelView usual_view(PanelName panel);

// What became of a core in the eyes of the user.
enum class CoreMark : std::uint8_t { to_do, done, skipped };
std::string_view word_of(CoreMark mark);  // "to do"

// What a click changes in the panels themselves.
struct PanelChange {
  enum class Kind : std::uint8_t {
    none,
    choose,      // candidate number `candidate` of Rings is looked at
    hold_bark,   // whether the outer end keeps its years is turned round
    narrow,      // whether missing rings are likelier in narrow years is turned round
    mark,        // core `core` gets the next mark: to do, done, skipped
    only_to_do,  // whether Site leaves out what is done is turned round
    open_file,   // whether all that was found about file `file` is shown is turned round
    copy_file,   // a clean copy of file `file` is wanted, in `unit`: that is up to whoever shows the panel
  };
  Kind kind = Kind::none;
  std::size_t candidate = 0;
  std::string core = {};
  std::string file = {};
  std::optional<double> unit = {};  // values a millimetre, where that is a guess
};

// A place to click on. Where several meet, the last one is hit.
struct Spot {
  Rectangle place = {};  // on the part of the panel that is looked at
  std::string tip = {};  // what is there, and what a click does
  PanelChange change = {};
  std::optional<Play> play = {};
  bool does() const { return play || change.kind != PanelChange::Kind::none; }
};

// The part of a panel that a view shows.
struct Panel {
  Page page = {};                // of the view's width and height
  int content_height = 0;        // of the whole panel, for scrolling
  std::vector<Spot> spots = {};  // in reading order, none below another part of the panel
  int head = 0;                  // how much at the upper edge is not scrolled

  // The spot at that place; null for none.
  const Spot* at(int x, int y) const;
};

}  // namespace vorn
