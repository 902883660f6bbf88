#include "platform/qt/desktop.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageLogContext>
#include <QScreen>
#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>
#include <thread>

#include "platform/qt/folder_choice.h"
#include "platform/qt/installed_files.h"
#include "platform/qt/page_window.h"
#include "platform/qt/plain_labels.h"
#include "platform/qt/program_icon.h"
#include "platform/qt/scale.h"
#include "platform/qt/settings.h"

namespace vorn {
namespace {

// The window system ends the process when it finds no display, so this is asked before.
bool has_display() {
#if defined(__unix__) && !defined(__APPLE__)
  const std::array variables = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
  return std::ranges::any_of(variables, [](const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
  });
#else
  return true;
#endif
}

void say_no_display() {
  std::cerr << "VORNosx: there is no display to open a window on; start it in a graphical session (or set "
               "DISPLAY), "
               "or drive it by a script: vorn_replay SCRIPT\n";
}

// While the window system starts: a display that is named but does not answer is told in the same line,
// instead of an abort.
void on_start_message(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtFatalMsg) {
    say_no_display();
    std::_Exit(no_display);
  }
  if (type == QtCriticalMsg) std::cerr << message.toStdString() << '\n';
}

std::optional<std::string> ask_for_folder() {
  const auto folder = choose_folder(places_of_installed_files(QCoreApplication::applicationDirPath()));
  if (!folder) return {};
  return QFile::encodeName(*folder).toStdString();
}

}  // namespace

int run_in_window(const WindowProgram& program, std::optional<std::string> folder) {
  if (!has_display()) {
    say_no_display();
    return no_display;
  }
  int argument_count = 1;
  std::string name = "VORNosx";
  std::array<char*, 2> arguments = {name.data(), nullptr};
  const auto usual = qInstallMessageHandler(on_start_message);
  raise_scales_below_one();
  QApplication application(argument_count, arguments.data());
  new PlainLabels(&application);
  qInstallMessageHandler(usual);
  std::setlocale(LC_NUMERIC, "C");  // which the application object changed: numbers in files have points
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setDesktopFileName("vorn");
  QGuiApplication::setWindowIcon(program_icon());
  if (!folder) folder = ask_for_folder();
  if (!folder) return 0;

  PageWindow* shown = nullptr;
  // Both are called by the program's thread and posted to the window's.
  const auto page_came = [&] {
    QMetaObject::invokeMethod(
        shown, [&] { shown->update(); }, Qt::QueuedConnection);
  };
  const auto news_came = [&] {
    QMetaObject::invokeMethod(
        shown,
        [&] {
          shown->show_title();
          shown->show_notices();
        },
        Qt::QueuedConnection);
  };
  EventMailbox mailbox(page_came, news_came);
  PageWindow window(mailbox, folder->empty() ? QDir::currentPath() : QFile::decodeName(folder->c_str()));
  shown = &window;
  const QScreen* screen = QGuiApplication::primaryScreen();
  restore_place(window, PageWindow::first_size(screen ? screen->availableSize() : QSize(1600, 1200)));
  window.show();

  int result = 0;
  std::thread program_thread([&] {
    result = program(mailbox, *folder);
    // Posted, so that it works even before exec() runs; exit, because quit() asks the window, which would
    // refuse.
    QMetaObject::invokeMethod(
        &application, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
  });
  QCoreApplication::exec();
  program_thread.join();
  remember_place(window);
  window.let_close();
  return result;
}

}  // namespace vorn
