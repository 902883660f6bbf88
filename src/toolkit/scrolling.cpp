#include "toolkit/scrolling.h"

#include <algorithm>
#include <array>

#include "toolkit/buttons.h"
#include "workspace/last_core.h"

namespace vorn {
namespace {

using Years = std::int64_t;  // in which sums of years are formed

// Deliberate: [last-tree-unmarked] the last tree, nc, does only carefully.
bool keeps_its_shift(const Workspace& w, int entry) {
  if (entry > w.nc) return w.careful.has(Mend::shift_lasts);
  return is_treated_as_core(entry, w, w.careful);
}

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

void topbot(Workspace& w, int k, std::int32_t step) {
  const int t = w.nd + k;
  Years earliest = w.fy(1), latest = w.ly(1);
  for (int i = 2; i <= w.nd + 2; ++i) {
    earliest = std::min<Years>(earliest, w.fy(i));
    latest = std::max<Years>(latest, w.ly(i));
  }
  Years first = std::max(Years{w.fy(t)} + step, latest - (max_years - 1));
  // Deliberate: [upper-limit-wins] applied last, so that this limit holds where both contradict each other.
  first = std::min(first, earliest + (max_years - 1));
  w.ly(t) = held_year(Years{w.ly(t)} - w.fy(t) + first);
  w.fy(t) = held_year(first);
  w.b(k == 1 ? button::save_sample : button::save_reference).on = true;
  if (keeps_its_shift(w, k == 1 ? w.tr1 : w.tr2)) (k == 1 ? w.tr1ok : w.tr2ok) = true;
}

}  // namespace vorn
