// The chooser's page, and what clicks on it select.
#include "menus/choose.h"

#include "support/chooser_desk.h"

namespace vorn {
namespace {

class Chooser : public ChooserDesk {
 protected:
  // Two raw files and an index file behind `cores` cores; the first is the current one.
  void three_files(int cores) {
    make_store(cores, {{"oak.rwl", Layout::tucson_raw},
                       {"pine.hdb", Layout::heidelberg},
                       {"ref.crn", Layout::tucson_index}});
  }
};

// --- Entry.

TEST_F(Chooser, OpensInPickModeOnTheWorkingPair) {
  three_files(9);
  w.b(button::pick_cores).lit = false;
  w.b(button::move_core).lit = true;  // as it was left
  w.tr1 = 4;
  w.tr2 = 11;
  play();
  EXPECT_EQ(chosen(), (Picked{4, 11}));
  EXPECT_TRUE(w.b(button::pick_cores).lit);
  EXPECT_FALSE(w.b(button::move_core).lit);
  EXPECT_TRUE(w.b(button::top_of_pair).on);
  EXPECT_TRUE(w.b(button::bottom_of_pair).on);
  EXPECT_TRUE(reads("Choose a Pair of Trees"));
}

TEST_F(Chooser, DrawsItsButtonsInTheirColours) {
  three_files(9);
  play();
  EXPECT_TRUE(shows("fill 14 2710 60 2940 60 2940 105 2710 105"));    // "Exit"
  EXPECT_TRUE(shows("fill 14 2710 210 2940 210 2940 255 2710 255"));  // "Pick Cores", lit
  EXPECT_TRUE(shows("fill 7 2710 270 2940 270 2940 315 2710 315"));   // "Delete Core"
  EXPECT_TRUE(shows("fill 11 400 90 640 90 640 135 400 135"));        // " Top"
  EXPECT_TRUE(shows("fill 4 880 90 1120 90 1120 135 880 135"));       // "Bottom"
  EXPECT_TRUE(shows("text 15 25 405 102 \" Top\""));
  EXPECT_TRUE(shows("text 15 25 885 102 \"Bottom\""));
  EXPECT_TRUE(shows("text 15 25 200 195 \"Choose a Pair of Trees\""));
  EXPECT_FALSE(reads("Mean Name"));
  EXPECT_FALSE(reads("Page"));
}

TEST_F(Chooser, HeadingsSayWhatToChoose) {
  three_files(9);
  const std::vector<std::pair<ButtonNumber, std::string>> headings = {
      {button::delete_core, "Choose Several Trees"},
      {button::mean_core, "Choose Several Trees"},
      {button::edit_core, "Choose a Tree"},
      {button::move_core, "Choose a Tree"},
      {button::pick_cores, "Choose a Pair of Trees"}};
  for (const auto& [mode, heading] : headings) {
    press(mode);
    play();
    EXPECT_TRUE(shows("text 15 25 200 195 \"" + heading + "\"")) << plain(mode);
    for (const ButtonNumber n : button::chooser_modes) EXPECT_EQ(w.b(n).lit, n == mode);
  }
}

// --- The grid.

TEST_F(Chooser, AllSeriesAreListedToBePickedOrMovedAndCoresAloneOtherwise) {
  three_files(9);
  for (const ButtonNumber mode : {button::pick_cores, button::move_core}) {
    press(mode);
    play();
    EXPECT_TRUE(shows("text 15 25 205 620 \"C9\"")) << plain(mode);
    EXPECT_TRUE(shows("text 15 25 205 666 \"oak\"")) << plain(mode);
    EXPECT_TRUE(shows("text 15 25 205 758 \"ref\"")) << plain(mode);
  }
  for (const ButtonNumber mode : {button::delete_core, button::mean_core, button::edit_core}) {
    press(mode);
    play();
    EXPECT_TRUE(shows("text 15 25 205 620 \"C9\"")) << plain(mode);
    EXPECT_FALSE(reads("oak")) << plain(mode);
  }
}

TEST_F(Chooser, ThePairIsCyanAndRed) {
  three_files(9);
  w.tr1 = 3;
  w.tr2 = 10;
  play();
  EXPECT_EQ(cell_colour(3), 11);
  EXPECT_EQ(cell_colour(10), 4);
  EXPECT_EQ(cell_colour(4), -1);
  EXPECT_TRUE(w.chok);
}

TEST_F(Chooser, SeveralAreYellow) {
  three_files(9);
  press(button::delete_core);
  picks({5, 9});
  play();
  for (int k = 1; k <= 9; ++k) EXPECT_EQ(cell_colour(k), k == 1 || k == 2 || k == 5 || k == 9 ? 14 : -1) << k;
}

TEST_F(Chooser, CoresToMoveAreCyanAndTheirDestinationRed) {
  three_files(9);
  press(button::move_core);
  pick(4);
  play();
  for (int k = 1; k <= 12; ++k) {
    EXPECT_EQ(cell_colour(k), k == 1 || k == 2 || k == 4 ? 11 : k == 11 ? 4 : -1) << k;
  }
}

// --- Pages of names.

TEST_F(Chooser, WithUpTo210EntriesThePageButtonsAreOff) {
  three_files(207);
  play();
  EXPECT_EQ(w.nd, 210);
  EXPECT_FALSE(w.b(button::page_back).on);
  EXPECT_FALSE(w.b(button::page_forward).on);
  EXPECT_FALSE(reads("Page"));
}

TEST_F(Chooser, With211EntriesThePageButtonsAreOn) {
  three_files(208);
  press(button::page_forward);
  play();
  EXPECT_TRUE(reads("<< Page"));
  EXPECT_TRUE(reads("Page >>"));
  EXPECT_EQ(w.sccc, 1);
}

TEST_F(Chooser, With300EntriesPageForwardGoesTo90AndNeverPast) {
  three_files(297);
  play();
  EXPECT_TRUE(shows("text 15 25 205 252 \"C1\""));
  EXPECT_TRUE(shows("text 15 25 2347 1586 \"C210\""));
  press(button::page_forward);
  play();
  EXPECT_EQ(w.sccc, 90);
  EXPECT_TRUE(shows("text 15 25 205 252 \"C91\""));
  EXPECT_TRUE(shows("text 15 25 2347 1586 \"ref\""));
  press(button::page_forward);
  play();
  EXPECT_EQ(w.sccc, 90);
  press(button::page_back);
  play();
  EXPECT_EQ(w.sccc, 0);
  press(button::page_back);
  play();
  EXPECT_EQ(w.sccc, 0);
}

TEST_F(Chooser, TenThousandCoresArePagedThroughBy180) {
  make_store(10'000, {{"oak.rwl", Layout::tucson_raw}, {"pine.hdb", Layout::heidelberg}}, 12);
  for (int k = 0; k < 60; ++k) press(button::page_forward);
  play();
  EXPECT_EQ(w.sccc, 10'002 - 210);
  EXPECT_TRUE(reads("C10000"));
  EXPECT_TRUE(shows("text 15 25 2347 1586 \"pine\""));
  press(button::page_back);
  pick(1);
  press(button::top_of_pair);
  pick(210);
  play_and_exit();
  EXPECT_EQ(w.sccc, 10'002 - 390);
  EXPECT_EQ(w.tr1, 10'002 - 180);
  EXPECT_EQ(w.tr2, 2);
}

TEST_F(Chooser, AScrolledListEndsAtItsLastName) {
  three_files(297);
  press(button::page_forward);
  press(button::delete_core);
  play();
  EXPECT_TRUE(reads("C297"));
  EXPECT_FALSE(reads("oak"));
}

// --- Picking the pair.

TEST_F(Chooser, PickingTheSameTreeTwiceEmptiesItsPlace) {
  three_files(9);
  pick(2);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 0}));
  picks({5, 5, 1});
  play();
  EXPECT_EQ(chosen(), (Picked{0, 2}));
}

TEST_F(Chooser, AThirdTreeWhileBothPlacesAreFullIsIgnored) {
  three_files(9);
  pick(5);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2}));
}

