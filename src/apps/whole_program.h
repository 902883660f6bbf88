// The whole program on any screen.
#pragma once

#include <functional>
#include <iosfwd>
#include <string_view>

#include "plot/screen.h"
#include "sessions/session.h"
#include "workspace/careful.h"

namespace vorn {

class Files;
struct Workspace;

// Runs the program on `files` until it ends. Each message shown is also written to `log`. `started` gets the
// state before anything is read or shown; it lives until this returns. Result: the exit status, 0 when the
// user left (or at a pass limit), 4 when the program cannot go on. What the screen itself throws to stop the
// run (other than ProgramEnd) passes through.
int run_whole_program(Screen& screen, Files& files, std::ostream& log,
                      const std::function<void(Workspace&)>& started = {});

// The same for a session (see sessions/session.h). `begun` gets each state, as often as the session runs the
// program, before anything is shown.
WholeProgram whole_program(std::function<void(const Workspace&)> begun);

// Answers the one-line options that every program has, --help and --version, on standard output. True when
// `argument` was one of them and nothing else is to be done.
bool answered(std::string_view argument, std::string_view program, std::string_view usage);

// Reads --careful or --careful=NAME,... and adds what it names. False where the argument is neither, which is
// then told on standard error.
bool careful_option(std::string_view argument, std::string_view program, Careful& careful);

}  // namespace vorn
