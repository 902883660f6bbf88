#include "workspace/two_column_conversion.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>

#include "formats/core_loading.h"
#include "formats/file_status.h"
#include "formats/tucson_raw.h"
#include "plot/long_work.h"
#include "plot/screen.h"
#include "records/text_file.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

constexpr std::string_view list_name = "TRW.fil";
constexpr std::size_t extension_length = 4;  // the point and three letters
constexpr std::int32_t last_year_of_undated = 2009;
constexpr double missing_ring = -9.99;

const EditFormat output_line("(A60)");
const EditFormat input_line("(A40)");
const EditFormat ring_line("(14X,I6,F7.3)");

using InputName = Text<40>;

// Deliberate: the path goes before the extension does.
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

// How the reading of an input, or of all of them, ended.
enum class Outcome { read, pool_full, abandoned };

// Reads the widths of entry i; `years` is how many there are, or one more than the pool has room for.
Outcome read_rings(Workspace& w, TextInput& file, int i, const InputName& input, int& years) {
  std::int32_t year = 0;
  for (years = 0;; ++years) {
    double width = 0;  // also that of a line that is not all numbers
    const int answer = file.read(ring_line, year, width);
    w.ios = answer;
    if (answer == status::end_of_file) return Outcome::read;
    if (io_err(w, "Read2", input.view())) return Outcome::abandoned;  // io_err never says so; meant
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

void date(Workspace& w, int i) {
  if (w.fy(i) != 0) {
    w.ly(i) = w.fy(i) + w.yr(i) - 1;
  } else {
    w.ly(i) = last_year_of_undated;
    w.fy(i) = last_year_of_undated - w.yr(i) + 1;
  }
}

// Reads an input that exists into entry i.
Outcome read_input(Workspace& w, int i, const InputName& input) {
  TextInput file;
  w.ios = file.open(input.view());
  if (io_err(w, "Open", input.view())) return Outcome::abandoned;  // io_err never says so; meant
  int years = 0;
  if (read_rings(w, file, i, input, years) == Outcome::abandoned) return Outcome::abandoned;
  w.ios = file.close();
  if (!take_places(w, i, years)) {
    start_entry(w, i, input);
    return Outcome::pool_full;
  }
  date(w, i);
  ++w.nc;
  return Outcome::read;
}

// How many inputs the list names, at most as many as are read; 0 where it cannot be read twice. For the
// user's eyes alone.
int inputs_listed() {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(list_name, ignored)) return 0;
  TextInput list;
  FileName output;
  if (list.open(list_name) != status::ok || list.read(output_line, output) != status::ok) return 0;
  int count = 0;
  for (InputName input; count < max_series && list.read(input_line, input) == status::ok;) ++count;
  return count;
}

// Reads what the list names, entry by entry.
Outcome read_inputs(Workspace& w, TextInput& list) {
  LongWork work(w.plot, list_name);
  const double all = std::max(inputs_listed(), 1);
  for (int i = 1; i <= max_series; ++i) {
    work.at(std::min((i - 1) / all, 1.0));
    InputName input;
    const int answer = list.read(input_line, input);
    w.ios = answer;
    if (answer == status::end_of_file) break;
    if (io_err(w, "Read2", list_name)) return Outcome::abandoned;  // io_err never says so; meant
    // Deliberate: an input that does not exist uses up its number all the same.
    start_entry(w, i, input);
    w.fileok = file_exists(input.view());
    if (!w.fileok) {
      out_err(w, std::string(input.trimmed()) + " does not exist");
      continue;
    }
    const Outcome outcome = read_input(w, i, input);
    if (outcome != Outcome::read) return outcome;
  }
  return Outcome::read;
}

// Deliberate: entries 1 to nc, so that behind an input that did not exist the last ones are not written.
void write_cores(Workspace& w) {
  const FileName name = w.cnam(1);
  TextOutput out;
  told_or_end(w, out.create(name.view()), "OpenW", name.view());
  for (int i = 1; i <= w.nc; ++i) write_rrec(w, out, i);
  told_or_end(w, out.close(), "Close", name.view());
}

}  // namespace

void read_trw(Workspace& w) {
  w.fileok = file_exists(list_name);
  if (!w.fileok) {
    out_err(w, "TRW.fil does not exist");
    throw ProgramEnd(EndReason::cannot_go_on);
  }
  TextInput list;
  w.ios = list.open(list_name);
  if (io_err(w, "Open", list_name)) return;  // io_err never says so; meant
  FileName output;
  w.ios = list.read(output_line, output);
  const bool named = w.ios == status::ok;
  if (io_err(w, "Read1", list_name)) return;  // io_err never says so; meant
  // Without a name the output would take the place of the first file of the list.
  if (!named) return;
  w.cnam(1) = output;
  start_store(w);
  w.derived_stale = true;
  if (read_inputs(w, list) == Outcome::abandoned) return;
  w.ios = list.close();
  write_cores(w);
}

}  // namespace vorn
