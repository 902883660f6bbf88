#include <algorithm>
#include <array>
#include <optional>

#include "formats/tucson_index.h"
#include "formats/tucson_index_layout.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

using namespace tucson_index;

constexpr int last_position_read = max_years + 20;  // a little beyond what a column keeps
// Deliberate: [eleven-years] no more of them are cut off, though a file may end in more.
constexpr int longest_walk_back = 11;

constexpr std::size_t shortest_line = 80;  // of one that is recognised

const EditFormat header_edit("(A140)");
const EditFormat label_edit("(A6,I4)");
const EditFormat recognition_edit("(6X,I4,10(I4,I3),A5)");

// The ten years of a line: index, depth, index, …
using Decade = std::array<std::int32_t, fields_a_line>;

// Where the decade of the first line begins, counted from its first year: 0 to -9.
// Deliberate: [index-year-0] years of 0 and below give -1 to -10, so that of years 0, -10, -20 … the first
// line is passed over, but carefully.
int decade_start(const Careful& careful, std::int32_t first_year) {
  if (first_year > 0) return first_year / 10 * 10 - first_year;
  const int rest = first_year % years_a_line;
  if (rest == 0 && careful.has(Mend::early_years)) return 0;
  return -rest - years_a_line;
}

// The label of the line behind the one so labelled.
std::int64_t label_behind(std::int64_t label) {
  const std::int64_t rest = label % years_a_line;
  return label - rest + (rest < 0 ? 0 : years_a_line);
}

// The year that a line is labelled with; none where it is no number.
std::optional<std::int64_t> label_of(std::string_view line) {
  Text<6> site;
  std::int32_t label = 0;
  if (edit_read(line, label_edit, site, label) != status::ok) return std::nullopt;
  return site(6) == '-' ? -label : label;
}

class IndexReader {
 public:
  IndexReader(FileTable& files, int f, TextInput& file, const Reading& reading, ReadDecisions& decided)
      : w(files), f_(f), file_(file), reading_(reading), decided_(decided) {}

  void read_headers();
  // Returns the last position filled.
  int read_decades();
  int last_year_with_data(int filled) const;

 private:
  Status read_decade(IndexLines& lines);
  int store_decade(int position);
  void keep_decisions(int position);

  FileTable& w;
  int f_;
  TextInput& file_;
  const Reading& reading_;
  ReadDecisions& decided_;
  Decade decade_{};  // the one read last
};

void IndexReader::read_headers() {
  Text<140> line;
  for (int k = 1; k <= reading_.header_lines; ++k) {
    told_read(reading_, file_, file_.read(header_edit, line), "Read1");
    decided_.leave_out(file_.line(), file_.line(), NotTaken::header);
  }
}

// Puts the years of the line read last, which begins at `position`, into the column, as far as they lie in
// it. Returns the last position that is filled.
int IndexReader::store_decade(int position) {
  const int last = std::min(position + years_a_line - 1, max_years);
  w.crn_written(f_) = true;
  for (int k = std::max(position, 1); k <= last; ++k) {
    const std::size_t pair = 2 * static_cast<std::size_t>(k - position);
    w.crn(k, f_) = decade_[pair];
    w.num(k, f_) = decade_[pair + 1];
  }
  keep_decisions(position);
  return last;
}

// Whether the line has years with data for which there is no place.
void IndexReader::keep_decisions(int position) {
  for (int k = std::max(max_years + 1, position); k < position + years_a_line; ++k) {
    if (decade_[2 * static_cast<std::size_t>(k - position)] == no_data) continue;
    return decided_.leave_out(file_.line(), LinesNotTaken::to_the_end, NotTaken::year_limit);
  }
}

// The last of the `filled` positions that is a year with data, at most eleven back and not before 0.
int IndexReader::last_year_with_data(int filled) const {
  const int lowest = std::max(filled - longest_walk_back, 0);
  int last = filled;
  while (last > lowest && w.crn(last, f_) == no_data) --last;
  return last;
}

// Reads the next line that is a decade.
Status IndexReader::read_decade(IndexLines& lines) {
  for (;;) {
    const Decade before = decade_;
    // Deliberate: [later-labels] their years are not looked at.
    const Status answer = file_.read(line_edit, std::span(decade_));
    if (answer == status::end_of_file || status::of_system(answer)) return answer;
    const IndexLines::Kind kind = lines.kind_of(file_.record());
    if (kind == IndexLines::Kind::decade) return answer;
    decade_ = before;
    if (kind == IndexLines::Kind::statistics)
      decided_.leave_out(file_.line(), file_.line(), NotTaken::no_decade);
  }
}

int IndexReader::read_decades() {
  Text<6> site;
  w.cfy(f_) = 0;
  told_read(reading_, file_, file_.read(first_line_edit, site, w.cfy(f_), std::span(decade_)), "Read2");
  if (site(6) == '-') w.cfy(f_) = -w.cfy(f_);
  IndexLines lines(reading_.careful, w.cfy(f_));
  const int start = decade_start(reading_.careful, w.cfy(f_)) + 1;
  int filled = store_decade(start);
  for (int position = start + years_a_line; position <= last_position_read; position += years_a_line) {
    const Status answer = read_decade(lines);
    if (answer == status::end_of_file) break;
    // Deliberate: [statistics-line] a line that is no decade is told and gives ten years.
    told_read(reading_, file_, answer, "Read3");
    filled = store_decade(position);
  }
  return filled;
}

}  // namespace

IndexLines::IndexLines(const Careful& careful, std::int64_t first_label)
    : careful_(careful), next_label_(label_behind(first_label)) {}

IndexLines::Kind IndexLines::kind_of(std::string_view line) {
  if (careful_.has(Mend::blank_line) && is_blank_line(line)) return Kind::blank;
  const auto label = label_of(line);
  Decade decade{};
  if (careful_.has(Mend::statistics_line) && label != next_label_ &&
      edit_read(line, line_edit, std::span(decade)) != status::ok)
    return Kind::statistics;
  next_label_ = label_behind(label.value_or(next_label_));
  return Kind::decade;
}

bool is_index_decade(const FirstLine& line) {
  if (line.trimmed().size() < shortest_line) return false;
  std::int32_t year = 0;
  Decade decade{};
  Text<5> label;
  return edit_read(line.view(), recognition_edit, year, std::span(decade), label) == status::ok;
}

ReadDecisions read_ind(FileTable& w, int f, const Reading& reading) {
  ReadDecisions decided{Layout::tucson_index, reading.header_lines};
  decided.careful = reading.careful;
  TextInput file;
  told(reading.troubles, reading.file, file.open(reading.files, reading.file), "Open");
  IndexReader reader(w, f, file, reading, decided);
  reader.read_headers();
  const int filled = reader.read_decades();
  decided.status = close_told(reading, file);
  w.cyr(f) = reader.last_year_with_data(filled);
  w.cly(f) = w.cfy(f) + w.cyr(f) - 1;
  return decided;
}

}  // namespace vorn
