#include "graphs/lag_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "plot/plot.h"
#include "records/edit_format.h"
#include "statistics/correlation.h"
#include "toolkit/buttons.h"
#include "toolkit/drawing.h"

namespace vorn {
namespace {

constexpr int left = 300, right = 2610, top = 350;
constexpr int column_width = 110, row_height = 44;
constexpr int lags = 2 * max_lag + 1;
constexpr int row_label_x = 120, lag_label_y = 325;
constexpr std::array<std::string_view, lags> lag_labels = {"-10", " -9", " -8", " -7", " -6", " -5", " -4",
                                                           " -3", " -2", " -1", "  0", " +1", " +2", " +3",
                                                           " +4", " +5", " +6", " +7", " +8", " +9", "+10"};

const EditFormat years_edit{"(2I5)"};
const EditFormat correlation_edit{"(SP,F5.2)"};
const EditFormat length_edit{"(I4)"};
const EditFormat year_edit{"(I6)"};

int column_left(int column) {
  return left + column_width * column;
}
int row_top(int row) {
  return top + row_height * row;
}

int segments_computed(const Workspace& w) {
  int years = 0;
  for (int k = 1; k <= max_segments; ++k) {
    years += w.cyrs(1, k) != -9999;
    years += w.cyrs(2, k) != -9999;
  }
  return years / 2;
}

struct Columns {
  int first, last;
};

// The lags that the chosen series can reach. Deliberate: [reach-as-stored] by its years as stored, wherever
// the screen has shifted it to, and never less than lag 0.
Columns reachable(const Workspace& w, std::int64_t first_year, std::int64_t last_year) {
  const int chosen = w.chc(1) >= 1 && w.chc(1) <= w.nd ? w.chc(1) : w.nd + 1;
  const auto column = [](std::int64_t lag, int lowest, int highest) {
    return static_cast<int>(std::clamp<std::int64_t>(lag + max_lag, lowest, highest));
  };
  return {column(w.fy(chosen) - first_year, 0, max_lag), column(w.ly(chosen) - last_year, max_lag, lags - 1)};
}

// Whether a cell is passed over for its too few pairs: carefully.
bool is_empty(const Workspace& w, int lag, int segment) {
  return w.careful.has(Mend::short_samples) && w.ctab(lag, segment) == not_correlated;
}

// The first one among equals, carefully of those that are shown; none where all are empty.
// Deliberate: [wins-its-row] a cell of too few pairs, which holds 2.0.
std::optional<int> best_column(const Workspace& w, int segment) {
  const bool of_shown = w.careful.has(Mend::short_samples);
  const Columns among =
      of_shown ? reachable(w, w.cyrs(1, segment), w.cyrs(2, segment)) : Columns{0, lags - 1};
  int best = 0;
  for (int lag = among.first + 1; lag <= among.last + 1; ++lag) {
    if (is_empty(w, lag, segment)) continue;
    if (best == 0 || w.ctab(lag, segment) > w.ctab(best, segment)) best = lag;
  }
  return best > 0 ? std::optional(best - 1) : std::nullopt;
}

void shade(const Workspace& w, int segments) {
  w.plot.setclr(colour::light_grey);
  w.plot.rectangle(column_left(max_lag), top, column_left(max_lag + 1), row_top(segments));
  w.plot.setclr(colour::light_red);
  for (int row = 0; row < segments; ++row) {
    const auto best = best_column(w, row + 1);
    if (!best) continue;
    const int x = column_left(*best);
    w.plot.rectangle(x, row_top(row), x + column_width, row_top(row + 1));
  }
}

void draw_columns(const Workspace& w, int segments) {
  w.plot.setclr(colour::green);
  w.plot.line(left, top, right, top);
  w.plot.line(left, top, left, row_top(segments));
  for (int column = 0; column < lags; ++column) {
    w.plot.setclr(colour::green);
    w.plot.line(column_left(column + 1), top, column_left(column + 1), row_top(segments));
    w.plot.setclr(colour::light_red);
    w.plot.messag(lag_labels[static_cast<std::size_t>(column)], column_left(column) + 10, lag_label_y);
  }
}

// A correlation without the digit before its point.
std::string correlation_text(double r) {
  std::string text = edit(correlation_edit, r);
  return text.erase(1, 1);
}

void draw_row(const Workspace& w, int segment) {
  const int first = w.cyrs(1, segment), last = w.cyrs(2, segment);
  const int bottom = row_top(segment), text_y = bottom - 25;
  w.plot.setclr(colour::green);
  w.plot.line(left, bottom, right, bottom);
  w.plot.setclr(colour::light_blue);
  w.plot.messag(edit(years_edit, first, last), row_label_x, text_y);
  w.plot.setclr(colour::ink);
  const Columns shown = reachable(w, first, last);
  for (int column = shown.first; column <= shown.last; ++column) {
    if (is_empty(w, column + 1, segment)) continue;
    w.plot.messag(correlation_text(w.ctab(column + 1, segment)), column_left(column) + 17, text_y);
  }
}

}  // namespace

void cor_plot(const Workspace& w) {
  const int segments = segments_computed(w);
  w.plot.height(20);
  shade(w, segments);
  draw_columns(w, segments);
  for (int segment = 1; segment <= segments; ++segment) draw_row(w, segment);
  w.plot.height(25);
}

void cor_but(Workspace& w, int ystart) {
  w.b(button::correlation_segment).label = edit(length_edit, w.seg);
  w.b(button::correlation_overlap).label = edit(length_edit, w.olap);
  w.b(button::correlation_start).label = edit(year_edit, ystart);
  graph_mes(w, "Correlation");
  for (const ButtonNumber n : button::correlation) {
    but_draw(w, n, {}, colour::yellow);
  }
  mwrite(w, message::segment);
  mwrite(w, message::overlap);
  mwrite(w, message::start_year);
}

}  // namespace vorn
