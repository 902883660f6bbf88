#include "platform/qt/page_window.h"

#include <QAccessible>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "desk/page_words.h"
#include "platform/qt/focus_ring.h"
#include "platform/qt/page_painter.h"
#include "sessions/key_codes.h"

namespace vorn {
namespace {

constexpr int wheel_units_a_year = 12;  // a notch of the wheel is 120: ten years

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

// Without Control and its like, and no function key: what stands for a letter or a move.
bool is_plain(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  return held == Qt::NoModifier && (event.key() < Qt::Key_F1 || event.key() > Qt::Key_F35);
}

using Step = PageCursor::Step;

std::optional<Step> step_of(const QKeyEvent& event) {
  constexpr std::array<std::pair<int, Step>, 8> steps{{{Qt::Key_Tab, Step::next},
                                                       {Qt::Key_Backtab, Step::previous},
                                                       {Qt::Key_Left, Step::left},
                                                       {Qt::Key_Right, Step::right},
                                                       {Qt::Key_Up, Step::up},
                                                       {Qt::Key_Down, Step::down},
                                                       {Qt::Key_PageUp, Step::page_left},
                                                       {Qt::Key_PageDown, Step::page_right}}};
  if (!is_plain(event)) return {};
  const auto at = std::ranges::find(steps, event.key(), &std::pair<int, Step>::first);
  return at == steps.end() ? std::nullopt : std::optional(at->second);
}

bool takes_clicks(const SharedSituation& situation) {
  return situation && (situation->wait == Wait::menu || situation->wait == Wait::year);
}

}  // namespace

PageWindow::PageWindow(EventMailbox& mailbox, const QString& folder, const QString& program_folder)
    : mailbox_(&mailbox),
      gate_(mailbox),
      comforts_(*this, typefaces_, folder, program_folder),
      notices_(new NoticeStrip(*this)) {
  notices_->installEventFilter(this);
  setAccessibleName("Page");
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);  // every pixel is painted, so nothing flickers
  setMinimumSize(Page::width / 10, Page::height / 10);
}

void PageWindow::serve(EventMailbox& mailbox, const QString& folder) {
  mailbox_ = &mailbox;
  gate_.serve(mailbox);
  comforts_.begin_in(folder);
  seen_ = {};
  cursor_.hide();
  drag_.end();
  notices_->show_notices({});  // as many as those of the run before may be others
  show_notices();
}

QSize PageWindow::first_size(QSize screen) {
  return QSize(Page::width, Page::height).scaled(screen * 9 / 10, Qt::KeepAspectRatio);
}

SharedSituation PageWindow::situation() const {
  const SharedStanding standing = gate_.standing();
  return standing ? standing->situation : nullptr;
}

void PageWindow::paintEvent(QPaintEvent*) {
  const NumberedPage latest = mailbox_->page();
  const Page empty{};
  const Page& page = latest.page ? *latest.page : empty;
  const QTransform to_area = page_to_area(page_area());
  QPainter painter(this);
  painter.fillRect(rect(), surround());
  painter.setTransform(to_area, true);
  paint_page(painter, page, typefaces_, Device::pixels);
  seen_ = latest;
  const double pixel = 1 / to_area.m11();
  paint_cursor(painter, pixel);
  if (const auto now = situation()) drag_.paint(painter, page, *now, pixel);
}

// What is left of the window beside the page: a shade darker than the panels, on a light desktop and a dark
// one.
QColor PageWindow::surround() const {
  return palette().color(QPalette::Window).darker(125);
}

void PageWindow::paint_cursor(QPainter& painter, double pixel) const {
  const auto now = situation();
  if (!now) return;
  const auto mark = cursor_.mark(*now);
  if (!mark) return;
  paint_focus_ring(painter, QRectF(QPointF(mark->x1, mark->y1), QPointF(mark->x2, mark->y2)), pixel);
}

void PageWindow::stand() {
  const auto now = situation();
  if (drag_.is_pressed() && !(now && now->place == Place::crossdating && now->wait == Wait::menu))
    drag_.end();
  if (!takes_clicks(now)) cursor_.hide();
  gate_.go_on();
  describe();
  update();
}

// For those who do not see the page.
void PageWindow::describe() {
  const SharedStanding standing = gate_.standing();
  const QString description = standing ? shown_characters(page_in_words(*standing, cursor_)) : QString();
  if (description == accessibleDescription()) return;
  setAccessibleDescription(description);
  QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&changed);
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
  placed();
}

void PageWindow::resizeEvent(QResizeEvent*) {
  place_notices();
}

void PageWindow::moveEvent(QMoveEvent*) {
  placed();
}

// The page makes room for the strip when it comes and takes it back when it goes.
bool PageWindow::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Show || event->type() == QEvent::Hide) place_notices();
  return false;
}

