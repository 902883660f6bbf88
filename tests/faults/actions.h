// Everything a user can do that touches files, and small files to do it with.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

#include "plot/screen.h"
#include "walk/invariants.h"
#include "workspace/vorndata.h"

namespace vorn {

// One event of the user, made when the program waits for it.
using Step = std::function<Event(const Workspace&)>;
using Steps = std::vector<Step>;

struct Action {
  std::string name;
  Steps way = {};                        // to where it begins; none: the start menu
  Steps act = {};                        // the action; none: the start of the program
  Steps back = {};                       // from where it ends to the start menu
  std::vector<std::string> writes = {};  // the files whose place it takes
  std::string says;                      // a pattern of what may name a failure of one of its files
  WalkState ends_in = {};                // the screen in which it ends
  std::function<void()> prepare = {};    // what happens to the files just before it
};

std::ostream& operator<<(std::ostream& out, const Action& action);

// Those that only read, and those that write.
std::vector<Action> reading_actions();
std::vector<Action> writing_actions();

// Writes all files that they need into the current folder, and an older one in the place of each output.
void lay_out_files();

// The steps that press "Quit" on the start menu, having pressed another button there.
Steps steps_to_quit();

}  // namespace vorn
