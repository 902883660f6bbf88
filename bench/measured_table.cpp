#include "measured_table.h"

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <sstream>

namespace vorn::bench {
namespace {

double counter_of(const std::map<std::string, double>& counters, const char* name) {
  const auto found = counters.find(name);
  return found == counters.end() ? 0 : found->second;
}

// Three figures, milliseconds.
std::string milliseconds(double seconds) {
  const double ms = seconds * 1e3;
  std::ostringstream text;
  text << std::fixed << std::setprecision(ms >= 100 ? 0 : ms >= 10 ? 1 : ms >= 1 ? 2 : 3) << ms;
  return text.str();
}

std::string times(double multiple) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(multiple >= 10 ? 0 : multiple >= 0.5 ? 1 : 2) << multiple;
  return text.str();
}

}  // namespace

void MeasuredTable::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.run_type != Run::RT_Iteration) continue;
    const std::string name = run.run_name.function_name;
    const auto known =
        std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.stage == name; });
    Row& row = known == rows_.end() ? rows_.emplace_back() : *known;
    row.stage = name;
    std::map<std::string, double> counters;
    for (const auto& [key, value] : run.counters) counters[key] = value.value;
    const double count =
        static_cast<double>(run.iterations) * std::max(counter_of(counters, counter::times), 1.0);
    const double elsewhere = counter_of(counters, counter::cpu);
    row.wall = std::min(row.wall, run.real_accumulated_time / count);
    row.cpu = std::min(row.cpu, elsewhere > 0 ? elsewhere : run.cpu_accumulated_time / count);
    row.counters = std::move(counters);
  }
}

double MeasuredTable::growth(const Row& row) const {
  if (!row.stage.ends_with(" (a)")) return 0;
  const std::string quarter = row.stage.substr(0, row.stage.size() - 2) + "f)";
  for (const Row& other : rows_) {
    if (other.stage == quarter) return row.cpu / other.cpu;
  }
  return 0;
}

double MeasuredTable::calls(const Row& row) const {
  const double files = counter_of(row.counters, counter::files);
  if (files <= 1) return 0;
  for (const Row& other : rows_) {
    if (counter_of(other.counters, counter::files) == 1) return other.cpu * files / row.cpu;
  }
  return 0;
}

bool MeasuredTable::misses(const Row& row) const {
  const double mark = counter_of(row.counters, counter::mark),
               most = counter_of(row.counters, counter::multiple);
  const double floor = counter_of(row.counters, counter::floor);
  return (mark > 0 && row.cpu > mark) || (most > 0 && row.cpu > most * floor) ||
         counter_of(row.counters, counter::memory) > counter_of(row.counters, counter::most_memory) ||
         (counter_of(row.counters, counter::growth) > 0 &&
          growth(row) > counter_of(row.counters, counter::growth));
}

void MeasuredTable::print(std::ostream& out, const Row& row) const {
  const double floor = counter_of(row.counters, counter::floor),
               mark = counter_of(row.counters, counter::mark);
  const double most = counter_of(row.counters, counter::multiple);
  const double memory = counter_of(row.counters, counter::memory);
  std::string goal = mark > 0 ? milliseconds(mark) + " ms" : most > 0 ? times(most) + " times" : "";
  if (memory > 0) {
    goal += goal.empty() ? "" : ", ";
    goal += std::to_string(static_cast<int>(memory)) + " of " +
            std::to_string(static_cast<int>(counter_of(row.counters, counter::most_memory))) + " MB";
  }
  if (calls(row) > 0) {
    goal += goal.empty() ? "" : ", ";
    goal += "1/" + times(calls(row)) + " of a call for each";
  }
  if (growth(row) > 0 && counter_of(row.counters, counter::growth) > 0) {
    goal += goal.empty() ? "" : ", ";
    goal += times(growth(row)) + " of " + times(counter_of(row.counters, counter::growth)) + " times (f)";
  }
  out << "| " << row.stage << " | " << milliseconds(row.wall) << " | " << milliseconds(row.cpu) << " | "
      << (floor > 0 ? milliseconds(floor) : "") << " | " << (floor > 0 ? times(row.cpu / floor) : "") << " | "
      << goal
      << (goal.empty()  ? ""
          : misses(row) ? ": **missed**"
                        : ": reached")
      << " |\n";
}

int MeasuredTable::print(std::ostream& out) const {
  out << "| stage | ms | CPU ms | floor ms | times its floor | mark |\n|---|---:|---:|---:|---:|---|\n";
  for (const Row& row : rows_) print(out, row);
  return static_cast<int>(
      std::count_if(rows_.begin(), rows_.end(), [this](const Row& row) { return misses(row); }));
}

}  // namespace vorn::bench
