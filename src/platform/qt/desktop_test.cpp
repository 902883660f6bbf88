#include "platform/qt/desktop.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <array>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/qt/main_window.h"
#include "platform/qt/page_painter.h"
#include "platform/qt/settings.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/plot.h"

namespace vorn {
namespace {

// Each of these runs in a process of its own, because there is one application object in a process.
struct Desktop : testing::Test {
  Desktop() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  static QWidget& page_window() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* whole = dynamic_cast<MainWindow*>(window)) return whole->page();
    }
    std::abort();
  }
  static QWidget& whole_window() { return *page_window().window(); }
  // Lets the user act, on the window's thread, as soon as the page shown last is painted.
  static void user(const std::function<void(QWidget&)>& acts) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [acts] {
          QWidget& window = page_window();
          window.repaint();
          acts(window);
        },
        Qt::QueuedConnection);
  }
  [[noreturn]] static void run(const std::function<int(Screen&)>& program) {
    prepare_offscreen();
    std::exit(run_in_window([&](Screen& screen, const std::string&) { return program(screen); }));
  }
};

TEST_F(Desktop, AProgramThatEndsTakesItsWindowAlong) {
  EXPECT_EXIT(run([](Screen&) { return 4; }), testing::ExitedWithCode(4), "");
}

TEST_F(Desktop, TheProgramGetsWhatTheUserDoes) {
  EXPECT_EXIT(run([](Screen& screen) {
                Plot plot(screen);
                plot.messag("Quit", 100, 100);
                plot.show();
                user([](QWidget& window) { QTest::keyClick(&window, 'q'); });
                return screen.next_event().code;
              }),
              testing::ExitedWithCode('q'), "");
}

TEST_F(Desktop, ClosingWhileTheProgramWaitsUnwindsIt) {
  EXPECT_EXIT(run([](Screen& screen) {
                screen.show(Page());
                user([](QWidget& window) { window.window()->close(); });
                try {
                  screen.next_event();
                } catch (const ProgramEnd& end) {
                  return end.reason() == EndReason::closed ? 33 : 1;
                }
                return 2;
              }),
              testing::ExitedWithCode(33), "");
}

TEST_F(Desktop, ClosingWhileTheProgramComputesEndsItWhenItWaits) {
  EXPECT_EXIT(run([](Screen& screen) {
                user([](QWidget& window) { window.window()->close(); });
                std::this_thread::sleep_for(std::chrono::milliseconds(200));
                screen.show(Page());  // long work reports its progress and is not cut off
                try {
                  screen.next_event();
                } catch (const ProgramEnd&) {
                  return 34;
                }
                return 2;
              }),
              testing::ExitedWithCode(34), "");
}

// What the program's thread sees when the window is closed while one of its dialogs is open.
int closed_with_dialog(Screen& screen, Qt::Key key) {
  screen.show(Page());
  Desktop::user([key](QWidget& window) {
    QTest::keyClick(&window, key, Qt::ControlModifier);
    if (window.window()->findChildren<QDialog*>().isEmpty()) std::_Exit(3);
    window.window()->close();
  });
  try {
    screen.next_event();
  } catch (const ProgramEnd& end) {
    return end.reason() == EndReason::closed ? 33 : 1;
  }
  return 2;
}

TEST_F(Desktop, ClosingWhileADialogIsOpenEndsTheProgramToo) {
  EXPECT_EXIT(run([](Screen& screen) { return closed_with_dialog(screen, Qt::Key_S); }),
              testing::ExitedWithCode(33), "");
  EXPECT_EXIT(run([](Screen& screen) { return closed_with_dialog(screen, Qt::Key_P); }),
              testing::ExitedWithCode(33), "");
}

TEST_F(Desktop, AProgramThatEndsTakesDialogAndGuideAlong) {
  EXPECT_EXIT(run([](Screen& screen) {
                screen.show(Page());
                user([](QWidget& window) {
                  QTest::keyClick(&window, Qt::Key_H, Qt::ControlModifier);
                  QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
                  QTest::keyClick(&window, 'q');
                });
                return screen.next_event().code;
              }),
              testing::ExitedWithCode('q'), "");
}

// Moves the window of one session, and tells how the window of the next would stand.
QRect place_in_next_session(const QRect& place) {
  run_in_window([&](Screen&, const std::string&) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { Desktop::whole_window().setGeometry(place); },
        Qt::BlockingQueuedConnection);
    return 0;
  });
  int count = 1;
  std::string name = "next";
  std::array<char*, 2> arguments = {name.data(), nullptr};
  const QApplication application(count, arguments.data());
  QWidget next;
  restore_place(next, QSize(100, 100));
  return next.geometry();
}

