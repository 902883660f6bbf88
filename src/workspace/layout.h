// The layouts of files that the program knows.
#pragma once

#include <cstdint>

namespace vorn {

// What rftype says of a file. The numbers are those by which the layouts have always been known. Which of
// them hold ring widths, and who reads and writes each: formats/layouts.h.
enum class Layout : std::int32_t {
  none = 0,  // not looked at; of an output, none is chosen
  heidelberg = 1,
  compact = 2,
  tucson_raw = 3,
  tucson_index = 4,
  not_recognised = 5
};

}  // namespace vorn
