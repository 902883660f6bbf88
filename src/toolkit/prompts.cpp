#include "toolkit/prompts.h"

#include "plot/plot.h"
#include "toolkit/drawing.h"

namespace vorn {
namespace {

constexpr int usual_height = 25, number_height = 30;

// The next key, or whatever else the user does. Deliberate: [everything-is-a-character] each has a code, and
// every code is a character here, Backspace and a click too.
int next_code(Workspace& w) {
  const Event event = w.plot.csrpos();
  w.msx = event.x;
  w.msy = event.y;
  return event.code;
}

// Reads one key into character `place` of the label and draws the label up to there.
int read_into(Workspace& w, Button& button, std::size_t place, int inset) {
  const int code = next_code(w);
  button.label(place) = static_cast<char>(code);
  w.plot.messag(button.label.view().substr(0, place), button.x1 + inset, button.y1 + 12);
  return code;
}

// Those who watch the program are told what is typed, as long as it is.
class TypingNoted {
 public:
  TypingNoted(Controls& controls, Typing what) : controls_(controls) { controls_.typing = what; }
  ~TypingNoted() { controls_.typing = Typing::nothing; }
  TypingNoted(const TypingNoted&) = delete;
  TypingNoted& operator=(const TypingNoted&) = delete;

 private:
  Controls& controls_;
};

bool is_digit(int code) {
  return code >= '0' && code <= '9';
}

}  // namespace

void get_str(Workspace& w, ButtonNumber n) {
  const TypingNoted noted(w, Typing::name);
  constexpr std::size_t most_characters = 12;
  Button& button = w.b(n);
  const Label before = button.label;
  button.label = Label();
  but_draw(w, n);
  std::size_t k = 1;
  for (; k <= most_characters; ++k) {
    if (read_into(w, button, k, 0) != Event::enter) continue;
    button.label(k) = ' ';
    break;
  }
  // Deliberate: [one-letter-name] a single character is no name.
  if (k <= 2) button.label = before;
}

void get_int(Workspace& w, ButtonNumber n, std::int32_t& v) {
  const TypingNoted noted(w, Typing::number);
  constexpr int inset = 8;
  // Deliberate: [sixth-digit] five digits and Return; a sixth digit abandons the entry.
  constexpr std::size_t most_keys = 6;
  Button& button = w.b(n);
  w.plot.height(number_height);
  button.label = Label();
  button.lit = true;
  but_draw(w, n);

  std::int32_t number = 0, sign = 1;
  std::size_t behind_sign = 0;
  int code = 0;
  for (std::size_t k = 1; k <= most_keys; ++k) {
    code = read_into(w, button, k + behind_sign, inset);
    if (k == 1 && code == '-') {
      sign = -1;
      behind_sign = 1;
      code = read_into(w, button, k + behind_sign, inset);
    }
    if (!is_digit(code)) break;
    number = number * 10 + (code - '0');
  }
  w.plot.height(usual_height);
  if (code == Event::enter) v = number * sign;
}

}  // namespace vorn