TEST_F(Chooser, AnEmptyPlaceIsFilledTheTopOneFirst) {
  three_files(9);
  press(button::top_of_pair);
  press(button::bottom_of_pair);
  picks({7, 12});
  play();
  EXPECT_EQ(chosen(), (Picked{7, 12}));
}

TEST_F(Chooser, TopAndBottomEmptyTheirPlaceAlone) {
  three_files(9);
  press(button::bottom_of_pair);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 0}));
  press(button::top_of_pair);
  play();
  EXPECT_EQ(chosen(), (Picked{0, 2}));
  EXPECT_EQ(cell_colour(1), -1);
}

TEST_F(Chooser, EmptyCellsAndClicksBesideTheGridAreIgnored) {
  three_files(9);
  press(button::top_of_pair);
  picks({13, 30, 31, 210});
  screen.click(100, 500);
  screen.click(1000, 2000);
  play();
  EXPECT_EQ(chosen(), (Picked{0, 2}));
}

// The area clicked is 1400 units high, the lines drawn 1380: row 29 as drawn begins at 1574, as read at 1593.
TEST_F(Chooser, RowsAreReadAThirtiethOfTheAreaHigh) {
  three_files(57);
  press(button::top_of_pair);
  screen.click(300, 1590);
  play();
  EXPECT_EQ(w.chc(1), 29);
}

