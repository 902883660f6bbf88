// What a stage is: one row of the table.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "floors.h"
#include "quiet_desk.h"

namespace vorn::bench {

// Work done in the program itself, on a collection that is loaded.
struct Stage {
  std::string name;  // ends with the letter of the collection: "spline (a)"
  char letter;
  std::function<void(Desk&)> work;
  std::function<double(const Floors&)> floor = {};
  double mark = 0, most = 0;  // see counter
  std::function<void(Desk&)> before = {}, after = {};
  int times = 1;
  double growth = 0;  // see counter
};

// A whole program as a process of its own: vorn_replay with a script, or another with its arguments.
struct Process {
  std::string name;
  char letter;
  std::string script;
  double mark;
  bool floor_known;
  double most_memory = 250;                 // MB
  std::vector<std::string> arguments = {};  // the program first
  double files = 0;                         // that it works on, where the row is one of two that are compared
};

std::vector<Stage> all_stages();
std::vector<Process> all_processes();

// Starts the program in the current folder, and ends it when the start menu waits.
void load(Desk& desk);

}  // namespace vorn::bench
