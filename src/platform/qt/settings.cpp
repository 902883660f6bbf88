#include "platform/qt/settings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMap>
#include <QScreen>
#include <QStandardPaths>
#include <algorithm>

#include "records/disk_files.h"

namespace vorn {
namespace {

constexpr const char* place_key = "place";
constexpr qint64 longest_file = 1 << 16;

QMap<QByteArray, QByteArray> read_settings() {
  QMap<QByteArray, QByteArray> values;
  QFile file(settings_file());
  if (!file.open(QIODevice::ReadOnly)) return values;
  for (const QByteArray& line : file.read(longest_file).split('\n')) {
    const auto at = line.indexOf('=');
    if (at > 0) values[line.left(at)] = QByteArray::fromPercentEncoding(line.mid(at + 1));
  }
  return values;
}

// Whether enough of the window can be seen for it to be taken hold of.
bool is_within_reach(const QWidget& window) {
  constexpr int enough = 100;  // pixels
  const QRect place = window.geometry();
  return std::ranges::any_of(QGuiApplication::screens(), [&place](const QScreen* screen) {
    const QRect seen = screen->availableGeometry() & place;
    return seen.width() >= enough && seen.height() >= enough;
  });
}

}  // namespace

QString settings_file() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/Vorn/Vorn.ini";
}

QByteArray remembered(const QByteArray& key) {
  return read_settings().value(key);
}

void remember(const QByteArray& key, const QByteArray& value) {
  auto values = read_settings();
  values[key] = value;
  QByteArray lines;
  for (auto at = values.cbegin(); at != values.cend(); ++at) {
    lines += at.key() + '=' + at.value().toPercentEncoding("/ ") + '\n';
  }
  const QString file = settings_file();
  QDir().mkpath(QFileInfo(file).path());
  DiskFiles files;
  // What cannot be kept is not worth a word: the next window has the first size.
  write_whole(files, QFile::encodeName(file).toStdString(), lines.toStdString());
}

void remember_place(const QWidget& window) {
  remember(place_key, window.saveGeometry());
}

void restore_place(QWidget& window, QSize first_size) {
  window.resize(first_size);
  const QPoint chosen_by_system = window.pos();
  const bool restored = window.restoreGeometry(remembered(place_key));
  window.setWindowState(window.windowState() & ~(Qt::WindowFullScreen | Qt::WindowMinimized));
  if (restored && is_within_reach(window)) return;
  window.move(chosen_by_system);
  window.setAttribute(Qt::WA_Moved, false);
  window.resize(first_size);
}

}  // namespace vorn
