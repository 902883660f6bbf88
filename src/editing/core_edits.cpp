#include "editing/core_edits.h"

#include "chronology/index_pipeline.h"
#include "formats/layouts.h"
#include "plot/long_work.h"
#include "records/text_file.h"
#include "toolkit/messages.h"
#include "toolkit/page_troubles.h"

namespace vorn {
namespace {

void remove_entry(Workspace& w, int gone) {
  const int n = w.yr(gone);
  const int start = w.ad(gone);
  for (int k = gone + 1; k <= w.nd; ++k) {
    w.fy(k - 1) = w.fy(k);
    w.ly(k - 1) = w.ly(k);
    w.yr(k - 1) = w.yr(k);
    w.nam(k - 1) = w.nam(k);
  }
  const int end = w.ad(w.nd + 1);
  w.x.move(start + n, end, -n);
  w.xok.move(start + n, end, -n);
  // Of the indices only the chronologies' move; those of the cores are computed anew at the end.
  w.tx.move(w.ad(w.nc + 1), end, -n);
  w.ax.move(w.ad(w.nc + 1), end, -n);
  for (int k = gone + 1; k <= w.nd + 1; ++k) w.ad(k - 1) = w.ad(k) - n;
  --w.nc;
  w.nd = w.nfil + w.nc;
}

// Deletes chc(1 … count); the numbers still to come are lowered behind a deleted entry, so that they keep
// naming the same series. `work` is what the user knows it by.
void remove_chosen(Workspace& w, int count, LongWork& work) {
  for (int m = 1; m <= count; ++m) {
    work.at(static_cast<double>(m - 1) / count);
    const int gone = w.chc(m);
    remove_entry(w, gone);
    for (int j = m + 1; j <= count; ++j) {
      if (w.chc(j) > gone) --w.chc(j);
    }
  }
  for (int j = 1; j <= w.chs; ++j) w.chc(j) = 0;
  w.chs = 0;
  work.part(1, 1);
  data_man2(w);
}

// Appends the cores chc(1 … count) to the file; answers whether all of it was written.
bool append_cores(Workspace& w, const FileName& name, Layout layout, int count) {
  TextOutput file;
  const Status opened = file.append(w.files, name.view());
  told_or_end(w, opened, "Open", name.view());
  // Cores that cannot be written must stay in the store.
  if (opened != status::ok) return false;
  PageTroubles troubles(w);
  // Deliberate: [index-destination] to an index file nothing is written, and the core is gone all the same.
  const LayoutRow* row = row_of(layout);
  for (int m = 1; m <= count; ++m) {
    if (row && row->write_core) row->write_core(w, {name.view(), file, troubles, w.careful}, w.chc(m));
  }
  const bool written = file.is_open();
  const Status closed = file.close();
  told_or_end(w, closed, "Close", name.view());
  return written && closed == status::ok;
}

}  // namespace

void del_core(Workspace& w) {
  LongWork work(w.plot, "Delete Core");
  remove_chosen(w, w.chs, work);
}

bool move_core(Workspace& w) {
  const int target = w.chc(w.chs) - w.nc;
  if (!append_cores(w, w.cnam(target), w.rftype(target), w.chs - 1)) return false;
  LongWork work(w.plot, "Move Core");
  remove_chosen(w, w.chs - 1, work);
  // Deliberate: [old-numbers] also what stood behind the selection, which a deletion leaves there.
  w.chc.fill(0);
  return true;
}

}  // namespace vorn
