// What of a page's texts a user can still read.
#pragma once

#include <string>
#include <vector>

#include "plot/page.h"

namespace vorn {

// The texts drawn by messag (not the labels of axes) that no later fill covers wholly, in drawing order. A
// text that is covered in part, or only by several fills together, still counts.
std::vector<std::string> visible_texts(const Page& page);

}  // namespace vorn
