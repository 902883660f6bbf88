// VORNosx: the desktop program. It works on the files of the current directory.

#include <exception>
#include <iostream>

#include "apps/whole_program.h"
#include "platform/desktop.h"

namespace {

constexpr const char* usage = "usage: VORNosx    (in the folder that holds Vorn.fil)";
constexpr int wrong_usage = 2;

int run_or_tell(vorn::Screen& screen) {
  try {
    return vorn::run_whole_program(screen);
  } catch (const std::exception& failure) {
    std::cerr << "VORNosx: cannot go on: " << failure.what() << '\n';
    return 4;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 1) return vorn::run_in_window(run_or_tell);
  if (argc == 2 && vorn::answered(argv[1], "VORNosx", usage)) return 0;
  std::cerr << usage << '\n';
  return wrong_usage;
}
