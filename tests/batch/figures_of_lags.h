// The figures of the lag tables that a session shows.
#pragma once

#include <cstdint>
#include <vector>

#include "batch/collection.h"
#include "batch/correlations.h"
#include "batch/figures_session.h"
#include "batch/same_figures.h"

namespace vorn {

// The rows of the first cores, `most` at most, page by page; `other` as for lag_rows.
std::vector<CoreTables> tables_of(Collection& collection, int most, const OtherChronology* other);

// Holds them against the pages in this folder. `first` is that of the reference's years.
void compare_tables(const SeriesStore& store, const std::vector<CoreTables>& tables, std::int32_t first,
                    SameFigures& all);

}  // namespace vorn
