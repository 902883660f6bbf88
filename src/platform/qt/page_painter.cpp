#include "platform/qt/page_painter.h"

#include <QFontMetricsF>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "plot/colour.h"
#include "plot/font_metrics.h"
#include "plot/palette.h"
#include "plot/pixel_marks.h"

namespace vorn {
namespace {

constexpr double pen_width = 2;        // page units: 0.2 mm on paper
constexpr double reference_width = 4;  // of the reference's curve on paper
constexpr double thinnest_fill = 0.5;  // page units: what is thinner would be lost in print

QColor shade(const shades::Palette& palette, Colour colour) {
  return {palette[static_cast<std::size_t>(number_of(colour)) % palette.size()]};
}

QPolygonF polygon(const Mark& mark) {
  QPolygonF result;
  for (const PagePoint& point : mark.points) result << QPointF(point.x, point.y);
  return result;
}

// Whether all its sides run across or up: such marks come out sharp on whole pixels.
bool is_upright(const Mark& mark) {
  const auto& points = mark.points;
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
  }
  return true;
}

class PagePainter {
 public:
  PagePainter(QPainter& painter, const Typefaces& typefaces, Device device)
      : painter_(painter), typefaces_(typefaces), device_(device) {
    // Pixels of the device to a page unit.
    const QTransform& transform = painter.deviceTransform();
    scale_ = std::sqrt(std::abs(transform.determinant()));
  }

  // Of pixels, to a page unit.
  double columns() const { return scale_; }

  void paint(const Mark& mark) {
    switch (mark.kind) {
      case Mark::Kind::fill:
        return fill(mark);
      case Mark::Kind::outline:
        return outline(mark);
      case Mark::Kind::line:
        return line(mark);
      case Mark::Kind::text:
      case Mark::Kind::label:
        return write(mark);
    }
  }

 private:
  // Writing, and how many fills had been painted before it.
  struct Written {
    const Mark* mark;
    std::size_t fills;
  };

  void fill(const Mark& mark) {
    const QPolygonF area = polygon(mark);
    const QRectF around = area.boundingRect();
    fills_.push_back(around);
    const bool thin = std::min(around.width(), around.height()) < thinnest();
    painter_.setRenderHint(QPainter::Antialiasing, thin || !sharp(mark));
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(area_shade(mark.colour));
    if (!thin) return painter_.drawPolygon(area);
    // As thin as a line, or without any width at all: it is to be seen all the same.
    const double more_x = std::max(0.0, thinnest() - around.width()) / 2;
    const double more_y = std::max(0.0, thinnest() - around.height()) / 2;
    painter_.drawRect(around.adjusted(-more_x, -more_y, more_x, more_y));
  }

  void outline(const Mark& mark) {
    prepare_pen(mark, pen_width);
    painter_.drawPolygon(polygon(mark));
  }

  // One by one: a polyline as a single antialiased stroke is many times slower on pixels. Where the segments
  // meet, their square ends overlap.
  void line(const Mark& mark) {
    prepare_pen(mark, line_width(mark));
    const QPolygonF points = polygon(mark);
    if (device_ == Device::vectors) return painter_.drawPolyline(points);
    std::vector<QLineF> segments;
    for (qsizetype i = 1; i < points.size(); ++i) segments.emplace_back(points[i - 1], points[i]);
    painter_.drawLines(segments.data(), static_cast<int>(segments.size()));
  }

  void write(const Mark& mark) {
    if (!is_new(mark)) return;
    const QString text = shown_characters(mark.writing);
    const Typeface& face = typefaces_.of(mark.font);
    const double width = QFontMetricsF(face.font).horizontalAdvance(text);
    const double shift = mark.align == Align::left ? 0 : mark.align == Align::centre ? width / 2 : width;
    painter_.save();
    painter_.translate(mark.points.front().x, mark.points.front().y);
    painter_.rotate(-mark.angle);
    painter_.scale(mark.height / face.capital, mark.height / face.capital);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setFont(face.font);
    painter_.setPen(letter_shade(mark.colour));
    painter_.drawText(QPointF(-shift, face.capital), text);
    painter_.restore();
  }

