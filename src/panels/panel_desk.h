// The panels of a session: what they show, and what a click on them does. Not for several threads at a time.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "panels/drawn_panels.h"
#include "sessions/standing.h"

namespace vorn {

// What is said where step_core() finds none.
inline constexpr std::string_view no_further_core =
    "No further core to put on the page: all are done or skipped, or they are still being studied";

class PanelDesk {
 public:
  // Where the marks of cores are kept: for the whole folder, by file and core. Without it they last as long
  // as this does.
  class MarkKeeper {
   public:
    virtual ~MarkKeeper() = default;
    virtual std::map<std::string, CoreMark> marks_of(const std::string& file) = 0;
    // Answers what went wrong; empty when it is kept.
    virtual std::string keep(const std::string& file, const std::string& core, CoreMark mark) = 0;
  };
  explicit PanelDesk(MarkKeeper* keeper = nullptr) : keeper_(keeper) {}

  // The session stands so now.
  void stand(const SharedStanding& standing);
  // What was found. `working` says what is being worked on, "core 120 of 9,000"; empty when nothing is.
  void found(const SharedFindings& findings, const std::string& working);

  // What became of the files, and which one is being looked at.
  void looked(const SharedReports& files, const std::string& working);

  Panel panel(PanelName name, const PanelView& view) const;
  // All of it, not only what a view shows: RFC 4180, with a line of names.
  std::string csv(PanelName name) const;
  // Does what the spot changes in the panels; answers what is to be played. `trouble` is what could not be
  // kept. A clean copy is made by whoever asks for it (clean_copy.h).
  std::optional<Play> click(const Spot& spot, std::string& trouble);
  // Puts the next (+1) or the previous (-1) core by need on the page, beginning at the one that is there;
  // those that are done or skipped are passed over. Nothing where there is none, or it cannot be done now.
  std::optional<Play> step_core(int direction) const;

 private:
  MarkKeeper* keeper_;
  PanelInputs in_;
  std::string file_;  // whose marks are in the state
};

}  // namespace vorn
