#include "toolkit/lists.h"

#include <algorithm>

#include "plot/plot.h"

namespace vorn {
namespace {

constexpr int left = 200, top = 240, total_width = 2500;
constexpr int rows = 30, row_height = 46;

struct List {
  int column_width;
  int scrolled;  // names above the first one shown
  int shown;     // names shown

  int x(int p) const { return left + (p / rows) * column_width; }
  static int y(int p) { return top + (p % rows) * row_height; }
};

void highlight(const Workspace& w, const List& list) {
  for (int j = 1; j <= w.chs; ++j) {
    const int p = w.chc(j) - list.scrolled - 1;
    if (p < 0 || p >= list.shown) continue;
    const Colour by_order = j == w.chs ? colour::red : colour::light_cyan;
    w.plot.setclr(w.chok ? colour::yellow : by_order);
    w.plot.rectangle(list.x(p), List::y(p), list.x(p) + list.column_width, List::y(p) + row_height);
  }
}

void draw_column_lines(const Workspace& w, int x1, int x2, int rows_used) {
  const int bottom = top + row_height * rows_used;
  for (int y = top; y <= bottom; y += row_height) w.plot.line(x1, y, x2, y);
  w.plot.line(x1, top, x1, bottom);
  w.plot.line(x2, top, x2, bottom);
}

void draw_lines(const Workspace& w, const List& list) {
  w.plot.setclr(colour::green);
  const int columns_used = (list.shown - 1) / rows + 1;  // 1 for an empty list too, which shows as one line
  for (int c = 0; c < columns_used; ++c) {
    const int x1 = left + c * list.column_width;
    draw_column_lines(w, x1, x1 + list.column_width, std::min(rows, list.shown - rows * c));
  }
}

}  // namespace

void ch_disp(const Workspace& w, int ncol, int n, const NameOf& names) {
  const int scrolled = std::max(w.sccc, 0);
  const List list = {total_width / ncol, scrolled, std::clamp(n - scrolled, 0, rows * ncol)};
  highlight(w, list);
  draw_lines(w, list);
  w.plot.setclr(colour::ink);
  for (int p = 0; p < list.shown; ++p) {
    w.plot.messag(names(scrolled + p + 1), list.x(p) + 5, List::y(p) + 12);
  }
}

// Deliberate: [larger-rows] thirds and thirtieths of the whole area, a little larger than the cells that the
// list draws. Deliberate: [bottom-edge] on the lower edge it is row 30, the first entry of the next column.
int entry_at(const Rectangle& area, int x, int y) {
  const int column = static_cast<int>((x - area.x1) * 3.0 / total_width);
  const int row = static_cast<int>((area.y1 - y) * rows / static_cast<double>(area.y1 - area.y2));
  return row + rows * column + 1;
}

}  // namespace vorn
