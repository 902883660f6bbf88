#include "situation/observer.h"

#include <algorithm>
#include <map>
#include <utility>

#include "formats/compact.h"
#include "formats/layouts.h"
#include "formats/ring_width_writer.h"
#include "workspace/last_core.h"

namespace vorn {
namespace {

constexpr std::size_t names_in_chooser = 210;

// Entry i as it is correlated.
Curve compared_of(const Workspace& w, int i) {
  Curve curve;
  curve.first_year = w.fy(i);
  for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) {
    curve.values.push_back(w.ax.at(p));
    curve.presence.push_back(w.xok.at(p) ? 1 : 0);
  }
  return curve;
}

Place place_of(const Workspace& w) {
  const ButtonNumber first = w.offered.first;
  if (first == button::start.first)
    return w.b(button::chronology_list).on ? Place::chronologies : Place::start;
  if (first == button::correlation.first) return Place::correlation;
  if (first == button::chooser.first) return Place::chooser;
  if (first == button::editor.first) return Place::editor;
  if (w.b(button::upper_plot).on || w.b(button::lower_plot).on) return Place::pick_year;
  if (w.b(button::insertion_ok).on || w.b(button::deletion_ok).on) return Place::keep_edit;
  return Place::crossdating;
}

std::string without_blanks(std::string_view label) {
  const auto first = label.find_first_not_of(' ');
  return first == std::string_view::npos ? "" : std::string(trimmed(label.substr(first)));
}

std::vector<ShownButton> shown_buttons(const Workspace& w) {
  std::vector<ShownButton> shown;
  for (const ButtonNumber n : w.offered) {
    const Button& button = w.b(n);
    if (!button.on) continue;
    // The places of some are written anew while they are used; a rectangle is one all the same.
    shown.push_back(
        {{button.x1, button.y1, button.x2, button.y2}, n, without_blanks(button.label.view()), button.lit});
  }
  return shown;
}

}  // namespace

Situation Observer::look(bool message) {
  const bool menu = w.offered.size() > 0;
  now_.wait = w.typing == Typing::number ? Wait::number
              : w.typing == Typing::name ? Wait::name
                                         : Wait::message;
  if (message) now_.wait = Wait::message;
  now_.buttons.clear();
  if (menu) {
    now_.place = place_of(w);
    now_.wait = now_.place == Place::pick_year ? Wait::year : Wait::menu;
    now_.buttons = shown_buttons(w);
    now_.passes_left = w.passes_left;
    look_at_store();
    look_at_pair();
    look_at_menu();
  }
  return now_;
}

// Whether the file holds core i as it stands, in the layout that it was written in.
bool Observer::is_held(std::size_t i) const {
  if (w.raw_output == Layout::none) return false;  // the file is empty
  return w.raw_output != Layout::compact || fits_compact(w, w.careful, static_cast<int>(i));
}

void Observer::cores_written() {
  std::map<SharedSeries, SharedSeries> changed;
  for (const CoreChange& change : changes_between(written_, now_.cores)) {
    if (change.after) changed[change.after] = change.before;
  }
  std::vector<SharedSeries> written;
  now_.unwritten.clear();
  for (std::size_t k = 0; k < now_.cores.size(); ++k) {
    const SharedSeries& core = now_.cores[k];
    const auto change = changed.find(core);
    if (change == changed.end() || is_held(k + 1)) {
      written.push_back(core);
      continue;
    }
    now_.unwritten.push_back(core->name);
    if (change->second) written.push_back(change->second);
  }
  written_ = std::move(written);
}

void Observer::look_at_store() {
  std::vector<SharedSeries> cores = copies_of_cores(w, now_.cores);
  const bool is_same = cores == now_.cores && w.loads == loads_;
  now_.cores = std::move(cores);
  if (w.loads != loads_) written_ = now_.cores;
  loads_ = w.loads;
  if (!is_same) {
    now_.unwritten.clear();
    for (const CoreChange& change : changes_between(written_, now_.cores))
      now_.unwritten.push_back((change.after ? change.after : change.before)->name);
  }
  now_.file = w.nfil > 0 ? std::string(w.cnam(w.cf).trimmed()) : std::string();
  now_.own_reference = w.cores_of - 1;
  now_.cores_file = w.cores_of > 0 ? std::string(w.cnam(w.cores_of).trimmed()) : std::string();
  now_.read_as = w.read_as;
  look_at_references();
  now_.settings = static_cast<const Settings&>(w);
}

// Those that did not change are shared with those seen before.
void Observer::look_at_references() {
  std::vector<SharedChronology> seen;
  for (int f = 1; f <= w.nfil && w.nc + f <= w.nd; ++f) {
    ListedChronology chronology{std::string(w.cnam(f).trimmed()), compared_of(w, w.nc + f)};
    const auto k = seen.size();
    const bool is_same = k < now_.references.size() && *now_.references[k] == chronology;
    seen.push_back(is_same ? now_.references[k]
                           : std::make_shared<const ListedChronology>(std::move(chronology)));
  }
  now_.references = std::move(seen);
}

