// What the command line asks of `vorn`.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "batch/repair.h"
#include "batch/table.h"
#include "batch/verbs.h"

namespace vorn {

// What `vorn` ends with.
inline constexpr int done = 0, found = 1, wrong_use = 2, cannot_go_on = 4;

// What a verb that has its own way does; it answers what the program ends with.
using Command = std::function<int()>;

struct Request {
  Command command = {};  // instead of all that follows
  const Verb* verb = nullptr;
  std::vector<std::string> files;
  TableFormat format = TableFormat::table;
  std::string output;  // empty: standard output
  Settings settings;
  VerbSwitches switches;
  std::vector<std::string> references;  // files
  std::string reference_folder;         // date: instead of them
  std::size_t most_places = 10;         // date: on the references of the folder
  bool keeps_references = true;         // date: those of the folder, for the next time
  std::vector<std::string> series;      // only these; all when empty
  int threads = 1;
  bool quiet = false;
  std::optional<Severity> fail_on;
  std::string list;            // check: a list of files; those it names come behind `files`
  std::vector<Row> list_rows;  // what is to be said of it
  std::string repair_folder;   // check: where copies go that are taken whole; none are made where it is empty
  RepairChoices repair_choices;
  std::vector<std::string> moved;  // stats: cores that are moved from the first file to the second
};

// Writes what moving cores does to both files; answers what the program ends with.
int tell_move(const Request& request);

// Writes the chronology of the one file as template text; answers what the program ends with.
int write_chronology_template(const Request& request);

// Fills `request`. Answers what the program ends with where there is nothing left to do: help was asked for
// and given, or the command line is none and it was said why.
std::optional<int> read_command_line(int argc, char** argv, Request& request);

// Reads the list of files, where there is one. Answers what the program ends with where that cannot be done.
std::optional<int> take_list(Request& request);

// By what the values are computed: the settings that bear on the verb.
std::string recipe_of(const Request& request);

}  // namespace vorn
