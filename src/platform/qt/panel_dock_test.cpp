#include "platform/qt/panel_dock.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QTest>
#include <memory>
#include <utility>
#include <vector>

#include "platform/qt/window_system_for_tests.h"

namespace vorn {
namespace {

struct Docked : testing::Test {
  QApplication& application = application_for_tests();
  Typefaces typefaces;
  std::vector<std::pair<Comfort, std::shared_ptr<const Page>>> started;
  PanelDock dock{
      PanelName::around,
      typefaces,
      {.make =
           [](const PanelView& view) {
             return Panel{.page = Page(view.width, view.height), .content_height = 50'000, .spots = {}};
           },
       .csv = [] { return std::string("core,year\r\nM\xC3\xBChle,1750\r\n"); },
       .start = [this](Comfort comfort,
                       std::shared_ptr<const Page> page) { started.emplace_back(comfort, page); }}};
  Docked() {
    dock.resize(400, 300);
    dock.show();
    dock.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&dock));
  }
  QAction* action(const char* id) { return dock.findChild<QAction*>(id); }
};

TEST_F(Docked, IsCalledByThePanelsName) {
  EXPECT_EQ(dock.windowTitle(), "Around a Year");
  EXPECT_EQ(dock.objectName(), "around");
  EXPECT_EQ(dock.accessibleName(), "Around a Year");
  EXPECT_EQ(dock.area().accessibleName(), "Around a Year");
}

TEST_F(Docked, TakesTheKeyboard) {
  dock.enter();
  EXPECT_TRUE(dock.area().hasFocus());
}

TEST_F(Docked, ItsKeyCopiesTheTable) {
  dock.enter();
  QTest::keyClick(&dock.area(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QString("core,year\r\nM") + QChar(0xFC) + "hle,1750\r\n");
}

TEST_F(Docked, IsCopiedSavedAndPrintedAsThePageIs) {
  for (const char* id : {"copy_picture", "save_panel", "print_panel"}) action(id)->trigger();
  ASSERT_EQ(started.size(), 3u);
  EXPECT_EQ(started[0].first, Comfort::copy);
  EXPECT_EQ(started[1].first, Comfort::save);
  EXPECT_EQ(started[2].first, Comfort::print);
  const int across = dock.area().view().width;
  for (const auto& [comfort, page] : started) EXPECT_EQ(page->across(), across);
  EXPECT_EQ(started[1].second->down(), 12'000);
  EXPECT_EQ(started[2].second->down(), across * 297 / 210);  // one sheet
}

TEST_F(Docked, AMenuSaysWhatCanBeDoneWithIt) {
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 10), dock.area().mapToGlobal(QPoint(10, 10)));
  QApplication::sendEvent(dock.area().viewport(), &event);
  auto* menu = dock.findChild<QMenu*>();
  ASSERT_NE(menu, nullptr);
  EXPECT_TRUE(menu->isVisible());
  EXPECT_EQ(menu->actions(), dock.area().actions());
  menu->close();
}

}  // namespace
}  // namespace vorn
