#include "platform/qt/focus_ring.h"

#include <QPen>

namespace vorn {
namespace {

constexpr QRgb ring_blue = 0x0038B8, ring_white = 0xFFFFFF;

}  // namespace

void paint_focus_ring(QPainter& painter, const QRectF& around, double pixel) {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  const double away = 3 * pixel;
  const auto ring = [&](QRgb shade, double width) {
    painter.setPen(QPen(QColor(shade), width * pixel));
    painter.drawRoundedRect(around.adjusted(-away, -away, away, away), away, away);
  };
  ring(ring_white, 7);
  ring(ring_blue, 3);
}

}  // namespace vorn
