// Where a page is shown and where the user's actions come from.
#pragma once

#include <exception>
#include <string_view>

namespace vorn {

class Page;

// One action of the user: a page position and what was done there.
struct Event {
  static constexpr int click = 5;
  static constexpr int help = 6;  // right click or F1
  static constexpr int backspace = 8;
  static constexpr int enter = 13;  // Return and keypad Enter
  static constexpr int escape = 27;

  int x = 0;     // page units, from the left
  int y = 0;     // page units, from the top
  int code = 0;  // click, help, or the code of a key; printable characters are their own code
};

// Why the program ends.
enum class EndReason {
  quit,          // the user left by "Quit"
  closed,        // the window was closed, or its like
  pass_limit,    // a menu that ends the program was shown as often as it may be
  cannot_go_on,  // a list file is missing, or a chronology is too long
};

// "The program ends": thrown wherever that is decided, caught in apps/ alone.
class ProgramEnd : public std::exception {
 public:
  explicit ProgramEnd(EndReason reason) : reason_(reason) {}
  EndReason reason() const { return reason_; }
  // The exit status of the process: 4 when the program cannot go on, otherwise 0.
  int exit_status() const { return reason_ == EndReason::cannot_go_on ? 4 : 0; }
  const char* what() const noexcept override { return "the program ends"; }

 private:
  EndReason reason_;
};

// The port through which the program shows a page and waits. A window is one, a script of clicks is another.
class Screen {
 public:
  virtual ~Screen() = default;
  // Draws now and does not wait.
  virtual void show(const Page& page) = 0;
  // Waits until the user acts on the page shown last. Throws ProgramEnd when the screen is closed.
  virtual Event next_event() = 0;
  // Forgets what was typed or clicked before now, so that it cannot dismiss the message just shown.
  virtual void forget_pending() {}
  // Long work is told by its name and the share of it that is done, 0 to 1, until the program waits again.
  // Called many times a second (see long_work.h); must return at once.
  virtual void progress(std::string_view /*what*/, double /*share*/) {}
  // The file that the user now works on, by its name in the list; empty for none. A window's title tells it.
  virtual void subject(std::string_view /*file*/) {}
  // Something that the user should be able to read outside the page, for as long as he likes. Nothing waits
  // for it.
  virtual void notice(std::string_view /*text*/) {}
};

}  // namespace vorn
