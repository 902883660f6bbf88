#include "platform/qt/main_window.h"

#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QUrl>
#include <algorithm>

#include "desk/actions.h"
#include "desk/file_list.h"
#include "desk/methods.h"
#include "panels/clean_copy.h"
#include "platform/qt/file_writing.h"
#include "platform/qt/folder_choice.h"
#include "platform/qt/question_box.h"
#include "platform/qt/recent_folders.h"
#include "platform/qt/settings.h"
#include "platform/qt/text_window.h"
#include "platform/qt/typefaces.h"
#include "records/disk_files.h"

namespace vorn {
namespace {

constexpr int mention_stays = 6000;  // ms
constexpr const char* program_title = "Vorn";
constexpr const char* docks_key = "docks";
constexpr int docks_version = 2;
constexpr int widest_dock = 460, narrowest_dock = 216;

QStringList local_paths(const QMimeData& data) {
  QStringList paths;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) paths << url.toLocalFile();
  }
  return paths;
}

QString shown_lines(const std::vector<std::string>& all) {
  QStringList shown;
  for (const std::string& one : all) shown << shown_characters(one);
  return shown.join('\n');
}

// As many as a question has room for.
QString shown_sentences(std::vector<std::string> all) {
  constexpr std::size_t most = 12;
  if (all.size() > most) {
    const std::size_t more = all.size() - most;
    all.resize(most);
    all.push_back("and " + std::to_string(more) + " more");
  }
  return shown_lines(all);
}

}  // namespace

MainWindow::MainWindow(EventMailbox& mailbox, const QString& folder, const QString& program_folder)
    : mailbox_(&mailbox),
      folder_(folder),
      page_(new PageWindow(mailbox, folder, program_folder)),
      status_(new StatusFields),
      journal_(new JournalDock([this](const Deed& deed) { put(deed); }, [this] { show_methods(); },
                               [this] { page_->setFocus(); })),
      panels_(*this, *page_, folder,
              // Meant for the page as it stands: while that is about to be another it is dropped.
              {.act = [this](const Deed& deed) { put(deed, true); },
               .notice = [this](const QString& text) { mailbox_->notice(text.toStdString()); },
               .mention = [this](const QString& text) { statusBar()->showMessage(text, mention_stays); },
               .copy_file = [this](const std::string& file,
                                   std::optional<double> unit) { ask_for_copy(file, unit); }}),
      actions_(window_actions()),
      menus_(*menuBar(), *page_, [this](const QString& id) { act(id); }),
      recent_(new QMenu(this)),
      question_(*this,
                [this](std::size_t answer, bool stays) {
                  if (stays) next_folder_.reset();
                  put(Choose{answer});
                }),
      opening_(*this, [this](const QString& chosen) { open_in(chosen); }) {
  setAccessibleName("Vorn");
  setAcceptDrops(true);
  setCentralWidget(page_);
  setStatusBar(status_);
  setDockNestingEnabled(true);
  add_journal();
  menuBar()->setAccessibleName("Menus");
  page_->mouse_moved = [this](std::optional<PointAt> at) { show_status(at); };
  if (QAction* recent = menus_.action("recent_folders")) recent->setMenu(recent_);
  for (const QMenu* menu : menuBar()->findChildren<QMenu*>()) {
    connect(menu, &QMenu::aboutToShow, this, [this] {
      key_repeats_ = false;
      show_switches();
    });
  }
  for (const QDockWidget* dock : findChildren<QDockWidget*>())
    connect(dock, &QDockWidget::visibilityChanged, this, [this] { show_switches(); });
  for (const PanelName name : all_panels) {
    for (const char* step : {"next_core", "previous_core"})
      panels_.dock(name).area().addAction(menus_.action(step));
  }
  fill_recent_folders();
  page_->setFocus();
  show_standing({});
  show_news();
}

// Behind the first panel, which is seen first.
void MainWindow::add_journal() {
  PanelDock& site = panels_.dock(PanelName::site);
  addDockWidget(Qt::RightDockWidgetArea, journal_);
  tabifyDockWidget(&site, journal_);
  site.raise();
}

