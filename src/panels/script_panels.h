// The panels of a session without a window: everything is computed when it is asked for.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "panels/panel_desk.h"
#include "records/files.h"
#include "sessions/scripted_screen.h"

namespace vorn {

bool is_panel(std::string_view name);

class PanelsOfScript : public ScriptPanels {
 public:
  // `files` holds the folder that is worked in, and must live as long.
  explicit PanelsOfScript(Files& files) : files_(files) { studies_.read_from(&files); }
  void stand(const SharedStanding& standing) override;
  Page page(const std::string& panel) override;
  Picked pick(const std::string& panel, const std::string& text) override;

 private:
  Panel whole(const std::string& panel);

  void look_at_files();
  std::string copy_file(const PanelChange& wanted);

  Files& files_;
  std::optional<Careful> looked_;  // the ways of reading by which the files were looked at
  PanelDesk desk_;
  Studies studies_;
  SharedSituation studied_, wanted_;
};

}  // namespace vorn
