// What the program has to tell besides its page, for as long as the user wants to read it.
#pragma once

#include <QPlainTextEdit>
#include <QToolButton>
#include <QWidget>
#include <string>
#include <vector>

namespace vorn {

// A strip with one line for each notice, as plain text that can be marked and copied, and a button that
// closes it; Escape does so too. Nothing done in it reaches what lies behind it. It is hidden at first.
class NoticeStrip : public QWidget {
 public:
  explicit NoticeStrip(QWidget& window);

  // Shows the strip when there are more notices than it showed before, and hides it when there are none.
  void show_notices(const std::vector<std::string>& notices);
  // Shows it with the keyboard in it, where there is anything to read, or closes it.
  void toggle();
  // Room for all lines, but for no more than some: they can be scrolled.
  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  QPlainTextEdit* lines_;
  QToolButton* close_;
  std::size_t shown_ = 0;  // how many notices there are
};

}  // namespace vorn
