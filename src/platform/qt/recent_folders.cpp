#include "platform/qt/recent_folders.h"

#include <QDir>

#include "platform/qt/settings.h"

namespace vorn {
namespace {

constexpr const char* recent_key = "recent";
constexpr int most_recent = 8;

}  // namespace

QStringList recent_folders() {
  QStringList folders = QString::fromUtf8(remembered(recent_key)).split('\n', Qt::SkipEmptyParts);
  folders.removeIf([](const QString& folder) { return !QDir(folder).exists(); });
  return folders.mid(0, most_recent);
}

void remember_recent_folder(const QString& folder) {
  const QString whole = QDir::cleanPath(QDir(folder).absolutePath());
  if (whole.contains('\n')) return;  // the names are kept a line each
  QStringList folders = recent_folders();
  folders.removeAll(whole);
  folders.prepend(whole);
  remember(recent_key, folders.mid(0, most_recent).join('\n').toUtf8());
}

}  // namespace vorn
