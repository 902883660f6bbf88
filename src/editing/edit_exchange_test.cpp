#include <gtest/gtest.h>

#include <cstdio>

#include "editing/raw_editor.h"
#include "support/scratch_folder.h"
#include "support/test_store.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

// Four cores and a chronology, of which each test chooses some; Edit.raw is typed by the test.
struct EditExchange : ::testing::Test {
  EditExchange() {
    for (int i = 1; i <= 4; ++i) {
      const std::string name = "OAK" + std::to_string(i);
      store.add_tree(name, 1895 + i, noise(20, static_cast<unsigned>(i)), "---");
    }
    store.add_tree("oaks", 1896, noise(30, 9));
    w.nc = 4;
    w.nfil = 1;
    for (int p = 1; p <= 110; ++p) w.tx(p) = 1000 + p;
    choose({2});
    store.screen.presses = 10;
  }
  void choose(std::initializer_list<int> cores) {
    w.chs = 0;
    for (const int core : cores) w.chc(++w.chs) = core;
  }
  // A line of the Tucson raw layout.
  static std::string line(const std::string& name, int year, const std::vector<int>& values) {
    char field[24];
    std::snprintf(field, sizeof field, "%-8s%4d", name.c_str(), year);
    std::string text = field;
    for (const int value : values) {
      std::snprintf(field, sizeof field, "%6d", value);
      text += field;
    }
    return text + "\n";
  }
  void read_back(const std::string& contents) {
    ScratchFolder::write("Edit.raw", contents);
    edit_read(w);
  }
  Values widths(int entry) {
    const auto stretch = w.widths(entry);
    return {stretch.begin(), stretch.end()};
  }
  // Everything that belongs to an entry, in words that can be compared.
  std::string entry(int i) {
    std::string text = std::string(w.nam(i).view()) + std::to_string(w.fy(i)) + " " + std::to_string(w.ly(i));
    for (int k = 0; k < w.yr(i); ++k) {
      const int p = w.ad(i) + k;
      text += " " + std::to_string(w.x(p)) + (w.xok(p) ? "+" : "-") + std::to_string(w.ax(p)) + "/" +
              std::to_string(w.tx(p));
    }
    return text;
  }
  std::vector<std::string> all_entries() {
    std::vector<std::string> all;
    for (int i = 1; i <= w.nd; ++i) all.push_back(entry(i));
    return all;
  }
  void expect_packed() {
    for (int i = 1; i <= w.nd; ++i) EXPECT_EQ(w.ad(i + 1), w.ad(i) + w.yr(i)) << i;
  }
  // Reads `contents` back: nothing may change, and this be told.
  void expect_refusal(const std::string& contents, const std::string& told) {
    const auto before = all_entries();
    read_back(contents);
    EXPECT_EQ(all_entries(), before);
    EXPECT_EQ(store.messages.str(), told);
    EXPECT_FALSE(w.derived_stale);
    expect_packed();
  }

  ScratchFolder folder;
  TestStore store;
  Workspace& w = store.w;
};

// --- Writing.

TEST_F(EditExchange, WritingLeavesAnEmptyFile) {
  ScratchFolder::write("Edit.raw", "what was there before\n");
  edit_write(w);
  EXPECT_TRUE(ScratchFolder::exists("Edit.raw"));
  EXPECT_EQ(ScratchFolder::read("Edit.raw"), "");
  EXPECT_EQ(store.messages.str(), "");
  EXPECT_EQ(w.ios, status::ok);
}

TEST_F(EditExchange, AFolderInTheWayIsToldOnce) {
  std::filesystem::create_directory("Edit.raw");
  edit_write(w);
  EXPECT_EQ(store.messages.str(), "OpenEdit.raw fail err =    21\n");
}

// --- Reading a whole series.

TEST_F(EditExchange, ASeriesOfTheSameLengthTakesItsPlace) {
  std::vector<std::string> before = all_entries();
  read_back(line("OAK2", 1897, {101, 102, 103}) +
            line("OAK2", 1900, {104, 105, 106, 107, 108, 109, 110, 111, 112, 113}) +
            line("OAK2", 1910, {114, 115, 116, 117, 118, 119, 120, -9999}));
  EXPECT_EQ(store.messages.str(), "");
  EXPECT_EQ(w.fy(2), 1897);
  EXPECT_EQ(w.ly(2), 1916);
  EXPECT_EQ(w.yr(2), 20);
  for (int k = 0; k < 20; ++k) EXPECT_EQ(w.x(w.ad(2) + k), (101 + k) / 1000.0);
  for (int k = 0; k < 20; ++k) EXPECT_TRUE(w.xok(w.ad(2) + k));
  EXPECT_TRUE(w.derived_stale);
  before[1] = entry(2);
  EXPECT_EQ(all_entries(), before);
}

