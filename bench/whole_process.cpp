#include "whole_process.h"

#include <cstdio>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace vorn::bench {
namespace {

constexpr const char* script_name = "measured.vrs";

struct Closes {
  void operator()(std::FILE* pipe) const { ::pclose(pipe); }
};

}  // namespace

ProcessCost run_program(const std::vector<std::string>& words) {
  std::string command = std::string("\"") + PROCESS_COST + "\"";
  for (const std::string& word : words) command += " \"" + word + "\"";
  const std::unique_ptr<std::FILE, Closes> answer(::popen(command.c_str(), "r"));
  ProcessCost cost;
  if (!answer || std::fscanf(answer.get(), "%lf %lf %lf", &cost.wall, &cost.cpu, &cost.megabytes) != 3) {
    throw std::runtime_error(words.front() + " did not end well");
  }
  return cost;
}

ProcessCost run_program_with(const std::string& script) {
  std::ofstream(script_name) << script;
  return run_program({VORN_REPLAY, script_name});
}

}  // namespace vorn::bench
