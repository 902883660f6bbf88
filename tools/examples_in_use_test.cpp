// What the program finds in the examples: the layouts, the figures of the start screen, and the planted
// errors.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "chronology/index_pipeline.h"
#include "editing/ring_edits.h"
#include "editing/working_pair.h"
#include "loading/chronology_summary.h"
#include "loading/startup.h"
#include "loading/two_column_conversion.h"
#include "plot/plot.h"
#include "records/disk_files.h"
#include "statistics/best_match.h"
#include "statistics/lag_table.h"
#include "statistics/tree_correlations.h"
#include "support/places.h"
#include "support/queue_screen.h"
#include "support/scratch_folder.h"
#include "toolkit/buttons.h"
#include "workspace/vorndata.h"

namespace vorn {
namespace {

class ExamplesInUse : public ::testing::Test {
 protected:
  ExamplesInUse() {
    std::filesystem::copy(source_folder() / "examples", scratch_.path());
    w.log = &log;
    init_start(w);
  }

  void choose_file(int f) {
    w.cf = f;
    init_raw(w, w.rftype(f));
    show_crns(w);
  }
  void compare(int sample, int reference) {
    w.tr1 = sample;
    w.tr2 = reference;
    set_chs(w);
  }
  void keep_sample() {
    save_tree(w, w, 1);
    data_man2(w);
    show_crns(w);
  }
  // "Correl." of the statistics report, by core from 1.
  std::vector<double> correlations() {
    std::vector<double> by_tree(static_cast<std::size_t>(w.nc) + 1);
    cbar(w, w, w, std::span(by_tree).subspan(1));
    return by_tree;
  }
  // The lag at which segment k of the lag table correlates best.
  int best_lag(int k) const {
    int best = -max_lag;
    for (int lag = -max_lag; lag <= max_lag; ++lag) {
      if (w.ctab(lag + 11, k) > w.ctab(best + 11, k)) best = lag;
    }
    return best;
  }
  int segments() const {
    int count = 0;
    while (count < max_segments && w.cyrs(1, count + 1) != -9999) ++count;
    return count;
  }
  // Checks the best lag of every segment of core `core` against its file's chronology that lies wholly before
  // or wholly from `year` on, but for those so near an end of the core that the table does not try that lag.
  void expect_lags(int core, int year, int before, int after) {
    compare(core, w.nc + w.cf);
    cor_tab(w, w, w, std::max(w.fy(w.nd + 1), w.fy(w.nd + 2)));
    int seen = 0;
    for (int k = 1; k <= segments(); ++k) {
      const bool early = w.cyrs(2, k) < year, late = w.cyrs(1, k) >= year;
      if (!early && !late) continue;
      const int lag = early ? before : after;
      if (w.cyrs(1, k) + lag < w.fy(w.nd + 1) || w.cyrs(2, k) + lag > w.ly(w.nd + 1)) continue;
      EXPECT_EQ(best_lag(k), lag) << w.cyrs(1, k) << " to " << w.cyrs(2, k);
      ++seen;
    }
    EXPECT_GE(seen, 4);
  }

