// A page as a display list: marks in drawing order, in page units, that a window, a file or a test plays
// back.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "plot/colour.h"

namespace vorn {

// A place on the page in page units: x from the left edge, y from the top edge downwards.
struct PagePoint {
  double x = 0, y = 0;
  bool operator==(const PagePoint&) const = default;
};

enum class Font { arial, times };
enum class Align { left, centre, right };

// One mark. Which members count depends on its kind.
struct Mark {
  enum class Kind {
    fill,     // a filled polygon
    outline,  // the border of a polygon
    line,     // a polyline: curves, axes, ticks, grid lines
    text,     // a text drawn by messag
    label,    // a label or the title of an axis
  };
  Kind kind = Kind::line;
  Colour colour = colour::paper;
  std::vector<PagePoint> points = {};  // the corners; of writing, its one place

  // Of text and label only.
  std::string writing = {};  // its bytes, without trailing blanks
  double height = 0;         // of a capital letter, page units
  Font font = Font::arial;
  Align align = Align::left;  // which end of the upper edge of the writing stands at its place; l, c or r
  int angle = 0;              // degrees, counterclockwise, about its place

  bool operator==(const Mark&) const = default;
};

// Everything that has been drawn since the page was emptied last.
class Page {
 public:
  // The size of the system's page.
  static constexpr int width = 2970;
  static constexpr int height = 2100;

  Page() = default;
  // A page of another size, as panels have.
  Page(int across, int down) : across_(across), down_(down), has_own_size_(true) {}
  int across() const { return across_; }
  int down() const { return down_; }

  void clear() { marks_.clear(); }
  void add(Mark mark) { marks_.push_back(std::move(mark)); }
  const std::vector<Mark>& marks() const { return marks_; }

  // Writes the page as text, one mark a line in drawing order, behind a first line "size W H" where it is not
  // the system's:
  //   fill COLOUR X Y X Y ...
  //   outline COLOUR X Y X Y ...
  //   line COLOUR X Y X Y ...
  //   text COLOUR HEIGHT X Y "..."
  //   label COLOUR HEIGHT ALIGN ANGLE X Y "..."
  // Numbers have at most 2 decimals and no trailing zeros. In texts " and \ are escaped by \, control
  // characters are written \xNN, all other bytes stand as they are.
  void write_text(std::ostream& out) const;

 private:
  int across_ = width, down_ = height;
  bool has_own_size_ = false;
  std::vector<Mark> marks_;
};

// `text` without the blanks at its end: what of it makes a mark. Nothing is left of a text of blanks alone.
std::string_view without_trailing_blanks(std::string_view text);

// Whether a byte is a control character: painted as nothing, written \xNN.
constexpr bool is_control(char byte) {
  return static_cast<unsigned char>(byte) < 32 || byte == 127;
}

}  // namespace vorn
