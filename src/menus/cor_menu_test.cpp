#include "menus/cor_menu.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "editing/working_pair.h"
#include "loading/startup.h"
#include "support/menu_bench.h"

namespace vorn {
namespace {

// Oaks, four cores of 1900 to 1999, and larches, two of 1880 to 1979. The pair is OAK1 and the larches'
// chronology; entries 7 and 8 are the slots.
class CorMenu : public MenuBench {
 protected:
  CorMenu() {
    std::string oaks;
    for (const int k : {1, 2, 3, 4}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 100, 7u * k);
    folder.write("oak.rwl", oaks);
    folder.write("larch.rwl",
                 raw_core_text("LARCH1", 1880, 100, 101) + raw_core_text("LARCH2", 1880, 100, 103));
    folder.write("Vorn.fil", "oak.rwl\nlarch.rwl\n");
    init_start(*w);
    w->tr1 = 1;
    w->tr2 = 6;
    set_chs(*w);
  }
  void run() { EXPECT_FALSE(returns(cor_menu)); }
  void redraw() { click(100, 2000); }
  bool shows_table() const { return reads(" +3"); }  // of the lags over its columns
  // `keys` typed into button n give the setting and the button's label so.
  void expect_entry(ButtonNumber n, const std::string& keys, const std::int32_t& setting, int value,
                    const std::string& text) {
    enter(n, keys);
    look([this, n, keys, &setting, value, text] {
      EXPECT_EQ(setting, value) << keys;
      EXPECT_EQ(label(n), text) << keys;
      EXPECT_TRUE(reads(text)) << keys;
    });
  }
  void expect_start_year(const std::string& keys, const std::string& text) {
    enter(button::correlation_start, keys);
    look([this, keys, text] {
      EXPECT_EQ(label(button::correlation_start), text) << keys;
      EXPECT_EQ(w->cyrs(1, 1), std::stoi(text)) << keys;
    });
  }
};

TEST_F(CorMenu, OpensWithTheTableOfLagsFromTheLaterFirstYearOn) {
  look([this] {
    EXPECT_EQ(on(button::correlation), "46-52");
    EXPECT_TRUE(w->b(button::correlation_table).lit);
    EXPECT_TRUE(w->b(button::best_fit).lit);  // both at first
    EXPECT_TRUE(shows_table());
    EXPECT_TRUE(reads(" 1900 1949"));
    EXPECT_EQ(label(button::correlation_segment), "  50");
    EXPECT_EQ(label(button::correlation_overlap), "  25");
    EXPECT_EQ(label(button::correlation_start), "  1900");
    for (const char* text : {"Segment", "Overlap", "Start Year", "  Exit", "Best Fit", " Choose", "OAK1"}) {
      EXPECT_TRUE(reads(text)) << text;
    }
  });
  run();
}

TEST_F(CorMenu, ExitReturnsToTheCrossDatingMenu) {
  press(button::correlation_exit);
  EXPECT_TRUE(returns([](Workspace& desk) { EXPECT_TRUE(cor_menu(desk)); }));
  EXPECT_EQ(screen.waits, 1);
}

TEST_F(CorMenu, EndsAfterAThousandPasses) {
  for (int pass = 0; pass < 1'001; ++pass) redraw();
  EXPECT_TRUE(returns([](Workspace& desk) { EXPECT_TRUE(cor_menu(desk)); }));
  EXPECT_EQ(screen.waits, 1'000);
}

TEST_F(CorMenu, BestFitAndCorrelateTakeTurns) {
  press(button::best_fit);
  look([this] {
    EXPECT_FALSE(w->b(button::correlation_table).lit);
    EXPECT_TRUE(w->b(button::best_fit).lit);
    EXPECT_FALSE(shows_table());
    EXPECT_TRUE(reads(" 1949 1998"));  // the second stretch shares a year with the first
  });
  redraw();
  look([this] { EXPECT_FALSE(shows_table()); });
  press(button::correlation_table);
  look([this] {
    EXPECT_TRUE(w->b(button::correlation_table).lit);
    EXPECT_FALSE(w->b(button::best_fit).lit);
    EXPECT_TRUE(shows_table());
  });
  run();
}

TEST_F(CorMenu, TheViewLastsUntilTheScreenIsOpenedAgain) {
  press(button::best_fit);
  press(button::correlation_exit);
  EXPECT_TRUE(returns(cor_menu));
  look([this] { EXPECT_FALSE(shows_table()); });
  run();
}

TEST_F(CorMenu, SegmentsOfOneYearToTheSamplesLengthAreAccepted) {
  const ButtonNumber n = button::correlation_segment;
  expect_entry(n, "0\r", w->seg, 50, "  50");
  expect_entry(n, "101\r", w->seg, 50, "  50");
  expect_entry(n, "-9\r", w->seg, 50, "  50");
  expect_entry(n, "100\r", w->seg, 100, " 100");
  expect_entry(n, "1\r", w->seg, 1, "   1");
  run();
}

TEST_F(CorMenu, OverlapsOfOneYearToTheSamplesLengthAreAccepted) {
  const ButtonNumber n = button::correlation_overlap;
  expect_entry(n, "0\r", w->olap, 25, "  25");
  expect_entry(n, "101\r", w->olap, 25, "  25");
  expect_entry(n, "1\r", w->olap, 1, "   1");
  expect_entry(n, "100\r", w->olap, 100, " 100");
  run();
}

// As it is on the start menu; not here.
TEST_F(CorMenu, TheOverlapIsNotCheckedAgainstTheSegment) {
  expect_entry(button::correlation_overlap, "50\r", w->olap, 50, "  50");
  look([this] { EXPECT_EQ(w->cyrs(1, 1), -9999); });  // a step of 0: an empty table
  expect_entry(button::correlation_overlap, "60\r", w->olap, 60, "  60");
  look([this] {  // a step of -10: backwards, 34 segments
    EXPECT_EQ(w->cyrs(1, 1), 1900);
    EXPECT_EQ(w->cyrs(1, 34), 1570);
  });
  run();
}

TEST_F(CorMenu, StartYearsWithinTheSampleAreAccepted) {
  expect_start_year("1899\r", "  1900");
  expect_start_year("2000\r", "  1900");
  expect_start_year("1920\r", "  1920");
  expect_start_year("0\r", "  1920");
  enter(button::correlation_start, "1999\r");
  look([this] {
    EXPECT_EQ(label(button::correlation_start), "  1999");
    EXPECT_EQ(w->cyrs(1, 1), -9999);  // no whole segment is left
  });
  expect_start_year("1900\r", "  1900");
  run();
}

TEST_F(CorMenu, AnAbandonedEntryChangesNothing) {
  expect_entry(button::correlation_segment, "40 ", w->seg, 50, "  50");
  expect_entry(button::correlation_segment, "123456", w->seg, 50, "  50");
  expect_entry(button::correlation_overlap, "20x", w->olap, 25, "  25");
  expect_start_year("1930 ", "  1900");
  expect_start_year("1920\r", "  1920");
  expect_start_year("1930 ", "  1920");
  run();
}

TEST_F(CorMenu, TheStartYearIsForgottenWhenTheScreenIsLeft) {
  expect_start_year("1920\r", "  1920");
  press(button::correlation_exit);
  EXPECT_TRUE(returns(cor_menu));
  look([this] { EXPECT_EQ(label(button::correlation_start), "  1900"); });
  run();
}

TEST_F(CorMenu, AClickBesideEveryButtonRedrawsTheSame) {
  Page before;
  look([&] { before = plot.page(); });
  redraw();
  look([&] { EXPECT_EQ(plot.page().marks(), before.marks()); });
  run();
}

TEST_F(CorMenu, AfterChoosingTheStartYearIsThatOfTheNewPair) {
  expect_start_year("1920\r", "  1920");
  press(button::correlation_choose);
  press(button::top_of_pair);
  click(300, 490);  // the sixth name: the larches' chronology, as it is the reference already
  press(button::chooser_exit);
  // That empties its place, and the pair of two empty places is the first two entries.
  look([this] {
    EXPECT_EQ(w->tr1, 1);
    EXPECT_EQ(w->tr2, 2);
    EXPECT_EQ(label(button::correlation_start), "  1900");
  });
  press(button::correlation_choose);
  press(button::top_of_pair);
  press(button::bottom_of_pair);
  click(300, 490);
  click(300, 260);
  press(button::chooser_do_it);
  look([this] {
    EXPECT_EQ(w->tr1, 6);
    EXPECT_EQ(w->tr2, 1);
    EXPECT_EQ(label(button::correlation_start), "  1900");
    EXPECT_EQ(w->fy(7), 1880);
  });
  // The sample now begins in 1880: an earlier start is accepted, and the table begins with the reference.
  enter(button::correlation_start, "1885\r");
  look([this] {
    EXPECT_EQ(label(button::correlation_start), "  1885");
    EXPECT_EQ(w->cyrs(1, 1), 1900);
  });
  run();
}

TEST_F(CorMenu, FewerThanTwoEntriesLeadOutOfTheScreen) {
  look([this] {
    w->nfil = 1;
    w->nc = 0;
    w->nd = 1;
  });
  press(button::correlation_choose);
  press(button::chooser_exit);
  key(' ');
  EXPECT_TRUE(returns([](Workspace& desk) { EXPECT_FALSE(cor_menu(desk)); }));
  EXPECT_EQ(told(), "Need more than one core\n");
}

TEST_F(CorMenu, ASampleShorterThanASegmentCanBeTriedWithShorterOnes) {
  w->yr(7) = 40;
  w->ly(7) = 1939;
  look([this] { EXPECT_TRUE(shows_table()); });
  expect_entry(button::correlation_segment, "41\r", w->seg, 50, "  50");
  expect_entry(button::correlation_segment, "40\r", w->seg, 40, "  40");
  look([this] { EXPECT_TRUE(reads(" 1900 1939")); });
  run();
}

TEST_F(CorMenu, CarefullyGoesOnBehindItsLastPass) {
  w->careful.set(Mend::pass_limits, true);
  for (int pass = 0; pass < 1'005; ++pass) redraw();
  look([this] { EXPECT_EQ(w->passes_left, 0); });
  run();
}

// Switched off again it ends as many clicks later as were left.
TEST_F(CorMenu, PassesThatAreNotCountedAreNotUsedUp) {
  for (int pass = 0; pass < 10; ++pass) redraw();
  look([this] { w->careful.set(Mend::pass_limits, true); });
  for (int pass = 0; pass < 100; ++pass) redraw();
  look([this] { w->careful.set(Mend::pass_limits, false); });
  redraw();
  look([this] { EXPECT_EQ(w->passes_left, 1'000 - 11); });
  run();
}

}  // namespace
}  // namespace vorn
