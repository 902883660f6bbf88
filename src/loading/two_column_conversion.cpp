#include "loading/two_column_conversion.h"

#include <algorithm>
#include <string>
#include <vector>

#include "formats/core_loading.h"
#include "formats/file_work.h"
#include "formats/tucson_raw.h"
#include "formats/two_column_layout.h"
#include "loading/list_file.h"
#include "plot/long_work.h"
#include "records/text_file.h"
#include "toolkit/messages.h"
#include "toolkit/page_troubles.h"

namespace vorn {
namespace {

constexpr std::string_view list_name = "TRW.fil";
constexpr std::size_t extension_length = 4;  // the point and three letters
// Deliberate: [undated-2009] whatever year it is now.
constexpr std::int32_t last_year_of_undated = 2009;
constexpr double missing_ring = -9.99;

const EditFormat output_line("(A60)");
const EditFormat input_line("(A40)");

using InputName = Text<40>;

// Deliberate: [path-first] the path goes before the extension does.
Name core_name(const InputName& input) {
  std::string_view name = input.trimmed();
  const auto path = name.find_last_of("/\\");
  if (path != std::string_view::npos) name.remove_prefix(path + 1);
  name.remove_suffix(std::min(name.size(), extension_length));
  return Name(name);
}

void tell_that_it_is_missing(Workspace& w, const InputName& input) {
  out_err(w, std::string(input.trimmed()) + " does not exist");
}

// Makes entry i one without years; the next one starts where it starts.
void start_entry(Workspace& w, int i, const InputName& input) {
  w.nam(i) = core_name(input);
  w.fy(i) = 0;
  w.ly(i) = -1;
  w.yr(i) = 0;
  w.ad(i + 1) = w.ad(i);
}

void date(Workspace& w, int i) {
  if (w.fy(i) != 0) {
    w.ly(i) = w.fy(i) + w.yr(i) - 1;
  } else {
    w.ly(i) = last_year_of_undated;
    w.fy(i) = last_year_of_undated - w.yr(i) + 1;
  }
}

// Reads what the list names into the store, and writes it.
class Conversion {
 public:
  explicit Conversion(Workspace& workspace) : w(workspace), troubles_(workspace) {}

  // Returns: there is an output, and something to be converted.
  bool read_list(TextInput& list);
  void read_inputs();
  void write_cores();

 private:
  // Tells what a read or opening answered.
  void tell(const TextInput& input, Status status, std::string_view label, std::string_view file);
  bool read_output_name(TextInput& list);
  void read_input_names(TextInput& list);
  bool any_input_exists() const;
  // Each returns: there is room for further ones.
  bool read_listed(int i, const InputName& input);
  bool read_input(int i, const InputName& input);
  int read_rings(TextInput& file, int i, const InputName& input);

