// A panel in the window; the test is the user, and what draws the panel.
#include "platform/qt/panel_area.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform/qt/page_painter.h"
#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

constexpr int row_height = 40;

// A list of cores, each with a place to the right that marks it.
struct List : testing::Test {
  QApplication& application = application_for_tests();
  Typefaces typefaces;
  int rows = 30;
  int head = 0;  // with a button in it
  int asked = 0;
  std::optional<PanelView> last_view;
  std::vector<std::string> clicks;
  bool left = false;
  std::optional<PanelView::Axis> years;
  std::optional<PanelArea> area;

  List() {
    area.emplace(typefaces, [this](const PanelView& view) { return draw(view); });
    area->clicked = [this](const Spot& spot) { clicks.push_back(spot.tip); };
    area->left = [this] { left = true; };
    area->years_stand = [this] { return years; };
    area->resize(400, 200);
    area->show();
    area->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&*area));
  }

  static Spot row(int k, int y, int width) {
    return {.place = {0, y, width, y + row_height}, .tip = "Core " + std::to_string(k), .play = Play{}};
  }
  static Spot box(int k, int y, int width) {
    Spot spot{.place = {width - 60, y, width, y + row_height}, .tip = "Mark " + std::to_string(k)};
    spot.change = {.kind = PanelChange::Kind::mark, .core = std::to_string(k)};
    return spot;
  }
  Panel draw(const PanelView& view) {
    ++asked;
    last_view = view;
    Panel panel{.page = Page(view.width, view.height), .content_height = rows * row_height, .spots = {}};
    panel.content_height += head;
    panel.head = head;
    if (head > 0) {
      panel.spots.push_back({.place = {0, 0, 100, head}, .tip = "Button"});
      panel.spots.back().change.kind = PanelChange::Kind::only_to_do;
    }
    for (int k = view.scroll / row_height; k < rows; ++k) {
      const int y = head + k * row_height - view.scroll;
      if (y >= view.height) break;
      for (Spot spot : {row(k, y, view.width), box(k, y, view.width)}) {
        spot.place.y1 = std::max(spot.place.y1, head);
        panel.spots.push_back(spot);
      }
      panel.page.add({.kind = Mark::Kind::text,
                      .colour = colour::ink,
                      .points = {{20, y + 9.0}},
                      .writing = "Core " + std::to_string(k),
                      .height = 22});
    }
    return panel;
  }

  void key(Qt::Key which, int times = 1, Qt::KeyboardModifiers held = {}) {
    for (int k = 0; k < times; ++k) QTest::keyClick(&*area, which, held);
  }
  std::string marked() { return area->accessibleDescription().toStdString(); }
  void click(int x, int y) {
    QTest::mouseClick(area->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(x, y));
  }
  QScrollBar& bar() { return *area->verticalScrollBar(); }
  QImage seen() { return area->viewport()->grab().toImage(); }
};

TEST_F(List, IsLookedAtInTwoUnitsToAPixel) {
  ASSERT_TRUE(last_view);
  EXPECT_EQ(last_view->width, 2 * (400 - bar().sizeHint().width()));
  EXPECT_EQ(last_view->height, 400);
  EXPECT_EQ(last_view->scroll, 0);
  EXPECT_FALSE(last_view->axis);
}

TEST_F(List, IsAskedForOnlyWhenSomethingMayBeOther) {
  const int before = asked;
  for (int k = 0; k < 5; ++k) area->viewport()->repaint();
  area->look_again();
  QTest::qWait(30);
  EXPECT_EQ(asked, before);
  area->renew();
  EXPECT_EQ(asked, before + 1);
  area->resize(420, 200);
  QCoreApplication::processEvents();
  EXPECT_EQ(asked, before + 2);
  area->hide();
  area->renew();
  EXPECT_EQ(asked, before + 2);
  area->show();
  EXPECT_EQ(asked, before + 3);
}

