// Walks at random of a user at the window: mouse, wheel, keys, menus and answers to what is asked, over the
// whole program as a session on a thread of its own. What the session kept of each is then gone through
// without a window, and must come to the same page, the same store and the same files.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QInputDialog>
#include <QMessageBox>
#include <QTest>
#include <QWheelEvent>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "desk/actions.h"
#include "desk/questions.h"
#include "menus/main_program.h"
#include "platform/qt/main_window.h"
#include "platform/qt/page_painter.h"
#include "platform/qt/window_system_for_tests.h"
#include "plot/plot.h"
#include "records/disk_files.h"
#include "sessions/help_files.h"
#include "sessions/journal.h"
#include "sessions/session.h"
#include "support/places.h"
#include "support/scratch_folder.h"
#include "walk/sight.h"
#include "walk/walk_files.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t usual_acts = 120, usual_seed = 1;
constexpr int longest_wait = 60'000;  // ms, whatever the program is at
constexpr int patience = 12;          // ms, for the news of an act

using FilesThere = std::map<std::string, std::string>;

FilesThere files_there() {
  FilesThere all;
  for (const auto& entry : fs::directory_iterator(".")) {
    // What a session says of how a file was written is no work of the program's.
    const bool counts = entry.is_regular_file() && entry.path().extension() != ".careful";
    if (counts) all[entry.path().filename()] = ScratchFolder::read(entry.path());
  }
  return all;
}

// The whole program, which leaves behind how it stood when it ended.
WholeProgram program_that_leaves(Sight& sight) {
  return [&sight](Screen& screen, Files& files, std::ostream& log, const auto& started) {
    Plot plot(screen);
    const auto w = std::make_unique<Workspace>(plot, files);
    w->log = &log;
    if (started) started(*w);
    int status = 0;
    try {
      run_program(*w);
    } catch (const ProgramEnd& end) {
      status = end.exit_status();
    }
    sight = {text_of(plot.page()), fingerprint_of(*w)};
    return status;
  };
}

// Plays events, then closes. Switches to careful are made as they were, ahead of the first event as well.
class Player : public Screen {
 public:
  explicit Player(const std::vector<TimelineStep>& steps) : steps_(steps) {}
  void begin(Workspace& w) {
    w_ = &w;
    for (; next_ < steps_.size() && steps_[next_].careful; ++next_) steps_[next_].careful->apply(w_->careful);
  }
  void show(const Page&) override {}
  Event next_event() override {
    if (next_ == steps_.size()) throw ProgramEnd(EndReason::closed);
    const TimelineStep& step = steps_[next_++];
    if (step.careful) step.careful->apply(w_->careful);
    return step.event;
  }
  std::size_t left() const { return steps_.size() - next_; }

 private:
  const std::vector<TimelineStep>& steps_;
  Workspace* w_ = nullptr;
  std::size_t next_ = 0;
};

// Knows whether files may stand that belong to steps taken back.
class Watched : public Journal {
 public:
  using Journal::Journal;
  void undone() override {
    took_back = true;
    Journal::undone();
  }
  bool took_back = false;
};

// One run of the program, on a thread of its own.
struct ProgramRun {
  ProgramRun(std::function<void()> page_came, std::function<void()> news_came)
      : mailbox(std::move(page_came), std::move(news_came)) {}
  EventMailbox mailbox;
  std::thread thread;
  std::atomic<bool> ended = false;
  std::vector<TimelineStep> steps;
  bool took_back = false;
  std::string journal_trouble;
  Sight sight;

  void begin() {
    thread = std::thread([this] {
      DiskFiles disk;
      HelpFiles files(disk, (source_folder() / "examples" / "Help.prn").string());
      Questions questions;
      Watched journal("", "0");
      std::ostringstream log;
      Session session(program_that_leaves(sight), files, log, mailbox, &questions, &journal);
      session.run();
      steps = session.timeline().steps();
      took_back = journal.took_back;
      journal_trouble = journal.trouble();
      ended = true;
    });
  }
};

class WindowUser {
 public:
  WindowUser(MainWindow& window, std::uint32_t seed) : window_(window), random_(seed) {}

  // One act: whatever stands before the window first, else something in the window.
  void act(ProgramRun& run) {
    run_ = &run;
    const SharedStanding before = run.mailbox.standing();
    if (!answer_dialogs(false)) act_in_window();
    // Mostly patient; now and then faster than the program.
    if (in(85)) wait_for_news(before);
    QCoreApplication::processEvents();
  }

  // Closes, and gives up whatever is asked about.
  void leave(ProgramRun& run) {
    run_ = &run;
    QElapsedTimer since;
    since.start();
    while (!run.ended) {
      if (since.elapsed() > longest_wait) hangs();
      if (!answer_dialogs(true)) window_.close();
      QTest::qWait(1);
    }
    while (answer_dialogs(true)) QCoreApplication::processEvents();
  }