  // A text written again over itself would come out bolder, because its edges are antialiased. What a fill
  // may have covered since, if only in part, counts as new.
  bool is_new(const Mark& mark) {
    const auto same = [&](const Written& earlier) { return *earlier.mark == mark; };
    const auto earlier = std::find_if(written_.begin(), written_.end(), same);
    if (earlier == written_.end()) {
      written_.push_back({&mark, fills_.size()});
      return true;
    }
    const auto first_since = fills_.begin() + static_cast<std::ptrdiff_t>(earlier->fills);
    const QRectF around = room_of(mark);
    earlier->fills = fills_.size();
    return std::any_of(first_since, fills_.end(),
                       [&](const QRectF& area) { return area.intersects(around); });
  }

  // All the room that the letters may take. They reach below their line; turned writing, or writing that ends
  // at its place, lies elsewhere around it.
  static QRectF room_of(const Mark& mark) {
    const Box box = text_extent(mark);
    const bool plain = mark.angle == 0 && mark.align == Align::left;
    const double reach = plain ? mark.height : mark.height + box.right - box.left;
    const QRectF writing(QPointF(box.left, box.top), QPointF(box.right, box.bottom));
    return writing.adjusted(-reach, -reach, reach, reach);
  }

  double thinnest() const {
    return device_ == Device::pixels ? std::max(thinnest_fill, 1 / scale_) : thinnest_fill;
  }

  bool sharp(const Mark& mark) const { return device_ == Device::pixels && is_upright(mark); }

  // Printed in greys, the blue of the sample and the red of the reference are nearly the same: there the
  // curves are told apart by their width.
  double line_width(const Mark& mark) const {
    return device_ == Device::vectors && mark.colour == colour::light_red ? reference_width : pen_width;
  }

  void prepare_pen(const Mark& mark, double width) {
    const bool whole_pixels = sharp(mark);
    if (device_ == Device::pixels) {
      const double pixels = std::max(1.0, width * scale_);
      width = (whole_pixels ? std::round(pixels) : pixels) / scale_;
    }
    painter_.setRenderHint(QPainter::Antialiasing, !whole_pixels);
    painter_.setBrush(Qt::NoBrush);
    const Qt::PenCapStyle ends = device_ == Device::pixels ? Qt::SquareCap : Qt::RoundCap;
    painter_.setPen(QPen(line_shade(mark.colour), width, Qt::SolidLine, ends, Qt::RoundJoin));
  }

  QPainter& painter_;
  const Typefaces& typefaces_;
  Device device_;
  double scale_ = 1;
  std::vector<Written> written_;
  std::vector<QRectF> fills_;  // where areas were filled
};

}  // namespace

QColor area_shade(Colour colour) {
  return shade(shades::areas, colour);
}

QColor letter_shade(Colour colour) {
  return shade(shades::letters, colour);
}

QColor line_shade(Colour colour) {
  return colour == colour::light_grey ? QColor(shades::grey_lines) : letter_shade(colour);
}

QTransform page_to_area(QSizeF area, QSizeF page) {
  const double scale = std::min(area.width() / page.width(), area.height() / page.height());
  return QTransform::fromTranslate((area.width() - scale * page.width()) / 2,
                                   (area.height() - scale * page.height()) / 2)
      .scale(scale, scale);
}

void paint_page(QPainter& painter, const Page& page, const Typefaces& typefaces, Device device) {
  const QRectF paper(0, 0, page.across(), page.down());
  painter.save();
  painter.setClipRect(paper, Qt::IntersectClip);
  painter.fillRect(paper, area_shade(colour::paper));
  PagePainter page_painter(painter, typefaces, device);
  if (device == Device::pixels) {
    play_on_pixels(page.marks(), page_painter.columns(), painter.deviceTransform().dx(),
                   [&](const Mark& mark) { page_painter.paint(mark); });
  } else {
    for (const Mark& mark : page.marks()) page_painter.paint(mark);
  }
  painter.restore();
}

}  // namespace vorn
