#include "plot/plot.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/loud_failure.h"

namespace vorn {

void Plot::setclr(Colour colour) {
  VORN_ASSERT(number_of(colour) >= 0 && number_of(colour) < palette_size);
  colour_ = colour;
}

void Plot::shdpat(int pattern) {
  solid_ = pattern != 0;
}

void Plot::height(int units) {
  VORN_ASSERT(units > 0);
  height_ = units;
}

void Plot::hname(int units) {
  VORN_ASSERT(units > 0);
  title_height_ = units;
}

void Plot::winfnt(std::string_view name) {
  font_ = name == "Times New Roman" ? Font::times : Font::arial;
}

void Plot::add_area(std::vector<PagePoint> corners) {
  page_.add({.kind = solid_ ? Mark::Kind::fill : Mark::Kind::outline,
             .colour = colour_,
             .points = std::move(corners)});
}

void Plot::areaf(std::span<const int> xs, std::span<const int> ys) {
  VORN_ASSERT(xs.size() == ys.size() && xs.size() >= 3);
  std::vector<PagePoint> corners;
  for (std::size_t i = 0; i < xs.size(); ++i) {
    corners.push_back({static_cast<double>(xs[i]), static_cast<double>(ys[i])});
  }
  add_area(std::move(corners));
}

void Plot::rectangle(int x1, int y1, int x2, int y2) {
  areaf(std::array{x1, x2, x2, x1}, std::array{y1, y1, y2, y2});
}

void Plot::line(int x1, int y1, int x2, int y2) {
  page_.add({.kind = Mark::Kind::line,
             .colour = colour_,
             .points = {{static_cast<double>(x1), static_cast<double>(y1)},
                        {static_cast<double>(x2), static_cast<double>(y2)}}});
}

void Plot::messag(std::string_view text, int x, int y) {
  text = without_trailing_blanks(text);
  if (text.empty()) return;
  page_.add({.kind = Mark::Kind::text,
             .colour = colour_,
             .points = {{static_cast<double>(x), static_cast<double>(y)}},
             .writing = std::string(text),
             .height = static_cast<double>(height_),
             .font = font_});
}

Axis& Plot::axis(char which) {
  VORN_ASSERT(which == 'X' || which == 'Y');
  return which == 'X' ? x_ : y_;
}

void Plot::axspos(int x, int y) {
  frame_.x = x, frame_.y = y;
}

void Plot::axslen(int width, int height) {
  VORN_ASSERT(width > 0 && height > 0);
  frame_.width = width, frame_.height = height;
}

void Plot::labdig(int digits, char which) {
  axis(which).decimals = digits;
}

void Plot::ticks(int count, char which) {
  axis(which).ticks = count;
}

void Plot::name(std::string_view title, char which) {
  axis(which).title = title;
}

void Plot::ticpos(std::string_view where, std::string_view axes) {
  const bool inside = where == "REVERS";
  if (axes.find('X') != std::string_view::npos) frame_.x_ticks_inside = inside;
  if (axes.find('Y') != std::string_view::npos) frame_.y_ticks_inside = inside;
}

void Plot::graf(double xa, double xe, double xor_, double xstep, double ya, double ye, double yor,
                double ystep) {
  x_.first = xa, x_.last = xe, x_.first_label = xor_, x_.step = xstep;
  y_.first = ya, y_.last = ye, y_.first_label = yor, y_.step = ystep;
  axes_.reset();
  if (!x_.usable() || !y_.usable()) return;
  axes_.emplace(frame_, x_, y_);
  axes_->draw(page_, {.colour = colour_,
                      .label_height = static_cast<double>(height_),
                      .title_height = static_cast<double>(title_height_),
                      .font = font_});
}

void Plot::grid(int x, int y) {
  if (axes_) axes_->draw_grid(page_, x, y, colour_);
}

void Plot::rlrec(double x, double y, double w, double h) {
  if (!axes_) return;
  const PagePoint a = axes_->place(x, y), b = axes_->place(x + w, y - h);
  if (!std::isfinite(a.x) || !std::isfinite(a.y) || !std::isfinite(b.x) || !std::isfinite(b.y)) return;
  const Box& box = axes_->box();
  const double left = std::max(std::min(a.x, b.x), box.left), right = std::min(std::max(a.x, b.x), box.right);
  const double top = std::max(std::min(a.y, b.y), box.top), bottom = std::min(std::max(a.y, b.y), box.bottom);
  if (left >= right || top >= bottom) return;
  add_area({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}

void Plot::rline(double x1, double y1, double x2, double y2) {
  curve(std::array{x1, x2}, std::array{y1, y2});
}

void Plot::curve(std::span<const double> xs, std::span<const double> ys) {
  VORN_ASSERT(xs.size() == ys.size());
  if (!axes_) return;
  std::vector<PagePoint> points;
  points.reserve(xs.size());
  for (std::size_t i = 0; i < xs.size(); ++i) points.push_back(axes_->place(xs[i], ys[i]));
  for (auto& piece : clip_polyline(axes_->box(), points)) {
    page_.add({.kind = Mark::Kind::line, .colour = colour_, .points = std::move(piece)});
  }
}

Event Plot::csrpos() {
  show();
  return screen_.next_event();
}

Event Plot::csrpos_fresh() {
  show();
  screen_.forget_pending();
  return screen_.next_event();
}

}  // namespace vorn
