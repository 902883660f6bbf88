// The strip with the program's notices, tried in the window.
#include "platform/qt/notice_strip.h"

#include <gtest/gtest.h>

#include <QScrollBar>
#include <QTest>

#include "platform/qt/page_painter.h"
#include "platform/qt/page_window.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/colour.h"
#include "plot/plot.h"

namespace vorn {
namespace {

struct Notices : testing::Test {
  QApplication& application = application_for_tests();
  EventMailbox mailbox{[] {}};
  PageWindow window{mailbox, "."};
  Plot plot{mailbox};
  NoticeStrip* strip = window.findChild<NoticeStrip*>();
  QPlainTextEdit* lines = strip->findChild<QPlainTextEdit*>();

  Notices() {
    // A page with red corners.
    plot.setclr(colour::light_red);
    for (const int x : {0, Page::width - 100}) {
      for (const int y : {0, Page::height - 100}) plot.rectangle(x, y, x + 100, y + 100);
    }
    plot.show();
    window.resize(990, 700);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }
  void tell(const char* text) {
    mailbox.notice(text);
    window.show_notices();
  }
  bool is_red(int x, int y) {
    return window.grab().toImage().pixelColor(x, y) == area_shade(colour::light_red);
  }
  // The codes of what reached the program.
  std::vector<int> arrived() {
    constexpr int end = 999;
    mailbox.put_key({0, 0, end}, mailbox.page().number);
    std::vector<int> codes;
    for (int code = 0; (code = mailbox.next_event().code) != end;) codes.push_back(code);
    return codes;
  }
};

using Codes = std::vector<int>;

TEST_F(Notices, WithoutAnyThereIsNoStripAndF6DoesNothing) {
  EXPECT_FALSE(strip->isVisible());
  QTest::keyClick(&window, Qt::Key_F6);
  EXPECT_FALSE(strip->isVisible());
  EXPECT_TRUE(is_red(10, 10) && is_red(980, 690));
}

TEST_F(Notices, StandBelowThePageALineEachAsPlainText) {
  tell("gone.rwl: File does not exist");
  tell("<b>no</b>tes\x1b.txt: Format not recognised");
  EXPECT_TRUE(strip->isVisible());
  EXPECT_EQ(lines->toPlainText(), "gone.rwl: File does not exist\n<b>no</b>tes.txt: Format not recognised");
  EXPECT_EQ(lines->accessibleName(), "Notices");
  EXPECT_EQ(strip->geometry().bottom(), window.rect().bottom());
  EXPECT_EQ(lines->verticalScrollBar()->maximum(), 0);  // nothing is hidden
}

TEST_F(Notices, LeaveThePageWholeAndItsProportionsAsTheyAre) {
  tell("gone.rwl: File does not exist");
  const int high = strip->y();
  const int across = high * Page::width / Page::height, left = (990 - across) / 2;
  for (const int x : {left + 5, left + across - 5}) {
    EXPECT_TRUE(is_red(x, 5)) << x;
    EXPECT_TRUE(is_red(x, high - 5)) << x;
  }
  // A click goes to where it is seen.
  window.repaint();
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(left + across / 2, high / 2));
  const Event click = mailbox.next_event();
  EXPECT_NEAR(click.x, Page::width / 2, 4);
  EXPECT_NEAR(click.y, Page::height / 2, 4);
}

TEST_F(Notices, StayUntilTheyAreClosedAndDoNotTakeTheKeyboard) {
  tell("gone.rwl: File does not exist");
  EXPECT_TRUE(window.hasFocus());
  QTest::keyClick(QApplication::focusWidget(), 'a');
  window.show_notices();
  EXPECT_TRUE(strip->isVisible());
  QTest::mouseClick(strip->findChild<QToolButton*>(), Qt::LeftButton);
  EXPECT_FALSE(strip->isVisible());
  window.show_notices();
  EXPECT_FALSE(strip->isVisible());
  EXPECT_TRUE(is_red(980, 690));
  EXPECT_EQ(arrived(), Codes{'a'});
}

TEST_F(Notices, AreReachedByTheKeyboard) {
  tell("gone.rwl: File does not exist");
  QTest::keyClick(&window, Qt::Key_F6);  // closes them
  EXPECT_FALSE(strip->isVisible());
  QTest::keyClick(&window, Qt::Key_F6);
  EXPECT_TRUE(lines->hasFocus());
  QTest::keyClick(lines, 'x');  // is not for the program
  QTest::keyClick(lines, Qt::Key_Tab);
  EXPECT_TRUE(strip->findChild<QToolButton*>()->hasFocus());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  EXPECT_FALSE(strip->isVisible());
  EXPECT_TRUE(window.hasFocus());
  EXPECT_EQ(arrived(), Codes{});
}

TEST_F(Notices, ClicksBesideTheTextDoNotReachThePage) {
  tell("gone.rwl: File does not exist");
  window.repaint();
  QTest::mouseClick(strip, Qt::LeftButton, {}, QPoint(strip->width() - 2, strip->height() - 1));
  EXPECT_EQ(arrived(), Codes{});
}

TEST_F(Notices, ManyAreScrolledAndNeverTakeMoreThanHalfOfTheWindow) {
  for (int i = 0; i < 100; ++i) tell("gone.rwl: File does not exist");
  EXPECT_LT(strip->height(), 200);
  window.resize(300, 100);
  EXPECT_LE(strip->height(), window.height() / 2);
}

}  // namespace
}  // namespace vorn
