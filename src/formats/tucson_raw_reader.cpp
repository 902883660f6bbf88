#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "formats/core_loading.h"
#include "formats/tucson_raw.h"
#include "formats/tucson_raw_layout.h"
#include "workspace/capacity.h"
#include "workspace/table.h"

namespace vorn {
namespace {

using namespace tucson_raw;

constexpr int most_further_lines = 1'003;  // of one series, behind its first
constexpr int value_places = (most_further_lines + 1) * values_a_line;

// Of a line that is recognised; one of 80 columns may be indices.
constexpr std::size_t shortest_decade = 18;  // name, year and one value
constexpr std::size_t full_decade = 72, year_width = 4, value_width = 6, first_index_length = 80;

const EditFormat header_edit("(A8)");
const EditFormat year_edit("(I4)");
const EditFormat digit_edit("(I1)");
const EditFormat recognition_edit("(8X,I4,10I6)");

// What ended the lines of a series.
enum class Ending { end_of_file, blank_name, broken_off, next_series, split };

bool ends_the_file(Ending ending) {
  return ending != Ending::next_series && ending != Ending::split;
}

// What the next field has of `rest`, which loses it. A comma ends a field.
std::string_view take_field(std::string_view& rest, std::size_t width) {
  const std::string_view columns = rest.substr(0, width), field = columns.substr(0, columns.find(','));
  rest.remove_prefix(field.size() + (field.size() < columns.size() ? 1 : 0));
  return field;
}

// How many values stand on a line, up to the last field that is not left empty.
int values_on(std::string_view line) {
  line.remove_prefix(std::min(line.size(), static_cast<std::size_t>(fields[0].last)));
  if (line.find(',') == std::string_view::npos) {
    // Each field is as wide as it may be.
    const std::string_view columns = line.substr(0, year_width + values_a_line * value_width);
    const std::size_t end = columns.find_last_not_of(blank_characters) + 1;
    return static_cast<int>((end - std::min(end, year_width) + value_width - 1) / value_width);
  }
  take_field(line, year_width);
  int count = 0;
  for (int k = 1; k <= values_a_line && !line.empty(); ++k) {
    if (!is_blank_line(take_field(line, value_width))) count = k;
  }
  return count;
}

class RawReader {
 public:
  RawReader(SeriesStore& store, TextInput& file, const Reading& reading, ReadDecisions& decided)
      : w(store), file_(file), reading_(reading), decided_(decided) {}

  void read_headers();
  void read_series();
  // Of the first line, which is not told.
  Status first_status() const { return first_status_; }

 private:
  // Where a line stands in the file, and how many of its values are there.
  struct Place {
    std::int64_t line = 0;
    int filled = 0;
  };

  bool does(Mend mend) const { return reading_.careful.has(mend); }
  void read_first_line();
  Status read_line();
  Status read_line_that_counts(int i);
  bool has_to_be_passed_over(int i, Status answer);
  Place place(Status answer) const;
  void start_series(int i);
  Ending read_further_lines(int i);
  std::int32_t next_year(int i) const { return w.fy(i) + position_ - values_a_line - 1; }
  bool continues(int i);
  int last_before() const { return position_ - values_a_line - 1; }
  int behind_what_is_there() const;
  int find_end_mark() const;
  int end_of_unmarked() const;
  bool store_series(int i, std::int64_t first_line, Ending ending);
  void give_unit_to_stretches_before(int i);

