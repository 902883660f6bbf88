#include "loading/startup.h"

#include <string>

#include "chronology/index_pipeline.h"
#include "formats/layouts.h"
#include "formats/recognition.h"
#include "loading/chronology_summary.h"
#include "loading/list_file.h"
#include "loading/saving.h"
#include "plot/long_work.h"
#include "plot/plot.h"
#include "records/text_file.h"
#include "toolkit/buttons.h"
#include "toolkit/messages.h"
#include "toolkit/page_troubles.h"

namespace vorn {
namespace {

constexpr std::string_view list_name = "Vorn.fil";
const EditFormat list_line("(A60)");
const EditFormat setting_edit("(I5)");

// The listing on the page: names on the left, what each file is on the right.
constexpr int name_column = 200, layout_column = 920;
constexpr int first_row = 260, row_height = 39;

void set_defaults(Workspace& w) {
  w.show_width(100);
  w.scy = -140.0 / 3.0;
  w.ins = false;
  w.seg = 50;
  w.olap = 25;
  w.sccc = 0;
  w.jpr = 11;
  w.ss = 32;
  w.chok = w.logon = w.aron = w.splineon = w.lineon = w.indon = true;
  w.raw_output = Layout::tucson_raw;
  w.crn_output = ChronologyOutput::index;
}

void show_settings(Workspace& w) {
  w.b(button::spline_years).label = edit(setting_edit, w.ss);
  w.b(button::ar_order).label = edit(setting_edit, w.jpr);
  w.b(button::display_width).label = edit(setting_edit, w.sl);
  w.b(button::segment_length).label = edit(setting_edit, w.seg);
  w.b(button::segment_overlap).label = edit(setting_edit, w.olap);
  show_outputs(w, w);
}

// Recognises file f of the list, as the current file, if it exists.
void look_at_file(Workspace& w, int f) {
  w.fileok = file_exists(w.files, w.cnam(f).view());
  w.rawok(f) = w.fileok;
  w.cf = f;
  if (w.fileok) find_rftyp(w);
}

// What file f of the list is, in the words of the listing.
std::string_view what_it_is(const FileTable& w, int f) {
  return w.rawok(f) ? name_of(w.rftype(f)) : "File does not exist ";
}

void show_file(Workspace& w, int f) {
  const int row = first_row + (f - 1) * row_height;
  w.plot.messag(w.cnam(f).view(), name_column, row);
  w.plot.messag(what_it_is(w, f), layout_column, row);
  w.plot.show();
}

bool is_usable(const FileTable& w, int f) {
  return w.rawok(f) && row_of(w.rftype(f));
}

// The listing is gone as soon as the files are loaded. Lines of blanks name no file.
void tell_what_is_left_out(Workspace& w) {
  for (int f = 1; f <= w.nfil; ++f) {
    if (is_usable(w, f) || w.cnam(f).blank()) continue;
    notice(w, std::string(w.cnam(f).trimmed()) + ": " + std::string(trimmed(what_it_is(w, f))));
  }
}

// Deliberate: [silent-limits] what is listed behind the last file that there is room for is not read, and no
// message tells it.
void look_behind_the_list(Workspace& w, TextInput& list) {
  FileName name;
  if (list.read(list_line, name) == status::ok && !name.blank())
    notice(w, std::string(list_name) + ": files behind " + the_nth(max_files) + " were not read");
}

// Closes the gaps that missing and unrecognised files leave in the file table. Returns how many files are
// kept.
int keep_usable(FileTable& w) {
  int kept = 0;
  w.nraw = 0;
  for (int f = 1; f <= w.nfil; ++f) {
    if (!is_usable(w, f)) continue;
    const Layout layout = w.rftype(f);
    ++kept;
    // Deliberate: [first-name-stays] where none is kept, the first listed name stays.
    w.cnam(kept) = w.cnam(f);
    w.rftype(kept) = layout;
    w.rfhead(kept) = w.rfhead(f);
    w.rawok(kept) = true;
    if (holds_ring_widths(layout)) ++w.nraw;
  }
  return kept;
}

}  // namespace

void init_start(Workspace& w) {
  set_defaults(w);
  show_settings(w);
  read_list(w);
  check_files(w);
  show_crns(w);
}

void read_list(Workspace& w) {
  TextInput list = open_list_file(w, list_name);
  w.plot.setclr(colour::ink);
  w.nfil = 0;
  for (int f = 1; f <= max_files; ++f) {
    const Status answer = list.read(list_line, w.cnam(f));
    w.ios = answer;
    if (answer == status::end_of_file) break;
    told_or_end(w, answer, "Read", list_name);
    look_at_file(w, f);
    show_file(w, f);
    w.nfil = f;
  }
  if (w.nfil == max_files) look_behind_the_list(w, list);
  told_or_end(w, list.close(), "Close", list_name);
}

void check_files(Workspace& w) {
  tell_what_is_left_out(w);
  const int kept = keep_usable(w);
  LongWork work(w.plot, "Loading");
  // Deliberate: [last-to-first] the store ends with the cores of the first ring-width file.
  for (w.cf = kept; w.cf >= 1; --w.cf) {
    work.part(static_cast<double>(kept - w.cf) / kept, static_cast<double>(kept - w.cf + 1) / kept);
    init_raw(w, w.rftype(w.cf));
  }
  w.nfil = kept;
  w.cf = 1;
}

void find_rftyp(Workspace& w) {
  PageTroubles troubles(w);
  const FileName name = w.cnam(w.cf);
  const Recognition found = find_rftyp(w.files, name.view(), troubles);
  w.ios = found.status;
  w.rftype(w.cf) = found.layout;
  w.rfhead(w.cf) = found.header_lines;
}

void init_raw(Workspace& w, Layout layout) {
  const LayoutRow* row = row_of(layout);
  if (!row) return;
  PageTroubles troubles(w);
  const FileName name = w.cnam(w.cf);
  const Reading reading{w.files, name.view(), w.rfhead(w.cf), troubles, w.careful};
  if (row->read_cores) {
    w.cores_of = w.cf;
    w.read_as = reading_of(w.careful);
  }
  const ReadDecisions decided =
      row->read_cores ? row->read_cores(w, reading) : row->read_chronology(w, w.cf, reading);
  w.ios = decided.status;
  for (const std::string& words : limits_passed(decided, name.view())) notice(w, words);
  if (row->read_cores) data_man2(w);
}

}  // namespace vorn
