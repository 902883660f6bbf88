// How wide a text comes out, known without a window system: advance widths of the two kinds of font.
#pragma once

#include <string_view>

#include "plot/clip.h"
#include "plot/page.h"

namespace vorn {

// The width in page units of `text` when its capital letters are `height` high. Fonts of the Arial and Times
// kinds are made with the same widths; kerning is not used. Control characters take no room; a character
// outside ASCII (UTF-8 where the text is valid, else one a byte) counts as wide as a digit.
double text_width(std::string_view text, double height, Font font);

// The part of the page that the letters of a text mark (angle 0) cover, from the first that is no blank to
// the last, from the top of the capitals to the line they stand on.
Box text_extent(const Mark& text);

// Whether `text` is valid UTF-8 as a whole: otherwise its bytes are taken as Latin-1.
bool is_utf8(std::string_view text);

}  // namespace vorn
