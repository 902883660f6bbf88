// The editor's exchange file: Edit.raw, in the Tucson raw layout.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "formats/file_status.h"
#include "formats/raw_editor.h"
#include "formats/tucson_raw_layout.h"
#include "records/text_file.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

constexpr std::string_view exchange_name = "Edit.raw";
constexpr int most_further_lines = 1'203;
constexpr std::int32_t end_mark = -9999;  // 999 does not end a series here, meant so

const EditFormat first_line_edit{"(A8,I4,10F6.0)"};
const EditFormat further_line_edit{"(A8,I4,10I6)"};

struct Line {
  Name name;
  std::int32_t year = 0;
  std::array<std::int32_t, 10> values{};
};

// One series as Edit.raw has it: its values at positions 1 on, up to the end mark.
struct ExchangedSeries {
  Name name;
  std::int32_t first_year = 0;
  int length = 0;  // 0 when no end mark was found
};

class ExchangeReader {
 public:
  explicit ExchangeReader(Workspace& workspace) : w(workspace), buffer_(10 * (most_further_lines + 2) + 1) {}

  // Opens the file and reads its first line; false when there is nothing to read.
  bool begin() {
    w.ios = file_.open(exchange_name);
    if (io_err(w, "Open", exchange_name)) return false;
    std::array<double, 10> values{};
    w.ios = file_.read(first_line_edit, line_.name, line_.year, std::span<double>(values));
    const bool read = w.ios == status::ok;
    if (io_err(w, "Read", exchange_name) || !read) return false;
    for (std::size_t k = 0; k < values.size(); ++k) buffer_[k + 1] = whole_number(values[k]);
    return true;
  }

  // Reads on to the line that ends the series of the current line.
  ExchangedSeries next_series() {
    ExchangedSeries series{line_.name, line_.name(8) == '-' ? -line_.year : line_.year, 0};
    int p = first_decade_end(series.first_year) + 1;
    int lines = 0;
    for (;; ++lines) {
      if (lines == most_further_lines) break;
      w.ios = file_.read(further_line_edit, line_.name, line_.year, std::span<std::int32_t>(line_.values));
      if (w.ios == status::end_of_file) break;
      told_or_end(w, w.ios, "Read2", exchange_name);
      if (line_.name != series.name) break;
      for (std::size_t k = 0; k < line_.values.size(); ++k)
        buffer_[static_cast<std::size_t>(p) + k] = line_.values[k];
      p += 10;
    }
    series.length = length_before_mark(p);
    return series;
  }

  std::int32_t value(int k) const { return buffer_[static_cast<std::size_t>(k)]; }
  int close() { return file_.close(); }

 private:
  static std::int32_t whole_number(double value) {
    return value >= -999'999 && value <= 999'999 ? static_cast<std::int32_t>(value) : 0;
  }

  // Searches the last line, the one before position p, from its end.
  int length_before_mark(int p) const {
    for (int k = p - 1; k >= std::max(p - 10, 1); --k) {
      if (value(k) == end_mark) return k - 1;
    }
    return 0;
  }

  Workspace& w;
  TextInput file_;
  Line line_;
  std::vector<std::int32_t> buffer_;  // position k of the series at hand is buffer_[k]
};

// Puts a series read back in the place of entry e; what lies behind it in the pool moves by the change of
// length.
void store(Workspace& w, const ExchangeReader& reader, const ExchangedSeries& series, int e) {
  const int growth = series.length - w.yr(e);
  const int first = w.ad(e + 1), last = w.ad(w.nd + 2) + w.yr(w.nd + 2) - 1;
  w.x.move(first, last, growth);
  w.xok.move(first, last, growth);
  w.tx.move(first, last, growth);
  w.ax.move(first, last, growth);
  for (int k = e + 1; k <= w.nd + 2; ++k) w.ad(k) += growth;
  w.yr(e) = series.length;
  w.fy(e) = series.first_year;
  w.ly(e) = w.fy(e) + w.yr(e) - 1;
  for (int k = 1; k <= series.length; ++k) {
    w.x(w.ad(e) + k - 1) = reader.value(k) / 1000.0;
    w.xok(w.ad(e) + k - 1) = reader.value(k) >= 0;
  }
  w.derived_stale = true;
}

// Whether what was read may take the place of entry e. What is cut short or belongs to another core must not.
bool acceptable(Workspace& w, const ExchangedSeries& series, int e) {
  if (series.name != w.nam(e)) {
    out_err(w, std::string(w.nam(e).trimmed()) + " is not in Edit.raw");
  } else if (series.length == 0) {
    out_err(w, std::string(w.nam(e).trimmed()) + " has no end in Edit.raw");
  } else if (w.ad(w.nd) + w.yr(w.nd) - 1 + series.length - w.yr(e) > max_pool) {
    out_err(w, "Would be too many rings");
  } else {
    return true;
  }
  return false;
}

}  // namespace

void edit_write(Workspace& w) {
  TextOutput file;
  w.ios = file.create(exchange_name);
  if (io_err(w, "Open", exchange_name)) return;
  w.ios = file.close();
  io_err(w, "Close", exchange_name);
}

void edit_read(Workspace& w) {
  ExchangeReader reader(w);
  if (!reader.begin()) return;
  for (int m = 1; m <= w.chs; ++m) {
    const ExchangedSeries series = reader.next_series();
    const int e = w.chc(m);
    if (!acceptable(w, series, e)) break;
    store(w, reader, series, e);
  }
  w.ios = reader.close();
}

}  // namespace vorn
