// Which of the layouts a file is read with, decided from its first lines.
#pragma once

#include <cstdint>
#include <string_view>

#include "records/files.h"
#include "records/status.h"
#include "records/troubles.h"
#include "workspace/layout.h"

namespace vorn {

// What was decided about a file, and why.
struct Recognition {
  Layout layout = Layout::not_recognised;
  int header_lines = 0;        // before the line that decided, 0 to 3 (Tucson layouts; otherwise 0)
  std::int64_t line = 0;       // the line that decided, from 1; 0 where none did
  std::string_view test;       // the test that it passed, in words
  Status status = status::ok;  // of the last operation on the file
};

// Recognises the layout of a file by its first four lines, each of which is put to the tests of the layouts
// in the order of their list (layouts.h); the first test that a line passes decides.
//
// A file that cannot be opened or read is told as "Open" or "Read" and is not recognised.
Recognition find_rftyp(Files& files, std::string_view file, Troubles& troubles);

}  // namespace vorn
