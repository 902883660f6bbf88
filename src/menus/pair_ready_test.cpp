#include "menus/pair_ready.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "chronology/index_pipeline.h"
#include "loading/chronology_summary.h"
#include "loading/startup.h"
#include "menus/start_menu.h"
#include "support/menu_bench.h"

namespace vorn {
namespace {

using Values = std::vector<double>;

// A chronology of three decades in the Tucson index layout.
std::string index_text(const std::string& name) {
  std::string text = name + " 1 Somewhere\n" + name + " 2 Nowhere\n" + name + " 3 Nobody\n";
  char field[40];
  for (int decade = 1900; decade < 1930; decade += 10) {
    std::snprintf(field, sizeof field, "%4d", decade);
    text += name + field;
    for (int k = 0; k < 10; ++k) {
      std::snprintf(field, sizeof field, "%4d%3d", 900 + 17 * k, 5);
      text += field;
    }
    text += "\n";
  }
  return text;
}

// Oaks, four cores of 1900 to 1959, and larches, two of 1880 to 1939: the whole program from its start menu.
class PairReady : public MenuBench {
 protected:
  PairReady() {
    std::string oaks;
    for (const int k : {1, 2, 3, 4}) oaks += raw_core_text("OAK" + std::to_string(k), 1900, 60, 7u * k);
    folder.write("oak.rwl", oaks);
    folder.write("larch.rwl",
                 raw_core_text("LARCH1", 1880, 60, 101) + raw_core_text("LARCH2", 1880, 60, 103));
    folder.write("Vorn.fil", "oak.rwl\nlarch.rwl\n");
  }
  void run() { EXPECT_FALSE(returns(start_menu)); }

  // Everything derived is what it is when it is computed from the widths once more. The sample's slot lies on
  // the last value of the last entry, which is passed over.
  void expect_up_to_date() {
    look([this] {
      EXPECT_FALSE(w->derived_stale);
      EXPECT_EQ(w->nd, w->nc + w->nfil);
      const Derived shown(*w);
      data_man2(*w);
      refresh_crns(*w);
      EXPECT_TRUE(Derived(*w) == shown);
    });
  }
  // Of core `i`, kept for a comparison.
  void keep_analysis(int i) {
    look([this, i] { kept_ = values(w->ax, i); });
  }
  void expect_other_analysis(int i) {
    look([this, i] { EXPECT_NE(values(w->ax, i), kept_); });
  }
  void crossdate_and_expect_up_to_date() {
    press(button::crossdate);
    expect_up_to_date();
  }
  void leave_chooser_and_expect_up_to_date() {
    press(button::chooser_exit);
    expect_up_to_date();
  }
  void choose_names(std::initializer_list<int> names) {
    for (const int name : names) click(300, 240 + 46 * (name - 1) + 20);
  }

  struct Derived {
    explicit Derived(const Workspace& w) {
      for (const int i : {1, 3, 4, 5}) lines.emplace_back(w.mtext(MessageNumber{i}).view());
      for (int p = 1; p < w.ad(w.nd) + w.yr(w.nd) - 1; ++p) analysis.push_back(w.ax(p));
      for (int k = 1; k <= w.cyr(w.cf); ++k) chronology.push_back(w.crn(k, w.cf));
      for (int i = 1; i <= w.nd; ++i) {
        for (const int number : {w.fy(i), w.ly(i), w.yr(i), w.ad(i)}) numbers.push_back(number);
      }
    }
    bool operator==(const Derived&) const = default;
    std::vector<std::string> lines;
    Values analysis, chronology;
    std::vector<int> numbers;
  };

