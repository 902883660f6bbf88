#include "editing/working_pair.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "support/test_store.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Three trees of twelve years and the chronology of their file behind them.
struct WorkingPair : ::testing::Test {
  WorkingPair() {
    store.add_tree("ONE", 1900, noise(12, 1));
    store.add_tree("TWO", 1903, noise(12, 2));
    store.add_tree("THREE", 1905, noise(12, 3));
    w.nfil = 1;
    std::vector<double> values;
    for (int year = 1900; year <= 1916; ++year) {
      double sum = 0;
      int depth = 0;
      for (int i = 1; i <= 3; ++i) {
        if (year < w.fy(i) || year > w.ly(i)) continue;
        sum += w.ax(w.ad(i) + year - w.fy(i));
        ++depth;
      }
      w.num(year - 1899, 1) = depth;
      values.push_back(sum / depth);
    }
    w.cfy(1) = 1900;
    w.cyr(1) = 17;
    w.cly(1) = 1916;
    store.add_tree("CHRON", 1900, values);
    w.nc = 3;
  }

  double ax(int entry, int year) { return w.ax(w.ad(entry) + year - w.fy(entry)); }

  // Width, analysis value and presence of each ring of an entry.
  std::vector<std::tuple<double, double, bool>> rings(int entry) {
    std::vector<std::tuple<double, double, bool>> all;
    for (int p = w.ad(entry); p < w.ad(entry) + w.yr(entry); ++p) all.emplace_back(w.x(p), w.ax(p), w.xok(p));
    return all;
  }

  TestStore store;
  Workspace& w = store.w;
};

TEST_F(WorkingPair, AfterADeletionLeftNoPairTheFirstTwoEntriesAreTaken) {
  w.tr1 = w.tr2 = 0;
  set_chs(w);
  EXPECT_EQ(w.tr1, 1);
  EXPECT_EQ(w.tr2, 2);
  EXPECT_EQ(w.chc(1), 1);
  EXPECT_EQ(w.chc(2), 2);
  EXPECT_EQ(w.chs, 2);
}

TEST_F(WorkingPair, AnEntryBeyondTheLastBecomesTheSecondWhenTheOtherIsTheFirst) {
  w.tr1 = 9;
  w.tr2 = 1;
  set_chs(w);
  EXPECT_EQ(w.tr1, 2);
  EXPECT_EQ(w.tr2, 1);
}

TEST_F(WorkingPair, SampleSlotStartsOnTheLastValueOfTheLastEntry) {
  w.tr1 = 1;
  w.tr2 = 2;
  const double first_of_sample = ax(1, 1900);
  set_chs(w);
  EXPECT_EQ(w.ad(5), w.ad(4) + w.yr(4) - 1);
  EXPECT_EQ(w.ad(6), w.ad(5) + w.yr(5));
  EXPECT_EQ(ax(4, 1916), first_of_sample);  // overwritten, by design
  EXPECT_EQ(w.ad(7), w.ad(6) + w.yr(6));    // where an insertion into the reference ends
}

TEST_F(WorkingPair, LastEntryAsSampleIsCopiedWholeInSpiteOfTheOverlap) {
  w.tr1 = 4;
  w.tr2 = 1;
  std::vector<double> before;
  for (int year = 1900; year <= 1916; ++year) before.push_back(ax(4, year));
  w.cf = 2;  // not its own chronology, so nothing is left out
  set_chs(w);
  for (int year = 1900; year <= 1916; ++year) EXPECT_EQ(ax(5, year), before[year - 1900]) << year;
}

// By then the sample's first value lies there: meant so.
TEST_F(WorkingPair, LastEntryAsReferenceEndsOnTheSamplesFirstValue) {
  w.tr1 = 1;
  w.tr2 = 4;
  w.cf = 2;
  const double first_of_sample = ax(1, 1900), last_but_one = ax(4, 1915);
  set_chs(w);
  EXPECT_EQ(ax(6, 1916), first_of_sample);
  EXPECT_EQ(ax(6, 1915), last_but_one);
}

TEST_F(WorkingPair, CarefullyTheSlotsBeginBehindTheLastEntryWhichKeepsItsLastValue) {
  w.careful.set(Mend::reference_end, true);
  w.tr1 = 1;
  w.tr2 = 4;
  w.cf = 2;
  const double last = ax(4, 1916);
  set_chs(w);
  EXPECT_EQ(w.ad(5), w.ad(4) + w.yr(4));
  EXPECT_EQ(w.ad(6), w.ad(5) + w.yr(5));
  EXPECT_EQ(ax(4, 1916), last);
  EXPECT_EQ(ax(6, 1916), last);
}

// 1905 has three cores: (3 a - x) / 2 is the mean of the other two.
TEST_F(WorkingPair, CoreIsLeftOutOfItsOwnChronology) {
  const double expected = (ax(2, 1905) + ax(3, 1905)) / 2;
  w.tr1 = 1;
  w.tr2 = 4;
  set_chs(w);
  EXPECT_NEAR(ax(6, 1905), expected, 1e-12);
}

