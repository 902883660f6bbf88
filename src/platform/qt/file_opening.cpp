#include "platform/qt/file_opening.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QSet>
#include <algorithm>

#include "platform/qt/file_writing.h"
#include "platform/qt/folder_choice.h"
#include "platform/qt/question_box.h"
#include "platform/qt/typefaces.h"
#include "records/disk_files.h"

namespace vorn {
namespace {

const QString list_name = QStringLiteral("Vorn.fil");
constexpr int most_names = 100, longest_name = 60;  // of a list, in bytes
constexpr int most_shown = 12;                      // names in a question

QString path_in(const QString& folder, const QString& name) {
  return QDir(folder).filePath(name);
}

QString shown_names(const QStringList& names) {
  if (names.size() <= most_shown) return names.join(", ");
  return names.mid(0, most_shown).join(", ") + QString(" and %1 more").arg(names.size() - most_shown);
}

std::optional<QByteArray> bytes_of(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

bool is_chronology(const QString& name) {
  return name.endsWith(".crn", Qt::CaseInsensitive);
}

QFileDialog* dialog_for(QWidget& window, const QString& title, const QString& start,
                        QFileDialog::FileMode mode) {
  auto* dialog = new QFileDialog(&window, title, start);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setFileMode(mode);
  if (mode == QFileDialog::Directory) dialog->setOption(QFileDialog::ShowDirsOnly);
  return dialog;
}

QString first_free_name(const QString& folder) {
  for (int number = 1;; ++number) {
    QString path = path_in(folder, list_name + '.' + QString::number(number));
    if (!QFileInfo::exists(path) && !QFileInfo(path).isSymLink()) return path;
  }
}

}  // namespace

QStringList in_order_of_list(QStringList names) {
  names.sort();
  names.removeDuplicates();
  std::stable_partition(names.begin(), names.end(), [](const QString& name) { return !is_chronology(name); });
  return names;
}

QString trouble_with_names(const QStringList& names) {
  if (names.isEmpty()) return "There is no file among them.";
  if (names.size() > most_names) {
    return QString("A list takes %1 files, and these are %2.").arg(most_names).arg(names.size());
  }
  for (const QString& name : names) {
    const QByteArray bytes = QFile::encodeName(name);
    if (bytes.size() > longest_name || bytes.contains('\n')) {
      return name + QString(": a name in the list has at most %1 characters, on one line.").arg(longest_name);
    }
  }
  return {};
}

std::optional<QString> replace_list(const QString& folder, const QStringList& names) {
  const QString list = path_in(folder, list_name);
  if (QFile::exists(list)) {
    const auto before = bytes_of(list);
    if (!before) return list + " cannot be read";
    // A copy first, so that there is a list at every moment.
    if (auto failure = write_file(first_free_name(folder), *before)) return failure;
  }
  return write_list(folder, names);
}

void FileOpening::ask_for_folder(const QString& start) {
  QFileDialog* dialog = dialog_for(window_, "The folder to work in", start, QFileDialog::Directory);
  QObject::connect(dialog, &QFileDialog::fileSelected, &window_,
                   [this](const QString& path) { open_folder(path); });
  dialog->open();
}

void FileOpening::ask_for_files(const QString& start) {
  QFileDialog* dialog = dialog_for(window_, "The files to work on", start, QFileDialog::ExistingFiles);
  dialog->setNameFilters(
      {"Ring widths and chronologies (*.rwl *.raw *.rwm *.fh *.crn *.txt *.dat *.csv *.tsv "
       "*.xlsx *.pos *.d *.xml)",
       "All files (*)"});
  QObject::connect(dialog, &QFileDialog::filesSelected, &window_,
                   [this](const QStringList& paths) { open_files(paths); });
  dialog->open();
}

void FileOpening::open_any(const QStringList& paths) {
  if (paths.size() == 1 && QFileInfo(paths.first()).isDir()) return open_folder(paths.first());
  open_files(paths);
}

void FileOpening::open_folder(const QString& folder) {
  if (!QFileInfo(folder).isDir()) return tell(QDir::toNativeSeparators(folder) + " is no folder.");
  if (QFile::exists(path_in(folder, list_name))) return opened_(folder);
  const QStringList names = names_for_list(folder);
  if (!names.isEmpty()) return confirm(folder, names);
  tell(QDir::toNativeSeparators(folder) +
       " holds neither Vorn.fil, the list of the files to read, nor ring-width files that are known by their "
       "endings.");
}

void FileOpening::open_files(const QStringList& paths) {
  QStringList files, names;
  QSet<QString> folders;
  for (const QString& path : paths) {
    const QFileInfo file(path);
    if (!file.isFile()) continue;
    files << file.absoluteFilePath();
    names << file.fileName();
    folders << file.absolutePath();
  }
  // The list itself stands for its folder.
  if (files.size() == 1 && names.first() == list_name) return open_folder(*folders.begin());
  if (files.isEmpty()) return tell("There is no file among them.");
  if (folders.size() > 1) return ask_for_copies(files);
  confirm(*folders.begin(), in_order_of_list(names));
}

void FileOpening::ask_for_copies(const QStringList& paths) {
  ask_beside(window_, "These files lie in several folders.",
             "A list names files of its own folder. They can be copied into one; the files stay as they are.",
             {"Choose the Folder for the Copies...", "Cancel"}, [this, paths](int answer) {
               if (answer != 0) return;
               QFileDialog* dialog =
                   dialog_for(window_, "The folder for the copies", QFileInfo(paths.first()).absolutePath(),
                              QFileDialog::Directory);
               QObject::connect(dialog, &QFileDialog::fileSelected, &window_,
                                [this, paths](const QString& folder) { copy_to(folder, paths); });
               dialog->open();
             });
}

// Nothing that stands there is written over: everything is looked at first.
void FileOpening::copy_to(const QString& folder, const QStringList& paths) {
  QMap<QString, QByteArray> copies;
  for (const QString& path : paths) {
    const QString name = QFileInfo(path).fileName(), target = path_in(folder, name);
    const auto bytes = bytes_of(path);
    if (!bytes) return tell(path + " cannot be read.");
    const bool is_other = QFileInfo::exists(target) && bytes_of(target) != bytes;
    if (is_other || copies.value(name, *bytes) != *bytes) {
      return tell("Nothing was copied: there is another file named " + name + ".");
    }
    copies[name] = *bytes;
  }
  if (const QString trouble = trouble_with_names(copies.keys()); !trouble.isEmpty()) return tell(trouble);
  for (auto copy = copies.cbegin(); copy != copies.cend(); ++copy) {
    const QString target = path_in(folder, copy.key());
    if (QFileInfo::exists(target)) continue;
    if (const auto failure = write_file(target, copy.value())) return tell(*failure);
  }
  confirm(folder, in_order_of_list(copies.keys()));
}

// Files of layouts that the program does not read are read into copies, which are listed in their place.
FileOpening::Listed FileOpening::listed(const QString& folder, const QStringList& names) {
  Listed all;
  DiskFiles files(QFile::encodeName(folder).toStdString());
  for (const QString& name : names) {
    const auto copy = copy_of_unread(files, QFile::encodeName(name).toStdString());
    all.names << (copy ? QFile::decodeName(copy->name.c_str()) : name);
    if (!copy) continue;
    all.words += name + " is read into " + all.names.last() + ".\n";
    all.copies.push_back(*copy);
  }
  all.names.removeDuplicates();
  return all;
}

void FileOpening::confirm(const QString& folder, const QStringList& picked) {
  if (const QString trouble = trouble_with_names(picked); !trouble.isEmpty()) return tell(trouble);
  const Listed list = listed(folder, picked);
  const QStringList& names = list.names;
  const QString shown = QDir::toNativeSeparators(folder);
  const QString files = shown_names(names) + ".\n\n" + (list.words.isEmpty() ? "" : list.words + '\n');
  if (!QFile::exists(path_in(folder, list_name))) {
    ask_beside(window_, "Work in " + shown + "?",
               files +
                   "Vorn.fil, the list of the files to read, is made there, and reports and saved files are "
                   "written there.",
               {"Make the List", "Cancel"}, [this, folder, list](int answer) {
                 if (answer == 0) make_list(folder, list);
               });
    return;
  }
  if (bytes_of(path_in(folder, list_name)) == QFile::encodeName(names.join('\n') + '\n'))
    return opened_(folder);
  ask_beside(window_, shown + " has a list of files already. Replace it?",
             files + "The list that stands there, Vorn.fil, is kept as " +
                 QFileInfo(first_free_name(folder)).fileName() + '.',
             {"Work with the List as It Is", "Replace the List", "Cancel"}, [this, folder, list](int answer) {
               if (answer == 0) opened_(folder);
               if (answer == 1) make_list(folder, list);
             });
}

void FileOpening::make_list(const QString& folder, const Listed& list) {
  DiskFiles files(QFile::encodeName(folder).toStdString());
  for (const CleanCopy& copy : list.copies) {
    if (const auto failure = write_clean_copy(files, copy)) return tell(shown_characters(*failure));
  }
  if (const auto failure = replace_list(folder, list.names)) return tell(*failure);
  opened_(folder);
}

void FileOpening::tell(const QString& trouble) {
  auto* box = new QMessageBox(QMessageBox::Warning, "Vorn", trouble, QMessageBox::Ok, &window_);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

}  // namespace vorn
