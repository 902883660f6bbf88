// A panel in the window: the part of it that is looked at, and what the user does there.
#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <optional>

#include "panels/panel.h"
#include "platform/qt/typefaces.h"

namespace vorn {

// Shows what `make` draws for a view. It asks only when it is told, resized or scrolled, and not at all while
// it is hidden.
//
// The mouse clicks spots; what that plays is gone on with on the page, which gets the keyboard. The keyboard
// clicks them too: Tab, Left and Right go from spot to spot as they are read, Up and Down to the ones above
// and below, Home and End to the first and the last, PgUp and PgDn scroll, Return and Space click, and Escape
// leaves. The spot that the keyboard marks is seen and told to screen readers.
class PanelArea : public QAbstractScrollArea {
 public:
  using Maker = std::function<vorn::Panel(const PanelView&)>;
  // `typefaces` must live as long.
  PanelArea(const Typefaces& typefaces, Maker make);
  // How large it is where nobody has said so.
  void set_first_size(QSize size) { first_size_ = size; }

  // To be called when there are other values to show.
  void renew();
  // To be called when what stands around it was moved: asks anew only where that makes a difference.
  void look_again();
  // What is looked at now.
  PanelView view() const;
  // All of the panel, and where it is higher than that, so much of it from what is looked at on.
  vorn::Panel pictured(int highest) const;
  const vorn::Panel& shown() const { return panel_; }

  // The places, in pixels of the viewport, between which the years of the page stand; nothing where they do
  // not stand above or below it.
  std::function<std::optional<PanelView::Axis>()> years_stand = [] {
    return std::optional<PanelView::Axis>();
  };
  // Called when it comes into sight.
  std::function<void()> seen = [] {};
  std::function<void(const Spot&)> clicked = [](const Spot&) {};
  std::function<void()> left = [] {};

 protected:
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;  // of its actions
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }  // Tab goes from spot to spot
  QSize sizeHint() const override { return first_size_; }

 private:
  enum class Way : std::uint8_t { next, previous, up, down };
  double units_a_pixel() const;
  std::optional<PanelView::Axis> axis() const;
  const Spot* at(QPointF place) const;
  const Spot* marked() const;
  bool is_scrolled(const Spot& spot) const { return spot.place.y2 > panel_.head; }
  void paint_mark(QPainter& painter) const;
  void follow_mark(const std::optional<Spot>& before, int scrolled);
  bool step(Way way);
  bool scroll_on(Way way);
  bool go(Way way);
  void go_to_end(bool last);
  void mark(const Spot& spot);
  const Spot* following(const Spot& from, Way way) const;
  void describe();
  bool serve(const QKeyEvent& event);

  const Typefaces& typefaces_;
  Maker make_;
  QSize first_size_ = {360, 220};
  PanelView view_;  // of what is shown
  vorn::Panel panel_;
  std::optional<std::size_t> mark_;  // the spot at which the keyboard is
  bool shows_mark_ = false;
};

}  // namespace vorn
