// The lists of the pages: names, or the years of the editor, in columns of 30.
#pragma once

#include <optional>

#include "situation/situation.h"

namespace vorn {

inline constexpr int list_rows = 30;

struct ShownList {
  int columns;
  int cells;  // that can be picked
};

// What button n lists at this wait; nothing where it is no list.
std::optional<ShownList> list_of(ButtonNumber n, const Situation& now);

// The part of cell k, counted from 0, that is drawn as its own and is picked as its own: rows and columns are
// drawn in whole units and picked in fractions of the whole list, which are a little larger.
Rectangle cell_of(const Rectangle& area, const ShownList& list, int k);

}  // namespace vorn
