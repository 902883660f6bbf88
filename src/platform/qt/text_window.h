// A text to be read, copied and saved.
#pragma once

#include <QDialog>
#include <QString>

namespace vorn {

struct ReadableText {
  QString title;        // of the window
  QString text;         // its lines
  QString name = {};    // of the file, where it can be saved; empty where it cannot
  QString folder = {};  // where it is saved if the user does not say otherwise
};

// Opens it beside the window, which it belongs to and keeps from nothing.
QDialog* show_text(QWidget& window, const ReadableText& text);

}  // namespace vorn
