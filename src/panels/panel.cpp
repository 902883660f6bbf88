#include "panels/panel.h"

#include <algorithm>

namespace vorn {
namespace {

struct PanelRow {
  PanelName name;
  std::string_view id, title;
  PanelView view;
};

// Those of the page's axis are as wide as the page, so that their pictures can be laid under it.
constexpr int page_wide = Page::width;
const std::array<PanelRow, all_panels.size()> rows = {
    {{PanelName::site, "site", "Site", {}},
     {PanelName::rings, "rings", "Rings", {page_wide, 900, 0, PanelView::Axis{200, 2700}}},
     {PanelName::dates, "dates", "Dates", {}},
     {PanelName::around, "around", "Around a Year", {1480, 800}},
     {PanelName::pointers, "pointers", "Pointer Years", {page_wide, 260, 0, PanelView::Axis{200, 2700}}},
     {PanelName::files, "files", "Files", {}},
     {PanelName::recipe, "recipe", "Other Programs", {}},
     {PanelName::moving, "moving", "Moving Cores", {1480, 500}}}};

const PanelRow& row_of(PanelName panel) {
  return rows[static_cast<std::size_t>(panel)];
}

}  // namespace

std::string_view id_of(PanelName panel) {
  return row_of(panel).id;
}

std::string_view title_of(PanelName panel) {
  return row_of(panel).title;
}

std::optional<PanelName> panel_named(std::string_view id) {
  const auto* const found = std::ranges::find(rows, id, &PanelRow::id);
  return found == rows.end() ? std::nullopt : std::optional(found->name);
}

std::string_view word_of(CoreMark mark) {
  constexpr std::array<std::string_view, 3> words = {"to do", "done", "skipped"};
  return words[static_cast<std::size_t>(mark)];
}

PanelView usual_view(PanelName panel) {
  return row_of(panel).view;
}

const Spot* Panel::at(int x, int y) const {
  const auto hit = std::find_if(spots.rbegin(), spots.rend(), [x, y](const Spot& spot) {
    return x >= spot.place.x1 && x < spot.place.x2 && y >= spot.place.y1 && y < spot.place.y2;
  });
  return hit == spots.rend() ? nullptr : &*hit;
}

}  // namespace vorn
