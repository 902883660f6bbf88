// Runs whole programs as processes of their own.
#pragma once

#include <string>
#include <vector>

namespace vorn::bench {

struct ProcessCost {
  double wall = 0, cpu = 0;  // seconds from its start to its end
  double megabytes = 0;      // resident at most
};

// Runs a program, with its arguments, in the current folder. Throws std::runtime_error when it does not end
// well.
ProcessCost run_program(const std::vector<std::string>& words);
// Runs vorn_replay so, with a script of these lines.
ProcessCost run_program_with(const std::string& script);

}  // namespace vorn::bench
