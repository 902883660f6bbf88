// Help.prn: any bytes as the help file, asked for from two places.
#include <algorithm>
#include <sstream>

#include "event_player.h"
#include "fresh_workspace.h"
#include "fuzz_folder.h"
#include "plot/page.h"
#include "target.h"
#include "toolkit/button_table.h"
#include "toolkit/help.h"

namespace vorn::fuzz {
namespace {

struct Bench {
  FuzzFolder folder;
  FreshWorkspace fresh{[](Workspace& w) { set_up_graph(w); }};
};

constexpr int most_records = 500, longest_text = 80;

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  static Bench bench;
  bench.folder.write("Help.prn", as_text(data, size));
  for (const int y : {0, 1'900}) {
    ConfirmingScreen screen;
    Workspace& w = bench.fresh.start(screen);
    w.msx = 300;
    w.msy = y;
    vorn_help(w);
    must_hold(screen.messages() <= most_records, "no more is told than there are records");
    const auto& marks = w.plot.page().marks();
    const auto lines = std::count(data, data + size, '\n') + std::count(data, data + size, '\r');
    must_hold(marks.size() <= static_cast<std::size_t>(lines) + 4 + 2 * most_records,
              "no more is drawn than there are lines");
    for (const Mark& mark : marks) {
      must_hold(mark.kind != Mark::Kind::text || mark.writing.size() <= longest_text,
                "no text is longer than a record has it");
    }
    std::ostringstream page;
    w.plot.page().write_text(page);
    must_hold(static_cast<std::size_t>(std::ranges::count(page.view(), '\n')) == marks.size(),
              "each mark is one line of the page's text");
  }
  return 0;
}
