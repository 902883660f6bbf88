#include "platform/qt/panel_area.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "platform/qt/focus_ring.h"
#include "platform/qt/page_painter.h"

namespace vorn {
namespace {

constexpr int units_a_plain_pixel = 2;
constexpr double plain_dots = 96;        // to the inch, of letters
constexpr int units_a_scroll_step = 44;  // a notch of the wheel is three steps
constexpr QSize least_size(160, 60);

bool is_same(const std::optional<PanelView::Axis>& a, const std::optional<PanelView::Axis>& b) {
  return a.has_value() == b.has_value() && (!a || (a->left == b->left && a->right == b->right));
}

bool is_same(const PanelView& a, const PanelView& b) {
  return a.width == b.width && a.height == b.height && a.scroll == b.scroll && is_same(a.axis, b.axis);
}

int middle_of(int from, int to) {
  return from + (to - from) / 2;
}

int middle_across(const Spot& spot) {
  return middle_of(spot.place.x1, spot.place.x2);
}

int middle_down(const Spot& spot) {
  return middle_of(spot.place.y1, spot.place.y2);
}

// How far a spot is from another one above or below it: rows count more than columns.
int distance(const Spot& from, const Spot& to) {
  constexpr int weight_of_rows = 4;
  return weight_of_rows * std::abs(middle_down(to) - middle_down(from)) +
         std::abs(middle_across(to) - middle_across(from));
}

// How far within a spot of that size its ring is: rows meet, and reach from edge to edge. What is small is
// better seen whole.
double inset(double size, double pixel) {
  constexpr double ring_within = 4, least_inside = 14;  // pixels
  return size >= (least_inside + 2 * ring_within) * pixel ? ring_within * pixel : 0;
}

}  // namespace

PanelArea::PanelArea(const Typefaces& typefaces, Maker make) : typefaces_(typefaces), make_(std::move(make)) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setMinimumSize(least_size);
  verticalScrollBar()->setSingleStep(units_a_scroll_step);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
}

// --- What is looked at.

// With larger letters everything is larger.
double PanelArea::units_a_pixel() const {
  return units_a_plain_pixel * plain_dots / std::max<double>(plain_dots, logicalDpiY());
}

// As wide with a scroll bar as without one: so whether there is one depends on the content alone.
PanelView PanelArea::view() const {
  const double units = units_a_pixel();
  const auto in_units = [units](int pixels) {
    return std::max(units_a_plain_pixel, static_cast<int>(std::lround(pixels * units)));
  };
  return {.width = in_units(width() - verticalScrollBar()->sizeHint().width()),
          .height = in_units(height()),
          .scroll = verticalScrollBar()->value(),
          .axis = axis()};
}

std::optional<PanelView::Axis> PanelArea::axis() const {
  const auto pixels = years_stand();
  const int right_edge = width() - verticalScrollBar()->sizeHint().width();
  if (!pixels || pixels->left < 0 || pixels->right > right_edge) return {};
  return PanelView::Axis{pixels->left * units_a_pixel(), pixels->right * units_a_pixel()};
}

void PanelArea::renew() {
  if (!isVisible()) return;
  const int scrolled_before = view_.scroll;
  const std::optional<Spot> mark_before = marked() ? std::optional(*marked()) : std::nullopt;
  view_ = view();
  panel_ = make_(view_);
  follow_mark(mark_before, view_.scroll - scrolled_before);
  describe();
  viewport()->update();
  // At last: where it was scrolled too far it is asked anew.
  verticalScrollBar()->setPageStep(view_.height);
  verticalScrollBar()->setRange(0, std::max(0, panel_.content_height - view_.height));
}

void PanelArea::look_again() {
  if (isVisible() && !is_same(view(), view_)) renew();
}

vorn::Panel PanelArea::pictured(int highest) const {
  PanelView whole = view();
  whole.height = std::clamp(make_(whole).content_height, units_a_plain_pixel, highest);
  if (whole.height < highest) whole.scroll = 0;
  return make_(whole);
}

void PanelArea::resizeEvent(QResizeEvent*) {
  look_again();
}

void PanelArea::showEvent(QShowEvent*) {
  seen();
  renew();
}

