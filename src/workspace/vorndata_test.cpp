#include "workspace/vorndata.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <memory>

#include "plot/plot.h"
#include "records/memory_files.h"
#include "support/queue_screen.h"

namespace vorn {
namespace {

// The capacities are design: what the user is told, and what files hold, depends on them.
TEST(Capacities, AreThoseOfTheDesign) {
  EXPECT_EQ(max_series, 10000);
  EXPECT_EQ(max_pool, 1200000);
  EXPECT_EQ(max_files, 100);
  EXPECT_EQ(max_years, 12000);
  QueueScreen screen;
  Plot plot(screen);
  MemoryFiles files;
  const Workspace w(plot, files);
  EXPECT_EQ(w.nam.size(), 10000 + 100 + 2 + 1);
  EXPECT_EQ(w.crn.rows(), 12000);
  EXPECT_EQ(w.crn.columns(), 100);
  EXPECT_EQ(w.wk1.size(), 12000);
  EXPECT_EQ(w.b.size(), 140);
  EXPECT_EQ(w.mtext.size(), 140);
  EXPECT_EQ(w.mess.view().size(), 140u);
  EXPECT_EQ(w.nam(1).view().size(), 8u);
  EXPECT_EQ(w.cnam(1).view().size(), 60u);
}

TEST(Capacities, LeaveRoomForTheTwoWorkingEntriesBehindAFullPool) {
  // A chronology may be 12,000 years long, and an insertion is refused one ring later.
  EXPECT_GE(pool_places - max_pool, 2 * (max_years + 2));
}

TEST(Workspace, StartsEmptyWithTheFirstEntryAtTheFirstPlace) {
  QueueScreen screen;
  Plot plot(screen);
  MemoryFiles files;
  const Workspace w(plot, files);
  EXPECT_EQ(w.ad(1), 1);
  EXPECT_EQ(w.nc, 0);
  EXPECT_EQ(w.nd, 0);
  EXPECT_EQ(w.ios, status::ok);
  EXPECT_TRUE(w.nam(1).blank());
}

// Of which nothing is used before files are read: the system gives its pages when they are first written.
TEST(Workspace, CostsLittleBeforeItIsUsed) {
  if (!std::filesystem::exists("/proc/self/statm")) GTEST_SKIP() << "the system does not tell";
  const auto pages = [] {
    std::ifstream told("/proc/self/statm");
    long whole = 0, resident = 0;
    told >> whole >> resident;
    return resident;
  };
  QueueScreen screen;
  Plot plot(screen);
  MemoryFiles files;
  const long before = pages();
  const auto w = std::make_unique<Workspace>(plot, files);
  constexpr long page = 4096, mebibyte = 1 << 20;
  EXPECT_LT((pages() - before) * page, 20 * mebibyte);
  EXPECT_EQ(w->x(pool_places), 0);
}

TEST(Workspace, HasTheOutputNamesAndScrollStepsInTheirOrder) {
  EXPECT_EQ(mlab[0], "Tucson.prn ");
  EXPECT_EQ(mlab[2], "Compact.prn");
  EXPECT_EQ(mlab[3], "Index.prn  ");
  for (const auto name : mlab) EXPECT_EQ(name.size(), 11u);
  EXPECT_EQ(vv, (std::array<std::int32_t, 6>{50, -50, -10, -1, 1, 10}));
}

TEST(Grid, CountsFromOneColumnAfterColumn) {
  Grid<int> grid(3, 2);
  grid(1, 2) = 7;
  grid(3, 2) = 9;
  const auto second = grid.column(2, 3);
  EXPECT_EQ(second[0], 7);
  EXPECT_EQ(second[2], 9);
  EXPECT_EQ(grid(1, 1), 0);
}

TEST(Table, GivesNoElementsForALengthOfZeroOrLess) {
  Table<double> table(5);
  EXPECT_TRUE(table.range(6, 0).empty());
  EXPECT_TRUE(table.range(1, -3).empty());
  EXPECT_EQ(table.range(2, 4).size(), 4u);
}

TEST(TableDeathTest, StopsLoudlyAtARangeBeyondItsEnd) {
  Table<double> table(5);
  EXPECT_DEATH(table.range(3, 4), "table.h");
}

// In every kind of build: outside a table lies another one, whose values would be taken for this one's.
TEST(TableDeathTest, StopsLoudlyAtAnIndexOutside) {
  Table<double> table(5);
  for (const int i : {0, 6, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
    EXPECT_DEATH(table(i) = 1, "table.h") << i;
  }
  Grid<double> grid(3, 2);
  EXPECT_DEATH(grid(0, 1) = 1, "table.h");
  EXPECT_DEATH(grid(4, 1) = 1, "table.h");
  EXPECT_DEATH(grid(1, 3) = 1, "table.h");
  EXPECT_DEATH(grid.column(3, 1), "table.h");
  EXPECT_DEATH(grid.column(1, 4), "table.h");
  EXPECT_DEATH(table.range(2, std::numeric_limits<int>::max()), "table.h");
}

TEST(Table, BeginsWithNothingInIt) {
  Table<double> numbers(1000);
  Table<bool> switches(1000);
  Table<Name> names(10);
  for (int i = 1; i <= 1000; ++i) {
    EXPECT_EQ(numbers(i), 0);
    EXPECT_FALSE(switches(i));
  }
  EXPECT_TRUE(names(10).blank());
  EXPECT_EQ(Table<double>(0).size(), 0);
}

// A formula that runs past the pool must neither crash nor write: there it finds nothing.
TEST(Pool, ReadsNothingAndTakesNothingOutside) {
  Pool<double> pool(3);
  pool(1) = 1;
  pool(3) = 3;
  EXPECT_EQ(pool.at(0), 0);
  EXPECT_EQ(pool.at(4), 0);
  EXPECT_EQ(pool.at(3), 3);
  pool.put(4, 9);
  pool.put(0, 9);
  EXPECT_EQ(pool(1), 1);
  EXPECT_EQ(pool(3), 3);
}

TEST(Pool, MovesABlockAllAtOnce) {
  Pool<double> pool(6);
  for (int p = 1; p <= 6; ++p) pool(p) = p;
  pool.move(2, 5, -1);  // 2 3 4 5 5 6
  EXPECT_EQ(pool(1), 2);
  EXPECT_EQ(pool(4), 5);
  EXPECT_EQ(pool(5), 5);
  EXPECT_EQ(pool(6), 6);
  pool.move(1, 5, 1);  // 2 2 3 4 5 5
  EXPECT_EQ(pool(1), 2);
  EXPECT_EQ(pool(2), 2);
  EXPECT_EQ(pool(6), 5);
}

TEST(Pool, MovesNothingnessInFromOutsideAndLosesWhatLeaves) {
  Pool<double> pool(4);
  for (int p = 1; p <= 4; ++p) pool(p) = p;
  pool.move(3, 6, -1);  // places 5 and 6 hold nothing: 1 3 4 0
  EXPECT_EQ(pool(2), 3);
  EXPECT_EQ(pool(3), 4);
  EXPECT_EQ(pool(4), 0);
  pool.move(-1, 2, 1);  // places -1 and 0 hold nothing: 0 1 3 0
  EXPECT_EQ(pool(1), 0);
  EXPECT_EQ(pool(2), 1);
  EXPECT_EQ(pool(3), 3);
  pool.move(1, 4, 100);
  pool.move(1, 4, -100);
  EXPECT_EQ(pool(2), 1);
  pool.move(-9, -8, 10);  // nothingness alone: 0 0 3 0
  EXPECT_EQ(pool(2), 0);
  EXPECT_EQ(pool(3), 3);
}

TEST(Text, IsCutOrPaddedToItsLength) {
  EXPECT_EQ(Name("ABCDEFGHIJ").view(), "ABCDEFGH");
  EXPECT_EQ(Name("AB").view(), "AB      ");
  EXPECT_EQ(Name("AB").trimmed(), "AB");
  EXPECT_TRUE(Name("").blank());
  Name name("A");
  name(8) = '-';
  EXPECT_EQ(name.view(), "A      -");
}

}  // namespace
}  // namespace vorn
