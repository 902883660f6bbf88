// How far the work on many files is, for whoever waits at a terminal.
#pragma once

#include <cstddef>
#include <string>

namespace vorn {

// One line on standard error, written again and again and gone at the end. Blanks wipe it out: a terminal is
// sent no escape sequences and no colours.
class Progress {
 public:
  // Shows nothing where standard error is no terminal, where rows that come on standard output are shown on
  // one too, or for a single file.
  Progress(std::size_t files, bool rows_come);
  ~Progress() { wipe(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void at(std::size_t files_done);
  // Before anything else is written to standard error.
  void wipe();

 private:
  std::size_t files_, width_ = 0;
  bool is_shown_;
};

}  // namespace vorn
