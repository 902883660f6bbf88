// A user made of bytes: clicks, keys and typed text.
//
//   0 to 140   a click on the middle of that button as the table has it, shown or not (0: beside everything)
//   141 B X Y  a click inside button B, X and Y 255ths from its left and upper edge; on the page for B = 0
//   142 X Y    a request for help, 255ths of the page
//   143 C      key C; for 5 and 6, which are no keys, "x"
//   144 N ...  N modulo 16 bytes typed, Return
//   145, 146   Return, Escape
//   147 L H    the number L + 256 H (of 16 bits, with a sign) typed, Return
//   148        Backspace
//   149 N ...  as 144, without Return
//   150 to 255 a click on one of the buttons that are shown: the first for 150, and round again
//
// A message is confirmed by Return and takes no byte, unless the next one is 146. Behind the last byte the
// window is closed.
#pragma once

#include <deque>
#include <string_view>
#include <vector>

#include "plot/screen.h"
#include "target.h"
#include "walk/invariants.h"
#include "workspace/vorndata.h"

namespace vorn::fuzz {

// Whenever the program waits in a menu everything that must hold is checked. With VORN_FUZZ_TELL in the
// environment each event goes to standard output as a statement of vorn_replay.
class EventPlayer : public Screen {
 public:
  static constexpr char escape = '\x92';  // its byte

  EventPlayer(std::string_view bytes, WalkState state) : bytes_(bytes), state_(state) {}

  // The program starts on `w`.
  void begin(const Workspace& w) { w_ = &w; }

  void show(const Page& page) override;
  void forget_pending() override { message_shown_ = true; }
  void progress(std::string_view what, double share) override;
  Event next_event() override;

 private:
  Event answer_to_message();
  Event decode(int byte);
  Event press(ButtonNumber n);
  Event press_shown(int k);
  Event click_inside(ButtonNumber n);
  Event key(int code);
  void type(std::string_view text);
  Event next_key();

  Bytes bytes_;
  WalkState state_;
  const Workspace* w_ = nullptr;
  bool message_shown_ = false;
  std::vector<ButtonNumber> shown_;
  std::deque<int> typed_;
};

// Closes the screen when the program waits in a menu, and confirms messages; of many in a row it passes over
// those behind the twentieth.
class ConfirmingScreen : public Screen {
 public:
  void show(const Page&) override {}
  void forget_pending() override { message_shown_ = true; }
  Event next_event() override;
  int messages() const { return messages_; }

 private:
  bool message_shown_ = false;
  int messages_ = 0;
};

}  // namespace vorn::fuzz
