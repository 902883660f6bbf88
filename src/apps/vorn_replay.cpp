// vorn_replay: the same program without a window, driven by a script of clicks and keys.

#include <iostream>

#include "apps/replay.h"
#include "apps/whole_program.h"

namespace {

constexpr const char* usage =
    "usage: vorn_replay SCRIPT    (- for standard input; statements: click help press key type enter page "
    "expect refuse undo redo panel pick careful)\n"
    "       vorn_replay --careful[=NAME,...] SCRIPT    mends what is unsafe in the usual way, or some of it";
constexpr int invalid_script = 2;

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && vorn::answered(argv[1], "vorn_replay", usage)) return 0;
  vorn::Careful careful;
  if (argc == 3 && !vorn::careful_option(argv[1], "vorn_replay", careful)) return invalid_script;
  if (argc == 2 || argc == 3) return vorn::replay(argv[argc - 1], "vorn_replay", careful);
  std::cerr << usage << '\n';
  return invalid_script;
}