TEST_F(EditExchange, AWidthOfZeroIsARingAndANegativeOneIsMissing) {
  read_back(line("OAK2", 1950, {0, -1, 2, -9999}));
  EXPECT_TRUE(w.xok(w.ad(2)));
  EXPECT_FALSE(w.xok(w.ad(2) + 1));
  EXPECT_TRUE(w.xok(w.ad(2) + 2));
}

TEST_F(EditExchange, AShorterSeriesLetsAllLaterEntriesMoveDown) {
  std::vector<std::string> before = all_entries();
  read_back(line("OAK2", 1950, {1, 2, 3, -9999}));
  EXPECT_EQ(widths(2), (Values{0.001, 0.002, 0.003}));
  EXPECT_EQ(w.ly(2), 1952);
  EXPECT_EQ(w.ad(3), w.ad(2) + 3);
  expect_packed();
  before[1] = entry(2);
  EXPECT_EQ(all_entries(), before);
}

TEST_F(EditExchange, ALongerSeriesLetsAllLaterEntriesMoveUp) {
  std::vector<std::string> before = all_entries();
  std::string file = line("OAK2", 1890, std::vector<int>(10, 500));
  for (int decade = 1900; decade < 1990; decade += 10)
    file += line("OAK2", decade, std::vector<int>(10, 700));
  read_back(file + line("OAK2", 1990, {900, -9999}));
  EXPECT_EQ(w.yr(2), 101);
  EXPECT_EQ(w.ly(2), 1990);
  EXPECT_EQ(w.x(w.ad(2) + 100), 0.9);
  expect_packed();
  before[1] = entry(2);
  EXPECT_EQ(all_entries(), before);
}

TEST_F(EditExchange, TheLastCoreAndTheFirstCanBeReadBackToo) {
  for (const int e : {1, 4}) {
    choose({e});
    std::vector<std::string> before = all_entries();
    read_back(line("OAK" + std::to_string(e), 1900, {1, 2, -9999}));
    EXPECT_EQ(widths(e), (Values{0.001, 0.002}));
    expect_packed();
    before[static_cast<std::size_t>(e - 1)] = entry(e);
    EXPECT_EQ(all_entries(), before);
  }
}

// After a core was deleted the working entries are those of the store before; what lies behind must move all
// the same.
TEST_F(EditExchange, WorkingEntriesOfAnOlderStoreDoNoHarm) {
  for (const int slot : {6, 7}) {
    w.fy(slot) = w.ly(slot) = w.yr(slot) = 0;
    w.ad(slot) = 1;
  }
  std::vector<std::string> before = all_entries();
  read_back(line("OAK2", 1950, {1, 2, 3, -9999}));
  expect_packed();
  before[1] = entry(2);
  EXPECT_EQ(all_entries(), before);
}

TEST_F(EditExchange, OnlyMinus9999EndsASeriesNot999) {
  read_back(line("OAK2", 1900, {1, 999, 3, 999, -9999}));
  EXPECT_EQ(widths(2), (Values{0.001, 0.999, 0.003, 0.999}));
}

TEST_F(EditExchange, TheSearchForTheMarkGoesFromTheEndOfTheLastLine) {
  read_back(line("OAK2", 1900, {1, -9999, 3, -9999, 5}));
  EXPECT_EQ(widths(2), (Values{0.001, -9.999, 0.003}));
}

TEST_F(EditExchange, ANegativeWidthIsAMissingRingAndStaysNegative) {
  read_back(line("OAK2", 1900, {1, -5, 3, -9999}));
  EXPECT_EQ(widths(2), (Values{0.001, -0.005, 0.003}));
  EXPECT_TRUE(w.xok(w.ad(2)));
  EXPECT_FALSE(w.xok(w.ad(2) + 1));
}