void PanelArea::scrollContentsBy(int, int) {
  look_again();
}

void PanelArea::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), area_shade(colour::paper));
  painter.scale(1 / units_a_pixel(), 1 / units_a_pixel());
  paint_page(painter, panel_.page, typefaces_, Device::pixels);
  paint_mark(painter);
}

void PanelArea::paint_mark(QPainter& painter) const {
  const Spot* spot = marked();
  if (!spot || !shows_mark_ || !hasFocus()) return;
  const double pixel = units_a_pixel();
  const QRectF place(QPointF(spot->place.x1, spot->place.y1), QPointF(spot->place.x2, spot->place.y2));
  const double across = inset(place.width(), pixel), down = inset(place.height(), pixel);
  paint_focus_ring(painter, place.adjusted(across, down, -across, -down), pixel);
}

// --- The mouse.

const Spot* PanelArea::at(QPointF place) const {
  const QPointF there = place * units_a_pixel();
  return panel_.at(static_cast<int>(std::floor(there.x())), static_cast<int>(std::floor(there.y())));
}

bool PanelArea::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QAbstractScrollArea::viewportEvent(event);
  const auto& help = static_cast<QHelpEvent&>(*event);
  const Spot* spot = at(help.pos());
  if (!spot || spot->tip.empty()) {
    QToolTip::hideText();
    event->ignore();
    return true;
  }
  const double pixels = 1 / units_a_pixel();
  const QRectF around(spot->place.x1 * pixels, spot->place.y1 * pixels,
                      (spot->place.x2 - spot->place.x1) * pixels, (spot->place.y2 - spot->place.y1) * pixels);
  QToolTip::showText(help.globalPos(), shown_characters(spot->tip), viewport(), around.toAlignedRect());
  return true;
}

void PanelArea::mouseMoveEvent(QMouseEvent* event) {
  const Spot* spot = at(event->position());
  viewport()->setCursor(spot && spot->does() ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void PanelArea::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  shows_mark_ = false;
  viewport()->update();
  const Spot* spot = at(event->position());
  if (!spot) return;
  mark_ = static_cast<std::size_t>(spot - panel_.spots.data());
  const Spot hit = *spot;  // a copy: what it does may bring other spots
  if (hit.does()) clicked(hit);
  if (hit.play) left();  // what it plays is gone on with on the page
}

// Many click twice where once is enough: what is played is not to be played again on what comes of it.
void PanelArea::mouseDoubleClickEvent(QMouseEvent* event) {
  const Spot* spot = at(event->position());
  if (!spot || !spot->play) mousePressEvent(event);
}

void PanelArea::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->addActions(actions());
  menu->popup(event->globalPos());
}

// --- The keyboard.

const Spot* PanelArea::marked() const {
  return mark_ && *mark_ < panel_.spots.size() ? &panel_.spots[*mark_] : nullptr;
}

// The mark stays at what it was at: what says the same, the nearest of them where several do.
void PanelArea::follow_mark(const std::optional<Spot>& before, int scrolled) {
  mark_.reset();
  if (!before) return;
  Spot expected = *before;
  if (is_scrolled(expected)) {
    expected.place.y1 -= scrolled;
    expected.place.y2 -= scrolled;
  }
  for (std::size_t k = 0; k < panel_.spots.size(); ++k) {
    const Spot& spot = panel_.spots[k];
    if (spot.tip != expected.tip || spot.change.core != expected.change.core) continue;
    if (!mark_ || distance(expected, spot) < distance(expected, panel_.spots[*mark_])) mark_ = k;
  }
  if (mark_) return;
  const Spot* there = panel_.at(middle_across(expected), middle_down(expected));
  if (there) mark_ = static_cast<std::size_t>(there - panel_.spots.data());
}

// What reaches beyond the edges, or to the upper one, may be larger than is seen: it is brought into sight.
void PanelArea::mark(const Spot& spot) {
  mark_ = static_cast<std::size_t>(&spot - panel_.spots.data());
  if (!is_scrolled(spot)) return;
  const Rectangle place = spot.place;
  QScrollBar& bar = *verticalScrollBar();
  if (place.y2 > view_.height) {
    bar.setValue(bar.value() + std::min(place.y2 - view_.height, place.y1 - panel_.head));
  } else if (place.y1 <= panel_.head) {
    bar.setValue(bar.value() - view_.height / 4);
  }
}

