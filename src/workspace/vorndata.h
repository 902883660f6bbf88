// The whole state of the program: one Workspace, made once and handed to every procedure.
//
// Three stores: the series store (entries 1 to nd, packed end to end in one pool of ring values), the file
// table (up to 100 files of the list, each with its own chronology) and the state of the screen. Tables count
// from 1: the width of year y in entry i is w.x(w.ad(i) + y - w.fy(i)).
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <span>
#include <string_view>

#include "records/text.h"
#include "workspace/capacity.h"
#include "workspace/pool.h"
#include "workspace/table.h"

namespace vorn {

class Plot;

using Name = Text<8>;       // of a series
using FileName = Text<60>;  // of a file of the list; trailing blanks are no part of it
using Label = Text<60>;     // of a button, or a line of the message table

// What rftype says of a file.
namespace file_format {
inline constexpr int heidelberg = 1;
inline constexpr int compact = 2;
inline constexpr int tucson_raw = 3;
inline constexpr int tucson_index = 4;
inline constexpr int not_recognised = 5;
}  // namespace file_format

// A rectangle of the page, in page units.
struct Rectangle {
  int x1 = 0, y1 = 0;  // left, top
  int x2 = 0, y2 = 0;  // right, bottom
};

// One control of the program: a rectangle that it paints and hit-tests itself.
struct Button : Rectangle {
  Label label;
  bool on = false;   // shown and clickable
  bool lit = false;  // highlighted; of options, the one chosen
};

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

struct Workspace {
  explicit Workspace(Plot& plot);
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  Plot& plot;         // where everything is drawn and every click comes from
  std::ostream* log;  // each message shown is also written here, one a line; standard error at first

  // --- The series store. Entries 1 to nc are the cores of the current file, nc + 1 to nc + nfil the
  // chronologies of the files, nd + 1 and nd + 2 the working copies of sample and reference.
  Table<Name> nam;          // series name; "-" as its eighth character: years before year 0
  Table<std::int32_t> fy;   // first calendar year
  Table<std::int32_t> ly;   // last calendar year, fy + yr - 1
  Table<std::int32_t> yr;   // length in years
  Table<std::int32_t> ad;   // where the entry starts in the pool; ad(i + 1) = ad(i) + yr(i)
  Pool<double> x;           // pool of ring widths, mm; at a missing ring an estimate once loading is done
  Pool<bool> xok;           // pool: the ring was present in the file; false marks a missing ring for good
  Pool<double> tx;          // pool: detrended index, width / spline (or the width itself)
  Pool<double> ax;          // pool: what is correlated and drawn: tx prewhitened and transformed
  Table<std::int32_t> chc;  // entry numbers chosen
  std::int32_t nc = 0;      // cores of the current file
  std::int32_t nd = 0;      // all entries
  std::int32_t chs = 0;     // how many of chc are in use

  // --- The file table.
  Table<FileName> cnam;        // name as the list has it
  Table<bool> rawok;           // the file exists
  Table<std::int32_t> rftype;  // its layout, see file_format
  Table<std::int32_t> rfhead;  // header lines before its first data line (Tucson layouts)
  Table<std::int32_t> cfy;     // first year of its chronology
  Table<std::int32_t> cly;     // last year of its chronology
  Table<std::int32_t> cyr;     // years of its chronology
  Grid<double> crn;  // chronology: year k of file f is crn(k, f); thousandths where read from an index file
  Grid<std::int32_t> num;  // its sample depth
  std::int32_t nfil = 0;   // files kept after start-up
  std::int32_t nraw = 0;   // how many of them hold ring widths
  std::int32_t cf = 0;     // the current file
  // A switch, ss, jpr, a stored ring or a core was changed since the chronology entries were last set: what
  // is derived is made anew before a working pair is set.
  bool derived_stale = false;

  // --- Work vectors; their contents live within one operation only.
  Table<double> wk1, wk2, wk3, wk4;
  Table<std::int32_t> iwk1, iwk2;

  // --- Analysis settings, set by init_start.
  std::int32_t ss = 32;    // spline: period in years at which half of the amplitude passes
  std::int32_t jpr = 11;   // highest order of the autoregressive model
  bool splineon = true;    // detrend by the spline
  bool aron = true;        // prewhiten
  bool logon = true;       // take logarithms
  std::int32_t seg = 50;   // segment length, years
  std::int32_t olap = 25;  // lag table: segments step by seg - olap; correlation report: they step by olap
  std::int32_t sccc = 0;   // names scrolled off the top of a list
  bool lineon = true;      // curves (rather than skeleton)
  bool indon = true;       // indices (rather than ring widths)
  bool ins = false;        // the cross-dating screen inserts (rather than deletes)
  bool chok = true;        // which highlight colours a list uses

  // --- Comparison and scrolling.
  std::int32_t tr1 = 0, tr2 = 0;      // the sample and the reference
  bool tr1ok = false, tr2ok = false;  // their working copies hold changes not yet saved
  std::int32_t sl = 100;              // years across the graph
  std::int32_t fs = 0, ls = 99;       // first and last year shown
  double scx = 25.0;                  // page units a year
  double scy = -140.0 / 3.0;          // page units a row of the editor
  bool ul = false;                    // an edit acts on the sample (the upper one)
  std::int32_t insdel = 0;            // the year of the edit
  double rgx = 0, rgax = 0;           // the ring deleted last: width and analysis value
  bool rgxok = false;                 // and whether it was present

  // --- Raw-data editor.
  std::int32_t edtree = 0, edfs = 0, edcol = 0, edcols = 0;

  // --- Screen and input.
  Table<Button> b;
  Table<Label> mtext;     // message lines
  Table<Rectangle> madd;  // and where they stand
  Text<140> mess;         // line buffer
  std::int32_t mous = 0;  // button hit last, 0 for none
  std::int32_t msx = 0, msy = 0;
  std::int32_t ios = 0;                // status of the last file operation, see records/edit_format.h
  bool fileok = false;                 // answer of the last test whether a file exists
  bool passing_over_messages = false;  // Escape was pressed at a message: those that follow are not shown

  // --- Lag table.
  Grid<double> ctab;        // lag + 11, segment
  Grid<std::int32_t> cyrs;  // first and last year of a segment, -9999 where none

  // --- What single procedures keep from call to call.
  Grid<double> ar_coefficients;      // 12 places an entry: the model fitted last (data_man)
  Table<double> tree_to_chronology;  // by core (stats_rep)
  Table<double> tree_to_trees;       // by core (stats_rep)
  CorrelationReportTables corr_tables;

  // The values of entry i in year order, for kernels that count from 0.
  std::span<double> widths(int i) { return x.range(ad(i), yr(i)); }
  std::span<bool> presence(int i) { return xok.range(ad(i), yr(i)); }
  std::span<double> index(int i) { return tx.range(ad(i), yr(i)); }
};

// The names of the five kinds of output file, as the start menu shows them.
inline constexpr std::array<std::string_view, 5> mlab = {"Tucson.prn ", "Heidel.prn ", "Compact.prn",
                                                         "Index.prn  ", "Column.prn "};
// Scroll steps in years, in the order that the scroll buttons index them.
inline constexpr std::array<std::int32_t, 6> vv = {50, -50, -10, -1, 1, 10};

}  // namespace vorn