// -1204 to -1197; the decade ends in -1201, so the first line holds four rings.
TEST_F(EditExchange, AMinusSignBehindTheNameNegatesTheYear) {
  w.nam(2) = "BOG    -";
  read_back(line("BOG    -", 1204, {1, 2, 3, 4}) + line("BOG    -", 1200, {5, 6, 7, 8, -9999}));
  EXPECT_EQ(w.fy(2), -1204);
  EXPECT_EQ(w.ly(2), -1197);
  EXPECT_EQ(w.x(w.ad(2) + 7), 0.008);
}

// The years of further lines are not looked at.
TEST_F(EditExchange, FurtherLinesFollowByTheirNameAlone) {
  read_back(line("OAK2", 1909, {1}) + line("OAK2", 7, std::vector<int>(10, 2)) + line("OAK2", 1, {3, -9999}));
  EXPECT_EQ(w.fy(2), 1909);
  EXPECT_EQ(w.yr(2), 12);
}

TEST_F(EditExchange, WhatFollowsInTheFileIsPassedOver) {
  read_back(line("OAK2", 1900, {1, 2, -9999}) + line("OAK3", 1900, {8, 8, -9999}));
  EXPECT_EQ(widths(2), (Values{0.001, 0.002}));
  EXPECT_EQ(w.yr(3), 20);
  EXPECT_EQ(store.messages.str(), "");
}

TEST_F(EditExchange, ALastLineWithoutEndCounts) {
  read_back("OAK2    1900     7     8 -9999");
  EXPECT_EQ(widths(2), (Values{0.007, 0.008}));
}

// --- Several series.

// The first line of the second series gives name and year; where its values would stand are the first
// series' own. 1897 leaves room for three, 1905 for five: positions 4 and 5 hold what the first series had.
TEST_F(EditExchange, TheFirstLineOfALaterSeriesHoldsTheFirstSeriesValues) {
  choose({2, 3});
  read_back(line("OAK2", 1897, {11, 12, 13}) +
            line("OAK2", 1900, {14, 15, 16, 17, 18, 19, 20, 21, 22, -9999}) +
            line("OAK3", 1905, {31, 32, 33, 34, 35}) + line("OAK3", 1910, {36, 37, -9999}));
  EXPECT_EQ(store.messages.str(), "");
  EXPECT_EQ(w.yr(2), 12);
  EXPECT_EQ(w.fy(3), 1905);
  EXPECT_EQ(widths(3), (Values{0.011, 0.012, 0.013, 0.014, 0.015, 0.036, 0.037}));
  expect_packed();
}

// Here the first series ends in its first line, so that the line which ended it still stands behind it.
TEST_F(EditExchange, BehindAShortSeriesStandTheValuesOfTheLineThatEndedIt) {
  choose({2, 3});
  read_back(line("OAK2", 1908, {11, -9999}) + line("OAK3", 1905, {31, 32, 33, 34, 35}) +
            line("OAK3", 1910, {36, -9999}));
  EXPECT_EQ(widths(2), Values{0.011});
  EXPECT_EQ(widths(3), (Values{0.011, -9.999, 0.031, 0.032, 0.033, 0.036}));
}

TEST_F(EditExchange, SixSeriesAreReadInTheOrderOfChoice) {
  for (int i = 5; i <= 6; ++i) store.add_tree("MORE", 1900, noise(20, 1));
  w.nc = 6;
  for (int i = 1; i <= 6; ++i) w.nam(i) = "S" + std::to_string(i);
  choose({6, 1, 5, 2, 4, 3});
  std::string file;
  for (int i : {6, 1, 5, 2, 4, 3}) {
    const std::string name = "S" + std::to_string(i);
    file += line(name, 1909, {1}) + line(name, 1910, {10 * i, 10 * i + 1, -9999});
  }
  read_back(file);
  for (int i = 1; i <= 6; ++i) EXPECT_EQ(widths(i), (Values{0.001, 10 * i / 1000.0, (10 * i + 1) / 1000.0}));
  EXPECT_EQ(store.messages.str(), "");
  expect_packed();
}

TEST_F(EditExchange, ASeriesThatIsNotThereStaysAndSoDoThoseBehindIt) {
  choose({2, 3, 4});
  std::vector<std::string> before = all_entries();
  read_back(line("OAK2", 1900, {1, 2, -9999}) + line("OAK4", 1909, {1}) + line("OAK4", 1910, {4, -9999}));
  EXPECT_EQ(store.messages.str(), "OAK3 is not in Edit.raw\n");
  before[1] = entry(2);
  EXPECT_EQ(all_entries(), before);
}

