#include "platform/qt/panel_docks.h"

#include <QFile>
#include <QFileInfo>
#include <QPointF>
#include <algorithm>
#include <string>
#include <utility>

#include "records/disk_files.h"
#include "situation/graph_axis.h"

namespace vorn {

PanelDocks::PanelDocks(QMainWindow& window, PageWindow& page, const QString& folder, Port port)
    : window_(window), page_(page), port_(std::move(port)) {
  begin_anew(folder);
  for (const PanelName name : all_panels) docks_[static_cast<std::size_t>(name)] = make(name);
  place();
  page_.placed = [this] {
    for (PanelDock* dock : docks_) dock->area().look_again();
  };
}

PanelDocks::~PanelDocks() {
  page_.placed = [] {};
}

PanelDock* PanelDocks::make(PanelName name) {
  auto* dock = new PanelDock(
      name, page_.typefaces(),
      {.make = [this, name](const PanelView& view) { return desk_->panel(name, view); },
       .csv = [this, name] { return desk_->csv(name); },
       .start = [this, name](Comfort comfort,
                             std::shared_ptr<const Page> page) { start(name, comfort, std::move(page)); }});
  PanelArea& area = dock->area();
  area.years_stand = [this, dock, viewport = area.viewport()] { return years_over(*dock, *viewport); };
  area.seen = [this] { study(); };
  area.clicked = [this](const Spot& spot) { click(spot); };
  area.left = [this] { go_to_page(); };
  return dock;
}

// At the sides lists, above and below what has an axis of years, as low as it can be read: the page needs the
// height.
void PanelDocks::place() {
  for (const Qt::Corner corner : {Qt::TopLeftCorner, Qt::BottomLeftCorner})
    window_.setCorner(corner, Qt::LeftDockWidgetArea);
  for (const Qt::Corner corner : {Qt::TopRightCorner, Qt::BottomRightCorner})
    window_.setCorner(corner, Qt::RightDockWidgetArea);
  PanelDock& site = dock(PanelName::site);
  window_.addDockWidget(Qt::RightDockWidgetArea, &site);
  for (const PanelName name :
       {PanelName::dates, PanelName::around, PanelName::files, PanelName::recipe, PanelName::moving}) {
    window_.addDockWidget(Qt::RightDockWidgetArea, &dock(name));
    window_.tabifyDockWidget(&site, &dock(name));
  }
  dock(PanelName::rings).area().set_first_size({360, 180});
  dock(PanelName::pointers).area().set_first_size({360, 116});
  window_.addDockWidget(Qt::BottomDockWidgetArea, &dock(PanelName::rings));
  window_.addDockWidget(Qt::TopDockWidgetArea, &dock(PanelName::pointers));
  for (PanelDock* one : docks_) {
    if (one != &site) one->hide();
  }
}

// --- What they show.

void PanelDocks::stand(const SharedStanding& standing) {
  standing_ = standing;
  const SharedSituation situation = standing ? standing->situation : nullptr;
  if (situation && situation->wait == Wait::menu) to_study_ = situation;
  desk_->stand(standing);
  study();
  look_at_files();
  renew();
}

void PanelDocks::begin_anew(const QString& folder) {
  folder_ = folder;
  files_told_ = false;
  worker_.reset();
  studied_ = to_study_ = {};
  desk_.reset();  // it uses the marks
  marks_ = std::make_unique<KeptMarks>(QFile::encodeName(folder).toStdString());
  desk_ = std::make_unique<PanelDesk>(marks_.get());
}

bool PanelDocks::any_seen() const {
  return std::ranges::any_of(docks_, [](PanelDock* dock) { return dock->area().isVisible(); });
}

void PanelDocks::study() {
  if (!to_study_ || to_study_ == studied_ || !any_seen()) return;
  studied_ = to_study_;
  worker().study(studied_);
}

StudyWorker& PanelDocks::worker() {
  // Called by the worker's thread. News that came while others wait to be shown are shown with them.
  const auto news_came = [this] {
    if (news_wait_.exchange(true)) return;
    QMetaObject::invokeMethod(
        this, [this] { take_news(); }, Qt::QueuedConnection);
  };
  if (!worker_) worker_ = std::make_unique<StudyWorker>(news_came);
  return *worker_;
}

// Whether or not the panel is seen: what is lost is told.
void PanelDocks::look_at_files() {
  if (!standing_) return;
  worker().look_at(std::make_shared<DiskFiles>(QFile::encodeName(folder_).toStdString()), year_of_today(),
                   to_study_ ? to_study_->settings.careful : Careful());
}

void PanelDocks::tell_what_is_lost(const StudyWorker::State& now) {
  if (files_told_ || !now.files || !now.files_working.empty()) return;
  files_told_ = true;
  if (const std::string words = words_on_loss(*now.files); !words.empty())
    port_.notice(shown_characters(words));
}

void PanelDocks::take_news() {
  news_wait_ = false;
  if (!worker_) return;
  const StudyWorker::State now = worker_->state();
  desk_->found(now.findings, now.working);
  desk_->looked(now.files, now.files_working);
  tell_what_is_lost(now);
  renew();
}

void PanelDocks::renew() {
  for (PanelDock* dock : docks_) dock->area().renew();
}

// --- What is done in them.

void PanelDocks::turn(PanelName name) {
  PanelDock& one = dock(name);
  if (!one.isVisible()) return one.enter();
  one.hide();
  go_to_page();
}

// From a panel in a window of its own, too.
void PanelDocks::go_to_page() {
  page_.activateWindow();
  page_.setFocus();
}

void PanelDocks::click(const Spot& spot) {
  if (spot.change.kind == PanelChange::Kind::copy_file)
    return port_.copy_file(spot.change.file, spot.change.unit);
  std::string trouble;
  const auto play = desk_->click(spot, trouble);
  if (!trouble.empty()) port_.notice(shown_characters(trouble));
  if (play) port_.act(*play);
  renew();
}

void PanelDocks::step_core(int direction) {
  if (!any_seen()) dock(PanelName::site).show();  // where what is known grows while it is studied
  if (const auto play = desk_->step_core(direction)) return port_.act(*play);
  port_.mention(shown_characters(no_further_core));
}

void PanelDocks::start(PanelName name, Comfort comfort, std::shared_ptr<const Page> page) {
  QString subject = QFileInfo(page_.subject()).completeBaseName().replace('.', '-');
  if (!subject.isEmpty()) subject += '-';
  page_.start(comfort, std::move(page), subject + shown_characters(id_of(name)));
}

// The years of the graph over (or under) a dock at the upper or lower edge of the window.
std::optional<PanelView::Axis> PanelDocks::years_over(PanelDock& dock, const QWidget& viewport) const {
  const Qt::DockWidgetArea area = window_.dockWidgetArea(&dock);
  if (dock.isFloating() || (area != Qt::TopDockWidgetArea && area != Qt::BottomDockWidgetArea)) return {};
  const auto place = [&](int x) {
    return viewport.mapFrom(&window_, page_.mapTo(&window_, page_.place_of(QPointF(x, 0)))).x();
  };
  return PanelView::Axis{place(graph_area.x1), place(graph_area.x2)};
}

}  // namespace vorn
