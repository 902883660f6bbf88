// What procedures work in, and what they keep from call to call.
#pragma once

#include <cstdint>

#include "workspace/fingerprint.h"
#include "workspace/table.h"

namespace vorn {

// Tables that the correlation report keeps from one report to the next (see correlation_report.h).
struct CorrelationReportTables {
  CorrelationReportTables();

  Grid<double> correlation;      // entry x segment of the block
  Grid<bool> valid;              // where the cell could be computed
  Table<double> mean_sum;        // by entry: sum of its valid correlations so far
  Table<double> mean_count;      // by entry: their number
  Table<double> segment_sum;     // by segment: sum over trees
  Table<double> segment_count;   // by segment: number of trees
  Table<double> chronology_sum;  // by chronology year: depth x value
  Table<double> depth_less_one;  // by chronology year: max(depth - 1, 1)
  Table<double> comparison;      // the chronology as compared with the entry at hand
};

// The lag table of the correlation screen.
struct LagTable {
  LagTable();

  Grid<double> ctab;        // lag + 11, segment
  Grid<std::int32_t> cyrs;  // first and last year of a segment, -9999 where none
};

// What rbar computed last, and what from (see tree_correlations.h).
struct RbarKept {
  RbarKept();

  bool valid = false;
  Fingerprint trees;                  // of years and values
  double mean = 0.0;                  // over all pairs
  Table<double> mean_of_tree;         // with the others
  Table<std::int32_t> pairs_of_tree;  // how many those are
};

struct WorkVectors {
  WorkVectors();

  // Their contents live within one operation only; the correlation report alone adds to wk1, wk2, iwk1 and
  // iwk2 what it prints. wk4 is there for a fourth vector of the same kind, which nothing needs today.
  Table<double> wk1, wk2, wk3, wk4;
  Table<std::int32_t> iwk1, iwk2;

  Grid<double> ar_coefficients;      // 12 places an entry: the model fitted last (data_man)
  Table<double> tree_to_chronology;  // by core (stats_rep)
  Table<double> tree_to_trees;       // by core (stats_rep)
  CorrelationReportTables corr_tables;
  RbarKept rbar_kept;
};

}  // namespace vorn
