// The sample's curve, moved along the years by the mouse.
#pragma once

#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <optional>

#include "desk/actions.h"
#include "plot/page.h"

namespace vorn {

// From the press of a button on the graph of the cross-dating screen to its release. What is shown meanwhile
// is painted over the page, which stays as it is; the move is one deed.
class CurveDrag {
 public:
  // Whether a press there, in page units, may become a move: no button lies there, and the sample can be
  // moved.
  static bool may_begin(const Standing& standing, QPointF on_page);

  void begin(QPointF on_page);
  // The mouse is there now. It moves nothing before it has gone so far that no click is meant.
  void go_to(QPointF on_page, bool is_far);
  void end();

  bool is_pressed() const { return pressed_at_.has_value(); }
  bool is_moving() const { return moving_; }
  int years(const Situation& situation) const;
  // "+12 years, 1762-1911"
  static QString words(int years, const PairMember& sample);
  // The curve where it would be, an arrow, and what that means in words. The painter maps page units; `pixel`
  // is the size of one in these.
  void paint(QPainter& painter, const Page& page, const Situation& situation, double pixel) const;

 private:
  std::optional<QPointF> pressed_at_;
  QPointF now_;
  bool moving_ = false;
};

// Where the curves of the cross-dating screen are, in page units.
QRectF area_of_graph();

}  // namespace vorn
