// The user's guide in a window of its own.
#pragma once

#include <QLineEdit>
#include <QMainWindow>
#include <QTextBrowser>

namespace vorn {

// Shows pages written in Markdown, with their pictures, and follows their links from page to page. Pictures
// wider than the text are made to fit.
class GuidePages : public QTextBrowser {
 public:
  explicit GuidePages(const QString& first_page);
  // The next place where the text stands, from the cursor on and round to the start. False when there is
  // none.
  bool find_next(const QString& text);

 private:
  void give_tables_room();

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
};

// With ways back, forward and home, and a field to look for a word. Ctrl+W closes it, and the program's end.
class GuideWindow : public QMainWindow {
 public:
  explicit GuideWindow(const QString& guide);

 private:
  void look_for_word();

  GuidePages* pages_;
  QLineEdit* wanted_;
};

}  // namespace vorn
