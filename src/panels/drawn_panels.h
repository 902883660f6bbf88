// The panels, each drawn from values: of the same values it is the same panel.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "batch/folder_look.h"
#include "batch/table.h"
#include "panels/findings.h"
#include "panels/panel.h"
#include "sessions/standing.h"

namespace vorn {

// What the user has chosen in the panels.
struct PanelState {
  std::optional<std::size_t> candidate = {};  // of Rings, whose lags are shown before and after
  bool hold_bark = false;
  bool narrow_years = true;  // missing rings are likelier in them
  bool only_to_do = false;
  std::set<std::string> open_files = {};  // of which Files shows all that was found
  std::map<std::string, CoreMark> marks =
      {};  // of the current file's cores, by name; to_do where there is none

  CoreMark mark_of(const std::string& core) const {
    const auto found = marks.find(core);
    return found == marks.end() ? CoreMark::to_do : found->second;
  }
};

struct PanelInputs {
  SharedFindings findings;  // null before there are any
  SharedStanding standing;  // null before the session stands
  PanelState state;
  std::string working;        // what is being worked on; empty for nothing
  bool is_older = false;      // the findings are those of an earlier situation
  SharedReports files;        // null before a file was looked at
  std::string files_working;  // which file is being looked at; empty for none
};

Panel draw_site(const PanelInputs& inputs, const PanelView& view);
Panel draw_rings(const PanelInputs& inputs, const PanelView& view);
Panel draw_dates(const PanelInputs& inputs, const PanelView& view);
Panel draw_around(const PanelInputs& inputs, const PanelView& view);
Panel draw_pointers(const PanelInputs& inputs, const PanelView& view);
Panel draw_files(const PanelInputs& inputs, const PanelView& view);
Panel draw_recipe(const PanelInputs& inputs, const PanelView& view);
Panel draw_moving(const PanelInputs& inputs, const PanelView& view);

// What a panel shows, as rows; of all of it, whatever is looked at.
struct PanelTable {
  std::vector<std::string_view> columns;
  std::vector<Row> rows;
};
PanelTable rows_of(PanelName panel, const PanelInputs& inputs);
PanelTable recipe_table(const PanelInputs& inputs);
PanelTable moving_table(const PanelInputs& inputs);

// The cores of Site as they stand there: by need, without those that are left out.
std::vector<std::size_t> listed_cores(const SiteFindings& site, const PanelState& state);
// So many years to each side of it are shown.
inline constexpr int years_around_it = 15;
// The year that Around a Year shows: that of the chosen candidate, else of the best one.
std::optional<std::int64_t> year_looked_at(const PanelInputs& inputs);
// What Rings shows: as missing rings are thought of, and its candidates that gain anything, the best first.
const RingErrors& shown_errors(const PairFindings& pair, const PanelState& state);
std::vector<ErrorCandidate> shown_candidates(const PairFindings& pair, const PanelState& state);

}  // namespace vorn
