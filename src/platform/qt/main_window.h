// The window of the desktop program: the page, and what stands around it.
#pragma once

#include <QMainWindow>
#include <QMap>
#include <QMessageBox>
#include <QPointer>
#include <functional>
#include <optional>
#include <utility>

#include "panels/corrected_file.h"
#include "platform/qt/action_menus.h"
#include "platform/qt/file_opening.h"
#include "platform/qt/journal_dock.h"
#include "platform/qt/page_window.h"
#include "platform/qt/panel_docks.h"
#include "platform/qt/question_box.h"
#include "platform/qt/status_fields.h"

namespace vorn {

// Lives on what the mailbox tells and acts through it alone. It stays when the program is run again in
// another folder.
class MainWindow : public QMainWindow {
 public:
  // `folder` is the one that is worked in; of `program_folder` see PageWindow.
  MainWindow(EventMailbox& mailbox, const QString& folder,
             const QString& program_folder = QCoreApplication::applicationDirPath());
  ~MainWindow() override;
  // From now on another run of the program is shown.
  void serve(EventMailbox& mailbox, const QString& folder);

  // To be called when the mailbox says that a page or news came.
  void show_page() { page_->update(); }
  void show_news();
  // The program has ended: from now on the window may close.
  void let_close() { may_close_ = true; }
  // The folder in which the program is to be run next, once; nothing when it is to end.
  std::optional<QString> next_folder() { return std::exchange(next_folder_, {}); }

  PageWindow& page() { return *page_; }
  PanelDocks& panels() { return panels_; }
  // What the menus do when the user chooses an action.
  void act(const QString& id);
  // Whether the window itself does the action of that name.
  bool does(const QString& id) const { return actions_.contains(id); }

  // Puts the window and its docks where they were.
  void arrange();
  void remember_arrangement() const;
  // Where nothing is remembered: nine tenths of a screen.
  static QSize first_size(QSize screen) { return screen * 9 / 10; }

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  using WindowAction = std::function<void()>;
  QMap<QString, WindowAction> window_actions();
  void put(const Deed& deed, bool repeated = false);
  void show_title();
  void show_status(std::optional<PointAt> mouse);
  void show_standing(const SharedStanding& standing);
  void show_switches();
  void add_journal();
  int bars_height() const;
  void fill_recent_folders();
  void close_program();
  void open_in(const QString& folder);
  void offer_to_take_up(const Standing& standing);
  void withdraw_offer();

  // The actions that the window does by itself.
  void ask_for_move();
  void ask_for_beginning();
  void ask_for_note();
  void use_corrected_file();
  void save_corrected_file();
  void save_corrected_as(const CorrectedFile& corrected);
  void show_changes();
  void ask_for_copy(const std::string& file, std::optional<double> unit);
  void show_methods();
  void show_keys();
  void show_about();
  void ask_for_number(const QString& title, const QString& label, int value, std::function<void(int)> given);
  void tell(const QString& text);

  EventMailbox* mailbox_;
  QString folder_;
  PageWindow* page_;
  StatusFields* status_;
  JournalDock* journal_;
  PanelDocks panels_;
  QMap<QString, WindowAction> actions_;
  ActionMenus menus_;
  QMenu* recent_;
  QuestionBox question_;
  FileOpening opening_;
  std::optional<PointAt> mouse_;
  SharedStanding shown_;           // the standing that the menus show
  SharedStanding close_asked_at_;  // how the session stood when the program was asked to end
  bool close_asked_ = false;
  bool take_up_offered_ = false;
  QPointer<QMessageBox> offer_;  // to take up earlier work, while it stands
  bool key_repeats_ = false;     // the last key came again because it is held down
  bool may_close_ = false;
  std::optional<QString> next_folder_;
};

}  // namespace vorn
