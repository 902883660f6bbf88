#include "panels/script_panels.h"

#include <algorithm>
#include <utility>

#include "batch/folder_look.h"
#include "panels/clean_copy.h"

namespace vorn {
namespace {

constexpr int tallest = 20'000;  // panel units of a picture

// What is written within a spot.
bool says(const Panel& panel, const Spot& spot, const std::string& text) {
  if (spot.tip.find(text) != std::string::npos) return true;
  return std::ranges::any_of(panel.page.marks(), [&](const Mark& mark) {
    if (mark.writing.find(text) == std::string::npos) return false;
    const PagePoint& at = mark.points.front();
    return at.x >= spot.place.x1 && at.x <= spot.place.x2 && at.y >= spot.place.y1 && at.y <= spot.place.y2;
  });
}

}  // namespace

bool is_panel(std::string_view name) {
  return panel_named(name).has_value();
}

void PanelsOfScript::stand(const SharedStanding& standing) {
  desk_.stand(standing);
  if (standing && standing->situation && standing->situation->wait == Wait::menu)
    wanted_ = standing->situation;
}

// As the program reads them at its start, once for each way of reading.
void PanelsOfScript::look_at_files() {
  const Careful careful = wanted_ ? reading_of(wanted_->settings.careful) : Careful();
  if (std::exchange(looked_, careful) == careful) return;
  FolderLook look(files_, year_of_today(), careful);
  while (!look.is_done()) look.look();
  desk_.looked(look.reports(), "");
}

// There is nobody to be asked. Answers what went wrong.
std::string PanelsOfScript::copy_file(const PanelChange& wanted) {
  const CleanCopy copy = clean_copy(files_, wanted.file, wanted.unit, looked_.value_or(Careful()));
  if (copy.bytes.empty()) return copy.words.front();
  return use_clean_copy(files_, wanted.file, copy).value_or("");
}

// As tall as what it holds.
Panel PanelsOfScript::whole(const std::string& panel) {
  if (wanted_ && wanted_ != studied_) {
    studied_ = wanted_;
    studies_.study(
        studied_, [](const std::string&) { return true; },
        [this](const SharedFindings& findings) { desk_.found(findings, ""); });
  }
  const PanelName name = *panel_named(panel);
  if (name == PanelName::files) look_at_files();
  PanelView view = usual_view(name);
  const int content = desk_.panel(name, view).content_height;
  const bool fills = name == PanelName::around || name == PanelName::pointers;
  if (!fills) view.height = std::clamp(content, 200, tallest);
  return desk_.panel(name, view);
}

Page PanelsOfScript::page(const std::string& panel) {
  return whole(panel).page;
}

ScriptPanels::Picked PanelsOfScript::pick(const std::string& panel, const std::string& text) {
  const Panel shown = whole(panel);
  bool seen = false;
  for (const Spot& spot : shown.spots) {
    if (!says(shown, spot, text)) continue;
    seen = true;
    if (!spot.does()) continue;
    Picked picked;
    if (spot.change.kind == PanelChange::Kind::copy_file) return {.wrong = copy_file(spot.change)};
    if (auto play = desk_.click(spot, picked.wrong)) picked.deed = Deed(std::move(*play));
    return picked;
  }
  const std::string name = "the panel \"" + panel + "\"";
  return {.wrong = seen ? "\"" + text + "\" of " + name + " does nothing now"
                        : name + " has no spot with \"" + text + "\""};
}

}  // namespace vorn
