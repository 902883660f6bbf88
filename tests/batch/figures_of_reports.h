// The figures of the files that a session writes.
#pragma once

#include <string>

#include "batch/collection.h"
#include "batch/same_figures.h"

namespace vorn {

// Each takes a collection that nothing was worked out for yet, and the text of the file.
void compare_stats(Collection& collection, const std::string& report, SameFigures& all);
void compare_report(Collection& collection, const std::string& report, SameFigures& all);
void compare_chron(Collection& collection, const std::string& table, SameFigures& all);

}  // namespace vorn
