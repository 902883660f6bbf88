// Whole sessions: the first byte takes one of the small stores, the others are a user (see event_player.h).
// The program is then started once more, on the files that the session has left.
#include <array>
#include <string>

#include "event_player.h"
#include "fresh_workspace.h"
#include "fuzz_folder.h"
#include "menus/main_program.h"
#include "small_store.h"
#include "target.h"

namespace vorn::fuzz {
namespace {

struct Bench {
  FuzzFolder folder;
  FreshWorkspace fresh;
  std::array<SmallStore, 4> stores{mixed_store(), tiny_store(), odd_store(), crowded_store()};
};

void run(Workspace& w, EventPlayer& user) {
  user.begin(w);
  try {
    run_program(w);
  } catch (const ProgramEnd&) {  // of whatever kind
  }
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  static Bench bench;
  Bytes bytes(as_text(data, size));
  const SmallStore& store = bench.stores.at(static_cast<std::size_t>(bytes.byte()) % 4);
  bench.folder.clear();
  bench.folder.write_store(store);
  const WalkState state{.undated_records = store.undated_records};
  EventPlayer user(bytes.rest(), state);
  run(bench.fresh.start(user), user);

  const std::string escape(1, EventPlayer::escape);  // passes over what is told at start-up
  EventPlayer next_day(escape, state);
  run(bench.fresh.start(next_day), next_day);
  return 0;
}
