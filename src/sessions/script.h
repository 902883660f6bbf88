// Scripts of clicks and keys: what a user would do, and what must then be on the page.
#pragma once

#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

// One statement of a script.
struct Statement {
  enum class Kind {
    click,
    help,
    press,
    key,
    type,
    enter,
    page,
    expect,
    refuse,
    undo,
    redo,
    panel,
    pick,
    careful
  };
  Kind kind = Kind::enter;
  int line = 0;      // of the script, counted from 1
  int x = 0, y = 0;  // click, help: page units
  int number = 0;    // press: of the button; key: its code
  // type, expect, refuse, pick, careful: the text; page, panel: the file's name; press: the button's name,
  // empty where it has its number
  std::string text = {};
  std::string panel = {};  // panel, pick: its name
};

// What is wrong with one line of a script.
struct ScriptError {
  int line = 0;
  std::string what;
};

struct Script {
  std::vector<Statement> statements;
  std::vector<ScriptError> errors;  // a script is valid when there are none
};

// The number of the button of a name, 0 where no button has it.
using ButtonNumbers = std::function<int(std::string_view name)>;
// Whether a panel has that name.
using IsPanel = std::function<bool(std::string_view name)>;

// Reads a script, one statement a line:
//   click X Y      a click at a page position
//   help X Y       a request for help there
//   press NAME     a click on the middle of the button of that name, which must be shown
//   press N        a click on the middle of button N (1 to 140) as the table then stands
//   key CODE       one key (0 to 255; 5 and 6 are no keys)
//   type TEXT      a key for each character of the rest of the line, blanks at its end included
//   enter          Return
//   page FILE      writes the page as it then stands (.txt, .png, .svg, .pdf)
//   expect TEXT    some visible text on the page contains TEXT
//   refuse TEXT    none does
//   undo           takes back the last decision
//   redo           takes it again
//   panel NAME FILE  writes a panel, as page does
//   careful NAME on  mends one place, or all, from here on; off: works as usual. Ahead of all other
//                    statements it holds before the program starts
//   pick NAME TEXT   clicks the first spot of that panel whose text or tip contains TEXT
// "#" at the start of a line or after a blank starts a comment; blanks before it are no part of the
// statement. Empty lines count as comments. Lines end at LF or CR LF. All lines are looked at, so that all
// errors are told. Without `number_of` and `is_panel` no name is known.
Script read_script(std::istream& in, const ButtonNumbers& number_of = {}, const IsPanel& is_panel = {});

}  // namespace vorn
