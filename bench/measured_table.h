// Gathers what the benchmarks found into one table.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace vorn::bench {

// Counters by which a benchmark tells what its row shows beside the time.
namespace counter {
inline constexpr const char* floor = "floor";    // seconds; 0 when it has none
inline constexpr const char* mark = "mark";      // seconds that it may take; 0 when none is set
inline constexpr const char* multiple = "most";  // times its floor that it may take; 0 when none is set
inline constexpr const char* growth = "grows";  // times as long as on (f), a quarter, that (a) may take; or 0
inline constexpr const char* times = "times";  // how often the work is done in one iteration; 1 when not told
inline constexpr const char* cpu = "cpu";      // seconds of processor time, of work done by another process
inline constexpr const char* memory = "MB";    // resident at most; only of whole processes
inline constexpr const char* most_memory = "most MB";  // what that may be
inline constexpr const char* files = "files";          // that a process works on; 0 when not told
}  // namespace counter

// Of each benchmark the smallest time of its repetitions: what disturbs a measurement only ever adds to it.
// Processor time, of all threads together, is held against floor and mark, since other programs on the
// machine disturb it least.
class MeasuredTable : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }
  void ReportRuns(const std::vector<Run>& runs) override;
  // Prints the table, in Markdown. Result: how many rows miss their mark.
  int print(std::ostream& out) const;

 private:
  struct Row {
    std::string stage;
    double wall = 1e9, cpu = 1e9;  // seconds
    std::map<std::string, double> counters;
  };
  // Of a row of many files in one call: how many times as long a call for each of them takes; else 0.
  double calls(const Row& row) const;
  // How many times as long a row on collection (a) took as the same on (f); 0 where there is none.
  double growth(const Row& row) const;
  bool misses(const Row& row) const;
  void print(std::ostream& out, const Row& row) const;

  std::vector<Row> rows_;
};

}  // namespace vorn::bench
