// For tests of the programs as shells meet them: a folder of its own, and what a command left there.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "support/scratch_folder.h"

namespace vorn {

struct CommandBench : testing::Test {
  // Runs a shell command; the exit status, and in `said` and `printed` what went to the two outputs.
  int run(const std::string& command) {
    const int status = std::system((command + " >printed.log 2>said.log").c_str());
    said = folder.read("said.log");
    printed = folder.read("printed.log");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  long lines() const { return std::ranges::count(printed, '\n'); }
  ScratchFolder folder;
  std::string said, printed;
};

}  // namespace vorn