// Two cores of one name, of which the file has one.
TEST_F(EditExchange, TheEndOfTheFileIsNoSeries) {
  w.nam(3) = "OAK2";
  choose({2, 3});
  std::vector<std::string> before = all_entries();
  read_back(line("OAK2", 1900, {1, 2, -9999}));
  EXPECT_EQ(store.messages.str(), "OAK2 is not in Edit.raw\n");
  before[1] = entry(2);
  EXPECT_EQ(all_entries(), before);
}

// --- What must leave a series as it is.

TEST_F(EditExchange, AMissingFileIsToldAtTheOpenAndAtTheRead) {
  const auto before = all_entries();
  edit_read(w);
  EXPECT_EQ(all_entries(), before);
  EXPECT_EQ(store.messages.str(), "OpenEdit.raw fail err =     2\nReadEdit.raw fail err =    -1\n");
}

TEST_F(EditExchange, AnEmptyFileIsToldAndChangesNothing) {
  expect_refusal("", "ReadEdit.raw fail err =    -1\n");
}

TEST_F(EditExchange, AFileThatIsCutShortChangesNothing) {
  expect_refusal(line("OAK2", 1897, {101, 102, 103}) + line("OAK2", 1900, std::vector<int>(10, 5)),
                 "OAK2 has no end in Edit.raw\n");
}

TEST_F(EditExchange, AFirstLineAloneChangesNothing) {
  expect_refusal("OAK2    1897   101   102   103\n", "OAK2 has no end in Edit.raw\n");
}

// A mark in any line but the last ends nothing.
TEST_F(EditExchange, AMarkBeforeTheLastLineIsNoEnd) {
  expect_refusal(line("OAK2", 1897, {101, 102, -9999}) + line("OAK2", 1900, std::vector<int>(10, 5)),
                 "OAK2 has no end in Edit.raw\n");
}

TEST_F(EditExchange, AMarkWithoutARingBeforeItChangesNothing) {
  expect_refusal(line("OAK2", 1900, {-9999}), "OAK2 has no end in Edit.raw\n");
}

TEST_F(EditExchange, TheFileOfAnotherCoreChangesNothing) {
  expect_refusal(line("OAK3", 1900, {1, 2, 3, -9999}), "OAK2 is not in Edit.raw\n");
}

TEST_F(EditExchange, TextThatIsNoSeriesChangesNothing) {
  expect_refusal("Dear diary, today I measured\nmany rings.\n",
                 "ReadEdit.raw fail err =  5010\nRead2Edit.raw fail err =  5010\nOAK2 is not in Edit.raw\n");
}

TEST_F(EditExchange, ASeriesThatThePoolHasNoRoomForChangesNothing) {
  w.ad(w.nd) = max_pool - w.yr(w.nd) + 1;  // the last entry ends where the pool does
  const auto before = all_entries();
  read_back(line("OAK2", 1900, std::vector<int>(10, 1)) + line("OAK2", 1910, std::vector<int>(10, 1)) +
            line("OAK2", 1920, {1, -9999}));
  EXPECT_EQ(all_entries(), before);
  EXPECT_EQ(store.messages.str(), "Would be too many rings\n");
}

TEST_F(EditExchange, ASeriesThatFillsThePoolIsTaken) {
  w.ad(w.nd) = max_pool - w.yr(w.nd);  // one place is left behind the last entry
  read_back(line("OAK2", 1900, std::vector<int>(10, 1)) + line("OAK2", 1910, std::vector<int>(10, 1)) +
            line("OAK2", 1920, {1, -9999}));
  EXPECT_EQ(w.yr(2), 21);
  EXPECT_EQ(store.messages.str(), "");
}

TEST_F(EditExchange, ASeriesLongerThanAnyChronologyChangesNothing) {
  std::string file;
  for (int k = 0; k < 1200; ++k) file += line("OAK2", 1900, std::vector<int>(10, 1));
  expect_refusal(file + line("OAK2", 1900, {1, -9999}), "Would be too many rings\n");
}

