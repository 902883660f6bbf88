#include "panels/panel_desk.h"

#include <algorithm>
#include <sstream>

#include "panels/plays.h"

namespace vorn {

void PanelDesk::stand(const SharedStanding& standing) {
  in_.standing = standing;
  if (standing && standing->situation && standing->situation->cores_file != file_) {
    file_ = standing->situation->cores_file;
    in_.state.marks = keeper_ ? keeper_->marks_of(file_) : std::map<std::string, CoreMark>();
  }
}

// A candidate is one of the findings that it was chosen from.
void PanelDesk::found(const SharedFindings& findings, const std::string& working) {
  const bool same_pair = findings && in_.findings && findings->pair == in_.findings->pair;
  if (!same_pair) in_.state.candidate.reset();
  in_.findings = findings;
  in_.working = working;
}

void PanelDesk::looked(const SharedReports& files, const std::string& working) {
  in_.files = files;
  in_.files_working = working;
}

Panel PanelDesk::panel(PanelName name, const PanelView& view) const {
  constexpr std::array drawers = {draw_site,     draw_rings, draw_dates,  draw_around,
                                  draw_pointers, draw_files, draw_recipe, draw_moving};
  PanelInputs inputs = in_;
  const bool of_site = name == PanelName::site || name == PanelName::pointers;
  inputs.is_older = of_site && in_.findings && in_.findings->site_is_older;
  inputs.is_older = inputs.is_older || (in_.findings && in_.standing && in_.standing->situation &&
                                        in_.standing->situation->cores != in_.findings->of->cores);
  PanelView looked_at = view;
  looked_at.width = std::clamp(view.width, 200, 20'000);
  looked_at.height = std::clamp(view.height, 60, 40'000);
  return drawers[static_cast<std::size_t>(name)](inputs, looked_at);
}

std::string PanelDesk::csv(PanelName name) const {
  const PanelTable table = rows_of(name, in_);
  std::ostringstream out;
  TableWriter writer(out, TableFormat::csv, {id_of(name), table.columns}, "", "");
  for (const Row& row : table.rows) writer.add(row);
  writer.end();
  return out.str();
}

std::optional<Play> PanelDesk::click(const Spot& spot, std::string& trouble) {
  PanelState& state = in_.state;
  switch (spot.change.kind) {
    case PanelChange::Kind::none:
      break;
    case PanelChange::Kind::choose:
      state.candidate = spot.change.candidate;
      break;
    case PanelChange::Kind::hold_bark:
      state.hold_bark = !state.hold_bark;
      break;
    case PanelChange::Kind::narrow:
      state.narrow_years = !state.narrow_years;
      state.candidate.reset();
      break;
    case PanelChange::Kind::copy_file:
      break;
    case PanelChange::Kind::open_file:
      if (state.open_files.erase(spot.change.file) == 0) state.open_files.insert(spot.change.file);
      break;
    case PanelChange::Kind::only_to_do:
      state.only_to_do = !state.only_to_do;
      break;
    case PanelChange::Kind::mark: {
      const auto next = static_cast<CoreMark>((static_cast<int>(state.mark_of(spot.change.core)) + 1) % 3);
      state.marks[spot.change.core] = next;
      if (keeper_) trouble = keeper_->keep(file_, spot.change.core, next);
      break;
    }
  }
  return spot.play;
}

std::optional<Play> PanelDesk::step_core(int direction) const {
  if (!in_.findings || !in_.findings->site || !in_.standing || !in_.standing->situation) return {};
  const SiteFindings& site = *in_.findings->site;
  const Situation& now = *in_.standing->situation;
  if (site.cores.size() != now.cores.size() || site.file != now.cores_file) return {};
  const auto& order = site.survey.order;
  const auto count = static_cast<std::ptrdiff_t>(order.size());
  const int shown = now.sample.is_core ? now.sample.entry : now.reference.is_core ? now.reference.entry : 0;
  const auto here = std::ranges::find(order, static_cast<std::size_t>(shown) - 1) - order.begin();
  // Beside the list of cores begins with its first or its last one.
  std::ptrdiff_t at = here < count ? here : direction > 0 ? -1 : count;
  for (at += direction; at >= 0 && at < count; at += direction) {
    const std::size_t k = order[static_cast<std::size_t>(at)];
    if (in_.state.mark_of(site.cores[k]->series().name) == CoreMark::to_do)
      return put_on_page(static_cast<int>(k) + 1, *in_.standing);
  }
  return {};
}

}  // namespace vorn