bool Observer::shows_pair() const {
  return now_.place == Place::crossdating || now_.place == Place::pick_year ||
         now_.place == Place::keep_edit || now_.place == Place::correlation;
}

// In the chooser and the editor the working copies are those of a store that may have changed: what was seen
// of them before stays, until they are filled anew. On the start menu there are none.
void Observer::look_at_pair() {
  now_.first_year = w.fs;
  now_.years_shown = w.sl;
  now_.curves_are_indices = w.indon;
  now_.inserts = w.ins;
  now_.picked_year = now_.place == Place::keep_edit ? w.insdel : 0;
  if (shows_pair()) {
    now_.sample = member(1);
    now_.reference = member(2);
  } else if (now_.place == Place::start || now_.place == Place::chronologies) {
    now_.sample = now_.reference = {};
    changed_[0] = changed_[1] = {};
  }
}

PairMember Observer::member(int k) {
  const int entry = k == 1 ? w.tr1 : w.tr2;
  const int slot = w.nd + k;
  PairMember member;
  if (entry < 1 || entry > w.nd) return member;
  member.entry = entry;
  member.name = w.nam(slot).trimmed();
  member.is_core = entry <= w.nc;
  member.first_year = w.fy(slot);
  member.last_year = w.ly(slot);
  member.stored_first_year = w.fy(entry);
  member.can_be_saved = now_.place == Place::crossdating
                            ? w.b(k == 1 ? button::save_sample : button::save_reference).on
                            : (k == 1 ? w.tr1ok : w.tr2ok);
  // Of a chronology the copy may lack the sample: only its years can be changed.
  auto copy = std::make_shared<const SeriesCopy>(copy_of(w, slot));
  if (member.is_core) {
    const SeriesCopy& stored = *now_.cores[static_cast<std::size_t>(entry) - 1];
    member.changed = copy->first_year != stored.first_year || copy->widths != stored.widths ||
                     copy->presence != stored.presence;
  } else {
    member.changed = member.first_year != member.stored_first_year;
  }
  auto& changed = changed_[k - 1];
  if (!member.changed) {
    changed = {};
  } else if (!changed || *changed != *copy) {
    changed = copy;
  }
  member.series = member.is_core && !member.changed ? now_.cores[static_cast<std::size_t>(entry) - 1] : copy;
  member.compared = std::make_shared<const Curve>(compared_of(w, slot));
  // As the page draws them: the ring widths of cores alone, and of the last one only carefully.
  const bool widths = !w.indon && is_treated_as_core(w.chc(k), w, w.careful);
  member.curve = widths ? std::make_shared<const Curve>(Curve{copy->first_year, copy->widths, copy->presence})
                        : member.compared;
  return member;
}

void Observer::look_at_chooser() {
  for (const ButtonNumber n : button::chooser_modes) {
    if (w.b(n).lit) now_.mode = n;
  }
  const bool moves = now_.mode == button::move_core;
  for (int j = 1; j <= w.chs; ++j) {
    const int k = w.chc(j);
    if (moves && j == w.chs) {
      if (k > w.nc && k <= w.nd) now_.destination = w.cnam(k - w.nc).trimmed();
    } else if (k >= 1 && k <= w.nd) {
      const std::string name(w.nam(k).trimmed());
      const bool acted_on = k <= w.nc || now_.mode == button::pick_cores;
      if (acted_on && std::ranges::find(now_.marked, name) == now_.marked.end()) now_.marked.push_back(name);
    }
  }
  // As the chooser draws its list: from the names scrolled off its top on.
  const bool with_chronologies = now_.mode == button::pick_cores || moves;
  const int last = with_chronologies ? w.nd : w.nc;
  now_.first_listed = std::max(w.sccc, 0) + 1;
  for (int k = now_.first_listed; k <= last && now_.listed.size() < names_in_chooser; ++k) {
    now_.listed.emplace_back(w.nam(k).trimmed());
  }
}

void Observer::look_at_menu() {
  now_.mode = ButtonNumber::none;
  now_.marked.clear();
  now_.destination.clear();
  now_.listed.clear();
  now_.editor_columns.clear();
  now_.chronologies.clear();
  if (now_.place == Place::chooser) look_at_chooser();
  if (now_.place == Place::editor) {
    now_.editor_first_year = w.edfs;
    for (int m = 1; m <= w.chs; ++m) now_.editor_columns.emplace_back(w.nam(w.chc(m)).trimmed());
  }
  if (now_.place == Place::start || now_.place == Place::chronologies) {
    for (int f = 1; f <= w.nfil; ++f) {
      now_.chronologies.push_back({std::string(w.cnam(f).trimmed()), holds_ring_widths(w.rftype(f))});
    }
    now_.raw_output = w.nfil > 0 ? std::string(output_name(w.cnam(w.cf)).trimmed()) : std::string();
  }
}

}  // namespace vorn
