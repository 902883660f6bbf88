// Draws a panel.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "panels/panel.h"

namespace vorn {

// Heights of capital letters, panel units.
inline constexpr double heading_size = 26, body = 22, small = 18;
inline constexpr int margin = 24;
inline constexpr double line_step = 1.6;  // from one line to the next, in heights of its letters

class Pen {
 public:
  explicit Pen(const PanelView& view);

  int width() const { return view_.width; }
  int height() const { return view_.height; }

  // Writing by its upper left corner; `right` by its upper right one, `centred` by the middle of its upper
  // edge.
  void text(double x, double y, std::string_view writing, Colour colour = colour::ink, double size = body);
  void right(double x, double y, std::string_view writing, Colour colour = colour::ink, double size = body);
  void centred(double x, double y, std::string_view writing, Colour colour = colour::ink, double size = body);
  // As much of it as fits, "…" behind it where that is not all.
  void fitted(double x, double y, double room, std::string_view writing, Colour colour = colour::ink,
              double size = body);
  // The writing in lines that fit; answers the place below them.
  double lines(double x, double y, double room, std::string_view writing, Colour colour = colour::ink,
               double size = body);
  void area(const Rectangle& place, Colour colour);
  void frame(const Rectangle& place, Colour colour);
  void line(double x1, double y1, double x2, double y2, Colour colour);
  void curve(std::vector<PagePoint> points, Colour colour);  // nothing of fewer than two
  void triangle(PagePoint a, PagePoint b, PagePoint c, Colour colour);
  // A spot that looks as if it can be pressed.
  void key(const Rectangle& place, std::string_view writing, Spot pressed, bool lit = false);
  void spot(Spot spot);

  // What comes from here on stands above what was drawn, down to `head`, and is not scrolled.
  void begin_head(int head);
  Panel done(int content_height);

 private:
  PanelView view_;
  Panel panel_;
  std::size_t body_spots_ = 0;
};

double width_of(std::string_view writing, double size);
// The size in which it fits: that of the body, else the small one, whether or not it does.
double size_of(std::string_view writing, double room);
// The writing in lines that fit, cut at blanks; a word that is too long for a line is one.
std::vector<std::string> wrapped(std::string_view writing, double room, double size);
// "0.81", "-.40" without the zero before the point; "1.0" for what rounds to one.
std::string short_r(double r);
std::string fixed(double value, int decimals);
std::string signed_number(std::int64_t value);

}  // namespace vorn
