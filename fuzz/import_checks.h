// What must hold of every file of another layout (src/import/), whatever its bytes.
#pragma once

#include <string>
#include <string_view>

#include "import/imported.h"

namespace vorn::fuzz {

// What does not hold of what was made of a file; empty where all does. Series begin and end in a ring, their
// names fit and differ, the program's reader takes the copy whole, and where there is none a finding of
// severity error says so.
std::string complaint_about(const Imported& one);

// The numbers of the data that are neither rings nor counted by a finding; empty where there are none.
std::string dropped_of_table(std::string_view bytes, const Imported& one);
std::string dropped_of_template(std::string_view bytes, const Imported& one);
std::string dropped_of_heidelberg(std::string_view bytes, const Imported& one);

}  // namespace vorn::fuzz
