// What the comparisons have in common: rows, lines, and how a difference is told.
#pragma once

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "batch/same_figures.h"
#include "batch/table.h"

namespace vorn {

inline std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

inline std::string text_in(const Row& row, std::size_t column) {
  return std::get<std::string>(row[column]);
}
inline std::int32_t whole_in(const Row& row, std::size_t column) {
  return static_cast<std::int32_t>(std::get<std::int64_t>(row[column]));
}
inline double real_in(const Row& row, std::size_t column, double absent) {
  const auto* value = std::get_if<double>(&row[column]);
  return value ? *value : absent;
}

// A figure left without the digit before its point, as the report and the lag table have it: "-.23".
inline std::string without_digit(std::string text, std::size_t place) {
  return text.erase(place, 1);
}

// Counts what is compared and tells what differs.
class Figures {
 public:
  Figures(SameFigures& all, std::string where) : all_(all), where_(std::move(where)) {}
  void equal(const std::string& program, const std::string& vorn, long& count) {
    ++count;
    if (program != vorn) tell("the program has \"" + program + "\", vorn \"" + vorn + "\"");
  }
  void equal_lists(const std::vector<std::string>& program, const std::vector<std::string>& vorn,
                   long& count) {
    const std::size_t both = std::min(program.size(), vorn.size());
    for (std::size_t k = 0; k < both; ++k) equal(program[k], vorn[k], count);
    for (std::size_t k = both; k < program.size(); ++k) equal(program[k], "", count);
    for (std::size_t k = both; k < vorn.size(); ++k) equal("", vorn[k], count);
  }
  void tell(const std::string& words) { all_.differences.push_back(where_ + ": " + words); }

 private:
  SameFigures& all_;
  std::string where_;
};

}  // namespace vorn
