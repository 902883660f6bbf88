// Copying a text file to which records will be added.
#pragma once

#include "records/files.h"

namespace vorn {

// Copies all lines of `from` to `to`, so that new ones can follow: a Ctrl-Z (or several) at the end is left
// out, with its line where it has one to itself, and a last line without an end gets one.
Status copy_lines(ByteSource& from, ByteSink& to);

}  // namespace vorn
