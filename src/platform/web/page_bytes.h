// A page as bytes, for those who paint it elsewhere.
#pragma once

#include <string>

#include "plot/page.h"

namespace vorn {

// Numbers of eight bytes, little endian: the page's width, height and count of marks, then of each mark its
// kind (0 fill, 1 outline, 2 line, 3 text, 4 label), colour, count of points and these, x before y. Writing
// goes on with height, font (0 Arial, 1 Times), align (0 left, 1 centre, 2 right), angle in degrees, the
// count of its bytes, and these as UTF-8, with zeros up to the next eight.
std::string bytes_of(const Page& page);

}  // namespace vorn
