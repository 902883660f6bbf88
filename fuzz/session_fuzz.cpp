// Whole sessions: the first byte takes one of the small stores and says whether everything is done carefully,
// the others are a user (see event_player.h).
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

void run(Workspace& w, EventPlayer& user, const Careful& careful) {
  w.careful = careful;
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
  const auto first = static_cast<std::size_t>(bytes.byte());
  const SmallStore& store = bench.stores.at(first % 4);
  const Careful careful = first / 4 % 2 == 1 ? Careful::everything() : Careful();
  bench.folder.clear();
  bench.folder.write_store(store);
  const WalkState state{.undated_records = store.undated_records};
  EventPlayer user(bytes.rest(), state);
  run(bench.fresh.start(user), user, careful);

  const std::string escape(1, EventPlayer::escape);  // passes over what is told at start-up
  EventPlayer next_day(escape, state);
  run(bench.fresh.start(next_day), next_day, careful);
  return 0;
}
