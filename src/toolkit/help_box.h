// The box that the help stands in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workspace/controls.h"

namespace vorn {
class Plot;
}

namespace vorn::help_box {

inline constexpr Rectangle usual = {80, 1400, 1640, 1700};
inline constexpr int text_x = 88, title_y = 1422;  // where the title begins

// A framed area in the colours of the help; leaves the colour at ink.
void draw_frame(Plot& plot, const Rectangle& box);

// `text` in lines of at most `width` page units at this height of capital letters, broken behind words where
// it can be; a word that is wider alone is broken within.
std::vector<std::string> broken(std::string_view text, double height, double width);

// Draws the box with a title and `lines`, broken to its width. It grows with them, down first and then up;
// what a page has no room for ends in "...". `least` is the number of lines that it has room for at the
// least. Returns: that number, as it came out.
int draw(Plot& plot, std::string_view title, const std::vector<std::string>& lines, int least);

}  // namespace vorn::help_box
