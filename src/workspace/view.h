// What the graph and the lists show, and how.
#pragma once

#include <cstdint>

namespace vorn {

struct View {
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
