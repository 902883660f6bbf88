// What "Ok - Do it" does in each of the chooser's modes.
#include <filesystem>

#include "loading/startup.h"
#include "support/chooser_desk.h"

namespace vorn {
namespace {

class ChooserActions : public ChooserDesk {
 protected:
  // Six cores of oak.rwl, and a file of every other layout.
  ChooserActions() { make_six(); }
  void make_six() {
    make_store(6, {{"oak.rwl", Layout::tucson_raw},
                   {"pine.hdb", Layout::heidelberg},
                   {"ash.rwm", Layout::compact},
                   {"elm.rwl", Layout::tucson_raw},
                   {"ref.crn", Layout::tucson_index}});
  }
  void do_it() { press(button::chooser_do_it); }
  void key() { screen.key(' '); }

  // What files and store must not lose: names and widths of all cores.
  std::vector<std::vector<double>> all_cores() {
    std::vector<std::vector<double>> all;
    for (int i = 1; i <= w.nc; ++i) all.push_back(widths(i));
    return all;
  }
};

// --- Deleting.

TEST_F(ChooserActions, DeletingTakesTheMarkedCoresOutAndKeepsTheChooserOpen) {
  const auto third = widths(3), sixth = widths(6);
  press(button::delete_core);
  picks({4, 5});  // beside the pair, 1 and 2
  do_it();
  play();
  EXPECT_EQ(names(), "C3 C6 oak pine ash elm ref ");
  EXPECT_EQ(widths(1), third);
  EXPECT_EQ(widths(2), sixth);
  EXPECT_EQ(w.chs, 0);
  EXPECT_TRUE(reads("Choose Several Trees"));
  EXPECT_TRUE(reads("C6"));
  EXPECT_FALSE(reads("C5"));
  expect_packed();
}

TEST_F(ChooserActions, AfterDeletingThePairIsTheFirstTwo) {
  w.tr1 = 5;
  w.tr2 = 6;
  press(button::delete_core);
  do_it();
  play_and_exit();
  EXPECT_EQ(names(), "C1 C2 C3 C4 oak pine ash elm ref ");
  EXPECT_EQ(w.tr1, 1);
  EXPECT_EQ(w.tr2, 2);
}

// Also what was passed over is marked no longer.
TEST_F(ChooserActions, AfterDeletingOneOfThePairItIsTheFirstTwoToo) {
  w.tr1 = 8;
  w.tr2 = 3;
  press(button::delete_core);
  do_it();
  play_and_exit();
  EXPECT_EQ(names(), "C1 C2 C4 C5 C6 oak pine ash elm ref ");
  EXPECT_EQ(w.tr1, 1);
  EXPECT_EQ(w.tr2, 2);
}

TEST_F(ChooserActions, DeletingPassesOverChronologiesAndEmptyPlaces) {
  w.tr1 = 8;
  w.tr2 = 3;
  press(button::delete_core);
  picks({2, 4});
  press(button::bottom_of_pair);
  do_it();
  play();
  EXPECT_EQ(names(), "C1 C3 C5 C6 oak pine ash elm ref ");  // 8, none, 2 and 4
}

TEST_F(ChooserActions, DeletingPassesOverWhatIsBehindTheList) {
  w.sccc = 8;
  w.tr2 = 3;
  press(button::delete_core);
  pick(6);
  play();
  ASSERT_EQ(chosen(), (Picked{1, 3, 14}));
  press(button::delete_core);
  pick(6);
  do_it();
  play();
  EXPECT_EQ(names(), "C2 C4 C5 C6 oak pine ash elm ref ");
}

// A core marked twice (see TheOldLastValueBehindAClosedGapIsPickedAgain) is deleted once.
TEST_F(ChooserActions, ACoreMarkedTwiceIsDeletedOnce) {
  press(button::delete_core);
  pick(1);
  press(button::pick_cores);
  press(button::delete_core);
  do_it();
  play();
  EXPECT_EQ(names(), "C1 C3 C4 C5 C6 oak pine ash elm ref ");
}

// The pair is marked when the mode is entered. Without a core in it the marks go, which leaving makes up for.
TEST_F(ChooserActions, DeletingNothingTakesTheMarksAwayAndComputesTheIndicesAnew) {
  w.tr1 = 8;
  w.tr2 = 9;
  w.ax(5) = 123;
  press(button::delete_core);
  do_it();
  play_and_exit();
  EXPECT_EQ(w.nc, 6);
  EXPECT_EQ(w.tr1, 1);
  EXPECT_EQ(w.tr2, 2);
  EXPECT_NE(w.ax(5), 123);
  EXPECT_EQ(names(), "C1 C2 C3 C4 C5 C6 oak pine ash elm ref ");
}

TEST_F(ChooserActions, LeavingAfterADeletionBringsTheChronologyUpToDate) {
  press(button::delete_core);
  picks({3, 4, 5});
  do_it();
  play_and_exit();
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.num(1, 1), 1);
  EXPECT_DOUBLE_EQ(w.crn(1, 1), w.x(1));
  EXPECT_EQ(w.nam(2), Name("oak"));
  EXPECT_EQ(w.ax(w.ad(2)), w.crn(1, 1));
  EXPECT_EQ(line(message::summary_cores), "Number of cores      1");
  expect_packed();
}

TEST_F(ChooserActions, EveryCoreCanBeDeleted) {
  press(button::delete_core);
  picks({3, 4, 5, 6});
  do_it();
  picks({1, 2, 3});
  do_it();
  EXPECT_TRUE(play_and_exit());
  EXPECT_EQ(names(), "oak pine ash elm ref ");
  EXPECT_EQ(w.tr1, 1);  // two chronologies
  EXPECT_EQ(w.tr2, 2);
}

TEST_F(ChooserActions, WithFewerThanTwoEntriesLeftTheChooserSaysSo) {
  w.nfil = 1;
  w.nd = 7;
  press(button::delete_core);
  picks({3, 4, 5, 6});
  do_it();
  press(button::chooser_exit);
  key();
  EXPECT_FALSE(choose(w));
  EXPECT_EQ(told(), "Need more than one core\n");
}

// Everything that can be clicked on an empty store.
TEST_F(ChooserActions, WithoutCoresEveryModeDoesNothing) {
  for (const char* file : {"pine.hdb", "ash.rwm", "elm.rwl"}) folder.write(file, "");
  press(button::delete_core);
  picks({3, 4, 5, 6});
  do_it();
  for (const ButtonNumber mode : {button::delete_core, button::edit_core, button::move_core}) {
    press(mode);
    picks({1, 2, 7});
    do_it();
  }
  press(button::mean_core);
  do_it();
  key();
  press(button::pick_cores);
  do_it();
  EXPECT_TRUE(choose(w));
  EXPECT_EQ(screen.events_left(), 0u);
  EXPECT_EQ(told(), "Need more than one core\n");
  EXPECT_EQ(names(), "oak pine ash elm ref ");
}

// --- Averaging.

TEST_F(ChooserActions, AMeanIsTheLastCoreAndIsListed) {
  const auto cores = all_cores();
  press(button::mean_core);
  pick(4);
  do_it();
  play();
  EXPECT_EQ(names(), "C1 C2 C3 C4 C5 C6 C1M oak pine ash elm ref ");
  for (std::size_t k = 0; k < 20; ++k) {
    EXPECT_EQ(widths(7)[k], (cores[0][k] + cores[1][k] + cores[3][k]) / 3);
  }
  EXPECT_TRUE(reads("C1M"));
  EXPECT_EQ(chosen(), (Picked{1, 2}));
  EXPECT_EQ(w.b(button::mean_name).label.trimmed(), "Mean Core");
  EXPECT_EQ(told(), "");
}

TEST_F(ChooserActions, AMeanIsNamedAsTyped) {
  press(button::mean_core);
  press(button::mean_name);
  screen.type("MASTER");
  key();  // a blank, and on to twelve characters
  screen.type("     ");
  do_it();
  play_and_exit();
  EXPECT_EQ(w.nam(7), Name("MASTER"));
  EXPECT_EQ(w.num(1, 1), 7);
  EXPECT_EQ(line(message::summary_cores), "Number of cores      7");
  EXPECT_EQ(w.nam(8), Name("oak"));
}

TEST_F(ChooserActions, AMeanPassesOverTheChronologyOfThePair) {
  w.tr2 = 7;
  press(button::mean_core);
  pick(3);
  do_it();
  play();
  const auto mean = widths(7);
  for (std::size_t k = 0; k < 20; ++k) EXPECT_EQ(mean[k], (widths(1)[k] + widths(3)[k]) / 2);
}

TEST_F(ChooserActions, AMeanOfOneCoreIsRefusedAndTheSelectionStays) {
  w.tr1 = 7;
  w.tr2 = 3;
  press(button::mean_core);
  do_it();
  key();
  play();
  EXPECT_EQ(told(), "Need more than one core\n");
  EXPECT_EQ(w.nc, 6);
  EXPECT_EQ(chosen(), (Picked{7, 3}));
  EXPECT_EQ(w.b(button::mean_name).label.trimmed(), "Mean Core");  // all the same
}

TEST_F(ChooserActions, AMeanWithAGapStaysAndTheSelectionToo) {
  w.fy(2) += 30;
  w.ly(2) += 30;
  press(button::mean_core);
  do_it();
  key();
  play();
  EXPECT_EQ(told(), "Warning - trees do not overlap ?\n");
  EXPECT_EQ(w.nc, 7);
  EXPECT_EQ(chosen(), (Picked{1, 2}));
  EXPECT_TRUE(w.derived_stale);
  expect_packed();
}

TEST_F(ChooserActions, CoresThatTheEditorTookTooFarApartMakeNoMean) {
  w.fy(2) += 12'000;
  w.ly(2) += 12'000;
  press(button::mean_core);
  do_it();
  key();
  play();
  EXPECT_EQ(told(), "Would be too many rings\n");
  EXPECT_EQ(w.nc, 6);
}

// After a mean with a gap the working entries are those of the store before. An edit must still take along
// all that lies behind it.
TEST_F(ChooserActions, EditingAfterAMeanWithAGapChangesNoOtherCore) {
  w.fy(2) += 300;
  w.ly(2) += 300;
  press(button::mean_core);
  do_it();
  key();
  press(button::edit_core);
  do_it();
  press(button::editor_insert);
  screen.click(500, 240 + 19 * 46);
  press(button::editor_insert);
  press(button::editor_exit);
  auto cores = all_cores();
  play();
  EXPECT_EQ(w.nc, 7);
  EXPECT_EQ(w.yr(1), 21);
  for (int i = 2; i <= 6; ++i) EXPECT_EQ(widths(i), cores[static_cast<std::size_t>(i - 1)]) << i;
  EXPECT_EQ(w.x(w.ad(7) + 300), widths(2)[0]);
  EXPECT_EQ(w.x(w.ad(7) + 319), widths(2)[19]);
  expect_packed();
}

// --- Editing.

TEST_F(ChooserActions, EditingOpensTheEditorOnTheOneMarkedCoreAndComesBack) {
  press(button::edit_core);
  pick(3);
  do_it();
  screen.click(500, 250 + 15 * 46);  // the fifth ring: a series of 20 years stands in the last 20 rows
  screen.type("77");
  screen.key(Event::enter);
  press(button::editor_exit);
  play();
  EXPECT_EQ(widths(3)[5], 77);
  EXPECT_TRUE(reads("Choose a Tree"));
  EXPECT_EQ(chosen(), Picked{3});
  EXPECT_TRUE(folder.exists("Edit.raw"));
}

TEST_F(ChooserActions, LeavingAfterAnEditBringsIndicesAndChronologyUpToDate) {
  press(button::edit_core);
  pick(3);
  do_it();
  press(button::editor_minus_50);  // -50 years
  press(button::editor_exit);
  play_and_exit();
  EXPECT_EQ(w.fy(3), 1850);
  EXPECT_EQ(w.cfy(1), 1850);
  EXPECT_EQ(w.cyr(1), 70);
  EXPECT_EQ(w.fy(7), 1850);  // the chronology's entry
  EXPECT_EQ(w.tr1, 3);
}

// When the current file is an index file its column is left alone.
TEST_F(ChooserActions, AnIndexFilesColumnIsLeftAloneAfterAnEdit) {
  w.cf = 5;
  const double before = w.crn(3, 5);
  press(button::edit_core);
  do_it();
  press(button::editor_minus_50);
  press(button::editor_exit);
  play_and_exit();
  EXPECT_EQ(w.crn(3, 5), before);
  EXPECT_EQ(w.cfy(5), 1900);
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(ChooserActions, WhatIsNoCoreIsNotEdited) {
  w.sccc = 5;  // the list begins with the sixth name: its third is a chronology
  press(button::edit_core);
  pick(3);
  do_it();
  play();
  EXPECT_EQ(w.chc(1), 8);
  EXPECT_FALSE(folder.exists("Edit.raw"));
}

// --- Moving.

TEST_F(ChooserActions, MovingToEachLayoutWritesTheCoresAndReloadsThem) {
  // Two cores go at a time, and the entry numbers behind them fall.
  const auto cores = all_cores();
  const std::vector<std::pair<int, std::string>> targets = {{2, "pine.hdb"}, {3, "ash.rwm"}, {4, "elm.rwl"}};
  for (const auto& [f, file] : targets) folder.write(file, "");
  press(button::move_core);
  pick(8);  // pine, with cores 1 and 2 of the pair
  do_it();
  play_and_exit();
  EXPECT_EQ(w.nc, 4);
  press(button::move_core);
  picks({2, 7});  // core 1 and ash are the pair
  do_it();
  play_and_exit();
  EXPECT_EQ(w.nc, 2);
  press(button::move_core);
  picks({2, 6});  // elm
  do_it();
  play_and_exit();
  EXPECT_EQ(names(), "oak pine ash elm ref ");
  EXPECT_EQ(told(),
            "Move Core: 2 cores to pine.hdb\nMove Core: 2 cores moved to pine.hdb\n"
            "Move Core: 2 cores to pine.hdb\nMove Core: 2 cores to ash.rwm\n"
            "Move Core: 2 cores moved to ash.rwm\n"
            "Move Core: 2 cores to pine.hdb\nMove Core: 2 cores to elm.rwl\n"
            "Move Core: 2 cores moved to elm.rwl\n");
  desk.log.str("");

  int next = 0;
  for (const auto& [f, file] : targets) {
    w.cf = f;
    init_raw(w, w.rftype(f));
    ASSERT_EQ(w.nc, 2) << file;
    for (int i = 1; i <= 2; ++i, ++next) {
      const std::string indent = f == 2 ? "    " : "";  // the Heidelberg layout brings names back so
      EXPECT_EQ(w.nam(i), Name(indent + "C" + std::to_string(next + 1))) << file;
      ASSERT_EQ(w.yr(i), 20) << file;
      EXPECT_EQ(w.fy(i), 1900) << file;
      for (std::size_t k = 0; k < 20; ++k) {
        EXPECT_NEAR(widths(i)[k], cores[static_cast<std::size_t>(next)][k], 0.00051) << file;
      }
    }
  }
  EXPECT_EQ(told(), "");
}

TEST_F(ChooserActions, AfterAMoveTheSelectionIsWhatEnteringTheModeMakes) {
  folder.write("elm.rwl", "");
  press(button::move_core);
  picks({5, 10});
  do_it();
  play();
  EXPECT_EQ(names(), "C3 C4 C6 oak pine ash elm ref ");
  EXPECT_EQ(chosen(), (Picked{1, 5}));  // the first core, and pine
  EXPECT_EQ(line(message::move_caption), "Move C3 to pine.hdb");
  EXPECT_TRUE(reads("Move C3 to pine.hdb"));
}

TEST_F(ChooserActions, LeavingAfterAMoveBringsTheChronologyUpToDate) {
  folder.write("pine.hdb", "");
  press(button::move_core);
  picks({3, 4, 5});
  do_it();
  play_and_exit();
  EXPECT_EQ(w.num(1, 1), 1);
  EXPECT_EQ(w.ax(w.ad(2)), w.crn(1, 1));
  EXPECT_EQ(line(message::summary_cores), "Number of cores      1");
}

TEST_F(ChooserActions, AMoveToAFileThatCannotBeOpenedChangesNothing) {
  const auto cores = all_cores();
  press(button::move_core);
  pick(5);
  do_it();
  key();
  play();
  EXPECT_EQ(told(),
            "Move Core: 2 cores to pine.hdb\nMove Core: 3 cores to pine.hdb\n"
            "Openpine.hdb fail err =     2\n");
  EXPECT_EQ(all_cores(), cores);
  EXPECT_EQ(chosen(), (Picked{1, 2, 5, 8}));
  EXPECT_FALSE(folder.exists("pine.hdb"));
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(ChooserActions, AMoveOfRingsTooWideForTheCompactLayoutIsRefused) {
  folder.write("ash.rwm", "as it was\n");
  w.x(w.ad(1) + 3) = 10.0;
  const auto cores = all_cores();
  press(button::move_core);
  pick(9);  // to ash
  do_it();
  key();
  play();
  EXPECT_EQ(told(), "Move Core: 2 cores to pine.hdb\nMove Core: 2 cores to ash.rwm\nWidth too large\n");
  EXPECT_EQ(folder.read("ash.rwm"), "as it was\n");
  EXPECT_EQ(all_cores(), cores);
  EXPECT_EQ(line(message::move_caption), "Move C1 to ash.rwm");  // still at it
  EXPECT_FALSE(w.derived_stale);
}

TEST_F(ChooserActions, RingsOf10mmCanBeMovedToTheOtherLayouts) {
  folder.write("pine.hdb", "");
  w.x(w.ad(1) + 3) = 10.0;
  press(button::move_core);
  do_it();
  play();
  EXPECT_EQ(told(), "Move Core: 2 cores to pine.hdb\nMove Core: 2 cores moved to pine.hdb\n");
  EXPECT_NE(folder.read("pine.hdb").find(" 10000"), std::string::npos);
}

TEST_F(ChooserActions, AMoveOntoAFullDiskChangesNothing) {
  std::filesystem::create_symlink("/dev/full", "pine.hdb");
  const auto cores = all_cores();
  press(button::move_core);
  do_it();
  for (int k = 0; k < 20; ++k) screen.key(Event::escape);
  play();
  EXPECT_NE(told().find("fail err =    28\n"), std::string::npos);
  EXPECT_EQ(all_cores(), cores);
  EXPECT_EQ(chosen(), (Picked{1, 2, 8}));
}

TEST_F(ChooserActions, HowManyCoresGoIsToldBesideThePageBeforeTheyDo) {
  press(button::move_core);  // the pair, to pine
  press(button::page_back);  // nothing changes
  pick(11);                  // an index file is no destination
  pick(2);                   // core 1 alone, of which the page tells
  picks({4, 5, 9, 9});       // with two more, to ash
  play();
  EXPECT_EQ(told(),
            "Move Core: 2 cores to pine.hdb\n"
            "Move Core: 2 cores to pine.hdb\n"
            "Move Core: 3 cores to pine.hdb\n"
            "Move Core: 3 cores to ash.rwm\n");
}

TEST_F(ChooserActions, OfOneCoreThatGoesThePageAloneTells) {
  folder.write("pine.hdb", "");
  press(button::move_core);
  pick(2);  // core 1 alone
  do_it();
  play();
  EXPECT_EQ(w.nc, 5);
  EXPECT_EQ(told(), "Move Core: 2 cores to pine.hdb\n");
}

TEST_F(ChooserActions, ACoreMarkedTwiceIsMovedOnce) {
  folder.write("pine.hdb", "");
  press(button::delete_core);
  pick(1);
  press(button::pick_cores);
  press(button::move_core);
  do_it();
  play();
  EXPECT_EQ(names(), "C1 C3 C4 C5 C6 oak pine ash elm ref ");
  const std::string file = folder.read("pine.hdb");
  EXPECT_EQ(file.find("KeyCode="), file.rfind("KeyCode="));
}

TEST_F(ChooserActions, EveryCoreCanBeMoved) {
  folder.write("pine.hdb", "");
  press(button::move_core);
  picks({3, 4, 5, 6});
  do_it();
  do_it();  // nothing is left to be moved
  EXPECT_TRUE(play_and_exit());
  EXPECT_EQ(names(), "oak pine ash elm ref ");
}

TEST_F(ChooserActions, AMoveOfNoCoreLeavesTheFileAndEntersTheModeAnew) {
  folder.write("pine.hdb", "as it was\n");
  folder.write("ash.rwm", "as it was\n");
  press(button::move_core);
  picks({1, 2});  // these no more
  pick(9);        // to ash
  do_it();
  play();
  EXPECT_EQ(line(message::move_caption), "Move C1 to pine.hdb");
  EXPECT_EQ(w.nc, 6);
  EXPECT_EQ(folder.read("ash.rwm"), "as it was\n");
  EXPECT_EQ(told(), "Move Core: 2 cores to pine.hdb\n");
}

TEST_F(ChooserActions, AMoveOfNoCoreToAFileThatIsGoneSaysSo) {
  press(button::move_core);
  picks({1, 2});
  do_it();
  key();
  play();
  EXPECT_EQ(told(), "Move Core: 2 cores to pine.hdb\nOpenpine.hdb fail err =     2\n");
}

TEST_F(ChooserActions, AMoveWithoutADestinationDoesNothing) {
  for (int f = 2; f <= 4; ++f) w.rftype(f) = Layout::tucson_index;
  press(button::move_core);
  do_it();
  play();
  EXPECT_EQ(w.nc, 6);
  EXPECT_EQ(line(message::move_caption), "Move C1 to");
}

// --- Whatever is clicked, the store stays whole and no core that is left has changed, unless it was edited.
TEST_F(ChooserActions, NoClickHarmsTheStore) {
  for (const char* file : {"pine.hdb", "ash.rwm", "elm.rwl"}) folder.write(file, "");
  const auto cores = all_cores();
  unsigned seed = 5;
  const auto next = [&seed](int below) {
    seed = seed * 1664525u + 1013904223u;
    return static_cast<int>((seed >> 8) % static_cast<unsigned>(below));
  };
  int made = 0, gone = 0;
  for (int round = 0; round < 300; ++round) {
    w.nd = w.nfil = 0;
    make_six();
    for (int k = 0; k < 20; ++k) {
      const int what = next(12);
      if (what < 4) {
        press(button::chooser_do_it);
      } else if (what < 6) {
        press(ButtonRange{button::pick_cores, button::bottom_of_pair}.at(next(11)));
      } else if (what < 11) {
        pick(1 + next(14));
      } else {
        screen.click(next(450), next(2100));  // not on the editor's table
      }
    }
    try {
      choose(w);
    } catch (const ProgramEnd& end) {
      ASSERT_EQ(end.reason(), EndReason::closed);
    }
    screen.shown.clear();
    made += w.nc > 6;
    gone += w.nc < 6;
    for (int i = 1; i < w.nd; ++i) ASSERT_EQ(w.ad(i + 1), w.ad(i) + w.yr(i)) << round;
    for (int i = 1; i <= w.nc; ++i) {
      const std::string name(w.nam(i).trimmed());
      ASSERT_TRUE(name.starts_with("C")) << name;
      if (name.size() > 2) continue;  // a mean
      ASSERT_EQ(widths(i), cores[static_cast<std::size_t>(name[1] - '1')]) << round << " " << name;
    }
  }
  EXPECT_GT(made, 5);
  EXPECT_GT(gone, 20);
}

}  // namespace
}  // namespace vorn
