// What can be done from around the page: an event of the user, or something that stands for events.
#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "plot/screen.h"
#include "toolkit/buttons.h"
#include "workspace/careful.h"

namespace vorn {

// One step of what is played. Each is played at a wait of its own kind; where the program waits for something
// else the playing stops with a word.
struct PlayStep {
  enum class Kind {
    press,        // a click on the button, which must be shown
    sample_year,  // a click on that year in the curve of the sample, when a year is asked for
    reference_year,
    key,            // one key, when something is typed or a message stands
    series,         // a click on the name of entry `number` in the chooser's list, paged to where it is shown
    kept_edit,      // the user says whether the ring inserted or deleted stays; where not, playing is over
    click,          // a click at that page position, at any menu
    to_menu,        // away from a page that no click leads back from, as if it had not been opened
    to_start_menu,  // whatever leads there, keeping what the editor changed; may be many clicks
    careful,        // mend `number` of the list is switched on, at any menu
  };
  Kind kind = Kind::press;
  ButtonNumber button = ButtonNumber::none;
  int year = 0;      // of *_year
  int number = 0;    // of series, careful
  int code = 0;      // of a key
  int x = 0, y = 0;  // of a click
};

// Events to be played as one decision.
struct Play {
  std::vector<PlayStep> steps;
  std::string what;  // for the word, should it stop: "Move the sample by 1629 years"
};

struct Undo {};
struct Redo {};
// Back or forth to where so many decisions have been taken.
struct GoTo {
  std::size_t decisions = 0;
};
// The user's note on a decision, counted from 0; one line.
struct TakeNote {
  std::size_t decision = 0;
  std::string text;
};
// Takes up the session that a journal has kept.
struct TakeUp {
  std::string journal;
};
// The program is to end, by closing its window.
struct Close {};
// The answer to the question that stands, by its place among the answers.
struct Choose {
  std::size_t answer = 0;
};

// With CarefulSwitch something is done carefully from now on, or as usual.
using Deed = std::variant<Event, Play, Undo, Redo, GoTo, TakeNote, TakeUp, Close, Choose, CarefulSwitch>;

}  // namespace vorn
