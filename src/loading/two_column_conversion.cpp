#include "loading/two_column_conversion.h"

#include <algorithm>
#include <string>
#include <vector>

#include "formats/core_loading.h"
#include "formats/file_status.h"
#include "formats/tucson_raw.h"
#include "formats/two_column_layout.h"
#include "plot/long_work.h"
#include "plot/screen.h"
#include "records/text_file.h"
#include "toolkit/messages.h"

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
  explicit Conversion(Workspace& workspace) : w(workspace) {}

  // Each of the first three returns: the conversion is not to be given up.
  bool read_output_name(TextInput& list);
  bool read_input_names(TextInput& list);
  bool read_inputs();
  void write_cores();

 private:
  // How the reading of an input ended.
  enum class Outcome { read, pool_full, given_up };

  bool tell(std::string_view label, std::string_view file);
  Outcome read_listed(int i, const InputName& input);
  Outcome read_input(int i, const InputName& input);
  Outcome read_rings(TextInput& file, int i, const InputName& input, int& years);

  Workspace& w;
  std::vector<InputName> inputs_;
  bool broken_off_ = false;  // something was not read, because the operating system failed
};

// Tells the status of the last read or opening. Returns what io_err does: never that there was an error.
bool Conversion::tell(std::string_view label, std::string_view file) {
  broken_off_ = broken_off_ || status::of_system(w.ios);
  return io_err(w, label, file);
}

bool Conversion::read_output_name(TextInput& list) {
  FileName output;
  w.ios = list.read(output_line, output);
  const bool named = w.ios == status::ok;
  if (tell("Read1", list_name)) return false;
  // Deliberate: [no-output-name] without one the output would take the place of the first file of the list.
  if (named) w.cnam(1) = output;
  return named;
}

bool Conversion::read_input_names(TextInput& list) {
  while (inputs_.size() < max_series) {
    InputName input;
    w.ios = list.read(input_line, input);
    if (w.ios == status::end_of_file) break;
    if (tell("Read2", list_name)) return false;
    if (broken_off_) break;
    inputs_.push_back(input);
  }
  return true;
}

bool Conversion::read_inputs() {
  start_store(w);
  w.derived_stale = true;
  LongWork work(w.plot, list_name);
  const int count = static_cast<int>(inputs_.size());
  for (int i = 1; i <= count; ++i) {
    work.at((i - 1.0) / count);
    const Outcome outcome = read_listed(i, inputs_[static_cast<std::size_t>(i - 1)]);
    if (outcome != Outcome::read) return outcome != Outcome::given_up;
  }
  work.at(1);
  return true;
}

Conversion::Outcome Conversion::read_listed(int i, const InputName& input) {
  // Deliberate: [missing-input] an input that does not exist uses up its number all the same.
  start_entry(w, i, input);
  w.fileok = file_exists(w.files, input.view());
  if (w.fileok) return read_input(i, input);
  out_err(w, std::string(input.trimmed()) + " does not exist");
  return Outcome::read;
}

// Reads an input that exists into entry i.
Conversion::Outcome Conversion::read_input(int i, const InputName& input) {
  TextInput file;
  w.ios = file.open(w.files, input.view());
  if (tell("Open", input.view())) return Outcome::given_up;
  int years = 0;
  if (read_rings(file, i, input, years) == Outcome::given_up) return Outcome::given_up;
  close_told(w, file, input.view());
  if (!take_places(w, i, years)) {
    start_entry(w, i, input);
    return Outcome::pool_full;
  }
  date(w, i);
  ++w.nc;
  return Outcome::read;
}

// Reads the widths of entry i; `years` is how many there are, or one more than the pool has room for.
Conversion::Outcome Conversion::read_rings(TextInput& file, int i, const InputName& input, int& years) {
  std::int32_t year = 0;
  for (years = 0;; ++years) {
    // Deliberate: [bad-ring] also of a line that is not all numbers.
    double width = 0;
    const int answer = file.read(two_column::ring_line, year, width);
    w.ios = answer;
    if (answer == status::end_of_file) return Outcome::read;
    if (tell("Read2", input.view())) return Outcome::given_up;
    if (status::of_system(answer)) return Outcome::read;
    if (years == 0) w.fy(i) = year;
    const int p = w.ad(i) + years;
    if (p > max_pool) {
      ++years;
      return Outcome::read;
    }
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
  for (int i = 1; i <= w.nc; ++i) write_rrec(w, out, i);
  told_or_end(w, out.close(), "Close", name.view());
}

}  // namespace

void read_trw(Workspace& w) {
  w.fileok = file_exists(w.files, list_name);
  if (!w.fileok) {
    out_err(w, "TRW.fil does not exist");
    throw ProgramEnd(EndReason::cannot_go_on);
  }
  TextInput list;
  w.ios = list.open(w.files, list_name);
  if (io_err(w, "Open", list_name)) return;  // never: see io_err
  Conversion conversion(w);
  const bool read = conversion.read_output_name(list) && conversion.read_input_names(list);
  close_told(w, list, list_name);
  if (read && conversion.read_inputs()) conversion.write_cores();
}

}  // namespace vorn
