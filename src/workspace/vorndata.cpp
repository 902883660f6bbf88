#include "workspace/vorndata.h"

#include <iostream>

namespace vorn {

SeriesStore::SeriesStore()
    : nam(entry_places),
      fy(entry_places),
      ly(entry_places),
      yr(entry_places),
      ad(entry_places),
      x(pool_places),
      xok(pool_places),
      tx(pool_places),
      ax(pool_places) {
  ad(1) = 1;
}

FileTable::FileTable()
    : cnam(max_files),
      rawok(max_files),
      rftype(max_files),
      rfhead(max_files),
      cfy(max_files),
      cly(max_files),
      cyr(max_files),
      crn(max_years, max_files),
      num(max_years, max_files),
      crn_written(max_files) {}

Comparison::Comparison() : chc(entry_places) {}

Controls::Controls() : b(max_buttons), mtext(max_messages), madd(max_messages) {}

LagTable::LagTable() : ctab(2 * max_lag + 1, max_segments), cyrs(2, max_segments) {}

CorrelationReportTables::CorrelationReportTables()
    : correlation(entry_places, 24),
      valid(entry_places, 24),
      mean_sum(entry_places),
      mean_count(entry_places),
      segment_sum(24),
      segment_count(24),
      chronology_sum(max_years),
      depth_less_one(max_years),
      comparison(max_years) {}

RbarKept::RbarKept() : mean_of_tree(max_series), pairs_of_tree(max_series) {}

WorkVectors::WorkVectors()
    : wk1(max_years),
      wk2(max_years),
      wk3(max_years),
      wk4(max_years),
      iwk1(max_years),
      iwk2(max_years),
      ar_coefficients(12, entry_places),
      tree_to_chronology(max_series),
      tree_to_trees(max_series) {}

Workspace::Workspace(Plot& the_plot, Files& the_files) : plot(the_plot), files(the_files), log(&std::cerr) {}

}  // namespace vorn