TEST_F(List, ABarThatComesAndGoesLeavesTheWidthAsItIs) {
  const int with_bar = last_view->width;
  EXPECT_GT(bar().maximum(), 0);
  rows = 2;
  area->renew();
  EXPECT_EQ(bar().maximum(), 0);
  QCoreApplication::processEvents();
  EXPECT_FALSE(bar().isVisible());
  EXPECT_EQ(area->view().width, with_bar);
}

TEST_F(List, LettersAreSharpAndOnPaper) {
  const QImage image = seen();
  EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), area_shade(colour::paper));
  bool has_ink = false;
  for (int y = 4; y < 16; ++y) {
    for (int x = 10; x < 60; ++x) has_ink |= qGray(image.pixel(x, y)) < 40;
  }
  EXPECT_TRUE(has_ink);
}

// --- The mouse.

TEST_F(List, AClickIsThatOfTheSpotInFront) {
  click(30, 30);
  click(area->view().width / 2 - 10, 30);
  click(area->view().width / 2 + 2, 30);  // beside the panel
  EXPECT_EQ(clicks, (std::vector<std::string>{"Core 1", "Mark 1"}));
  QTest::mouseClick(area->viewport(), Qt::RightButton, Qt::NoModifier, QPoint(30, 30));
  EXPECT_EQ(clicks.size(), 2u);
}

TEST_F(List, WhatAClickOfTheMousePlaysIsGoneOnWithOnThePage) {
  click(area->view().width / 2 - 10, 30);
  EXPECT_FALSE(left);
  click(30, 30);
  EXPECT_TRUE(left);
  left = false;
  key(Qt::Key_Left);
  key(Qt::Key_Return);
  EXPECT_EQ(clicks.size(), 3u);
  EXPECT_FALSE(left);
}

TEST_F(List, ASecondClickTooManyPlaysNothingButMarksAgain) {
  const auto click_twice = [&](QPoint at) {
    click(at.x(), at.y());
    QTest::mouseDClick(area->viewport(), Qt::LeftButton, Qt::NoModifier, at);
  };
  click_twice(QPoint(30, 30));
  EXPECT_EQ(clicks, (std::vector<std::string>{"Core 1"}));
  clicks.clear();
  click_twice(QPoint(area->view().width / 2 - 10, 10));
  EXPECT_EQ(clicks, (std::vector<std::string>{"Mark 0", "Mark 0"}));
}

TEST_F(List, TheMouseShowsWhereAClickDoesSomething) {
  QTest::mouseMove(area->viewport(), QPoint(30, 30));
  EXPECT_EQ(area->viewport()->cursor().shape(), Qt::PointingHandCursor);
  rows = 1;
  area->renew();
  QTest::mouseMove(area->viewport(), QPoint(30, 31));
  EXPECT_EQ(area->viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(List, TheMouseIsToldWhatIsThere) {
  const auto point_at = [&](QPoint place) {
    QHelpEvent event(QEvent::ToolTip, place, area->viewport()->mapToGlobal(place));
    QApplication::sendEvent(area->viewport(), &event);
  };
  point_at({30, 30});
  EXPECT_EQ(QToolTip::text(), "Core 1");
  rows = 1;
  area->renew();
  point_at({30, 30});
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 2000));
}

