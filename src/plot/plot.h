// The plotting calls: everything the program draws and every event it reads goes through one Plot.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "plot/colour.h"
#include "plot/page.h"
#include "plot/screen.h"

namespace vorn {
// contract sketch: names and meaning as the menus use them
class Plot {
 public:
  explicit Plot(Screen& screen);
  void erase();                                            // empties the page
  void setclr(int colour);
  void shdpat(int pattern);                                // 16 fills areas, 0 draws their border only
  void height(int units);                                  // height of a capital letter
  void winfnt(std::string_view name);                      // "Arial", "Times New Roman"
  void simplx();
  void hname(int units);                                   // height of axis titles
  void areaf(std::span<const int> xs, std::span<const int> ys);   // polygon by page coordinates
  void rectangle(int x1, int y1, int x2, int y2);          // areaf of four corners, clockwise from the upper left
  void line(int x1, int y1, int x2, int y2);
  void messag(std::string_view text, int x, int y);        // upper left corner at (x, y)
  void axspos(int x, int y);                               // lower left corner of the axis system
  void axslen(int width, int height);
  void labdig(int digits, char axis);
  void ticks(int count, char axis);
  void name(std::string_view title, char axis);
  void ticpos(std::string_view where, std::string_view axes);
  void graf(double xa, double xe, double xor_, double xstep, double ya, double ye, double yor, double ystep);
  void grid(int x, int y);
  void endgrf();
  void rlrec(double x, double y, double w, double h);
  void rline(double x1, double y1, double x2, double y2);
  void curve(std::span<const double> xs, std::span<const double> ys);
  Event csrpos();                                          // shows the page and waits for the next event
};
}  // namespace vorn
