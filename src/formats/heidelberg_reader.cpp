#include <algorithm>
#include <string>

#include "formats/core_loading.h"
#include "formats/file_status.h"
#include "formats/heidelberg.h"
#include "formats/heidelberg_layout.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

using namespace heidelberg;

constexpr int most_header_lines = 200;
constexpr std::int32_t pending = -999'999;           // a year to be completed when the length is known
constexpr double least_mean_of_thousandths = 300.0;  // of a series without a unit

using Line = Text<32>;

// Reads one record after the other; entry i is the one at hand.
class HeidelbergReader {
 public:
  HeidelbergReader(Workspace& workspace, TextInput& file, std::string_view file_name)
      : w(workspace), file_(file), file_name_(file_name) {}

  void read_records();

 private:
  bool next_line(std::string_view label);
  bool at(const KeyedLine& keyed) const { return keyed.begins(line_.view()); }
  void start_record(int i);
  bool read_header(int i, bool& has_data);
  void read_key(int i);
  void read_last_year(int i);
  void read_first_year(int i);
  void read_length(int i);
  void read_unit();
  std::int32_t value(const KeyedLine& keyed, const EditFormat& edit, std::int32_t before);
  void read_values(int i);
  void scale(int i);

  Workspace& w;
  TextInput& file_;
  std::string_view file_name_;
  Line line_;
  bool length_seen_ = false;
  double unit_ = 0;  // values a millimetre; 0 where the record does not say
};

// Reads the next line; its failure is told, the end of the file too. Returns: there may be more.
bool HeidelbergReader::next_line(std::string_view label) {
  const int answer = file_.read(line_edit, line_);
  told_or_end(w, answer, label, file_name_);
  return answer != status::end_of_file;
}

void HeidelbergReader::start_record(int i) {
  w.nam(i) = Name();
  w.fy(i) = w.ly(i) = w.yr(i) = 0;
  length_seen_ = false;
  unit_ = 0;
}

// The number that the line carries; what was there before when it is none, which is told.
std::int32_t HeidelbergReader::value(const KeyedLine& keyed, const EditFormat& edit, std::int32_t before) {
  std::int32_t number = before;
  const int answer = edit_read(keyed.columns(line_.view()), edit, number);
  told_or_end(w, answer, "Read ", line_.view());
  return number;
}

void HeidelbergReader::read_last_year(int i) {
  w.ly(i) = value(last_year_key, year_edit, w.ly(i));
  // Deliberate: [later-date] without a length the year of an earlier line is forgotten; of two dates the
  // later line counts.
  w.fy(i) = length_seen_ ? w.ly(i) - w.yr(i) + 1 : pending;
}

void HeidelbergReader::read_first_year(int i) {
  w.fy(i) = value(first_year_key, year_edit, w.fy(i));
  w.ly(i) = length_seen_ ? w.fy(i) + w.yr(i) - 1 : pending;
}

void HeidelbergReader::read_length(int i) {
  // Deliberate: [negative-length] none, so that no series before it is overwritten.
  w.yr(i) = std::max(value(length_key, length_edit, w.yr(i)), 0);
  length_seen_ = true;
  // Deliberate: [pending-year] only a pending year follows. The years of a record without dates stay 0, both
  // of them.
  if (w.ly(i) == pending) w.ly(i) = w.fy(i) + w.yr(i) - 1;
  if (w.fy(i) == pending) w.fy(i) = w.ly(i) - w.yr(i) + 1;
}

void HeidelbergReader::read_unit() {
  const std::string_view unit = unit_key.columns(line_.view());
  if (unit == "1000") unit_ = 1000.0;
  if (unit == "100 ") unit_ = 100.0;
}

void HeidelbergReader::read_key(int i) {
  if (at(last_year_key)) read_last_year(i);
  if (at(first_year_key)) read_first_year(i);
  if (at(name_key)) w.nam(i) = Name(name_key.columns(line_.view()));
  if (at(length_key)) read_length(i);
  if (at(unit_key)) read_unit();
}

// Reads the header of entry i up to its DATA line. Returns: the file did not end in it.
bool HeidelbergReader::read_header(int i, bool& has_data) {
  has_data = false;
  // Deliberate: [long-header] behind the last of them one more line is read and lost, and the values too.
  for (int examined = 1; examined <= most_header_lines; ++examined) {
    has_data = at(data_key);
    if (has_data) return true;
    read_key(i);
    if (!next_line("Read3 ")) return false;
  }
  return true;
}

// What the file does not hold stays 0.
void HeidelbergReader::read_values(int i) {
  told_or_end(w, file_.read(values_edit, w.widths(i)), "Read2 ", file_name_);
}

// Turns the values of entry i into mm.
void HeidelbergReader::scale(int i) {
  const auto values = w.widths(i);
  if (unit_ == 0) {
    double sum = 0;
    // Deliberate: [unit-by-mean] missing rings take part with their negative values.
    for (const double value : values) sum += value;
    unit_ = sum / static_cast<double>(values.size()) > least_mean_of_thousandths ? 1000.0 : 100.0;
  }
  for (double& value : values) value /= unit_;
}

void HeidelbergReader::read_records() {
  if (!next_line("Read1 ")) return;
  // Deliberate: [silent-limits] what lies behind is not read, and nobody is told.
  for (int i = 1; i <= max_heidelberg_records; ++i) {
    start_record(i);
    bool has_data = false;
    if (!read_header(i, has_data)) return;
    if (!take_places(w, i, w.yr(i))) return;
    std::ranges::fill(w.widths(i), 0.0);
    if (has_data) read_values(i);
    scale(i);
    w.nc = i;
    w.ios = file_.read(line_edit, line_);
    if (w.ios == status::end_of_file) return;
    told_or_end(w, w.ios, "Read4", file_name_);
  }
}

}  // namespace

void read_open(Workspace& w, TextInput& file, std::string_view name) {
  w.fileok = file_exists(w.files, name);
  if (w.fileok) {
    told_or_end(w, file.open(w.files, name), "Open", name);
  } else if (!trimmed(name).ends_with("pth")) {
    // Deliberate: [pth] one that ends so is passed over in silence.
    out_err(w, std::string(trimmed(name)) + " - Does not exist");
  }
}

void read_heidel(Workspace& w) {
  const FileName name = w.cnam(w.cf);
  TextInput file;
  read_open(w, file, name.view());
  start_store(w);
  HeidelbergReader(w, file, name.view()).read_records();
  close_told(w, file, name.view());
  finish_cores(w);
}

}  // namespace vorn