TEST_F(List, TheWheelScrolls) {
  const QPointF at(50, 50);
  QWheelEvent event(at, area->viewport()->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(area->viewport(), &event);
  EXPECT_EQ(bar().value(), 3 * bar().singleStep());
  EXPECT_EQ(last_view->scroll, bar().value());
}

// --- The keyboard.

TEST_F(List, TabAndArrowsGoFromSpotToSpot) {
  key(Qt::Key_Tab);
  EXPECT_EQ(marked(), "Core 0");
  key(Qt::Key_Tab);
  EXPECT_EQ(marked(), "Mark 0");
  key(Qt::Key_Down, 2);
  EXPECT_EQ(marked(), "Mark 2");
  key(Qt::Key_Left);
  EXPECT_EQ(marked(), "Core 2");
  key(Qt::Key_Up);
  EXPECT_EQ(marked(), "Core 1");
  key(Qt::Key_Backtab);
  EXPECT_EQ(marked(), "Mark 0");
  key(Qt::Key_Right);
  EXPECT_EQ(marked(), "Core 1");
}

TEST_F(List, WhatIsMarkedIsSeen) {
  const QImage before = seen();
  key(Qt::Key_Tab);
  EXPECT_NE(seen(), before);
  click(30, 100);  // by the mouse nothing is
  EXPECT_EQ(seen(), before);
}

TEST_F(List, ReturnAndSpaceClickWhatIsMarked) {
  key(Qt::Key_Return);
  EXPECT_TRUE(clicks.empty());
  key(Qt::Key_Down);
  key(Qt::Key_Return);
  key(Qt::Key_Tab);
  key(Qt::Key_Space);
  EXPECT_EQ(clicks, (std::vector<std::string>{"Core 0", "Mark 0"}));
  QTest::simulateEvent(&*area, true, Qt::Key_Return, Qt::NoModifier, "\r", true);  // held down
  EXPECT_EQ(clicks.size(), 2u);
}

TEST_F(List, EscapeLeaves) {
  key(Qt::Key_Escape);
  EXPECT_TRUE(left);
}

TEST_F(List, TheMarkGoesOnBelowWhatIsLookedAt) {
  key(Qt::Key_Down, 20);
  EXPECT_EQ(marked(), "Core 19");
  EXPECT_GT(bar().value(), 0);
  EXPECT_LE(20 * row_height - bar().value(), area->view().height);  // wholly in sight
  key(Qt::Key_Down, 50);
  EXPECT_EQ(marked(), "Core 29");
  EXPECT_EQ(bar().value(), bar().maximum());
  key(Qt::Key_Up, 29);
  EXPECT_EQ(marked(), "Core 0");
  EXPECT_EQ(bar().value(), 0);
}

TEST_F(List, TabReadsAllOfIt) {
  std::vector<std::string> read;
  for (int k = 0; k < 2 * rows; ++k) {
    key(Qt::Key_Tab);
    read.push_back(marked());
  }
  for (int k = 0; k < rows; ++k) {
    EXPECT_EQ(read[2 * static_cast<std::size_t>(k)], "Core " + std::to_string(k));
    EXPECT_EQ(read[2 * static_cast<std::size_t>(k) + 1], "Mark " + std::to_string(k));
  }
  key(Qt::Key_Tab);
  EXPECT_EQ(marked(), "Mark 29");
}

// A heading stays where it is, and what is in it comes before all the rows.
TEST_F(List, UnderAHeadingTheMarkGoesThroughAllRowsToo) {
  head = 60;
  area->renew();
  key(Qt::Key_Tab);
  EXPECT_EQ(marked(), "Button");
  for (int k = 0; k < rows; ++k) {
    key(Qt::Key_Down);
    EXPECT_EQ(marked(), "Core " + std::to_string(k));
  }
  key(Qt::Key_Down);
  EXPECT_EQ(marked(), "Core 29");
  for (int k = rows - 1; k > 0; --k) {
    key(Qt::Key_Backtab);
    EXPECT_EQ(marked(), "Mark " + std::to_string(k - 1));
    key(Qt::Key_Backtab);
    EXPECT_EQ(marked(), "Core " + std::to_string(k - 1));
    EXPECT_GE(area->shown().spots.size(), 3u);
  }
  EXPECT_EQ(bar().value(), 0);
  key(Qt::Key_Up);
  EXPECT_EQ(marked(), "Button");
  key(Qt::Key_End);
  EXPECT_EQ(marked(), "Mark 29");
  key(Qt::Key_Up, 29);
  EXPECT_EQ(marked(), "Mark 0");
  key(Qt::Key_Up);
  EXPECT_EQ(marked(), "Button");
}

TEST_F(List, HomeEndAndPagesScroll) {
  key(Qt::Key_PageDown);
  EXPECT_EQ(bar().value(), area->view().height);
  key(Qt::Key_PageUp);
  EXPECT_EQ(bar().value(), 0);
  key(Qt::Key_End);
  EXPECT_EQ(marked(), "Mark 29");
  EXPECT_EQ(bar().value(), bar().maximum());
  key(Qt::Key_Home);
  EXPECT_EQ(marked(), "Core 0");
  EXPECT_EQ(bar().value(), 0);
}

TEST_F(List, TheMarkStaysAtItsCoreWhenOthersComeAbove) {
  key(Qt::Key_Down, 3);
  EXPECT_EQ(marked(), "Core 2");
  bar().setValue(row_height);
  EXPECT_EQ(marked(), "Core 2");
  rows = 1;  // it is gone, and so are all that stood there
  area->renew();
  EXPECT_EQ(marked(), "");
  key(Qt::Key_Down);
  EXPECT_EQ(marked(), "Core 0");
}

TEST_F(List, OtherKeysAreNotItsOwn) {
  for (const Qt::KeyboardModifiers held : {Qt::ControlModifier, Qt::AltModifier}) {
    QKeyEvent event(QEvent::KeyPress, Qt::Key_Down, held);
    QApplication::sendEvent(&*area, &event);
    EXPECT_FALSE(event.isAccepted());
  }
  EXPECT_EQ(marked(), "");
}

TEST_F(List, OfTenThousandRowsOnlyThoseInSightAreDrawn) {
  rows = 10'000;
  area->renew();
  key(Qt::Key_End);
  EXPECT_EQ(marked(), "Mark 9999");
  EXPECT_LE(area->shown().spots.size(), 2u * 12);
  EXPECT_EQ(bar().value(), rows * row_height - area->view().height);
  key(Qt::Key_Up, 100);
  EXPECT_EQ(marked(), "Mark 9899");
}

TEST_F(List, ShorterThanWhereItWasScrolledToItIsSeenToItsEnd) {
  key(Qt::Key_End);
  rows = 12;
  area->renew();
  EXPECT_EQ(bar().value(), 12 * row_height - area->view().height);
  EXPECT_EQ(last_view->scroll, bar().value());
}

// --- Years under years.

TEST_F(List, YearsStandWhereThoseOfThePageStand) {
  years = PanelView::Axis{40.5, 300.25};
  area->look_again();
  ASSERT_TRUE(last_view->axis);
  EXPECT_DOUBLE_EQ(last_view->axis->left, 81);
  EXPECT_DOUBLE_EQ(last_view->axis->right, 600.5);
  const int before = asked;
  area->look_again();
  EXPECT_EQ(asked, before);
  years->right = 500;  // beyond its edge
  area->look_again();
  EXPECT_FALSE(last_view->axis);
  years = PanelView::Axis{-1, 300};
  area->look_again();
  EXPECT_FALSE(last_view->axis);
}

// --- Pictures.

TEST_F(List, APictureHoldsAllOfIt) {
  bar().setValue(300);
  const Panel whole = area->pictured(12'000);
  EXPECT_EQ(whole.page.down(), rows * row_height);
  EXPECT_EQ(whole.page.across(), area->view().width);
  EXPECT_EQ(whole.spots.front().tip, "Core 0");
}

TEST_F(List, OfAListTooLongAPictureHoldsWhatFollowsTheFirstRowInSight) {
  rows = 10'000;
  area->renew();
  bar().setValue(100 * row_height);
  const Panel part = area->pictured(2000);
  EXPECT_EQ(part.page.down(), 2000);
  EXPECT_EQ(part.spots.front().tip, "Core 100");
}

}  // namespace
}  // namespace vorn
