#include "platform/web/studies_desk.h"

#include <algorithm>
#include <utility>

#include "platform/web/page_bytes.h"
#include "platform/web/shown_text.h"
#include "platform/web/standing_fields.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

PanelView view_of(const WebRequest& request) {
  PanelView view{.width = request.number("width"), .height = request.number("height")};
  view.scroll = std::max(0, request.number("scroll"));
  if (request.has("left") && request.has("right"))
    view.axis = PanelView::Axis{request.real("left"), request.real("right")};
  return view;
}

Fields fields_of_spots(const Panel& panel) {
  Fields spots = Fields::array();
  for (const Spot& spot : panel.spots) {
    const Rectangle& place = spot.place;
    spots.push_back({{"place", {place.x1, place.y1, place.x2, place.y2}},
                     {"tip", shown_text(spot.tip)},
                     {"core", shown_text(spot.change.core)},
                     {"file", shown_text(spot.change.file)},
                     {"does", spot.does()},
                     {"plays", spot.play.has_value()},
                     {"asks", spot.change.kind == PanelChange::Kind::copy_file}});
  }
  return spots;
}

}  // namespace

void StudiesDesk::go_on() {
  if (to_study_ && to_study_ != studied_) return study();
  if (!has_files_to_look_at()) return serve(port_.next());
  const auto request = port_.next_if_any();
  request ? serve(*request) : look();
}

// --- Studying.

void StudiesDesk::study() {
  studied_ = to_study_;
  begun_ = looked_ = Clock::now();
  studies_.study(
      studied_, [this](const std::string& working) { return may_go_on(working); },
      [this](const SharedFindings& findings) {
        findings_ = findings;
        tell_found();
      });
  if (std::exchange(working_, {}).empty()) return;
  tell_found();
}

// What takes no time worth telling is not told.
bool StudiesDesk::may_go_on(const std::string& working) {
  const auto now = Clock::now();
  if (now - looked_ < between_looks) return true;
  if (now - begun_ >= worth_telling && now - told_ >= between_tellings) {
    working_ = working;
    tell_found();
  }
  while (auto request = port_.next_if_any()) serve(*request);
  looked_ = Clock::now();
  return to_study_ == studied_;
}

void StudiesDesk::tell_found() {
  told_ = Clock::now();
  desk_.found(findings_, working_);
  port_.tell({{"is", "found"}, {"working", shown_text(working_)}});
}

// --- Looking at files.

// Not before the page has begun to listen.
bool StudiesDesk::has_files_to_look_at() const {
  return files_ && standing_ && !files_->is_done();
}

void StudiesDesk::look() {
  files_->look();
  desk_.looked(files_->reports(), files_->working());
  if (files_->is_done() || Clock::now() - told_ >= between_tellings) tell_found();
}

// --- What the page asks for.

void StudiesDesk::serve(const WebRequest& request) {
  const std::string what = request.what();
  if (what == "stand") return stand(request);
  if (what == "step_core") return step_core(request.number("direction") < 0 ? -1 : 1);
  if (files_ && files_->serve(request, standing_ ? standing_->situation : nullptr)) return;
  const auto name = panel_named(request.text("name"));
  if (!name) return;
  if (what == "panel") return draw(*name, request);
  if (what == "panel_click") return click(*name, request);
  if (what == "csv")
    port_.tell({{"is", "csv"}, {"name", id_of(*name)}, {"text", shown_lines(desk_.csv(*name))}});
}

void StudiesDesk::stand(const WebRequest& request) {
  standing_ = reader_.read(request.bytes);
  if (standing_->situation->wait == Wait::menu) to_study_ = standing_->situation;
  if (files_ && to_study_) files_->read_as(to_study_->settings.careful);
  desk_.stand(standing_);
}

void StudiesDesk::draw(PanelName name, const WebRequest& request) {
  Drawn& drawn = drawn_[static_cast<std::size_t>(name)];
  before_[static_cast<std::size_t>(name)] = std::move(drawn);
  drawn = {desk_.panel(name, view_of(request)), request.place("ask")};
  port_.tell({{"is", "panel"},
              {"name", id_of(name)},
              {"ask", drawn.ask},
              {"content_height", drawn.panel.content_height},
              {"head", drawn.panel.head},
              {"spots", fields_of_spots(drawn.panel)}},
             "marks", bytes_of(drawn.panel.page));
}

// A click is meant for what was seen: on a panel that was drawn anew meanwhile it is the spot that says the
// same, and where none does the click is dropped.
const Spot* StudiesDesk::spot_meant(PanelName name, std::size_t ask, std::size_t place) const {
  const Drawn &latest = drawn_[static_cast<std::size_t>(name)],
              &before = before_[static_cast<std::size_t>(name)];
  const Drawn& seen = latest.ask == ask ? latest : before;
  if (seen.ask != ask || place >= seen.panel.spots.size()) return nullptr;
  const Spot& spot = seen.panel.spots[place];
  if (&seen == &latest) return &spot;
  const auto same = std::ranges::find_if(latest.panel.spots, [&spot](const Spot& one) {
    return one.tip == spot.tip && one.change.kind == spot.change.kind && one.does() == spot.does();
  });
  return same == latest.panel.spots.end() ? nullptr : &*same;
}

void StudiesDesk::click(PanelName name, const WebRequest& request) {
  const Spot* meant = spot_meant(name, request.place("ask"), request.place("spot"));
  if (!meant) return;
  const Spot spot = *meant;
  if (files_ && spot.change.kind == PanelChange::Kind::copy_file)
    return files_->offer_copy(spot.change.file, spot.change.unit);
  std::string trouble;
  const auto played = desk_.click(spot, trouble);
  if (!trouble.empty()) port_.tell({{"is", "notice"}, {"text", shown_text(trouble)}});
  if (played) play(*played);
  tell_found();
}

void StudiesDesk::step_core(int direction) {
  if (const auto found = desk_.step_core(direction)) return play(*found);
  port_.tell({{"is", "mention"}, {"text", no_further_core}});
}

void StudiesDesk::play(const Play& play) {
  port_.tell({{"is", "play"}, {"play", fields_of(play)}, {"what", shown_text(play.what)}});
}

}  // namespace vorn
