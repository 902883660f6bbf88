#include "editing/core_edits.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/scratch_folder.h"
#include "support/test_store.h"

namespace vorn {
namespace {

// Five cores of 1900 to 1949 and the chronologies of two files.
struct CoreEdits : ::testing::Test {
  CoreEdits() {
    for (int i = 1; i <= 5; ++i)
      store.add_tree("CORE" + std::to_string(i), 1900, noise(50, static_cast<unsigned>(i)));
    store.add_tree("FIRST", 1900, noise(50, 11));
    store.add_tree("SECOND", 1900, noise(50, 12));
    w.nc = 5;
    w.nfil = 2;
    w.cf = 1;
    w.cnam(1) = "first.rwl";
    w.cnam(2) = "second.rwl";
    w.rftype(1) = w.rftype(2) = Layout::tucson_raw;
    store.screen.presses = 2;
  }
  void select(std::initializer_list<int> entries) {
    w.chs = 0;
    for (const int e : entries) w.chc(++w.chs) = e;
  }
  std::string names() {
    std::string all;
    for (int i = 1; i <= w.nd; ++i) all += std::string(w.nam(i).trimmed()) + " ";
    return all;
  }
  bool packed() {
    for (int i = 1; i <= w.nd; ++i) {
      if (w.ad(i + 1) != w.ad(i) + w.yr(i)) return false;
    }
    return true;
  }

