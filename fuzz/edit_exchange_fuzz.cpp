// Edit.raw: the editor's exchange file read back over a small store.
//
// Input: a byte for the number of series chosen, one to six, so many bytes for which; Edit.raw.
#include <string>
#include <string_view>

#include "editing/raw_editor.h"
#include "event_player.h"
#include "fresh_workspace.h"
#include "fuzz_folder.h"
#include "menus/pair_ready.h"
#include "plot/screen.h"
#include "round_trip.h"
#include "small_store.h"
#include "target.h"
#include "walk/invariants.h"

namespace vorn::fuzz {
namespace {

struct Bench {
  FuzzFolder folder{mixed_store()};
  FreshWorkspace fresh{start_program};
};

void choose_series(Workspace& w, Bytes& bytes) {
  w.chs = 1 + bytes.byte() % 6;
  for (int k = 1; k <= w.chs; ++k) w.chc(k) = 1 + bytes.byte() % w.nc;
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  static Bench bench;
  Bytes bytes(as_text(data, size));
  ConfirmingScreen screen;
  Workspace& w = bench.fresh.start(screen);
  choose_series(w, bytes);
  bench.folder.write("Edit.raw", bytes.rest());
  const int cores = w.nc;
  edit_read(w);
  must_hold(w.nc == cores, "no core comes or goes");
  WalkState state;
  must_be_empty(broken_invariant(w, state));
  edit_setup(w);
  edit_disp(w);
  try {
    state.pair_set = set_pair(w);
  } catch (const ProgramEnd& end) {
    must_hold(end.reason() == EndReason::cannot_go_on, "only a chronology too long ends the program here");
    return 0;
  }
  must_be_empty(broken_invariant(w, state));
  write_and_read_again(w, size);
  return 0;
}
