// Start-up on a list of up to four files of any layout, and what can be done with what they leave.
//
// Input: parts, cut at lines of "%%" alone. The first four are the files. A fifth that is not empty is the
// list, in place of one that names the files; a sixth is a user (see event_player.h). A seventh is what is
// done carefully: names of mends with commas in between; where one is none everything is.
#include <array>
#include <string>

#include "event_player.h"
#include "fresh_workspace.h"
#include "fuzz_folder.h"
#include "menus/main_program.h"
#include "round_trip.h"
#include "target.h"

namespace vorn::fuzz {
namespace {

constexpr std::array names = {"one.rwl", "two.fh", "three.rwm", "four.crn"};
constexpr std::size_t list_part = names.size(), user_part = list_part + 1, careful_part = user_part + 1;

struct Bench {
  FuzzFolder folder;
  FreshWorkspace fresh;
};

void lay_out(const FuzzFolder& folder, const std::vector<std::string_view>& parts) {
  std::string list;
  folder.clear();
  for (std::size_t k = 0; k < names.size() && k < parts.size(); ++k) {
    folder.write(names[k], parts[k]);
    list += std::string(names[k]) + "\n";
  }
  if (parts.size() > list_part && !parts[list_part].empty()) list = kept_inside(parts[list_part]);
  folder.write("Vorn.fil", list);
}

Careful careful_in(const std::vector<std::string_view>& parts) {
  std::string wrong;
  if (parts.size() <= careful_part) return {};
  return careful_of(trimmed(parts[careful_part]), wrong).value_or(Careful::everything());
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  static Bench bench;
  const auto parts = parts_of(as_text(data, size));
  lay_out(bench.folder, parts);

  // Read TRW ends the program when its list is missing: it is, so that nothing is written by names out of it.
  const auto actions =
      parts.size() > user_part ? parts[user_part] : std::string_view(&EventPlayer::escape, 1);
  EventPlayer user(actions, {.undated_records = true, .any_widths = true});
  Workspace& w = bench.fresh.start(user);
  w.careful = careful_in(parts);
  user.begin(w);
  try {
    run_program(w);
  } catch (const ProgramEnd& end) {
    if (end.reason() != EndReason::closed) return 0;
  }
  if (parts.size() > list_part || w.nraw < 1 || w.rftype(1) == Layout::tucson_index) return 0;

  ConfirmingScreen screen;
  Workspace& again = bench.fresh.start(screen);
  try {
    run_program(again);
  } catch (const ProgramEnd&) {
  }
  write_and_read_again(again, size);
  return 0;
}
