// What a reader decided, kept as values: a file does not say all that is needed to read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "records/status.h"
#include "workspace/careful.h"
#include "workspace/layout.h"
#include "workspace/names.h"

namespace vorn {

// By what the unit of a series was known.
enum class UnitBy {
  hundredths_mark,   // the end mark 999
  thousandths_mark,  // the end mark -9999
  no_mark,           // no end mark: hundredths
  next_stretch,      // no end mark: carefully that of the stretch of the same core behind it
  unit_line,         // "Unit="
  mean,              // no such line: whether the mean of the values exceeds 300
  exponent,          // of the header of a compact series
  edit_format        // no exponent: the fifth character of its edit format
};

// One series as it was read.
struct SeriesRead {
  Name name = {};
  std::int64_t first_line = 0, last_line = 0;  // of the file, from 1
  std::int32_t rings = 0;
  double unit = 0;  // values a millimetre
  UnitBy unit_by = UnitBy::no_mark;
  bool end_mark = false;  // Tucson raw: there was one
  bool split = false;     // Tucson raw: it is longer than a series may be; what follows is one of its own
};

// Why lines were not taken.
enum class NotTaken {
  header,        // they stand before the data
  unknown_key,   // no keyword that the reader knows
  no_end_mark,   // the last line of a series without an end mark
  long_header,   // no data within as many lines as a header may have
  cut_header,    // the file ends in a header
  behind_end,    // a line without a name ends the file
  no_name,       // a line without a name that goes on with no series: passed over
  no_decade,     // Tucson index: a line of statistics, passed over
  no_room,       // the store has no room for more rings
  series_limit,  // as many series as a file may hold were read before
  year_limit     // as many years as a chronology may have were read before
};

struct LinesNotTaken {
  static constexpr std::int64_t to_the_end = 0;
  std::int64_t first = 0, last = 0;  // from 1; the last may be to_the_end
  NotTaken why = NotTaken::header;
};

// All of them together, in the order of the file. Neither list is ever longer than a store has series.
struct ReadDecisions {
  Layout layout = Layout::none;
  int header_lines = 0;
  std::vector<SeriesRead> series = {};
  std::vector<LinesNotTaken> not_taken = {};  // lines that follow each other for one reason are one entry
  std::size_t more_not_taken = 0;             // entries for which there was no place
  std::int32_t missing_rings = 0;
  Status status = status::ok;  // of the last operation on the file
  Careful careful = {};        // as the file was read

  void leave_out(std::int64_t first, std::int64_t last, NotTaken why);
  bool left_out(NotTaken why) const;
};

// "the 10,000th", for any number that ends in 4 to 0.
std::string the_nth(std::size_t number);

// What users should know although no message tells it: where a limit was passed, one sentence each.
std::vector<std::string> limits_passed(const ReadDecisions& decided, std::string_view file);

}  // namespace vorn
