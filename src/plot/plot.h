// The plotting calls: everything the program draws and every event it reads goes through one Plot.
//
// Drawing writes marks on a page and shows nothing; the page is shown when the program waits (csrpos) or
// reports on long work (show). Positions are page units, 2970 x 2100, from the upper left corner, y
// downwards.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "plot/axis_system.h"
#include "plot/colour.h"
#include "plot/page.h"
#include "plot/screen.h"

namespace vorn {

class LongWork;

class Plot {
 public:
  explicit Plot(Screen& screen) : screen_(screen) {}
  Plot(const Plot&) = delete;
  Plot& operator=(const Plot&) = delete;

  const Page& page() const { return page_; }

  // --- How the marks that follow look. At first: ink, solid, height 25, axis titles 20, the Arial kind.
  void setclr(Colour colour);  // one of the palette, see colour.h
  void shdpat(int pattern);    // 0: areas are drawn as their border only; otherwise (16) filled
  void height(int units);      // of a capital letter of texts and axis labels; more than 0
  void hname(int units);       // of a capital letter of axis titles; more than 0
  // "Times New Roman" for the Times kind; "Arial" (and any other) for Arial's.
  void winfnt(std::string_view name);
  void simplx() {}  // the simple lettering: texts always look so, nothing changes

  // --- Marks by page position.
  void erase() { page_.clear(); }                                // empties the page; colour and the like stay
  void areaf(std::span<const int> xs, std::span<const int> ys);  // a polygon: as many xs as ys, at least 3
  void rectangle(int x1, int y1, int x2, int y2);  // areaf of (x1, y1), (x2, y1), (x2, y2), (x1, y2)
  void line(int x1, int y1, int x2, int y2);
  // Text with its upper left corner at (x, y). Blanks at its end are dropped; a text of blanks makes no mark.
  void messag(std::string_view text, int x, int y);

  // --- An axis system: describe it, draw it with graf, draw in it by the values of its axes, leave it with
  // endgrf. `which` is 'X' or 'Y'; `axes` is "X", "Y" or "XY". A description lasts until it is changed.
  void axspos(int x, int y);                      // its lower left corner
  void axslen(int width, int height);             // its size
  void labdig(int digits, char which);            // decimals of the labels, -1 for integers; at first 1
  void ticks(int count, char which);              // ticks to a label interval; at first 1
  void name(std::string_view title, char which);  // set before graf; at first none
  // Where ticks are: "REVERS", as at first, inside; "LABELS" outside.
  void ticpos(std::string_view where, std::string_view axes);

  // Draws the axis system in the current colour, height and font: a box, ticks on all four sides, labels,
  // titles. X runs from xa to xe with labels at xor_, xor_ + xstep, ...; Y likewise. Axes that cannot be
  // drawn (an end or a step that is not finite, an end that is not after the start, a step of 0 or less) draw
  // nothing, and nothing is drawn in them either.
  void graf(double xa, double xe, double xor_, double xstep, double ya, double ye, double yor, double ystep);
  void grid(int x, int y);  // so many lines to a label interval, up and across

  // Nothing of these lies outside the box of the axis system; outside graf ... endgrf they draw nothing.
  // An area by its upper left corner, its width and its height.
  void rlrec(double x, double y, double w, double h);
  void rline(double x1, double y1, double x2, double y2);
  // A polyline through as many points as there are xs and ys. A point that is not finite breaks it.
  void curve(std::span<const double> xs, std::span<const double> ys);
  void endgrf() { axes_.reset(); }

  // --- The screen. What these wait for ends with ProgramEnd when the screen is closed.
  void show() { screen_.show(page_); }                            // shows the page now and does not wait
  void subject(std::string_view file) { screen_.subject(file); }  // what the user now works on
  void notice(std::string_view text) { screen_.notice(text); }    // something to read outside the page
  Event csrpos();        // shows the page and waits for the next event
  Event csrpos_fresh();  // the same, but what was typed or clicked before now is forgotten

 private:
  friend class LongWork;  // what runs, see long_work.h

  void add_area(std::vector<PagePoint> corners);
  Axis& axis(char which);

  Screen& screen_;
  Page page_;
  Colour colour_ = colour::ink;
  bool solid_ = true;
  int height_ = 25;
  int title_height_ = 20;
  Font font_ = Font::arial;
  AxisFrame frame_;
  Axis x_, y_;
  std::optional<AxisSystem> axes_;  // between graf and endgrf
  LongWork* work_ = nullptr;        // the innermost that runs
};

}  // namespace vorn
