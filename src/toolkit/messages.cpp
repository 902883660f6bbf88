#include "toolkit/messages.h"

#include <ostream>
#include <string>

#include "plot/plot.h"
#include "plot/screen.h"
#include "records/edit_format.h"
#include "records/shown_status.h"

namespace vorn {
namespace {

constexpr int text_x = 310, text_y = 1560;
constexpr Rectangle wiped = {300, 1550, 2100, 1760};

// Whether byte k of `text` could steer a terminal: a control code of ASCII, or one of the second set (128 to
// 159), alone or behind the byte 194 that introduces it in UTF-8. Inside other UTF-8 characters such bytes
// are harmless.
bool steers_terminal(std::string_view text, std::size_t k) {
  const auto byte = static_cast<unsigned char>(text[k]);
  if (byte < 32 || byte == 127) return true;
  if (byte < 128 || byte > 159) return false;
  const auto before = k == 0 ? 0 : static_cast<unsigned char>(text[k - 1]);
  return before < 128 || before == 0xC2;
}

// A name out of a file can hold anything; a log line stays one line that any terminal can show.
std::string harmless(std::string_view text) {
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string out;
  for (std::size_t k = 0; k < text.size(); ++k) {
    if (!steers_terminal(text, k)) {
      out += text[k];
      continue;
    }
    const auto byte = static_cast<unsigned char>(text[k]);
    out += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
  }
  return out;
}

void wipe(Workspace& w) {
  w.plot.setclr(colour::paper);
  w.plot.rectangle(wiped.x1, wiped.y1, wiped.x2, wiped.y2);
  w.plot.setclr(colour::ink);
}

// Logs `text` and shows it, followed by `hint`, until a key or click.
void tell(Workspace& w, const std::string& text, std::string_view hint) {
  *w.log << harmless(text) << std::endl;
  w.plot.setclr(colour::ink);
  if (w.passing_over_messages) return;
  w.plot.messag(text + std::string(hint), text_x, text_y);
  const Event event = w.plot.csrpos_fresh();
  if (event.code == Event::escape) w.passing_over_messages = true;
  wipe(w);
}

}  // namespace

void out_err(Workspace& w, std::string_view text) {
  tell(w, std::string(text), " - hit key to continue");
}

bool io_err(Workspace& w, std::string_view label, std::string_view file) {
  if (w.ios == status::ok) return false;
  tell(w,
       std::string(label) + std::string(trimmed(file)) +
           " fail err =" + edit(EditFormat("(I6)"), shown_number(w.ios)),
       "");
  // Deliberate: [goes-on] also after a failure: the program goes on with whatever the failed operation left.
  return false;
}

void told_or_end(Workspace& w, Status status, std::string_view label, std::string_view file) {
  w.ios = status;
  if (io_err(w, label, file)) throw ProgramEnd(EndReason::cannot_go_on);
}

void notice(const Workspace& w, std::string_view text) {
  *w.log << harmless(text) << std::endl;
  w.plot.notice(text);
}

}  // namespace vorn
