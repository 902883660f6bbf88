#include "statistics/statistics_report.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "plot/long_work.h"
#include "statistics/report_file.h"
#include "statistics/tree_correlations.h"

namespace vorn {
namespace {

// A tree's line: name, first and last year, age, mean ring, standard deviation, correlation with the
// chronology, mean correlation with the other trees. The headings stand over these columns.
constexpr std::string_view tree_line = "(A8,3I7,4F7.2)";
constexpr std::string_view heading_1 = "(\"Name      First   Last    Age   Mean  S.Dev Correl.   RBAR\")";
constexpr std::string_view heading_2 = "(11X,\"year   year        Ring (mm)    with CRN   Tree\")";
constexpr int trees_a_page = 50;
constexpr double share_of_pairs = 0.9;  // of the work; the lines are the rest
constexpr std::string_view report_name = "Stats.prn";

// What the totals are taken over.
struct Rings {
  double sum = 0.0;    // of all widths, mm
  double count = 0.0;  // of all trees
};

void write_tree(const Workspace& w, int t, ReportFile& file, Rings& rings) {
  const auto widths = w.widths(t);
  const double age = w.yr(t);
  double sum = 0.0, squares = 0.0;
  for (const double width : widths) sum += width;
  const double mean = sum / age;
  for (const double width : widths) squares += (width - mean) * (width - mean);
  const double deviation = std::sqrt(squares / (age - 1.0));
  rings.sum += sum;
  rings.count += age;
  file.line(EditFormat(tree_line), w.nam(t).view(), w.fy(t), w.ly(t), w.yr(t), mean, deviation,
            w.tree_to_chronology(t), w.tree_to_trees(t));
}

void write_page(const Workspace& w, int first, ReportFile& file, Rings& rings) {
  file.line(EditFormat(heading_1));
  file.line(EditFormat(heading_2));
  file.empty_line();
  for (int t = first; t <= std::min(first + trees_a_page - 1, w.nc); ++t) write_tree(w, t, file, rings);
  file.empty_line();
}

void write_totals(const Workspace& w, ReportFile& file, const Rings& rings, double mean_cbar,
                  double mean_rbar) {
  file.empty_line();
  file.line(EditFormat("(\" Number of trees \",I7)"), w.nc);
  file.line(EditFormat("(\" Mean tree age   \",F7.2)"), rings.count / w.nc);
  // Deliberate: [mean-width] every ring weighs the same, so that old trees weigh more; no mean of the trees'
  // means.
  file.line(EditFormat("(\" Mean ring width \",F7.2)"), rings.sum / rings.count);
  file.line(EditFormat("(\" Mean correlation\",F7.2)"), mean_cbar);
  file.line(EditFormat("(\" Mean RBAR       \",F7.2)"), mean_rbar);
}

}  // namespace

void stats_rep(Workspace& w, Troubles& troubles) {
  LongWork work(w.plot, report_name);
  ReportFile file;
  told(troubles, report_name, file.create(w.files, report_name), "Open");
  file.line(EditFormat("(\" Stats report for \",A60)"), w.cnam(w.cf).view());
  const double mean_cbar = cbar(w, w, w, w.tree_to_chronology.range(1, max_series), w.careful);
  work.part(0, share_of_pairs);
  const double mean_rbar = rbar(w, w.tree_to_trees.range(1, max_series));
  Rings rings;
  for (int first = 1; first <= w.nc; first += trees_a_page) {
    write_page(w, first, file, rings);
    work.at(share_of_pairs + (1 - share_of_pairs) * first / w.nc);
  }
  write_totals(w, file, rings, mean_cbar, mean_rbar);
  w.ios = told(troubles, report_name, file.close(), "Close");
}

}  // namespace vorn
