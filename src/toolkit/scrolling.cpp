#include "toolkit/scrolling.h"

#include <algorithm>
#include <array>

#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

using Years = std::int64_t;  // in which sums of years are formed

}  // namespace

// vv has the step of the rightmost button first, then those from the left.
std::int32_t scroll_years(ButtonRange row, ButtonNumber n) {
  static constexpr std::array<std::int32_t, 6> from_the_left = {vv[1], vv[2], vv[3], vv[4], vv[5], vv[0]};
  return from_the_left.at(static_cast<std::size_t>(row.place(n)));
}

void scr(View& view, const SeriesStore& store, const Comparison& pair, std::int32_t step) {
  const Years first = std::min(store.fy(pair.tr1), store.fy(pair.tr2));
  const Years last = std::max(store.ly(pair.tr1), store.ly(pair.tr2));
  Years start = Years{view.fs} - step;
  // Deliberate: [one-year-before] back to the year before the first.
  if (view.sl + start + 1 < last) start = std::max(start, first - 1);
  if (start > first) start = std::min(start, last - view.sl);
  view.show_from(start);
}

void topbot(SeriesStore& store, Comparison& pair, Controls& controls, int k, std::int32_t step) {
  const int t = store.nd + k;
  Years earliest = store.fy(1), latest = store.ly(1);
  for (int i = 2; i <= store.nd + 2; ++i) {
    earliest = std::min<Years>(earliest, store.fy(i));
    latest = std::max<Years>(latest, store.ly(i));
  }
  Years first = std::max(Years{store.fy(t)} + step, latest - (max_years - 1));
  // Deliberate: [upper-limit-wins] applied last, so that this limit holds where both contradict each other.
  first = std::min(first, earliest + (max_years - 1));
  store.ly(t) = held_year(Years{store.ly(t)} - store.fy(t) + first);
  store.fy(t) = held_year(first);
  controls.b(k == 1 ? button::save_sample : button::save_reference).on = true;
  // Deliberate: [last-tree-unmarked] the last tree, nc, is not.
  if (k == 1 && pair.tr1 < store.nc) pair.tr1ok = true;
  if (k == 2 && pair.tr2 < store.nc) pair.tr2ok = true;
}

}  // namespace vorn
