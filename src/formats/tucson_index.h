// Chronologies in the Tucson index layout (see tucson_index_layout.h).
#pragma once

#include <cstdint>
#include <string_view>

#include "formats/file_work.h"
#include "formats/layout_table.h"
#include "formats/read_decisions.h"
#include "workspace/careful.h"
#include "workspace/file_table.h"

namespace vorn {

// Whether the line is a decade of one.
bool is_index_decade(const FirstLine& line);

// What the lines behind the first one are: decades, all of them, unless they are read carefully. Asked line
// by line.
class IndexLines {
 public:
  // `first_label` is the year of the first line.
  IndexLines(const Careful& careful, std::int64_t first_label);

  enum class Kind { decade, blank, statistics };
  // With the mend of blank lines those are none; with that of lines of statistics, what is not all numbers
  // and is not labelled as the decade that follows is one.
  Kind kind_of(std::string_view line);

 private:
  Careful careful_;
  std::int64_t next_label_;
};

// Loads the chronology of a file, behind its header lines, into column f of crn and num, with cfy, cly and
// cyr. Indices stay as the file has them, in thousandths.
//
// Only the first line's year is read; the lines are taken as decades that follow each other. Years marked
// 9990 at the end are cut off, as far as eleven of them; 12,000 years at most are kept, whatever the file
// holds.
//
// Carefully, lines of blanks and of statistics are passed over (see IndexLines) and not told.
//
// Told, and gone on after: "Open", "Read1" for a header line, "Read2" for the first line and "Read3" for a
// later one, whose fields from the bad one on are taken as in the line before.
ReadDecisions read_ind(FileTable& w, int f, const Reading& reading);

// Writes the chronology of file f: the name of its file, then its decades,
// indices in thousandths, a year without samples as 9990. A failure is told as "Write".
void write_indcrn(const FileTable& w, int f, const Writing& writing);

}  // namespace vorn
