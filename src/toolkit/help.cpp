#include "toolkit/help.h"

#include "plot/plot.h"
#include "records/text_file.h"
#include "toolkit/buttons.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

constexpr std::string_view help_file = "Help.prn";
constexpr int header_lines = 2;
constexpr int most_records = 500;

constexpr Rectangle box = {80, 1400, 1640, 1700};
constexpr int text_x = 88, title_y = 1422;
// Deliberate: [help-lines] only the first text line falls inside the box.
constexpr int line_y = 1602, line_step = 180;
constexpr int usual_height = 25, line_height = 20;

using Line = Text<80>;

// What was asked about: a button, or a message line, 0 for none.
struct Subject {
  bool is_button = false;
  int number = 0;
};

// One record of the file, without the text lines that follow it.
struct Record {
  std::int32_t kind = 0, button = 0, message = 0, lines = 0;
  Line title;

  bool is_about(const Subject& subject) const {
    return kind == 0 || (subject.is_button ? button : message) == subject.number;
  }
};

// Deliberate: [upside-down-test] upper and lower edge are exchanged, so that a rectangle of the tables never
// lies under the cursor.
bool is_under_cursor(const Workspace& w, const Rectangle& r) {
  return r.x1 <= w.msx && w.msx <= r.x2 && r.y2 <= w.msy && w.msy <= r.y1;
}

Subject subject_under_cursor(const Workspace& w) {
  for (const ButtonNumber n : button::start) {
    if (w.b(n).on && is_under_cursor(w, w.b(n))) return {true, plain(n)};
  }
  for (const MessageNumber i : message::with_help) {
    if (is_under_cursor(w, w.madd(i))) return {false, plain(i)};
  }
  return {};
}

// Of the lines that are no records only a failure of the system is told.
void tell_failure(Workspace& w) {
  if (status::of_system(w.ios)) io_err(w, "Read", help_file);
}

void skip_lines(Workspace& w, TextInput& file, int count) {
  for (int k = 0; k < count; ++k) {
    w.ios = file.read(EditFormat("(A80)"));
    tell_failure(w);
    if (w.ios == status::end_of_file) return;
  }
}

// Reads on to the record that is about `subject`. At the end of the file the last record is what is left.
Record find_record(Workspace& w, TextInput& file, const Subject& subject) {
  const EditFormat layout("(I2,3I4,A80)");
  Record record;
  for (int k = 0; k < most_records; ++k) {
    w.ios = file.read(layout, record.kind, record.button, record.message, record.lines, record.title);
    io_err(w, "Read", help_file);
    if (w.ios == status::end_of_file || record.is_about(subject)) break;
    skip_lines(w, file, record.lines);
  }
  return record;
}

void draw_box(Workspace& w) {
  w.plot.setclr(colour::light_grey);
  w.plot.rectangle(box.x1, box.y1, box.x2, box.y2);
  w.plot.setclr(colour::light_red);
  w.plot.shdpat(0);
  w.plot.rectangle(box.x1, box.y1, box.x2, box.y2);
  w.plot.shdpat(16);
  w.plot.setclr(colour::ink);
}

void draw_text_lines(Workspace& w, TextInput& file, int count) {
  const EditFormat layout("(A80)");
  Line line;
  for (int k = 0; k < count; ++k) {
    w.ios = file.read(layout, line);
    tell_failure(w);
    if (w.ios != status::ok) return;
    w.plot.messag(line.view(), text_x, line_y + k * line_step);
  }
}

}  // namespace

void vorn_help(Workspace& w) {
  const Subject subject = subject_under_cursor(w);
  w.mous = subject.number;
  TextInput file;
  w.ios = file.open(w.files, help_file);
  io_err(w, "Open", help_file);
  skip_lines(w, file, header_lines);
  const Record record = find_record(w, file, subject);

  draw_box(w);
  w.plot.messag(record.title.view(), text_x, title_y);
  w.plot.height(line_height);
  draw_text_lines(w, file, record.lines);
  w.plot.height(usual_height);
  w.ios = file.close();
  io_err(w, "Close", help_file);
}

}  // namespace vorn
