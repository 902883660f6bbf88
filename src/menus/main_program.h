// The whole program: the page, the tables, the start menu.
#pragma once

#include "workspace/vorndata.h"

namespace vorn {

// Sets up the page and the tables and runs the start menu; returns when that has reached its pass limit.
// "Quit", a closed screen and what the program cannot go on without end it by ProgramEnd.
void run_program(Workspace& w);

}  // namespace vorn