// While all of it is still there: what goes tells so.
MainWindow::~MainWindow() {
  hide();
}

void MainWindow::serve(EventMailbox& mailbox, const QString& folder) {
  mailbox_ = &mailbox;
  folder_ = folder;
  page_->serve(mailbox, folder);
  panels_.begin_anew(folder);
  close_asked_ = take_up_offered_ = false;
  withdraw_offer();
  fill_recent_folders();
  show_standing({});
  show_news();
}

void MainWindow::show_news() {
  show_title();
  page_->show_notices();
  const SharedStanding standing = page_->gate().standing();
  if (standing != shown_) show_standing(standing);
}

void MainWindow::show_standing(const SharedStanding& standing) {
  // The program waits again behind a question: what it asked before is not going to be done.
  if (standing && !standing->question && shown_ && shown_->question) next_folder_.reset();
  shown_ = standing;
  page_->stand();
  show_status(mouse_);
  menus_.show(standing ? *standing : Standing());
  show_switches();
  journal_->show_standing(standing);
  panels_.stand(standing);
  question_.show(standing);
  if (standing) offer_to_take_up(*standing);
}

// "*nowhere.rwl - Vorn" while something is not written, during long work "Stats.prn 45 % - nowhere.rwl -
// Vorn".
void MainWindow::show_title() {
  const SharedStanding standing = page_->gate().standing();
  QStringList parts{shown_characters(mailbox_->progress()), page_->subject(), program_title};
  parts.removeAll("");
  setWindowTitle((standing && standing->unsaved() ? "*" : "") + parts.join(" - "));
}

void MainWindow::show_status(std::optional<PointAt> mouse) {
  mouse_ = mouse;
  if (!shown_) return status_->show_line({}, {});
  const bool no_journal = !shown_->journal_trouble.empty();
  status_->show_line(status_line(*shown_, mouse),
                     no_journal ? "no journal: " + shown_characters(shown_->journal_trouble) : QString());
}

// What the window itself knows of the things that it switches.
void MainWindow::show_switches() {
  const auto show = [this](const char* id, bool on) {
    if (QAction* action = menus_.action(id)) action->setChecked(on);
  };
  show("journal", journal_->isVisible());
  for (const PanelName name : all_panels) {
    show(std::string(id_of(name)).c_str(), panels_.dock(name).isVisible());
  }
  show("notices", page_->shows_notices());
  show("full_screen", isFullScreen());
}

void MainWindow::put(const Deed& deed, bool repeated) {
  page_->gate().put(deed, page_->seen(), repeated);
}

void MainWindow::act(const QString& id) {
  const bool repeated = std::exchange(key_repeats_, false);
  if (const auto at = actions_.constFind(id); at != actions_.cend()) {
    if (!repeated) (*at)();
    return show_switches();
  }
  if (id == "quit" && !shown_) return close_program();
  if (!shown_) return;
  if (auto deed = deed_of(id.toStdString(), *shown_)) put(*deed, repeated);
  // A mark that the click has changed is put right: the program decides.
  if (QAction* action = menus_.action(id); action && action->isCheckable()) menus_.show(*shown_);
}

