#include "toolkit/help.h"

#include <algorithm>
#include <string>
#include <vector>

#include "plot/plot.h"
#include "records/text_file.h"
#include "toolkit/buttons.h"
#include "toolkit/help_box.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

constexpr std::string_view help_file = "Help.prn";
constexpr int header_lines = 2;
constexpr int most_records = 500;

constexpr int most_text_lines = 200;  // carefully; more are in no box
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
// lies under the cursor, but carefully.
bool is_under_cursor(const Workspace& w, const Rectangle& r) {
  const bool in_height =
      w.careful.has(Mend::help) ? r.y1 <= w.msy && w.msy <= r.y2 : r.y2 <= w.msy && w.msy <= r.y1;
  return r.x1 <= w.msx && w.msx <= r.x2 && in_height;
}

// Carefully only what the page shows is looked at.
Subject subject_under_cursor(const Workspace& w, ButtonRange shown) {
  const ButtonRange buttons = w.careful.has(Mend::help) ? shown : button::start;
  for (const ButtonNumber n : buttons) {
    if (w.b(n).on && is_under_cursor(w, w.b(n))) return {true, plain(n)};
  }
  if (buttons.first != button::start.first) return {};
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

// Reads on to the record that is about `subject`. At the end of the file the last record is what is left, but
// carefully.
Record find_record(Workspace& w, TextInput& file, const Subject& subject) {
  const EditFormat layout("(I2,3I4,A80)");
  Record record;
  for (int k = 0; k < most_records; ++k) {
    w.ios = file.read(layout, record.kind, record.button, record.message, record.lines, record.title);
    io_err(w, "Read", help_file);
    if (w.ios == status::end_of_file || record.is_about(subject)) break;
    skip_lines(w, file, record.lines);
  }
  if (w.careful.has(Mend::help) && !record.is_about(subject)) return {.title = "There is no help on this."};
  return record;
}

void draw_text_lines(Workspace& w, TextInput& file, int count) {
  const EditFormat layout("(A80)");
  Line line;
  for (int k = 0; k < count; ++k) {
    w.ios = file.read(layout, line);
    tell_failure(w);
    if (w.ios != status::ok) return;
    w.plot.messag(line.view(), help_box::text_x, line_y + k * line_step);
  }
}

void draw(Workspace& w, TextInput& file, const Record& record) {
  help_box::draw_frame(w.plot, help_box::usual);
  w.plot.messag(record.title.view(), help_box::text_x, help_box::title_y);
  w.plot.height(line_height);
  draw_text_lines(w, file, record.lines);
  w.plot.height(usual_height);
}

std::vector<std::string> text_lines(Workspace& w, TextInput& file, int count) {
  std::vector<std::string> lines;
  Line line;
  for (int k = 0; k < std::min(count, most_text_lines); ++k) {
    w.ios = file.read(EditFormat("(A80)"), line);
    tell_failure(w);
    if (w.ios != status::ok) break;
    lines.emplace_back(line.trimmed());
  }
  return lines;
}

}  // namespace

HelpShown vorn_help(Workspace& w, ButtonRange shown, HelpShown before) {
  const Subject subject = subject_under_cursor(w, shown);
  w.mous = subject.number;
  TextInput file;
  w.ios = file.open(w.files, help_file);
  io_err(w, "Open", help_file);
  skip_lines(w, file, header_lines);
  const Record record = find_record(w, file, subject);

  HelpShown help{1};
  if (w.careful.has(Mend::help)) {
    help.lines =
        help_box::draw(w.plot, record.title.trimmed(), text_lines(w, file, record.lines), before.lines);
  } else {
    draw(w, file, record);
  }
  w.ios = file.close();
  io_err(w, "Close", help_file);
  return help;
}

}  // namespace vorn
