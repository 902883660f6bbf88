#include "menus/cross_menu.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "editing/working_pair.h"
#include "loading/startup.h"
#include "support/menu_bench.h"

namespace vorn {
namespace {

constexpr const char* browsing = "1-20 28-33";

// Oaks: five cores, the fourth of ten rings only; and the chronology of larches. Entry 6 is the oaks'
// chronology, 7 the larches'; 8 and 9 are the slots.
class CrossMenu : public MenuBench {
 protected:
  CrossMenu() {
    std::string oaks;
    for (const int k : {1, 2, 3}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 100, 7u * k);
    oaks += raw_core_text("TINY", 1950, 10, 99) + raw_core_text("OAK5", 1900, 100, 35);
    folder.write("oak.rwl", oaks);
    folder.write("larch.rwl",
                 raw_core_text("LARCH1", 1880, 100, 101) + raw_core_text("LARCH2", 1880, 100, 103));
    folder.write("Vorn.fil", "oak.rwl\nlarch.rwl\n");
    init_start(*w);
  }

  // A click into the upper or the lower strip, on the middle of a year.
  void click_year(bool upper, int year) {
    screen.act([this, upper, year] {
      const double x = 200 + (year - w->fs + 0.5) * w->scx;
      return Event{static_cast<int>(x), upper ? 520 : 1230, Event::click};
    });
  }
  void pair(int upper, int lower) {
    look([this, upper, lower] {
      w->tr1 = upper;
      w->tr2 = lower;
      set_chs(*w);
    });
  }
  void expect_on(const std::string& buttons) {
    look([this, buttons] { EXPECT_EQ(on(button::crossdating), buttons); });
  }
  // A click beside everything: the screen is drawn again.
  void redraw() { click(2900, 2000); }
  void run() { EXPECT_FALSE(returns(cross_menu)); }

