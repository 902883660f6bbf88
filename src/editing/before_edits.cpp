#include "editing/before_edits.h"

#include <algorithm>

#include "editing/raw_editor.h"
#include "toolkit/messages.h"

namespace vorn {

BeforeEdits::BeforeEdits(const Workspace& w) {
  for (int m = 1; m <= w.chs; ++m) {
    const int e = w.chc(m);
    const auto widths = w.widths(e);
    const auto presence = w.presence(e);
    copies_.push_back({e, w.fy(e), w.ly(e), std::vector<double>(widths.begin(), widths.end()),
                       std::vector<bool>(presence.begin(), presence.end())});
  }
}

bool BeforeEdits::Copy::is_as_in(const SeriesStore& w) const {
  return w.fy(entry) == first_year && w.ly(entry) == last_year &&
         std::ranges::equal(w.widths(entry), widths) && std::ranges::equal(w.presence(entry), presence);
}

void BeforeEdits::restore(Workspace& w) const {
  for (const Copy& copy : copies_) {
    if (copy.is_as_in(w)) continue;
    const int length = static_cast<int>(copy.widths.size());
    if (w.ad(w.nd) + w.yr(w.nd) - 1 + length - w.yr(copy.entry) > max_pool)
      return out_err(w, "Would be too many rings");
    resize_entry(w, copy.entry, length);
    w.fy(copy.entry) = copy.first_year;
    w.ly(copy.entry) = copy.last_year;
    std::ranges::copy(copy.widths, w.widths(copy.entry).begin());
    std::ranges::copy(copy.presence, w.presence(copy.entry).begin());
    w.derived_stale = true;
  }
}

void resize_entry(SeriesStore& w, int e, int length) {
  const int growth = length - w.yr(e);
  const int first = w.ad(e + 1), last = w.ad(w.nd) + w.yr(w.nd) - 1;
  w.x.move(first, last, growth);
  w.xok.move(first, last, growth);
  w.tx.move(first, last, growth);
  w.ax.move(first, last, growth);
  w.yr(e) = length;
  pack_starts(w, e);
}

}  // namespace vorn
