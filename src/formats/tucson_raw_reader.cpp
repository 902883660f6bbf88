#include <algorithm>

#include "formats/core_loading.h"
#include "formats/file_status.h"
#include "formats/tucson_raw.h"
#include "formats/tucson_raw_layout.h"

namespace vorn {
namespace {

using namespace tucson_raw;

constexpr int most_further_lines = 1'003;  // of one series, behind its first
constexpr int value_places = (most_further_lines + 1) * values_a_line;

const EditFormat header_edit("(A8)");

class RawReader {
 public:
  RawReader(Workspace& workspace, TextInput& file, std::string_view file_name)
      : w(workspace), file_(file), file_name_(file_name) {}

  void read_series();
  // Of the first line, which is not told.
  int first_status() const { return first_status_; }

 private:
  void read_first_line();
  void read_line();
  void start_series(int i);
  bool file_ended_behind(int i);
  bool continues(int i);
  int find_end_mark() const;
  bool store_series(int i);

  Workspace& w;
  TextInput& file_;
  std::string_view file_name_;
  // The line read last. Deliberate: [older-values] a field that is no number leaves what the line before had
  // there.
  Name name_;
  std::int32_t year_ = 0;
  Table<std::int32_t> values_{value_places};  // of the series at hand, in year order
  int position_ = 1;                          // in values_, behind those of the line read last
  int first_status_ = status::ok;
};

// Deliberate: [first-line-untold] a first line that cannot be read is not told; what was read of it is kept.
void RawReader::read_first_line() {
  w.nam(1) = Name();
  w.fy(1) = 0;
  first_status_ = file_.read(line_edit, w.nam(1), w.fy(1), values_.range(1, values_a_line));
  w.ios = first_status_;
  if (w.nam(1)(8) == '-') w.fy(1) = -w.fy(1);
}

// Its values go to position_ on. That moves on even when there was no further line, so that the search for
// the end mark always finds the last one of the series in the same place.
void RawReader::read_line() {
  w.ios = file_.read(line_edit, name_, year_, values_.range(position_, values_a_line));
  position_ += values_a_line;
}

// Makes the line read last the first one of entry i.
void RawReader::start_series(int i) {
  const int first = position_ - values_a_line;
  for (int k = 0; k < values_a_line; ++k) values_(1 + k) = values_(first + k);
  w.nam(i) = name_;
  // Deliberate: [negated-twice] a year that ended a series of negative years was negated before and is
  // negated once more.
  w.fy(i) = name_(8) == '-' ? -year_ : year_;
}

// Reads the further lines of entry i and the line that ends it. Returns: the file ended.
bool RawReader::file_ended_behind(int i) {
  position_ = first_decade_end(w.fy(i)) + 1;
  for (int line = 1; line <= most_further_lines; ++line) {
    read_line();
    if (w.ios == status::end_of_file) return true;
    // Deliberate: [blank-name] it ends the file without a message, even if the rest of its line is bad.
    const bool broken_off = status::of_system(w.ios);
    if (name_.blank() && !broken_off) return true;
    told_or_end(w, w.ios, "Read2", file_name_);
    if (broken_off) return true;
    if (!continues(i)) return false;
  }
  // Deliberate: [silent-limits] a series too long is split; its last line starts the next one.
  return false;
}

// Whether the line read last goes on with entry i.
bool RawReader::continues(int i) {
  Name& name = w.nam(i);
  if (name_ != name) {
    // Years of four digits have come to three, whose minus sign stands in the year's own columns.
    const bool leaves_minus_behind = name(8) == '-' && name.view().substr(0, 7) == name_.view().substr(0, 7);
    if (!leaves_minus_behind) return false;
    name(8) = name_(8);
  }
  if (name(8) == '-') year_ = -year_;
  return year_ == w.fy(i) + position_ - values_a_line - 1;
}

// Deliberate: [ring-of-999] a ring of 999 in the last line of a series without a mark is taken for it.
// Where the end mark stands in the line before the one read last; 0 if there is none.
int RawReader::find_end_mark() const {
  const int last = position_ - values_a_line - 1;
  for (int p = last; p > last - values_a_line && p >= 1; --p) {
    if (values_(p) == end_of_hundredths || values_(p) == end_of_thousandths) return p;
  }
  return 0;
}

// Puts the values of entry i into the pool, mm. Returns: it had room for them.
bool RawReader::store_series(int i) {
  const int mark = find_end_mark();
  // Deliberate: [no-end-mark] without a mark the whole line is lost and the value before it too.
  const int end = mark > 0 ? mark : std::max(position_ - 2 * values_a_line - 1, 1);
  if (!take_places(w, i, end - 1)) return false;
  w.ly(i) = w.fy(i) + w.yr(i) - 1;
  // Deliberate: [no-end-mark] hundredths, too.
  const double unit = mark > 0 && values_(mark) == end_of_thousandths ? 1000.0 : 100.0;
  for (int k = 1; k <= w.yr(i); ++k) w.x(w.ad(i) + k - 1) = values_(k) / unit;
  return true;
}

void RawReader::read_series() {
  read_first_line();
  // Deliberate: [silent-limits] what lies behind is not read, and nobody is told.
  for (int i = 1; i <= max_series; ++i) {
    const bool ended = file_ended_behind(i);
    if (!store_series(i)) return;
    w.nc = i;
    if (ended) return;
    start_series(i + 1);
  }
}

}  // namespace

void read_raw(Workspace& w) {
  const FileName name = w.cnam(w.cf);
  TextInput file;
  told_or_end(w, file.open(w.files, name.view()), "Open", name.view());
  for (int k = 1; k <= w.rfhead(w.cf); ++k) {
    told_or_end(w, file.read(header_edit), "Read Headers ", name.view());
  }
  start_store(w);
  RawReader reader(w, file, name.view());
  reader.read_series();
  close_told(w, file, name.view(), reader.first_status());
  finish_cores(w);
}

}  // namespace vorn
