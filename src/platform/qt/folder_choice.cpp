#include "platform/qt/folder_choice.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QIcon>
#include <QMessageBox>
#include <QPushButton>
#include <QStandardPaths>

#include "platform/qt/file_writing.h"
#include "platform/qt/installed_files.h"
#include "platform/qt/settings.h"

namespace vorn {
namespace {

constexpr const char* folder_key = "folder";
const QString list_name = QStringLiteral("Vorn.fil");
constexpr int most_names = 100, longest_name = 60;  // of a list, in bytes

bool has_list(const QString& folder) {
  return !folder.isEmpty() && QFile::exists(QDir(folder).filePath(list_name));
}

// Shows a question with a button for each answer, the last one to leave. Returns the number of the answer.
int ask(const QString& text, const QString& more, const QStringList& answers) {
  QMessageBox box(QMessageBox::NoIcon, "Vorn", text);
  box.setIconPixmap(QGuiApplication::windowIcon().pixmap(48, 48));
  box.setInformativeText(more);
  QList<QAbstractButton*> buttons;
  for (const QString& answer : answers) {
    const bool leaves = buttons.size() + 1 == answers.size();
    buttons << box.addButton(answer, leaves ? QMessageBox::RejectRole : QMessageBox::ActionRole);
  }
  box.setDefaultButton(static_cast<QPushButton*>(buttons.first()));
  box.setEscapeButton(buttons.last());
  box.exec();
  return static_cast<int>(buttons.indexOf(box.clickedButton()));
}

void tell(const QString& failure) {
  QMessageBox::warning(nullptr, "Vorn", failure);
}

// A folder that the user picks, with a list in it: one that is there, or one written on the way.
std::optional<QString> pick_folder(const QString& start) {
  const QString folder = QFileDialog::getExistingDirectory(nullptr, "The folder to work in", start);
  if (folder.isEmpty()) return {};
  if (has_list(folder)) return folder;
  const QStringList names = names_for_list(folder);
  const QString shown = QDir::toNativeSeparators(folder);
  if (names.isEmpty()) {
    tell(shown +
         " holds neither Vorn.fil, the list of the files to read, nor ring-width files that are known by "
         "their "
         "endings.");
    return {};
  }
  const int answer = ask(shown + " holds no Vorn.fil, the list of the files to read.",
                         "A list can be made of the files there: " + names.join(", ") +
                             ". It is plain text, one "
                             "name a line, and can be changed at any time.",
                         {"Make the List", "Back"});
  if (answer != 0) return {};
  const auto failure = write_list(folder, names);
  if (failure) tell(*failure);
  return failure ? std::nullopt : std::optional(folder);
}

std::optional<QString> examples_to_work_on(const QStringList& data_places, const QString& copy) {
  const auto examples = find_installed("examples", data_places);
  const auto failure = examples ? copy_examples(*examples, copy)
                                : "The examples were looked for in\n" + data_places.join('\n');
  if (failure) tell(*failure);
  return failure ? std::nullopt : std::optional(copy);
}

}  // namespace

void remember_folder(const QString& folder) {
  remember(folder_key, folder.toUtf8());
}

std::optional<QString> copy_examples(const QString& examples, const QString& copy) {
  if (has_list(copy)) return {};
  if (!QDir().mkpath(copy)) return copy + " cannot be made";
  QStringList names = QDir(examples).entryList(QDir::Files);
  // The list comes last: a copy that has it is whole.
  if (names.removeOne(list_name)) names << list_name;
  for (const QString& name : names) {
    const QString to = QDir(copy).filePath(name);
    if (QFile::exists(to)) continue;
    QFile file(QDir(examples).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) return file.fileName() + ": " + file.errorString();
    if (auto failure = write_file(to, file.readAll())) return failure;
  }
  return {};
}

QStringList names_for_list(const QString& folder) {
  const QDir dir(folder);
  const auto files = QDir::Files | QDir::Readable;
  QStringList names = dir.entryList({"*.rwl", "*.raw", "*.rwm", "*.fh"}, files, QDir::Name) +
                      dir.entryList({"*.crn"}, files, QDir::Name);
  names.removeIf([](const QString& name) {
    return QFile::encodeName(name).size() > longest_name ||
           name.compare("Edit.raw", Qt::CaseInsensitive) == 0;
  });
  return names.mid(0, most_names);
}

std::optional<QString> write_list(const QString& folder, const QStringList& names) {
  return write_file(QDir(folder).filePath(list_name), QFile::encodeName(names.join('\n') + '\n'));
}

std::optional<QString> choose_folder(const QStringList& data_places) {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString copy = QDir(documents).filePath("Vorn examples");
  for (;;) {
    const QString last = QString::fromUtf8(remembered(folder_key));
    QStringList answers{"Choose a Folder...", "Try the Examples", "Quit"};
    if (has_list(last)) answers.prepend("Open " + QDir(last).dirName());
    const int answer = ask("Which folder do you want to work in?",
                           "In it, Vorn.fil lists the ring-width files to read; reports and saved files are "
                           "written there too. The examples are copied to " +
                               QDir::toNativeSeparators(copy) + ".",
                           answers) +
                       (has_list(last) ? 0 : 1);
    std::optional<QString> folder;
    if (answer == 0) folder = last;
    if (answer == 1) folder = pick_folder(QDir(last).exists() && !last.isEmpty() ? last : documents);
    if (answer == 2) folder = examples_to_work_on(data_places, copy);
    if (answer >= 3) return {};
    if (!folder) continue;
    remember_folder(*folder);
    return folder;
  }
}

}  // namespace vorn
