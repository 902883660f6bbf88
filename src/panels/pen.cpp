#include "panels/pen.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

constexpr std::string_view more = "\xE2\x80\xA6";  // …

bool is_inside_character(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// As many whole characters from the front as fit.
std::string_view fitting(std::string_view text, double room, double size) {
  if (width_of(text, size) <= room) return text;
  std::size_t length = text.size();
  while (length > 0 && width_of(text.substr(0, length), size) + width_of(more, size) > room) {
    do --length;
    while (length > 0 && is_inside_character(text[length]));
  }
  return text.substr(0, length);
}

Mark writing_mark(double x, double y, std::string_view writing, Colour colour, double size, Align align) {
  return {.kind = Mark::Kind::label,
          .colour = colour,
          .points = {{x, y}},
          .writing = std::string(without_trailing_blanks(writing)),
          .height = size,
          .align = align};
}

std::vector<PagePoint> corners(const Rectangle& area) {
  const auto x1 = static_cast<double>(area.x1), x2 = static_cast<double>(area.x2);
  const auto y1 = static_cast<double>(area.y1), y2 = static_cast<double>(area.y2);
  return {{x1, y1}, {x2, y1}, {x2, y2}, {x1, y2}};
}

}  // namespace

double width_of(std::string_view writing, double size) {
  return text_width(writing, size, Font::arial);
}

double size_of(std::string_view writing, double room) {
  return width_of(writing, body) > room ? small : body;
}

std::vector<std::string> wrapped(std::string_view writing, double room, double size) {
  std::vector<std::string> all(1);
  while (!writing.empty()) {
    std::string& line = all.back();
    const std::string_view word = writing.substr(0, writing.find(' '));
    const std::string longer = line + (line.empty() ? "" : " ") + std::string(word);
    if (!line.empty() && width_of(longer, size) > room)
      all.emplace_back(word);
    else
      line = longer;
    writing.remove_prefix(std::min(word.size() + 1, writing.size()));
  }
  return all;
}

std::string fixed(double value, int decimals) {
  if (!std::isfinite(value)) return "";
  std::array<char, 400> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
  return {digits.data(), end.ptr};
}

std::string short_r(double r) {
  std::string text = fixed(r, 2);
  if (const auto at = text.find("0."); at <= 1) text.erase(at, 1);
  return text == "-.00" ? ".00" : text;
}

std::string signed_number(std::int64_t value) {
  return (value > 0 ? "+" : "") + std::to_string(value);
}

Pen::Pen(const PanelView& view) : view_(view), panel_{Page(view.width, view.height)} {}

void Pen::text(double x, double y, std::string_view writing, Colour colour, double size) {
  if (writing.find_first_not_of(' ') == std::string_view::npos) return;
  panel_.page.add({.kind = Mark::Kind::text,
                   .colour = colour,
                   .points = {{x, y}},
                   .writing = std::string(without_trailing_blanks(writing)),
                   .height = size});
}

void Pen::right(double x, double y, std::string_view writing, Colour colour, double size) {
  panel_.page.add(writing_mark(x, y, writing, colour, size, Align::right));
}

void Pen::centred(double x, double y, std::string_view writing, Colour colour, double size) {
  panel_.page.add(writing_mark(x, y, writing, colour, size, Align::centre));
}

void Pen::fitted(double x, double y, double room, std::string_view writing, Colour colour, double size) {
  const std::string_view part = fitting(writing, room, size);
  text(x, y, part.size() < writing.size() ? std::string(part) + std::string(more) : std::string(part), colour,
       size);
}

double Pen::lines(double x, double y, double room, std::string_view writing, Colour colour, double size) {
  for (const std::string& line : wrapped(writing, room, size)) {
    fitted(x, y, room, line, colour, size);
    y += size * line_step;
  }
  return y;
}

void Pen::area(const Rectangle& place, Colour colour) {
  panel_.page.add({.kind = Mark::Kind::fill, .colour = colour, .points = corners(place)});
}

void Pen::frame(const Rectangle& place, Colour colour) {
  panel_.page.add({.kind = Mark::Kind::outline, .colour = colour, .points = corners(place)});
}

void Pen::line(double x1, double y1, double x2, double y2, Colour colour) {
  curve({{x1, y1}, {x2, y2}}, colour);
}

void Pen::curve(std::vector<PagePoint> points, Colour colour) {
  if (points.size() < 2) return;
  panel_.page.add({.kind = Mark::Kind::line, .colour = colour, .points = std::move(points)});
}

void Pen::triangle(PagePoint a, PagePoint b, PagePoint c, Colour colour) {
  panel_.page.add({.kind = Mark::Kind::fill, .colour = colour, .points = {a, b, c}});
}

void Pen::key(const Rectangle& place, std::string_view writing, Spot pressed, bool lit) {
  const bool can = pressed.does();
  area(place, lit ? colour::pale_amber : colour::shade);
  frame(place, can ? colour::muted : colour::hairline);
  centred((place.x1 + place.x2) / 2.0, (place.y1 + place.y2 - small) / 2.0, writing,
          can ? colour::ink : colour::muted, small);
  pressed.place = place;
  spot(std::move(pressed));
}

void Pen::spot(Spot spot) {
  panel_.spots.push_back(std::move(spot));
}

void Pen::begin_head(int head) {
  panel_.head = head;
  body_spots_ = panel_.spots.size();
  area({0, 0, view_.width, head}, colour::paper);
}

// What is scrolled below the head cannot be clicked on there.
Panel Pen::done(int content_height) {
  panel_.content_height = content_height;
  if (panel_.head > 0) {
    auto& spots = panel_.spots;
    const auto body_end = spots.begin() + static_cast<std::ptrdiff_t>(body_spots_);
    for (auto spot = spots.begin(); spot != body_end; ++spot)
      spot->place.y1 = std::max(spot->place.y1, panel_.head);
    std::rotate(spots.begin(), body_end, spots.end());
    std::erase_if(spots, [](const Spot& spot) { return spot.place.y1 >= spot.place.y2; });
  }
  return std::move(panel_);
}

}  // namespace vorn