QMap<QString, MainWindow::WindowAction> MainWindow::window_actions() {
  QMap<QString, WindowAction> actions = {
      {"open_folder", [this] { opening_.ask_for_folder(folder_); }},
      {"recent_folders", [] {}},  // opens as a menu
      {"open_files", [this] { opening_.ask_for_files(folder_); }},
      {"save_corrected", [this] { save_corrected_file(); }},
      {"what_changed", [this] { show_changes(); }},
      {"use_corrected", [this] { use_corrected_file(); }},
      {"save_page", [this] { page_->start(Comfort::save); }},
      {"print_page", [this] { page_->start(Comfort::print); }},
      {"copy_page", [this] { page_->start(Comfort::copy); }},
      {"full_screen", [this] { page_->start(Comfort::full_screen); }},
      {"guide", [this] { page_->start(Comfort::guide); }},
      {"help_here", [this] { page_->ask_for_help(); }},
      {"move_sample", [this] { ask_for_move(); }},
      {"begin_sample", [this] { ask_for_beginning(); }},
      {"note", [this] { ask_for_note(); }},
      {"methods", [this] { show_methods(); }},
      {"journal", [this] { journal_->isVisible() ? journal_->hide() : journal_->enter(); }},
      {"next_core", [this] { panels_.step_core(+1); }},
      {"previous_core", [this] { panels_.step_core(-1); }},
      {"notices", [this] { page_->toggle_notices(); }},
      {"keys", [this] { show_keys(); }},
      {"about", [this] { show_about(); }},
  };
  for (const PanelName name : all_panels) {
    actions[shown_characters(id_of(name))] = [this, name] { panels_.turn(name); };
  }
  return actions;
}

// --- Opening and closing.

void MainWindow::fill_recent_folders() {
  recent_->clear();
  const QStringList folders = recent_folders();
  for (const QString& folder : folders) {
    QAction* entry = recent_->addAction(QDir::toNativeSeparators(folder).replace('&', "&&"));
    connect(entry, &QAction::triggered, this, [this, folder] { opening_.open_folder(folder); });
  }
  if (folders.isEmpty()) recent_->addAction("None Yet")->setEnabled(false);
}

void MainWindow::open_in(const QString& folder) {
  close_program();
  next_folder_ = folder;
  remember_folder(folder);
}

// Asked once, however often the user asks while the program is busy. Where no session asks back there is
// nothing to be lost.
void MainWindow::close_program() {
  next_folder_.reset();
  const SharedStanding standing = page_->gate().standing();
  if (close_asked_ && close_asked_at_ == standing) return;
  close_asked_ = true;
  close_asked_at_ = standing;
  standing ? mailbox_->put_deed(Close{}) : mailbox_->close();
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(may_close_);  // the window stays until the program has unwound
  if (!may_close_) close_program();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!local_paths(*event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QStringList paths = local_paths(*event->mimeData());
  if (paths.isEmpty()) return;
  event->setDropAction(Qt::CopyAction);  // where they lay they stay
  event->accept();
  opening_.open_any(paths);
}

// A key passes here before it becomes that of a menu.
bool MainWindow::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    key_repeats_ = static_cast<QKeyEvent&>(*event).isAutoRepeat();
  } else if (event->type() == QEvent::KeyRelease || event->type() == QEvent::MouseButtonPress) {
    key_repeats_ = false;
  }
  return QMainWindow::event(event);
}

// The offer goes when there is nothing to take up any more.
void MainWindow::offer_to_take_up(const Standing& standing) {
  if (standing.to_take_up.empty()) return withdraw_offer();
  if (take_up_offered_ || question_.is_open()) return;
  take_up_offered_ = true;
  offer_ = ask_beside(*this, "The work of an earlier session was not written. Take it up?",
                      "All that was done then is done again, up to where it ended.",
                      {"Take It Up", "Not Now"}, [this, journal = standing.to_take_up](int answer) {
                        if (answer == 0) put(TakeUp{journal});
                      });
}

void MainWindow::withdraw_offer() {
  if (!offer_) return;
  offer_->disconnect(this);
  offer_->close();
  offer_.clear();
}

// --- The actions of the window's own.

