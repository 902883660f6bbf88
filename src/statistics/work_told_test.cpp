// What the user is told of long work in this room.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "plot/plot.h"
#include "records/disk_files.h"
#include "statistics/best_match.h"
#include "statistics/correlation_report.h"
#include "statistics/statistics_report.h"
#include "statistics/tree_correlations.h"
#include "support/kept_troubles.h"
#include "support/scratch_folder.h"
#include "support/test_store.h"

namespace vorn {
namespace {

// Keeps what it is told.
class ListeningScreen : public Screen {
 public:
  void show(const Page&) override {}
  Event next_event() override { throw ProgramEnd(EndReason::closed); }
  void progress(std::string_view what, double share) override {
    names.insert(std::string(what));
    shares.push_back(share);
  }
  std::set<std::string> names;
  std::vector<double> shares;
};

// 200 trees of 60 years.
struct WorkTold : testing::Test {
  ScratchFolder folder;
  ListeningScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  std::ostringstream told;
  KeptTroubles troubles{told};
  std::unique_ptr<Workspace> w = std::make_unique<Workspace>(plot, disk);

  WorkTold() {
    w->nfil = w->cf = 1;
    w->ad(1) = 1;
    for (int i = 1; i <= 202; ++i) {
      w->fy(i) = 1900;
      w->ly(i) = 1959;
      w->yr(i) = 60;
      w->ad(i + 1) = w->ad(i) + 60;
      const auto values = noise(60, static_cast<unsigned>(i));
      std::copy(values.begin(), values.end(), w->ax.range(w->ad(i), 60).begin());
      std::fill_n(w->xok.range(w->ad(i), 60).begin(), 60, true);
    }
    w->nc = w->nd = 200;
    w->cfy(1) = 1900;
    w->cly(1) = 1959;
    w->cyr(1) = 60;
    for (int k = 1; k <= 60; ++k) w->num(k, 1) = 200;
  }

  // That all was told under one name, from the beginning to the end and never backwards.
  void expect_told(const std::string& name, double last) const {
    EXPECT_EQ(screen.names, std::set<std::string>{name});
    ASSERT_FALSE(screen.shares.empty());
    EXPECT_TRUE(std::is_sorted(screen.shares.begin(), screen.shares.end()));
    EXPECT_GE(screen.shares.front(), 0);
    EXPECT_GE(screen.shares.back(), last);
    EXPECT_LE(screen.shares.back(), 1);
    EXPECT_EQ(told.str(), "");
  }
};

TEST_F(WorkTold, OfTheCorrelationsOfAllTrees) {
  rbar(*w, w->wk1.range(1, 200));
  expect_told("RBar", 1);
}

TEST_F(WorkTold, OfTheCorrelationsOfAllTreesOnceAsLongAsTheyStay) {
  rbar(*w, w->wk1.range(1, 200));
  screen.shares.clear();
  rbar(*w, w->wk1.range(1, 200));
  EXPECT_TRUE(screen.shares.empty());
  w->ax(3) += 0.25;
  rbar(*w, w->wk1.range(1, 200));
  expect_told("RBar", 1);
}

TEST_F(WorkTold, OfTheStatisticsReportAsAWhole) {
  stats_rep(*w, troubles);
  expect_told("Stats.prn", 0.9);
}

TEST_F(WorkTold, OfTheCorrelationReportAsAWhole) {
  w->seg = 20;
  w->olap = 10;
  cor_report(*w, troubles);
  expect_told("Corr.prn", 0.9);
}

TEST_F(WorkTold, OfTheBestMatches) {
  w->seg = 10;
  best_matches(*w);
  expect_told("Best match", 0.5);
  EXPECT_EQ(screen.shares.size(), 6u);  // one a stretch
}

}  // namespace
}  // namespace vorn