// The spot that follows on the part that is looked at; null where there is none. From what is scrolled none
// at the upper edge follows before all is scrolled back.
const Spot* PanelArea::following(const Spot& from, Way way) const {
  const bool back = way == Way::previous || way == Way::up;
  const auto may_follow = [&](const Spot& spot) {
    return !back || !is_scrolled(from) || is_scrolled(spot) || view_.scroll == 0;
  };
  if (way == Way::next || way == Way::previous) {
    const auto at = static_cast<std::size_t>(&from - panel_.spots.data());
    const std::size_t to = way == Way::next ? at + 1 : at - 1;  // beyond the last where it wraps
    return to < panel_.spots.size() && may_follow(panel_.spots[to]) ? &panel_.spots[to] : nullptr;
  }
  const Spot* nearest = nullptr;
  for (const Spot& spot : panel_.spots) {
    const bool is_there = back ? middle_down(spot) < from.place.y1 : middle_down(spot) >= from.place.y2;
    if (is_there && may_follow(spot) && (!nearest || distance(from, spot) < distance(from, *nearest)))
      nearest = &spot;
  }
  return nearest;
}

// Whether there is one on the part that is looked at.
bool PanelArea::step(Way way) {
  if (panel_.spots.empty()) return false;
  const bool back = way == Way::previous || way == Way::up;
  const Spot* from = marked();
  const Spot* to = from ? following(*from, way) : back ? &panel_.spots.back() : &panel_.spots.front();
  if (to) mark(*to);
  return to != nullptr;
}

// Whether there was more to be looked at. What is marked stays within sight.
bool PanelArea::scroll_on(Way way) {
  QScrollBar& bar = *verticalScrollBar();
  const int before = bar.value();
  const bool onwards = way == Way::next || way == Way::down;
  bar.setValue(before + (onwards ? view_.height : -view_.height) / 2);
  return bar.value() != before;
}

bool PanelArea::go(Way way) {
  if (step(way)) return true;
  return scroll_on(way) && step(way);
}

void PanelArea::go_to_end(bool last) {
  QScrollBar& bar = *verticalScrollBar();
  bar.setValue(last ? bar.maximum() : bar.minimum());
  if (!panel_.spots.empty()) mark(last ? panel_.spots.back() : panel_.spots.front());
}

bool PanelArea::serve(const QKeyEvent& event) {
  const Qt::KeyboardModifiers held = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
  if (held != Qt::NoModifier) return false;
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Right:
      return go(Way::next), true;
    case Qt::Key_Backtab:
    case Qt::Key_Left:
      return go(Way::previous), true;
    case Qt::Key_Up:
      return go(Way::up), true;
    case Qt::Key_Down:
      return go(Way::down), true;
    case Qt::Key_Home:
    case Qt::Key_End:
      return go_to_end(event.key() == Qt::Key_End), true;
    case Qt::Key_PageUp:
      return verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub), true;
    case Qt::Key_PageDown:
      return verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd), true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      if (const Spot* spot = marked(); spot && spot->does() && !event.isAutoRepeat()) clicked(Spot(*spot));
      return true;
    default:
      return false;
  }
}

void PanelArea::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return left();
  if (!serve(*event)) return event->ignore();
  shows_mark_ = true;
  describe();
  viewport()->update();
}

void PanelArea::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason) {
    shows_mark_ = true;
    if (!marked() && !panel_.spots.empty()) mark_ = 0;
  }
  describe();
  viewport()->update();
}

void PanelArea::focusOutEvent(QFocusEvent*) {
  viewport()->update();
}

// For those who do not see it.
void PanelArea::describe() {
  const Spot* spot = marked();
  const QString description = spot ? shown_characters(spot->tip) : QString();
  if (description == accessibleDescription()) return;
  setAccessibleDescription(description);
  QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&changed);
}

}  // namespace vorn
