#include <algorithm>
#include <string>

#include "formats/core_loading.h"
#include "formats/heidelberg.h"
#include "formats/heidelberg_layout.h"
#include "workspace/capacity.h"

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
  HeidelbergReader(SeriesStore& store, TextInput& file, const Reading& reading, ReadDecisions& decided)
      : w(store), file_(file), reading_(reading), decided_(decided) {}

  void read_records();

 private:
  bool next_line(std::string_view label, const Name& series = {});
  bool at(const KeyedLine& keyed) const { return keyed.begins(line_.view()); }
  void start_record(int i);
  bool read_header(int i, bool& has_data);
  void read_key(int i);
  void read_last_year(int i);
  void read_first_year(int i);
  void read_length(int i);
  void read_unit();
  std::int32_t value(int i, const KeyedLine& keyed, const EditFormat& edit, std::int32_t before);
  void read_values(int i);
  void scale(int i);
  void keep_decisions(int i, std::int64_t first_line);
  void look_behind_the_limit();

  SeriesStore& w;
  TextInput& file_;
  const Reading& reading_;
  ReadDecisions& decided_;
  Line line_;
  bool length_seen_ = false;
  double unit_ = 0;  // values a millimetre; 0 where the record does not say
  UnitBy unit_by_ = UnitBy::mean;
};

// Reads the next line; its failure is told, the end of the file too. Returns: there may be more.
bool HeidelbergReader::next_line(std::string_view label, const Name& series) {
  const Status answer = file_.read(line_edit, line_);
  told_read(reading_, file_, answer, label, series);
  return answer != status::end_of_file;
}

void HeidelbergReader::start_record(int i) {
  w.nam(i) = Name();
  w.fy(i) = w.ly(i) = w.yr(i) = 0;
  length_seen_ = false;
  unit_ = 0;
  unit_by_ = UnitBy::mean;
}

// The number that the line carries; what was there before when it is none, which is told.
std::int32_t HeidelbergReader::value(int i, const KeyedLine& keyed, const EditFormat& edit,
                                     std::int32_t before) {
  std::int32_t number = before;
  const Status answer = edit_read(keyed.columns(line_.view()), edit, number);
  if (answer != status::ok) {
    Trouble trouble{"Read ", std::string(line_.view()), answer, std::string(trimmed(reading_.file))};
    trouble.line = file_.line();
    trouble.column = keyed.first;
    trouble.series = w.nam(i).trimmed();
    reading_.troubles.tell(trouble);
  }
  return number;
}

void HeidelbergReader::read_last_year(int i) {
  w.ly(i) = value(i, last_year_key, year_edit, w.ly(i));
  // Deliberate: [later-date] without a length the year of an earlier line is forgotten; of two dates the
  // later line counts.
  w.fy(i) = length_seen_ ? w.ly(i) - w.yr(i) + 1 : pending;
}

void HeidelbergReader::read_first_year(int i) {
  w.fy(i) = value(i, first_year_key, year_edit, w.fy(i));
  w.ly(i) = length_seen_ ? w.fy(i) + w.yr(i) - 1 : pending;
}

void HeidelbergReader::read_length(int i) {
  // Deliberate: [negative-length] none, so that no series before it is overwritten.
  w.yr(i) = std::max(value(i, length_key, length_edit, w.yr(i)), 0);
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
  if (unit_ != 0) unit_by_ = UnitBy::unit_line;
}

void HeidelbergReader::read_key(int i) {
  if (at(last_year_key)) read_last_year(i);
  if (at(first_year_key)) read_first_year(i);
  if (at(name_key)) w.nam(i) = Name(name_key.columns(line_.view()));
  if (at(length_key)) read_length(i);
  if (at(unit_key)) read_unit();
  if (std::ranges::none_of(lines, [this](const KeyedLine& keyed) { return at(keyed); }))
    decided_.leave_out(file_.line(), file_.line(), NotTaken::unknown_key);
}

// Reads the header of entry i up to its DATA line. Returns: the file did not end in it.
bool HeidelbergReader::read_header(int i, bool& has_data) {
  has_data = false;
  // Deliberate: [long-header] behind the last of them one more line is read and lost, and the values too.
  for (int examined = 1; examined <= most_header_lines; ++examined) {
    has_data = at(data_key);
    if (has_data) return true;
    read_key(i);
    if (!next_line("Read3 ", w.nam(i))) return false;
  }
  decided_.leave_out(file_.line(), file_.line(), NotTaken::long_header);
  return true;
}

// What the file does not hold stays 0.
void HeidelbergReader::read_values(int i) {
  told_read(reading_, file_, file_.read(values_edit, w.widths(i)), "Read2 ", w.nam(i));
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

void HeidelbergReader::keep_decisions(int i, std::int64_t first_line) {
  SeriesRead series{w.nam(i), first_line, file_.line(), w.yr(i), unit_};
  series.unit_by = unit_by_;
  decided_.series.push_back(series);
}

// Whether there would be another record; `line_` is the one behind the last that was read.
void HeidelbergReader::look_behind_the_limit() {
  for (int examined = 1; examined <= most_header_lines; ++examined) {
    if (at(header_key) || at(data_key))
      return decided_.leave_out(file_.line(), LinesNotTaken::to_the_end, NotTaken::series_limit);
    if (file_.read(line_edit, line_) != status::ok) return;
  }
}

void HeidelbergReader::read_records() {
  if (!next_line("Read1 ")) return;
  // Deliberate: [silent-limits] what lies behind is not read, and no message tells it.
  for (int i = 1; i <= max_heidelberg_records; ++i) {
    start_record(i);
    const std::int64_t first_line = file_.line();
    bool has_data = false;
    if (!read_header(i, has_data)) return decided_.leave_out(first_line, file_.line(), NotTaken::cut_header);
    if (!take_places(w, i, w.yr(i), reading_, file_.line()))
      return decided_.leave_out(first_line, LinesNotTaken::to_the_end, NotTaken::no_room);
    std::ranges::fill(w.widths(i), 0.0);
    if (has_data) read_values(i);
    scale(i);
    keep_decisions(i, first_line);
    w.nc = i;
    const Status answer = file_.read(line_edit, line_);
    if (answer == status::end_of_file) return;
    told_read(reading_, file_, answer, "Read4");
  }
  look_behind_the_limit();
}

}  // namespace

bool is_heidelberg(const FirstLine& line) {
  return header_key.begins(line.view());
}

void read_open(TextInput& input, const Reading& reading) {
  if (file_exists(reading.files, reading.file)) {
    told(reading.troubles, reading.file, input.open(reading.files, reading.file), "Open");
  } else if (!trimmed(reading.file).ends_with("pth")) {
    // Deliberate: [pth] one that ends so is passed over in silence.
    tell_words(reading, std::string(trimmed(reading.file)) + " - Does not exist");
  }
}

ReadDecisions read_heidel(SeriesStore& w, const Reading& reading) {
  ReadDecisions decided{Layout::heidelberg};
  TextInput file;
  read_open(file, reading);
  start_store(w);
  HeidelbergReader(w, file, reading, decided).read_records();
  decided.status = close_told(reading, file);
  decided.missing_rings = finish_cores(w);
  return decided;
}

}  // namespace vorn
