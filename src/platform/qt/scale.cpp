#include "platform/qt/scale.h"

#include <QList>

namespace vorn {

QByteArray raised_to_one(const QByteArray& scales) {
  QByteArrayList parts = scales.split(';');
  for (QByteArray& part : parts) {
    const auto number = part.indexOf('=') + 1;
    bool is_number = false;
    const double scale = part.mid(number).toDouble(&is_number);
    if (is_number && scale < 1) part = part.left(number) + '1';
  }
  return parts.join(';');
}

void raise_scales_below_one() {
  for (const char* variable : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) {
    if (qEnvironmentVariableIsSet(variable)) qputenv(variable, raised_to_one(qgetenv(variable)));
  }
  // The size of letters, in dots to the inch, of which 96 are scale 1.
  constexpr int dots_of_scale_one = 96;
  bool is_number = false;
  const int dots = qEnvironmentVariableIntValue("QT_FONT_DPI", &is_number);
  if (is_number && dots < dots_of_scale_one) qputenv("QT_FONT_DPI", QByteArray::number(dots_of_scale_one));
}

}  // namespace vorn
