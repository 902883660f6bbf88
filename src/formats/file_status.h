// What follows every file operation whose failure, once told, was to end the program.
#pragma once

#include <string_view>

#include "records/text_file.h"
#include "toolkit/messages.h"
#include "workspace/vorndata.h"

namespace vorn {

// Keeps `status` as the status of the last file operation and tells it when it is not 0, under `label` and
// `file`.
//
// Ends the program when io_err says that there was an error. Deliberate: [goes-on] it never does, so that
// whatever the failed operation left is gone on with.
void told_or_end(Workspace& w, int status, std::string_view label, std::string_view file);

// Closes an input. Its failure is told under "Close"; so is that of the operating system in `untold`, the
// status of a read that has no message of its own.
void close_told(Workspace& w, TextInput& file, std::string_view name, int untold = status::ok);

}  // namespace vorn
