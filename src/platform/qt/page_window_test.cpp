#include "platform/qt/page_window.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTest>
#include <deque>
#include <optional>

#include "platform/qt/page_painter.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/plot.h"

namespace vorn {
namespace {

// A window of half a pixel to a page unit that shows one page; the test is the user and the program in turn.
struct WindowOfPages : testing::Test {
  QApplication& application = application_for_tests();
  EventMailbox mailbox{[] {}};
  PageWindow window{mailbox, "."};
  Plot plot{mailbox};
  std::deque<Event> arrived;

  WindowOfPages() {
    window.resize(Page::width / 2, Page::height / 2);
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    show_page();
  }
  // Shows the page and waits until it is painted.
  void show_page() {
    plot.show();
    window.repaint();
  }
  // The next event that reached the program; nothing when there is none.
  std::optional<Event> next() {
    constexpr int end = 999;
    mailbox.put_key({0, 0, end}, mailbox.page().number);  // ends the wait
    for (Event event = mailbox.next_event(); event.code != end; event = mailbox.next_event()) {
      arrived.push_back(event);
    }
    if (arrived.empty()) return {};
    const Event event = arrived.front();
    arrived.pop_front();
    return event;
  }
  std::optional<int> next_code() {
    const auto event = next();
    return event ? std::optional(event->code) : std::nullopt;
  }
  void press(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(&window, &event);
  }
};

TEST_F(WindowOfPages, ALeftClickIsAClickAtItsPagePosition) {
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1150, 25));
  const auto event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->x, 2300);
  EXPECT_EQ(event->y, 50);
  EXPECT_EQ(event->code, Event::click);
}

TEST_F(WindowOfPages, ARightClickAsksForHelpAndOtherButtonsDoNothing) {
  QTest::mouseClick(&window, Qt::MiddleButton, {}, QPoint(10, 10));
  EXPECT_FALSE(next());
  QTest::mouseClick(&window, Qt::RightButton, {}, QPoint(10, 20));
  const auto event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->code, Event::help);
  EXPECT_EQ(event->y, 40);
}

TEST_F(WindowOfPages, F1AsksForHelpWhereTheMouseIs) {
  QTest::mouseMove(&window, QPoint(500, 300));
  QTest::keyClick(&window, Qt::Key_F1);
  const auto event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->code, Event::help);
  EXPECT_EQ(event->x, 1000);
  EXPECT_EQ(event->y, 600);
}

TEST_F(WindowOfPages, ADoubleClickIsTwoClicks) {
  // The second press comes as an event of its own kind.
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(10, 10));
  QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(10, 10), window.mapToGlobal(QPointF(10, 10)),
                     Qt::LeftButton, Qt::LeftButton, {});
  QApplication::sendEvent(&window, &second);
  EXPECT_EQ(next_code(), Event::click);
  EXPECT_EQ(next_code(), Event::click);
  EXPECT_FALSE(next());
}

TEST_F(WindowOfPages, TheKeysWithNamesHaveTheirCodes) {
  QTest::keyClick(&window, Qt::Key_Return);
  EXPECT_EQ(next_code(), 13);
  QTest::keyClick(&window, Qt::Key_Enter, Qt::KeypadModifier);
  EXPECT_EQ(next_code(), 13);
  QTest::keyClick(&window, Qt::Key_Backspace);
  EXPECT_EQ(next_code(), 8);
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_EQ(next_code(), 27);
}

TEST_F(WindowOfPages, EveryPrintableCharacterIsItsOwnCode) {
  for (int code = 32; code <= 126; ++code) {
    press(Qt::Key_unknown, {}, QString(QChar(code)));
    EXPECT_EQ(next_code(), code);
  }
}

TEST_F(WindowOfPages, NoKeyPosesAsAClickOrAHelpRequest) {
  press(Qt::Key_E, Qt::ControlModifier, "\x05");
  press(Qt::Key_F, Qt::ControlModifier, "\x06");
  EXPECT_FALSE(next());
}

TEST_F(WindowOfPages, OtherControlCodesAndCharactersOutsideAsciiAreDropped) {
  for (const int code : {0, 1, 7, 9, 10, 12, 26, 31, 127, 128, 0xE4, 0x20AC}) {
    press(Qt::Key_unknown, {}, QString(QChar(code)));
  }
  press(Qt::Key_Delete, {}, "\x7F");
  press(Qt::Key_Shift, Qt::ShiftModifier, "");
  press(Qt::Key_Left, {}, "");
  press(Qt::Key_unknown, {}, "ab");
  EXPECT_FALSE(next());
}

TEST_F(WindowOfPages, TabNeitherArrivesNorTakesTheFocus) {
  QTest::keyClick(&window, Qt::Key_Tab);
  QTest::keyClick(&window, Qt::Key_Backtab);
  EXPECT_FALSE(next());
  QTest::keyClick(&window, 'x');
  EXPECT_EQ(next_code(), 'x');
}

TEST_F(WindowOfPages, AClickOnAPageThatIsNoLongerShownIsDropped) {
  plot.show();  // not painted yet: the user still sees the page before
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1150, 25));
  QTest::mouseClick(&window, Qt::RightButton, {}, QPoint(1150, 25));
  QTest::keyClick(&window, '7');
  EXPECT_EQ(next_code(), '7');
  EXPECT_FALSE(next());
  window.repaint();
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1150, 25));
  EXPECT_EQ(next_code(), Event::click);
}

TEST_F(WindowOfPages, AMessageIsNotDismissedByKeysTypedBeforeItWasSeen) {
  QTest::keyClick(&window, 'a');
  plot.show();
  mailbox.forget_pending();
  QTest::keyClick(&window, 'b');
  EXPECT_FALSE(next());
  window.repaint();
  QTest::keyClick(&window, 'c');
  EXPECT_EQ(next_code(), 'c');
}

TEST_F(WindowOfPages, ThePageKeepsItsProportionsInTheMiddle) {
  window.resize(1685, 1050);  // 200 pixels wider than needed: 100 on each side
  show_page();
  const QImage image = window.grab().toImage();
  EXPECT_NE(image.pixelColor(50, 500), QColor(Qt::white));
  EXPECT_EQ(image.pixelColor(150, 500), QColor(Qt::white));
  EXPECT_NE(image.pixelColor(1635, 500), QColor(Qt::white));
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1250, 25));
  auto event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->x, 2300);
  window.resize(1485, 1250);
  show_page();
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1150, 125));
  event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->y, 50);
}

TEST_F(WindowOfPages, PlacesBesideThePageCountAsTheNearestOnIt) {
  window.resize(1685, 1050);
  show_page();
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(20, 500));
  auto event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->x, 0);
  QTest::mouseClick(&window, Qt::LeftButton, {}, QPoint(1680, 1049));
  event = next();
  ASSERT_TRUE(event);
  EXPECT_EQ(event->x, Page::width);
}

TEST_F(WindowOfPages, TheFirstSizeFillsNoMoreThanNineTenthsOfTheScreen) {
  EXPECT_EQ(PageWindow::first_size({1920, 1080}), QSize(1374, 972));
  EXPECT_EQ(PageWindow::first_size({1000, 2000}), QSize(900, 636));
}

TEST_F(WindowOfPages, PaintsThePageShownLast) {
  plot.setclr(colour::light_red);
  plot.rectangle(1000, 1000, 1200, 1200);
  show_page();
  EXPECT_EQ(window.grab().toImage().pixelColor(550, 550), area_shade(colour::light_red));
}

}  // namespace
}  // namespace vorn
