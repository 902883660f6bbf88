// A line of text that gives way.
#pragma once

#include <QLabel>

namespace vorn {

// Takes as much room as it is given and cuts its text short at the end; the whole of it is the tool tip then.
class ElidedLabel : public QLabel {
 public:
  explicit ElidedLabel(const QString& name);
  void say(const QString& text);
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace vorn
