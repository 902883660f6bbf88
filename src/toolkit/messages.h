// Message boxes: the two procedures through which every failure is told.
#pragma once

#include <string_view>

#include "workspace/vorndata.h"

namespace vorn {

// Shows `text` followed by " - hit key to continue" at the foot of the page, waits for one key or click and
// wipes the line. Escape passes over the messages that follow until mouse_click waits again.
void out_err(Workspace& w, std::string_view text);

// Tells the outcome of the last file operation, w.ios, when it is not ok: `label`, the file's name without
// its trailing blanks, " fail err =" and the status in six columns; waits and wipes as out_err does.
//
// Returns false, always: the program relies on going on after a failure was told.
bool io_err(Workspace& w, std::string_view label, std::string_view file);

// What follows a file operation: keeps `status` as the status of the last one and tells it when it is not ok,
// under `label` and `file`.
//
// Ends the program when io_err says that there was an error. Deliberate: [goes-on] it never does, so that
// whatever the failed operation left is gone on with. This is the one branch behind io_err.
void told_or_end(Workspace& w, Status status, std::string_view label, std::string_view file);

// Tells what the user should be able to read besides the page, and waits for nothing. It is logged as
// messages are.
void notice(const Workspace& w, std::string_view text);

}  // namespace vorn
