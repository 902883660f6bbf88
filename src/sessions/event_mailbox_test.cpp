#include "sessions/event_mailbox.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace vorn {
namespace {

struct Mailbox : testing::Test {
  int pages_came = 0;
  EventMailbox mailbox{[this] { ++pages_came; }};
  Page page;
  static Event click(int x) { return {x, 0, Event::click}; }
  static Event key(int code) { return {0, 0, code}; }
};

TEST_F(Mailbox, ThePageShownLastIsTheOneToPaint) {
  EXPECT_EQ(mailbox.page().number, 0u);
  mailbox.show(page);
  page.add({.kind = Mark::Kind::line, .colour = colour::light_blue, .points = {{0, 0}, {1, 1}}});
  mailbox.show(page);
  EXPECT_EQ(mailbox.page().number, 2u);
  EXPECT_EQ(mailbox.page().page->marks().size(), 1u);
  EXPECT_EQ(pages_came, 2);
  page.clear();  // the window keeps what was shown
  EXPECT_EQ(mailbox.page().page->marks().size(), 1u);
}

TEST_F(Mailbox, EventsArriveInOrder) {
  mailbox.show(page);
  mailbox.put_key(key('1'), 1);
  mailbox.put_click(click(7), 1);
  EXPECT_EQ(mailbox.next_event().code, '1');
  EXPECT_EQ(mailbox.next_event().x, 7);
}

TEST_F(Mailbox, AClickOnAPageNoLongerShownIsDroppedAndKeysAreKept) {
  mailbox.show(page);
  mailbox.put_click(click(1), 1);
  mailbox.put_key(key('a'), 1);
  mailbox.show(page);
  mailbox.put_click(click(2), 1);  // the window had not painted the new page yet
  mailbox.put_click(click(3), 2);
  EXPECT_EQ(mailbox.next_event().code, 'a');
  EXPECT_EQ(mailbox.next_event().x, 3);
}

TEST_F(Mailbox, WhatWasTypedBeforeAMessageWasSeenDoesNotDismissIt) {
  mailbox.show(page);
  mailbox.put_key(key('a'), 1);
  mailbox.show(page);
  mailbox.forget_pending();
  mailbox.put_key(key('b'), 1);  // typed while the old page was still on the screen
  mailbox.put_key(key('c'), 2);
  EXPECT_EQ(mailbox.next_event().code, 'c');
}

TEST_F(Mailbox, WhatIsForgottenStaysSoThoughThePageWasSeen) {
  mailbox.show(page);
  mailbox.put_key(key('a'), 1);
  mailbox.forget_pending();
  mailbox.put_key(key('b'), 1);
  EXPECT_EQ(mailbox.next_event().code, 'b');
}

TEST_F(Mailbox, ClosingEndsEveryWaitAtOnce) {
  mailbox.show(page);
  mailbox.put_key(key('a'), 1);
  mailbox.close();
  for (int i = 0; i < 2; ++i) {
    try {
      mailbox.next_event();
      FAIL() << "went on after the window was closed";
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(end.reason(), EndReason::closed);
    }
  }
}

TEST_F(Mailbox, AWaitingThreadIsWoken) {
  mailbox.show(page);
  std::thread user([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    mailbox.put_key(key('x'), 1);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    mailbox.close();
  });
  EXPECT_EQ(mailbox.next_event().code, 'x');
  EXPECT_THROW(mailbox.next_event(), ProgramEnd);
  user.join();
}

// The program at work; the test moves the clock.
struct MailboxDuringWork : Mailbox {
  using Milliseconds = std::chrono::milliseconds;
  EventMailbox::Clock::time_point now{std::chrono::hours(1)};
  int progress_came = 0;
  EventMailbox working{[] {}, [this] { ++progress_came; }, [this] { return now; }};

  void wait_for_a_key() {
    working.put_key(key('k'), 0);
    working.next_event();
  }
};

TEST_F(MailboxDuringWork, NothingIsSaidOfShortWork) {
  now += Milliseconds(299);
  working.progress("Indices", 0.5);
  EXPECT_EQ(working.progress(), "");
  EXPECT_EQ(progress_came, 0);
}

TEST_F(MailboxDuringWork, WhatRunsIsSaidFromThreeTenthsOfASecondOn) {
  now += Milliseconds(300);
  working.progress("Stats.prn", 0.4599);
  EXPECT_EQ(working.progress(), "Stats.prn 45 %");
  EXPECT_EQ(progress_came, 1);
}

TEST_F(MailboxDuringWork, TheTimeCountsFromTheUsersLastAction) {
  now += Milliseconds(1000);
  wait_for_a_key();
  now += Milliseconds(299);
  working.progress("Indices", 0.5);
  EXPECT_EQ(working.progress(), "");
  now += Milliseconds(1);
  working.progress("Indices", 0.6);
  EXPECT_EQ(working.progress(), "Indices 60 %");
}

TEST_F(MailboxDuringWork, TheWindowIsNotToldOftenerThanItCanShow) {
  now += Milliseconds(300);
  for (int k = 0; k < 1000; ++k) working.progress("RBar", k / 1000.0);
  EXPECT_EQ(progress_came, 1);
  EXPECT_EQ(working.progress(), "RBar 0 %");
  now += Milliseconds(50);
  working.progress("RBar", 0.999);
  EXPECT_EQ(working.progress(), "RBar 99 %");
  now += Milliseconds(50);
  working.progress("RBar", 0.999);  // nothing new
  EXPECT_EQ(progress_came, 2);
}

TEST_F(MailboxDuringWork, NothingIsSaidAnyLongerWhenTheProgramWaits) {
  now += Milliseconds(300);
  working.progress("Stats.prn", 0.5);
  wait_for_a_key();
  EXPECT_EQ(working.progress(), "");
  EXPECT_EQ(progress_came, 2);
}

TEST(EventMailbox, KeepsEveryNoticeAndTellsTheWindow) {
  int news = 0;
  EventMailbox mailbox([] {}, [&news] { ++news; });
  EXPECT_TRUE(mailbox.notices().empty());
  mailbox.notice("gone.rwl: File does not exist");
  mailbox.notice("gone.rwl: File does not exist");
  EXPECT_EQ(mailbox.notices(), std::vector<std::string>(2, "gone.rwl: File does not exist"));
  EXPECT_EQ(news, 2);
}

}  // namespace
}  // namespace vorn
