#include "graphs/year_labels.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

constexpr double gap = 20;  // page units between two labels

double widest_label(const View& view, int height) {
  const auto width = [height](std::int32_t year) {
    return text_width(std::to_string(year), height, Font::arial);
  };
  return std::max(width(view.fs), width(view.ls));
}

}  // namespace

YearLabels thinned_year_labels(const View& view, int height) {
  const double room = widest_label(view, height) + gap;
  double decade = 10, step = decade;
  int ticks = 10;
  while (step * view.scx < room) {
    // 10, 20, 50, 100: ticks at every 1, 5, 10 and 10 years.
    if (step == decade) {
      step = 2 * decade, ticks = 4;
    } else if (step == 2 * decade) {
      step = 5 * decade, ticks = 5;
    } else {
      step = decade *= 10, ticks = 10;
    }
  }
  return {step * std::ceil(view.fs / step), step, ticks};
}

}  // namespace vorn
