// How the lines around the page put names and numbers into words.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vorn {

// "T001", "T001 and T002", "T001, T002 and T003"; of more than ten the first ten "and 5 more".
std::string named(std::span<const std::string> names);

// "1 core", "3 cores".
std::string counted(std::int64_t count, std::string_view one);

// "1.23": two decimals, and no minus before a zero.
std::string two_decimals(double value);

}  // namespace vorn