// On the lower edge it is row 30: the first name of the next column. On the right edge, column 7: behind the
// page's last name.
TEST_F(Chooser, OnTheLowerEdgeTheFirstNameOfTheNextColumnIsPicked) {
  three_files(57);
  press(button::top_of_pair);
  screen.click(300, 1640);
  play();
  EXPECT_EQ(w.chc(1), 31);
}
TEST_F(Chooser, OnTheRightEdgeANameBehindThePageIsPicked) {
  three_files(297);
  press(button::top_of_pair);
  screen.click(2700, 260);
  play();
  EXPECT_EQ(w.chc(1), 211);
}

TEST_F(Chooser, TheNumberPickedCountsTheNamesScrolledOff) {
  three_files(297);
  press(button::page_forward);
  press(button::top_of_pair);
  pick(3);
  play();
  EXPECT_EQ(w.chc(1), 93);
}

// The bounds are tested before the offset is added: 231 of 300 is let through and becomes 321.
TEST_F(Chooser, BoundsAreTestedBeforeTheOffsetIsAdded) {
  three_files(297);
  press(button::page_forward);
  press(button::top_of_pair);
  screen.click(2700, 240 + 20 * 1400 / 30 + 20);
  play();
  EXPECT_EQ(w.chc(1), 321);
  play_and_exit();
  EXPECT_EQ(w.tr1, 1);  // which names no series, so that the first one takes its place
}

// --- Modes.

TEST_F(Chooser, ChronologiesCannotBePickedToDeleteAverageOrEdit) {
  three_files(9);
  for (const ButtonNumber mode : {button::delete_core, button::mean_core, button::edit_core}) {
    press(mode);
    play();
    const Picked before = chosen();
    press(mode);
    pick(10);
    play();
    EXPECT_EQ(chosen(), before) << plain(mode);
  }
}

TEST_F(Chooser, InDeleteAndMeanModeAPickIsTakenInOrOutOfTheList) {
  three_files(9);
  for (const ButtonNumber mode : {button::delete_core, button::mean_core}) {
    press(mode);
    picks({5, 9, 1, 5, 7});
    play();
    EXPECT_EQ(chosen(), (Picked{2, 9, 7})) << plain(mode);
  }
}

TEST_F(Chooser, TheMarkedPairStaysMarkedWhenTheDeleteModeIsEntered) {
  three_files(9);
  w.tr2 = 10;
  press(button::delete_core);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 10}));
}

TEST_F(Chooser, InEditModeOnePickReplacesTheOther) {
  three_files(9);
  press(button::edit_core);
  picks({4, 8});
  play();
  EXPECT_EQ(chosen(), Picked{8});
}

TEST_F(Chooser, EditModeTakesTheFirstMarkedOrElseTheFirstCore) {
  three_files(9);
  w.tr1 = 4;
  press(button::edit_core);
  play();
  EXPECT_EQ(chosen(), Picked{4});
  w.tr1 = 10;
  press(button::edit_core);
  play();
  EXPECT_EQ(chosen(), Picked{1});
}

