#include "graphs/series_graph.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include "base/loud_failure.h"
#include "graphs/correlation_strip.h"
#include "graphs/skeleton_graph.h"
#include "graphs/year_labels.h"
#include "plot/plot.h"
#include "toolkit/buttons.h"
#include "toolkit/drawing.h"
#include "workspace/last_core.h"

namespace vorn {
namespace {

constexpr double top_of_axis = 3.0;  // standard deviations
constexpr double lower_strip_top = -2.0;
constexpr int label_height = 20;
constexpr int fewest_drawn = 3;          // visible years
constexpr int fewest_standardised = 20;  // visible years; with fewer the statistics are taken over sl years

// Years come from files and may be anything that 32 bits hold; sums of them are formed in 64.
using Years = std::int64_t;

bool shows_skeleton(const Workspace& w) {
  return !w.lineon && w.careful.has(Mend::skeleton);
}

// Page y is that of the curves' axis times this.
double vertical_scale(const Workspace& w) {
  return shows_skeleton(w) ? skeleton_top / top_of_axis : 1;
}

YearLabels year_labels(const Workspace& w) {
  if (w.careful.has(Mend::thin_labels)) return thinned_year_labels(w, label_height);
  // Deliberate: [labels-before-0] the division cuts towards zero: before year 0 labels begin up to two
  // decades into the view.
  return {10.0 * (w.fs / 10 + 1), 10, 10};
}

void draw_axes(const Workspace& w) {
  const YearLabels labels = year_labels(w);
  const double left = w.fs - 0.5, right = w.ls + 0.5;
  w.plot.axspos(200, 1300);
  w.plot.axslen(2500, 850);
  w.plot.height(label_height);
  w.plot.labdig(-1, 'X');
  w.plot.ticks(labels.ticks, 'X');
  w.plot.ticks(1, 'Y');
  w.plot.name("Years", 'X');
  w.plot.setclr(colour::light_grey);
  if (shows_skeleton(w)) {
    w.plot.labdig(-1, 'Y');
    w.plot.name("Narrow rings", 'Y');
    w.plot.graf(left, right, labels.first, labels.step, -skeleton_top, skeleton_top, -10, 5);
  } else {
    w.plot.labdig(1, 'Y');
    w.plot.name("S.Dev", 'Y');
    w.plot.graf(left, right, labels.first, labels.step, -top_of_axis, top_of_axis, -top_of_axis, 1);
  }
  w.plot.grid(1, 1);
}

void draw_picked_year(const Workspace& w) {
  if (!w.b(button::insertion_ok).on && !w.b(button::deletion_ok).on) return;
  const double scale = vertical_scale(w);
  w.plot.setclr(colour::light_cyan);
  w.plot.rlrec(w.insdel - 0.5, scale * (w.ul ? top_of_axis : lower_strip_top), 1, scale);
}

// Every second year marked in a strip, so that years can be counted with the mouse in hand.
void draw_year_marks(const Workspace& w, ButtonNumber zone, Colour colour, double top) {
  if (!w.b(zone).on) return;
  const double scale = vertical_scale(w);
  w.plot.setclr(colour);
  for (Years year = w.fs; year <= w.ls; year += 2) {
    w.plot.rlrec(static_cast<double>(year) - 0.5, scale * top, 1, scale);
  }
}

struct Range {
  Years first, last;  // positions within the series, from 1
};

// The positions whose values give mean and standard deviation.
Range statistics_range(const Workspace& w, int k, Range visible) {
  if (visible.last - visible.first + 1 >= fewest_standardised) return visible;
  const Years length = Years{w.ly(k)} - w.fy(k) + 1;
  Range range = visible;
  if (visible.first < 2 && visible.last < length) {
    range.last = std::min(w.sl + visible.first - 1, length);
  } else if (visible.first >= 2) {
    range.first = std::max<Years>(visible.last - w.sl + 1, 1);
  }
  return range;
}

// What a pool holds at a place that a formula leads to.
template <class T>
T at(const Pool<T>& pool, Years place) {
  return place >= 1 && place <= pool.size() ? pool(static_cast<int>(place)) : T{};
}

struct Scale {
  double mean, deviation;
};

// Of the present values; not numbers where there are too few of them.
Scale scale_of(const Workspace& w, const Pool<double>& source, int k, Range range) {
  const auto for_each_present = [&](auto use) {
    for (Years p = range.first; p <= range.last; ++p) {
      const Years place = w.ad(k) + p - 1;
      if (at(w.xok, place)) use(at(source, place));
    }
  };
  int n = 0;
  double sum = 0, squares = 0;
  for_each_present([&](double value) { ++n, sum += value; });
  const double mean = sum / n;
  for_each_present([&](double value) { squares += (value - mean) * (value - mean); });
  return {mean, std::sqrt(squares / (n - 1))};
}

}  // namespace

void plot_graph(Workspace& w) {
  setupbuttons(w);
  cor_graph(w);
  draw_axes(w);
  draw_picked_year(w);
  draw_year_marks(w, button::upper_plot, colour::light_blue, top_of_axis);
  draw_year_marks(w, button::lower_plot, colour::light_red, lower_strip_top);
  w.plot.height(label_height);
  const auto draw_series = shows_skeleton(w) ? plot_skeleton : plotlin;
  w.plot.setclr(colour::light_blue);
  draw_series(w, w.nd + 1);
  w.plot.setclr(colour::light_red);
  draw_series(w, w.nd + 2);
  const bool picking = w.b(button::upper_plot).on || w.b(button::lower_plot).on;
  if (shows_skeleton(w) && !picking) explain_skeleton(w);
  w.plot.endgrf();
  w.plot.setclr(colour::ink);
  w.plot.height(25);
}

const Pool<double>& drawn_values(const Workspace& w, int k) {
  // Deliberate: [last-core-indices] ring widths are drawn of a core alone, and of the last core only
  // carefully.
  const bool widths = !w.indon && is_treated_as_core(w.chc(k - w.nd), w, w.careful);
  return widths ? w.x : w.ax;
}

void plotlin(Workspace& w, int k) {
  const int first = std::max(w.fs, w.fy(k));
  const int last = std::min(w.ls, w.ly(k));
  const Years m = Years{last} - first + 1;
  if (m < fewest_drawn) return;
  const Pool<double>& source = drawn_values(w, k);
  const Range visible{Years{first} - w.fy(k) + 1, Years{last} - w.fy(k) + 1};
  const Scale scale = scale_of(w, source, k, statistics_range(w, k, visible));
  const auto count = static_cast<std::size_t>(m);
  const auto present = std::make_unique<bool[]>(count);
  const std::span<double> values = w.wk2.range(1, static_cast<int>(m));
  for (std::size_t j = 0; j < count; ++j) {
    const Years place = w.ad(k) + visible.first - 1 + static_cast<Years>(j);
    values[j] = (at(source, place) - scale.mean) / scale.deviation;
    present[j] = at(w.xok, place);
  }
  line_miss(w, first, values, {present.get(), count});
}

void line_miss(Workspace& w, int first, std::span<const double> values, std::span<const bool> present) {
  VORN_ASSERT(values.size() == present.size());
  const std::size_t n = values.size();
  const std::span<double> years = w.wk1.range(1, static_cast<int>(n));
  for (std::size_t i = 0; i < n; ++i) years[i] = first + static_cast<double>(i);
  if (std::all_of(present.begin(), present.end(), [](bool ring) { return ring; })) {
    w.plot.curve(years, values);
    return;
  }
  for (std::size_t i = 1; i < n; ++i) {
    // Deliberate: [lone-ring] a ring between two missing ones is not drawn at all.
    if (present[i - 1] && present[i]) w.plot.rline(years[i - 1], values[i - 1], years[i], values[i]);
  }
}

}  // namespace vorn
