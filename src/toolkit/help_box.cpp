#include "toolkit/help_box.h"

#include <algorithm>

#include "plot/font_metrics.h"
#include "plot/plot.h"

namespace vorn::help_box {
namespace {

constexpr int usual_height = 25, text_height = 20;
constexpr double text_width_most = usual.x2 - text_x - 12;
constexpr int line_step = 36;
constexpr int first_line = title_y - usual.y1 + 58;  // of the text, below the upper edge
constexpr int usual_lines = (usual.y2 - usual.y1 - first_line) / line_step;
constexpr int lowest = 2080, highest = 20;  // edges of the box on the page
constexpr int most_lines = (lowest - highest - first_line) / line_step;

bool fits(std::string_view text, double height, double width) {
  return text_width(text, height, Font::arial) <= width;
}

// How many characters of `text` go on a line.
std::size_t length_of_line(std::string_view text, double height, double width) {
  std::size_t length = text.size();
  while (length > 1 && !fits(text.substr(0, length), height, width)) --length;
  if (length == text.size()) return length;
  const std::size_t blank = text.substr(0, length + 1).find_last_of(' ');
  return blank == std::string_view::npos || blank == 0 ? length : blank;
}

// Down from the usual upper edge as far as the page goes, and then up.
Rectangle box_of(int lines) {
  const int height = first_line + lines * line_step;
  const int bottom = std::min(std::max(usual.y2, usual.y1 + height), lowest);
  return {usual.x1, std::min(usual.y1, bottom - height), usual.x2, bottom};
}

}  // namespace

void draw_frame(Plot& plot, const Rectangle& box) {
  plot.setclr(colour::light_grey);
  plot.rectangle(box.x1, box.y1, box.x2, box.y2);
  plot.setclr(colour::light_red);
  plot.shdpat(0);
  plot.rectangle(box.x1, box.y1, box.x2, box.y2);
  plot.shdpat(16);
  plot.setclr(colour::ink);
}

std::vector<std::string> broken(std::string_view text, double height, double width) {
  std::vector<std::string> lines;
  do {
    const std::size_t length = length_of_line(text, height, width);
    lines.emplace_back(text.substr(0, length));
    text.remove_prefix(length);
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  } while (!text.empty());
  return lines;
}

int draw(Plot& plot, std::string_view title, const std::vector<std::string>& lines, int least) {
  // What of the title goes on stands in the text.
  const std::vector<std::string> heading = broken(title, usual_height, text_width_most);
  std::vector<std::string> text(heading.begin() + 1, heading.end());
  for (const std::string& line : lines) {
    for (std::string& part : broken(line, text_height, text_width_most)) text.push_back(std::move(part));
  }
  if (text.size() > most_lines) {
    text.resize(most_lines);
    text.back() = "...";
  }
  const int count = std::max({static_cast<int>(text.size()), least, usual_lines});
  const Rectangle box = box_of(count);
  plot.winfnt("Arial");
  draw_frame(plot, box);
  plot.height(usual_height);
  plot.messag(heading.front(), text_x, box.y1 + title_y - usual.y1);
  plot.height(text_height);
  for (std::size_t k = 0; k < text.size(); ++k)
    plot.messag(text[k], text_x, box.y1 + first_line + static_cast<int>(k) * line_step);
  plot.height(usual_height);
  return count;
}

}  // namespace vorn::help_box
