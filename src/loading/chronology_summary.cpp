#include "loading/chronology_summary.h"

#include "records/edit_format.h"
#include "statistics/chronology_entries.h"
#include "statistics/tree_correlations.h"
#include "toolkit/buttons.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

void write_summary(Workspace& w) {
  // The correlations by tree are of no use here; a work vector takes them.
  const double mean_cbar = cbar(w, w, w, w.wk1.range(1, max_series), w.careful);
  const double mean_rbar = rbar(w, w.wk1.range(1, max_series));
  w.mtext(message::summary_years) = edit(EditFormat("(\"Years \",I5,\" to \",I5)"), w.cfy(w.cf), w.cly(w.cf));
  w.mtext(message::summary_cores) = edit(EditFormat("(\"Number of cores  \",I5)"), w.nc);
  w.mtext(message::summary_tree_to_crn) = edit(EditFormat("(\"Mean tree to CRN\",F6.2)"), mean_cbar);
  w.mtext(message::summary_rbar) = edit(EditFormat("(\"RBar tree to tree \",F6.2)"), mean_rbar);
}

}  // namespace

void refresh_crns(Workspace& w) {
  for (int told = place_chronologies(w, w); told > 0; --told) out_err(w, "Would be too many rings");
  w.derived_stale = false;
  write_summary(w);
}

bool show_crns(Workspace& w) {
  refresh_crns(w);
  w.b(button::current_chronology).label = w.cnam(w.cf).view();
  w.chc(1) = w.cf;
  w.chs = 1;
  const bool several = w.nraw > 1;
  w.b(button::move_core).on = several;
  return several;
}

}  // namespace vorn
