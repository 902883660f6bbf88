#include "apps/progress.h"

#include <unistd.h>

#include <iostream>

namespace vorn {
namespace {

// Whether rows written to standard output would come between.
bool is_free(bool rows_come) {
  return isatty(STDERR_FILENO) == 1 && !(rows_come && isatty(STDOUT_FILENO) == 1);
}

}  // namespace

Progress::Progress(std::size_t files, bool rows_come)
    : files_(files), is_shown_(files > 1 && is_free(rows_come)) {
  at(0);
}

void Progress::at(std::size_t files_done) {
  if (!is_shown_) return;
  const std::string line = "vorn: " + std::to_string(files_done) + " of " + std::to_string(files_) + " files";
  std::cerr << '\r' << line << std::flush;
  width_ = line.size();
}

void Progress::wipe() {
  if (width_ == 0) return;
  std::cerr << '\r' << std::string(width_, ' ') << '\r' << std::flush;
  width_ = 0;
}

}  // namespace vorn
