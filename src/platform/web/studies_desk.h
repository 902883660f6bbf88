// The studies' side of the browser edition: the panels, worked out in a worker of their own, so that a click
// never waits for a study.
#pragma once

#include <array>
#include <chrono>
#include <string>

#include "panels/panel_desk.h"
#include "platform/web/situation_bytes.h"
#include "platform/web/web_port.h"

namespace vorn {

class StudiesDesk {
 public:
  // Both must live as long. Without a keeper marks last as long as this does.
  explicit StudiesDesk(WebPort& port, PanelDesk::MarkKeeper* keeper = nullptr) : port_(port), desk_(keeper) {}

  // Studies what there is to be studied, else serves one thing that the page asks for, which it waits for.
  void go_on();

 private:
  using Clock = std::chrono::steady_clock;
  // While it studies it looks so often whether something is asked for, and tells so often how far it is.
  static constexpr std::chrono::milliseconds between_looks{30}, between_tellings{100}, worth_telling{80};

  void study();
  bool may_go_on(const std::string& working);
  void tell_found();
  void serve(const WebRequest& request);
  void stand(const WebRequest& request);
  void draw(PanelName name, const WebRequest& request);
  void click(PanelName name, const WebRequest& request);
  void step_core(int direction);
  void play(const Play& play);

  WebPort& port_;
  PanelDesk desk_;
  SituationReader reader_;
  Studies studies_;
  SharedSituation to_study_, studied_;
  SharedFindings findings_;
  std::string working_;
  Clock::time_point begun_, looked_, told_;
  // What was drawn last, which a click is meant for.
  struct Drawn {
    Panel panel;
    std::size_t ask = 0;
  };
  std::array<Drawn, all_panels.size()> drawn_;
};

}  // namespace vorn
