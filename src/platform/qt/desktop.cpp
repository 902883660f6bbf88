#include "platform/qt/desktop.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMessageLogContext>
#include <algorithm>
#include <array>
#include <atomic>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "platform/qt/folder_choice.h"
#include "platform/qt/installed_files.h"
#include "platform/qt/main_window.h"
#include "platform/qt/plain_labels.h"
#include "platform/qt/program_icon.h"
#include "platform/qt/readable_letters.h"
#include "platform/qt/recent_folders.h"
#include "platform/qt/scale.h"

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

// The window, and the program at work behind it, run after run.
class Desktop {
 public:
  explicit Desktop(const WindowProgram& program) : program_(program) {}

  int run(std::string folder) {
    for (;;) {
      const QString shown = folder.empty() ? QDir::currentPath() : QFile::decodeName(folder.c_str());
      const int result = run_in(folder, shown);
      const auto next = window_->next_folder();
      if (!next) return finish(result);
      folder = QFile::encodeName(*next).toStdString();
    }
  }

 private:
  // Both calls come from the program's thread and are posted to the window's. News that came while others
  // wait to be shown are shown with them.
  std::unique_ptr<EventMailbox> make_mailbox() {
    const auto page_came = [this] {
      QMetaObject::invokeMethod(
          window_.get(), [this] { window_->show_page(); }, Qt::QueuedConnection);
    };
    const auto news_came = [this] {
      if (news_wait_.exchange(true)) return;
      QMetaObject::invokeMethod(
          window_.get(), [this] { show_news(); }, Qt::QueuedConnection);
    };
    return std::make_unique<EventMailbox>(page_came, news_came);
  }

  void show_news() {
    news_wait_ = false;
    window_->show_news();
  }

  void open(EventMailbox& mailbox, const QString& shown) {
    if (window_) return window_->serve(mailbox, shown);
    window_ = std::make_unique<MainWindow>(mailbox, shown);
    window_->arrange();
    window_->show();
  }

  int run_in(const std::string& folder, const QString& shown) {
    if (QFile::exists(QDir(shown).filePath("Vorn.fil"))) remember_recent_folder(shown);
    auto mailbox = make_mailbox();
    open(*mailbox, shown);
    mailbox_.swap(mailbox);  // the one before goes when nothing shows it any more
    int result = 0;
    std::thread program_thread([&] {
      result = program_(*mailbox_, folder);
      // Posted, so that it works even before exec() runs; exit, because quit() asks the window, which would
      // refuse.
      QMetaObject::invokeMethod(
          qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    });
    QCoreApplication::exec();
    program_thread.join();
    return result;
  }

  int finish(int result) {
    window_->remember_arrangement();
    window_->let_close();
    return result;
  }

  const WindowProgram& program_;
  std::unique_ptr<EventMailbox> mailbox_;
  std::unique_ptr<MainWindow> window_;
  std::atomic<bool> news_wait_ = false;
};

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
  new ReadableLetters(&application);
  qInstallMessageHandler(usual);
  std::setlocale(LC_NUMERIC, "C");  // which the application object changed: numbers in files have points
  QGuiApplication::setQuitOnLastWindowClosed(false);
  QGuiApplication::setDesktopFileName("vorn");
  QGuiApplication::setWindowIcon(program_icon());
  if (!folder) folder = ask_for_folder();
  if (!folder) return 0;

  return Desktop(program).run(*folder);
}

}  // namespace vorn
