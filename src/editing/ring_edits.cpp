#include "editing/ring_edits.h"

#include <algorithm>

#include "chronology/index_pipeline.h"
#include "toolkit/messages.h"
#include "workspace/last_core.h"

namespace vorn {
namespace {

constexpr int fewest_rings = 10;
constexpr int rings_averaged = 6;

int last_place_in_use(const Workspace& w) {
  const int reference = w.nd + 2;
  return w.ad(reference) + w.ly(reference) - w.fy(reference);
}

// Deliberate: [year-unchecked] whether the entry has that year is for the caller to ask.
int place_of_year(const Workspace& w, int e) {
  return w.insdel + w.ad(e) - w.fy(e);
}

// tx stays where it is: data_man makes it anew where it is read.
void move_rings(Workspace& w, int first, int last, int by) {
  w.x.move(first, last, by);
  w.ax.move(first, last, by);
  w.xok.move(first, last, by);
}

// Deliberate: [next-start-only] only the next entry's start follows: on the cross-dating screen there is no
// other.
void change_length(Workspace& w, int e, int by) {
  w.ad(e + 1) += by;
  w.ly(e) += by;
  w.yr(e) += by;
}

// A slot of a core is computed anew and marked. Deliberate: [last-core-unmarked] strictly below nc: the last
// core's slot is neither, but carefully.
void recompute_slot(Workspace& w, int e) {
  if (e == w.nd + 1 && is_treated_as_core(w.tr1, w, w.careful)) {
    data_man(w, w, w, e);
    w.tr1ok = true;
  }
  if (e == w.nd + 2 && is_treated_as_core(w.tr2, w, w.careful)) {
    data_man(w, w, w, e);
    w.tr2ok = true;
  }
}

}  // namespace

void del_year(Workspace& w, int e) {
  if (w.yr(e) <= fewest_rings) {
    out_err(w, "Tree age too small ");
    return;
  }
  const int p = place_of_year(w, e);
  const int end = last_place_in_use(w);
  w.rgx = w.x.at(p);
  w.rgax = w.ax.at(p);
  w.rgxok = w.xok.at(p);
  move_rings(w, p + 1, end + 1, -1);
  change_length(w, e, -1);
  recompute_slot(w, e);
}

void ins_year(Workspace& w, int e, bool restore) {
  int earliest = w.fy(1);
  for (int i = 2; i <= w.nd + 2; ++i) earliest = std::min(earliest, w.fy(i));
  if (w.ly(e) - earliest >= max_years) {
    out_err(w, "Chronology age limit MXY reached");
    return;
  }
  const int p = place_of_year(w, e);
  move_rings(w, p, last_place_in_use(w), 1);
  change_length(w, e, 1);
  if (restore) {
    w.x.put(p, w.rgx);
    w.ax.put(p, w.rgax);
    w.xok.put(p, w.rgxok);
  } else {
    double sum = 0;
    // Deliberate: [mean-of-the-next] near the end of a series they are those of the next entry.
    for (int k = 1; k <= rings_averaged; ++k) sum += w.x.at(p + k);
    w.x.put(p, sum / rings_averaged);
    w.ax.put(p, 1.0);
    w.xok.put(p, false);
  }
  recompute_slot(w, e);
}

}  // namespace vorn
