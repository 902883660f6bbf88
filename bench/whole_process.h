// Runs the whole program as a process of its own, driven by a script.
#pragma once

#include <string>

namespace vorn::bench {

struct ProcessCost {
  double wall = 0, cpu = 0;  // seconds from its start to its end
  double megabytes = 0;      // resident at most
};

// Runs vorn_replay in the current folder with a script of these lines. Throws std::runtime_error when it
// does not end well.
ProcessCost run_program_with(const std::string& script);

}  // namespace vorn::bench