  const int sample = 8, reference = 9;
};

// --- Browsing.

TEST_F(CrossMenu, OpensOnTheFirstTwoEntriesWithTheButtonsOfBrowsing) {
  w->tr1 = 3;
  w->tr2 = 5;
  w->b(button::upper_plot).on = w->b(button::lower_plot).on = true;
  look([this] {
    EXPECT_EQ(w->tr1, 1);
    EXPECT_EQ(w->tr2, 2);
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_EQ(w->fs, 1900);
    EXPECT_EQ(w->ls, 1999);
    EXPECT_TRUE(reads("OAK1"));
    EXPECT_TRUE(reads("OAK2"));
    EXPECT_TRUE(reads("Choose Cores"));
    EXPECT_TRUE(reads("Display width"));
    EXPECT_FALSE(reads("Save Change"));
  });
  run();
}

TEST_F(CrossMenu, ExitMenuLeaves) {
  press(button::exit_crossdating);
  EXPECT_TRUE(returns(cross_menu));
  EXPECT_EQ(screen.waits, 1);
}

TEST_F(CrossMenu, AClickBesideEveryButtonRedrawsAndChangesNothing) {
  std::string before;
  look([&] { before = on(button::crossdating) + std::to_string(w->fs); });
  redraw();
  click(300, 520);  // in the upper plot, where nothing is asked for
  look([&] { EXPECT_EQ(on(button::crossdating) + std::to_string(w->fs), before); });
  run();
  EXPECT_EQ(screen.waits, 3);
}

TEST_F(CrossMenu, EndsAfterTwentyThousandPasses) {
  w->sl = 21;
  for (int pass = 0; pass < 20'001; ++pass) redraw();
  EXPECT_TRUE(returns(cross_menu));
  EXPECT_EQ(screen.waits, 20'000);
  EXPECT_EQ(screen.steps_left(), 1u);
}

TEST_F(CrossMenu, TheTopRowMovesTheYearsShownFromMinusFiftyToFifty) {
  const int steps[] = {-50, -10, -1, 1, 10, 50};
  for (const ButtonNumber n : button::scroll_row) {
    look([this] {
      w->sl = 20;  // room to both sides
      w->fs = 1950;
      w->ls = 1969;
    });
    press(n);
    look([this, n, &steps] {
      const int expected = std::min(1950 + steps[button::scroll_row.place(n)], 1999 - 20);
      EXPECT_EQ(w->fs, std::max(expected, 1899)) << plain(n);
      EXPECT_EQ(w->ls, w->fs + 19) << plain(n);
    });
  }
  run();
}

TEST_F(CrossMenu, TheRowsOfTheSeriesMoveThemFromMinusFiftyToFifty) {
  const int steps[] = {-50, -10, -1, 1, 10, 50};
  for (const ButtonNumber n : ButtonRange{button::sample_minus_50, button::reference_plus_50}) {
    pair(1, 2);
    press(n);
    look([this, n, &steps] {
      const bool upper = button::sample_row.contains(n);
      const int by = steps[(upper ? button::sample_row : button::reference_row).place(n)];
      EXPECT_EQ(w->fy(sample), 1900 + (upper ? by : 0)) << plain(n);
      EXPECT_EQ(w->fy(reference), 1900 + (upper ? 0 : by)) << plain(n);
      EXPECT_EQ(w->ly(sample), w->fy(sample) + 99) << plain(n);
      EXPECT_EQ(w->fy(1), 1900);
    });
  }
  run();
}

TEST_F(CrossMenu, AWidthOf20IsRefused21Accepted12000Accepted12001Refused) {
  const auto expect_width = [this](int years, int last) {
    look([this, years, last] {
      char text[8];
      std::snprintf(text, sizeof text, "%5d", years);
      EXPECT_EQ(w->sl, years);
      EXPECT_EQ(w->ls, last);
      EXPECT_DOUBLE_EQ(w->scx, 2500.0 / years);
      EXPECT_EQ(label(button::display_width), text);
      EXPECT_TRUE(reads(text));
    });
  };
  enter(button::display_width, "20\r");
  expect_width(100, 1999);
  enter(button::display_width, "21\r");
  expect_width(21, 1920);
  enter(button::display_width, "12000\r");
  expect_width(12'000, 13'899);
  enter(button::display_width, "12001\r");
  expect_width(12'000, 13'899);
  enter(button::display_width, "-50\r");
  expect_width(12'000, 13'899);
  run();
}

TEST_F(CrossMenu, AnAbandonedWidthChangesNothingAndItsLabelIsWrittenAnew) {
  enter(button::display_width, "50 ");
  look([this] {
    EXPECT_EQ(w->sl, 100);
    EXPECT_EQ(label(button::display_width), "  100");
  });
  enter(button::display_width, "123456");
  look([this] {
    EXPECT_EQ(w->sl, 100);
    EXPECT_EQ(label(button::display_width), "  100");
    EXPECT_TRUE(w->b(button::display_width).lit);
  });
  run();
}

TEST_F(CrossMenu, LinePlotAndSkeletonTakeTurnsOnTheLabelAloneAndTheCurvesStay) {
  Page lines;
  look([&] { lines = plot.page(); });
  press(button::line_plot);
  look([&] {
    EXPECT_FALSE(w->lineon);
    EXPECT_EQ(label(button::line_plot), "Skeleton");
    ASSERT_EQ(plot.page().marks().size(), lines.marks().size());
    int changed = 0;
    for (std::size_t k = 0; k < lines.marks().size(); ++k) {
      changed += plot.page().marks()[k] != lines.marks()[k];
    }
    EXPECT_EQ(changed, 1);  // the label
  });
  press(button::line_plot);
  look([&] {
    EXPECT_TRUE(w->lineon);
    EXPECT_EQ(label(button::line_plot), "Line Plot");
  });
  run();
}

TEST_F(CrossMenu, IndicesAndRawDataTakeTurns) {
  Page indices;
  look([&] { indices = plot.page(); });
  press(button::indices);
  look([&] {
    EXPECT_FALSE(w->indon);
    EXPECT_EQ(label(button::indices), "Raw Data");
    EXPECT_NE(plot.page().marks().back(), indices.marks().back());  // the reference's curve
  });
  press(button::indices);
  look([&] {
    EXPECT_TRUE(w->indon);
    EXPECT_EQ(label(button::indices), "Indices");
  });
  run();
}

// --- Picking a year.

TEST_F(CrossMenu, InsertAsksForAYearInThePlotsOfCoresAlone) {
  press(button::insert_ring);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "25-26");
    EXPECT_TRUE(w->ins);
    EXPECT_TRUE(reads("Select Insert (before) year"));
    EXPECT_FALSE(reads("Exit Menu"));
  });
  run();
}

TEST_F(CrossMenu, DeleteAsksForAYearToo) {
  press(button::delete_ring);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "25-26");
    EXPECT_FALSE(w->ins);
    EXPECT_TRUE(reads("Select year to Delete"));
  });
  run();
}

