// How the colours of a page come out on paper and on a screen: the same for every painter.
#pragma once

#include <array>
#include <cstdint>

#include "plot/colour.h"

namespace vorn::shades {

// 0 the paper, 15 the ink; from 16 on the colours of the panels.
using Palette = std::array<std::uint32_t, all_colours>;
inline constexpr Palette areas = {0xFFFFFF, 0x4F74D9, 0x00AA00, 0x00AAAA, 0xE04030, 0xD070D0, 0xC08040,
                                  0xAAAAAA, 0x848484, 0x8494FF, 0x55FF55, 0x55FFFF, 0xFF6A5E, 0xFF9CFF,
                                  0xFFFF55, 0x000000, 0x0072B2, 0xC44E00, 0x00A375, 0xE69F00, 0x9E3D73,
                                  0xDCEAF7, 0xFAD9CF, 0xFCEBC2, 0xD9F0E3, 0xF1F3F6, 0xD9DCE1, 0x5C6370};
inline constexpr std::uint32_t grey_lines = 0x8C8C8C;
inline constexpr Palette letters = {0xFFFFFF, 0x0000AA, 0x007A00, 0x007878, 0x8E0000, 0x8800AA, 0x8A4B00,
                                    0x6C6C6C, 0x444444, 0x4848FF, 0x4E7A00, 0x0079A8, 0xD80000, 0xC800A0,
                                    0x7C6C00, 0x000000, 0x0068A3, 0xA84000, 0x00745A, 0x8C6000, 0xA8437C,
                                    0xDCEAF7, 0xFAD9CF, 0xFCEBC2, 0xD9F0E3, 0xF1F3F6, 0xD9DCE1, 0x5C6370};

}  // namespace vorn::shades
