#include "platform/qt/text_window.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/qt/file_writing.h"

namespace vorn {
namespace {

constexpr int columns = 110, lines = 32;

void ask_and_save(QDialog& window, const ReadableText& text) {
  auto* dialog = new QFileDialog(&window, "Save the text", text.folder, "Text (*.txt)");
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setDefaultSuffix("txt");
  dialog->selectFile(text.name);
  QObject::connect(dialog, &QFileDialog::fileSelected, &window,
                   [&window, bytes = text.text.toUtf8()](const QString& path) {
                     const auto failure = write_file(path, bytes);
                     if (!failure) return;
                     auto* box =
                         new QMessageBox(QMessageBox::Warning, "Vorn", *failure, QMessageBox::Ok, &window);
                     box->setAttribute(Qt::WA_DeleteOnClose);
                     box->open();
                   });
  dialog->open();
}

}  // namespace

QDialog* show_text(QWidget& window, const ReadableText& text) {
  auto* dialog = new QDialog(&window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(text.title + " - Vorn");
  auto* field = new QPlainTextEdit(text.text);
  field->setReadOnly(true);
  field->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  field->setLineWrapMode(QPlainTextEdit::NoWrap);
  field->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  field->setAccessibleName(text.title);
  field->setTabChangesFocus(true);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  QPushButton* copy = buttons->addButton("Copy", QDialogButtonBox::ActionRole);
  QObject::connect(copy, &QPushButton::clicked, dialog,
                   [words = text.text] { QGuiApplication::clipboard()->setText(words); });
  if (!text.name.isEmpty()) {
    QPushButton* save = buttons->addButton("Save...", QDialogButtonBox::ActionRole);
    QObject::connect(save, &QPushButton::clicked, dialog, [dialog, text] { ask_and_save(*dialog, text); });
  }
  QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
  auto* column = new QVBoxLayout(dialog);
  column->addWidget(field);
  column->addWidget(buttons);
  const QFontMetrics letters(field->font());
  const QSize wanted(columns * letters.horizontalAdvance('0'), lines * letters.lineSpacing());
  dialog->resize(wanted.boundedTo(window.screen()->availableSize() * 9 / 10));
  dialog->show();
  return dialog;
}

}  // namespace vorn
