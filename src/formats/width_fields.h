// What the writers of ring widths share.
#pragma once

#include <cstdint>
#include <vector>

#include "records/edit_items.h"
#include "workspace/series_store.h"

namespace vorn {

// The widths of entry i as a file holds them, year by year: thousandths of a millimetre, and `missing_ring`
// for a ring that is missing, whatever estimate stands in its place.
std::vector<Integer> width_fields(const SeriesStore& w, int i, std::int32_t missing_ring);

}  // namespace vorn
