// The analysis settings, set by init_start, and what is done carefully.
#pragma once

#include <cstdint>

#include "workspace/careful.h"
#include "workspace/layout.h"

namespace vorn {

// What a chronology is written as.
enum class ChronologyOutput : std::uint8_t { none, index, column };

struct Settings {
  std::int32_t ss = 32;    // spline: period in years at which half of the amplitude passes
  std::int32_t jpr = 11;   // highest order of the autoregressive model
  bool splineon = true;    // detrend by the spline
  bool aron = true;        // prewhiten
  bool logon = true;       // take logarithms
  std::int32_t seg = 50;   // segment length, years
  std::int32_t olap = 25;  // lag table: segments step by seg - olap; correlation report: they step by olap

  // What is written, as the start menu's buttons show.
  Layout raw_output = Layout::tucson_raw;                 // "Save Raw"
  ChronologyOutput crn_output = ChronologyOutput::index;  // "Save Crn"

  Careful careful;  // which stays as it is set before the start
};

}  // namespace vorn
