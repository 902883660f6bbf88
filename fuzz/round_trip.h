// Ring widths written and read again.
#pragma once

#include <cstddef>

#include "workspace/vorndata.h"

namespace vorn::fuzz {

// Writes the cores of the store in one of the three layouts of ring widths, the one of `number` modulo 3, and
// reads them again. A store that every layout can hold must come back: as many cores, their names and years,
// widths to the thousandth. Whatever else the store holds, the file must be read without harm. Leaves what
// was read in the store.
void write_and_read_again(Workspace& w, std::size_t number);

}  // namespace vorn::fuzz
