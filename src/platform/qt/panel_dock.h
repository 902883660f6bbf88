// A panel beside the page, which can be moved, closed, copied, saved and printed.
#pragma once

#include <QDockWidget>
#include <functional>
#include <memory>
#include <string>

#include "panels/panel.h"
#include "platform/qt/panel_area.h"
#include "platform/qt/window_comforts.h"

namespace vorn {

class PanelDock : public QDockWidget {
 public:
  // What it shows, and where that goes.
  struct Port {
    PanelArea::Maker make;
    std::function<std::string()> csv;
    // Copies, saves or prints a page.
    std::function<void(Comfort, std::shared_ptr<const Page>)> start;
  };
  // `typefaces` must live as long.
  PanelDock(PanelName name, const Typefaces& typefaces, Port port);

  PanelName name() const { return name_; }
  PanelArea& area() { return *area_; }
  // Takes the keyboard.
  void enter();

 private:
  void add(const char* id, const QString& text, const QKeySequence& key, std::function<void()> act);
  void start(Comfort comfort, int highest);

  PanelName name_;
  Port port_;
  PanelArea* area_;
};

}  // namespace vorn