void MainWindow::ask_for_number(const QString& title, const QString& label, int value,
                                std::function<void(int)> given) {
  constexpr int furthest = 99'999;
  auto* dialog = new QInputDialog(this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(title + " - Vorn");
  dialog->setInputMode(QInputDialog::IntInput);
  dialog->setIntRange(-furthest, furthest);
  dialog->setLabelText(label);
  dialog->setIntValue(value);
  connect(dialog, &QInputDialog::intValueSelected, this, std::move(given));
  dialog->open();
}

void MainWindow::ask_for_move() {
  ask_for_number("Move the sample", "Move the sample by so many years (earlier with a minus):", 0,
                 [this](int years) {
                   if (!shown_ || years == 0) return;
                   if (auto deed = move_sample_by(years, *shown_)) put(*deed);
                 });
}

void MainWindow::ask_for_beginning() {
  const int now = shown_ && shown_->situation ? shown_->situation->sample.first_year : 0;
  ask_for_number("Begin the sample", "Move the sample so that it begins in the year:", now, [this](int year) {
    if (!shown_) return;
    if (auto deed = begin_sample_in(year, *shown_)) put(*deed);
  });
}

void MainWindow::ask_for_note() {
  if (!shown_ || shown_->taken == 0 || shown_->taken > shown_->decisions.size()) return;
  const std::size_t last = shown_->taken - 1;
  const Decision& decision = shown_->decisions[last];
  auto* dialog = new QInputDialog(this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle("Note - Vorn");
  dialog->setLabelText("Why? " + shown_characters(decision.what));
  dialog->setTextValue(shown_characters(decision.note));
  dialog->resize(fontMetrics().horizontalAdvance('0') * 70, dialog->sizeHint().height());
  connect(dialog, &QInputDialog::textValueSelected, this, [this, last](const QString& note) {
    put(TakeNote{last, note.simplified().toStdString()});
  });
  dialog->open();
}

void MainWindow::use_corrected_file() {
  if (!shown_ || !shown_->situation) return;
  const std::string before = shown_->situation->file, after = shown_->situation->raw_output;
  ask_beside(
      *this, "Work with " + shown_characters(after) + " in place of " + shown_characters(before) + "?",
      "Its name takes the other's place in Vorn.fil, and the list as it was is kept. The program begins anew "
      "with it.",
      {"Use It", "Cancel"}, [this, before, after](int answer) {
        if (answer != 0) return;
        DiskFiles files(QFile::encodeName(folder_).toStdString());
        if (const auto failure = use_corrected(files, before, after)) return tell(shown_characters(*failure));
        open_in(folder_);
      });
}

void MainWindow::save_corrected_file() {
  if (!shown_ || !shown_->situation) return;
  DiskFiles files(QFile::encodeName(folder_).toStdString());
  const CorrectedFile corrected = corrected_file(files, *shown_->situation);
  const QString name = shown_characters(corrected.file);
  if (!corrected.made.refused.empty())
    return tell("The cores cannot be put back into " + name + ".\n\n" +
                shown_sentences(corrected.made.refused));
  if (!corrected.made.is_changed)
    return tell(corrected.not_yet.empty()
                    ? "The cores are as they stand in " + name + ": there is nothing to save."
                    : "The change on the page is not saved yet: Save Change comes first.");
  ask_beside(*this, "Put the corrected cores back into " + name + "?",
             shown_sentences(corrected.changes) + "\n\n" + shown_sentences(corrected.made.done) +
                 "\n\nAll other lines stay as they are. Where " + name + " itself is written, " +
                 (corrected.oldest.empty()
                      ? "it is kept before as " + name + ".orig."
                      : shown_characters(corrected.oldest) + ", its oldest self, stays as it is."),
             {"Save as a New File...", "Save over " + name, "Cancel"}, [this, corrected](int answer) {
               if (answer == 0) return save_corrected_as(corrected);
               if (answer != 1) return;
               DiskFiles folder(QFile::encodeName(folder_).toStdString());
               if (const auto failure = save_over_original(folder, corrected))
                 return tell(shown_characters(*failure));
               statusBar()->showMessage(shown_characters(corrected.file) + " is written", mention_stays);
             });
}

void MainWindow::save_corrected_as(const CorrectedFile& corrected) {
  const QFileInfo original(QDir(folder_).filePath(QFile::decodeName(corrected.file.c_str())));
  const QString ending = original.suffix().isEmpty() ? "" : '.' + original.suffix();
  auto* dialog = new QFileDialog(this, "The corrected file", original.absolutePath());
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->selectFile(original.completeBaseName() + "-corrected" + ending);
  connect(dialog, &QFileDialog::fileSelected, this, [this, corrected, original](const QString& path) {
    if (QFileInfo(path) == original)
      return tell("That is the file that the cores come from: \"Save over\" keeps it as it was before.");
    if (const auto failure = write_file(path, QByteArray::fromStdString(corrected.made.bytes)))
      return tell(*failure);
    statusBar()->showMessage(QDir::toNativeSeparators(path) + " is written", mention_stays);
  });
  dialog->open();
}

void MainWindow::show_changes() {
  if (!shown_ || !shown_->situation) return;
  DiskFiles files(QFile::encodeName(folder_).toStdString());
  const CorrectedFile corrected = corrected_file(files, *shown_->situation);
  show_text(*this, {.title = "What did I change?",
                    .text = shown_lines(changes_page(corrected)),
                    .name = "changes.txt",
                    .folder = folder_});
}

void MainWindow::ask_for_copy(const std::string& file, std::optional<double> unit) {
  DiskFiles files(QFile::encodeName(folder_).toStdString());
  const Careful careful = shown_ && shown_->situation ? shown_->situation->settings.careful : Careful();
  const CleanCopy copy = clean_copy(files, file, unit, careful);
  const QString words = shown_sentences(copy.words);
  if (copy.bytes.empty()) return tell("No copy of " + shown_characters(file) + ": " + words);
  ask_beside(*this, "Write " + shown_characters(copy.name) + " and work with it?",
             "What is done for it to be read whole:\n" + words + "\n\n" + shown_characters(file) +
                 " stays as it is. The copy takes its place in Vorn.fil, the list as it was is kept, and the "
                 "program begins anew.",
             {"Write and Use It", "Cancel"}, [this, file, copy](int answer) {
               if (answer != 0) return;
               DiskFiles folder(QFile::encodeName(folder_).toStdString());
               if (const auto failure = use_clean_copy(folder, file, copy))
                 return tell(shown_characters(*failure));
               open_in(folder_);
             });
}

void MainWindow::show_methods() {
  if (!shown_) return;
  show_text(*this, {.title = "Text for the methods section",
                    .text = QString::fromStdString(methods_text(*shown_, VORN_VERSION)),
                    .name = "methods.txt",
                    .folder = folder_});
}

void MainWindow::show_keys() {
  show_text(*this, {.title = "Keys", .text = QString::fromStdString(keys_page())});
}

void MainWindow::show_about() {
  auto* box = new QMessageBox(QMessageBox::NoIcon, "About Vorn", "Vorn " VORN_VERSION, QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setIconPixmap(windowIcon().pixmap(64, 64));
  box->setInformativeText(
      QString("Cross-dating of tree-ring series.\n\nMIT License, the Vorn developers.\n\nShown by "
              "Qt %1, under the LGPL 3.")
          .arg(qVersion()));
  box->open();
}

void MainWindow::tell(const QString& text) {
  auto* box = new QMessageBox(QMessageBox::Warning, "Vorn", text, QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

// --- Its place.

void MainWindow::arrange() {
  const QScreen* on = screen();
  restore_place(*this, first_size(on ? on->availableSize() : QSize(1600, 1200)));
  if (restoreState(remembered(docks_key), docks_version)) return;
  // The page is as wide as the height lets it be; what is left beside it is the docks'.
  const int left = width() - (height() - bars_height()) * Page::width / Page::height;
  PanelDock& site = panels_.dock(PanelName::site);
  if (left < narrowest_dock) return site.hide(), journal_->hide();
  resizeDocks({&site}, {std::min(left, widest_dock)}, Qt::Horizontal);
}

int MainWindow::bars_height() const {
  return menuBar()->sizeHint().height() + statusBar()->sizeHint().height();
}

void MainWindow::remember_arrangement() const {
  remember_place(*this);
  remember(docks_key, saveState(docks_version));
}

}  // namespace vorn
