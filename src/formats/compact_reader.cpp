#include <algorithm>
#include <cmath>

#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "formats/core_loading.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

// Of a header that is not read any more.
const EditFormat name_edit("(21X,A8)");

// Reads one series after the other; entry i is the one at hand.
class CompactReader {
 public:
  CompactReader(SeriesStore& store, TextInput& file, const Reading& reading, ReadDecisions& decided)
      : w(store), file_(file), reading_(reading), decided_(decided) {}

  void read_series();

 private:
  bool read_header(int i);
  bool read_values(int i);
  void scale(int i);
  void keep_decisions(int i, std::int64_t first_line);
  void look_behind_the_limit();

  SeriesStore& w;
  TextInput& file_;
  const Reading& reading_;
  ReadDecisions& decided_;
  // Of the header read last. A field that is no number leaves what the header before had there.
  std::int32_t exponent_ = 0;
  Text<8> format_;
  double unit_ = 0;  // values a millimetre, of the series at hand
};

// Returns: there is a further series.
bool CompactReader::read_header(int i) {
  w.nam(i) = Name();
  w.fy(i) = w.yr(i) = 0;
  const Status answer = file_.read(compact::header_edit, w.yr(i), w.fy(i), w.nam(i), exponent_, format_);
  if (answer == status::end_of_file) return false;
  // Deliberate: [name-not-reached] a header that cannot be read is told; where its name was not reached, that
  // ends the file.
  told_read(reading_, file_, answer, "Read c1", w.nam(i));
  // Deliberate: [negative-count] a series cannot be shorter than none.
  w.yr(i) = std::max(w.yr(i), 0);
  if (w.nam(i).blank()) decided_.leave_out(file_.line(), LinesNotTaken::to_the_end, NotTaken::behind_end);
  return !w.nam(i).blank();
}

// Reads the values of entry i; what the file does not hold stays 0. Returns: the file did not end in them.
bool CompactReader::read_values(int i) {
  std::ranges::fill(w.widths(i), 0.0);
  const Status answer = file_.read(EditFormat(format_.view()), w.widths(i));
  if (answer == status::end_of_file) return false;
  told_read(reading_, file_, answer, "Read c2", w.nam(i));
  return true;
}

// Turns the values of entry i into mm.
void CompactReader::scale(int i) {
  // Deliberate: [unit-by-format] the fifth character of "(19F4.0)" decides.
  const double by_format = format_(5) == '4' ? 1000.0 : 100.0;
  unit_ = exponent_ != 0 ? std::pow(10.0, -exponent_) : by_format;
  for (double& value : w.widths(i)) value /= unit_;
}

void CompactReader::keep_decisions(int i, std::int64_t first_line) {
  SeriesRead series{w.nam(i), first_line, file_.line(), w.yr(i), unit_};
  series.unit_by = exponent_ != 0 ? UnitBy::exponent : UnitBy::edit_format;
  decided_.series.push_back(series);
}

// Whether there would be another series.
void CompactReader::look_behind_the_limit() {
  Name name;
  if (file_.read(name_edit, name) == status::ok && !name.blank())
    decided_.leave_out(file_.line(), LinesNotTaken::to_the_end, NotTaken::series_limit);
}

void CompactReader::read_series() {
  // Deliberate: [silent-limits] what lies behind is not read, and no message tells it.
  for (int i = 1; i <= max_series; ++i) {
    if (!read_header(i)) return;
    const std::int64_t first_line = file_.line();
    if (!take_places(w, i, w.yr(i), reading_, first_line))
      return decided_.leave_out(first_line, LinesNotTaken::to_the_end, NotTaken::no_room);
    w.ly(i) = w.fy(i) + w.yr(i) - 1;
    const bool goes_on = read_values(i);
    scale(i);
    keep_decisions(i, first_line);
    w.nc = i;
    if (!goes_on) return;
  }
  look_behind_the_limit();
}

}  // namespace

bool is_compact(const FirstLine& line) {
  return line(72) == '(' && line(79) == ')';
}

ReadDecisions read_compact(SeriesStore& w, const Reading& reading) {
  ReadDecisions decided{Layout::compact};
  start_store(w);
  TextInput file;
  told(reading.troubles, reading.file, file.open(reading.files, reading.file), "open");
  CompactReader(w, file, reading, decided).read_series();
  decided.status = close_told(reading, file);
  decided.missing_rings = finish_cores(w);
  return decided;
}

}  // namespace vorn