TEST_F(CrossMenu, AChronologysPlotCannotBePicked) {
  pair(1, 7);
  press(button::insert_ring);
  expect_on("25");
  click_year(false, 1930);  // the chronology's strip: nothing there
  expect_on("25");
  click_year(true, 1930);
  expect_on("21-22");
  press(button::insertion_ok);
  pair(7, 1);
  press(button::delete_ring);
  expect_on("26");
  run();
}

TEST_F(CrossMenu, ThePickCannotBeLeftButByAPick) {
  press(button::insert_ring);
  press(button::exit_crossdating);
  press(button::leave_pick);
  press(button::delete_ring);
  expect_on("25-26");
  look([this] { EXPECT_TRUE(w->ins); });
  run();
}

TEST_F(CrossMenu, WithoutAStoredTreeEveryButtonGoesOff) {
  look([this] {
    w->tr1 = 6;
    w->tr2 = 7;
    set_chs(*w);
    EXPECT_EQ(on({button::insert_ring, button::delete_ring}), "");
    w->b(button::insert_ring).on = true;  // as no way through the menus leaves it
  });
  press(button::insert_ring);
  expect_on("");
  redraw();
  click_year(true, 1930);
  expect_on("");
  run();
}

TEST_F(CrossMenu, AYearIsPickedByTheUnitsOfItsWidth) {
  const auto picked = [this](int x) {
    pair(1, 2);
    press(button::delete_ring);
    click(x, 591);  // the strip's lowest line
  };
  picked(200);
  look([this] { EXPECT_EQ(w->insdel, 1900); });
  press(button::deletion_not);
  picked(224);
  look([this] { EXPECT_EQ(w->insdel, 1900); });
  press(button::deletion_not);
  picked(225);
  look([this] { EXPECT_EQ(w->insdel, 1901); });
  press(button::deletion_not);
  picked(2699);
  look([this] { EXPECT_EQ(w->insdel, 1999); });
  run();
}

TEST_F(CrossMenu, AClickOnAYearThatTheSeriesDoesNotHaveChangesNothingAndThePickGoesOn) {
  pair(4, 1);  // TINY, 1950 to 1959
  press(button::delete_ring);
  for (const int year : {1949, 1960}) click_year(true, year);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "25-26");
    EXPECT_EQ(w->yr(sample), 10);
    EXPECT_EQ(told(), "");
  });
  click(2700, 1230);  // the right edge: 2000, a year behind the reference
  expect_on("25-26");
  click_year(false, 1999);
  expect_on("23-24");
  run();
}