TEST_F(WorkingPair, TheSameWithSampleAndReferenceExchanged) {
  const double expected = (ax(2, 1905) + ax(3, 1905)) / 2;
  w.tr1 = 4;
  w.tr2 = 1;
  set_chs(w);
  EXPECT_NEAR(ax(5, 1905), expected, 1e-12);
}

// The years 1900 to 1902 have core ONE alone.
TEST_F(WorkingPair, YearsThatHadTheCoreAloneBecomeOneAndMissing) {
  w.tr1 = 1;
  w.tr2 = 4;
  set_chs(w);
  for (int year = 1900; year <= 1902; ++year) {
    EXPECT_EQ(ax(6, year), 1.0);
    EXPECT_FALSE(w.xok(w.ad(6) + year - 1900));
  }
  EXPECT_TRUE(w.xok(w.ad(6) + 3));
}

TEST_F(WorkingPair, YearsOfTheChronologyOutsideTheCoreStayAsTheyWere) {
  const double before = ax(4, 1914);
  w.tr1 = 1;  // ends 1911
  w.tr2 = 4;
  set_chs(w);
  EXPECT_EQ(ax(6, 1914), before);
}

TEST_F(WorkingPair, AMissingRingsValueIsTakenOutAllTheSame) {
  w.xok(w.ad(1) + 5) = false;  // 1905, but the depth still says 3
  const double chronology = ax(4, 1905), core = ax(1, 1905);
  w.tr1 = 1;
  w.tr2 = 4;
  set_chs(w);
  EXPECT_NEAR(ax(6, 1905), (3 * chronology - core) / 2, 1e-12);
}

TEST_F(WorkingPair, YearsOfACoreOutsideItsChronologyArePassedOver) {
  w.fy(1) = 1890;  // as after a shift that was saved: 1890 to 1901
  w.ly(1) = 1901;
  const double before = ax(4, 1903);
  w.tr1 = 1;
  w.tr2 = 4;
  set_chs(w);
  EXPECT_EQ(ax(6, 1903), before);
  EXPECT_EQ(w.ad(6), w.ad(5) + 12);
}

TEST_F(WorkingPair, AYearBehindTheChronologyDoesNotReachTheCoreInTheOtherSlot) {
  w.fy(1) = 1906;  // to 1917, a year more than the chronology
  w.ly(1) = 1917;
  const auto core = rings(1);
  w.tr1 = 4;
  w.tr2 = 1;
  set_chs(w);
  EXPECT_EQ(rings(6), core);
}

