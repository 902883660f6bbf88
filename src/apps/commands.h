// The verbs of `vorn` that do not go through files one by one as those of batch/verbs.h do. Each adds itself
// to `app` and, where it is the one that was typed, puts what it does into `command`.
#pragma once

#include <CLI/CLI.hpp>

#include "apps/vorn_request.h"

namespace vorn {

// diff BEFORE AFTER: what became of the cores of a file.
void add_diff(CLI::App& app, Command& command);

// convert FILE --to LAYOUT: its ring widths in another layout.
void add_convert(CLI::App& app, Command& command);

// save ORIGINAL CORRECTED: corrected cores, put back into the file that they come from.
void add_save(CLI::App& app, Command& command);

// replay SCRIPT: the whole program, driven by a script.
void add_replay(CLI::App& app, Command& command);

}  // namespace vorn
