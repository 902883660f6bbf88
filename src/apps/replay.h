// The whole program without a window, driven by a script.
#pragma once

#include <string>

#include "workspace/careful.h"

namespace vorn {

// Runs the script of this name ("-": standard input) in the current folder. Messages of the program, of the
// script and of what is wrong with it go to standard error; `program` is the name under which this does. What
// is `careful` is so from the start on, with what the script switches ahead of all else.
//
// Returns the exit status: 0 the program ended as a user ends it, 1 an expectation failed, 2 the script is
// not valid or cannot be read, 3 the script ended while the program was waiting, 4 the program cannot go on.
int replay(const std::string& name, const std::string& program, const Careful& careful = {});

}  // namespace vorn
