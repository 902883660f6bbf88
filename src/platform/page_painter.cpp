#include "platform/page_painter.h"

#include <QFontMetricsF>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "plot/font_metrics.h"

namespace vorn {
namespace {

constexpr double pen_width = 2;           // page units: 0.2 mm on paper
constexpr qsizetype points_a_piece = 17;  // 16 segments: one long antialiased stroke is many times slower

constexpr std::array<QRgb, 16> palette = {
    0xFFFFFF,  // 0 the paper
    0x0000AA, 0x00AA00, 0x00AAAA, 0xAA0000, 0xAA00AA, 0xAA5500,
    0xAAAAAA,  // 7 light grey
    0x555555, 0x5555FF, 0x55FF55, 0x55FFFF, 0xFF5555, 0xFF55FF, 0xFFFF55,
    0x000000,  // 15 ink
};

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
  // Writing that stands as it was painted, with all the room that its letters may take.
  struct Written {
    const Mark* mark;
    QRectF around;
  };

  void fill(const Mark& mark) {
    forget_below(polygon(mark).boundingRect());
    painter_.setRenderHint(QPainter::Antialiasing, !sharp(mark));
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(palette_colour(mark.colour));
    painter_.drawPolygon(polygon(mark));
  }

  void outline(const Mark& mark) {
    prepare_pen(mark);
    painter_.drawPolygon(polygon(mark));
  }

  void line(const Mark& mark) {
    prepare_pen(mark);
    const QPolygonF points = polygon(mark);
    if (device_ == Device::vectors) return painter_.drawPolyline(points);
    for (qsizetype i = 0; i + 1 < points.size(); i += points_a_piece - 1) {
      painter_.drawPolyline(
          points.mid(i, points_a_piece));  // pieces share a point, where their round ends overlap
    }
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
    painter_.setPen(palette_colour(mark.colour));
    painter_.drawText(QPointF(-shift, face.capital), text);
    painter_.restore();
  }

  // A text written again over itself would come out bolder, because its edges are antialiased.
  bool is_new(const Mark& mark) {
    const auto same = [&](const Written& earlier) { return *earlier.mark == mark; };
    if (std::any_of(written_.begin(), written_.end(), same)) return false;
    const Box box = text_extent(mark);
    // Letters reach below their line; turned writing, or writing that ends at its place, lies elsewhere
    // around it.
    const bool plain = mark.angle == 0 && mark.align == Align::left;
    const double reach = plain ? mark.height : mark.height + box.right - box.left;
    const QRectF letters(QPointF(box.left, box.top), QPointF(box.right, box.bottom));
    written_.push_back({&mark, letters.adjusted(-reach, -reach, reach, reach)});
    return true;
  }

  // What a fill may have covered, if only in part, counts as new when it is written again.
  void forget_below(const QRectF& area) {
    std::erase_if(written_, [&](const Written& writing) { return area.intersects(writing.around); });
  }

  bool sharp(const Mark& mark) const { return device_ == Device::pixels && is_upright(mark); }

  void prepare_pen(const Mark& mark) {
    const bool whole_pixels = sharp(mark);
    double width = pen_width;
    if (device_ == Device::pixels) {
      const double pixels = std::max(1.0, width * scale_);
      width = (whole_pixels ? std::round(pixels) : pixels) / scale_;
    }
    painter_.setRenderHint(QPainter::Antialiasing, !whole_pixels);
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(palette_colour(mark.colour), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  }

  QPainter& painter_;
  const Typefaces& typefaces_;
  Device device_;
  double scale_ = 1;
  std::vector<Written> written_;
};

}  // namespace

QColor palette_colour(int index) {
  return QColor(palette[static_cast<std::size_t>(index) % palette.size()]);
}

void paint_page(QPainter& painter, const Page& page, const Typefaces& typefaces, Device device) {
  const QRectF paper(0, 0, Page::width, Page::height);
  painter.save();
  painter.setClipRect(paper, Qt::IntersectClip);
  painter.fillRect(paper, palette_colour(0));
  PagePainter page_painter(painter, typefaces, device);
  for (const Mark& mark : page.marks()) page_painter.paint(mark);
  painter.restore();
}

}  // namespace vorn