  Workspace& w;
  PageTroubles troubles_;
  FileName output_;
  std::vector<InputName> inputs_;
  bool broken_off_ = false;  // something was not read, because the operating system failed
};

void Conversion::tell(const TextInput& input, Status status, std::string_view label, std::string_view file) {
  broken_off_ = broken_off_ || status::of_system(status);
  w.ios = told_read({w.files, file, 0, troubles_}, input, status, label);
}

bool Conversion::read_list(TextInput& list) {
  const bool named = read_output_name(list);
  if (named) read_input_names(list);
  told_or_end(w, list.close(), "Close", list_name);
  if (!named) return false;
  // What does not exist is told; the cores in the store and an older output are worth more than nothing.
  if (!any_input_exists()) {
    for (const InputName& input : inputs_) tell_that_it_is_missing(w, input);
    return false;
  }
  w.cnam(1) = output_;
  return true;
}

bool Conversion::read_output_name(TextInput& list) {
  const Status answer = list.read(output_line, output_);
  tell(list, answer, "Read1", list_name);
  // Deliberate: [no-output-name] without one the output would take the place of the first file of the list.
  return answer == status::ok;
}

void Conversion::read_input_names(TextInput& list) {
  for (;;) {
    InputName input;
    const Status answer = list.read(input_line, input);
    w.ios = answer;
    if (answer == status::end_of_file) return;
    // Deliberate: [silent-limits] no message tells that there are more.
    if (inputs_.size() == max_series) {
      if (!input.blank())
        notice(w, std::string(list_name) + ": inputs behind " + the_nth(max_series) + " were not read");
      return;
    }
    tell(list, answer, "Read2", list_name);
    if (broken_off_) return;
    inputs_.push_back(input);
  }
}

bool Conversion::any_input_exists() const {
  return std::ranges::any_of(inputs_,
                             [this](const InputName& input) { return file_exists(w.files, input.view()); });
}

void Conversion::read_inputs() {
  start_store(w);
  w.derived_stale = true;
  LongWork work(w.plot, list_name);
  const int count = static_cast<int>(inputs_.size());
  for (int i = 1; i <= count; ++i) {
    work.at((i - 1.0) / count);
    // Deliberate: [missing-input] an input that does not exist uses up its number all the same.
    const int entry = w.careful.has(Mend::read_trw) ? w.nc + 1 : i;
    if (!read_listed(entry, inputs_[static_cast<std::size_t>(i - 1)])) return;
  }
  work.at(1);
}

bool Conversion::read_listed(int i, const InputName& input) {
  start_entry(w, i, input);
  w.fileok = file_exists(w.files, input.view());
  if (w.fileok) return read_input(i, input);
  tell_that_it_is_missing(w, input);
  return true;
}

// Reads an input that exists into entry i.
bool Conversion::read_input(int i, const InputName& input) {
  TextInput file;
  tell(file, file.open(w.files, input.view()), "Open", input.view());
  const int years = read_rings(file, i, input);
  const std::int64_t line = file.line();
  const Reading reading{w.files, input.view(), 0, troubles_};
  w.ios = close_told(reading, file);
  if (!take_places(w, i, years, reading, line)) {
    start_entry(w, i, input);
    return false;
  }
  date(w, i);
  ++w.nc;
  return true;
}

// Reads the widths of entry i. Returns how many there are, or one more than the pool has room for.
int Conversion::read_rings(TextInput& file, int i, const InputName& input) {
  std::int32_t year = 0;
  for (int years = 0;; ++years) {
    // Deliberate: [bad-ring] also of a line that is not all numbers.
    double width = 0;
    const Status answer = file.read(two_column::ring_line, year, width);
    w.ios = answer;
    if (answer == status::end_of_file) return years;
    tell(file, answer, "Read2", input.view());
    if (status::of_system(answer)) return years;
    if (years == 0) w.fy(i) = year;
    const int p = w.ad(i) + years;
    if (p > max_pool) return years + 1;
    w.xok(p) = width >= 0;
    w.x(p) = w.xok(p) ? width : missing_ring;
  }
}

// Deliberate: [missing-input] entries 1 to nc, so that behind an input that did not exist the last ones are
// not written.
void Conversion::write_cores() {
  const FileName name = w.cnam(1);
  // Deliberate: [older-output] an older output is whole; what has been read is not.
  if (broken_off_ && file_exists(w.files, name.view()))
    return out_err(w, std::string(name.trimmed()) + " is kept");
  TextOutput out;
  told_or_end(w, out.create(w.files, name.view()), "OpenW", name.view());
  for (int i = 1; i <= w.nc; ++i) write_rrec(w, {name.view(), out, troubles_, w.careful}, i);
  told_or_end(w, out.close(), "Close", name.view());
}

}  // namespace

void read_trw(Workspace& w) {
  if (w.careful.has(Mend::read_trw) && !list_exists(w, list_name)) return;
  TextInput list = open_list_file(w, list_name);
  Conversion conversion(w);
  if (!conversion.read_list(list)) return;
  conversion.read_inputs();
  conversion.write_cores();
}

}  // namespace vorn
