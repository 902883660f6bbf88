// The panels around the page: what they know, and where they stand.
#pragma once

#include <QMainWindow>
#include <QObject>
#include <QString>
#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "panels/kept_marks.h"
#include "panels/panel_desk.h"
#include "panels/study_worker.h"
#include "platform/qt/page_window.h"
#include "platform/qt/panel_dock.h"

namespace vorn {

// Studies what the session stands at as long as a panel is seen, beside the window's work: nothing waits for
// it.
class PanelDocks : public QObject {
 public:
  // What the panels need of the window.
  struct Port {
    std::function<void(const Deed&)> act;
    std::function<void(const QString&)> notice;   // says something that is to stay
    std::function<void(const QString&)> mention;  // says something that is soon gone
    // Makes a clean copy of a file of the list, in so many values a millimetre where that is a guess.
    std::function<void(const std::string& file, std::optional<double> unit)> copy_file;
  };
  // Adds them to the window, most of them hidden. `page` must live as long; `folder` is the one that is
  // worked in, where the marks of its cores are kept.
  PanelDocks(QMainWindow& window, PageWindow& page, const QString& folder, Port port);
  ~PanelDocks() override;

  // The session stands so now; null before it does.
  void stand(const SharedStanding& standing);
  // From now on another run of the program is shown, in another folder.
  void begin_anew(const QString& folder);

  PanelDock& dock(PanelName name) { return *docks_[static_cast<std::size_t>(name)]; }
  // Shows it, with the keyboard in it, or hides it.
  void turn(PanelName name);
  // The next core by need (+1) or the one before (-1) onto the page.
  void step_core(int direction);

 private:
  PanelDock* make(PanelName name);
  void place();
  bool any_seen() const;
  void study();
  StudyWorker& worker();
  void look_at_files();
  void tell_what_is_lost(const StudyWorker::State& now);
  void take_news();
  void renew();
  void click(const Spot& spot);
  void go_to_page();
  void start(PanelName name, Comfort comfort, std::shared_ptr<const Page> page);
  std::optional<PanelView::Axis> years_over(PanelDock& dock, const QWidget& viewport) const;

  QMainWindow& window_;
  PageWindow& page_;
  Port port_;
  QString folder_;
  bool files_told_ = false;
  SharedStanding standing_;
  SharedSituation to_study_;  // at the menu that was there last
  SharedSituation studied_;   // that the worker was told of last
  std::unique_ptr<KeptMarks> marks_;
  std::unique_ptr<PanelDesk> desk_;
  std::array<PanelDock*, all_panels.size()> docks_ = {};  // the window's
  std::atomic<bool> news_wait_ = false;
  std::unique_ptr<StudyWorker> worker_;  // from the first study on; the first to go
};

}  // namespace vorn
