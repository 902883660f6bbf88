#include "platform/qt/notice_strip.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QStringList>
#include <algorithm>

#include "platform/qt/typefaces.h"

namespace vorn {
namespace {

constexpr int most_lines = 5;

}  // namespace

NoticeStrip::NoticeStrip(QWidget& window)
    : QWidget(&window), lines_(new QPlainTextEdit), close_(new QToolButton) {
  setAutoFillBackground(true);
  setAttribute(Qt::WA_NoMousePropagation);
  lines_->setReadOnly(true);
  lines_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  lines_->setTabChangesFocus(true);
  lines_->setLineWrapMode(QPlainTextEdit::NoWrap);
  lines_->setFrameShape(QFrame::NoFrame);
  lines_->viewport()->setAutoFillBackground(false);  // as grey as the strip, unlike the page
  lines_->setAccessibleName("Notices");
  close_->setText("Close");
  close_->setAutoRaise(true);
  connect(close_, &QToolButton::clicked, this, &QWidget::hide);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(lines_);
  row->addWidget(close_, 0, Qt::AlignTop);
  hide();
}

void NoticeStrip::show_notices(const std::vector<std::string>& notices) {
  if (notices.size() == shown_) return;
  shown_ = notices.size();
  QStringList lines;
  for (const std::string& notice : notices) lines << shown_characters(notice);
  lines_->setPlainText(lines.join('\n'));
  setVisible(!notices.empty());
}

void NoticeStrip::toggle() {
  if (!isHidden()) return hide();
  if (shown_ == 0) return;
  show();
  lines_->setFocus(Qt::ShortcutFocusReason);
}

QSize NoticeStrip::sizeHint() const {
  const int lines = std::clamp<int>(static_cast<int>(shown_), 1, most_lines);
  const int line = lines_->fontMetrics().lineSpacing();
  const int margins = 2 * static_cast<int>(lines_->document()->documentMargin());
  // Half a line more: to the field a last line at its very edge is not seen as a whole.
  return {width(), std::max(lines * line + line / 2 + margins, close_->sizeHint().height())};
}

// All keys end here: none of them is meant for the program.
void NoticeStrip::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F6) hide();
}

// The keyboard goes back to the page, unless it is the whole window that goes.
void NoticeStrip::hideEvent(QHideEvent* event) {
  if (isHidden()) parentWidget()->setFocus();
  QWidget::hideEvent(event);
}

// Tab goes round in the strip; the page would take it for a key of its own.
bool NoticeStrip::focusNextPrevChild(bool) {
  QWidget* other = lines_;
  if (lines_->hasFocus()) other = close_;
  other->setFocus(Qt::TabFocusReason);
  return true;
}

}  // namespace vorn
