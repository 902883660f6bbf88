#include "platform/qt/readable_letters.h"

#include <QApplication>
#include <QEvent>
#include <array>
#include <utility>

namespace vorn {
namespace {

constexpr std::array<std::pair<QPalette::ColorRole, QPalette::ColorRole>, 3> letters_on_grounds{
    {{QPalette::WindowText, QPalette::Window},
     {QPalette::Text, QPalette::Base},
     {QPalette::ButtonText, QPalette::Button}}};

QColor between(const QColor& a, const QColor& b) {
  return {(a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2};
}

// Told only when something changes: it is told of that again.
void make_readable() {
  const QPalette now = QApplication::palette(), readable = with_readable_disabled(now);
  if (readable != now) QApplication::setPalette(readable);
}

}  // namespace

QPalette with_readable_disabled(QPalette palette) {
  for (const auto& [letters, ground] : letters_on_grounds) {
    palette.setColor(
        QPalette::Disabled, letters,
        between(palette.color(QPalette::Active, letters), palette.color(QPalette::Active, ground)));
  }
  return palette;
}

ReadableLetters::ReadableLetters(QObject* application) : QObject(application) {
  make_readable();
  application->installEventFilter(this);
}

bool ReadableLetters::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::ApplicationPaletteChange && watched == parent()) make_readable();
  return false;
}

}  // namespace vorn
