// The studies' side of the browser edition: the panels, worked out in a worker of their own, so that a click
// never waits for a study.
#pragma once

#include <array>
#include <chrono>
#include <string>

#include "panels/panel_desk.h"
#include "platform/web/files_desk.h"
#include "platform/web/situation_bytes.h"
#include "platform/web/web_port.h"

namespace vorn {

class StudiesDesk {
 public:
  // All must live as long. Without a keeper marks last as long as this does; without files none is looked at.
  explicit StudiesDesk(WebPort& port, PanelDesk::MarkKeeper* keeper = nullptr, FilesDesk* files = nullptr)
      : port_(port), desk_(keeper), files_(files) {
    if (files) studies_.read_from(&files->folder());
  }

  // Studies what there is to be studied, else serves one thing that the page asks for; where it asks for
  // nothing a file is looked at, and when all were it is waited for.
  void go_on();

 private:
  using Clock = std::chrono::steady_clock;
  // While it studies it looks so often whether something is asked for, and tells so often how far it is.
  static constexpr std::chrono::milliseconds between_looks{30}, between_tellings{100}, worth_telling{80};

  void study();
  bool may_go_on(const std::string& working);
  void tell_found();
  bool has_files_to_look_at() const;
  void look();
  void serve(const WebRequest& request);
  void stand(const WebRequest& request);
  void draw(PanelName name, const WebRequest& request);
  void click(PanelName name, const WebRequest& request);
  const Spot* spot_meant(PanelName name, std::size_t ask, std::size_t place) const;
  void step_core(int direction);
  void play(const Play& play);

  WebPort& port_;
  PanelDesk desk_;
  FilesDesk* files_;
  SituationReader reader_;
  SharedStanding standing_;
  Studies studies_;
  SharedSituation to_study_, studied_;
  SharedFindings findings_;
  std::string working_;
  Clock::time_point begun_, looked_, told_;
  // What was drawn last, and before that: which a click is meant for.
  struct Drawn {
    Panel panel;
    std::size_t ask = 0;
  };
  std::array<Drawn, all_panels.size()> drawn_, before_;
};

}  // namespace vorn