TEST_F(Chooser, PickModeKeepsTwoCoresAndOtherwiseBeginsWithTheFirstTwo) {
  three_files(9);
  press(button::delete_core);
  picks({5, 1});  // 2, 5
  press(button::pick_cores);
  play();
  EXPECT_EQ(chosen(), (Picked{2, 5}));
  press(button::edit_core);
  pick(7);
  press(button::top_of_pair);
  press(button::pick_cores);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2}));
  w.tr2 = 10;
  press(button::pick_cores);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2}));
}

// Behind the gap that was closed the old last value stays, and pick mode looks at two places.
TEST_F(Chooser, TheOldLastValueBehindAClosedGapIsPickedAgain) {
  three_files(9);
  press(button::delete_core);
  pick(1);
  press(button::pick_cores);
  play();
  EXPECT_EQ(chosen(), (Picked{2, 2}));
}

// --- The mean's name, characters 16 to 23 of its line.

TEST_F(Chooser, ATreeNamedABProposesABM) {
  three_files(9);
  w.nam(1) = "AB";
  press(button::mean_core);
  play();
  EXPECT_EQ(line(message::mean_tree_name), "Mean Tree Name ABM");
  EXPECT_TRUE(shows("text 15 25 1400 135 \"Mean Tree Name ABM\""));
  EXPECT_TRUE(reads("Mean Name"));
}

TEST_F(Chooser, AOneLetterNameProposesTheLetterABlankAndM) {
  three_files(9);
  w.nam(1) = "A";
  press(button::mean_core);
  play();
  EXPECT_EQ(line(message::mean_tree_name), "Mean Tree Name A M");
}

TEST_F(Chooser, ALongNameIsCutToSevenLettersAndAShorterOneLeavesNothingBehind) {
  three_files(9);
  w.nam(1) = "ABCDEFGH";
  press(button::mean_core);
  play();
  EXPECT_EQ(line(message::mean_tree_name), "Mean Tree Name ABCDEFGM");
  w.nam(1) = "XYZ";
  press(button::mean_core);
  play();
  EXPECT_EQ(line(message::mean_tree_name), "Mean Tree Name XYZM");
}

TEST_F(Chooser, AnEmptyPlaceProposesBlanksAndM) {
  three_files(9);
  press(button::top_of_pair);
  press(button::mean_core);
  play();
  EXPECT_EQ(line(message::mean_tree_name), "Mean Tree Name   M");
}

TEST_F(Chooser, OtherModesHideTheMeanName) {
  three_files(9);
  press(button::mean_core);
  press(button::delete_core);
  play();
  EXPECT_FALSE(reads("Mean Name"));
  EXPECT_FALSE(reads("Mean Tree Name"));
}

// What the menus do not reset stays as it is.
TEST_F(Chooser, TheMeanNameStaysShownWhenTheChooserIsLeftInMeanMode) {
  three_files(9);
  press(button::mean_core);
  play_and_exit();
  play();
  EXPECT_TRUE(w.b(button::pick_cores).lit);
  EXPECT_TRUE(reads("Mean Tree Name C1M"));
}

TEST_F(Chooser, TheMeanNameIsTypedIntoItsButton) {
  three_files(9);
  press(button::mean_core);
  press(button::mean_name);
  screen.type("OAKMEAN");
  screen.key(Event::enter);
  play();
  EXPECT_EQ(w.b(button::mean_name).label.trimmed(), "OAKMEAN");
  EXPECT_TRUE(reads("OAKMEAN"));
}

// --- The move's caption and its destination. Entries 10, 11 and 12 are oak.rwl, the cores' own file,
// pine.hdb and ref.crn, an index file.

TEST_F(Chooser, TheMovesCaptionNamesTheFirstCoreAndTheFile) {
  three_files(9);
  w.tr1 = 3;
  press(button::move_core);
  play();
  EXPECT_EQ(line(message::move_caption), "Move C3 to pine.hdb");
  EXPECT_TRUE(shows("text 15 25 1400 135 \"Move C3 to pine.hdb\""));
}

