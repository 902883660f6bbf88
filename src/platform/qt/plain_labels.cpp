#include "platform/qt/plain_labels.h"

#include <QEvent>
#include <QLabel>

namespace vorn {

PlainLabels::PlainLabels(QObject* application) : QObject(application) {
  application->installEventFilter(this);
}

// A label is polished once, before it is first shown.
bool PlainLabels::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Polish) {
    if (auto* label = qobject_cast<QLabel*>(watched)) label->setTextFormat(Qt::PlainText);
  }
  return false;
}

}  // namespace vorn