 private:
  Values kept_;
};

// --- Every change that what is derived depends on.

TEST_F(PairReady, AfterASwitchWasTurned) {
  for (const ButtonNumber n : {button::spline_on, button::ar_on, button::log_on}) {
    keep_analysis(1);
    press(n);
    look([this] { EXPECT_TRUE(w->derived_stale); });
    crossdate_and_expect_up_to_date();
    expect_other_analysis(1);
    press(button::exit_crossdating);
  }
  run();
}

TEST_F(PairReady, AfterTheSplinesPeriodOrTheModelsOrderWasChanged) {
  keep_analysis(1);
  enter(button::spline_years, "10\r");
  crossdate_and_expect_up_to_date();
  expect_other_analysis(1);
  press(button::exit_crossdating);
  enter(button::ar_order, "2\r");
  look([this] { EXPECT_TRUE(w->derived_stale); });
  crossdate_and_expect_up_to_date();
  run();
}

TEST_F(PairReady, AfterAChangeWasSavedAndOtherCoresAreChosen) {
  press(button::crossdate);
  press(button::insert_ring);
  click(1960, 520);  // 1930
  press(button::insertion_ok);
  press(button::save_sample);
  look([this] {
    EXPECT_TRUE(w->derived_stale);
    EXPECT_EQ(w->cly(1), 1959);
  });
  press(button::choose_cores);
  leave_chooser_and_expect_up_to_date();
  look([this] {
    EXPECT_EQ(w->cly(1), 1960);
    EXPECT_EQ(w->ly(5), 1960);  // the chronology's entry
  });
  run();
}

TEST_F(PairReady, AfterAChangeWasSavedAndTheScreenIsOpenedAgain) {
  press(button::crossdate);
  press(button::sample_plus_50);
  press(button::save_sample);
  press(button::exit_crossdating);
  look([this] { EXPECT_EQ(w->ly(5), 1959); });
  crossdate_and_expect_up_to_date();
  look([this] { EXPECT_EQ(w->ly(5), 2009); });
  run();
}

// A chronology that was moved and saved is where its file has it once what is derived is made anew.
TEST_F(PairReady, ASavedShiftOfAChronologyDoesNotLast) {
  press(button::crossdate);
  press(button::choose_cores);
  press(button::bottom_of_pair);
  choose_names({6});
  press(button::chooser_do_it);
  press(button::reference_plus_50);
  press(button::save_reference);
  look([this] { EXPECT_EQ(w->fy(6), 1930); });
  press(button::choose_cores);
  leave_chooser_and_expect_up_to_date();
  look([this] { EXPECT_EQ(w->fy(6), 1880); });
  run();
}

TEST_F(PairReady, AfterAWidthWasTypedInTheEditor) {
  press(button::crossdate);
  press(button::choose_cores);
  press(button::edit_core);
  press(button::chooser_do_it);
  press(button::editor_column_1);
  click(500, 260);
  type("2500\r");
  press(button::editor_exit);
  look([this] { EXPECT_TRUE(w->derived_stale); });
  leave_chooser_and_expect_up_to_date();
  run();
}

TEST_F(PairReady, AfterARingWasInsertedOrDeletedInTheEditor) {
  for (const ButtonNumber n : {button::editor_insert, button::editor_delete}) {
    press(button::crossdate);
    press(button::choose_cores);
    press(button::edit_core);
    press(button::chooser_do_it);
    press(n);
    click(500, 400);
    look([this, n] { EXPECT_EQ(w->yr(1), n == button::editor_insert ? 61 : 60); });
    press(n);  // the mode is off again
    press(button::editor_exit);
    leave_chooser_and_expect_up_to_date();
    press(button::exit_crossdating);
  }
  run();
}

TEST_F(PairReady, AfterCoresWereDeleted) {
  press(button::crossdate);
  press(button::choose_cores);
  press(button::top_of_pair);
  press(button::bottom_of_pair);
  press(button::delete_core);
  choose_names({3});
  press(button::chooser_do_it);
  look([this] { EXPECT_EQ(w->nc, 3); });
  leave_chooser_and_expect_up_to_date();
  look([this] { EXPECT_EQ(std::string(w->mtext(MessageNumber{3}).trimmed()), "Number of cores      3"); });
  run();
}

TEST_F(PairReady, AfterAMeanTreeWasMade) {
  press(button::crossdate);
  press(button::choose_cores);
  press(button::mean_core);
  press(button::chooser_do_it);
  look([this] { EXPECT_EQ(w->nc, 5); });
  leave_chooser_and_expect_up_to_date();
  look([this] { EXPECT_EQ(w->nam(5).trimmed(), "OAK1M"); });
  run();
}

TEST_F(PairReady, AfterCoresWereMovedToAnotherFile) {
  press(button::crossdate);
  press(button::choose_cores);
  press(button::move_core);
  press(button::chooser_do_it);
  look([this] { EXPECT_EQ(w->nc, 2); });
  leave_chooser_and_expect_up_to_date();
  EXPECT_EQ(folder.read("larch.rwl").find("OAK1"), std::string::npos);
  run();
  EXPECT_NE(folder.read("larch.rwl").find("OAK1"), std::string::npos);
}

TEST_F(PairReady, AfterReadTrwTookTheStore) {
  std::string core;
  char line[40];
  for (int year = 1901; year <= 1950; ++year) {
    std::snprintf(line, sizeof line, "%14s%6d%7.3f\n", "", year, 1.0 + 0.01 * (year * 37 % 50));
    core += line;
  }
  folder.write("beam1.txt", core);
  folder.write("beam2.txt", core);
  folder.write("TRW.fil", "beams.rwl\nbeam1.txt\nbeam2.txt\n");
  press(button::read_two_column);
  look([this] {
    EXPECT_TRUE(w->derived_stale);
    EXPECT_EQ(w->nc, 2);
    EXPECT_EQ(w->nd, 6);  // until the chronologies are set behind the two
  });
  crossdate_and_expect_up_to_date();
  look([this] {
    EXPECT_EQ(w->nd, 4);
    EXPECT_EQ(w->nam(1).trimmed(), "beam1");
    EXPECT_EQ(w->cfy(1), 1901);
  });
  run();
}

// --- Where nothing was changed nothing is done.

TEST_F(PairReady, WhereNothingWasChangedNothingIsComputed) {
  look([this] {
    w->ax(w->ad(2) + 5) = 123;  // would not survive a computation
    w->crn(3, 1) = 456;
    w->ax(w->ad(5) + 7) = 789;
    w->mtext(MessageNumber{4}) = "as it was";
  });
  const auto expect_untouched = [this] {
    look([this] {
      EXPECT_EQ(w->ax(w->ad(2) + 5), 123);
      EXPECT_EQ(w->crn(3, 1), 456);
      EXPECT_EQ(w->ax(w->ad(5) + 7), 789);
      EXPECT_EQ(w->mtext(MessageNumber{4}).trimmed(), "as it was");
    });
  };
  enter(button::segment_length, "30\r");
  press(button::crossdate);
  expect_untouched();
  press(button::sample_minus_50);  // moved, not saved
  press(button::choose_cores);
  press(button::chooser_exit);
  expect_untouched();
  run();
}

TEST_F(PairReady, TheReportsIndicesAloneDoNotMakeTheEntriesFresh) {
  press(button::spline_on);
  press(button::stats_report);
  look([this] { EXPECT_TRUE(w->derived_stale); });
  crossdate_and_expect_up_to_date();
  run();
}

TEST_F(PairReady, TheSelectionStaysAsItIsWhenWhatIsDerivedIsMadeAnew) {
  init_start(*w);
  w->chc(1) = 4;
  w->chc(2) = 3;
  w->chs = 2;
  w->derived_stale = true;
  w->crn(3, 1) = 456;
  refresh_derived(*w);
  EXPECT_NE(w->crn(3, 1), 456);
  EXPECT_EQ(w->chc(1), 4);
  EXPECT_EQ(w->chc(2), 3);
  EXPECT_EQ(w->chs, 2);
}

// --- The current file is an index file: the cores in the store are computed, its column is left alone.

TEST_F(PairReady, AnIndexFilesColumnIsLeftAlone) {
  folder.write("reg.crn", index_text("REGION"));
  folder.write("Vorn.fil", "oak.rwl\nreg.crn\n");
  Values column, computed;
  press(button::current_chronology);
  click(300, 300);  // the second name; it is not shown, but can be picked
  keep_analysis(1);
  look([&] {
    EXPECT_EQ(w->cf, 2);
    EXPECT_EQ(w->nc, 4);  // the oaks
    for (int k = 1; k <= w->cyr(2); ++k) column.push_back(w->crn(k, 2));
  });
  press(button::spline_on);
  press(button::crossdate);
  look([&] {
    EXPECT_FALSE(w->derived_stale);
    for (int k = 1; k <= w->cyr(2); ++k) EXPECT_EQ(w->crn(k, 2), column.at(k - 1)) << k;
    EXPECT_EQ(w->cyr(2), 30);
    for (int i = 1; i <= 4; ++i) {
      const Values now = values(w->ax, i);
      data_man(*w, *w, *w, i);
      EXPECT_EQ(values(w->ax, i), now) << i;
    }
  });
  expect_other_analysis(1);
  run();
}

// --- Fewer than two entries.

class PairNotReady : public PairReady {
 protected:
  PairNotReady() {
    folder.write("one.rwl", raw_core_text("ONE1", 1900, 60, 3) + raw_core_text("ONE2", 1900, 60, 5));
    folder.write("Vorn.fil", "one.rwl\n");
  }
  void delete_both_cores() {
    press(button::delete_core);  // the pair is marked
    press(button::chooser_do_it);
    look([this] { EXPECT_EQ(w->nc, 0); });
  }
  void expect_message(const std::string& told_before = "") {
    look([this, told_before] {
      EXPECT_TRUE(reads("Need more than one core - hit key to continue"));
      EXPECT_EQ(told(), told_before + "Need more than one core\n");
    });
    key(' ');
  }
  void expect_start_menu() {
    look([this] { EXPECT_TRUE(reads("PARAMETER OPTIONS")); });
  }
};

TEST_F(PairNotReady, TheChooserLeadsBackToTheStartMenuAndCrossdateStaysThere) {
  press(button::crossdate);
  press(button::choose_cores);
  delete_both_cores();
  press(button::chooser_exit);
  expect_message();
  expect_start_menu();
  press(button::crossdate);
  expect_message();
  expect_start_menu();
  run();
}

TEST_F(PairNotReady, FromTheCorrelationScreenItLeadsBackToTheStartMenuToo) {
  press(button::crossdate);
  press(button::correlate);
  press(button::correlation_choose);
  delete_both_cores();
  press(button::chooser_exit);
  expect_message();
  expect_start_menu();
  run();
}

TEST_F(PairNotReady, AListOfOneChronologyHasNoPair) {
  folder.write("reg.crn", index_text("REGION"));
  folder.write("Vorn.fil", "reg.crn\n");
  press(button::crossdate);
  expect_message();
  expect_start_menu();
  run();
}

TEST_F(PairNotReady, AListOfNoFileHasNoPair) {
  folder.write("Vorn.fil", "nothere.rwl\n");
  press(button::crossdate);
  expect_message("nothere.rwl: File does not exist\n");
  run();
}

// The test comes after the refreshing: two cores read anew are a pair.
TEST_F(PairNotReady, WhatWasReadSinceIsCounted) {
  std::string core;
  char line[40];
  for (int year = 1901; year <= 1950; ++year) {
    std::snprintf(line, sizeof line, "%14s%6d%7.3f\n", "", year, 1.0 + 0.01 * (year * 37 % 50));
    core += line;
  }
  folder.write("beam.txt", core);
  folder.write("TRW.fil", "beams.rwl\nbeam.txt\n");
  press(button::crossdate);
  press(button::choose_cores);
  delete_both_cores();
  press(button::chooser_exit);
  expect_message();
  press(button::read_two_column);
  look([this] { EXPECT_EQ(w->nd, 1); });
  press(button::crossdate);
  look([this] {
    EXPECT_EQ(w->nd, 2);
    EXPECT_TRUE(reads("Exit Menu"));
  });
  run();
}

TEST_F(PairReady, CarefullyASavedShiftOfAChronologyLasts) {
  w->careful.set(Mend::shift_lasts, true);
  press(button::crossdate);
  press(button::choose_cores);
  press(button::bottom_of_pair);
  choose_names({6});
  press(button::chooser_do_it);
  press(button::reference_plus_50);
  press(button::save_reference);
  press(button::choose_cores);
  leave_chooser_and_expect_up_to_date();
  look([this] { EXPECT_EQ(w->fy(6), 1930); });
  run();
}

}  // namespace
}  // namespace vorn
