// What is measured: every stage, on the collections on which it matters.
#pragma once

#include <filesystem>

#include "machine_rates.h"

namespace vorn::bench {

// Registers all benchmarks. The collections lie in folders of `top` named by their letters; each benchmark
// enters the folder of its own, loads it when another was loaded before, and leaves the store as it was.
void register_stages(const std::filesystem::path& top, const MachineRates& rates);

}  // namespace vorn::bench
