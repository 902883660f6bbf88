// Which years are labelled below the series graph.
#pragma once

#include "workspace/view.h"

namespace vorn {

// Labels stand at first, first + step, ...; ticks to a step.
struct YearLabels {
  double first, step;
  int ticks;
};

// Round years as close to each other as their labels, with digits `height` high, have room for: every 10th,
// 20th, 50th, 100th and so on. The first year shown is labelled too where it is one of them.
YearLabels thinned_year_labels(const View& view, int height);

}  // namespace vorn