TEST_F(EditExchange, ASeriesAsLongAsAChronologyIsTaken) {
  std::string file;
  for (int k = 0; k < 1200; ++k) file += line("OAK2", 1900, std::vector<int>(10, 1));
  read_back(file + line("OAK2", 1900, {-9999}));
  EXPECT_EQ(w.yr(2), 12'000);
  EXPECT_EQ(store.messages.str(), "");
}

TEST_F(EditExchange, OfAnEndlessSeriesNoMoreThan1203FurtherLinesAreRead) {
  std::string file;
  for (int k = 0; k < 3000; ++k) file += line("OAK2", 1900, std::vector<int>(10, 1));
  expect_refusal(file + line("OAK2", 1900, {1, -9999}), "OAK2 has no end in Edit.raw\n");
}

// --- What cannot be read is told, and what was there before stands in its place.

TEST_F(EditExchange, ABadYearInTheFirstLineIsToldAndIsYear0) {
  read_back("OAK2    19x0     7     8\n" + line("OAK2", 1910, {9, -9999}));
  EXPECT_EQ(store.messages.str(), "ReadEdit.raw fail err =  5010\n");
  EXPECT_EQ(w.fy(2), 0);
  EXPECT_EQ(w.yr(2), 11);  // ten of the first line, which stay 0
  EXPECT_EQ(w.x(w.ad(2)), 0);
  EXPECT_EQ(w.x(w.ad(2) + 10), 0.009);
}

TEST_F(EditExchange, ABadValueInAFurtherLineIsTold) {
  read_back(line("OAK2", 1909, {1}) + "OAK2    1910     2     x     4\n" + line("OAK2", 1920, {5, -9999}));
  EXPECT_EQ(store.messages.str(), "Read2Edit.raw fail err =  5010\n");
  EXPECT_EQ(w.yr(2), 12);
  EXPECT_EQ(w.x(w.ad(2) + 1), 0.002);
  EXPECT_EQ(w.x(w.ad(2) + 2), 0);  // nothing was there before
  EXPECT_EQ(w.x(w.ad(2) + 11), 0.005);
}

TEST_F(EditExchange, ABadLineOfALaterSeriesKeepsTheFirstSeriesValues) {
  choose({2, 3});
  read_back(line("OAK2", 1909, {1}) + line("OAK2", 1910, {2, 3, 4, -9999}) + line("OAK3", 1909, {21}) +
            "OAK3    1910    22     x\n" + line("OAK3", 1920, {25, -9999}));
  EXPECT_EQ(widths(3), (Values{0.001, 0.022, 0.003, 0.004, -9.999, 0, 0, 0, 0, 0, 0, 0.025}));
}

TEST_F(EditExchange, ADecimalWidthInTheFirstLineIsCut) {
  read_back("OAK2    1900  12.9  1E3  9E99 -9999\n");
  EXPECT_EQ(widths(2)[0], 0.012);
}

// Whatever the file holds, no other series changes.
TEST_F(EditExchange, AnyBytesLeaveTheOtherSeriesAlone) {
  store.screen.presses = 1'000'000;
  const std::string typed = line("OAK2", 1897, {101, 102, 103}) +
                            line("OAK2", 1900, std::vector<int>(10, 5)) + line("OAK2", 1910, {1, 2, -9999}) +
                            line("OAK4", 1900, {1, 2, -9999});
  unsigned seed = 7;
  const auto next = [&seed](unsigned below) {
    seed = seed * 1664525u + 1013904223u;
    return (seed >> 8) % below;
  };
  choose({2, 4});
  for (int round = 0; round < 500; ++round) {
    std::string file = typed;
    for (unsigned k = 1 + next(6); k > 0; --k) {
      const auto at = next(static_cast<unsigned>(file.size()));
      switch (next(4)) {
        case 0:
          file[at] = static_cast<char>(next(256));
          break;
        case 1:
          file.erase(at, next(40));
          break;
        case 2:
          file.insert(at, file.substr(next(static_cast<unsigned>(file.size())), next(90)));
          break;
        default:
          file[at] = "\n\r, -+9EN"[next(9)];
      }
      if (file.empty()) file = "x";
    }
    std::vector<std::string> before = all_entries();
    read_back(file);
    const std::vector<std::string> after = all_entries();
    for (const int other : {1, 3, 5}) {
      ASSERT_EQ(after[static_cast<std::size_t>(other - 1)], before[static_cast<std::size_t>(other - 1)])
          << file;
    }
    expect_packed();
  }
}

}  // namespace
}  // namespace vorn