TEST_F(Chooser, TheMovesCaptionIsCutAtSixtyCharacters) {
  three_files(9);
  w.cnam(2) = "somewhere/far/down/in/a/tree/of/folders/that/have/names.rwl";
  press(button::move_core);
  play();
  EXPECT_EQ(w.mtext(message::move_caption).view(),
            "Move C1 to somewhere/far/down/in/a/tree/of/folders/that/have");
}

TEST_F(Chooser, MoveModeKeepsTheLeadingCoresAndFindsTheFirstDestination) {
  three_files(9);
  press(button::delete_core);
  picks({7, 4});
  press(button::move_core);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2, 7, 4, 11}));
}

TEST_F(Chooser, MoveModeKeepsAMarkedDestination) {
  make_store(9, {{"oak.rwl", Layout::tucson_raw},
                 {"pine.hdb", Layout::heidelberg},
                 {"ref.crn", Layout::tucson_index},
                 {"ash.rwm", Layout::compact}});
  w.tr1 = 3;
  w.tr2 = 13;
  press(button::move_core);
  play();
  EXPECT_EQ(chosen(), (Picked{3, 13}));
  EXPECT_EQ(line(message::move_caption), "Move C3 to ash.rwm");
}

TEST_F(Chooser, MoveModeWithoutALeadingCoreBeginsWithTheFirst) {
  three_files(9);
  w.tr1 = 12;
  w.tr2 = 3;
  press(button::move_core);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 11}));
}

// The run is looked for among the chosen: what an older selection left behind them is not.
TEST_F(Chooser, MoveModeLooksNoFurtherThanTheSelection) {
  three_files(9);
  press(button::delete_core);
  picks({7, 4});
  press(button::edit_core);
  press(button::move_core);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 11}));
}

TEST_F(Chooser, TheCurrentChronologyAndIndexFilesAreNeverTheDestination) {
  three_files(9);
  press(button::move_core);
  picks({10, 12});
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2, 11}));
  w.rftype(3) = Layout::not_recognised;
  press(button::move_core);
  pick(12);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2, 11}));
  w.rftype(3) = Layout::tucson_raw;
  press(button::move_core);
  pick(12);
  play();
  EXPECT_EQ(chosen(), (Picked{1, 2, 12}));
  EXPECT_EQ(line(message::move_caption), "Move C1 to ref.crn");
}

// Of the pair an index file and the cores' own chronology: neither stays as destination.
TEST_F(Chooser, AMarkedChronologyThatIsNoDestinationGivesWay) {
  three_files(9);
  for (const int marked : {10, 12}) {
    w.tr1 = 3;
    w.tr2 = marked;
    press(button::move_core);
    play();
    EXPECT_EQ(chosen(), (Picked{3, 11})) << marked;
  }
}

TEST_F(Chooser, ACoreIsTakenInBeforeTheDestinationAndOutAgain) {
  three_files(9);
  press(button::move_core);
  picks({5, 6, 1});
  play();
  EXPECT_EQ(chosen(), (Picked{2, 5, 6, 11}));
  EXPECT_EQ(line(message::move_caption), "Move C2 to pine.hdb");
}

TEST_F(Chooser, WhenNoCoreIsLeftTheCaptionNamesTheDestinationTwice) {
  three_files(9);
  press(button::move_core);
  picks({1, 2});
  play();
  EXPECT_EQ(chosen(), Picked{11});
  EXPECT_EQ(line(message::move_caption), "Move pine to pine.hdb");
  press(button::move_core);
  picks({1, 2});
  press(button::chooser_do_it);  // nothing to move, to a file that is not there
  screen.key(' ');
  pick(6);
  play();
  EXPECT_EQ(w.nc, 9);
  EXPECT_EQ(chosen(), (Picked{6, 11}));
}

// --- Leaving.