// A chronology lengthened by an insertion and saved has one year more than its file's column.
TEST_F(WorkingPair, AYearBehindTheLongestChronologyIsPassedOver) {
  w.nc = w.nd = 0;
  store.add_tree("LAST", 13'000, {3.0, 4.0});
  store.add_tree("OTHER", 13'000, noise(2, 4));
  const int own = w.nc + 1;
  put_entry(w, own, "OWN", 13'001 - max_years, std::vector<double>(max_years + 1, 2.0));
  put_entry(w, own + 1, "NEXT", 1900, {1.0});
  w.nd = own + 1;
  w.nfil = 2;
  w.num(max_years, 1) = 2;
  w.num(1, 2) = 2;  // what lies behind the column in store
  w.tr1 = 1;
  w.tr2 = own;
  set_chs(w);
  EXPECT_EQ(ax(w.nd + 2, 13'000), 1.0);  // 2 x 2 - 3
  EXPECT_EQ(ax(w.nd + 2, 13'001), 2.0);
}

// The second of two files is the current one; entry 4 is the chronology of the first.
TEST_F(WorkingPair, CoreWithAnotherCoreOrAnotherChronologyGivesPlainCopies) {
  put_entry(w, 5, "OWN", 1900, noise(17, 4));
  w.nd = 5;
  w.nfil = w.cf = 2;
  w.xok(w.ad(4) + 2) = false;
  for (const int other : {3, 4}) {
    w.tr1 = 1;
    w.tr2 = other;
    const auto core = rings(1), reference = rings(other);
    set_chs(w);
    EXPECT_EQ(rings(6), core) << other;
    EXPECT_EQ(rings(7), reference) << other;
    EXPECT_EQ(w.nam(6).trimmed(), "ONE");
    EXPECT_EQ(w.nam(7), w.nam(other));
    EXPECT_EQ(w.fy(7), w.fy(other));
    EXPECT_EQ(w.ly(7), w.ly(other));
  }
}

TEST_F(WorkingPair, YearsShownStayWhileTheyMeetThePair) {
  w.tr1 = 1;  // 1900 to 1911
  w.tr2 = 2;  // 1903 to 1914
  w.sl = 10;
  w.fs = 1898;  // two years before the first is still met
  w.ls = 1907;
  set_chs(w);
  EXPECT_EQ(w.fs, 1898);
  w.fs = 1906;  // 1914 + 2 - 10
  set_chs(w);
  EXPECT_EQ(w.fs, 1906);
}

TEST_F(WorkingPair, YearsShownOtherwiseEndOnTheEarlierLastYear) {
  w.tr1 = 1;
  w.tr2 = 2;
  w.sl = 10;
  w.fs = 1897;
  set_chs(w);
  EXPECT_EQ(w.fs, 1902);
  EXPECT_EQ(w.ls, 1911);
  w.fs = 1907;
  set_chs(w);
  EXPECT_EQ(w.ls, 1911);
}

TEST_F(WorkingPair, InsertAndDeleteAreOfferedWhenOneOfThePairIsACore) {
  w.tr1 = 4;
  w.tr2 = 3;
  set_chs(w);
  EXPECT_TRUE(w.b(button::insert_ring).on);
  EXPECT_TRUE(w.b(button::delete_ring).on);
  w.nc = 2;  // now the entries 3 and 4 are chronologies
  set_chs(w);
  EXPECT_FALSE(w.b(button::insert_ring).on);
  EXPECT_FALSE(w.b(button::delete_ring).on);
}

TEST_F(WorkingPair, SettingThePairForgetsUnsavedChanges) {
  w.tr1 = 1;
  w.tr2 = 2;
  w.tr1ok = w.tr2ok = true;
  set_chs(w);
  EXPECT_FALSE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
}

TEST_F(WorkingPair, SavingASlotShortenedByOneMovesEveryLaterEntryDownByOne) {
  w.tr1 = 1;
  w.tr2 = 2;
  set_chs(w);
  std::vector<int> starts;
  for (int i = 2; i <= 6; ++i) starts.push_back(w.ad(i));
  const double second_tree = ax(2, 1910), reference = ax(6, 1910);
  for (int p = w.ad(2); p < w.ad(5); ++p) w.tx(p) = p;
  const double second_index = w.tx(w.ad(2) + 3), third_index = w.tx(w.ad(3) + 3);
  w.tr1ok = true;
  w.yr(5) = 11;  // the last ring dropped
  w.ly(5) = 1910;
  save_tree(w, w, 1);
  EXPECT_FALSE(w.tr1ok);
  EXPECT_EQ(w.yr(1), 11);
  EXPECT_EQ(w.ly(1), 1910);
  for (int i = 2; i <= 6; ++i) EXPECT_EQ(w.ad(i), starts[i - 2] - 1) << i;
  EXPECT_EQ(ax(2, 1910), second_tree);
  EXPECT_EQ(ax(6, 1910), reference);
  EXPECT_EQ(w.tx(w.ad(2) + 3), second_index);
  EXPECT_EQ(w.tx(w.ad(3) + 3), third_index);
}

TEST_F(WorkingPair, SavingWritesTheSlotsValuesAndYearsButNotItsName) {
  w.tr1 = 1;
  w.tr2 = 2;
  set_chs(w);
  w.nam(5) = "OTHER";
  w.fy(5) += 7;
  w.ly(5) += 7;
  w.x(w.ad(5) + 4) = 3.5;
  w.ax(w.ad(5) + 4) = 4.5;
  w.tx(w.ad(5) + 4) = 5.5;
  w.xok(w.ad(5) + 4) = false;
  save_tree(w, w, 1);
  EXPECT_EQ(w.nam(1).trimmed(), "ONE");
  EXPECT_EQ(w.fy(1), 1907);
  EXPECT_EQ(w.ly(1), 1918);
  EXPECT_EQ(w.x(w.ad(1) + 4), 3.5);
  EXPECT_EQ(w.ax(w.ad(1) + 4), 4.5);
  EXPECT_EQ(w.tx(w.ad(1) + 4), 5.5);
  EXPECT_FALSE(w.xok(w.ad(1) + 4));
}

// Longer by one ring: every later entry moves up, and the last value of the last entry, which the sample's
// slot lies on, moves with it.
TEST_F(WorkingPair, SavingASlotMadeLongerMovesEveryLaterEntryUp) {
  w.tr1 = 1;
  w.tr2 = 2;
  set_chs(w);
  std::vector<int> starts;
  for (int i = 2; i <= 6; ++i) starts.push_back(w.ad(i));
  const double second_tree = ax(2, 1910), chronology = ax(4, 1910), reference = ax(6, 1910);
  w.yr(6) = 13;
  w.ly(6) = 1915;
  save_tree(w, w, 2);
  EXPECT_EQ(w.yr(2), 13);
  EXPECT_EQ(w.ad(2), starts[0]);
  for (int i = 3; i <= 6; ++i) EXPECT_EQ(w.ad(i), starts[i - 2] + 1) << i;
  EXPECT_EQ(ax(2, 1910), second_tree);
  EXPECT_EQ(ax(4, 1910), chronology);
  EXPECT_EQ(ax(6, 1910), reference);
}

TEST_F(WorkingPair, SavingTheReferenceTouchesItsOwnMark) {
  w.tr1 = 1;
  w.tr2 = 2;
  set_chs(w);
  w.tr1ok = w.tr2ok = true;
  w.x(w.ad(6)) = 9.5;
  save_tree(w, w, 2);
  EXPECT_TRUE(w.tr1ok);
  EXPECT_FALSE(w.tr2ok);
  EXPECT_EQ(w.x(w.ad(2)), 9.5);
}

}  // namespace
}  // namespace vorn
