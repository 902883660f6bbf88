// vorn_bench FOLDER [OPTION...]: measures every stage and prints one table. FOLDER takes the collections; the
// options are those of Google Benchmark, such as --benchmark_filter=rbar.
// vorn_bench FOLDER --make: makes the collections.
// vorn_bench FOLDER --once PART: runs the stages with PART in their name once each, for counting what they
// do.
#include <benchmark/benchmark.h>

#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "collections.h"
#include "machine_rates.h"
#include "measured_table.h"
#include "stages.h"

namespace {

namespace fs = std::filesystem;
using namespace vorn::bench;

void make_collections(const fs::path& top) {
  for (const Collection& collection : all_collections()) {
    const fs::path folder = top / std::string(1, collection.letter);
    fs::remove_all(folder);
    write_collection(collection.letter, folder);
    std::cout << "(" << collection.letter << ") " << collection.what << "\n";
  }
  std::cout << "\n";
}

void print(const MachineRates& rates) {
  constexpr double billion = 1e9;
  std::cout << std::fixed << std::setprecision(1) << "Multiply-adds: " << rates.multiply_adds / billion
            << " thousand million a second. Memory: " << rates.bytes / billion
            << " GB/s. Line ends: " << rates.scanned / billion << " GB/s. Files opened: " << rates.files / 1e3
            << " thousand a second. Logarithms: " << rates.logarithms / 1e6
            << " million a second. Ends of pairs: " << rates.pair_ends / billion
            << " thousand million a second. A program that does nothing: " << rates.start * 1e3 << " ms.\n\n";
}

int measure(const fs::path& top) {
  make_collections(top);
  const MachineRates rates = measure_machine((top / "a" / "a.rwl").string());
  print(rates);
  register_stages(top, rates);
  MeasuredTable table;
  benchmark::RunSpecifiedBenchmarks(&table);
  const int missed = table.print(std::cout);
  std::cout << "\n"
            << (missed == 0 ? "Every mark is reached." : std::to_string(missed) + " marks are missed.")
            << "\n";
  return missed == 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  const std::vector<std::string> words(argv + 1, argv + argc);
  try {
    if (words.size() == 1) return measure(fs::absolute(words[0]));
    if (words.size() == 2 && words[1] == "--make") return make_collections(fs::absolute(words[0])), 0;
    if (words.size() == 3 && words[1] == "--once") return run_each_once(fs::absolute(words[0]), words[2]), 0;
    std::cerr << "use: vorn_bench FOLDER [--make | --once PART | OPTION...]\n";
    return 2;
  } catch (const std::exception& problem) {
    std::cerr << "vorn_bench: " << problem.what() << "\n";
    return 2;
  }
}
