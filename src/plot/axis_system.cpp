#include "plot/axis_system.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

constexpr double gap = 20;  // between an axis and its labels, and between these and the title
constexpr double long_tick = 24, short_tick = 12;
constexpr double most_intervals = 20'000;  // more than any span of years needs; finer steps mark nothing
constexpr double far_away = 1e9;  // page units; lines out of the box keep their direction well enough

// One place on an axis at which something stands.
struct Stop {
  double value;
  bool labelled;  // a label stands there: not between two labels, and not before the first
};

// The places `parts` to a label interval over the whole axis, those before the first label included. They are
// counted, not summed up, so that rounding errors do not grow along the axis.
std::vector<Stop> stops(const Axis& axis, int parts) {
  std::vector<Stop> result;
  if (parts < 1 || (axis.last - axis.first) / axis.step * parts > most_intervals) return result;
  const double part = axis.step / parts;
  const double slack = 1e-9;  // of a part: a label at the very end of the axis is not lost to rounding
  const double before = (axis.first - axis.first_label) / part, after = (axis.last - axis.first_label) / part;
  if (!(std::abs(before) < 1e15 && std::abs(after) < 1e15)) return result;
  const auto begin = static_cast<long long>(std::ceil(before - slack));
  const auto end = static_cast<long long>(std::floor(after + slack));
  for (long long k = begin; k <= end; ++k) {
    // Deliberate: [unlabelled-first] only a tick before the first label asked for, which the graph puts
    // behind its first year.
    result.push_back({axis.first_label + static_cast<double>(k) * part, k % parts == 0 && k >= 0});
  }
  return result;
}

// The places that carry a label: none before the first label asked for.
std::vector<double> labelled(const Axis& axis) {
  std::vector<double> result;
  for (const Stop& stop : stops(axis, 1)) {
    if (stop.labelled) result.push_back(stop.value);
  }
  return result;
}

std::string label_text(double value, int decimals) {
  std::array<char, 400> digits;
  const int places = std::clamp(decimals, 0, 9);
  // Half a unit of the last place below 0 would come out as "-0.0".
  const double shown = std::abs(value) < 0.5 * std::pow(10.0, -places) ? 0.0 : value;
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), shown, std::chars_format::fixed, places);
  return {digits.data(), end.ptr};
}

void add_line(Page& page, Colour colour, std::vector<PagePoint> points) {
  page.add({.kind = Mark::Kind::line, .colour = colour, .points = std::move(points)});
}

void add_label(Page& page, const AxisWriting& writing, double height, std::string text, Align align,
               int angle, PagePoint at) {
  text.resize(without_trailing_blanks(text).size());
  if (text.empty()) return;
  page.add({.kind = Mark::Kind::label,
            .colour = writing.colour,
            .points = {at},
            .writing = std::move(text),
            .height = height,
            .font = writing.font,
            .align = align,
            .angle = angle});
}

double scaled(double value, const Axis& axis, double from, double to) {
  const double position = from + (value - axis.first) / (axis.last - axis.first) * (to - from);
  return std::isfinite(value) ? std::clamp(position, -far_away, far_away) : position;
}

}  // namespace

bool Axis::usable() const {
  return std::isfinite(first) && std::isfinite(last) && first < last && std::isfinite(last - first) &&
         std::isfinite(first_label) && std::isfinite(step) && step > 0;
}

AxisSystem::AxisSystem(const AxisFrame& frame, Axis x, Axis y)
    : frame_(frame),
      x_(std::move(x)),
      y_(std::move(y)),
      box_{static_cast<double>(frame.x), static_cast<double>(frame.y - frame.height),
           static_cast<double>(frame.x + frame.width), static_cast<double>(frame.y)} {}

PagePoint AxisSystem::place(double x, double y) const {
  return {scaled(x, x_, box_.left, box_.right), scaled(y, y_, box_.bottom, box_.top)};
}

void AxisSystem::draw(Page& page, const AxisWriting& writing) const {
  add_line(page, writing.colour,
           {{box_.left, box_.bottom},
            {box_.right, box_.bottom},
            {box_.right, box_.top},
            {box_.left, box_.top},
            {box_.left, box_.bottom}});
  draw_ticks(page, writing.colour);
  draw_x_labels(page, writing);
  draw_y_labels(page, writing);
}

void AxisSystem::draw_ticks(Page& page, Colour colour) const {
  const auto length = [](const Stop& stop, bool inside) {
    return (stop.labelled ? long_tick : short_tick) * (inside ? 1 : -1);
  };
  for (const Stop& stop : stops(x_, x_.ticks)) {
    const double x = place(stop.value, y_.first).x, inwards = length(stop, frame_.x_ticks_inside);
    add_line(page, colour, {{x, box_.bottom}, {x, box_.bottom - inwards}});
    add_line(page, colour, {{x, box_.top}, {x, box_.top + inwards}});
  }
  for (const Stop& stop : stops(y_, y_.ticks)) {
    const double y = place(x_.first, stop.value).y, inwards = length(stop, frame_.y_ticks_inside);
    add_line(page, colour, {{box_.left, y}, {box_.left + inwards, y}});
    add_line(page, colour, {{box_.right, y}, {box_.right - inwards, y}});
  }
}

void AxisSystem::draw_x_labels(Page& page, const AxisWriting& writing) const {
  const double top = box_.bottom + gap;
  // Deliberate: [crowded-labels] at every step, however they overlap.
  for (const double value : labelled(x_)) {
    add_label(page, writing, writing.label_height, label_text(value, x_.decimals), Align::centre, 0,
              {place(value, y_.first).x, top});
  }
  add_label(page, writing, writing.title_height, x_.title, Align::centre, 0,
            {(box_.left + box_.right) / 2, top + writing.label_height + gap});
}

void AxisSystem::draw_y_labels(Page& page, const AxisWriting& writing) const {
  const double right = box_.left - gap;
  double widest = 0;
  for (const double value : labelled(y_)) {
    const std::string text = label_text(value, y_.decimals);
    widest = std::max(widest, text_width(text, writing.label_height, writing.font));
    add_label(page, writing, writing.label_height, text, Align::right, 0,
              {right, place(x_.first, value).y - writing.label_height / 2});
  }
  // Turned to the left, the upper edge of the title is its left one.
  add_label(page, writing, writing.title_height, y_.title, Align::centre, 90,
            {std::round(right - widest - gap - writing.title_height), (box_.top + box_.bottom) / 2});
}

void AxisSystem::draw_grid(Page& page, int x_lines, int y_lines, Colour colour) const {
  for (const Stop& stop : stops(x_, x_lines)) {
    const double x = place(stop.value, y_.first).x;
    if (x > box_.left && x < box_.right) add_line(page, colour, {{x, box_.bottom}, {x, box_.top}});
  }
  for (const Stop& stop : stops(y_, y_lines)) {
    const double y = place(x_.first, stop.value).y;
    if (y > box_.top && y < box_.bottom) add_line(page, colour, {{box_.left, y}, {box_.right, y}});
  }
}

}  // namespace vorn
