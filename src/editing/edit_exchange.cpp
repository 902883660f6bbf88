// The editor's exchange file: Edit.raw, in the Tucson raw layout.
#include <algorithm>
#include <array>
#include <string>

#include "editing/before_edits.h"
#include "editing/raw_editor.h"
#include "formats/tucson_raw_layout.h"
#include "records/text_file.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

using namespace tucson_raw;

constexpr std::string_view exchange_name = "Edit.raw";
constexpr int most_further_lines = 1'203;  // of one series, behind its first

const EditFormat first_line_edit{"(A8,I4,10F6.0)"};
const EditFormat further_line_edit{"(A8,I4,10I6)"};

// One series as Edit.raw has it: its values at positions 1 on of the reader, up to the end mark.
struct ExchangedSeries {
  Name name;
  std::int32_t first_year = 0;
  int length = 0;  // 0 when there is no ring before an end mark
};

class ExchangeReader {
 public:
  explicit ExchangeReader(Workspace& workspace) : w(workspace) {}

  bool begin();
  ExchangedSeries next_series();
  std::int32_t value(int k) const { return values_(k); }
  bool ended() const { return ended_; }
  void close() { told_or_end(w, file_.close(), "Close", exchange_name); }

 private:
  bool read_line(int position);
  int length_before_mark(int last) const;

  Workspace& w;
  TextInput file_;
  bool ended_ = false;
  // The line read last, and the values of the series at hand in year order. A field that is no number leaves
  // what was there before.
  Name name_;
  std::int32_t year_ = 0;
  Table<std::int32_t> values_{values_a_line * (most_further_lines + 2)};
};

std::int32_t whole_number(double value) {
  return value >= -999'999 && value <= 999'999 ? static_cast<std::int32_t>(value) : 0;
}

// Opens the file and reads its first line. Returns: there was one.
bool ExchangeReader::begin() {
  told_or_end(w, file_.open(w.files, exchange_name), "Open", exchange_name);
  std::array<double, values_a_line> values{};
  const Status answer = file_.read(first_line_edit, name_, year_, std::span<double>(values));
  ended_ = answer == status::end_of_file;
  // Deliberate: [bad-first-line] told, and read on.
  told_or_end(w, answer, "Read", exchange_name);
  for (int k = 1; k <= values_a_line; ++k) {
    values_(k) = whole_number(values[static_cast<std::size_t>(k - 1)]);
  }
  return !ended_;
}

// Reads a further line, its values to `position` on. Returns: there was one. The end of the file is not told.
bool ExchangeReader::read_line(int position) {
  w.ios = file_.read(further_line_edit, name_, year_, values_.range(position, values_a_line));
  ended_ = w.ios == status::end_of_file;
  if (!ended_) told_or_end(w, w.ios, "Read2", exchange_name);
  return !ended_;
}

// Reads on from the line that ended the series before to the one that ends this. Deliberate: [first-values]
// that line gives name and year, its values do not come to the start; there stand the first series' still.
ExchangedSeries ExchangeReader::next_series() {
  ExchangedSeries series{name_, name_(8) == '-' ? -year_ : year_, 0};
  int next = first_decade_end(series.first_year) + 1;
  for (int line = 1; line <= most_further_lines; ++line) {
    if (!read_line(next) || name_ != series.name) break;
    next += values_a_line;
  }
  series.length = length_before_mark(next - 1);
  return series;
}

// Searches the line of the series whose last place is `last` from its end. Deliberate: [no-999] 999 ends no
// series here.
int ExchangeReader::length_before_mark(int last) const {
  for (int k = last; k > last - values_a_line && k >= 1; --k) {
    if (values_(k) == end_of_thousandths) return k - 1;
  }
  return 0;
}

// Puts a series read back in the place of entry e. Deliberate: [stays-negative] a missing ring keeps its
// negative width.
void store(Workspace& w, const ExchangeReader& reader, const ExchangedSeries& series, int e) {
  resize_entry(w, e, series.length);
  w.fy(e) = series.first_year;
  w.ly(e) = w.fy(e) + w.yr(e) - 1;
  for (int k = 1; k <= series.length; ++k) {
    w.x(w.ad(e) + k - 1) = reader.value(k) / 1000.0;
    w.xok(w.ad(e) + k - 1) = reader.value(k) >= 0;
  }
  w.derived_stale = true;
}

// Whether what was read may take the place of entry e. Deliberate: [not-ours] what is cut short or belongs to
// another core must not.
bool acceptable(Workspace& w, const ExchangedSeries& series, int e) {
  if (series.name != w.nam(e)) {
    out_err(w, std::string(w.nam(e).trimmed()) + " is not in Edit.raw");
  } else if (series.length == 0) {
    out_err(w, std::string(w.nam(e).trimmed()) + " has no end in Edit.raw");
  } else if (series.length > max_years || w.ad(w.nd) + w.yr(w.nd) - 1 + series.length - w.yr(e) > max_pool) {
    out_err(w, "Would be too many rings");
  } else {
    return true;
  }
  return false;
}

}  // namespace

// Deliberate: [empty-exchange] the file is left empty, so that reading it back, as "Quit" and "Reset" do,
// undoes nothing. Carefully they do not read it.
void edit_write(Workspace& w) {
  TextOutput file;
  told_or_end(w, file.create(w.files, exchange_name), "Open", exchange_name);
  told_or_end(w, file.close(), "Close", exchange_name);
}

void edit_read(Workspace& w) {
  ExchangeReader reader(w);
  const bool begun = reader.begin();
  for (int m = 1; begun && m <= w.chs; ++m) {
    const int e = w.chc(m);
    const ExchangedSeries series = reader.ended() ? ExchangedSeries{} : reader.next_series();
    if (!acceptable(w, series, e)) break;
    store(w, reader, series, e);
  }
  reader.close();
}

}  // namespace vorn
