#include "formats/core_loading.h"

#include "chronology/missing_rings.h"
#include "toolkit/messages.h"

namespace vorn {

void start_store(Workspace& w) {
  w.nc = 0;
  w.ad(1) = 1;
}

bool take_places(Workspace& w, int i, int years) {
  const bool fits = years <= max_pool - (w.ad(i) - 1);
  w.yr(i) = fits ? years : 0;
  w.ad(i + 1) = w.ad(i) + w.yr(i);
  if (!fits) out_err(w, "Would be too many rings");
  return fits;
}

void finish_cores(Workspace& w) {
  bool any_missing = false;
  for (int p = 1; p < w.ad(w.nc + 1); ++p) {
    w.xok(p) = w.x(p) >= 0;
    any_missing = any_missing || !w.xok(p);
  }
  if (any_missing) mdet_miss(w, 1, w.nc);
}

}  // namespace vorn
