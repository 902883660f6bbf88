// The palette: sixteen colours, as on a VGA screen with black and white exchanged, and those of the panels.
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

  // Of panels alone. Told apart by eyes that see red and green alike, as far as they stand for something.
  // Source: M. Okabe and K. Ito (2008), Color universal design.
  deep_blue = 16,
  vermilion = 17,
  sea_green = 18,
  amber = 19,
  plum = 20,
  pale_blue = 21,  // areas behind ink, as are the next ones
  pale_red = 22,
  pale_amber = 23,
  pale_green = 24,
  shade = 25,     // behind headings
  hairline = 26,  // rules and grids
  muted = 27,     // letters that matter less
};
inline constexpr int palette_size = 16;  // of the system's page
inline constexpr int all_colours = 28;

namespace colour {
using enum Colour;
}

constexpr int number_of(Colour colour) {
  return static_cast<int>(colour);
}

}  // namespace vorn
