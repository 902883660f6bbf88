#include "menus/pair_ready.h"

#include "chronology/index_pipeline.h"
#include "editing/working_pair.h"
#include "loading/chronology_summary.h"
#include "toolkit/messages.h"

namespace vorn {

void refresh_derived(Workspace& w) {
  // Deliberate: [report-indices] what a report computes alone sets no entry anew.
  if (!w.derived_stale) return;
  if (w.nfil > 0 && w.rftype(w.cf) == Layout::tucson_index) {
    data_man_cores(w);
  } else {
    data_man2(w);
  }
  // Deliberate: [shift-does-not-last] the chronologies take their years from the file table again,
  // where a shift is kept only carefully.
  refresh_crns(w);
}

bool set_pair(Workspace& w) {
  refresh_derived(w);
  if (w.nd < 2) {
    out_err(w, "Need more than one core");
    return false;
  }
  set_chs(w);
  return true;
}

}  // namespace vorn