// Scrolled to years that the core does not have, with nothing else to click: no dead end.
TEST_F(CrossMenu, EscapeLeadsOutWhereNoYearToPickIsShown) {
  pair(4, 6);  // TINY, 1950 to 1959, and a chronology
  look([this] {
    w->sl = 25;
    w->scx = 100;
    w->fs = 1960;
    w->ls = 1984;
  });
  press(button::delete_ring);
  expect_on("25");
  click_year(true, 1970);
  expect_on("25");
  key(Event::escape);
  look([this] {
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_EQ(w->yr(sample), 10);
    EXPECT_FALSE(w->ins);
  });
  run();
}

// A year in sight is to be picked, and Escape is a key like any other.
TEST_F(CrossMenu, EscapeLeadsOutNowhereElse) {
  pair(4, 6);
  look([this] {
    w->sl = 25;
    w->scx = 100;
    w->fs = 1960;
    w->ls = 1984;
  });
  press(button::insert_ring);  // 1960 can be inserted
  key(Event::escape);
  click_year(true, 1970);
  expect_on("25");
  click_year(true, 1960);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "21-22");
    EXPECT_EQ(w->yr(sample), 11);
  });
  key(Event::escape);
  expect_on("21-22");
  press(button::insertion_not);
  look([this] { w->fs = 1925; });  // 1950 lies on the right edge
  press(button::delete_ring);
  click_year(true, 1940);
  key(Event::escape);
  expect_on("25");
  click(2700, 520);
  expect_on("23-24");
  run();
}

TEST_F(CrossMenu, ARingCanBeInsertedBehindTheLastYearButNoFarther) {
  pair(4, 1);
  press(button::insert_ring);
  click_year(true, 1949);
  click_year(true, 1961);
  expect_on("25-26");
  click_year(true, 1960);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "21-22");
    EXPECT_EQ(w->ly(sample), 1960);
  });
  run();
}

// --- Keeping an edit or not.

TEST_F(CrossMenu, AnInsertionIsAppliedAtOnceAndConfirmed) {
  press(button::insert_ring);
  click_year(true, 1930);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "21-22");
    EXPECT_TRUE(reads("Insert 1930"));
    EXPECT_TRUE(w->ul);
    EXPECT_EQ(w->yr(sample), 101);
    EXPECT_EQ(w->ly(sample), 2000);
    EXPECT_FALSE(w->xok(w->ad(sample) + 30));
    EXPECT_EQ(w->x(w->ad(sample) + 31), w->x(w->ad(1) + 30));
    EXPECT_EQ(w->yr(1), 100);  // the core itself stays
  });
  press(button::insertion_ok);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");
    EXPECT_EQ(w->yr(sample), 101);
    EXPECT_FALSE(reads("Insert 1930"));
  });
  run();
}

TEST_F(CrossMenu, ADeletionIsAppliedAtOnceAndConfirmed) {
  press(button::delete_ring);
  click_year(false, 1930);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "23-24");
    EXPECT_TRUE(reads("Delete 1930"));
    EXPECT_FALSE(w->ul);
    EXPECT_EQ(w->yr(reference), 99);
    EXPECT_EQ(w->x(w->ad(reference) + 30), w->x(w->ad(2) + 31));
  });
  press(button::deletion_ok);
  look([this] {
    EXPECT_EQ(on(button::crossdating), "1-20 28-33 35");
    EXPECT_EQ(w->yr(reference), 99);
  });
  run();
}

// OK of the one kind and NOT of the other share a place; the page says which it is.
TEST_F(CrossMenu, TheButtonsThatShareAPlaceAreToldApartByWhichIsOn) {
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::deletion_ok);  // the place of NOT after an insertion
  look([this] { EXPECT_EQ(w->yr(sample), 100); });
  press(button::delete_ring);
  click_year(true, 1930);
  press(button::insertion_not);  // the place of OK after a deletion
  look([this] { EXPECT_EQ(w->yr(sample), 99); });
  run();
}

