// What readers and writers are given beside the store, and how they tell what becomes of each operation.
#pragma once

#include <cstdint>
#include <string_view>

#include "records/text_file.h"
#include "records/troubles.h"
#include "workspace/careful.h"
#include "workspace/names.h"

namespace vorn {

// A file to be read.
struct Reading {
  Files& files;           // where it lies
  std::string_view file;  // its name
  int header_lines;       // before its first line of data (Tucson layouts)
  Troubles& troubles;
  Careful careful = {};  // what is not read in the usual way
};

// A file that is being written.
struct Writing {
  std::string_view file;  // its name
  TextOutput& out;
  Troubles& troubles;
  Careful careful = {};  // what is not written in the usual way
};

// Each tells `status` under `label` unless it is ok, and answers it, as told() of records/troubles.h does.
// Deliberate: [goes-on] whatever a failed operation left is gone on with.
//
// Of a read, with line and column; `series` is the one at hand.
Status told_read(const Reading& reading, const TextInput& input, Status status, std::string_view label,
                 const Name& series = {});
// Of a line written, under the name of its series.
Status told_write(const Writing& writing, Status status, std::string_view label, const Name& series);

// What a line may hold and yet be empty: blanks, tabs and Ctrl-Z.
inline constexpr std::string_view blank_characters = " \t\x1a";

// Whether nothing else stands on a line.
bool is_blank_line(std::string_view line);

// Tells plain words; `line` is where the reader is.
void tell_words(const Reading& reading, std::string_view words, std::int64_t line = 0);

// Closes an input. Its failure is told under "Close"; so is that of the operating system in `untold`, the
// status of a read that has no message of its own. Answers what there was to tell.
Status close_told(const Reading& reading, TextInput& input, Status untold = status::ok);

}  // namespace vorn