  ScratchFolder folder;
  TestStore store;
  Workspace& w = store.w;
};

TEST_F(CoreEdits, DeletingThreeAndFiveRemovesTheSeriesThatHadThoseNumbers) {
  const double fourth = w.x(w.ad(4) + 7), second_chronology = w.ax(w.ad(7) + 7);
  select({3, 5});
  del_core(w);
  EXPECT_EQ(names(), "CORE1 CORE2 CORE4 FIRST SECOND ");
  EXPECT_EQ(w.nc, 3);
  EXPECT_EQ(w.nd, 5);
  EXPECT_EQ(w.x(w.ad(3) + 7), fourth);
  EXPECT_EQ(w.ax(w.ad(5) + 7), second_chronology);
  EXPECT_TRUE(packed());
  EXPECT_EQ(w.chs, 0);
  EXPECT_EQ(w.chc(1), 0);
}

TEST_F(CoreEdits, HowFarItIsIsToldCoreByCore) {
  ScratchFolder::write("second.rwl", "OTHER   1950   100   999\n");
  select({3, 5});
  del_core(w);
  select({1, 2, 5});
  EXPECT_TRUE(move_core(w));
  EXPECT_EQ(store.screen.told, (std::vector<std::pair<std::string, double>>{{"Delete Core", 0},
                                                                            {"Delete Core", 0.5},
                                                                            {"Delete Core", 1},
                                                                            {"Move Core", 0},
                                                                            {"Move Core", 0.5},
                                                                            {"Move Core", 1}}));
}

TEST_F(CoreEdits, DeletingInTheOtherOrderRemovesTheSame) {
  select({5, 3});
  del_core(w);
  EXPECT_EQ(names(), "CORE1 CORE2 CORE4 FIRST SECOND ");
}

TEST_F(CoreEdits, DeletingBuildsTheChronologyOfTheRest) {
  select({1, 2, 3, 4});
  del_core(w);
  EXPECT_EQ(w.num(1, 1), 1);
  EXPECT_EQ(w.cyr(1), 50);
}

// Also the start behind the last entry, where the sample's slot was.
TEST_F(CoreEdits, DeletingKeepsEveryValueOfTheEntriesThatStay) {
  const auto taken = [this](const Pool<double>& pool, int i) {
    const auto range = pool.range(w.ad(i), w.yr(i));
    return std::vector<double>(range.begin(), range.end());
  };
  for (int p = w.ad(6); p < w.ad(8); ++p) w.tx(p) = p;
  w.xok(w.ad(4) + 9) = false;
  const auto second = taken(w.x, 2), fourth = taken(w.x, 4);
  const auto first_file = taken(w.ax, 6), second_file = taken(w.ax, 7), second_files_tx = taken(w.tx, 7);
  const int end = w.ad(8);
  select({1, 3, 5});
  del_core(w);
  EXPECT_EQ(taken(w.x, 1), second);
  EXPECT_EQ(taken(w.x, 2), fourth);
  EXPECT_FALSE(w.xok(w.ad(2) + 9));
  EXPECT_EQ(taken(w.ax, 3), first_file);
  EXPECT_EQ(taken(w.ax, 4), second_file);
  EXPECT_EQ(taken(w.tx, 4), second_files_tx);
  EXPECT_EQ(w.ad(5), end - 150);
}

TEST_F(CoreEdits, DeletingEveryCoreLeavesTheChronologies) {
  select({1, 2, 3, 4, 5});
  del_core(w);
  EXPECT_EQ(names(), "FIRST SECOND ");
  EXPECT_EQ(w.nc, 0);
}

// A number may stand behind the selection, where a core was taken out of it again. A move forgets that too.
TEST_F(CoreEdits, MovingForgetsWhatStoodBehindTheSelectionAndDeletingDoesNot) {
  ScratchFolder::write("second.rwl", "");
  select({2, 4, 7});
  w.chc(4) = 6;
  w.chc(9) = 5;
  EXPECT_TRUE(move_core(w));
  for (int j = 1; j <= 10; ++j) EXPECT_EQ(w.chc(j), 0) << j;
  select({1});
  w.chc(2) = 4;
  del_core(w);
  EXPECT_EQ(w.chc(1), 0);
  EXPECT_EQ(w.chc(2), 4);
}

TEST_F(CoreEdits, MovingTwoCoresToATucsonFileAppendsTwoSeries) {
  ScratchFolder::write("second.rwl", "OTHER   1950   100   999\n");
  const double third = w.x(w.ad(3));
  select({2, 4, 7});
  EXPECT_TRUE(move_core(w));
  EXPECT_EQ(w.nc, 3);
  EXPECT_EQ(names(), "CORE1 CORE3 CORE5 FIRST SECOND ");
  EXPECT_EQ(w.x(w.ad(2)), third);
  const std::string file = ScratchFolder::read("second.rwl");
  EXPECT_EQ(file.rfind("OTHER   1950   100   999\nCORE2   1900", 0), 0u) << file;
  EXPECT_NE(file.find("CORE4   1900"), std::string::npos);
  EXPECT_EQ(w.chs, 0);
}

TEST_F(CoreEdits, ALastLineWithoutEndIsEndedFirst) {
  ScratchFolder::write("second.rwl", "OTHER   1950   100   999");
  select({2, 7});
  EXPECT_TRUE(move_core(w));
  EXPECT_EQ(ScratchFolder::read("second.rwl").rfind("OTHER   1950   100   999\nCORE2", 0), 0u);
}

TEST_F(CoreEdits, EachLayoutIsWrittenAsItsFileHasIt) {
  w.rftype(2) = Layout::heidelberg;
  ScratchFolder::write("second.rwl", "");
  select({1, 7});
  EXPECT_TRUE(move_core(w));
  EXPECT_EQ(ScratchFolder::read("second.rwl").rfind("HEADER:\nKeyCode=    CORE1", 0), 0u);
  w.rftype(2) = Layout::compact;
  ScratchFolder::write("second.rwl", "");
  select({1, 6});
  EXPECT_TRUE(move_core(w));
  EXPECT_EQ(ScratchFolder::read("second.rwl").rfind("      50=N    1900=I CORE2", 0), 0u);
}

// Cores that go to an index file are gone without being written anywhere.
TEST_F(CoreEdits, MovingToAnIndexFileRemovesWithoutWriting) {
  w.rftype(2) = Layout::tucson_index;
  ScratchFolder::write("second.rwl", "an index file\n");
  select({1, 7});
  EXPECT_TRUE(move_core(w));
  EXPECT_EQ(w.nc, 4);
  EXPECT_EQ(ScratchFolder::read("second.rwl"), "an index file\n");
}

TEST_F(CoreEdits, ATargetThatCannotBeOpenedLeavesEverythingAsItIs) {
  select({1, 7});  // second.rwl does not exist
  const std::string before = names();
  EXPECT_FALSE(move_core(w));
  EXPECT_EQ(names(), before);
  EXPECT_EQ(w.nc, 5);
  EXPECT_EQ(w.chs, 2);
  EXPECT_EQ(store.messages.str(), "Opensecond.rwl fail err =     2\n");
}

TEST_F(CoreEdits, AFullDiskLeavesTheCoresInTheStore) {
  std::filesystem::create_symlink("/dev/full", "second.rwl");
  select({1, 7});
  EXPECT_FALSE(move_core(w));
  EXPECT_EQ(w.nc, 5);
  EXPECT_NE(store.messages.str().find("fail err =    28"), std::string::npos);
}

// So much is not gathered for the closing.
TEST_F(CoreEdits, ADiskThatIsFullBeforeTheClosingLeavesTheCoresInTheStoreToo) {
  w.nc = 0;
  store.add_tree("LONG", 1, noise(max_years, 1));
  store.add_tree("FIRST", 1900, noise(50, 11));
  store.add_tree("SECOND", 1900, noise(50, 12));
  w.nc = 1;
  std::filesystem::create_symlink("/dev/full", "second.rwl");
  select({1, 3});
  EXPECT_FALSE(move_core(w));
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(store.messages.str(), "WriteLONG fail err =    28\n");
}

}  // namespace
}  // namespace vorn
