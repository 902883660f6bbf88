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

namespace vorn {
namespace {

constexpr double pen_width = 2;        // page units: 0.2 mm on paper
constexpr double reference_width = 4;  // of the reference's curve on paper
constexpr double thinnest_fill = 0.5;  // page units: what is thinner would be lost in print

// 0 the paper, 15 the ink; from 16 on the colours of the panels.
using Palette = std::array<QRgb, all_colours>;
constexpr Palette areas = {0xFFFFFF, 0x4F74D9, 0x00AA00, 0x00AAAA, 0xE04030, 0xD070D0, 0xC08040,
                           0xAAAAAA, 0x848484, 0x8494FF, 0x55FF55, 0x55FFFF, 0xFF6A5E, 0xFF9CFF,
                           0xFFFF55, 0x000000, 0x0072B2, 0xC44E00, 0x00A375, 0xE69F00, 0x9E3D73,
                           0xDCEAF7, 0xFAD9CF, 0xFCEBC2, 0xD9F0E3, 0xF1F3F6, 0xD9DCE1, 0x5C6370};
constexpr QRgb grey_lines = 0x8C8C8C;
constexpr Palette letters = {0xFFFFFF, 0x0000AA, 0x007A00, 0x007878, 0x8E0000, 0x8800AA, 0x8A4B00,
                             0x6C6C6C, 0x444444, 0x4848FF, 0x4E7A00, 0x0079A8, 0xD80000, 0xC800A0,
                             0x7C6C00, 0x000000, 0x0068A3, 0xA84000, 0x00745A, 0x8C6000, 0xA8437C,
                             0xDCEAF7, 0xFAD9CF, 0xFCEBC2, 0xD9F0E3, 0xF1F3F6, 0xD9DCE1, 0x5C6370};

QColor shade(const Palette& palette, Colour colour) {
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
  return shade(areas, colour);
}

QColor letter_shade(Colour colour) {
  return shade(letters, colour);
}

QColor line_shade(Colour colour) {
  return colour == colour::light_grey ? QColor(grey_lines) : letter_shade(colour);
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
  for (const Mark& mark : page.marks()) page_painter.paint(mark);
  painter.restore();
}

}  // namespace vorn
