// What is measured: every stage, on the collections on which it matters.
#pragma once

#include <filesystem>
#include <string>

#include "machine_rates.h"

namespace vorn::bench {

// Registers all benchmarks. The collections lie in folders of `top` named by their letters; each benchmark
// enters the folder of its own, loads it when another was loaded before, and leaves the store as it was.
void register_stages(const std::filesystem::path& top, const MachineRates& rates);

// Runs each stage whose name contains `part` once, without a clock, and prints its name. Collections are
// taken as they lie there.
void run_each_once(const std::filesystem::path& top, const std::string& part);

}  // namespace vorn::bench
