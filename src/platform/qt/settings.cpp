#include "platform/qt/settings.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

namespace vorn {
namespace {

const QString place_key = QStringLiteral("window/place");

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

QSettings program_settings() {
  return QSettings(QSettings::IniFormat, QSettings::UserScope, "Vorn", "Vorn");
}

void remember_place(const QWidget& window) {
  program_settings().setValue(place_key, window.saveGeometry());
}

void restore_place(QWidget& window, QSize first_size) {
  window.resize(first_size);
  const QPoint chosen_by_system = window.pos();
  const bool restored = window.restoreGeometry(program_settings().value(place_key).toByteArray());
  window.setWindowState(window.windowState() & ~(Qt::WindowFullScreen | Qt::WindowMinimized));
  if (restored && is_within_reach(window)) return;
  window.move(chosen_by_system);
  window.setAttribute(Qt::WA_Moved, false);
  window.resize(first_size);
}

}  // namespace vorn
