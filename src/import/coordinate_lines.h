// The lines of a file of coordinates, one by one.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "study/file_lines.h"

namespace vorn {

struct PathPoint {
  double x = 0, y = 0;  // mm
};

// Millimetres between the two.
double distance(const PathPoint& one, const PathPoint& other);

// A line that holds a point.
struct PathLine {
  char mark = '\0';                  // the letter before the coordinates, large
  std::vector<double> numbers = {};  // at most 5, of which 4 are the most that mean anything
  std::string_view comment = {};     // behind "#", without blanks around it
};

// Whether a comma stands for the decimal point in these lines, as far as that can be known: none that may
// hold a point of the path has a point, and each has two commas or more, or a semicolon.
bool has_decimal_commas(std::span<const FileLine> lines);

// Nothing where the line is no point.
std::optional<PathLine> path_line(std::string_view text, bool decimal_commas);

// "#C Key=value" and "KEY value": the word in small letters and what follows it.
struct KeyedWords {
  std::string key = {};
  std::string_view value = {};
};
std::vector<KeyedWords> keyed_words(std::string_view text);

}  // namespace vorn
