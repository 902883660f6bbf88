#include "statistics/chronology_summary.h"

#include <algorithm>
#include <string_view>

#include "records/edit_format.h"
#include "statistics/tree_correlations.h"
#include "toolkit/buttons.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

constexpr std::size_t extension_length = 4;  // the point and three letters

// Makes the chronology of file c entry nd, and sets where the next one starts.
void place_chronology(Workspace& w, int c) {
  const int entry = w.nc + c;
  w.nd = entry;
  int years = std::clamp(w.cyr(c), 0, max_years);
  const bool fits = w.ad(entry) + years - 1 <= max_pool;
  if (!fits) years = 0;
  w.nam(entry) = chronology_name(w.cnam(c));
  w.fy(entry) = w.cfy(c);
  w.ly(entry) = fits ? w.cly(c) : w.cfy(c) - 1;
  w.yr(entry) = years;
  w.ad(entry + 1) = w.ad(entry) + years;
  for (int k = 1; k <= years; ++k) {
    w.ax(w.ad(entry) + k - 1) = w.crn(k, c);
    w.xok(w.ad(entry) + k - 1) = w.num(k, c) > 0;
  }
  if (!fits) out_err(w, "Would be too many rings");
}

void write_summary(Workspace& w) {
  // The correlations by tree are of no use here; a work vector takes them.
  const double mean_cbar = cbar(w, w.wk1.range(1, max_series));
  const double mean_rbar = rbar(w, w.wk1.range(1, max_series));
  w.mtext(message::summary_years) = edit(EditFormat("(\"Years \",I5,\" to \",I5)"), w.cfy(w.cf), w.cly(w.cf));
  w.mtext(message::summary_cores) = edit(EditFormat("(\"Number of cores  \",I5)"), w.nc);
  w.mtext(message::summary_tree_to_crn) = edit(EditFormat("(\"Mean tree to CRN\",F6.2)"), mean_cbar);
  w.mtext(message::summary_rbar) = edit(EditFormat("(\"RBar tree to tree \",F6.2)"), mean_rbar);
}

}  // namespace

Name chronology_name(const FileName& file) {
  std::string_view name = file.trimmed();
  // Deliberate: [extension-first] the extension goes before the path does, and by its length alone.
  name.remove_suffix(std::min(name.size(), extension_length));
  const auto path = name.find_last_of("/\\");
  if (path != std::string_view::npos) name.remove_prefix(path + 1);
  return Name(name);
}

void refresh_crns(Workspace& w) {
  w.nd = w.nc;
  for (int c = 1; c <= w.nfil; ++c) place_chronology(w, c);
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