  SeriesStore& w;
  TextInput& file_;
  const Reading& reading_;
  ReadDecisions& decided_;
  // The line read last. Deliberate: [older-values] a field that is no number leaves what the line before had
  // there.
  Name name_;
  std::int32_t year_ = 0;
  Table<std::int32_t> values_{value_places};  // of the series at hand, in year order
  int position_ = 1;                          // in values_, behind those of the line read last
  Place last_, before_;                       // of that line and the one before, of those that count
  Status first_status_ = status::ok;
};

void RawReader::read_headers() {
  for (int k = 1; k <= reading_.header_lines; ++k) {
    told_read(reading_, file_, file_.read(header_edit), "Read Headers ");
    decided_.leave_out(file_.line(), file_.line(), NotTaken::header);
  }
}

// Deliberate: [first-line-untold] a first line that cannot be read is not told; what was read of it is kept.
void RawReader::read_first_line() {
  w.nam(1) = Name();
  w.fy(1) = 0;
  first_status_ = file_.read(line_edit, w.nam(1), w.fy(1), values_.range(1, values_a_line));
  if (w.nam(1)(8) == '-') w.fy(1) = -w.fy(1);
  last_ = place(first_status_);
}

// Its values go to position_ on. That moves on even when there was no further line, so that the search for
// the end mark always finds the last one of the series in the same place.
Status RawReader::read_line() {
  const Status answer = file_.read(line_edit, name_, year_, values_.range(position_, values_a_line));
  position_ += values_a_line;
  return answer;
}

// Where the line read last stands. From a field that could not be read on it holds older values.
RawReader::Place RawReader::place(Status answer) const {
  if (answer == status::ok) return {file_.line(), values_on(file_.record())};
  const auto good = static_cast<std::size_t>(std::max(file_.bad_column(), 1)) - 1;
  return {file_.line(), values_on(file_.record().substr(0, good))};
}

// The next line that is not passed over. At the end of the file the last one is the one before.
Status RawReader::read_line_that_counts(int i) {
  before_ = last_;
  Status answer = read_line();
  while (does(Mend::blank_line) && has_to_be_passed_over(i, answer)) {
    position_ -= values_a_line;
    answer = read_line();
  }
  last_ = place(answer);
  return answer;
}

// Whether the line read last is one of blanks, or has no name and does not go on with entry i; where it does,
// it gets that name.
bool RawReader::has_to_be_passed_over(int i, Status answer) {
  if (answer == status::end_of_file || status::of_system(answer)) return false;
  if (is_blank_line(file_.record())) return true;
  if (!name_.blank()) return false;
  const std::int32_t year = w.nam(i)(8) == '-' ? -year_ : year_;
  const bool goes_on = answer == status::ok && year == next_year(i) && find_end_mark() == 0;
  if (goes_on) name_ = w.nam(i);
  if (!goes_on) decided_.leave_out(file_.line(), file_.line(), NotTaken::no_name);
  return !goes_on;
}

// Makes the line read last the first one of entry i.
void RawReader::start_series(int i) {
  const int first = position_ - values_a_line;
  for (int k = 0; k < values_a_line; ++k) values_(1 + k) = values_(first + k);
  w.nam(i) = name_;
  w.fy(i) = name_(8) == '-' ? -year_ : year_;
}

// Reads the further lines of entry i and the line that ends it.
Ending RawReader::read_further_lines(int i) {
  position_ = first_decade_end(w.fy(i)) + 1;
  for (int line = 1; line <= most_further_lines; ++line) {
    const Status answer = read_line_that_counts(i);
    if (answer == status::end_of_file) return Ending::end_of_file;
    // Deliberate: [blank-name] it ends the file without a message, even if the rest of its line is bad.
    const bool broken_off = status::of_system(answer);
    if (name_.blank() && !broken_off) return Ending::blank_name;
    told_read(reading_, file_, answer, "Read2", w.nam(i));
    if (broken_off) return Ending::broken_off;
    if (!continues(i)) return Ending::next_series;
  }
  // Deliberate: [silent-limits] a series too long is split; its last line starts the next one.
  return Ending::split;
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
  const std::int32_t year = name(8) == '-' ? -year_ : year_;
  // Deliberate: [negated-twice] a year that ends a series of negative years is negated once more where it
  // begins the next one, but carefully.
  if (!does(Mend::early_years)) year_ = year;
  return year == next_year(i);
}

// The place in values_ behind all that stands in the line before the one read last.
int RawReader::behind_what_is_there() const {
  const int last = last_before(), first = std::max(last - values_a_line + 1, 1);
  return std::min(first + before_.filled, last + 1);
}

// Where the end mark stands in the line before the one read last; 0 if there is none.
// Deliberate: [ring-of-999] a ring of 999 in the last line of a series without a mark is taken for it.
int RawReader::find_end_mark() const {
  const int last = last_before(), behind = behind_what_is_there();
  bool is_ring = false;  // widths stand behind it
  for (int p = last; p > last - values_a_line && p >= 1; --p) {
    if (values_(p) == end_of_thousandths) return p;
    if (values_(p) == end_of_hundredths && !is_ring) return p;
    is_ring = is_ring || (does(Mend::end_mark) && p < behind && values_(p) != 0);
  }
  return 0;
}

// Where the mark of a series without one would stand. Deliberate: [no-end-mark] the whole line before the one
// read last is lost and the value before it too.
int RawReader::end_of_unmarked() const {
  return does(Mend::end_mark) ? behind_what_is_there() : std::max(last_before() - values_a_line, 1);
}

// Puts the values of entry i into the pool, mm. Returns: it had room for them.
bool RawReader::store_series(int i, std::int64_t first_line, Ending ending) {
  const int mark = find_end_mark();
  const int end = mark > 0 ? mark : end_of_unmarked();
  if (!take_places(w, i, end - 1, reading_, file_.line())) {
    decided_.leave_out(first_line, LinesNotTaken::to_the_end, NotTaken::no_room);
    return false;
  }
  w.ly(i) = w.fy(i) + w.yr(i) - 1;
  // Deliberate: [no-end-mark] hundredths, too.
  const double unit = mark > 0 && values_(mark) == end_of_thousandths ? 1000.0 : 100.0;
  for (int k = 1; k <= w.yr(i); ++k) w.x(w.ad(i) + k - 1) = values_(k) / unit;

  SeriesRead series{w.nam(i), first_line, before_.line, w.yr(i), unit};
  series.end_mark = mark > 0;
  if (mark > 0) series.unit_by = unit == 1000.0 ? UnitBy::thousandths_mark : UnitBy::hundredths_mark;
  series.split = ending == Ending::split;
  if (mark == 0 && !does(Mend::end_mark))
    decided_.leave_out(series.last_line, series.last_line, NotTaken::no_end_mark);
  decided_.series.push_back(series);
  if (mark > 0 && does(Mend::end_mark)) give_unit_to_stretches_before(i);
  return true;
}

// Stretches of one core have one mark as a rule, behind the last of them.
void RawReader::give_unit_to_stretches_before(int i) {
  const SeriesRead& marked = decided_.series.back();
  const auto is_same = [](const Name& a, const Name& b) {
    return a.view().substr(0, 7) == b.view().substr(0, 7) && (a(8) == b(8) || a(8) == '-');
  };
  for (int k = i - 1; k >= 1; --k) {
    SeriesRead& before = decided_.series[static_cast<std::size_t>(k) - 1];
    if (before.end_mark || !is_same(before.name, marked.name)) return;
    for (double& width : w.widths(k)) width = std::round(width * before.unit) / marked.unit;
    before.unit = marked.unit;
    before.unit_by = UnitBy::next_stretch;
  }
}

void RawReader::read_series() {
  read_first_line();
  for (int i = 1;; ++i) {
    // The first line of a series was read before; of a split one it is the last of the part before, too.
    const std::int64_t first_line = last_.line;
    const Ending ending = read_further_lines(i);
    if (!store_series(i, first_line, ending)) return;
    w.nc = i;
    if (ends_the_file(ending)) {
      if (ending == Ending::blank_name)
        decided_.leave_out(file_.line(), LinesNotTaken::to_the_end, NotTaken::behind_end);
      return;
    }
    // Deliberate: [silent-limits] what lies behind is not read, and no message tells it.
    if (i == max_series)
      return decided_.leave_out(file_.line(), LinesNotTaken::to_the_end, NotTaken::series_limit);
    start_series(i + 1);
  }
}

// Years of the first decade before the one that the line begins with.
bool decade_offset(const FirstLine& line, std::int32_t& offset) {
  std::int32_t year = 0;
  if (edit_read(line.view().substr(8, 4), year_edit, year) != status::ok) return false;
  if (edit_read(line.view().substr(11, 1), digit_edit, offset) != status::ok) return false;
  // Years before 0 run towards 0: the first line holds the other part of its decade.
  const bool backwards = year < 0 || (year > 999 && line(8) == '-');
  if (offset != 0 && backwards) offset = 10 - offset;
  return true;
}

}  // namespace

bool starts_raw_series(const FirstLine& line) {
  const std::size_t length = line.trimmed().size();
  // Deliberate: [length-decides] the length alone tells widths from indices.
  if (length < shortest_decade || length >= first_index_length) return false;
  std::int32_t offset = 0, year = 0;
  if (!decade_offset(line, offset)) return false;
  if (length != full_decade - value_width * static_cast<std::size_t>(offset)) return false;
  std::array<std::int32_t, values_a_line> values{};
  return edit_read(line.view(), recognition_edit, year, std::span(values)) == status::ok;
}

ReadDecisions read_raw(SeriesStore& w, const Reading& reading) {
  ReadDecisions decided{Layout::tucson_raw, reading.header_lines};
  decided.careful = reading.careful;
  TextInput file;
  told(reading.troubles, reading.file, file.open(reading.files, reading.file), "Open");
  start_store(w);
  RawReader reader(w, file, reading, decided);
  reader.read_headers();
  reader.read_series();
  decided.status = close_told(reading, file, reader.first_status());
  decided.missing_rings = finish_cores(w);
  return decided;
}

}  // namespace vorn
