#include "toolkit/lists.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "plot/plot.h"
#include "support/desk.h"

namespace vorn {
namespace {

class Lists : public ::testing::Test {
 protected:
  // Shows a list of n names "name 1", "name 2", ...
  void show(int ncol, int n) {
    names_.clear();
    ch_disp(w, ncol, n, [this](int i) -> std::string_view {
      VORN_ASSERT(i >= 1);
      last_asked_ = std::max(last_asked_, i);
      names_.push_back("name " + std::to_string(i));
      return names_.back();
    });
  }
  void choose(std::initializer_list<int> entries) {
    w.chs = 0;
    for (const int entry : entries) w.chc(++w.chs) = entry;
  }
  bool draws(const std::string& mark) const {
    return ("\n" + desk_.marks()).find("\n" + mark + "\n") != std::string::npos;
  }
  int count(Mark::Kind kind) const {
    const auto& marks = w.plot.page().marks();
    return static_cast<int>(
        std::count_if(marks.begin(), marks.end(), [kind](const Mark& mark) { return mark.kind == kind; }));
  }
  Desk desk_;
  Workspace& w = desk_.w;
  std::vector<std::string> names_;
  int last_asked_ = 0;
};

TEST_F(Lists, TwoNamesInThreeColumnsMarkByMark) {
  choose({2});
  show(3, 2);
  EXPECT_EQ(desk_.marks(),
            "fill 14 200 286 1033 286 1033 332 200 332\n"
            "line 2 200 240 1033 240\n"
            "line 2 200 286 1033 286\n"
            "line 2 200 332 1033 332\n"
            "line 2 200 240 200 332\n"
            "line 2 1033 240 1033 332\n"
            "text 15 25 205 252 \"name 1\"\n"
            "text 15 25 205 298 \"name 2\"\n");
}

TEST_F(Lists, ColumnsAreFilledFromTheTopThirtyNamesEach) {
  show(3, 32);
  EXPECT_TRUE(draws("text 15 25 205 1586 \"name 30\""));  // 252 + 29 * 46
  EXPECT_TRUE(draws("text 15 25 1038 252 \"name 31\""));
  EXPECT_TRUE(draws("line 2 200 1620 1033 1620"));  // 240 + 30 * 46
  EXPECT_TRUE(draws("line 2 1033 332 1866 332"));
  EXPECT_FALSE(draws("line 2 1033 378 1866 378"));
  EXPECT_EQ(count(Mark::Kind::line), (31 + 2) + (3 + 2));
}

TEST_F(Lists, BesideAFullColumnNothingIsDrawn) {
  show(3, 30);
  EXPECT_EQ(count(Mark::Kind::line), 31 + 2);
}

TEST_F(Lists, SevenColumnsAre357UnitsWide) {
  show(7, 211);
  EXPECT_TRUE(draws("text 15 25 2347 1586 \"name 210\""));  // 200 + 6 * 357 + 5
  EXPECT_EQ(count(Mark::Kind::text), 210);
}

TEST_F(Lists, MoreNamesThanPlacesShowsOnlyTheFirstAfterTheScrollOffset) {
  w.sccc = 5;
  show(3, 200);
  EXPECT_EQ(count(Mark::Kind::text), 90);
  EXPECT_EQ(names_.front(), "name 6");
  EXPECT_EQ(last_asked_, 95);
  EXPECT_TRUE(draws("text 15 25 205 252 \"name 6\""));
  EXPECT_TRUE(draws("text 15 25 1871 1586 \"name 95\""));
}

TEST_F(Lists, AListEndsAtItsLastName) {
  w.sccc = 180;
  show(7, 200);
  EXPECT_EQ(count(Mark::Kind::text), 20);
  EXPECT_EQ(last_asked_, 200);
  EXPECT_EQ(count(Mark::Kind::line), 21 + 2);
}

TEST_F(Lists, AnOffsetBehindTheLastNameShowsNone) {
  for (const int offset : {200, 201, 100'000, -3}) {
    w.sccc = offset;
    w.plot.erase();
    show(7, offset < 0 ? 0 : 200);
    EXPECT_EQ(count(Mark::Kind::text), 0) << offset;
  }
}

TEST_F(Lists, AnEmptyListIsOneLine) {
  show(3, 0);
  EXPECT_EQ(desk_.marks(),
            "line 2 200 240 1033 240\n"
            "line 2 200 240 200 240\n"
            "line 2 1033 240 1033 240\n");
}

TEST_F(Lists, AnAcceptedSelectionIsYellow) {
  choose({1, 3});
  show(3, 4);
  EXPECT_TRUE(draws("fill 14 200 240 1033 240 1033 286 200 286"));
  EXPECT_TRUE(draws("fill 14 200 332 1033 332 1033 378 200 378"));
}

TEST_F(Lists, OtherwiseTheLastOneChosenIsRedAndTheOthersCyan) {
  w.chok = false;
  choose({1, 3, 2});
  show(3, 4);
  EXPECT_TRUE(draws("fill 11 200 240 1033 240 1033 286 200 286"));
  EXPECT_TRUE(draws("fill 11 200 332 1033 332 1033 378 200 378"));
  EXPECT_TRUE(draws("fill 4 200 286 1033 286 1033 332 200 332"));
}

TEST_F(Lists, ChosenEntriesThatAreNotShownAreNotHighlighted) {
  w.sccc = 2;
  choose({2, 3, 95, 0, 5});
  show(3, 4);  // shown are 3 and 4
  EXPECT_EQ(count(Mark::Kind::fill), 1);
  EXPECT_TRUE(draws("fill 14 200 240 1033 240 1033 286 200 286"));
}

TEST_F(Lists, TablesOfNamesAreShownAsTheyAre) {
  w.nam(1) = "CORE1";
  w.cnam(1) = "a/long/file/name.rwl";
  ch_disp(w, 7, 1, w.nam);
  ch_disp(w, 3, 1, w.cnam);
  EXPECT_TRUE(draws("text 15 25 205 252 \"CORE1\""));
  EXPECT_TRUE(draws("text 15 25 205 252 \"a/long/file/name.rwl\""));
}

// The area is 2500 x 1400 units: a third is 833.33 across, a thirtieth 46.67 down.
TEST(ListEntry, IsTheThirdAcrossAndTheThirtiethDownThatWasClicked) {
  const Rectangle area = {200, 240, 2700, 1640};
  EXPECT_EQ(entry_at(area, 200, 240), 1);
  EXPECT_EQ(entry_at(area, 1033, 286), 1);
  EXPECT_EQ(entry_at(area, 1034, 287), 32);
  EXPECT_EQ(entry_at(area, 2699, 1639), 90);
}

TEST(ListEntry, OnTheEdgesIsTheNextColumnsFirstOne) {
  const Rectangle area = {200, 240, 2700, 1640};
  EXPECT_EQ(entry_at(area, 200, 1640), 31);
  EXPECT_EQ(entry_at(area, 2700, 240), 91);
}

}  // namespace
}  // namespace vorn