TEST_F(CrossMenu, TheCaptionOfAYearBeforeMinus999IsAsterisks) {
  look([this] {
    w->fy(sample) = w->fs = -1200;
    w->ly(sample) = -1101;
  });
  press(button::delete_ring);
  click_year(true, -1150);
  look([this] { EXPECT_TRUE(reads("Delete ****")); });
  run();
}

TEST_F(CrossMenu, InsertingAYearAndAnsweringNotLeavesTheSeriesAsBefore) {
  std::vector<double> widths;
  std::vector<bool> present;
  look([&] {
    widths = values(w->x, sample);
    present = values(w->xok, sample);
  });
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::insertion_not);
  look([&] {
    EXPECT_EQ(values(w->x, sample), widths);
    EXPECT_EQ(values(w->xok, sample), present);
    EXPECT_EQ(w->ly(sample), 1999);
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");  // "Save Change" is offered even so: meant
  });
  run();
}

TEST_F(CrossMenu, DeletingAYearAndAnsweringNotRestoresIt) {
  std::vector<double> widths;
  std::vector<bool> present;
  look([&] {
    w->xok(w->ad(reference) + 30) = false;
    widths = values(w->x, reference);
    present = values(w->xok, reference);
  });
  press(button::delete_ring);
  click_year(false, 1930);
  press(button::deletion_not);
  look([&] {
    EXPECT_EQ(values(w->x, reference), widths);
    EXPECT_EQ(values(w->xok, reference), present);
    EXPECT_EQ(w->ly(reference), 1999);
    EXPECT_EQ(on(button::crossdating), "1-20 28-33 35");
  });
  run();
}

