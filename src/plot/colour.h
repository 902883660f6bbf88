// The palette: sixteen colours, as on a VGA screen with black and white exchanged.
#pragma once

namespace vorn {

// A colour by its number in the palette. Those without a name here are Colour{number}.
enum class Colour : int {
  paper = 0,        // white
  green = 2,        // grids and tables
  red = 4,          // the last one chosen
  light_grey = 7,   // a plain button
  light_blue = 9,   // the sample
  light_cyan = 11,  // chosen; the picked year
  light_red = 12,   // the reference; borders
  yellow = 14,      // a button that is lit
  ink = 15,         // black
};
inline constexpr int palette_size = 16;

namespace colour {
using enum Colour;
}

constexpr int number_of(Colour colour) {
  return static_cast<int>(colour);
}

}  // namespace vorn
