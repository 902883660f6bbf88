#include "graphs/skeleton_graph.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "graphs/series_graph.h"
#include "graphs/skeleton.h"
#include "plot/font_metrics.h"
#include "plot/plot.h"

namespace vorn {
namespace {

using Years = std::int64_t;

constexpr Rectangle graph = {200, 450, 2700, 1300};
constexpr int middle = (graph.y1 + graph.y2) / 2;
constexpr int letter_height = 20;  // page units
constexpr double bar_width = 0.3;  // years
// Page units a year; with less bars are lines, and letters would stand under their bars, unread.
constexpr double least_for_width = 12, least_for_letters = 4;

bool has_letters(const Workspace& w) {
  return w.scx >= least_for_letters;
}

// A series from its first year that can be seen on, with its neighbours on both sides.
struct Stretch {
  Years first, last;  // years drawn
  Years from;         // the year of values[0]
  std::vector<double> values;
  std::unique_ptr<bool[]> present;
};

Stretch stretch_of(const Workspace& w, int k) {
  Stretch part{std::max<Years>(w.fs, w.fy(k)), std::min<Years>(w.ls, w.ly(k)), 0, {}, {}};
  if (part.last < part.first) return part;
  const Pool<double>& source = drawn_values(w, k);
  part.from = std::max<Years>(part.first - skeleton_neighbours, w.fy(k));
  const Years end = std::min<Years>(part.last + skeleton_neighbours, w.ly(k));
  const auto count = static_cast<std::size_t>(end - part.from + 1);
  part.present = std::make_unique<bool[]>(count);
  for (std::size_t j = 0; j < count; ++j) {
    const Years place = w.ad(k) + (part.from - w.fy(k)) + static_cast<Years>(j);
    const bool is_held = place >= 1 && place <= source.size();
    part.values.push_back(is_held ? source(static_cast<int>(place)) : 0);
    part.present[j] = is_held && w.xok(static_cast<int>(place));
  }
  return part;
}

// The letters of one series beside the middle line, on its own side. One that would lie on the one before is
// left out.
class Letters {
 public:
  Letters(const Workspace& workspace, bool up)
      : w(workspace), y_(up ? middle - letter_height - gap : middle + gap) {}

  void draw(std::string_view letter, Years year) {
    const double x = graph.x1 + (static_cast<double>(year - w.fs) + 0.5) * w.scx -
                     text_width(letter, letter_height, Font::arial) / 2;
    if (x < free_from_) return;
    w.plot.messag(letter, static_cast<int>(std::lround(x)), y_);
    free_from_ = x + room;
  }

 private:
  static constexpr int gap = 8, room = 18;
  const Workspace& w;
  int y_;
  double free_from_ = 0;
};

void draw_bar(const Workspace& w, double year, double length) {
  if (w.scx < least_for_width) return w.plot.rline(year, 0, year, length);
  w.plot.rlrec(year - bar_width / 2, std::max(length, 0.0), bar_width, std::abs(length));
}

}  // namespace

void plot_skeleton(Workspace& w, int k) {
  const Stretch part = stretch_of(w, k);
  const bool up = k == w.nd + 1;
  const auto marks = skeleton(part.values, {part.present.get(), part.values.size()});
  Letters letters(w, up);
  for (Years year = part.first; year <= part.last; ++year) {
    const SkeletonMark mark = marks[static_cast<std::size_t>(year - part.from)];
    if (mark.kind == SkeletonMark::Kind::narrow) {
      draw_bar(w, static_cast<double>(year), up ? mark.length : -mark.length);
    } else if (mark.kind != SkeletonMark::Kind::none && has_letters(w)) {
      letters.draw(mark.kind == SkeletonMark::Kind::wide ? "b" : "m", year);
    }
  }
}

void explain_skeleton(const Workspace& w) {
  w.plot.setclr(colour::light_grey);
  const std::string letters = has_letters(w) ? "; b: wide, m: missing" : "";
  w.plot.messag("Bars: narrow rings, 10 the narrowest" + letters, graph.x1, graph.y1 - 34);
}

}  // namespace vorn
