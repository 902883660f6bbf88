// Cores as lines of the Tucson raw layout, their values as they stand there.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vorn {

// Years that follow each other, of one core.
struct Stretch {
  std::string name = {};  // as its columns have it
  std::int64_t first = 0;
  std::vector<std::int32_t> values = {};
  double unit = 0;  // values a millimetre: 100 or 1000
};

// Its lines, without their ends: the end mark of the unit stands behind the last value. What does not fit its
// columns is asterisks, as in all that is written by edit formats.
std::vector<std::string> tucson_lines(const Stretch& stretch);

}  // namespace vorn
