#include "desk/page_words.h"

#include <gtest/gtest.h>

#include "desk/specimens_for_tests.h"

namespace vorn {
namespace {

TEST(PageWords, SayWhatIsWaitedForAndMarked) {
  PageCursor cursor;
  const Standing at_start = standing_at(Place::start);
  EXPECT_EQ(page_in_words(at_start, cursor), "Waits for a button");
  ASSERT_TRUE(cursor.go(PageCursor::Step::next, *at_start.situation));
  const auto click = cursor.click(*at_start.situation);
  ASSERT_TRUE(click);
  EXPECT_EQ(page_in_words(at_start, cursor),
            "Waits for a button; marked: " + at_start.situation->at(click->x, click->y)->label);
  EXPECT_EQ(page_in_words(Standing(), cursor), "");
}

TEST(PageWords, SayTheYearWhereOneIsPicked) {
  Situation now = situation_at(Place::pick_year);
  now.wait = Wait::year;
  now.inserts = true;
  PageCursor cursor;
  ASSERT_TRUE(cursor.go(PageCursor::Step::next, now));
  const auto click = cursor.click(now);
  ASSERT_TRUE(click);
  const auto year = 1700 + (click->x - 200) / 25;
  EXPECT_TRUE(page_in_words(standing_at(now), cursor).ends_with("marked: " + std::to_string(year)));
}

TEST(PageWords, TellTheJournalsTroubleOnce) {
  Standing standing = standing_at(Place::start);
  EXPECT_EQ(all_notices({"one"}, standing), (std::vector<std::string>{"one"}));
  standing.journal_trouble = "the disk is full";
  EXPECT_EQ(
      all_notices({"one"}, standing),
      (std::vector<std::string>{"one", "What is done here cannot be taken up later: the disk is full"}));
}

}  // namespace
}  // namespace vorn
