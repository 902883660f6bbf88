// The page in the window: paints the one shown last and hands on what the user does with it.
#pragma once

#include <QCoreApplication>
#include <QPointF>
#include <QSize>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "desk/deed_gate.h"
#include "desk/page_cursor.h"
#include "desk/status_line.h"
#include "platform/qt/curve_drag.h"
#include "platform/qt/notice_strip.h"
#include "platform/qt/typefaces.h"
#include "platform/qt/window_comforts.h"
#include "plot/screen.h"
#include "sessions/event_mailbox.h"

namespace vorn {

// The page keeps its proportions and stands in the middle of its room, above the strip with the program's
// notices while there is one.
//
// A left click is a click, a right click or F1 a request for help; Return and the Enter of the keypad are 13,
// Backspace 8, Escape 27, the characters 32 to 126 their own code; all other keys are dropped. Keys carry the
// place of the mouse. The keys of the window's own comforts (see window_comforts.h) are never the program's.
// Places beside the page count as the nearest place on it.
//
// At menus Tab and the arrows move a cursor over the page, and Return clicks what it marks. On the
// cross-dating screen the mouse takes the sample's curve along, and the wheel changes the years shown.
class PageWindow : public QWidget {
 public:
  // `folder` is where pages are saved if the user does not say otherwise, `program_folder` where the program
  // lies, beside which its guide is found.
  PageWindow(EventMailbox& mailbox, const QString& folder,
             const QString& program_folder = QCoreApplication::applicationDirPath());
  // From now on another run of the program is shown, in another folder.
  void serve(EventMailbox& mailbox, const QString& folder);

  DeedGate& gate() { return gate_; }
  // The number of the page that the user sees.
  unsigned long seen() const { return seen_.number; }
  QString subject() const;
  // To be called when the session stands anew.
  void stand();
  // Shows what the mailbox has to tell besides the page, and why no journal is kept.
  void show_notices();
  void toggle_notices() { notices_->toggle(); }
  bool shows_notices() const { return notices_->isVisible(); }
  // For help about what the mouse points at, or did last.
  void ask_for_help() { gate_.put(event_at(mouse_, Event::help), seen_.number); }
  void start(Comfort comfort) { comforts_.start(comfort, seen_.page, subject()); }
  // Of another page than the one in the window.
  void start(Comfort comfort, std::shared_ptr<const Page> page, const QString& subject) {
    comforts_.start(comfort, std::move(page), subject);
  }
  const Typefaces& typefaces() const { return typefaces_; }
  // Where a place of the page stands in this widget.
  QPointF place_of(QPointF on_page) const;

  // Called with the place of the mouse on the page, nothing when it has left.
  std::function<void(std::optional<PointAt>)> mouse_moved = [](auto) {};

  // Called when the page may stand elsewhere in the window, or be larger or smaller.
  std::function<void()> placed = [] {};

  // The largest size of the proportions of a page within 90 % of a screen.
  static QSize first_size(QSize screen);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }  // Tab is a key like others

 private:
  QSize page_area() const;
  void place_notices();
  QPointF on_page(QPointF place) const;
  Event event_at(QPointF place, int code) const;
  SharedSituation situation() const;
  QColor surround() const;
  void paint_cursor(QPainter& painter, double pixel) const;
  bool is_programs_key(const QKeyEvent& event) const;
  bool serve_cursor(const QKeyEvent& event);
  void describe();
  void drop_curve();

  EventMailbox* mailbox_;
  DeedGate gate_;
  Typefaces typefaces_;
  WindowComforts comforts_;
  NoticeStrip* notices_;
  NumberedPage seen_;  // the page painted last
  QPointF mouse_;      // where the mouse was last, in the window
  PageCursor cursor_;
  CurveDrag drag_;
  Event press_;                   // that began the drag, and
  unsigned long pressed_on_ = 0;  // the page it was made on
  QPointF pressed_at_;
  int wheel_ = 0;  // turned, but not yet by a year
};

}  // namespace vorn
