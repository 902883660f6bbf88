// What of the lines of a page can be told apart on pixels.
#pragma once

#include <functional>
#include <span>

#include "plot/page.h"

namespace vorn {

// A page of thousands of years has many lines in each column of pixels, most of which change nothing. Hands
// on those that do, and all other marks, in their order:
//  - short lines that follow each other end to end, more than three in a column of pixels, become one
//  polyline with the
//    lowest and the highest point of each column, as far as the points follow each other there. It covers the
//    same pixels, but for their edges;
//  - of ticks of one colour, height and half column of pixels the first.
// So the time that a page takes depends on the pixels and not on the years. Marks handed on live no longer
// than the call.
//
// Given: columns, left  columns of pixels to a page unit, and the one that the page begins in
void play_on_pixels(std::span<const Mark> marks, double columns, double left,
                    const std::function<void(const Mark&)>& use);

}  // namespace vorn
