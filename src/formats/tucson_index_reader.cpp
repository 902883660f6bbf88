#include <algorithm>
#include <array>

#include "formats/file_status.h"
#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"

namespace vorn {
namespace {

using namespace tucson_index;

constexpr int last_position_read = max_years + 20;  // a little beyond what a column keeps
// Deliberate: [eleven-years] no more of them are cut off, though a file may end in more.
constexpr int longest_walk_back = 11;

const EditFormat header_edit("(A140)");

// The ten years of a line: index, depth, index, …
using Decade = std::array<std::int32_t, fields_a_line>;

// Where the decade of the first line begins, counted from its first year: 0 to -9.
// Deliberate: [index-year-0] years of 0 and below give -1 to -10, so that of years 0, -10, -20 … the first
// line is passed over.
int decade_start(std::int32_t first_year) {
  if (first_year > 0) return first_year / 10 * 10 - first_year;
  return (first_year / 10 - 1) * 10 - first_year;
}

// Puts the years of a line that begins at `position` into the column, as far as they lie in it. Returns the
// last position that is filled.
int store_decade(Workspace& w, const Decade& decade, int position) {
  const int last = std::min(position + years_a_line - 1, max_years);
  for (int k = std::max(position, 1); k <= last; ++k) {
    const std::size_t pair = 2 * static_cast<std::size_t>(k - position);
    w.crn(k, w.cf) = decade[pair];
    w.num(k, w.cf) = decade[pair + 1];
  }
  return last;
}

// The last of the `filled` positions that is a year with data, at most eleven back and not before 0.
int last_year_with_data(const Workspace& w, int filled) {
  const int lowest = std::max(filled - longest_walk_back, 0);
  int last = filled;
  while (last > lowest && w.crn(last, w.cf) == no_data) --last;
  return last;
}

// Reads the decades. Returns the last position filled.
int read_decades(Workspace& w, TextInput& file, std::string_view name) {
  Text<6> site;
  Decade decade{};
  w.cfy(w.cf) = 0;
  told_or_end(w, file.read(first_line_edit, site, w.cfy(w.cf), std::span(decade)), "Read2", name);
  if (site(6) == '-') w.cfy(w.cf) = -w.cfy(w.cf);
  const int start = decade_start(w.cfy(w.cf)) + 1;
  int filled = store_decade(w, decade, start);
  for (int position = start + years_a_line; position <= last_position_read; position += years_a_line) {
    // Deliberate: [later-labels] their years are not looked at.
    const int answer = file.read(line_edit, std::span(decade));
    w.ios = answer;
    if (answer == status::end_of_file) break;
    // Deliberate: [statistics-line] a line that is no decade is told and gives ten years.
    told_or_end(w, answer, "Read3", name);
    filled = store_decade(w, decade, position);
  }
  return filled;
}

}  // namespace

void read_ind(Workspace& w) {
  const FileName name = w.cnam(w.cf);
  TextInput file;
  told_or_end(w, file.open(w.files, name.view()), "Open", name.view());
  for (int k = 1; k <= w.rfhead(w.cf); ++k) {
    w.ios = file.read(header_edit, w.mess);
    if (io_err(w, "Read1", name.view())) return;  // never: see io_err
  }
  const int filled = read_decades(w, file, name.view());
  close_told(w, file, name.view());
  w.cyr(w.cf) = last_year_with_data(w, filled);
  w.cly(w.cf) = w.cfy(w.cf) + w.cyr(w.cf) - 1;
}

}  // namespace vorn