TEST_F(CrossMenu, ADeletionRefusedForTenRingsHasNothingToUndo) {
  std::vector<double> widths;
  pair(4, 1);
  look([&] { widths = values(w->x, sample); });
  press(button::delete_ring);
  click_year(true, 1955);
  key(' ');  // dismisses the message
  look([&] {
    EXPECT_EQ(told(), "Tree age too small \n");
    EXPECT_EQ(on(button::crossdating), "23-24");
  });
  press(button::deletion_not);
  look([&] {
    EXPECT_EQ(w->yr(sample), 10);
    EXPECT_EQ(values(w->x, sample), widths);
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  run();
}

TEST_F(CrossMenu, AnInsertionRefusedForTheAgeLimitHasNothingToUndo) {
  look([&] { w->fy(3) = w->ly(sample) - 12'000; });
  press(button::insert_ring);
  click_year(true, 1955);
  key(' ');
  look([&] {
    EXPECT_EQ(told(), "Chronology age limit MXY reached\n");
    EXPECT_EQ(on(button::crossdating), "21-22");
  });
  press(button::insertion_not);
  look([&] {
    EXPECT_EQ(w->yr(sample), 100);
    EXPECT_EQ(values(w->x, sample), values(w->x, 1));
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  run();
}

// An edit still waiting when the menu ended at its pass limit is gone when it is opened again: the slots are
// copied anew.
TEST_F(CrossMenu, AnEditOfAnEarlierVisitHasNothingToUndo) {
  w->sl = 21;
  for (int pass = 0; pass < 19'998; ++pass) redraw();
  press(button::insert_ring);
  click_year(true, 1990);
  EXPECT_TRUE(returns(cross_menu));
  expect_on("19-22");
  press(button::insertion_not);
  look([this] {
    EXPECT_EQ(w->yr(sample), 100);
    EXPECT_EQ(values(w->x, sample), values(w->x, 1));
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  run();
}

TEST_F(CrossMenu, QuitOfThePickIsOnlyThereWhereAnotherPartOfTheProgramShowsIt) {
  press(button::insert_ring);
  look([this] { w->b(button::leave_pick).on = true; });
  press(button::leave_pick);
  look([this] {
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_FALSE(w->ins);
  });
  run();
}

// The last core (5) is compared strictly: its slot is neither computed anew nor offered to be saved.
TEST_F(CrossMenu, AnEditOfTheLastCoreIsNotOfferedToBeSaved) {
  pair(5, 1);
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::insertion_ok);
  look([this] {
    EXPECT_EQ(w->yr(sample), 101);
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  press(button::sample_minus_50);  // until it is moved
  look([this] {
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");
    EXPECT_FALSE(w->tr1ok);
  });
  press(button::save_sample);
  look([this] { EXPECT_EQ(w->yr(5), 101); });
  run();
}

// --- Saving.

TEST_F(CrossMenu, SaveChangeWritesTheSlotAndIsGoneUntilTheSeriesIsMovedOrEditedAgain) {
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::insertion_ok);
  std::vector<double> widths, analysis, next;
  std::vector<bool> present;
  look([&] {
    EXPECT_TRUE(reads("Save Change"));
    widths = values(w->x, sample);
    present = values(w->xok, sample);
    analysis = values(w->ax, sample);
    next = values(w->x, 2);
  });
  press(button::save_sample);
  look([&] {
    EXPECT_EQ(w->yr(1), 101);
    EXPECT_EQ(w->fy(1), 1900);
    EXPECT_EQ(w->ly(1), 2000);
    EXPECT_EQ(w->nam(1).trimmed(), "OAK1");
    EXPECT_EQ(values(w->x, 1), widths);
    EXPECT_EQ(values(w->xok, 1), present);
    EXPECT_EQ(values(w->ax, 1), analysis);
    EXPECT_EQ(values(w->x, 2), next);
    for (int i = 1; i < 7; ++i) EXPECT_EQ(w->ad(i + 1), w->ad(i) + w->yr(i)) << i;
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_FALSE(reads("Save Change"));
    EXPECT_TRUE(w->derived_stale);
  });
  redraw();
  expect_on(browsing);
  press(button::sample_plus_50);
  expect_on("1-20 28-34");
  press(button::save_sample);
  look([&] {
    EXPECT_EQ(w->fy(1), 1950);
    EXPECT_EQ(w->ly(1), 2050);
    EXPECT_EQ(values(w->x, 1), widths);
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  press(button::delete_ring);
  click_year(true, 1955);
  press(button::deletion_ok);
  expect_on("1-20 28-34");
  run();
}

TEST_F(CrossMenu, TheReferenceIsSavedByItsOwnButton) {
  press(button::reference_minus_50);
  press(button::sample_minus_50);
  expect_on("1-20 28-35");
  press(button::save_reference);
  look([this] {
    EXPECT_EQ(w->fy(2), 1850);
    EXPECT_EQ(w->fy(1), 1900);
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");
  });
  run();
}

TEST_F(CrossMenu, ARingMoreThanThePoolHoldsIsNotSaved) {
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::insertion_ok);
  int start = 0;
  look([&] {
    start = w->ad(7);
    w->ad(7) = max_pool - w->yr(7) + 1;  // as if the pool were full
  });
  press(button::save_sample);
  key(' ');
  look([&] {
    w->ad(7) = start;
    EXPECT_EQ(told(), "Would be too many rings\n");
    EXPECT_EQ(w->yr(1), 100);
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");
  });
  run();
}

TEST_F(CrossMenu, ARingForWhichThePoolHasTheLastPlaceIsSaved) {
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::insertion_ok);
  int start = 0;
  look([&] {
    start = w->ad(7);
    w->ad(7) = max_pool - w->yr(7);  // as if one place were left
  });
  press(button::save_sample);
  look([&] {
    w->ad(7) = start + 1;
    EXPECT_EQ(told(), "");
    EXPECT_EQ(w->yr(1), 101);
  });
  run();
}

// The cores end in 1999: a sample from 1900 - 10,002 on makes 12,002 years of them, one from there + 2 years
// 12,000.
TEST_F(CrossMenu, AMoveThatMakesTheNextChronologyTooLongIsToldAndNotSaved) {
  const int as_far_as_it_goes = 1999 - 12'000 + 1;
  const auto start_at = [this](int slot, int first) {
    look([this, slot, first] {
      w->ly(slot) += first - w->fy(slot);
      w->fy(slot) = first;
    });
  };
  press(button::sample_minus_50);
  start_at(sample, as_far_as_it_goes - 1);
  press(button::save_sample);
  key(' ');
  look([&] {
    EXPECT_EQ(told(), "Chronology too long\n");
    EXPECT_EQ(w->fy(1), 1900);
    EXPECT_FALSE(w->derived_stale);
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");  // still offered
  });
  start_at(sample, as_far_as_it_goes);
  press(button::save_sample);
  look([&] {
    EXPECT_EQ(told(), "");
    EXPECT_EQ(w->fy(1), as_far_as_it_goes);
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  press(button::choose_cores);  // which makes the chronology
  press(button::chooser_exit);
  look([&] {
    EXPECT_EQ(w->cyr(1), max_years);
    EXPECT_EQ(told(), "");
  });
  run();
}

// Forward, of the reference, which is the earliest core; the others decide how early the years begin.
TEST_F(CrossMenu, AReferenceMovedTooFarForwardIsNotSavedEither) {
  const int as_far_as_it_goes = 1900 + 12'000 - 1;  // its last year
  press(button::reference_plus_50);
  look([&] {
    w->fy(reference) = as_far_as_it_goes + 1 - 99;
    w->ly(reference) = as_far_as_it_goes + 1;
  });
  press(button::save_reference);
  key(' ');
  look([&] {
    EXPECT_EQ(told(), "Chronology too long\n");
    EXPECT_EQ(w->ly(2), 1999);
    --w->fy(reference);
    --w->ly(reference);
  });
  press(button::save_reference);
  look([&] {
    EXPECT_EQ(told(), "");
    EXPECT_EQ(w->ly(2), as_far_as_it_goes);
  });
  run();
}

// A chronology's entry is no part of the chronology that is made of the cores.
TEST_F(CrossMenu, AChronologyIsSavedHoweverFarItWasMoved) {
  pair(1, 7);
  press(button::reference_minus_50);
  look([&] {
    w->fy(reference) -= 20'000;
    w->ly(reference) -= 20'000;
  });
  press(button::save_reference);
  look([&] {
    EXPECT_EQ(told(), "");
    EXPECT_EQ(w->fy(7), w->fy(reference));
  });
  run();
}

// --- The menus opened from here.

TEST_F(CrossMenu, ThePairChosenElsewhereIsShown) {
  press(button::choose_cores);
  press(button::top_of_pair);
  click(300, 340);  // the third name
  press(button::chooser_exit);
  look([this] {
    EXPECT_EQ(w->tr1, 3);
    EXPECT_EQ(w->tr2, 2);
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_TRUE(reads("OAK3"));
  });
  run();
}

TEST_F(CrossMenu, ChoosingForgetsWhatWasNotSaved) {
  press(button::sample_minus_50);
  expect_on("1-20 28-34");
  press(button::choose_cores);
  press(button::chooser_exit);
  look([this] {
    EXPECT_EQ(w->fy(sample), 1900);
    EXPECT_EQ(on(button::crossdating), browsing);
  });
  run();
}

TEST_F(CrossMenu, OfTwoChronologiesNothingCanBeInsertedOrDeleted) {
  press(button::choose_cores);
  press(button::top_of_pair);
  press(button::bottom_of_pair);
  for (const int name : {6, 7}) click(300, 240 + 46 * (name - 1) + 20);
  press(button::chooser_do_it);
  look([this] {
    EXPECT_EQ(w->tr1, 6);
    EXPECT_EQ(w->tr2, 7);
    EXPECT_EQ(on(button::crossdating), "1-18 28-33");
  });
  run();
}

TEST_F(CrossMenu, CorrelateOpensTheCorrelationScreenWhoseExitLeadsBack) {
  press(button::correlate);
  look([this] { EXPECT_TRUE(reads("Start Year")); });
  press(button::correlation_exit);
  look([this] {
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_TRUE(reads("Exit Menu"));
  });
  run();
}

// The menu's own work goes on where the window is closed: whatever waits ends at once.
TEST_F(CrossMenu, ClosingTheWindowEndsTheProgramWhereverItWaits) {
  const ButtonNumber places[] = {button::insert_ring, button::display_width, button::choose_cores,
                                 button::correlate};
  for (const ButtonNumber n : places) {
    press(n);
    run();  // closed while a year is picked, a number typed, in the chooser, on the correlation screen
    set_up_graph(*w);
  }
}

// --- Carefully.

TEST_F(CrossMenu, CarefullyEscapeLeavesEveryPickAndNoEdit) {
  w->careful.set(Mend::escape, true);
  press(button::insert_ring);
  expect_on("25-26");
  key(Event::escape);
  look([this] {
    EXPECT_EQ(on(button::crossdating), browsing);
    EXPECT_EQ(w->yr(sample), 100);
  });
  key(Event::escape);  // nothing to leave
  expect_on(browsing);
  press(button::delete_ring);
  click_year(true, 1930);
  key(Event::escape);
  expect_on("23-24");  // the ring deleted is still to be answered for
  press(button::deletion_ok);
  look([this] { EXPECT_EQ(w->yr(sample), 99); });
  run();
}

TEST_F(CrossMenu, CarefullyGoesOnBehindItsLastPass) {
  w->careful.set(Mend::pass_limits, true);
  w->sl = 21;
  for (int pass = 0; pass < 20'005; ++pass) redraw();
  look([this] { EXPECT_EQ(w->passes_left, 0); });
  run();
}

TEST_F(CrossMenu, CarefullyAnEditOfTheLastCoreIsOfferedAndSaved) {
  w->careful.set(Mend::last_core, true);
  pair(5, 1);
  press(button::insert_ring);
  click_year(true, 1930);
  press(button::insertion_ok);
  look([this] {
    EXPECT_TRUE(w->tr1ok);
    EXPECT_EQ(on(button::crossdating), "1-20 28-34");
  });
  press(button::save_sample);
  look([this] { EXPECT_EQ(w->yr(5), 101); });
  run();
}

// The reference is the last entry of all: its copy has its own last value, and saving it brings that back.
TEST_F(CrossMenu, CarefullyTheLastEntryAsReferenceIsSavedWhole) {
  w->careful.set(Mend::reference_end, true);
  double last = 0;
  look([&] { last = w->ax(w->ad(7) + w->yr(7) - 1); });
  pair(1, 7);
  look([&] { EXPECT_EQ(w->ax(w->ad(reference) + w->yr(reference) - 1), last); });
  press(button::reference_plus_1);
  press(button::save_reference);
  look([&] { EXPECT_EQ(w->ax(w->ad(7) + w->yr(7) - 1), last); });
  run();
}

TEST_F(CrossMenu, CarefullyTheSkeletonTakesThePlaceOfTheCurves) {
  const auto curves = [this] {
    const auto& marks = plot.page().marks();
    return std::ranges::count_if(marks, [](const Mark& mark) {
      return mark.kind == Mark::Kind::line &&
             (mark.colour == colour::light_blue || mark.colour == colour::light_red);
    });
  };
  w->careful.set(Mend::skeleton, true);
  look([&] { EXPECT_EQ(curves(), 2); });
  press(button::line_plot);
  look([&] {
    EXPECT_EQ(curves(), 0);
    EXPECT_TRUE(reads("Bars: narrow rings"));
  });
  press(button::line_plot);
  look([&] { EXPECT_EQ(curves(), 2); });
  run();
}

}  // namespace
}  // namespace vorn
