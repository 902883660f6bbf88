// The lag table of the correlation screen: segment by segment, the sample against the reference shifted by
// -10 to +10 years.
#pragma once

#include <cstdint>

#include "statistics/telling.h"
#include "workspace/series_store.h"
#include "workspace/settings.h"
#include "workspace/work_vectors.h"

namespace vorn {

// Fills ctab and cyrs for the sample (entry nd + 1) and the reference (entry nd + 2).
//
// Given:    ystart   the earliest year for the first segment.
// Returned: ctab     correlation of the reference's years of segment k with the sample's, read L years later,
//                    in row L + 11, column k; 0.0 where not computed, 2.0 with fewer than three pairs of
//                    present rings.
//           cyrs     first and last year of segment k; -9999 where there is none.
// Notes:    segments of seg years, one every seg - olap years, at most 34. None starts after the last year
//           from which a whole segment lies in both series; that holds for the first one too, even where it
//           is before their common span. A negative step runs backwards. A step of 0 leaves the table empty.
//           Lags never lead the sample out of its own years; the reference is read as the pool stands.
//           Carefully no year outside its own is read of either, and where they have fewer years in common
//           than a segment has the segment is those; without any the table is empty.
void cor_tab(const SeriesStore& store, const Settings& settings, LagTable& table, std::int32_t ystart);

// The same table with the mean absolute difference of standardised values (absmiss) instead of the
// correlation; -1.0 with fewer than eleven pairs. Tells the five numbers of absmiss for every cell without a
// missing ring. No menu offers it: it is there to look at a pair by another measure, from a test or debugger.
void cor_abs(const SeriesStore& store, const Settings& settings, LagTable& table, std::int32_t ystart,
             const Tell& tell);

}  // namespace vorn
