#include "round_trip.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <string>
#include <vector>

#include "loading/saving.h"
#include "loading/startup.h"
#include "plot/screen.h"
#include "target.h"
#include "toolkit/buttons.h"

namespace vorn::fuzz {
namespace {

struct Ring {
  double width = 0;
  bool present = false;
};

struct Core {
  Name name;
  std::int32_t first_year = 0, last_year = 0;
  std::vector<Ring> rings;
};

std::vector<Core> cores_of(const Workspace& w) {
  std::vector<Core> all;
  for (int i = 1; i <= w.nc; ++i) {
    Core core{w.nam(i), w.fy(i), w.ly(i), {}};
    for (int k = 0; k < w.yr(i); ++k) core.rings.push_back({w.x(w.ad(i) + k), w.xok(w.ad(i) + k)});
    all.push_back(core);
  }
  return all;
}

// What every layout can hold: a name of letters and digits, years of four digits that agree with the length
// (of a Heidelberg record with several lengths they need not), no ring that is missing or whose thousandths
// mean something else.
bool fits_all_layouts(const Core& core) {
  const auto years = static_cast<std::int32_t>(core.rings.size());
  return !core.name.blank() && core.first_year >= 1 && core.last_year <= 9'000 && years > 0 &&
         core.last_year == core.first_year + years - 1 &&
         std::ranges::all_of(core.name.trimmed(), [](unsigned char c) { return std::isalnum(c) != 0; }) &&
         std::ranges::all_of(core.rings, [](const Ring& ring) {
           return ring.present && ring.width >= 0.001 && ring.width <= 0.998;
         });
}

bool fit_all_layouts(const std::vector<Core>& cores) {
  for (std::size_t k = 1; k < cores.size(); ++k) {
    if (cores[k].name == cores[k - 1].name) return false;  // in Tucson raw they would be one core
  }
  return !cores.empty() && std::ranges::all_of(cores, fits_all_layouts);
}

// Heidelberg names are written to the right of twelve columns, of which the first eight are read; carefully
// they are not.
Name read_from_heidelberg(const Name& name) {
  return Name("    " + std::string(name.view()));
}

void must_be_same(const std::vector<Core>& written, const std::vector<Core>& read, bool cuts_names) {
  must_hold(read.size() == written.size(), "as many cores are read as were written");
  for (std::size_t i = 0; i < read.size(); ++i) {
    const Name& name = written[i].name;
    must_hold(read[i].name == (cuts_names ? read_from_heidelberg(name) : name), "a core keeps its name");
    must_hold(read[i].first_year == written[i].first_year, "a core keeps its first year");
    must_hold(read[i].rings.size() == written[i].rings.size(), "a core keeps its length");
    for (std::size_t k = 0; k < read[i].rings.size(); ++k) {
      const Ring &now = read[i].rings[k], &before = written[i].rings[k];
      must_hold(now.present && std::abs(now.width - before.width) < 0.000501, "a ring keeps its width");
    }
  }
}

// False when the program ends: years that a layout has no room for come back as others, and may make a
// chronology too long.
bool read_back(Workspace& w) {
  find_rftyp(w);
  try {
    init_raw(w, w.rftype(1));
  } catch (const ProgramEnd& end) {
    must_hold(end.reason() == EndReason::cannot_go_on, "only a chronology too long ends the program here");
    return false;
  }
  return true;
}

}  // namespace

void write_and_read_again(Workspace& w, std::size_t number) {
  const ButtonNumber layout = button::raw_types.at(static_cast<int>(number % 3));
  choose_output(w, w, layout);
  const std::vector<Core> written = cores_of(w);
  w.cf = 1;
  w.cnam(1) = "again.rwl";
  write_raw(w);
  w.cnam(1) = "again.RWW";
  const bool back = read_back(w);
  if (!fit_all_layouts(written)) return;
  must_hold(back, "a store that fits all layouts can be read again");
  must_be_same(written, cores_of(w),
               layout == button::raw_heidelberg && !w.careful.has(Mend::heidelberg_names));
}

}  // namespace vorn::fuzz
