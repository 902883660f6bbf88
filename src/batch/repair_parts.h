// What the repairs of the layouts share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "batch/repair.h"
#include "study/file_lines.h"

namespace vorn {

// What is said of a line that a copy does not have.
inline const std::string left_out_empty = ", empty, left out", no_data = ", no data, left out: ";

// "line 7".
std::string at_line(std::int64_t line);
// The beginning of a line as it may stand in a sentence.
std::string beginning_of(std::string_view text);

// Whether a line that is not understood has so many whole numbers that it may hold data: it is not left out
// without being asked.
bool may_hold_data(std::string_view text);

// Leaves out a line of that number and says so, `why` before its beginning; what may hold data is refused.
void leave_out(const FileLine& line, std::int64_t number, const std::string& why, Repair& made);

// Neither a copy nor a word.
bool is_nothing(const Repair& made);

// The files of each layout, by their bytes. Where nothing can be put right there is neither a copy nor a
// word.
Repair repaired_widths(std::string_view bytes, const RepairChoices& choices);
Repair repaired_heidelberg(std::string_view bytes);
Repair repaired_compact(std::string_view bytes);

}  // namespace vorn
