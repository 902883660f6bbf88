#include "desk/status_line.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "desk/words.h"
#include "situation/graph_axis.h"

namespace vorn {
namespace {

constexpr int warned_ahead = 100;  // clicks

// --- What the program waits for.

std::string_view mode_waits_for(ButtonNumber mode) {
  switch (mode) {
    case button::delete_core:
      return "the cores to delete, then Ok - Do it";
    case button::mean_core:
      return "the cores of the mean, then Ok - Do it";
    case button::edit_core:
      return "the core to edit, then Ok - Do it";
    case button::move_core:
      return "the cores to move and where to, then Ok - Do it";
    default:
      return "a pair of series, then Ok - Do it";
  }
}

std::string_view editor_waits_for(const Situation& now) {
  const auto is_lit = [&now](ButtonNumber n) {
    const ShownButton* button = now.shown(n);
    return button && button->lit;
  };
  if (is_lit(button::editor_insert)) return "a year to insert, or a button";
  if (is_lit(button::editor_delete)) return "a year to delete, or a button";
  return now.shown(button::editor_table) ? "a ring to measure anew, or a button" : "a button";
}

std::string menu_waits_for(const Situation& now) {
  switch (now.place) {
    case Place::chronologies:
      return "a chronology out of the list";
    case Place::keep_edit:
      return std::string("OK to keep the ring ") +
             (now.shown(button::insertion_ok) ? "inserted" : "deleted") + ", or NOT to take it back";
    case Place::chooser:
      return std::string(mode_waits_for(now.mode));
    case Place::editor:
      return std::string(editor_waits_for(now));
    default:
      return "a button";
  }
}

std::string waits_for(const Situation& now) {
  switch (now.wait) {
    case Wait::menu:
      return menu_waits_for(now);
    case Wait::year:
      return now.inserts ? "a year to insert" : "a year to delete";
    case Wait::number:
      return "a number and Return";
    case Wait::name:
      return "a name of 2 to 8 characters and Return";
    case Wait::message:
      break;
  }
  return "a key: a message stands on the page";
}

// --- The graph.

bool shows_graph(Place place) {
  return place == Place::crossdating || place == Place::pick_year || place == Place::keep_edit;
}

// The year at which the bar below the graph stands, as the strip of correlations decides it: the middle one
// of those shown, where the pair has enough years in common and the bar is not too far from them.
std::optional<int> year_of_bar(const Situation& now) {
  const std::int64_t last_shown = std::int64_t{now.first_year} + now.years_shown - 1;
  const std::int64_t bar = (now.first_year + last_shown) / 2;
  const std::int64_t first = std::max(now.sample.first_year, now.reference.first_year);
  const std::int64_t last = std::min(now.sample.last_year, now.reference.last_year);
  if (last - first < 20 || bar + 2 < first || bar - 2 > last) return {};
  return static_cast<int>(bar);
}

std::string year_text(const Situation& now, std::optional<int> year, std::optional<int> bar) {
  std::string text;
  const auto add = [&text](std::string_view what, int of) {
    text += (text.empty() ? "" : ", ") + std::string(what) + std::to_string(of);
  };
  if (year) add("", *year);
  if (bar) add("bar ", *bar);
  if (now.place == Place::keep_edit) add("picked ", now.picked_year);
  return text;
}

// Empty where the series has no such year.
std::string value_text(const PairMember& member, int year) {
  if (!member.curve) return {};
  const Curve& curve = *member.curve;
  const std::int64_t k = std::int64_t{year} - curve.first_year;
  if (k < 0 || k >= static_cast<std::int64_t>(curve.values.size())) return {};
  const auto place = static_cast<std::size_t>(k);
  const bool present = place < curve.presence.size() && curve.presence[place] != 0;
  return member.name + " " + (present ? two_decimals(curve.values[place]) : "missing");
}

std::string values_text(const Situation& now, int year) {
  const std::string sample = value_text(now.sample, year), reference = value_text(now.reference, year);
  return sample + (sample.empty() || reference.empty() ? "" : ", ") + reference;
}

// --- The work, and the end of the menu.

std::string changes_text(const Situation& now) {
  std::vector<std::string> unsaved;
  for (const PairMember& member : {now.sample, now.reference}) {
    if (member.changed) unsaved.push_back(member.name);
  }
  std::string text = unsaved.empty() ? "" : named(unsaved) + " not saved";
  if (now.unwritten.empty()) return text;
  if (!text.empty()) text += "; ";
  return text + counted(static_cast<std::int64_t>(now.unwritten.size()), "core") +
         " not written: " + named(now.unwritten);
}

std::string careful_text(const Careful& careful) {
  if (!careful.any()) return {};
  if (careful == Careful::everything()) return "careful";
  const auto on = std::ranges::count_if(mends(), [&](const MendRow& row) { return careful.has(row.mend); });
  return "careful in " + std::to_string(on) + " of " + std::to_string(mends().size()) + " places";
}

std::string_view what_ends(Place place) {
  switch (place) {
    case Place::start:
    case Place::chronologies:
      return "the program";
    case Place::correlation:
      return "the correlation screen";
    case Place::chooser:
      return "the chooser";
    case Place::editor:
      return "the raw-data editor";
    default:
      return "the cross-dating screen";
  }
}

bool is_last_core_unsaved(const Situation& now) {
  if (!shows_graph(now.place) || now.settings.careful.has(Mend::last_core)) return false;
  const auto is_it = [&now](const PairMember& copy) {
    return copy.is_core && copy.changed && !copy.can_be_saved &&
           copy.entry == static_cast<int>(now.cores.size());
  };
  return now.place != Place::keep_edit && (is_it(now.sample) || is_it(now.reference));
}

std::string warning_text(const Situation& now) {
  if (is_last_core_unsaved(now)) return "the last core cannot be saved as things are: see the menu Careful";
  if (now.passes_left < 1 || now.passes_left > warned_ahead) return {};
  return "after " + counted(now.passes_left, "click") + " more " + std::string(what_ends(now.place)) +
         " ends by itself";
}

}  // namespace

std::optional<int> year_at(const Situation& now, PointAt mouse) {
  if (!shows_graph(now.place) || now.years_shown < 1) return {};
  constexpr Rectangle area = graph_area;
  if (mouse.x < area.x1 || mouse.x > area.x2 || mouse.y < area.y1 || mouse.y > area.y2) return {};
  return GraphAxis(now).year_at(mouse.x);
}

StatusLine status_line(const Standing& standing, std::optional<PointAt> mouse) {
  StatusLine line;
  line.written = standing.written;
  if (!standing.situation) return line;
  const Situation& now = *standing.situation;
  line.waits_for = standing.question ? "an answer to the question" : waits_for(now);
  line.changes = changes_text(now);
  line.warning = warning_text(now);
  line.careful = careful_text(now.settings.careful);
  if (!shows_graph(now.place)) return line;
  const auto year = mouse ? year_at(now, *mouse) : std::nullopt, bar = year_of_bar(now);
  line.year = year_text(now, year, bar);
  if (year || bar) line.values = values_text(now, year ? *year : *bar);
  return line;
}

}  // namespace vorn
