#include "editing/working_pair.h"

#include <algorithm>

#include "toolkit/buttons.h"
#include "workspace/constant_core.h"

namespace vorn {
namespace {

// A member of the pair that names no entry becomes the first one, or the second when the other has the first.
void make_valid(int nd, std::int32_t& member, std::int32_t other) {
  if (member < 1 || member > nd) member = other == 1 ? 2 : 1;
}

// Keeps the years shown where they are as long as they meet the pair, otherwise ends them on the earlier of
// the two last years.
void place_years_shown(View& view, const SeriesStore& w, const Comparison& pair) {
  const int first = std::min(w.fy(pair.tr1), w.fy(pair.tr2));
  const int last = std::max(w.ly(pair.tr1), w.ly(pair.tr2));
  if (first - 2 <= view.fs && last + 2 - view.sl >= view.fs) return;
  view.show_from(std::int64_t{std::min(w.ly(pair.tr1), w.ly(pair.tr2))} - view.sl + 1);
}

void fill_slot(SeriesStore& w, int slot, int entry, int start) {
  w.fy(slot) = w.fy(entry);
  w.ly(slot) = w.ly(entry);
  w.yr(slot) = w.yr(entry);
  w.nam(slot) = w.nam(entry);
  w.ad(slot) = start;
  w.x.copy(w.ad(entry), start, w.yr(entry));
  w.xok.copy(w.ad(entry), start, w.yr(entry));
  w.ax.copy(w.ad(entry), start, w.yr(entry));
}

// Takes the core in one slot out of the current chronology in the other.
void leave_core_out(SeriesStore& w, const FileTable& files, int core, int chronology) {
  for (int j = 0; j < w.yr(core); ++j) {
    const int k = w.fy(core) - w.fy(chronology) + 1 + j;  // the chronology's year, counted from 1
    if (k < 1 || k > w.yr(chronology) || k > max_years) continue;
    const int p = w.ad(chronology) + k - 1;
    const int depth = files.num(k, files.cf);
    // Deliberate: [missing-taken-out] whether its ring was present or not.
    const double rest = depth * w.ax.at(p) - w.ax.at(w.ad(core) + j);
    if (depth > 1) {
      w.ax.put(p, rest / (depth - 1));
    } else {
      w.ax.put(p, 1.0);
      w.xok.put(p, false);
    }
  }
}

}  // namespace

void set_chs(Workspace& w) {
  make_valid(w.nd, w.tr1, w.tr2);
  make_valid(w.nd, w.tr2, w.tr1);
  place_years_shown(w, w, w);
  w.chc(1) = w.tr1;
  w.chc(2) = w.tr2;
  w.chs = 2;
  w.tr1ok = w.tr2ok = false;
  remove_tree(w, w, w, w.careful);
  const bool editable = w.tr1 <= w.nc || w.tr2 <= w.nc;
  w.b(button::insert_ring).on = editable;
  w.b(button::delete_ring).on = editable;
}

void remove_tree(SeriesStore& w, const FileTable& files, const Comparison& pair, const Careful& careful) {
  const int sample = w.nd + 1, reference = w.nd + 2;
  // Deliberate: [slot-overlaps] the slot starts on the last value of entry nd, not behind it; files depend on
  // it. Deliberate: [reference-end] so a copy of entry nd as the reference ends on the sample's first value.
  const int overlap = careful.has(Mend::reference_end) ? 0 : 1;
  fill_slot(w, sample, pair.tr1, w.ad(w.nd) + w.yr(w.nd) - overlap);
  fill_slot(w, reference, pair.tr2, w.ad(sample) + w.yr(sample));
  w.ad(reference + 1) = w.ad(reference) + w.yr(reference);
  const int own_chronology = w.nc + files.cf;
  const auto is_part = [&](int entry) { return entry <= w.nc && !is_left_out(w, careful, entry); };
  if (is_part(pair.tr1) && pair.tr2 == own_chronology) {
    leave_core_out(w, files, sample, reference);
  } else if (is_part(pair.tr2) && pair.tr1 == own_chronology) {
    leave_core_out(w, files, reference, sample);
  }
}

bool would_be_too_long(const SeriesStore& w, const Comparison& pair, int k) {
  const int entry = k == 1 ? pair.tr1 : pair.tr2;
  if (entry > w.nc) return false;
  std::int64_t first = w.fy(w.nd + k), last = w.ly(w.nd + k);
  for (int i = 1; i <= w.nc; ++i) {
    if (i == entry) continue;
    first = std::min<std::int64_t>(first, w.fy(i));
    last = std::max<std::int64_t>(last, w.ly(i));
  }
  return last - first + 1 > max_years;
}

void save_tree(SeriesStore& w, Comparison& pair, int k) {
  (k == 1 ? pair.tr1ok : pair.tr2ok) = false;
  const int entry = k == 1 ? pair.tr1 : pair.tr2;
  const int slot = w.nd + k;
  const int reference = w.nd + 2;
  const int growth = w.yr(slot) - w.yr(entry);
  const int first = w.ad(entry + 1);
  const int last = w.ad(reference) + w.yr(reference) - 1;
  w.x.move(first, last, growth);
  w.xok.move(first, last, growth);
  w.ax.move(first, last, growth);
  w.tx.move(first, last, growth);
  for (int j = entry + 1; j <= reference; ++j) w.ad(j) += growth;
  w.fy(entry) = w.fy(slot);
  w.ly(entry) = w.ly(slot);
  w.yr(entry) = w.yr(slot);
  w.x.copy(w.ad(slot), w.ad(entry), w.yr(entry));
  w.xok.copy(w.ad(slot), w.ad(entry), w.yr(entry));
  w.ax.copy(w.ad(slot), w.ad(entry), w.yr(entry));
  w.tx.copy(w.ad(slot), w.ad(entry), w.yr(entry));
}

}  // namespace vorn
