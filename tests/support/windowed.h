// The window with what stands around the page, for tests in which they are the user and the session in turn.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPalette>
#include <QTest>
#include <QWheelEvent>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/qt/main_window.h"
#include "platform/qt/page_painter.h"
#include "platform/qt/settings.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/plot.h"
#include "support/scratch_folder.h"

namespace vorn {

inline ShownButton shown(ButtonNumber number, int x, int y) {
  ShownButton result;
  result.x1 = x;
  result.y1 = y;
  result.x2 = x + 100;
  result.y2 = y + 50;
  result.number = number;
  return result;
}

struct Windowed : testing::Test {
  QApplication& application = application_for_tests();
  ScratchFolder folder;
  EventMailbox mailbox{[] {}};
  std::optional<MainWindow> window;
  Plot plot{mailbox};
  Situation situation;
  Standing standing;

  Windowed() {
    QFile::remove(settings_file());
    situation.wait = Wait::menu;
    situation.place = Place::start;
    situation.file = "nowhere.rwl";
    window.emplace(mailbox, QDir::currentPath());
    window->resize(800, 600);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&*window));
    plot.show();
    page().repaint();
  }
  ~Windowed() override { QFile::remove(settings_file()); }

  PageWindow& page() { return window->page(); }
  // The session stands so, and the window is told.
  void stand() {
    standing.situation = std::make_shared<const Situation>(situation);
    mailbox.stand(std::make_shared<const Standing>(standing));
    window->show_news();
  }
  void stand_on_crossdating() {
    situation.place = Place::crossdating;
    situation.first_year = 1800;
    situation.years_shown = 100;
    situation.sample = {.entry = 1, .name = "T001", .is_core = true, .first_year = 1750, .last_year = 1899};
    situation.reference = {.entry = 2, .name = "MEAN", .first_year = 1700, .last_year = 1900};
    situation.buttons.clear();
    int x = 0;
    for (const ButtonNumber n : button::scroll_row) situation.buttons.push_back(shown(n, x += 110, 20));
    for (const ButtonNumber n : button::sample_row) situation.buttons.push_back(shown(n, x += 110, 20));
    situation.buttons.push_back(shown(button::insert_ring, 100, 100));
    stand();
  }
  // All that reached the session since this was called last.
  std::vector<Deed> arrived() {
    constexpr std::size_t end = 999;
    mailbox.put_deed(Choose{end});
    std::vector<Deed> deeds;
    for (;;) {
      Deed deed = mailbox.next_deed();
      const auto* choice = std::get_if<Choose>(&deed);
      if (choice && choice->answer == end) return deeds;
      deeds.push_back(std::move(deed));
    }
  }
  template <class Kind>
  std::optional<Kind> only() {
    const auto deeds = arrived();
    EXPECT_EQ(deeds.size(), 1U);
    if (deeds.size() != 1 || !std::holds_alternative<Kind>(deeds.front())) return {};
    return std::get<Kind>(deeds.front());
  }
  template <class Dialog>
  Dialog* open_dialog() {
    for (auto* dialog : window->findChildren<Dialog*>()) {
      if (dialog->isVisible()) return dialog;
    }
    return nullptr;
  }
  void answer(const char* text) {
    auto* box = open_dialog<QMessageBox>();
    ASSERT_NE(box, nullptr);
    for (QAbstractButton* button : box->buttons()) {
      if (button->text() == text) return button->click();
    }
    FAIL() << text;
  }
  QAction* action(const char* id) { return page().findChild<QAction*>(id); }
  QString field(const char* name) { return window->findChild<ElidedLabel*>(name)->text(); }
  QPoint on_page(int x, int y) { return page_to_area(page().size()).map(QPointF(x, y)).toPoint(); }
  void mouse(QEvent::Type type, QPoint at, Qt::MouseButtons held) {
    const Qt::MouseButton cause = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, QPointF(at), page().mapToGlobal(QPointF(at)), cause, held, {});
    QApplication::sendEvent(&page(), &event);
  }
  void press_at(QPoint at) { mouse(QEvent::MouseButtonPress, at, Qt::LeftButton); }
  void drag_to(QPoint at) { mouse(QEvent::MouseMove, at, Qt::LeftButton); }
  void release_at(QPoint at) { mouse(QEvent::MouseButtonRelease, at, Qt::NoButton); }
  void turn_wheel(int units) {
    const QPointF at = page().rect().center();
    QWheelEvent event(at, page().mapToGlobal(at), {}, QPoint(0, units), Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QApplication::sendEvent(&page(), &event);
  }
};

// The application on a dark desktop, while this stands.
class DarkDesktop {
 public:
  DarkDesktop() {
    QPalette dark(QColor(0x2B2B2B));
    dark.setColor(QPalette::Base, QColor(0x1E1E1E));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::WindowText, Qt::white);
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
  }
  ~DarkDesktop() { QApplication::setPalette(light_); }
  DarkDesktop(const DarkDesktop&) = delete;
  DarkDesktop& operator=(const DarkDesktop&) = delete;

 private:
  QPalette light_ = QApplication::palette();
};

inline ButtonNumber pressed(const Play& play) {
  return play.steps.empty() ? ButtonNumber::none : play.steps.front().button;
}

}  // namespace vorn
