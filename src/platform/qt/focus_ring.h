// How what the keyboard marks is shown.
#pragma once

#include <QPainter>
#include <QRectF>

namespace vorn {

// A ring of dark and light around it, so that it stands out on any ground. `pixel` is a pixel in the units of
// the painter.
void paint_focus_ring(QPainter& painter, const QRectF& around, double pixel);

}  // namespace vorn
