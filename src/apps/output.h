// What the command line writes and says.
#pragma once

#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace vorn {

// Says something on standard error, behind the name of the program; nothing in it steers a terminal.
void say(const std::string& words);
void say(const std::vector<std::string>& all);

// Standard output, or a file, which is written as a whole or not at all.
class Output {
 public:
  // Standard output where `file` is empty.
  explicit Output(std::string file) : file_(std::move(file)) {}
  std::ostream& stream();
  // Once, and last: brings what was written to where it belongs. Answers `status`, or 4 where that cannot be
  // done, which is said. Who reads no more, as "head" does, has all that he wanted. `failed` is the error
  // number of a write that failed before, 0 where none is known to have.
  int end(int status, int failed = 0);

 private:
  std::string file_;
  std::ostringstream text_;
};

}  // namespace vorn
