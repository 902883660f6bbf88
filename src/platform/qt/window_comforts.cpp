#include "platform/qt/window_comforts.h"

#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPageLayout>
#include <QPrintDialog>
#include <QPrinter>

#include "platform/qt/guide_window.h"
#include "platform/qt/installed_files.h"
#include "platform/qt/page_printer.h"

namespace vorn {
namespace {

bool is_with_control(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
#ifdef Q_OS_MACOS
  if (held == Qt::MetaModifier) return true;  // the key named Control; Command is the other
#endif
  return held == Qt::ControlModifier;
}

// "png" of "PNG picture (*.png)"
QString suffix_of(const QString& filter) {
  return filter.section("*.", 1).chopped(1);
}

// The same name with the ending of another kind of picture.
QString with_suffix(const QString& path, const QString& suffix) {
  const QFileInfo file(path);
  return file.dir().filePath(file.completeBaseName() + '.' + suffix);
}

}  // namespace

std::optional<Comfort> comfort_of(const QKeyEvent& event) {
  if (event.key() == Qt::Key_F11 && event.modifiers() == Qt::NoModifier) return Comfort::full_screen;
  if (!is_with_control(event)) return {};
  switch (event.key()) {
    case Qt::Key_S:
      return Comfort::save;
    case Qt::Key_P:
      return Comfort::print;
    case Qt::Key_C:
      return Comfort::copy;
    case Qt::Key_H:
      return Comfort::guide;
    default:
      return {};
  }
}

WindowComforts::WindowComforts(QWidget& window, const Typefaces& typefaces, QString folder,
                               QString program_folder)
    : window_(window),
      program_folder_(std::move(program_folder)),
      folder_(std::move(folder)),
      typefaces_(typefaces) {}

WindowComforts::~WindowComforts() {
  delete guide_;
}

void WindowComforts::start(Comfort comfort, std::shared_ptr<const Page> page, const QString& subject) {
  if (!page) page = std::make_shared<const Page>();
  switch (comfort) {
    case Comfort::full_screen:
      return toggle_full_screen();
    case Comfort::save:
      return save(page, subject);
    case Comfort::print:
      return print(page, subject);
    case Comfort::copy:
      return copy(*page);
    case Comfort::guide:
      return show_guide();
  }
}

void WindowComforts::toggle_full_screen() {
  QWidget& whole = *window_.window();
  whole.setWindowState(whole.windowState() ^ Qt::WindowFullScreen);
}

void WindowComforts::save(const SharedPage& page, const QString& subject) {
  auto* dialog = new QFileDialog(&window_, "Save as a picture", folder_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilters({"PNG picture (*.png)", "SVG drawing (*.svg)", "PDF document (*.pdf)"});
  dialog->setDefaultSuffix("png");
  const QString name = QFileInfo(subject).completeBaseName();
  dialog->selectFile((name.isEmpty() ? "page" : name) + ".png");
  QObject::connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString& filter) {
    dialog->setDefaultSuffix(suffix_of(filter));
    const QStringList chosen = dialog->selectedFiles();
    if (!chosen.isEmpty()) dialog->selectFile(with_suffix(chosen.first(), suffix_of(filter)));
  });
  QObject::connect(dialog, &QFileDialog::fileSelected, &window_, [this, page](const QString& path) {
    folder_ = QFileInfo(path).path();
    if (const auto failure = write_page(*page, QFile::encodeName(path).toStdString(), files_, pictures_))
      tell(QString::fromStdString(*failure));
  });
  dialog->open();
}

void WindowComforts::print(const SharedPage& page, const QString& subject) {
  // Shared with what is done when the dialog ends: it outlives the dialog.
  const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
  const bool is_wide = page->across() >= page->down();
  printer->setPageOrientation(is_wide ? QPageLayout::Landscape : QPageLayout::Portrait);
  printer->setDocName(subject.isEmpty() ? "Vorn" : "Vorn " + subject);
  printer->setCreator("Vorn");
  auto* dialog = new QPrintDialog(printer.get(), &window_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setOption(QAbstractPrintDialog::PrintPageRange, false);
  QObject::connect(dialog, qOverload<QPrinter*>(&QPrintDialog::accepted), &window_,
                   [this, page, printer](QPrinter*) {
                     if (const auto failure = print_page(*page, typefaces_, *printer)) {
                       tell(QString::fromStdString(*failure));
                     }
                   });
  dialog->open();
}

void WindowComforts::copy(const Page& page) {
  const int pixels_across = page.across();  // 254 to the inch on an A4 sheet
  QGuiApplication::clipboard()->setImage(page_image(page, typefaces_, pixels_across));
}

void WindowComforts::show_guide() {
  const QStringList places = places_of_installed_files(program_folder_);
  const auto guide = find_installed("docs/guide.md", places);
  if (!guide) return tell("The user's guide, docs/guide.md, was looked for in\n" + places.join('\n'));
  if (!guide_) guide_ = new GuideWindow(*guide);
  guide_->show();
  guide_->raise();
  guide_->activateWindow();
}

void WindowComforts::tell(const QString& failure) {
  auto* box = new QMessageBox(QMessageBox::Warning, "Vorn", failure, QMessageBox::Ok, &window_);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace vorn
