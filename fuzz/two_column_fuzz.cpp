// The conversion of two-column files: TRW.fil and what it names, in a program that has another store loaded.
//
// Input: parts, cut at lines of "%%" alone. The first is TRW.fil, the next three are the files a.trw, b.trw
// and d/c.trw.
#include <array>
#include <vector>

#include "event_player.h"
#include "fresh_workspace.h"
#include "fuzz_folder.h"
#include "loading/two_column_conversion.h"
#include "menus/pair_ready.h"
#include "plot/screen.h"
#include "round_trip.h"
#include "small_store.h"
#include "target.h"
#include "walk/invariants.h"

namespace vorn::fuzz {
namespace {

constexpr std::array names = {"TRW.fil", "a.trw", "b.trw", "d/c.trw"};

struct Bench {
  FuzzFolder folder{tiny_store()};
  FreshWorkspace fresh{start_program};
};

void lay_out(const FuzzFolder& folder, const std::vector<std::string_view>& parts) {
  folder.clear();
  for (std::size_t k = 0; k < names.size() && k < parts.size(); ++k) {
    if (k == 0)
      folder.write(names[k], kept_inside(parts[k]));
    else
      folder.write(names[k], parts[k]);
  }
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  static Bench bench;
  lay_out(bench.folder, parts_of(as_text(data, size)));
  ConfirmingScreen screen;
  Workspace& w = bench.fresh.start(screen);
  read_trw(w);

  WalkState state{.undated_records = true, .any_widths = true, .store_replaced = true};
  must_be_empty(broken_invariant(w, state));
  // Then the menus are entered: all that is derived is made anew.
  try {
    state.pair_set = set_pair(w);
  } catch (const ProgramEnd& end) {
    must_hold(end.reason() == EndReason::cannot_go_on, "only a chronology too long ends the program here");
    return 0;
  }
  state.store_replaced = false;
  must_be_empty(broken_invariant(w, state));
  write_and_read_again(w, size);
  return 0;
}
