#include "platform/qt/curve_drag.h"

#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "platform/qt/page_painter.h"
#include "situation/graph_axis.h"

namespace vorn {
namespace {

constexpr double graph_left = graph_area.x1, graph_width = graph_area.x2 - graph_area.x1;

double years_across(const Situation& situation) {
  return std::max(1, situation.years_shown);
}

// The sample's curve as the page shows it.
bool is_sample_curve(const Mark& mark) {
  if (mark.kind != Mark::Kind::line || mark.colour != colour::light_blue) return false;
  return std::ranges::all_of(mark.points,
                             [](const PagePoint& at) { return area_of_graph().contains(at.x, at.y); });
}

QPolygonF points_of(const Mark& mark) {
  QPolygonF points;
  for (const PagePoint& at : mark.points) points << QPointF(at.x, at.y);
  return points;
}

void draw_arrow(QPainter& painter, double from, double to, double y, double pixel) {
  const double head = std::copysign(9 * pixel, to - from);
  painter.drawLine(QPointF(from, y), QPointF(to, y));
  painter.drawLine(QPointF(to, y), QPointF(to - head, y - std::abs(head) / 2));
  painter.drawLine(QPointF(to, y), QPointF(to - head, y + std::abs(head) / 2));
}

// On a label of paper, so that it can be read over the curves.
void write_words(QPainter& painter, const QString& words, QPointF above, double pixel) {
  QFont font = painter.font();
  font.setBold(true);
  const QFontMetricsF metrics(font);
  const double margin = 6;
  QRectF label(0, 0, metrics.horizontalAdvance(words) + 2 * margin, metrics.height() + margin);
  // The letters are laid out in pixels, as those of the window are.
  painter.save();
  painter.translate(above);
  painter.scale(pixel, pixel);
  painter.setFont(font);
  const double left_end = (graph_left - above.x()) / pixel;
  const double right_end = (graph_left + graph_width - above.x()) / pixel;
  label.moveCenter(QPointF(0, -2 * label.height()));
  label.moveLeft(std::clamp(label.left(), left_end, std::max(left_end, right_end - label.width())));
  painter.setPen(QPen(letter_shade(colour::ink), 1));
  painter.setBrush(area_shade(colour::paper));
  painter.drawRect(label);
  painter.drawText(label, Qt::AlignCenter, words);
  painter.restore();
}

}  // namespace

QRectF area_of_graph() {
  return QRectF(QPointF(graph_area.x1, graph_area.y1), QPointF(graph_area.x2, graph_area.y2));
}

bool CurveDrag::may_begin(const Standing& standing, QPointF on_page) {
  if (!standing.situation || !area_of_graph().contains(on_page)) return false;
  const Situation& situation = *standing.situation;
  if (situation.wait != Wait::menu || situation.place != Place::crossdating) return false;
  const bool on_button =
      situation.at(static_cast<int>(on_page.x()), static_cast<int>(on_page.y())) != nullptr;
  return !on_button && (move_sample_by(1, standing) || move_sample_by(-1, standing));
}

void CurveDrag::begin(QPointF on_page) {
  pressed_at_ = now_ = on_page;
  moving_ = false;
}

void CurveDrag::go_to(QPointF on_page, bool is_far) {
  now_ = on_page;
  moving_ = moving_ || is_far;
}

void CurveDrag::end() {
  pressed_at_.reset();
  moving_ = false;
}

int CurveDrag::years(const Situation& situation) const {
  if (!moving_) return 0;
  const double share = (now_.x() - pressed_at_->x()) / graph_width;
  return static_cast<int>(std::lround(share * years_across(situation)));
}

QString CurveDrag::words(int years, const PairMember& sample) {
  QString by =
      QString("%1%2 %3").arg(years > 0 ? "+" : "").arg(years).arg(std::abs(years) == 1 ? "year" : "years");
  if (sample.last_year < sample.first_year) return by;
  return by + QString(", %1-%2").arg(sample.first_year + years).arg(sample.last_year + years);
}

void CurveDrag::paint(QPainter& painter, const Page& page, const Situation& situation, double pixel) const {
  if (!moving_) return;
  const int by = years(situation);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  QPen pen(letter_shade(colour::light_blue), 1.5 * pixel, Qt::DashLine);
  painter.setPen(pen);
  painter.setClipRect(area_of_graph(), Qt::IntersectClip);
  const double shift = by * graph_width / years_across(situation);
  for (const Mark& mark : page.marks()) {
    if (is_sample_curve(mark)) painter.drawPolyline(points_of(mark).translated(shift, 0));
  }
  painter.setPen(QPen(letter_shade(colour::ink), 2 * pixel));
  const double from = pressed_at_->x(), y = pressed_at_->y();
  if (by != 0) draw_arrow(painter, from, from + shift, y, pixel);
  write_words(painter, words(by, situation.sample), {from + shift, y}, pixel);
  painter.restore();
}

}  // namespace vorn
