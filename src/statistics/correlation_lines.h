// The lines of a block of Corr.prn.
#pragma once

#include "records/text.h"
#include "statistics/report_file.h"
#include "statistics/segment_grid.h"
#include "workspace/series_store.h"
#include "workspace/work_vectors.h"

namespace vorn {

// With n segments in the block:
//
//   columns 1-8            name of the series, or what the line holds
//   columns 10-14, 15-19 … one correlation, or year, a segment
//   columns 5n+11 to 5n+15 the mean; every line is exactly so long
//
// A block of n = 0, -1 or -2 puts the mean's columns over those of the name; with fewer the lines drop out.

// The buffer in which a line is laid out; the last one stays in it.
using ReportLine = Text<140>;

// Writes one block from work.corr_tables: headings, a line for each entry with a valid cell, and the means of
// the trees after the last of them. What the lines of trees show is added to wk1 and iwk1 (by segment) and to
// wk2 and iwk2 (by tree).
void write_block(const SeriesStore& store, WorkVectors& work, ReportLine& line, const SegmentBlock& block,
                 ReportFile& file);

}  // namespace vorn
