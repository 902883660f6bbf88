// What cannot be done now is told in letters that step back, but can be read.
#pragma once

#include <QObject>
#include <QPalette>

namespace vorn {

// The palette with its disabled letters half way from the ground to the usual ones, on a light desktop and on
// a dark one; many desktops make them fainter than that.
QPalette with_readable_disabled(QPalette palette);

// Gives the application such a palette, also whenever the desktop changes its own. To be installed on the
// application object, which it belongs to.
class ReadableLetters : public QObject {
 public:
  explicit ReadableLetters(QObject* application);
  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace vorn
