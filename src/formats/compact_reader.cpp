#include <algorithm>
#include <cmath>

#include "formats/compact.h"
#include "formats/compact_layout.h"
#include "formats/core_loading.h"
#include "formats/file_status.h"

namespace vorn {
namespace {

// Reads one series after the other; entry i is the one at hand.
class CompactReader {
 public:
  CompactReader(Workspace& workspace, TextInput& file, std::string_view file_name)
      : w(workspace), file_(file), file_name_(file_name) {}

  void read_series();

 private:
  bool read_header(int i);
  bool read_values(int i);
  void scale(int i);

  Workspace& w;
  TextInput& file_;
  std::string_view file_name_;
  // Of the header read last. A field that is no number leaves what the header before had there.
  std::int32_t exponent_ = 0;
  Text<8> format_;
};

// Returns: there is a further series.
bool CompactReader::read_header(int i) {
  w.nam(i) = Name();
  w.fy(i) = w.yr(i) = 0;
  const int answer = file_.read(compact::header_edit, w.yr(i), w.fy(i), w.nam(i), exponent_, format_);
  w.ios = answer;
  if (answer == status::end_of_file) return false;
  // Deliberate: [name-not-reached] a header that cannot be read is told; where its name was not reached, that
  // ends the file.
  told_or_end(w, answer, "Read c1", file_name_);
  // Deliberate: [negative-count] a series cannot be shorter than none.
  w.yr(i) = std::max(w.yr(i), 0);
  return !w.nam(i).blank();
}

// Reads the values of entry i; what the file does not hold stays 0. Returns: the file did not end in them.
bool CompactReader::read_values(int i) {
  std::ranges::fill(w.widths(i), 0.0);
  const int answer = file_.read(EditFormat(format_.view()), w.widths(i));
  w.ios = answer;
  if (answer == status::end_of_file) return false;
  told_or_end(w, answer, "Read c2", file_name_);
  return true;
}

// Turns the values of entry i into mm.
void CompactReader::scale(int i) {
  // Deliberate: [unit-by-format] the fifth character of "(19F4.0)" decides.
  const double by_format = format_(5) == '4' ? 1000.0 : 100.0;
  const double divisor = exponent_ != 0 ? std::pow(10.0, -exponent_) : by_format;
  for (double& value : w.widths(i)) value /= divisor;
}

void CompactReader::read_series() {
  // Deliberate: [silent-limits] what lies behind is not read, and nobody is told.
  for (int i = 1; i <= max_series; ++i) {
    if (!read_header(i)) return;
    if (!take_places(w, i, w.yr(i))) return;
    w.ly(i) = w.fy(i) + w.yr(i) - 1;
    const bool goes_on = read_values(i);
    scale(i);
    w.nc = i;
    if (!goes_on) return;
  }
}

}  // namespace

void read_compact(Workspace& w) {
  const FileName name = w.cnam(w.cf);
  start_store(w);
  TextInput file;
  told_or_end(w, file.open(w.files, name.view()), "open", name.view());
  CompactReader(w, file, name.view()).read_series();
  close_told(w, file, name.view());
  finish_cores(w);
}

}  // namespace vorn
