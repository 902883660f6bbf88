// vorn_replay: the same program without a window, driven by a script of clicks and keys.

#include <iostream>

#include "apps/replay.h"
#include "apps/whole_program.h"

namespace {

constexpr const char* usage =
    "usage: vorn_replay SCRIPT    (- for standard input; statements: click help press key type enter page "
    "expect refuse undo redo panel pick)";
constexpr int invalid_script = 2;

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && vorn::answered(argv[1], "vorn_replay", usage)) return 0;
  if (argc == 2) return vorn::replay(argv[1], "vorn_replay");
  std::cerr << usage << '\n';
  return invalid_script;
}
