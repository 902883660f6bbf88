// What the graph and the lists show, and how.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vorn {

// Years come from files and may be anything that 32 bits hold: what is reckoned beyond is held at their ends.
constexpr std::int32_t held_year(std::int64_t year) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(year, Limits::min(), Limits::max()));
}

struct View {
  // The only two that set the years shown and their scale, so that ls = fs + sl - 1 and scx = 2500 / sl.
  void show_from(std::int64_t first) {
    fs = held_year(first);
    ls = held_year(first + sl - 1);
  }
  void show_width(std::int32_t years) {
    sl = years;
    scx = 2500.0 / sl;
    show_from(fs);
  }

  std::int32_t sl = 100;         // years across the graph
  std::int32_t fs = 0, ls = 99;  // first and last year shown
  double scx = 25.0;             // page units a year
  double scy = -140.0 / 3.0;     // page units a row of the editor
  bool lineon = true;            // curves (rather than skeleton)
  bool indon = true;             // indices (rather than ring widths)
  std::int32_t sccc = 0;         // names scrolled off the top of a list
  bool chok = true;              // which highlight colours a list uses
};

}  // namespace vorn