TEST_F(Desktop, TheNextSessionsWindowStandsWhereTheLastOneStood) {
  EXPECT_EXIT(
      {
        prepare_offscreen();
        const QRect place(40, 50, 600, 420);
        std::exit(place_in_next_session(place) == place ? 55 : 1);
      },
      testing::ExitedWithCode(55), "");
}

// Runs a program whose folder is asked for by a user who answers the question so.
int run_asked(const WindowProgram& program, const std::function<void(QWidget& question)>& answer) {
  // The question is on the screen before there is anything else to post to.
  std::thread user([&] {
    while (QCoreApplication::instance() == nullptr) std::this_thread::yield();
    const auto answered = [&] {
      QWidget* question = QApplication::activeModalWidget();
      if (question != nullptr) answer(*question);
      return question != nullptr;
    };
    for (bool done = false; !done;) {
      QMetaObject::invokeMethod(
          QCoreApplication::instance(), [&] { done = answered(); }, Qt::BlockingQueuedConnection);
    }
  });
  const int result = run_in_window(program, std::nullopt);
  user.join();
  return result;
}

TEST_F(Desktop, WhoWantsNoFolderGetsNoWindow) {
  EXPECT_EXIT(
      {
        prepare_offscreen();
        std::exit(run_asked([](Screen&, const std::string&) { return 9; },
                            [](QWidget& question) { question.close(); }));
      },
      testing::ExitedWithCode(0), "");
}

// A folder with a list, in the home that the tests have.
QString make_site() {
  const QString site = QDir::homePath() + "/site";
  QDir().mkpath(site);
  QFile list(site + "/Vorn.fil");
  return list.open(QIODevice::WriteOnly) ? site : QString();
}

TEST_F(Desktop, TheFolderThatTheUserChoosesIsTheProgramsAndNotTheProcesss) {
  EXPECT_EXIT(
      {
        prepare_offscreen();
        const QString site = make_site();
        remember("folder", site.toUtf8());
        const QString before = QDir::currentPath();
        const auto program = [&](Screen&, const std::string& folder) {
          return folder == site.toStdString() && QDir::currentPath() == before ? 55 : 1;
        };
        std::exit(run_asked(program, [](QWidget& question) {
          dynamic_cast<QMessageBox&>(question).defaultButton()->click();
        }));
      },
      testing::ExitedWithCode(55), "");
}

TEST_F(Desktop, TheDialogsBeginInTheFolderThatIsGiven) {
  EXPECT_EXIT(
      {
        prepare_offscreen();
        const QString site = make_site();
        const QString before = QDir::currentPath();
        QString begins;
        const auto program = [&](Screen& screen, const std::string& folder) {
          user([&](QWidget& window) {
            QTest::keyClick(&window, Qt::Key_S, Qt::ControlModifier);
            begins = window.findChild<QFileDialog*>()->directory().path();
            QTest::keyClick(&window, 'q');
          });
          if (screen.next_event().code != 'q') return 1;
          return folder == site.toStdString() && begins == site && QDir::currentPath() == before ? 55 : 2;
        };
        std::exit(run_in_window(program, site.toStdString()));
      },
      testing::ExitedWithCode(55), "");
}

// The user drops a folder on the window; the program ends and begins anew there, in the same window.
TEST_F(Desktop, TheProgramIsRunAgainInTheFolderThatIsOpened) {
  EXPECT_EXIT(
      {
        prepare_offscreen();
        const QString site = make_site();
        std::vector<std::string> folders;
        const QWidget* first = nullptr;
        const auto program = [&](Screen& screen, const std::string& folder) {
          folders.push_back(folder);
          screen.show(Page());
          if (folders.size() > 1) {
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [&] { first = first == &whole_window() ? first : nullptr; },
                Qt::BlockingQueuedConnection);
            return 57;
          }
          user([&](QWidget& window) {
            first = window.window();
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(site)});
            QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(window.window(), &enter);
            QDropEvent event(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(window.window(), &event);
          });
          try {
            screen.next_event();
          } catch (const ProgramEnd& end) {
            return end.exit_status();
          }
          return 1;
        };
        const int result = run_in_window(program, "");
        const bool same = folders == std::vector<std::string>({"", site.toStdString()}) && first != nullptr;
        std::exit(same ? result : 2);
      },
      testing::ExitedWithCode(57), "");
}

