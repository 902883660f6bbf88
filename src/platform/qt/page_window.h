// The window: paints the page shown last and hands on what the user does.
#pragma once

#include <QCoreApplication>
#include <QPointF>
#include <QSize>
#include <QWidget>

#include "platform/qt/notice_strip.h"
#include "platform/qt/typefaces.h"
#include "platform/qt/window_comforts.h"
#include "plot/screen.h"
#include "sessions/event_mailbox.h"

namespace vorn {

// The page keeps its proportions and stands in the middle of the window, above the strip with the program's
// notices while there is one.
//
// A left click is a click, a right click or F1 a request for help; Return and the Enter of the keypad are 13,
// Backspace 8, Escape 27, the characters 32 to 126 their own code; all other keys are dropped. Keys carry the
// place of the mouse. The keys of the window's own comforts (see window_comforts.h) are never the program's.
// Places beside the page count as the nearest place on it.
class PageWindow : public QWidget {
 public:
  // `folder` is where pages are saved if the user does not say otherwise, `program_folder` where the program
  // lies, beside which its guide is found.
  PageWindow(EventMailbox& mailbox, const QString& folder,
             const QString& program_folder = QCoreApplication::applicationDirPath());

  // Puts into the title what the mailbox says of long work and of the file worked on: "nowhere.rwl - Vorn",
  // during long work "Stats.prn 45 % - nowhere.rwl - Vorn".
  void show_title();
  // Shows what the mailbox has to tell besides the page.
  void show_notices();
  // The program has ended: from now on the window may close.
  void let_close() { may_close_ = true; }

  // The largest size of the proportions of a page within 90 % of a screen.
  static QSize first_size(QSize screen);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool) override { return false; }  // Tab is a key like others

 private:
  QString subject() const;
  QSize page_area() const;
  void place_notices();
  Event event_at(QPointF place, int code) const;

  EventMailbox& mailbox_;
  Typefaces typefaces_;
  WindowComforts comforts_;
  NoticeStrip* notices_;
  NumberedPage seen_;  // the page painted last
  QPointF mouse_;      // where the mouse was last, in the window
  bool may_close_ = false;
};

}  // namespace vorn