void PageWindow::show_notices() {
  const SharedStanding standing = gate_.standing();
  notices_->show_notices(standing ? all_notices(mailbox_->notices(), *standing) : mailbox_->notices());
  place_notices();
}

QString PageWindow::subject() const {
  return shown_characters(mailbox_->subject());
}

QPointF PageWindow::place_of(QPointF on_page) const {
  return page_to_area(page_area()).map(on_page);
}

QPointF PageWindow::on_page(QPointF place) const {
  return page_to_area(page_area()).inverted().map(place);
}

Event PageWindow::event_at(QPointF place, int code) const {
  const QPointF at = on_page(place);
  return {whole_unit(at.x(), Page::width), whole_unit(at.y(), Page::height), code};
}

void PageWindow::mouseMoveEvent(QMouseEvent* event) {
  mouse_ = event->position();
  if (drag_.is_pressed()) {
    const bool is_far = (mouse_ - pressed_at_).manhattanLength() >= QApplication::startDragDistance();
    drag_.go_to(on_page(mouse_), is_far);
    if (drag_.is_moving()) setCursor(Qt::SizeHorCursor);
    update();
  }
  const Event at = event_at(mouse_, 0);
  mouse_moved(PointAt{at.x, at.y});
}

void PageWindow::leaveEvent(QEvent*) {
  mouse_moved({});
}

// A double click comes here too, as the second of two clicks. Where the sample's curve may be moved, a click
// is one when the button is let go.
void PageWindow::mousePressEvent(QMouseEvent* event) {
  mouse_ = event->position();
  if (event->button() == Qt::RightButton) gate_.put(event_at(mouse_, Event::help), seen_.number);
  if (event->button() != Qt::LeftButton) return;
  const Event click = event_at(mouse_, Event::click);
  const SharedStanding standing = gate_.standing();
  if (!standing || !CurveDrag::may_begin(*standing, on_page(mouse_))) return gate_.put(click, seen_.number);
  press_ = click;
  pressed_on_ = seen_.number;
  pressed_at_ = mouse_;
  drag_.begin(on_page(mouse_));
}

void PageWindow::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !drag_.is_pressed()) return;
  if (drag_.is_moving()) {
    drop_curve();
  } else {
    gate_.put(press_, pressed_on_);
  }
  drag_.end();
  unsetCursor();
  update();
}

void PageWindow::drop_curve() {
  const SharedStanding standing = gate_.standing();
  if (!standing || !standing->situation) return;
  if (auto deed = move_sample_by(drag_.years(*standing->situation), *standing)) {
    gate_.put(std::move(*deed), seen_.number);
  }
}

// Forward in time is downwards or to the right.
void PageWindow::wheelEvent(QWheelEvent* event) {
  const QPoint turned = event->angleDelta();
  wheel_ -= std::abs(turned.x()) > std::abs(turned.y()) ? turned.x() : turned.y();
  const int years = wheel_ / wheel_units_a_year;
  wheel_ -= years * wheel_units_a_year;
  if (years != 0) gate_.scroll(years);
  event->accept();
}

// Before a key becomes that of a menu. F1 is the program's always; what is typed where it waits for typing or
// where a message stands is too, and letters that are typed ahead of what a click brings.
bool PageWindow::is_programs_key(const QKeyEvent& event) const {
  if (event.key() == Qt::Key_F1 && event.modifiers() == Qt::NoModifier) return true;
  const auto now = situation();
  if (!now || !is_plain(event)) return false;
  return now->wait != Wait::menu || (gate_.is_under_way() && key_code(event));
}

bool PageWindow::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && is_programs_key(static_cast<QKeyEvent&>(*event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

// Whether the key was the page cursor's.
bool PageWindow::serve_cursor(const QKeyEvent& event) {
  const auto now = situation();
  if (!takes_clicks(now)) return false;
  if (const auto step = step_of(event)) {
    if (!cursor_.go(*step, *now)) return false;
    // What the mouse would be told of that place is told of the mark.
    if (const auto there = cursor_.click(*now)) mouse_moved(PointAt{there->x, there->y});
    describe();
    update();
    return true;
  }
  const auto click = cursor_.click(*now);
  if (!click || key_code(event) != Event::enter) return false;
  gate_.put(*click, seen_.number, event.isAutoRepeat());
  return true;
}

void PageWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F6 && event->modifiers() == Qt::NoModifier) return notices_->toggle();
  if (const auto comfort = comfort_of(*event)) {
    if (!event->isAutoRepeat()) start(*comfort);
    return;
  }
  if (drag_.is_pressed() && event->key() == Qt::Key_Escape) {
    drag_.end();
    unsetCursor();
    return update();
  }
  if (serve_cursor(*event)) return;
  if (const auto code = key_code(*event)) {
    gate_.put(event_at(mouse_, *code), seen_.number, event->isAutoRepeat());
  }
}

}  // namespace vorn
