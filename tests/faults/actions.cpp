#include "faults/actions.h"

#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <ostream>

#include "toolkit/buttons.h"

namespace vorn {
namespace {

void write(const std::string& name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
}

template <class... Values>
std::string printed(const char* edit, Values... values) {
  char text[120];
  std::snprintf(text, sizeof text, edit, values...);
  return text;
}

// --- The files.

constexpr int first_year = 1900, years = 100;

class Widths {
 public:
  explicit Widths(unsigned seed) : seed_(seed) {}
  int next() {
    seed_ = seed_ * 1103515245u + 12345u;
    return 300 + static_cast<int>((seed_ >> 16) % 1200);
  }

 private:
  unsigned seed_;
};

std::string raw_core(const std::string& name, unsigned seed) {
  Widths widths(seed);
  std::string text;
  for (int year = first_year; year < first_year + years; ++year) {
    if (year % 10 == 0) text += (year > first_year ? "\n" : "") + printed("%-8s%4d", name.c_str(), year);
    text += printed("%6d", widths.next());
  }
  return text + "\n" + printed("%-8s%4d%6d\n", name.c_str(), first_year + years, -9999);
}

std::string heidelberg_core(const std::string& name, unsigned seed) {
  Widths widths(seed);
  std::string text = "HEADER:\nKeyCode=" + name + "\nUnit=1/1000 mm\n" +
                     printed("DateEnd=%d\nLength=%d\n", first_year + years - 1, years) + "DATA:Tree\n";
  for (int k = 1; k <= years; ++k) text += printed("%6d%s", widths.next(), k % 10 == 0 ? "\n" : "");
  return text;
}

std::string compact_core(const std::string& name, unsigned seed) {
  Widths widths(seed);
  std::string text = printed("%8d=N%8d=I %-8s%42s(19F4.0)\n", years, first_year, name.c_str(), "");
  for (int k = 1; k <= years; ++k) {
    text += printed("%4d%s", widths.next() % 1000, k % 19 == 0 || k == years ? "\n" : "");
  }
  return text;
}

std::string index_file(unsigned seed) {
  Widths widths(seed);
  std::string text;
  for (int year = first_year; year < first_year + years; ++year) {
    if (year % 10 == 0) text += printed("SITE  %4d", year);
    text += printed("%4d%3d", widths.next(), 5);
    if (year % 10 == 9) text += "  RAW\n";
  }
  return text;
}

std::string two_column_core(unsigned seed) {
  Widths widths(seed);
  std::string text;
  for (int k = 0; k < years; ++k) {
    text += printed("%14s%6d%7.3f\n", "", first_year + k, widths.next() / 1000.0);
  }
  return text;
}

// --- The user's steps.

Step press(ButtonNumber n) {
  return [n](const Workspace& w) {
    const Button& place = w.b(n);
    return Event{(place.x1 + place.x2) / 2, (place.y1 + place.y2) / 2, Event::click};
  };
}

Steps presses(std::initializer_list<ButtonNumber> buttons) {
  Steps steps;
  for (const ButtonNumber n : buttons) steps.push_back(press(n));
  return steps;
}

// A click on the k-th name of a list that fills the area of button n.
Step pick(ButtonNumber n, int columns, int k) {
  return [=](const Workspace& w) {
    constexpr int rows = 30;
    const Button& area = w.b(n);
    const int width = (area.x2 - area.x1) / columns, height = (area.y2 - area.y1) / rows;
    return Event{area.x1 + (k - 1) / rows * width + width / 2, area.y1 + (k - 1) % rows * height + height / 2,
                 Event::click};
  };
}

Step ask_for_help() {
  return [](const Workspace&) { return Event{1500, 1000, Event::help}; };
}

const WalkState chooser_screen = {.chooser_shown = true};
const Steps out_of_chooser = presses({button::chooser_exit, button::exit_crossdating});

// --- The actions. In the list the files are 1 rings.rwl, 2 rings.fh, 3 rings.rwm, 4 more.rwl, 5 site.crn.

Action load(const std::string& name, int file, const std::string& says) {
  return {.name = "Load" + name,
          .way = presses({button::current_chronology}),
          .act = {pick(button::chronology_list, 3, file)},
          .says = says};
}

Action save_raw(const std::string& name, ButtonNumber layout, const std::string& write_label) {
  return {.name = "Save" + name,
          .way = presses({layout}),
          .act = presses({button::save_raw}),
          .writes = {"rings.RWW"},
          .says = "((Open|Close)rings\\.RWW|" + write_label + "RAW[123])"};
}

Action save_crn(ButtonNumber layout, const std::string& output) {
  return {.name = "Save" + output.substr(0, output.find('.')),
          .way = presses({layout}),
          .act = presses({button::save_crn}),
          .writes = {output},
          .says = "(Open|Write|Close)" + output};
}

Action report(ButtonNumber n, const std::string& output) {
  return {.name = "Report" + output.substr(0, output.find('.')),
          .act = presses({n}),
          .writes = {output},
          .says = "(Open ?|WRITE|Write|Close)" + output};
}

// Moves the first core to a file; its name stands behind those of the three cores.
Action move(const std::string& name, int file, const std::string& target, const std::string& write_label) {
  Steps way = presses({button::crossdate, button::choose_cores, button::move_core});
  way.push_back(pick(button::chooser_list, 7, 3 + file));
  return {.name = "MoveTo" + name,
          .way = way,
          .act = presses({button::chooser_do_it}),
          .back = out_of_chooser,
          .writes = {target},
          .says = "((Open|Close)" + target + "|" + write_label + "RAW[123])",
          .ends_in = chooser_screen};
}

Steps way_to_editor() {
  return presses({button::crossdate, button::choose_cores, button::edit_core, button::chooser_do_it});
}

Steps out_of_editor() {
  Steps steps = presses({button::editor_exit});
  steps.insert(steps.end(), out_of_chooser.begin(), out_of_chooser.end());
  return steps;
}

Action open_editor() {
  Steps way = way_to_editor();
  const Step last = way.back();
  way.pop_back();
  return {.name = "OpenEditor",
          .way = way,
          .act = {last},
          .back = out_of_editor(),
          .writes = {"Edit.raw"},
          .says = "(Open|Close)Edit\\.raw"};
}

Action read_edited(const std::string& name, ButtonNumber n, const Steps& back, const WalkState& ends_in) {
  return {.name = name,
          .way = way_to_editor(),
          .act = presses({n}),
          .back = back,
          .says = "(Open|Read|Read2|Close)Edit\\.raw|RAW1 (is not|has no end) in Edit\\.raw",
          .ends_in = ends_in,
          .prepare = [] { write("Edit.raw", raw_core("RAW1", 99)); }};
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Action& action) {
  return out << action.name;
}

std::vector<Action> reading_actions() {
  const std::string raw = "(Open|Read2|Close)(rings|more)\\.rwl";
  const std::string heidelberg = "(Open|Read[1-4] ?|Close)rings\\.fh";
  const std::string compact = "([Oo]pen|Read c[12]|Close)rings\\.rwm";
  const std::string index = "(Open|Read[123]|Close)site\\.crn";
  const std::string list = "(Open|Read|Close)Vorn\\.fil";
  const std::string recognition = "(Open|Read|Close)(rings\\.(rwl|fh|rwm)|more\\.rwl|site\\.crn)";
  const std::string all =
      list + "|" + recognition + "|" + raw + "|" + heidelberg + "|" + compact + "|" + index;
  return {
      {.name = "StartUp", .says = all},
      load("TucsonRaw", 1, raw),
      load("Heidelberg", 2, heidelberg),
      load("Compact", 3, compact),
      load("TucsonIndex", 5, index),
      read_edited("EditorReset", button::editor_reset, out_of_editor(), {}),
      read_edited("EditorQuit", button::editor_quit, out_of_chooser, chooser_screen),
      {.name = "Help", .act = {ask_for_help()}, .says = "(Open|Read|Close)Help\\.prn"},
  };
}

std::vector<Action> writing_actions() {
  return {
      {.name = "ReadTrw",
       .act = presses({button::read_two_column}),
       .writes = {"beams.rwl"},
       .says = "(Open|Read1|Read2|Close)TRW\\.fil|(Open|Read2|Close)(one|two)\\.trw|"
               "(OpenW|Close)beams\\.rwl|Write(one|two)|beams\\.rwl is kept",
       .ends_in = {.store_replaced = true}},
      report(button::correlation_report, "Corr.prn"),
      report(button::stats_report, "Stats.prn"),
      save_crn(button::crn_index, "Index.prn"),
      save_crn(button::crn_column, "Column.prn"),
      save_raw("TucsonRaw", button::raw_tucson, "Write"),
      save_raw("Heidelberg", button::raw_heidelberg, "Write "),
      save_raw("Compact", button::raw_compact, "write[HD]"),
      move("TucsonRaw", 4, "more.rwl", "Write"),
      move("Heidelberg", 2, "rings.fh", "Write "),
      move("Compact", 3, "rings.rwm", "write[HD]"),
      open_editor(),
  };
}

void lay_out_files() {
  write("Vorn.fil", "rings.rwl\nrings.fh\nrings.rwm\nmore.rwl\nsite.crn\n");
  write("rings.rwl", raw_core("RAW1", 1) + raw_core("RAW2", 2) + raw_core("RAW3", 3));
  write("rings.fh", heidelberg_core("HEI1", 4) + heidelberg_core("HEI2", 5));
  write("rings.rwm", compact_core("COM1", 6) + compact_core("COM2", 7));
  write("more.rwl", raw_core("MORE1", 8) + raw_core("MORE2", 9));
  write("site.crn", index_file(10));
  write("TRW.fil", "beams.rwl\none.trw\ntwo.trw\n");
  write("one.trw", two_column_core(11));
  write("two.trw", two_column_core(12));
  write("Help.prn", "Help\n----\n 0   0   0   1A title\nA line of text\n");
  for (const char* output :
       {"Corr.prn", "Stats.prn", "Index.prn", "Column.prn", "rings.RWW", "beams.rwl", "Edit.raw"}) {
    write(output, std::string("An older ") + output + "\n");
  }
}

Steps steps_to_quit() {
  return presses({button::log_on, button::quit});
}

}  // namespace vorn
