// The session that a collection is compared with: everything written, and the lag tables of its cores.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "batch/table.h"
#include "workspace/settings.h"

namespace vorn {

// The lag tables of one core: the rows of `vorn`, and behind the first page of them, which has room for so
// many segments, the start years to be typed for the others.
struct CoreTables {
  std::vector<std::vector<Row>> pages{1};
  std::vector<int> start_years{};
};

// The file that a page of the lag table of core 1, 2, … is written to.
std::string page_name(int core, std::size_t page);

// The script, for a collection of `cores`, of which the first have `tables`, with the last of the
// chronologies of `files` files. The program is to wait at the start menu.
std::string session(int cores, int files, const Settings& settings, const std::vector<CoreTables>& tables);

}  // namespace vorn
