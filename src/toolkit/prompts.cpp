#include "toolkit/prompts.h"

#include <utility>

#include "plot/plot.h"
#include "toolkit/drawing.h"

namespace vorn {
namespace {

constexpr int usual_height = 25, number_height = 30;

// The next key, or whatever else the user does. Deliberate: [everything-is-a-character] each has a code, and
// every code is a character here, Backspace and a click too, but carefully.
int next_code(Workspace& w) {
  const Event event = w.plot.csrpos();
  w.msx = event.x;
  w.msy = event.y;
  return event.code;
}

// Makes `code` character `place` of the label and draws the label up to there.
void write_character(Workspace& w, Button& button, std::size_t place, int code, int inset) {
  button.label(place) = static_cast<char>(code);
  w.plot.messag(button.label.view().substr(0, place), button.x1 + inset, button.y1 + 12);
}

bool leaves(const Workspace& w, int code) {
  return code == Event::escape && (w.careful.has(Mend::escape) || w.careful.has(Mend::prompts));
}

bool rubs_out(const Workspace& w, int code) {
  return code == Event::backspace && w.careful.has(Mend::prompts);
}

// Carefully what is no character of a name, as a click, does nothing.
bool is_passed_over(const Workspace& w, int code) {
  return w.careful.has(Mend::prompts) && is_control(static_cast<char>(code)) && code != Event::enter;
}

// Takes the character before `place` away. Returns its place, where the next one goes.
std::size_t rub_out(Workspace& w, ButtonNumber n, std::size_t place, int inset) {
  if (place == 1) return place;
  Button& button = w.b(n);
  button.label(--place) = ' ';
  const Label left = std::exchange(button.label, Label());
  but_draw(w, n);
  button.label = left;
  w.plot.messag(left.view(), button.x1 + inset, button.y1 + 12);
  return place;
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

// What is typed into a number's button, "-" before its digits or none.
struct TypedNumber {
  std::size_t place = 1;  // of the next character
  bool negative = false;
  int code = 0;  // of the key that came last

  std::size_t digits() const { return place - 1 - (negative ? 1 : 0); }
  std::int32_t value(const Label& label) const {
    std::int32_t number = 0;
    for (std::size_t k = negative ? 2 : 1; k < place; ++k) number = number * 10 + (label(k) - '0');
    return negative ? -number : number;
  }
};

// Takes keys up to the first that is none of a number, six digits at most.
TypedNumber typed_number(Workspace& w, ButtonNumber n, int inset) {
  // Deliberate: [sixth-digit] five digits and Return; a sixth digit abandons the entry.
  constexpr std::size_t most_keys = 6;
  TypedNumber typed;
  while (typed.digits() < most_keys) {
    typed.code = next_code(w);
    if (rubs_out(w, typed.code)) {
      typed.place = rub_out(w, n, typed.place, inset);
      typed.negative = typed.negative && typed.place > 1;
      continue;
    }
    write_character(w, w.b(n), typed.place, typed.code, inset);
    const bool is_sign = typed.place == 1 && typed.code == '-';
    if (!is_sign && !is_digit(typed.code)) break;
    typed.negative = typed.negative || is_sign;
    ++typed.place;
  }
  return typed;
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
  while (k <= most_characters) {
    const int code = next_code(w);
    if (leaves(w, code)) {
      k = 1;
      break;
    }
    if (rubs_out(w, code)) k = rub_out(w, n, k, 0);
    if (is_passed_over(w, code)) continue;
    write_character(w, button, k, code, 0);
    if (code == Event::enter) {
      button.label(k) = ' ';
      break;
    }
    ++k;
  }
  // Deliberate: [one-letter-name] a single character is no name.
  if (k <= 2) button.label = before;
}

Entry get_int(Workspace& w, ButtonNumber n, std::int32_t& v) {
  const TypingNoted noted(w, Typing::number);
  constexpr int inset = 8;
  Button& button = w.b(n);
  w.plot.height(number_height);
  button.label = Label();
  button.lit = true;
  but_draw(w, n);
  const TypedNumber typed = typed_number(w, n, inset);
  w.plot.height(usual_height);
  const bool taken = typed.code == Event::enter, empty = taken && typed.digits() == 0;
  if (leaves(w, typed.code) || (w.careful.has(Mend::prompts) && (empty || !taken))) return Entry::left;
  if (!taken) return Entry::abandoned;
  v = typed.value(button.label);
  return empty ? Entry::empty : Entry::taken;
}

}  // namespace vorn
