// For the tests of files: widths that no two neighbours share.
#pragma once

#include <vector>

namespace vorn {

inline std::vector<int> widths(int count, int least = 100) {
  std::vector<int> all(static_cast<std::size_t>(count));
  int k = 0;
  for (int& width : all) width = least + 7 * k++ % 53;
  return all;
}

}  // namespace vorn
