// Names of files are shown as they are.
#pragma once

#include <QObject>

namespace vorn {

// Makes every label of the application, in dialogs of the window system and tool tips too, show its text as
// plain text: otherwise one that looks like a page of the web, as the name of a file may, would be laid out
// as such, with pictures from wherever it says. To be installed on the application object, which it belongs
// to.
class PlainLabels : public QObject {
 public:
  explicit PlainLabels(QObject* application);
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace vorn
