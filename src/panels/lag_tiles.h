// A table of lags: how well a core agrees, segment by segment, when it is read earlier or later.
#pragma once

#include <string_view>
#include <vector>

#include "panels/pen.h"
#include "study/site.h"

namespace vorn {

inline constexpr int shown_lags = 5;

// Draws it in so much room, with its title; answers the place below it.
double lag_tiles(Pen& pen, double x, double y, double width, std::string_view title,
                 const std::vector<LagRow>& rows);

}  // namespace vorn
