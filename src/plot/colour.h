// The palette: sixteen colours by index, as on a VGA screen with black and white exchanged.
#pragma once

namespace vorn::colour {

inline constexpr int paper = 0;        // white
inline constexpr int green = 2;        // grids and tables
inline constexpr int red = 4;          // the last one chosen
inline constexpr int light_grey = 7;   // a plain button
inline constexpr int light_blue = 9;   // the sample
inline constexpr int light_cyan = 11;  // chosen; the picked year
inline constexpr int light_red = 12;   // the reference; borders
inline constexpr int yellow = 14;      // a button that is lit
inline constexpr int ink = 15;         // black

}  // namespace vorn::colour
