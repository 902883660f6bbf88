// Tucson ring widths as people read them: what a line means, even where its columns are not those of the
// layout, and which lines make a core. Nothing is taken for granted; the reader (formats/tucson_raw.h)
// decides by columns alone.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "study/file_lines.h"

namespace vorn {

// What stands in the place of one width.
struct DecadeField {
  // `decimal`: a number with a point in it, which the layout does not know.
  enum class Kind { number, decimal, empty, bad } kind = Kind::empty;
  std::int32_t number = 0;
  int column = 0;      // in which it begins, from 1
  double decimal = 0;  // of that kind
};

// A line that gives some years of one core.
struct DecadeLine {
  std::int64_t line = 0;                 // its number, from 1
  std::string name = {};                 // without blanks around it and without the "-" of years below -999
  std::int64_t year = 0;                 // of the first field
  std::vector<DecadeField> fields = {};  // without empty ones at the end
  bool in_columns = true;                // false: its words are where blanks and tabs part them
  bool is_shifted = false;               // name and year stand left of their columns by a few
  bool run_together = false;             // two numbers touch
  int touching = 0;                      // so many fields fill their columns

  // The year behind the last one that a line of the layout that begins so has room for.
  std::int64_t next_year() const;
};

// What a transfer or an editor put before the first character of a line: a byte order mark, Ctrl-Z, zero
// bytes.
std::size_t length_of_foreign_start(std::string_view text);

// What the line says, behind such a start; nothing where it is no decade.
std::optional<DecadeLine> decade_of(std::string_view text, std::int64_t line);

// A line that is_shifted in its columns: what stands from the year on is moved to the right by as many
// columns as there are blanks behind the year.
std::string in_its_columns(std::string_view text);

// The mark that a number is: so many values a millimetre. Nothing where it is none.
std::optional<double> unit_of_mark(std::int32_t number);

// The decades of one core, in the order of the file. Those without a name belong to the core before. A core
// ends where another name begins, and behind an end mark: where the next year does not follow, or where the
// rest of the mark's line is empty.
struct CoreLines {
  std::string name = {};
  std::vector<DecadeLine> decades = {};  // never empty
  // Of the last decade: where the end mark stands, and what it says. Without one all fields are rings.
  std::optional<std::size_t> mark = {};
  std::optional<double> unit = {};

  // So many fields of decade k stand before the end mark.
  std::size_t rings_on(std::size_t k) const;
};

// The cores of lines `from` (counted from 0) to the end.
std::vector<CoreLines> cores_on(std::span<const FileLine> lines, std::size_t from);

}  // namespace vorn
