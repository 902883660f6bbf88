// An axis system: a box on the page with ticks, labels and titles, and the way from years and values to page
// units.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "plot/clip.h"
#include "plot/page.h"

namespace vorn {

// What is asked of one axis.
struct Axis {
  double first = 0, last = 1;        // the values at its two ends, first < last
  double first_label = 0, step = 1;  // labels stand at first_label, first_label + step, ... up to the end
  int decimals = 1;                  // of its labels; -1 for integers without a point
  int ticks = 1;                     // to a label interval
  std::string title;

  // Whether it has two different finite ends and a step along which it can be labelled.
  bool usable() const;
};

// How an axis system stands on the page.
struct AxisFrame {
  int x = 200, y = 1300;           // the lower left corner
  int width = 2500, height = 850;  // lengths of the axes
  bool x_ticks_inside = true, y_ticks_inside = true;
};

// How its labels and titles are written.
struct AxisWriting {
  Colour colour = colour::ink;
  double label_height = 25, title_height = 20;
  Font font = Font::arial;
};

// A mapping that is ready for use: both axes must be usable.
class AxisSystem {
 public:
  AxisSystem(const AxisFrame& frame, Axis x, Axis y);

  const Box& box() const { return box_; }

  // The page position of a point given in the values of the axes. A finite point far away keeps a finite
  // position; what is not finite stays so.
  PagePoint place(double x, double y) const;

  // The border, the ticks on all four sides, the labels of both axes and their titles.
  void draw(Page& page, const AxisWriting& writing) const;
  // `x_lines` lines up and `y_lines` lines across to a label interval, where there is no border yet.
  void draw_grid(Page& page, int x_lines, int y_lines, Colour colour) const;

 private:
  void draw_ticks(Page& page, Colour colour) const;
  void draw_x_labels(Page& page, const AxisWriting& writing) const;
  void draw_y_labels(Page& page, const AxisWriting& writing) const;

  AxisFrame frame_;
  Axis x_, y_;
  Box box_;
};

}  // namespace vorn
