#include "platform/qt/elided_label.h"

#include <QPainter>
#include <QStyle>

namespace vorn {

ElidedLabel::ElidedLabel(const QString& name) {
  setObjectName(name);
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void ElidedLabel::say(const QString& text) {
  if (text == this->text()) return;
  setText(text);
  setToolTip(text);
}

QSize ElidedLabel::minimumSizeHint() const {
  return {0, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, width());
  style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(), shown,
                        foregroundRole());
}

}  // namespace vorn
