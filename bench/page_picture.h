// Pages as the window paints them.
#pragma once

#include "plot/page.h"

namespace vorn::bench {

// Paints a page into a picture of 1485 x 1050 pixels. Needs no display.
void paint_picture(const Page& page);

}  // namespace vorn::bench
