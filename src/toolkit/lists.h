// Lists of names in columns of 30, from which the user picks by clicking.
#pragma once

#include <functional>
#include <string_view>

#include "workspace/vorndata.h"

namespace vorn {

// The name of list entry i, counted from 1.
using NameOf = std::function<std::string_view(int i)>;

// Draws names w.sccc + 1 and following of a list of n names, in `ncol` columns of 30 rows, down to the last
// name or as far as the columns reach.
//
// Those among the chosen (w.chc, w.chs) that are shown are highlighted: all in yellow when w.chok is set,
// otherwise the last one chosen in red and the others in cyan.
//
// The rows are 46 units high and the columns 2500 / ncol wide. The menus find the row clicked by other rules;
// see there.
void ch_disp(const Workspace& w, int ncol, int n, const NameOf& names);

// The same, of a table of names that has at least n.
template <std::size_t N>
void ch_disp(const Workspace& w, int ncol, int n, const Table<Text<N>>& names) {
  ch_disp(w, ncol, n, [&names](int i) { return names(i).view(); });
}

// The number, from 1, of the entry that a click at page position x, y picks in the list of chronologies,
// which is shown in `area` in three columns. Beside the names shown it is a number that no name has.
int entry_at(const Rectangle& area, int x, int y);

}  // namespace vorn
