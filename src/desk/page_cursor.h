// A cursor on the page for those who work without a mouse: it goes from button to button, within lists from
// name to name, and along the curves from year to year where a year is asked for.
#pragma once

#include <cstdint>
#include <optional>

#include "sessions/deeds.h"
#include "situation/situation.h"

namespace vorn {

class PageCursor {
 public:
  // next and previous go from button to button in reading order, round and round; a list is one button. The
  // others go within a list, and to it from elsewhere: by a row, by a column, to its first and last name.
  // Where a year is asked for left and right go by a year, page_left and page_right by ten, up and down to
  // the other curve.
  enum class Step : std::uint8_t { next, previous, left, right, up, down, page_left, page_right };

  // Goes on, where a click on a button or a year is waited for. Answers false where the step means nothing:
  // then it is free for something else.
  bool go(Step step, const Situation& now);
  // What is marked on the page, and the click there; nothing where the cursor is not shown.
  std::optional<Rectangle> mark(const Situation& now) const;
  std::optional<Event> click(const Situation& now) const;
  void hide();

 private:
  bool go_on(Step step, const Situation& now);
  bool go_in_list(Step step, const Situation& now);
  bool go_along_curve(Step step, const Situation& now);
  void enter(const ShownButton& button, const Situation& now);

  ButtonNumber button_ = ButtonNumber::none;
  ButtonNumber list_ = ButtonNumber::none;  // the list that cell_ is in
  int cell_ = 0;                            // from 0
  int year_ = 0;                            // where one is picked
};

}  // namespace vorn
