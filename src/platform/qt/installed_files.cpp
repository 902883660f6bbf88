#include "platform/qt/installed_files.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vorn {

QStringList places_of_installed_files(const QString& program_folder) {
  constexpr int most_levels = 6;  // a build folder is not deeper
  QDir folder(program_folder);
  QStringList places{QDir::cleanPath(folder.filePath(VORN_DATA_FROM_PROGRAM))};
  for (int level = 0; level < most_levels && folder.cdUp(); ++level) {
    // Somebody's own docs/ or examples/ further up are not ours.
    if (folder.exists("docs/guide.md") && folder.exists("examples/Vorn.fil")) places << folder.path();
  }
  return places;
}

std::optional<QString> find_installed(const QString& name, const QStringList& places) {
  for (const QString& place : places) {
    const QString path = QDir(place).filePath(name);
    if (QFileInfo::exists(path)) return path;
  }
  return {};
}

std::string installed_with_program(const char* name) {
  const auto found = find_installed(name, places_of_installed_files(QCoreApplication::applicationDirPath()));
  return found ? QFile::encodeName(*found).toStdString() : std::string();
}

}  // namespace vorn
