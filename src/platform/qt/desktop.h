// Runs a program in a window.
#pragma once

#include <functional>

#include "plot/screen.h"

namespace vorn {

// Opens the window and runs `program` on a thread of its own with it as the screen, until the program
// returns; the window goes with it. Returns what `program` returned.
//
// Without a display nothing is run: standard error says in one line what to do instead, and the result is
// `no_display`. `program` must not throw. Only once in a process.
//
// With Folder::asked_for the user is asked first in which folder to work, and the program runs there; when he
// does not want any, nothing is run and the result is 0.
enum class Folder { current, asked_for };
int run_in_window(const std::function<int(Screen&)>& program, Folder folder = Folder::current);
inline constexpr int no_display = 1;

}  // namespace vorn
