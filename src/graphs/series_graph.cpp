#include "graphs/series_graph.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "graphs/correlation_strip.h"
#include "plot/plot.h"
#include "toolkit/buttons.h"
#include "toolkit/drawing.h"

namespace vorn {
namespace {

constexpr double top_of_axis = 3.0;  // standard deviations
constexpr double lower_strip_top = -2.0;
constexpr int fewest_standardised = 20;  // visible years; with fewer the statistics are taken over sl years

void draw_axes(Workspace& w) {
  w.plot.axspos(200, 1300);
  w.plot.axslen(2500, 850);
  w.plot.height(20);
  w.plot.labdig(-1, 'X');
  w.plot.labdig(1, 'Y');
  w.plot.ticks(10, 'X');
  w.plot.ticks(1, 'Y');
  w.plot.name("Years", 'X');
  w.plot.name("S.Dev", 'Y');
  w.plot.setclr(colour::light_grey);
  w.plot.graf(w.fs - 0.5, w.ls + 0.5, 10 * (w.fs / 10 + 1), 10, -top_of_axis, top_of_axis, -top_of_axis, 1);
  w.plot.grid(1, 1);
}

void draw_picked_year(Workspace& w) {
  if (!w.b(button::insertion_ok).on && !w.b(button::deletion_ok).on) return;
  w.plot.setclr(colour::light_cyan);
  w.plot.rlrec(w.insdel - 0.5, w.ul ? top_of_axis : lower_strip_top, 1, 1);
}

// Every second year marked in a strip, so that years can be counted with the mouse in hand.
void draw_year_marks(Workspace& w, int zone, int colour, double top) {
  if (!w.b(zone).on) return;
  w.plot.setclr(colour);
  for (int year = w.fs; year <= w.ls; year += 2) w.plot.rlrec(year - 0.5, top, 1, 1);
}

struct Range {
  int first, last;  // positions within the series, from 1
};

// The positions whose values give mean and standard deviation.
Range statistics_range(const Workspace& w, int k, int first_visible, int last_visible) {
  Range range{first_visible - w.fy(k) + 1, last_visible - w.fy(k) + 1};
  if (range.last - range.first + 1 >= fewest_standardised) return range;
  const int length = w.ly(k) - w.fy(k) + 1;
  if (range.first < 2 && range.last < length) {
    range.last = std::min(w.sl + range.first - 1, length);
  } else if (range.first >= 2) {
    range.first = std::max(range.last - w.sl + 1, 1);
  }
  return range;
}

struct Scale {
  double mean, deviation;
};

Scale scale_of(const Workspace& w, const Pool<double>& source, int k, Range range) {
  int n = 0;
  double sum = 0;
  for (int p = range.first; p <= range.last; ++p) {
    if (!w.xok.at(w.ad(k) + p - 1)) continue;
    ++n;
    sum += source.at(w.ad(k) + p - 1);
  }
  const double mean = sum / n;
  double squares = 0;
  for (int p = range.first; p <= range.last; ++p) {
    if (!w.xok.at(w.ad(k) + p - 1)) continue;
    const double distance = source.at(w.ad(k) + p - 1) - mean;
    squares += distance * distance;
  }
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
  w.plot.height(20);
  w.plot.setclr(colour::light_blue);
  plotlin(w, w.nd + 1);
  w.plot.setclr(colour::light_red);
  plotlin(w, w.nd + 2);
  w.plot.endgrf();
  w.plot.setclr(colour::ink);
  w.plot.height(25);
}

void plotlin(Workspace& w, int k) {
  const int first = std::max(w.fs, w.fy(k));
  const int last = std::min(w.ls, w.ly(k));
  const int m = last - first + 1;
  if (m <= 2) return;
  // Ring widths are drawn of a core alone, and of the last core neither: the strict comparison is meant so.
  const bool widths = !w.indon && w.chc(k - w.nd) < w.nc;
  const Pool<double>& source = widths ? w.x : w.ax;
  const Scale scale = scale_of(w, source, k, statistics_range(w, k, first, last));
  const auto present = std::make_unique<bool[]>(static_cast<std::size_t>(m));
  const std::span<double> values = w.wk2.range(1, m);
  for (int j = 0; j < m; ++j) {
    const int p = w.ad(k) + first - w.fy(k) + j;
    values[j] = (source.at(p) - scale.mean) / scale.deviation;
    present[j] = w.xok.at(p);
  }
  line_miss(w, first, values, {present.get(), static_cast<std::size_t>(m)});
}

void line_miss(Workspace& w, int first, std::span<const double> values, std::span<const bool> present) {
  const int n = static_cast<int>(values.size());
  const std::span<double> years = w.wk1.range(1, n);
  for (int i = 0; i < n; ++i) years[i] = first + i;
  if (std::all_of(present.begin(), present.end(), [](bool ring) { return ring; })) {
    w.plot.curve(years, values);
    return;
  }
  for (int i = 1; i < n; ++i) {
    if (present[i - 1] && present[i]) w.plot.rline(years[i - 1], values[i - 1], years[i], values[i]);
  }
}

}  // namespace vorn