TEST_F(Desktop, TheTitleNamesTheFileWorkedOn) {
  EXPECT_EXIT(run([](Screen& screen) {
                screen.subject("nowhere.rwl");
                screen.show(Page());
                user([](QWidget& window) {
                  QTest::keyClick(&window,
                                  window.window()->windowTitle() == "nowhere.rwl - Vorn" ? 'y' : 'n');
                });
                return screen.next_event().code;
              }),
              testing::ExitedWithCode('y'), "");
}

TEST_F(Desktop, TheWindowIsPaintedAgainWhileTheProgramComputes) {
  EXPECT_EXIT(run([](Screen& screen) {
                Plot plot(screen);
                plot.setclr(colour::light_red);
                plot.rectangle(0, 0, Page::width, Page::height);
                plot.show();
                QColor seen;
                // The program is busy in this loop; the window answers all the same.
                for (int i = 0; i < 500 && seen != area_shade(colour::light_red); ++i) {
                  QMetaObject::invokeMethod(
                      QCoreApplication::instance(),
                      [&] {
                        QWidget& window = page_window();
                        seen = window.grab().toImage().pixelColor(window.rect().center());
                      },
                      Qt::BlockingQueuedConnection);
                }
                return seen == area_shade(colour::light_red) ? 7 : 1;
              }),
              testing::ExitedWithCode(7), "");
}

TEST_F(Desktop, TheTitleOfTheWindowFollowsLongWork) {
  EXPECT_EXIT(run([](Screen& screen) {
                const auto title = [] {
                  QString text;
                  QMetaObject::invokeMethod(
                      QCoreApplication::instance(), [&] { text = whole_window().windowTitle(); },
                      Qt::BlockingQueuedConnection);
                  return text;
                };
                screen.show(Page());
                std::this_thread::sleep_for(EventMailbox::worth_telling);
                screen.progress("Corr.prn", 0.7);
                if (title() != "Corr.prn 70 % - Vorn") return 1;
                // While the program waits the user sees the plain title, and leaves.
                QMetaObject::invokeMethod(
                    QCoreApplication::instance(),
                    [] {
                      QWidget& window = page_window();
                      const int key =
                          QTest::qWaitFor([&] { return window.window()->windowTitle() == "Vorn"; }) ? 'y'
                                                                                                    : 'n';
                      window.repaint();
                      QTest::keyClick(&window, static_cast<char>(key));
                    },
                    Qt::QueuedConnection);
                return screen.next_event().code;
              }),
              testing::ExitedWithCode('y'), "");
}

TEST_F(Desktop, ADenseScreenGetsAsManyPixelsAsItHas) {
  EXPECT_EXIT(
      {
        setenv("QT_SCALE_FACTOR", "2", 1);
        run([](Screen& screen) {
          screen.show(Page());
          int pixels_a_point = 0, thinnest = 0;
          QMetaObject::invokeMethod(
              QCoreApplication::instance(),
              [&] {
                QWidget& window = page_window();
                window.resize(297, 210);
                Plot plot(screen);
                plot.setclr(colour::ink);
                plot.line(0, 1000, Page::width, 1000);
                plot.show();
                const QImage image = window.grab().toImage();
                pixels_a_point = image.width() / window.width();
                for (int y = 0; y < image.height(); ++y) thinnest += qGray(image.pixel(100, y)) == 0;
              },
              Qt::BlockingQueuedConnection);
          return 10 * pixels_a_point + thinnest;  // the line is one of the screen's own pixels thin
        });
      },
      testing::ExitedWithCode(21), "");
}

TEST_F(Desktop, WithoutADisplayOneLineSaysWhatToDo) {
  EXPECT_EXIT(
      {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("QT_QPA_PLATFORM");
        std::exit(run_in_window([](Screen&, const std::string&) { return 0; }));
      },
      testing::ExitedWithCode(no_display), "^VORNosx: there is no display [^\n]*vorn_replay SCRIPT\n$");
}

TEST_F(Desktop, ADisplayThatDoesNotAnswerIsToldInTheSameWay) {
  EXPECT_EXIT(
      {
        unsetenv("WAYLAND_DISPLAY");
        unsetenv("QT_QPA_PLATFORM");
        setenv("DISPLAY", "localhost:4711", 1);
        std::exit(run_in_window([](Screen&, const std::string&) { return 0; }));
      },
      testing::ExitedWithCode(no_display), "there is no display");
}

}  // namespace
}  // namespace vorn
