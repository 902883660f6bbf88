// Whole sessions: the first byte takes one of the small stores, the others are a user (see event_player.h).
#include <array>

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

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  static fuzz::Bench bench;
  fuzz::Bytes bytes(fuzz::as_text(data, size));
  const fuzz::SmallStore& store = bench.stores.at(static_cast<std::size_t>(bytes.byte()) % 4);
  bench.folder.clear();
  bench.folder.write_store(store);

  fuzz::EventPlayer user(bytes.rest(), {.undated_records = store.undated_records});
  Workspace& w = bench.fresh.start(user);
  user.begin(w);
  try {
    run_program(w);
  } catch (const ProgramEnd&) {  // of whatever kind
  }
  return 0;
}
