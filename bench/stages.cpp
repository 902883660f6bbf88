#include "stages.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "floors.h"
#include "measured_table.h"
#include "quiet_desk.h"
#include "stage.h"
#include "whole_process.h"

namespace vorn::bench {
namespace {

constexpr int repetitions = 9;
constexpr double shortest_measurement = 0.02;  // seconds

// By this name bench/instructions knows what is to be counted.
[[gnu::noinline]] void work_of_stage(const Stage& stage, Desk& desk) {
  stage.work(desk);
}

class Laboratory {
 public:
  Laboratory(std::filesystem::path top, const MachineRates& rates) : top_(std::move(top)), rates_(rates) {}

  void measure(benchmark::State& state, const Stage& stage) {
    Desk& desk = loaded(stage.letter);
    if (stage.before) stage.before(desk);
    if (stage.floor) state.counters[counter::floor] = floor_of(stage, desk);
    for ([[maybe_unused]] auto _ : state) work_of_stage(stage, desk);
    if (stage.after) stage.after(desk);
    state.counters[counter::mark] = stage.mark;
    state.counters[counter::multiple] = stage.most;
    state.counters[counter::times] = stage.times;
    state.counters[counter::growth] = stage.growth;
  }

  void run_once(const Stage& stage) {
    Desk& desk = loaded(stage.letter);
    if (stage.before) stage.before(desk);
    work_of_stage(stage, desk);
    if (stage.after) stage.after(desk);
  }

  void measure(benchmark::State& state, const Process& process) {
    if (process.floor_known) state.counters[counter::floor] = floor_of_start(process.letter);
    forget_loaded();  // so that two do not share the caches
    std::filesystem::current_path(top_ / std::string(1, process.letter));
    for ([[maybe_unused]] auto _ : state) {
      const ProcessCost cost =
          process.arguments.empty() ? run_program_with(process.script) : run_program(process.arguments);
      state.SetIterationTime(cost.wall);
      state.counters[counter::cpu] = cost.cpu;
      state.counters[counter::memory] = cost.megabytes;
    }
    state.counters[counter::mark] = process.mark;
    state.counters[counter::most_memory] = process.most_memory;
    state.counters[counter::files] = process.files;
  }

 private:
  void forget_loaded() {
    desk_.reset();
    letter_ = '\0';
  }

  Desk& loaded(char letter) {
    if (letter_ == letter) return *desk_;
    forget_loaded();
    std::filesystem::current_path(top_ / std::string(1, letter));
    desk_ = std::make_unique<Desk>();
    load(*desk_);
    letter_ = letter;
    return *desk_;
  }

  // Each is worked out once.
  double floor_of(const Stage& stage, const Desk& desk) {
    const auto [known, is_new] = floors_.try_emplace(stage.name, 0.0);
    if (is_new) known->second = stage.floor(Floors(*desk.w, rates_));
    return known->second;
  }

  double floor_of_start(char letter) {
    const auto known = floors_of_start_.find(letter);
    if (known != floors_of_start_.end()) return known->second;
    return floors_of_start_[letter] = Floors(*loaded(letter).w, rates_).start();
  }

  std::filesystem::path top_;
  MachineRates rates_;
  std::unique_ptr<Desk> desk_;
  char letter_ = '\0';
  std::map<std::string, double> floors_;  // by stage
  std::map<char, double> floors_of_start_;
};

}  // namespace

void register_stages(const std::filesystem::path& top, const MachineRates& rates) {
  const auto laboratory = std::make_shared<Laboratory>(top, rates);
  for (const Stage& stage : all_stages()) {
    benchmark::RegisterBenchmark(
        stage.name.c_str(),
        [laboratory, stage](benchmark::State& state) { laboratory->measure(state, stage); })
        ->MeasureProcessCPUTime()  // of all threads
        ->MinTime(shortest_measurement)
        ->Repetitions(repetitions);
  }
  for (const Process& process : all_processes()) {
    benchmark::RegisterBenchmark(
        process.name.c_str(),
        [laboratory, process](benchmark::State& state) { laboratory->measure(state, process); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(repetitions);
  }
}

void run_each_once(const std::filesystem::path& top, const std::string& part) {
  Laboratory laboratory(top, {1, 1, 1, 1, 1, 1, 1});
  std::vector<Stage> stages = all_stages();
  // So that each collection is loaded once.
  std::stable_sort(stages.begin(), stages.end(),
                   [](const Stage& a, const Stage& b) { return a.letter < b.letter; });
  for (const Stage& stage : stages) {
    if (stage.name.find(part) == std::string::npos) continue;
    laboratory.run_once(stage);
    std::cout << stage.name << std::endl;
  }
}

}  // namespace vorn::bench
