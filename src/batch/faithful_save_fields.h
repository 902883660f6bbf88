// Values side by side in columns of one width, so many a line, as Heidelberg and compact files have them.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/faithful_save_layout.h"

namespace vorn {

struct ValueColumns {
  std::size_t a_line = 0, width = 0;

  std::size_t length() const { return a_line * width; }
  // The lines that so many values take: one where there are none.
  std::size_t lines_for(std::size_t values) const;
};

// An edit format such as "(19F4.0)", "(26F3.0)" or "(10I8)".
struct ValueFormat {
  ValueColumns columns;
  std::size_t decimals = 0;  // of a value without a point
};
// Nothing where it is no such format.
std::optional<ValueFormat> value_format(std::string_view columns);

// The fields of so many values; those behind the end of a line are empty.
std::vector<std::string> fields_on(std::span<const FileLine> lines, std::size_t values,
                                   const ValueColumns& columns);

// Most digits behind a point that one of the fields has.
int most_decimals(std::span<const std::string> fields);

// A value, already in the unit of the file, with so many digits behind the point (0: without one) in columns
// of this width; nothing where more digits or columns were needed.
std::optional<std::string> value_digits(double value, int decimals, std::size_t width);

// What stands behind the last value of a line that is not full.
enum class LineRest { nothing, blanks, zeros };
// Of lines that hold so many values; nothing where the last one is full.
std::optional<LineRest> rest_of(std::span<const FileLine> lines, std::size_t values,
                                const ValueColumns& columns);

// The lines of a core's values: those of which all values stayed together are the same; in others each value
// that stays keeps its field as it is.
std::vector<SavedLine> value_lines(const SavedCore& core, const ValueColumns& columns, LineRest rest);

// The line with another number in the place of the one that begins at or behind `from`, counted from 0: to
// the right of its columns where it stood so, and what stands behind it does not move where there is room.
std::string with_number(std::string_view line, std::size_t from, std::int64_t number);

}  // namespace vorn
