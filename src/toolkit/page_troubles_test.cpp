#include "toolkit/page_troubles.h"

#include <gtest/gtest.h>

#include "support/desk.h"
#include "toolkit/messages.h"

namespace vorn {
namespace {

class PageTroublesTest : public ::testing::Test {
 protected:
  Desk desk_;
  PageTroubles troubles_{desk_.w};
};

TEST_F(PageTroublesTest, AFailedOperationIsAMessageAndItsStatusStays) {
  desk_.screen.key(' ');
  Trouble trouble{"Read2 ", "site.fh   ", status::not_a_number};
  trouble.line = 3;  // no message shows it
  trouble.column = 7;
  troubles_.tell(trouble);
  EXPECT_EQ(desk_.log.str(), "Read2 site.fh fail err =  5010\n");
  EXPECT_EQ(marks_of(desk_.screen.shown.at(0)), "text 15 25 310 1560 \"Read2 site.fh fail err =  5010\"\n");
  EXPECT_EQ(desk_.w.ios, status::not_a_number);
  EXPECT_EQ(desk_.screen.events_left(), 0u);
}

TEST_F(PageTroublesTest, PlainWordsAreShownAsTheyAre) {
  desk_.screen.key(' ');
  Trouble trouble;
  trouble.words = "gone.fh - Does not exist";
  troubles_.tell(trouble);
  EXPECT_EQ(marks_of(desk_.screen.shown.at(0)),
            "text 15 25 310 1560 \"gone.fh - Does not exist - hit key to continue\"\n");
  EXPECT_EQ(desk_.w.ios, status::ok);
}

TEST_F(PageTroublesTest, ANoticeWaitsForNobodyAndLeavesThePageAlone) {
  notice(desk_.w, "site.fh: series behind the 5,000th were not read");
  EXPECT_EQ(desk_.log.str(), "site.fh: series behind the 5,000th were not read\n");
  EXPECT_EQ(desk_.marks(), "");
  EXPECT_TRUE(desk_.screen.shown.empty());
}

}  // namespace
}  // namespace vorn
