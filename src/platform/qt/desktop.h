// Runs a program in a window.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "sessions/inbox.h"

namespace vorn {

// Opens the window and runs `program` on a thread of its own with it as the screen, until the program
// returns; the window goes with it. Returns what `program` returned.
//
// Where the user opens another folder, the program is asked to end as if the window were closed, and is then
// run again in that folder with the same window.
//
// Without a display nothing is run: standard error says in one line what to do instead, and the result is
// `no_display`. `program` must not throw. Only once in a process.
//
// `program` gets the folder to work in as well, "" for the one that the process is in; there the dialogs of
// the window begin. Without a folder the user is asked first; when he does not want any, nothing is run and
// the result is 0.
using WindowProgram = std::function<int(Inbox& inbox, const std::string& folder)>;
int run_in_window(const WindowProgram& program, std::optional<std::string> folder = "");
inline constexpr int no_display = 1;

}  // namespace vorn