  ScratchFolder scratch_;
  PatientScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  Workspace w{plot, disk};
  std::ostringstream log;
};

constexpr int lost_ring_core = 7, false_ring_core = 14, shifted_core = 19;

TEST_F(ExamplesInUse, AllSixFilesAreRecognisedAndLoadWithoutAMessage) {
  EXPECT_EQ(log.str(), "");
  ASSERT_EQ(w.nfil, 6);
  EXPECT_EQ(w.nraw, 5);
  const std::vector<Layout> layouts = {Layout::tucson_raw, Layout::heidelberg, Layout::compact,
                                       Layout::tucson_raw, Layout::tucson_raw, Layout::tucson_index};
  const std::vector<int> first_years = {1715, 1768, 1668, -1047, 1, 1601};
  const std::vector<int> last_years = {2014, 2012, 1998, -790, 139, 2014};
  for (int f = 1; f <= 6; ++f) {
    const auto at = static_cast<std::size_t>(f - 1);
    EXPECT_EQ(w.rftype(f), layouts[at]) << f;
    EXPECT_EQ(w.cfy(f), first_years[at]) << f;
    EXPECT_EQ(w.cly(f), last_years[at]) << f;
  }
  EXPECT_EQ(w.nc, 25);
}

TEST_F(ExamplesInUse, EveryFileOfRingWidthsHoldsItsCores) {
  const std::vector<int> cores = {25, 12, 9, 6, 5};
  for (int f = 1; f <= w.nraw; ++f) {
    choose_file(f);
    EXPECT_EQ(w.nc, cores[static_cast<std::size_t>(f - 1)]) << f;
    for (int i = 1; i <= w.nc; ++i) {
      for (const double width : w.widths(i)) ASSERT_TRUE(width > 0.0 && width < 10.0) << f << " core " << i;
    }
  }
}

// 0.64 and 0.47: worked out a second time by a separate calculation outside the program.
TEST_F(ExamplesInUse, TheFirstFileAgreesAsAMeasuredSiteWould) {
  EXPECT_EQ(w.mtext(message::summary_tree_to_crn).trimmed(), "Mean tree to CRN  0.64");
  EXPECT_EQ(w.mtext(message::summary_rbar).trimmed(), "RBar tree to tree   0.47");
}

TEST_F(ExamplesInUse, ThePlantedCoresFallOutOfTheStatistics) {
  const std::vector<double> r = correlations();
  for (int i = 1; i <= w.nc; ++i) {
    const bool planted = i == lost_ring_core || i == false_ring_core || i == shifted_core;
    if (planted) {
      EXPECT_LT(r[static_cast<std::size_t>(i)], 0.40) << i;
    } else {
      EXPECT_GT(r[static_cast<std::size_t>(i)], 0.55) << i;
    }
  }
}

TEST_F(ExamplesInUse, TheLostRingShowsAsALagOfMinusOneFromItsYearOn) {
  expect_lags(lost_ring_core, 1868, 0, -1);
}

TEST_F(ExamplesInUse, TheFalseRingShowsAsALagOfOneFromItsYearOn) {
  expect_lags(false_ring_core, 1877, 0, 1);
}

TEST_F(ExamplesInUse, TheShiftShowsAsALagOfSevenThroughout) {
  expect_lags(shifted_core, 1900, 7, 7);
}

TEST_F(ExamplesInUse, TheRemediesPutTheCoresRight) {
  compare(lost_ring_core, w.nc + 1);
  w.insdel = 1868;
  ins_year(w, w.nd + 1, false);
  keep_sample();
  compare(false_ring_core, w.nc + 1);
  w.insdel = 1877;
  del_year(w, w.nd + 1);
  keep_sample();
  compare(shifted_core, w.nc + 1);
  w.fy(w.nd + 1) -= 7;
  w.ly(w.nd + 1) -= 7;
  keep_sample();

  const std::vector<double> r = correlations();
  for (int i = 1; i <= w.nc; ++i) EXPECT_GT(r[static_cast<std::size_t>(i)], 0.55) << i;
  EXPECT_EQ(w.ly(lost_ring_core), 2014);
  EXPECT_EQ(w.ly(false_ring_core), 2012);
  EXPECT_EQ(w.fy(shifted_core), 1808);
  expect_lags(lost_ring_core, 1868, 0, 0);
  expect_lags(false_ring_core, 1877, 0, 0);
  expect_lags(shifted_core, 1900, 0, 0);
}

TEST_F(ExamplesInUse, TheBeamsAreDatedByTheReferenceChronology) {
  choose_file(5);
  const int reference = w.nc + 6;
  for (int beam = 1; beam <= w.nc; ++beam) {
    compare(beam, reference);
    const std::vector<MatchedStretch> stretches = best_matches(w);
    ASSERT_FALSE(stretches.empty());
    for (const MatchedStretch& stretch : stretches) {
      EXPECT_EQ(stretch.matches[0].offset, 1 - 1652) << beam << " from " << stretch.first;
    }
  }
}

TEST_F(ExamplesInUse, TheTwoColumnFilesBecomeOneTucsonFile) {
  read_trw(w);
  EXPECT_EQ(log.str(), "");
  ASSERT_EQ(w.nc, 3);
  EXPECT_EQ(w.fy(1), 1851);
  EXPECT_EQ(w.ly(1), 2014);
  EXPECT_EQ(w.ly(3), 2009);  // no date: taken to end in 2009
  EXPECT_EQ(w.yr(3), 148);
  const std::string written = ScratchFolder::read("twocolumn.rwl");
  EXPECT_EQ(written.substr(0, 12), "NOW31   1851");
  EXPECT_EQ(std::count(written.begin(), written.end(), '\n'),
            17 + 16 + 16);  // the last line of NOW33 holds its end marker alone
}

}  // namespace
}  // namespace vorn
