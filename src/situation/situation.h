// What the program waits for and what it holds at that wait, as values: everything that stands around the
// page lives on them and never touches the state itself.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "situation/series_copies.h"
#include "toolkit/buttons.h"
#include "workspace/controls.h"
#include "workspace/settings.h"

namespace vorn {

// What the program takes next.
enum class Wait : std::uint8_t {
  menu,     // a click on a button
  year,     // a click on a year in one of the curves
  number,   // digits and Return, typed into a button
  name,     // a name, typed into a button
  message,  // any key or click: a message stands on the page
};

// Which page is shown.
enum class Place : std::uint8_t {
  none,          // before the first menu
  start,         // the start menu
  chronologies,  // its list of chronologies to choose from
  crossdating,   // the cross-dating screen
  pick_year,     // on it, the year of a ring is asked for
  keep_edit,     // on it, " OK" or "NOT" for a ring inserted or deleted
  correlation,   // lag table or best fit
  chooser,       // the series chooser
  editor,        // the raw-data editor
};

// A button that the wait takes clicks on, lowest number first: where several meet, the first is hit.
struct ShownButton : Rectangle {
  ButtonNumber number = ButtonNumber::none;
  std::string label = {};  // without blanks at its ends
  bool lit = false;
};

// A curve as the page shows it: value k is that of the year first_year + k, shown where present(k).
struct Curve {
  int first_year = 0;
  std::vector<double> values;
  std::vector<std::uint8_t> presence;
  bool operator==(const Curve&) const = default;
};

// The sample or the reference, as its working copy stands.
struct PairMember {
  int entry = 0;  // its number among all series; 0 for none
  std::string name = {};
  bool is_core = false;
  int first_year = 0, last_year = 0;
  bool changed = false;       // the working copy is not what is stored
  bool can_be_saved = false;  // its "Save Change" is shown, here or behind the page at hand
  std::shared_ptr<const Curve> curve = {};
  int stored_first_year = 0;                   // as it is stored
  SharedSeries series = {};                    // of a core its ring widths, as the working copy has them
  std::shared_ptr<const Curve> compared = {};  // what is correlated, whatever the page shows
};

// A chronology of the list, as the program holds it.
struct ListedChronology {
  std::string name;  // of its file
  Curve values;
  bool operator==(const ListedChronology&) const = default;
};
using SharedChronology = std::shared_ptr<const ListedChronology>;

// A chronology that can be chosen, in the order of the list.
struct ListedFile {
  std::string name;
  bool has_cores = false;  // choosing it loads cores in place of those at work
};

struct Situation {
  Wait wait = Wait::message;
  Place place = Place::none;
  std::vector<ShownButton> buttons = {};

  std::string file = {};                 // whose cores and chronology are at work, as the list names it
  std::string cores_file = {};           // whose cores are loaded: another one, where `file` has none
  Careful read_as = {};                  // how carefully that file was read: the mends of reading alone
  std::vector<SharedSeries> cores = {};  // as they stand; at the last menu where this wait is none
  std::vector<SharedChronology> references = {};  // of all files of the list; entry number cores + 1 on
  int own_reference = -1;                         // which of them is that of the cores, from 0; -1 for none
  std::vector<std::string> unwritten =
      {};                          // cores changed, made or gone since they were last read or written
  bool curves_are_indices = true;  // rather than ring widths
  int first_year = 0,
      years_shown = 100;  // of the graph; page x of a year: 200 + 2500 * (year - first) / shown
  PairMember sample = {}, reference = {};  // where they were chosen
  Settings settings = {};
  int passes_left = 0;  // clicks until the menu at hand ends by itself

  // Where a ring is inserted or deleted: which of the two, and on Place::keep_edit the year that was picked,
  // at which a bar stands in the graph.
  bool inserts = false;
  int picked_year = 0;

  // The chooser: its mode, what is marked, and where a move would go (its file's name).
  ButtonNumber mode = ButtonNumber::none;
  std::vector<std::string> marked = {};
  std::string destination = {};
  std::vector<std::string> listed = {};  // the names that its list shows, from its first cell on
  int first_listed = 1;                  // the entry number of the first of them

  // The raw-data editor: the first of its 30 years and the names of its columns.
  int editor_first_year = 0;
  std::vector<std::string> editor_columns = {};

  // The start menu.
  std::vector<ListedFile> chronologies = {};
  std::string raw_output = {};           // what "Save Raw" writes
  bool replaces_other_file = false;      // a file of that name stands there which this session did not write
  bool two_column_list_missing = false;  // "Read TRW" has nothing to read and would end the program

  // Whether work would be lost if the program ended now.
  bool unsaved() const { return !unwritten.empty() || sample.changed || reference.changed; }

  const ShownButton* shown(ButtonNumber n) const;
  // The button that a click there hits; null for none.
  const ShownButton* at(int x, int y) const;
};

using SharedSituation = std::shared_ptr<const Situation>;

}  // namespace vorn