TEST_F(Chooser, ExitMakesTheChosenPairTheWorkingPair) {
  three_files(9);
  press(button::top_of_pair);
  pick(7);
  w.tr1ok = w.tr2ok = true;
  EXPECT_TRUE(play_and_exit());
  EXPECT_EQ(w.tr1, 7);
  EXPECT_EQ(w.tr2, 2);
  EXPECT_EQ(w.nam(w.nd + 1), w.nam(7));
  EXPECT_FALSE(w.tr1ok);
  EXPECT_FALSE(w.b(button::save_sample).on);
  EXPECT_FALSE(w.b(button::save_reference).on);
}

TEST_F(Chooser, OkInPickModeLeavesToo) {
  three_files(9);
  press(button::bottom_of_pair);
  pick(11);
  press(button::chooser_do_it);
  EXPECT_TRUE(choose(w));
  EXPECT_EQ(w.tr1, 1);
  EXPECT_EQ(w.tr2, 11);
}

TEST_F(Chooser, AnEmptyPlaceIsFilledByTheFirstCoreOrTheSecond) {
  three_files(9);
  const auto left_with = [this](int first, int second, ButtonNumber emptied) {
    w.tr1 = first;
    w.tr2 = second;
    press(emptied);
    play_and_exit();
    return std::pair(w.tr1, w.tr2);
  };
  EXPECT_EQ(left_with(5, 7, button::top_of_pair), std::pair(1, 7));
  EXPECT_EQ(left_with(5, 1, button::top_of_pair), std::pair(2, 1));
  EXPECT_EQ(left_with(5, 7, button::bottom_of_pair), std::pair(5, 1));
  EXPECT_EQ(left_with(1, 7, button::bottom_of_pair), std::pair(1, 2));
}

TEST_F(Chooser, ExitTakesTheFirstTwoPlacesInEveryMode) {
  three_files(9);
  press(button::delete_core);
  picks({8, 6});
  play_and_exit();
  EXPECT_EQ(w.tr1, 1);
  EXPECT_EQ(w.tr2, 2);
  press(button::edit_core);
  pick(6);
  play_and_exit();
  EXPECT_EQ(w.tr1, 6);
  EXPECT_EQ(w.tr2, 2);
}

TEST_F(Chooser, WhereNothingWasChangedNothingIsComputedAnew) {
  three_files(9);
  w.ax(5) = 123;
  press(button::delete_core);
  pick(5);
  play_and_exit();
  EXPECT_EQ(w.ax(5), 123);
}

TEST_F(Chooser, LeavesAfterAThousandPasses) {
  three_files(9);
  for (int k = 0; k < 1000; ++k) screen.click(1000, 2000);
  EXPECT_TRUE(choose(w));
  EXPECT_EQ(screen.shown.size(), 1000u);
  EXPECT_EQ(screen.events_left(), 0u);
}

// --- Carefully.

TEST_F(Chooser, CarefullyDeleteBeginsWithNothingMarkedAndThePairStays) {
  three_files(9);
  w.careful.set(Mend::delete_unmarked, true);
  w.tr1 = 3;
  w.tr2 = 5;
  press(button::delete_core);
  play();
  EXPECT_EQ(chosen(), Picked{});
  for (int k = 1; k <= 9; ++k) EXPECT_EQ(cell_colour(k), -1) << k;
  press(button::delete_core);
  EXPECT_TRUE(play_and_exit());
  EXPECT_EQ(w.tr1, 3);
  EXPECT_EQ(w.tr2, 5);
  EXPECT_EQ(w.nc, 9);
}

TEST_F(Chooser, CarefullyOnlyWhatIsMarkedInDeleteModeIsDeleted) {
  three_files(9);
  w.careful.set(Mend::delete_unmarked, true);
  press(button::delete_core);
  press(button::chooser_do_it);  // nothing is marked
  pick(7);
  press(button::chooser_do_it);
  play();
  EXPECT_EQ(names(), "C1 C2 C3 C4 C5 C6 C8 C9 oak pine ref ");
}

TEST_F(Chooser, CarefullyItGoesOnBehindItsLastPass) {
  three_files(9);
  w.careful.set(Mend::pass_limits, true);
  for (int pass = 0; pass < 1'005; ++pass) screen.click(2900, 2000);
  play();
  EXPECT_EQ(w.passes_left, 0);
}

}  // namespace
}  // namespace vorn
