#include "platform/qt/typefaces.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QStringList>
#include <iostream>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

constexpr int font_size = 100;  // pixels; large, so that nothing of the metrics is lost to rounding

// The first of `families` that is there; otherwise the last, for which the system puts what it has.
QString family_of(const QStringList& families) {
  for (const QString& family : families) {
    if (QFontDatabase::hasFamily(family)) return family;
  }
  std::cerr
      << "vorn: the font " << families.first().toStdString()
      << " is missing, texts may not fit their buttons (on Debian: apt-get install fonts-liberation2)\n";
  return families.last();
}

Typeface typeface(const QStringList& families, QFont::StyleHint hint) {
  QFont font(family_of(families));
  font.setStyleHint(hint);
  font.setPixelSize(font_size);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setKerning(false);
  const double capital = QFontMetricsF(font).capHeight();
  return {font, capital > 0 ? capital : 0.7 * font_size};
}

}  // namespace

Typefaces::Typefaces()
    : arial_(typeface({"Liberation Sans", "Arial", "Helvetica"}, QFont::SansSerif)),
      times_(typeface({"Liberation Serif", "Times New Roman", "Times"}, QFont::Serif)) {}

QString shown_characters(std::string_view bytes) {
  const auto size = static_cast<qsizetype>(bytes.size());
  const QString all =
      is_utf8(bytes) ? QString::fromUtf8(bytes.data(), size) : QString::fromLatin1(bytes.data(), size);
  QString shown;
  for (const char32_t character : all.toUcs4()) {
    if (QChar::category(character) == QChar::Other_Control || QChar::isNonCharacter(character)) continue;
    shown += QString::fromUcs4(&character, 1);
  }
  return shown;
}

}  // namespace vorn