  std::map<std::string, int> acts;

 private:
  int up_to(int most) { return static_cast<int>(random_() % (static_cast<std::uint32_t>(most) + 1)); }
  bool in(int percent) { return up_to(99) < percent; }
  PageWindow& page() { return window_.page(); }
  SharedSituation situation() const {
    const SharedStanding standing = run_->mailbox.standing();
    return standing ? standing->situation : nullptr;
  }

  [[noreturn]] void hangs() {
    std::cerr << "the program neither ended nor went on\n";
    std::abort();
  }

  void wait_for_news(const SharedStanding& before) {
    QElapsedTimer since;
    since.start();
    while (!run_->ended && run_->mailbox.standing() == before && since.elapsed() < patience) QTest::qWait(1);
  }

  // --- What stands before the window.

  bool answer_dialogs(bool gives_up) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget == &window_ || !widget->isVisible()) continue;
      if (auto* box = qobject_cast<QMessageBox*>(widget)) return answer_box(*box, gives_up), true;
      if (auto* input = qobject_cast<QInputDialog*>(widget)) return fill_in(*input), true;
      if (qobject_cast<QDialog*>(widget)) return ++acts["dialog"], widget->close(), true;
    }
    return false;
  }
  // The last answer stays, the one before it goes on.
  void answer_box(QMessageBox& box, bool gives_up) {
    ++acts["answer"];
    const auto buttons = box.buttons();
    std::vector<QAbstractButton*> by_role;
    QAbstractButton* stays = box.escapeButton();
    for (QAbstractButton* button : buttons) {
      if (button != stays) by_role.push_back(button);
    }
    if (by_role.empty() || (!gives_up && in(35))) return stays ? stays->click() : void(box.close());
    if (gives_up) return by_role.back()->click();
    by_role[static_cast<std::size_t>(up_to(static_cast<int>(by_role.size()) - 1))]->click();
  }
  void fill_in(QInputDialog& input) {
    ++acts["input"];
    if (input.inputMode() == QInputDialog::IntInput) {
      input.setIntValue(in(80) ? up_to(60) - 30 : up_to(30'000) - 15'000);
    } else {
      input.setTextValue("because \\ of \u00e4 \"ring\"\n" + QString::number(up_to(99)));
    }
    in(70) ? input.accept() : input.reject();
  }

  // --- What is done in the window.

  void act_in_window() {
    const int way = up_to(99);
    if (way < 44) return click_a_button();
    if (way < 50) return click_somewhere();
    if (way < 65) return press_a_key();
    if (way < 78) return trigger_an_action();
    if (way < 82) return turn_the_wheel();
    if (way < 87) return drag();
    if (way < 90) return go_elsewhere_in_the_journal();
    if (way < 91) return resize();
    if (way < 98) return act_in_a_panel();
    if (in(20)) {
      ++acts["close"];
      window_.close();
    }
  }

  QPoint on_page(int x, int y) const { return page_to_area(area_).map(QPointF(x, y)).toPoint(); }
  void mouse(QEvent::Type type, QPoint at, Qt::MouseButton button, Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(at), page().mapToGlobal(QPointF(at)), button, held, {});
    QApplication::sendEvent(&page(), &event);
  }
  void click_at(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
    area_ = page().size();
    const QPoint at = on_page(x, y);
    mouse(QEvent::MouseMove, at, Qt::NoButton, {});
    mouse(QEvent::MouseButtonPress, at, button, button);
    mouse(QEvent::MouseButtonRelease, at, button, {});
  }

  static int weight(ButtonNumber n) {
    switch (n) {
      case button::quit:
      case button::read_two_column:
        return 1;
      case button::exit_crossdating:
      case button::correlation_exit:
      case button::chooser_exit:
      case button::editor_exit:
        return 6;
      case button::crossdate:
      case button::insert_ring:
      case button::delete_ring:
      case button::save_sample:
      case button::chooser_do_it:
      case button::upper_plot:
      case button::lower_plot:
      case button::chooser_list:
      case button::editor_table:
        return 60;
      default:
        return 15;
    }
  }
  void click_a_button() {
    const auto now = situation();
    if (!now || now->buttons.empty()) return click_somewhere();
    ++acts["button"];
    int sum = 0;
    for (const ShownButton& button : now->buttons) sum += weight(button.number);
    int place = up_to(sum - 1);
    for (const ShownButton& button : now->buttons) {
      place -= weight(button.number);
      if (place >= 0) continue;
      int x2 = button.x2, y2 = button.y2;
      if (button.number == button::chooser_list || button.number == button::chronology_list) {
        x2 = button.x1 + std::min(button.x2 - button.x1, 900);  // where names are
        y2 = button.y1 + std::min(button.y2 - button.y1, in(70) ? 300 : 3000);
      }
      click_at(button.x1 + up_to(x2 - button.x1), button.y1 + up_to(y2 - button.y1));
      if (in(50) && now->wait == Wait::menu) type_something(30);
      return;
    }
  }
  void click_somewhere() {
    ++acts["click"];
    click_at(up_to(Page::width), up_to(Page::height), in(80) ? Qt::LeftButton : Qt::RightButton);
  }
  // Where a field was clicked.
  void type_something(int wait) {
    QTest::qWait(wait % 7);
    const auto now = situation();
    if (!now || (now->wait != Wait::number && now->wait != Wait::name)) return;
    ++acts["typed"];
    const std::string text = in(70) ? std::to_string(up_to(300)) : std::to_string(up_to(20'000) - 5'000);
    for (const char c : text) QTest::keyClick(&page(), c);
    if (in(85)) QTest::keyClick(&page(), in(80) ? Qt::Key_Return : Qt::Key_Escape);
  }
  void press_a_key() {
    ++acts["key"];
    constexpr Qt::Key keys[] = {
        Qt::Key_Tab,    Qt::Key_Backtab,  Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,     Qt::Key_Down,
        Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape, Qt::Key_Backspace,
        Qt::Key_Insert, Qt::Key_Delete,   Qt::Key_Space,  Qt::Key_F1,     Qt::Key_F6,     Qt::Key_7};
    if (in(60)) {
      const Qt::Key key = keys[up_to(static_cast<int>(std::size(keys)) - 1)];
      const int times = in(15) ? 5 : 1;
      for (int k = 0; k < times; ++k) {
        QKeyEvent down(QEvent::KeyPress, key, {}, key == Qt::Key_Return ? "\r" : "", k > 0);
        QApplication::sendEvent(&page(), &down);
      }
      return;
    }
    const auto rows = action_rows();
    const ActionRow& row = rows[static_cast<std::size_t>(up_to(static_cast<int>(rows.size()) - 1))];
    if (row.key.empty() || is_out_of_reach(row.id)) return;
    const QKeySequence sequence(QString::fromUtf8(row.key.data(), static_cast<qsizetype>(row.key.size())));
    QTest::keyClick(&page(), sequence[0].key(), sequence[0].keyboardModifiers());
  }
  // What would ask the window system for files, or open a browser of its own.
  static bool is_out_of_reach(std::string_view id) {
    for (const std::string_view one : {"open_folder", "recent_folders", "open_files", "use_corrected",
                                       "save_page", "print_page", "guide", "full_screen"}) {
      if (id == one) return true;
    }
    return id == "quit";  // by the page, and seldom
  }
  void trigger_an_action() {
    const auto rows = action_rows();
    const ActionRow& row = rows[static_cast<std::size_t>(up_to(static_cast<int>(rows.size()) - 1))];
    if (is_out_of_reach(row.id)) return;
    QAction* action =
        page().findChild<QAction*>(QString::fromUtf8(row.id.data(), static_cast<qsizetype>(row.id.size())));
    ASSERT_NE(action, nullptr) << row.id;
    ++acts["action"];
    action->trigger();
  }
  void turn_the_wheel() {
    ++acts["wheel"];
    const QPointF at = page().rect().center();
    for (int k = up_to(3); k >= 0; --k) {
      QWheelEvent event(at, page().mapToGlobal(at), {}, QPoint(0, up_to(480) - 240), Qt::NoButton, {},
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(&page(), &event);
    }
  }
  void drag() {
    ++acts["drag"];
    area_ = page().size();
    QPoint at = on_page(200 + up_to(2500), 100 + up_to(1500));
    mouse(QEvent::MouseButtonPress, at, Qt::LeftButton, Qt::LeftButton);
    for (int k = up_to(4); k > 0; --k) {
      at = on_page(200 + up_to(2500), 100 + up_to(1500));
      mouse(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton);
      if (in(30)) QCoreApplication::processEvents();
    }
    if (in(20)) QTest::keyClick(&page(), Qt::Key_Escape);
    if (in(90)) mouse(QEvent::MouseButtonRelease, at, Qt::LeftButton, {});
  }
  void go_elsewhere_in_the_journal() {
    const SharedStanding now = run_->mailbox.standing();
    if (!now || now->decisions.empty()) return;
    ++acts["journal"];
    const auto one = static_cast<std::size_t>(up_to(static_cast<int>(now->decisions.size())));
    run_->mailbox.put_deed(in(50) ? Deed(GoTo{one}) : Deed(TakeNote{one, "since\tso\n\\"}));
  }
  // A spot is clicked, or the keyboard goes through some and clicks one.
  void act_in_a_panel() {
    ++acts["panel"];
    const auto name = all_panels[static_cast<std::size_t>(up_to(static_cast<int>(all_panels.size()) - 1))];
    PanelDock& dock = window_.panels().dock(name);
    if (!dock.isVisible()) dock.enter();
    PanelArea& area = dock.area();
    const auto& spots = area.shown().spots;
    if (in(40)) {
      for (int k = up_to(6); k >= 0; --k) QTest::keyClick(&area, in(50) ? Qt::Key_Tab : Qt::Key_Down);
      QTest::keyClick(&area, in(80) ? Qt::Key_Return : Qt::Key_Escape);
    } else if (!spots.empty()) {
      const Rectangle at = spots[static_cast<std::size_t>(up_to(static_cast<int>(spots.size()) - 1))].place;
      QTest::mouseClick(area.viewport(), Qt::LeftButton, {}, QPoint((at.x1 + 1) / 2, (at.y1 + at.y2) / 4));
    }
  }
  void resize() {
    ++acts["resize"];
    window_.resize(500 + up_to(500), 350 + up_to(350));
  }

  MainWindow& window_;
  std::mt19937 random_;
  ProgramRun* run_ = nullptr;
  QSize area_;
};

// What the session kept is gone through on the same files without a window.
void expect_the_same_without_a_window(const ProgramRun& run, const FilesThere& written,
                                      const WalkFiles& files) {
  // The window made the list name a clean copy: from the next start on the program reads other files.
  if (written.contains("Vorn.fil.1")) return;
  const ScratchFolder folder;
  files.lay_out();
  // What was written stays, though it was taken back, and the program asks what is there before it writes.
  if (run.took_back && files_there() != written) return;
  DiskFiles disk;
  HelpFiles with_help(disk, (source_folder() / "examples" / "Help.prn").string());
  Player player(run.steps);
  std::ostringstream log;
  Sight sight;
  program_that_leaves(sight)(player, with_help, log, [&player](Workspace& w) { player.begin(w); });
  EXPECT_EQ(player.left(), 0u);
  EXPECT_EQ(sight.page, run.sight.page);
  EXPECT_TRUE(sight.store == run.sight.store);
  EXPECT_EQ(files_there(), written);
}

class WindowWalk : public ::testing::TestWithParam<WalkFiles> {};

TEST_P(WindowWalk, ComesToWhatTheSameEventsComeToWithoutAWindow) {
  const WalkFiles& files = GetParam();
  const std::string missing = files.first_missing();
  if (!missing.empty()) GTEST_SKIP() << "no " << missing << " here";
  const std::uint32_t seed = number_from("VORN_WALK_SEED", usual_seed);
  const auto acts = static_cast<int>(number_from("VORN_WALK_STEPS", usual_acts));
  std::cout << "window " << files.name << ", seed " << seed << ", " << acts << " acts" << std::endl;
  application_for_tests();
  std::unique_ptr<MainWindow> window;
  std::vector<std::unique_ptr<ProgramRun>> runs;  // a mailbox must live as long as the window may show it
  std::optional<WindowUser> user;
  std::size_t steps = 0;
  for (int act = 0; act < acts && !HasFatalFailure() && !HasNonfatalFailure();) {
    const ScratchFolder folder;
    files.lay_out();
    const auto post = [&window](void (*what)(MainWindow&)) {
      return [&window, what] {
        QMetaObject::invokeMethod(
            qApp, [&window, what] { window ? what(*window) : void(); }, Qt::QueuedConnection);
      };
    };
    runs.push_back(std::make_unique<ProgramRun>(post([](MainWindow& w) { w.show_page(); }),
                                                post([](MainWindow& w) { w.show_news(); })));
    ProgramRun& run = *runs.back();
    if (window) {
      window->serve(run.mailbox, QDir::currentPath());
    } else {
      window = std::make_unique<MainWindow>(run.mailbox, QDir::currentPath());
      window->resize(700, 500);
      window->show();
      for (const PanelName name : all_panels) window->panels().dock(name).show();
      window->activateWindow();
      user.emplace(*window, seed);
    }
    run.begin();
    for (; act < acts && !run.ended; ++act) user->act(run);
    user->leave(run);
    run.thread.join();
    EXPECT_EQ(run.journal_trouble, "");
    steps += run.steps.size();
    expect_the_same_without_a_window(run, files_there(), files);
  }
  window->let_close();
  window.reset();
  QCoreApplication::processEvents();
  std::cout << runs.size() << " runs, " << steps << " events";
  for (const auto& [what, times] : user->acts) std::cout << ", " << what << ' ' << times;
  std::cout << std::endl;
  EXPECT_GT(steps, 0u);
}

INSTANTIATE_TEST_SUITE_P(Files, WindowWalk, ::testing::ValuesIn(all_walk_files()),
                         [](const ::testing::TestParamInfo<WalkFiles>& walk) { return walk.param.name; });

}  // namespace
}  // namespace vorn
