// Which cores are treated as such in all places.
#pragma once

#include "workspace/careful.h"
#include "workspace/series_store.h"

namespace vorn {

// Whether the working copy of the entry is computed anew when it changes, marked as changed and drawn by its
// ring widths: of a core it is, of the last one only carefully.
inline bool is_treated_as_core(int entry, const SeriesStore& store, const Careful& careful) {
  return entry < store.nc || (entry == store.nc && careful.has(Mend::last_core));
}

}  // namespace vorn
