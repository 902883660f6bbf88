// What the status bar says.
#pragma once

#include <QStatusBar>
#include <optional>

#include "desk/status_line.h"
#include "platform/qt/elided_label.h"

namespace vorn {

// A field for each thing to be said, always in the same place.
class StatusFields : public QStatusBar {
 public:
  StatusFields();
  void show_line(const StatusLine& line, const QString& journal_trouble);

 private:
  ElidedLabel* field(const QString& name, const QString& what, int stretch);

  ElidedLabel *waits_for_, *year_, *values_, *written_, *changes_, *careful_, *warning_;
};

}  // namespace vorn
