#include "platform/qt/page_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <optional>

#include "platform/qt/page_painter.h"
#include "sessions/key_codes.h"

namespace vorn {
namespace {

constexpr const char* program_title = "Vorn";
constexpr QRgb surround = 0x606060;  // what is left of the window beside the page

// The code of a key; nothing for keys that the program is not to see.
std::optional<int> key_code(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_F1:
      return Event::help;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Event::enter;
    case Qt::Key_Backspace:
      return Event::backspace;
    case Qt::Key_Escape:
      return Event::escape;
    default:
      break;
  }
  // What was typed, not the key: so every keyboard layout is served.
  const QString text = event.text();
  if (text.size() != 1 || !is_printable_key(text[0].unicode())) return {};
  return text[0].unicode();
}

int whole_unit(double place, int last) {
  return static_cast<int>(std::lround(std::clamp<double>(place, 0, last)));
}

}  // namespace

PageWindow::PageWindow(EventMailbox& mailbox, const QString& folder, const QString& program_folder)
    : mailbox_(mailbox),
      comforts_(*this, typefaces_, folder, program_folder),
      notices_(new NoticeStrip(*this)) {
  notices_->installEventFilter(this);
  setWindowTitle(program_title);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);  // every pixel is painted, so nothing flickers
  setMinimumSize(Page::width / 10, Page::height / 10);
}

QSize PageWindow::first_size(QSize screen) {
  return QSize(Page::width, Page::height).scaled(screen * 9 / 10, Qt::KeepAspectRatio);
}

void PageWindow::paintEvent(QPaintEvent*) {
  const NumberedPage latest = mailbox_.page();
  QPainter painter(this);
  painter.fillRect(rect(), QColor(surround));
  painter.setTransform(page_to_area(page_area()), true);
  paint_page(painter, latest.page ? *latest.page : Page(), typefaces_, Device::pixels);
  seen_ = latest;
}

void PageWindow::show_title() {
  QStringList parts{shown_characters(mailbox_.progress()), subject(), program_title};
  parts.removeAll("");
  setWindowTitle(parts.join(" - "));
}

// From the upper left corner of the window.
QSize PageWindow::page_area() const {
  return notices_->isVisible() ? QSize(width(), notices_->y()) : size();
}

// At the lower edge, without covering more than half of the window.
void PageWindow::place_notices() {
  const int high = std::min(notices_->sizeHint().height(), height() / 2);
  notices_->setGeometry(0, height() - high, width(), high);
  update();
}

void PageWindow::resizeEvent(QResizeEvent*) {
  place_notices();
}

// The page makes room for the strip when it comes and takes it back when it goes.
bool PageWindow::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::Hide) place_notices();
  return false;
}

void PageWindow::show_notices() {
  notices_->show_notices(mailbox_.notices());
  place_notices();
}

QString PageWindow::subject() const {
  return shown_characters(mailbox_.subject());
}

Event PageWindow::event_at(QPointF place, int code) const {
  const QPointF on_page = page_to_area(page_area()).inverted().map(place);
  return {whole_unit(on_page.x(), Page::width), whole_unit(on_page.y(), Page::height), code};
}

void PageWindow::mouseMoveEvent(QMouseEvent* event) {
  mouse_ = event->position();
}

// A double click comes here too, as the second of two clicks.
void PageWindow::mousePressEvent(QMouseEvent* event) {
  mouse_ = event->position();
  if (event->button() == Qt::LeftButton) mailbox_.put_click(event_at(mouse_, Event::click), seen_.number);
  if (event->button() == Qt::RightButton) mailbox_.put_click(event_at(mouse_, Event::help), seen_.number);
}

void PageWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F6 && event->modifiers() == Qt::NoModifier) return notices_->toggle();
  if (const auto comfort = comfort_of(*event)) {
    if (!event->isAutoRepeat()) comforts_.start(*comfort, seen_.page, subject());
    return;
  }
  if (const auto code = key_code(*event)) mailbox_.put_key(event_at(mouse_, *code), seen_.number);
}

void PageWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(may_close_);  // the window stays until the program has unwound
  if (!may_close_) mailbox_.close();
}

}  // namespace vorn
